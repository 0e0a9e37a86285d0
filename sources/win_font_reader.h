// Renders an installed font (or a font file) character by character.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/font_io.h"
#include "sources/font_face.h"
#include "sources/glyph_width_type.h"

class CWinFontReader : public CFontReader {
public:
    // faceName: an installed family ("@Family" for its vertical variant) or a
    // path to a font file. size > 0: cell height; size < 0: character height.
    // bpp 1..5; widthType a GlyphWidthType, 0..3.
    CWinFontReader(std::string faceName, int32_t size, int32_t bpp, int32_t widthType, int32_t fixedWidth,
                   bool softAA)
        : FaceName(std::move(faceName)),
          Size(size),
          Bpp(bpp),
          WidthType(widthType),
          FixedWidth(fixedWidth),
          SoftAA(softAA) {}
    void CheckParameters() override;
    void Read(CFontData& font, const CFontFilter& filter) override;

    std::string FaceName;
    int32_t Size;
    int32_t Bpp;
    int32_t WidthType;
    int32_t FixedWidth;
    bool SoftAA;
    // Design-axis values of a variable font, set over its default or the
    // named instance the face name leads to.
    std::vector<FontAxisSetting> Axes;
    // Colour bitmap glyphs: grey levels from coverage x darkness, not coverage.
    bool LuminanceCoverage = false;
    // Rendering threads, each with a face of its own; 0: every core. The
    // glyphs are the same at any count.
    int32_t Threads = 0;
};
