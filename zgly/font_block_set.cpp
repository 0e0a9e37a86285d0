#include "zgly/font_block_set.h"

#include <algorithm>

#include "core/general_exception.h"
#include "zgly/zgly_format.h"

using namespace zgly;

namespace {

uint16_t FirstOf(const CFontBlock& b, uint32_t at) { return b.Length() >= at + 2 ? GetU16(b.Data() + at) : 0; }

// Bytes the mapping data of a CMAP block needs, 0 for unknown methods (which
// map nothing).
uint64_t MapDataBytes(const CFontBlock& b) {
    uint16_t first = GetU16(b.Data() + CmapFirstCode), last = GetU16(b.Data() + CmapLastCode);
    switch (GetU16(b.Data() + CmapMethod)) {
    case MethodDirect: return 2;
    case MethodTable: return last >= first ? 2ull * (last - first + 1u) : 0;
    case MethodScan:
        return b.Length() >= CmapHeadSize + 2 ? 2 + 4ull * GetU16(b.Data() + CmapHeadSize) : 2;
    default: return 0;
    }
}

// For the ranges of a tag's blocks in file order, the keys each one decides
// (those no earlier range covers), sorted by key. The keys already decided
// are kept as disjoint intervals; each range takes the gaps between those it
// meets and merges them into one, so many overlapping blocks stay cheap.
std::vector<CFontBlockSet::Span> DecidedSpans(const std::vector<const CFontBlock*>& blocks, uint32_t firstAt,
                                              uint32_t lastAt) {
    std::vector<CFontBlockSet::Span> spans;
    std::map<uint32_t, uint32_t> decided;  // first key -> last key
    for (const CFontBlock* b : blocks) {
        const uint32_t first = FirstOf(*b, firstAt), last = FirstOf(*b, lastAt);
        if (first > last) continue;
        auto it = decided.upper_bound(first);
        if (it != decided.begin() && std::prev(it)->second >= first) --it;
        uint32_t from = first, mergedFirst = first, mergedLast = last;
        while (it != decided.end() && it->first <= last) {
            if (it->first > from) spans.push_back({from, it->first - 1, b});
            from = std::max(from, it->second + 1);
            mergedFirst = std::min(mergedFirst, it->first);
            mergedLast = std::max(mergedLast, it->second);
            it = decided.erase(it);
        }
        if (from <= last) spans.push_back({from, last, b});
        decided.emplace(mergedFirst, mergedLast);
    }
    std::sort(spans.begin(), spans.end(), [](const auto& a, const auto& b) { return a.First < b.First; });
    return spans;
}

// The span holding a key, or nullptr.
const CFontBlock* SpanBlock(const std::vector<CFontBlockSet::Span>& spans, uint32_t key) {
    auto it = std::upper_bound(spans.begin(), spans.end(), key, [](uint32_t k, const auto& s) { return k < s.First; });
    if (it == spans.begin()) return nullptr;
    --it;
    return key <= it->Last ? it->Block : nullptr;
}

}  // namespace

void CFontBlockSet::AddBlock(uint32_t tag, const uint8_t* content, uint32_t length) {
    AddBlock(tag, std::vector<uint8_t>(content, content + length));
}

void CFontBlockSet::AddBlock(uint32_t tag, std::vector<uint8_t> content) {
    auto block = std::make_unique<CFontBlock>();
    block->Tag = tag;
    block->Size = static_cast<uint32_t>(content.size()) + BlockHeaderSize;
    block->Content = std::move(content);
    Blocks[tag].push_back(std::move(block));
    // A block added after Validate is not in the spans.
    Indexed = false;
    MapSpanList.clear();
    WidthSpanList.clear();
}

CFontBlock* CFontBlockSet::GetBlock(uint32_t tag, uint32_t index) {
    auto it = Blocks.find(tag);
    if (it == Blocks.end() || index >= it->second.size()) return nullptr;
    return it->second[index].get();
}

