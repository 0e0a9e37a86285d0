// Writes the prepared font as a ZGLY file.
#pragma once

#include <cstdint>
#include <memory>

#include "core/font_data.h"
#include "core/font_io.h"

class CFontBlockSet;

// A numeric parameter that is not given; the font's own value is used.
inline constexpr int32_t NotGiven = 0xFFFF;

class CZarnicFontWriter : public CFontWriter {
public:
    CZarnicFontWriter(std::filesystem::path path, uint16_t alternateChar, int32_t lineHeight, int32_t defaultWidth,
                      int32_t defaultLeftSpace, int32_t defaultRightSpace, int32_t encoding, int32_t rotation)
        : CFontWriter(std::move(path)),
          AlternateChar(alternateChar),
          LineHeight(lineHeight),
          DefaultWidth(defaultWidth),
          DefaultLeftSpace(defaultLeftSpace),
          DefaultRightSpace(defaultRightSpace),
          Rotation(rotation),
          Encoding(encoding) {}
    void CheckParameters() override;
    void Write(CFontData& font, const CGlyphOrder& order) override;

    uint16_t AlternateChar;
    int32_t LineHeight;
    int32_t DefaultWidth;
    int32_t DefaultLeftSpace;
    int32_t DefaultRightSpace;
    int32_t Rotation;
    int32_t Encoding;

private:
    // A sorted copy of the font under its output codes.
    std::unique_ptr<CFontData> Recode(const CFontData& font) const;
    void CheckDefaultWidths(const CFontData& work) const;
    void BuildBlocks(const CFontData& work, CFontBlockSet& blocks) const;
    void AddFontInfo(const CFontData& work, CFontBlockSet& blocks) const;
    void AddGlyphCells(const CFontData& work, CFontBlockSet& blocks) const;
    CharWidths WidthEntry(const CFontData& work, const CGlyph& glyph) const;
    void AddWidths(const CFontData& work, CFontBlockSet& blocks) const;
    void AddCharMap(const CFontData& work, CFontBlockSet& blocks) const;
    static void FixOffsets(CFontBlockSet& blocks);
};
