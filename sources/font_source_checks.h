// Checks of a font source made before anything is rendered, so that a file
// FreeType cannot read, a size no ZGLY cell holds or a bitmap strike the font
// lacks is named plainly instead of surfacing as a wrong or empty font.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "sources/font_face.h"

// The largest cell a ZGLY file holds, in pixels either way.
inline constexpr int32_t MaxZglyCell = 255;

// FreeType's own text for an error code ("unknown file format", ...).
std::string FreeTypeErrorText(FT_Error error);

// A name that is an existing file FreeType cannot open throws
// "Parameter Error:\n Font file(%s) cannot be read as a font: <reason>".
void CheckReadableFontFile(const std::string& name);

// Throws a range message when the size gives a cell taller than a ZGLY cell.
// size as CFontFace takes it (> 0 cell height, < 0 character height).
void CheckSizeFits(const FontLocation& location, int32_t size);

// The strike sizes of a bitmap face, or of every file of its family when it
// was named by family: pixel heights of the em (cellHeights false) or of the
// cell, ascending, each once.
std::vector<int> StrikeSizes(const std::string& name, const FontLocation& location, bool cellHeights);

// A bitmap-only face without a strike of exactly the size throws
// "Parameter Error:" listing the sizes it has.
void CheckStrikeSize(const std::string& name, const FontLocation& location, int32_t size);

// A bitmap face numbered in a character set without a table throws
// "Parameter Error:" naming it.
void CheckCharset(const std::string& name, const FontLocation& location);

// A face number beyond the collection's faces, an axis the font lacks or a
// value outside its axis's range throws "Parameter Error:" listing what the
// font has.
void CheckFaceAndAxes(const std::string& name, const FontLocation& location);

// The variable-font axes of a face: tag, minimum, default and maximum.
struct FontAxisRange {
    std::string Tag;
    double Min = 0, Default = 0, Max = 0;
};
std::vector<FontAxisRange> FontAxes(const FontLocation& location);
// 700, or 12.5: an axis value as the user types it.
std::string AxisValueText(double value);
