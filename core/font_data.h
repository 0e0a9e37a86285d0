// The in-memory font of one conversion: glyphs cropped to their ink, and the
// font-wide values that readers set and output preparation derives.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

struct InkBox {
    int32_t X0 = 0, Y0 = 0, X1 = 0, Y1 = 0;
    int32_t Width() const { return X1 - X0; }
    int32_t Height() const { return Y1 - Y0; }
};

// The (left, glyph width, char width) triple of the native format.
struct CharWidths {
    int8_t Left = 0;
    uint8_t GlyphWidth = 0;
    uint8_t CharWidth = 0;
};

// A value with a flag saying whether it was specified.
template <class T>
struct COptional {
    T Value{};
    bool Specified = false;
    void Set(const T& v) { Value = v; Specified = true; }
};

class CGlyph {
public:
    CGlyph() = default;
    // Copies Ascent through InkBox and the pixels; Index and Code are left 0.
    static std::unique_ptr<CGlyph> CopyFrom(const CGlyph& other);

    bool SameAs(const CGlyph& other) const;
    // (ink height x ink width x Bpp + 7) / 8
    std::size_t PixelBytes() const;

    // Builders from a packed cellWidth x cellHeight cell image at bpp bits.
    void SetFromCell(const uint8_t* cell, int cellWidth, int cellHeight, int bpp, bool vertical,
                     int space1, int space2, int origin);
    void SetFromCellWithMargins(const uint8_t* cell, int cellWidth, int cellHeight, int bpp,
                                bool vertical, int marginBefore, int marginAfter, int origin);
    void SetFromCellTrimmed(const uint8_t* cell, int cellWidth, int cellHeight, int bpp,
                            bool vertical, int origin);

    int32_t Ascent = 0;
    int32_t RightExtent = 0;
    int32_t LeftSpace = 0;
    int32_t RightSpace = 0;
    int32_t TopSpace = 0;
    int32_t BottomSpace = 0;
    int32_t Bpp = 0;
    InkBox Ink;
    std::vector<uint8_t> Pixels;
    uint16_t Index = 0;
    uint16_t Code = 0;

private:
    void CropCell(const uint8_t* cell, int cellWidth, int cellHeight, int bpp);
    void ExtractInk(const uint8_t* cell, int cellWidth, int bpp, int originRow, int originFromRight);
};

// Writes a cellWidth x cellHeight packed image at bpp bits with the glyph's
// ink placed so that its origin is at row originRow and at column
// cellWidth - originFromRight.
void RenderToCell(const CGlyph& glyph, uint8_t* dst, int cellWidth, int cellHeight, int originRow,
                  int originFromRight, int bpp);

class CFontData {
public:
    CFontData() = default;
    // An empty font with the font-wide values of another.
    static std::unique_ptr<CFontData> CopySettingsFrom(const CFontData& other);
    CFontData(const CFontData&) = delete;
    CFontData& operator=(const CFontData&) = delete;

    // Takes the glyph in every case; a second glyph for a code is dropped, with
    // a warning when it differs from the first.
    void AddGlyph(std::unique_ptr<CGlyph> glyph, uint16_t code);
    const CGlyph* FindGlyph(uint16_t code) const;
    void ReserveGlyphs(std::size_t count) { Glyphs.reserve(count); }
    void SortGlyphs();
    void PrepareForOutput();
    void Clear();

    const std::vector<std::unique_ptr<CGlyph>>& GetGlyphs() const { return Glyphs; }
    std::size_t GlyphCount() const { return Glyphs.size(); }

    COptional<int32_t> LineHeight;
    COptional<int32_t> Bpp;
    COptional<int32_t> Baseline;
    COptional<int32_t> CellWidth;
    COptional<int32_t> CellHeight;
    COptional<int32_t> MaxCharWidth;
    COptional<int32_t> MaxCharHeight;
    COptional<CharWidths> DefaultWidth;
    COptional<uint16_t> AlternateChar;
    COptional<bool> IsVertical;

    bool Vertical() const { return IsVertical.Specified && IsVertical.Value; }

private:
    void CopyValuesFrom(const CFontData& other);

    std::vector<std::unique_ptr<CGlyph>> Glyphs;
    // Code -> glyph, non-owning, in pages of 256 codes made on first use:
    // lookups stay one step, and a font does not pay for a half-megabyte
    // flat table of fresh memory (page faults dominate a short run).
    using CodePage256 = std::array<CGlyph*, 256>;
    std::array<std::unique_ptr<CodePage256>, 256> GlyphByCode;
};
