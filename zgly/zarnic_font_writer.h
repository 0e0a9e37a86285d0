// Writes the prepared font as a ZGLY file.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "core/codepage.h"
#include "core/font_data.h"
#include "core/font_io.h"

class CBinaryFile;
class CFontBlockSet;

// What the output panel and the command line choose; NotGiven takes the
// font's own value.
struct ZglyWriterOptions {
    uint16_t AlternateChar = NotGiven;
    int32_t LineHeight = NotGiven;
    int32_t DefaultLeftSpace = NotGiven;
    int32_t DefaultWidth = NotGiven;
    int32_t DefaultRightSpace = NotGiven;
    EncodingNumber Encoding = EncodingUtf16;
    // A zgly::CellRotation, 0 to 3.
    int32_t Rotation = 0;
};

class CZarnicFontWriter : public CFontWriter {
public:
    CZarnicFontWriter(std::filesystem::path path, const ZglyWriterOptions& options)
        : CFontWriter(std::move(path)),
          AlternateChar(options.AlternateChar),
          LineHeight(options.LineHeight),
          DefaultWidth(options.DefaultWidth),
          DefaultLeftSpace(options.DefaultLeftSpace),
          DefaultRightSpace(options.DefaultRightSpace),
          Rotation(options.Rotation),
          Encoding(options.Encoding) {}
    void CheckParameters() override;
    void Write(CFontData& font, const CGlyphOrder& order) override;

    uint16_t AlternateChar;
    int32_t LineHeight;
    int32_t DefaultWidth;
    int32_t DefaultLeftSpace;
    int32_t DefaultRightSpace;
    int32_t Rotation;
    EncodingNumber Encoding;

private:
    // A glyph of the font under its output code; its position in the sorted
    // list is its glyph index.
    struct OutputGlyph {
        uint16_t Code;
        const CGlyph* Glyph;
    };
    using OutputGlyphs = std::vector<OutputGlyph>;

    // The font's glyphs under their output codes, sorted, without copying them.
    OutputGlyphs Recode(const CFontData& font) const;
    void CheckDefaultWidths(const CFontData& font) const;
    void CheckCellLimits(const CFontData& font) const;
    void AddFontInfo(const CFontData& font, const OutputGlyphs& glyphs, CFontBlockSet& blocks) const;
    uint32_t GlyphBlockLength(const CFontData& font, std::size_t count) const;
    void WriteGlyphCells(const CFontData& font, const OutputGlyphs& glyphs, CBinaryFile& file) const;
    CharWidths WidthEntry(const CFontData& font, const CGlyph& glyph) const;
    void AddWidths(const CFontData& font, const OutputGlyphs& glyphs, CFontBlockSet& blocks) const;
    void AddCharMap(const OutputGlyphs& glyphs, CFontBlockSet& blocks) const;
    static void FixOffsets(CFontBlockSet& blocks, uint32_t glyphBlockLength);
};