const CFontBlock* CFontBlockSet::GetBlock(uint32_t tag, uint32_t index) const {
    return const_cast<CFontBlockSet*>(this)->GetBlock(tag, index);
}

uint32_t CFontBlockSet::CountBlocks(uint32_t tag) const {
    auto it = Blocks.find(tag);
    return it == Blocks.end() ? 0 : static_cast<uint32_t>(it->second.size());
}

void CFontBlockSet::Validate() {
    const CFontBlock* finf = GetBlock(TagFINF, 0);
    if (!finf) throw CGeneralException("ZGLY File Error:\n The file has no FINF block");
    if (finf->Length() < FinfReadSize)
        ThrowError("ZGLY File Error:\n FINF block is too small(=%d, must be at least %d)", finf->Length(),
                   FinfReadSize);
    int encoding = finf->Data()[FinfEncoding];
    if (encoding > 3) ThrowError("ZGLY File Error:\n Unsupported encoding(=%d, supports 0 to 3)", encoding);

    const CFontBlock* cglp = GetBlock(TagCGLP, 0);
    if (!cglp) throw CGeneralException("ZGLY File Error:\n The file has no CGLP block");
    if (cglp->Length() < CglpHeadSize)
        ThrowError("ZGLY File Error:\n CGLP block is too small(=%d, must be at least %d)", cglp->Length(),
                   CglpHeadSize);
    const uint8_t* g = cglp->Data();
    int bpp = g[CglpBpp];
    if (bpp < 1 || bpp > 8) ThrowError("ZGLY File Error:\n Unsupported bits per pixel(=%d, supports 1 to 8)", bpp);
    long long needed = (static_cast<long long>(g[CglpCellWidth]) * g[CglpCellHeight] * bpp + 7) / 8;
    if (GetU16(g + CglpCellSize) < needed)
        ThrowError("ZGLY File Error:\n Cell size(=%d) is too small for %dx%d pixels at %d bits per pixel(needs %d)",
                   GetU16(g + CglpCellSize), g[CglpCellWidth], g[CglpCellHeight], bpp, needed);

    for (uint32_t i = 0; const CFontBlock* w = GetBlock(TagCWDH, i); ++i) {
        if (w->Length() < CwdhHeadSize)
            ThrowError("ZGLY File Error:\n CWDH block %d is too small(=%d, must be at least %d)", i, w->Length(),
                       CwdhHeadSize);
        uint16_t first = GetU16(w->Data() + CwdhFirstGlyph), last = GetU16(w->Data() + CwdhLastGlyph);
        uint64_t entries = last >= first ? last - first + 1u : 0;
        if (CwdhHeadSize + WidthEntrySize * entries > w->Length())
            ThrowError("ZGLY File Error:\n CWDH block %d for glyphs %d to %d runs past its block(size=%d)", i, first,
                       last, w->Length());
    }
    for (uint32_t i = 0; const CFontBlock* m = GetBlock(TagCMAP, i); ++i) {
        if (m->Length() < CmapHeadSize)
            ThrowError("ZGLY File Error:\n CMAP block %d is too small(=%d, must be at least %d)", i, m->Length(),
                       CmapHeadSize);
        if (CmapHeadSize + MapDataBytes(*m) > m->Length())
            ThrowError("ZGLY File Error:\n CMAP block %d (codes %04X to %04X, method %d) runs past its block(size=%d)",
                       i, GetU16(m->Data() + CmapFirstCode), GetU16(m->Data() + CmapLastCode),
                       GetU16(m->Data() + CmapMethod), m->Length());
    }
    BuildLookupIndexes();
}

void CFontBlockSet::BuildLookupIndexes() {
    std::vector<const CFontBlock*> list;
    for (uint32_t i = 0; const CFontBlock* m = GetBlock(TagCMAP, i); ++i) list.push_back(m);
    MapSpanList = DecidedSpans(list, CmapFirstCode, CmapLastCode);
    list.clear();
    for (uint32_t i = 0; const CFontBlock* w = GetBlock(TagCWDH, i); ++i) list.push_back(w);
    WidthSpanList = DecidedSpans(list, CwdhFirstGlyph, CwdhLastGlyph);
    IndexedCellCount = CountCells();
    Indexed = true;
}

