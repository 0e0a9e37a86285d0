// Letterers: render one character of a face into a glyph, at 2 grey levels
// (CRasterLetterer) or 4 to 32 (CVectorLetterer), horizontal or vertical.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "sources/font_face.h"
#include "sources/glyph_width_type.h"

class CGlyph;
class CVerticalForms;

// An 8-bit image of one character (level 0 is no ink) with its metrics,
// handed to BuildGlyph.
struct RenderedCell {
    int32_t Width = 0;
    int32_t Height = 0;
    // Pen position to the image's left edge (the left side bearing).
    int32_t OriginX = 0;
    int32_t Advance = 0;
    // Rows from the image's top edge down to the baseline.
    int32_t Baseline = 0;
};

class CLetterer {
public:
    CLetterer();
    virtual ~CLetterer();
    CLetterer(const CLetterer&) = delete;
    CLetterer& operator=(const CLetterer&) = delete;

    void Setup(int32_t bpp, int32_t widthType, int32_t fixedWidth, bool vertical);
    // Opens the face found at the location at the size; throws when it cannot.
    virtual void Prepare(const FontLocation& location, int32_t size) = 0;
    // False when the face has nothing for the code; the glyph is untouched then.
    virtual bool MakeGlyph(CGlyph& glyph, char16_t code) = 0;
    // The face's glyph for the code, 0 when it has none.
    FT_UInt GlyphIndex(char16_t code) const;
    // Crops the image to its ink and builds the glyph with the width type's
    // spaces, turned a quarter turn clockwise for vertical fonts. The glyph's
    // pixels are packed at the letterer's depth.
    void BuildGlyph(CGlyph& glyph, const uint8_t* image, const RenderedCell& cell);
    // The same from rows pitch bytes apart whose bytes become levels through
    // a 256-entry table (levels[v] is the level of byte v; nullptr: the bytes
    // are the levels). Lets a rendering be cropped and packed where FreeType
    // left it, touching only the ink's rows.
    void BuildGlyph(CGlyph& glyph, const uint8_t* image, std::ptrdiff_t pitch, const uint8_t* levels,
                    const RenderedCell& cell);

protected:
    // A character's rendering at one byte a pixel (coverage 0..255), already
    // turned for vertical faces: FreeType's own buffer when it is one, else
    // a widened copy. Valid until the next Render.
    struct Bitmap {
        const uint8_t* Pixels = nullptr;
        int32_t Width = 0, Rows = 0;
        std::ptrdiff_t Pitch = 0;  // bytes from one row to the next
        int32_t Left = 0;  // pen to left edge
        int32_t Top = 0;   // baseline to top edge, upwards
        int32_t Advance = 0;
    };
    void OpenFace(const FontLocation& location, int32_t size);
    // Loads and renders the code's glyph (index from GlyphIndex); false when
    // FreeType cannot.
    bool Render(char16_t code, FT_UInt index, FT_Int32 loadFlags, Bitmap& out);

    int32_t Bpp = 1;
    int32_t WidthType = WidthGlyphOnly;
    int32_t FixedWidth = 0;
    bool Vertical = false;
    int32_t FontAscent = 0;
    int32_t CellSize = 0;
    uint8_t MaxLevel() const { return static_cast<uint8_t>((1 << Bpp) - 1); }

    std::unique_ptr<CFontFace> Face;
    std::unique_ptr<CVerticalForms> Forms;

private:
    void Widen(const FT_Bitmap& bitmap);
    void TurnCounterClockwise(Bitmap& b);

    std::vector<uint8_t> Coverage;
    std::vector<uint8_t> Turned;
    // Byte -> level (masked to the depth) and byte -> "is ink" (level not 0)
    // of the last BuildGlyph's table and depth.
    const uint8_t* TableFor = nullptr;
    int TableBpp = 0;
    uint8_t Level[256] = {};
    bool Ink[256] = {};
    // Ink is every byte from InkFrom up (0: not so); InkAdd its word constant.
    int InkFrom = 0;
    uint64_t InkAdd = 0;
    bool InkInWord(const uint8_t* bytes) const;
    // Depths 1, 2 and 4: the packed levels of two neighbouring bytes (a | b << 8).
    std::vector<uint8_t> Pairs;
    std::vector<uint8_t> Row;
};

class CRasterLetterer : public CLetterer {
public:
    void Prepare(const FontLocation& location, int32_t size) override;
    bool MakeGlyph(CGlyph& glyph, char16_t code) override;

private:
    std::vector<uint8_t> Grid;
    // Grid value -> level: ink at full level, the rest blank.
    uint8_t GridLevels[256] = {};
};

class CVectorLetterer : public CLetterer {
public:
    void Prepare(const FontLocation& location, int32_t size) override;
    bool MakeGlyph(CGlyph& glyph, char16_t code) override;

    bool SoftAA = false;

private:
    // Halves the coverage image straight into output levels (soft anti-aliasing).
    void HalveToLevels(const Bitmap& b, RenderedCell& cell);

    std::vector<uint8_t> Image;
    std::vector<uint8_t> ZeroRow;
    // FreeType's coverage 0..255 as the 17 levels 0..16, and as output levels.
    uint8_t Levels17[256] = {};
    uint8_t OutputLevels[256] = {};
    // Soft anti-aliasing: the 17-level sum of two horizontal neighbours, by
    // the two coverage bytes (a | b << 8), and the output level of a 2 x 2 sum.
    std::vector<uint8_t> PairSums;
    uint8_t BlockLevels[65] = {};
};
