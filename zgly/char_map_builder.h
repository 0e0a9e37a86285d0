// Chooses the character-map blocks of a ZGLY file: direct blocks for long
// runs of codes, table blocks for dense regions, one scan block for the rest.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

struct CodeGlyph {
    uint16_t Code;
    uint16_t Index;
};

struct CharMapBlock {
    uint16_t FirstCode = 0;
    uint16_t LastCode = 0;
    uint16_t Method = 0;
    // Direct: the first code's glyph. Table: one glyph per code (0xFFFF none).
    // Scan: code, glyph, code, glyph, ...
    std::vector<uint16_t> Data;

    // The CMAP content: 12-byte head (next offset 0) and the mapping data.
    std::vector<uint8_t> Encode() const;
};

// Runs of at least this many consecutive codes get a direct block.
inline constexpr uint32_t DirectRunLength = 80;
// A table region needs at least this many codes with a glyph.
inline constexpr uint32_t TableMinHits = 40;

// glyphs: every glyph of the font in index order (ascending code). step is
// called with the progress of each block made.
std::vector<CharMapBlock> BuildCharMap(const std::vector<CodeGlyph>& glyphs, const std::function<void(int)>& step);
