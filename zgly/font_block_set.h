// A ZGLY file in memory: its header and its blocks by tag, with the lookups
// that reading a font needs.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

#include "core/font_data.h"

struct ZglyFileHeader {
    uint32_t Magic = 0;
    uint16_t ByteOrderMark = 0;
    uint16_t Version = 0;
    uint32_t FileSize = 0;
    uint16_t HeaderSize = 0;
    uint16_t BlockCount = 0;
};

struct CFontBlock {
    uint32_t Tag = 0;
    // Content length + 8, the size before padding.
    uint32_t Size = 0;
    std::vector<uint8_t> Content;

    uint32_t Length() const { return static_cast<uint32_t>(Content.size()); }
    uint8_t* Data() { return Content.data(); }
    const uint8_t* Data() const { return Content.data(); }
};

class CFontBlockSet {
public:
    void AddBlock(uint32_t tag, const uint8_t* content, uint32_t length);
    // The index-th block of a tag, or nullptr.
    CFontBlock* GetBlock(uint32_t tag, uint32_t index);
    const CFontBlock* GetBlock(uint32_t tag, uint32_t index) const;
    uint32_t CountBlocks(uint32_t tag) const;

    // Checks that every later lookup stays inside the blocks; throws
    // "ZGLY File Error:" messages. Loading calls it once.
    void Validate();

    // 0xFFFF when the code has no glyph.
    uint16_t FindGlyphIndex(uint16_t code) const;
    // The first CWDH entry covering the glyph, else the FINF defaults.
    CharWidths GetCharWidths(uint16_t glyph) const;
    // The glyph's cell, or nullptr when the index is beyond the stored cells.
    const uint8_t* GetCellBits(uint16_t glyph) const;
    // Cells the CGLP block holds (0 without a CGLP block).
    uint32_t CellCount() const;

    ZglyFileHeader Header;

private:
    const CFontBlock* DecidingMapBlock(uint16_t code) const;
    const CFontBlock* CoveringWidthBlock(uint16_t glyph) const;
    void BuildLookupIndexes();

    std::map<uint32_t, std::vector<std::unique_ptr<CFontBlock>>> Blocks;
    // For each code / glyph index, the position of the block that decides it
    // (-1 none); built by Validate so that a file of many overlapping blocks
    // costs no more than one pass.
    std::vector<int32_t> MapBlockOfCode;
    std::vector<int32_t> WidthBlockOfGlyph;
};

// Reads the 16-bit mapping of one CMAP block; 0xFFFF when the code is not in
// its range, unmapped, or the block's data is cut short.
uint16_t LookUpMapBlock(const CFontBlock& block, uint16_t code);
// Codes of a CMAP block's range that it maps to a glyph.
uint32_t CountMappedCodes(const CFontBlock& block);
