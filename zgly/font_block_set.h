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
    // Takes the content over instead of copying it.
    void AddBlock(uint32_t tag, std::vector<uint8_t> content);
    // The index-th block of a tag, or nullptr.
    CFontBlock* GetBlock(uint32_t tag, uint32_t index);
    const CFontBlock* GetBlock(uint32_t tag, uint32_t index) const;
    uint32_t CountBlocks(uint32_t tag) const;

    // Checks that every later lookup stays inside the blocks and that the
    // encoding (0 to 3) and bits per pixel (1 to 8) are ones a reader can
    // use; throws "ZGLY File Error:" messages. Loading calls it once, so a bad
    // file is refused when the parameters are checked, before any reading.
    void Validate();

    // 0xFFFF when the code has no glyph.
    uint16_t FindGlyphIndex(uint16_t code) const;
    // The codes (or glyph indices) a block decides: those of its range that
    // no earlier block of its tag covers.
    struct Span {
        uint32_t First = 0, Last = 0;
        const CFontBlock* Block = nullptr;
    };
    // The CMAP spans in ascending code order, for walks over every code;
    // built by Validate (empty before it).
    const std::vector<Span>& MapSpans() const { return MapSpanList; }
    // The first CWDH entry covering the glyph, else the FINF defaults.
    CharWidths GetCharWidths(uint16_t glyph) const;
    // The glyph's cell, or nullptr when the index is beyond the stored cells.
    const uint8_t* GetCellBits(uint16_t glyph) const;
    // Cells the CGLP block holds (0 without a CGLP block), without the
    // padding that ends the block.
    uint32_t CellCount() const;

    ZglyFileHeader Header;

private:
    const CFontBlock* DecidingMapBlock(uint16_t code) const;
    const CFontBlock* CoveringWidthBlock(uint16_t glyph) const;
    void BuildLookupIndexes();
    uint32_t CountCells() const;

    std::map<uint32_t, std::vector<std::unique_ptr<CFontBlock>>> Blocks;
    // Built by Validate so that a file of many overlapping blocks costs no
    // more than one sorted pass per lookup; before it, lookups scan the blocks.
    bool Indexed = false;
    uint32_t IndexedCellCount = 0;
    std::vector<Span> MapSpanList;
    std::vector<Span> WidthSpanList;
};

// Looks up ascending codes one after another with the answers of
// FindGlyphIndex, but no search per code: the deciding spans are followed in
// order, and the pairs of a scan block (which usually covers every code that
// no other block does) with a cursor while they are in ascending order.
class CCodeWalker {
public:
    explicit CCodeWalker(const CFontBlockSet& set) : Spans(set.MapSpans()) {}
    // Codes must not descend from one call to the next.
    uint16_t GlyphOf(uint16_t code);

private:
    const std::vector<CFontBlockSet::Span>& Spans;
    std::size_t SpanAt = 0;
    const CFontBlock* ScanBlock = nullptr;  // the scan block the cursor is in
    const uint8_t* Pairs = nullptr;
    long PairCount = 0, PairAt = 0;
    bool PairsAscend = false;
};

// Reads the 16-bit mapping of one CMAP block; 0xFFFF when the code is not in
// its range, unmapped, or the block's data is cut short.
uint16_t LookUpMapBlock(const CFontBlock& block, uint16_t code);
// Codes of a CMAP block's range that it maps to a glyph.
uint32_t CountMappedCodes(const CFontBlock& block);