const CFontBlock* CFontBlockSet::DecidingMapBlock(uint16_t code) const {
    if (Indexed) return SpanBlock(MapSpanList, code);
    for (uint32_t i = 0; const CFontBlock* m = GetBlock(TagCMAP, i); ++i)
        if (FirstOf(*m, CmapFirstCode) <= code && code <= FirstOf(*m, CmapLastCode)) return m;
    return nullptr;
}

const CFontBlock* CFontBlockSet::CoveringWidthBlock(uint16_t glyph) const {
    if (Indexed) return SpanBlock(WidthSpanList, glyph);
    for (uint32_t i = 0; const CFontBlock* w = GetBlock(TagCWDH, i); ++i)
        if (FirstOf(*w, CwdhFirstGlyph) <= glyph && glyph <= FirstOf(*w, CwdhLastGlyph)) return w;
    return nullptr;
}

uint16_t LookUpMapBlock(const CFontBlock& b, uint16_t code) {
    if (b.Length() < CmapHeadSize) return NoGlyph;
    const uint8_t* p = b.Data();
    uint16_t first = GetU16(p + CmapFirstCode), last = GetU16(p + CmapLastCode);
    if (code < first || code > last) return NoGlyph;
    uint32_t len = b.Length();
    switch (GetU16(p + CmapMethod)) {
    case MethodDirect:
        if (len < CmapHeadSize + 2) return NoGlyph;
        return static_cast<uint16_t>(GetU16(p + CmapHeadSize) + (code - first));
    case MethodTable: {
        uint32_t at = CmapHeadSize + 2u * (code - first);
        return at + 2 <= len ? GetU16(p + at) : NoGlyph;
    }
    case MethodScan: {
        if (len < CmapHeadSize + 2) return NoGlyph;
        long count = GetU16(p + CmapHeadSize);
        count = std::min<long>(count, (len - CmapHeadSize - 2) / 4);
        const uint8_t* pairs = p + CmapHeadSize + 2;
        long low = 0, high = count - 1;
        while (low <= high) {
            long mid = low + (high - low) / 2;
            uint16_t c = GetU16(pairs + 4 * mid);
            if (c == code) return GetU16(pairs + 4 * mid + 2);
            if (code < c)
                high = mid - 1;
            else
                low = mid + 1;
        }
        return NoGlyph;
    }
    default: return NoGlyph;
    }
}

uint16_t CCodeWalker::GlyphOf(uint16_t code) {
    while (SpanAt < Spans.size() && Spans[SpanAt].Last < code) ++SpanAt;
    if (SpanAt == Spans.size() || Spans[SpanAt].First > code) return NoGlyph;
    const CFontBlock& b = *Spans[SpanAt].Block;
    if (b.Length() < CmapHeadSize + 2 || GetU16(b.Data() + CmapMethod) != MethodScan) return LookUpMapBlock(b, code);
    if (&b != ScanBlock) {
        ScanBlock = &b;
        Pairs = b.Data() + CmapHeadSize + 2;
        PairCount = std::min<long>(GetU16(b.Data() + CmapHeadSize), (b.Length() - CmapHeadSize - 2) / 4);
        PairAt = 0;
        PairsAscend = true;
        for (long i = 1; i < PairCount && PairsAscend; ++i)
            PairsAscend = GetU16(Pairs + 4 * (i - 1)) < GetU16(Pairs + 4 * i);
    }
    // Pairs out of order: the binary search decides, as for single lookups.
    if (!PairsAscend) return LookUpMapBlock(b, code);
    while (PairAt < PairCount && GetU16(Pairs + 4 * PairAt) < code) ++PairAt;
    return PairAt < PairCount && GetU16(Pairs + 4 * PairAt) == code ? GetU16(Pairs + 4 * PairAt + 2) : NoGlyph;
}

uint32_t CountMappedCodes(const CFontBlock& b) {
    if (b.Length() < CmapHeadSize) return 0;
    uint16_t first = GetU16(b.Data() + CmapFirstCode), last = GetU16(b.Data() + CmapLastCode);
    if (first > last) return 0;
    switch (GetU16(b.Data() + CmapMethod)) {
    case MethodDirect: return last - first + 1u;
    case MethodScan:
        return b.Length() >= CmapHeadSize + 2 ? std::min<uint32_t>(GetU16(b.Data() + CmapHeadSize),
                                                                   (b.Length() - CmapHeadSize - 2) / 4)
                                              : 0;
    case MethodTable: {
        uint32_t n = 0;
        for (uint32_t c = first; c <= last; ++c)
            if (LookUpMapBlock(b, static_cast<uint16_t>(c)) != NoGlyph) ++n;
        return n;
    }
    default: return 0;
    }
}

uint16_t CFontBlockSet::FindGlyphIndex(uint16_t code) const {
    const CFontBlock* m = DecidingMapBlock(code);
    return m ? LookUpMapBlock(*m, code) : NoGlyph;
}

CharWidths CFontBlockSet::GetCharWidths(uint16_t glyph) const {
    const uint8_t* entry = nullptr;
    if (const CFontBlock* w = CoveringWidthBlock(glyph)) {
        uint32_t at = CwdhHeadSize + WidthEntrySize * (glyph - GetU16(w->Data() + CwdhFirstGlyph));
        if (at + WidthEntrySize <= w->Length()) entry = w->Data() + at;
    }
    if (!entry) {
        const CFontBlock* finf = GetBlock(TagFINF, 0);
        if (!finf || finf->Length() < FinfReadSize) return CharWidths{};
        entry = finf->Data() + FinfDefaultLeft;
    }
    return CharWidths{static_cast<int8_t>(entry[0]), entry[1], entry[2]};
}

uint32_t CFontBlockSet::CellCount() const { return Indexed ? IndexedCellCount : CountCells(); }

uint32_t CFontBlockSet::CountCells() const {
    const CFontBlock* cglp = GetBlock(TagCGLP, 0);
    if (!cglp || cglp->Length() < CglpHeadSize) return 0;
    uint16_t cellSize = GetU16(cglp->Data() + CglpCellSize);
    // Empty cells take no room, so any index has one.
    if (cellSize == 0) return 0x10000;
    // The block is padded with zero bytes to a multiple of 4, so its last
    // up to 3 bytes may be padding rather than cells: the fewest cells after
    // which only zero bytes remain, or more when the width entries name them.
    const uint8_t* cells = cglp->Data() + CglpHeadSize;
    const uint32_t cellBytes = cglp->Length() - CglpHeadSize;
    const uint32_t most = cellBytes / cellSize;
    if (cellBytes % 4 != 0) return most;  // not padded
    uint32_t count = cellBytes >= 4 ? (cellBytes - 4) / cellSize + 1 : 0;
    while (count < most && std::any_of(cells + count * cellSize, cells + cellBytes, [](uint8_t b) { return b != 0; }))
        ++count;
    for (uint32_t i = 0; const CFontBlock* w = GetBlock(TagCWDH, i); ++i) {
        uint32_t first = FirstOf(*w, CwdhFirstGlyph), last = FirstOf(*w, CwdhLastGlyph);
        if (first <= last) count = std::max(count, last + 1);
    }
    return std::min(count, most);
}

const uint8_t* CFontBlockSet::GetCellBits(uint16_t glyph) const {
    if (glyph >= CellCount()) return nullptr;
    const CFontBlock* cglp = GetBlock(TagCGLP, 0);
    return cglp->Data() + CglpHeadSize + static_cast<std::size_t>(glyph) * GetU16(cglp->Data() + CglpCellSize);
}
