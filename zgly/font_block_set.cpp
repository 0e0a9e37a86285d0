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

// For every 16-bit key, the first range in list order that covers it. A
// "next free key" chain skips keys already decided, so overlapping ranges
// cost nothing more.
std::vector<int32_t> FirstCovering(const std::vector<std::pair<uint32_t, uint32_t>>& ranges) {
    std::vector<int32_t> owner(0x10000, -1);
    std::vector<uint32_t> nextFree(0x10001);
    for (uint32_t i = 0; i <= 0x10000; ++i) nextFree[i] = i;
    auto find = [&](uint32_t k) {
        uint32_t root = k;
        while (nextFree[root] != root) root = nextFree[root];
        while (nextFree[k] != root) {
            uint32_t n = nextFree[k];
            nextFree[k] = root;
            k = n;
        }
        return root;
    };
    for (std::size_t i = 0; i < ranges.size(); ++i) {
        auto [first, last] = ranges[i];
        if (first > last) continue;
        for (uint32_t k = find(first); k <= last; k = find(k)) {
            owner[k] = static_cast<int32_t>(i);
            nextFree[k] = k + 1;
        }
    }
    return owner;
}

}  // namespace

void CFontBlockSet::AddBlock(uint32_t tag, const uint8_t* content, uint32_t length) {
    auto block = std::make_unique<CFontBlock>();
    block->Tag = tag;
    block->Size = length + BlockHeaderSize;
    block->Content.assign(content, content + length);
    Blocks[tag].push_back(std::move(block));
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
    if (finf->Length() < FinfSize)
        ThrowError("ZGLY File Error:\n FINF block is too small(=%d, must be %d)", finf->Length(), FinfSize);
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
    std::vector<std::pair<uint32_t, uint32_t>> ranges;
    for (uint32_t i = 0; const CFontBlock* m = GetBlock(TagCMAP, i); ++i)
        ranges.emplace_back(FirstOf(*m, CmapFirstCode), FirstOf(*m, CmapLastCode));
    MapBlockOfCode = FirstCovering(ranges);
    ranges.clear();
    for (uint32_t i = 0; const CFontBlock* w = GetBlock(TagCWDH, i); ++i)
        ranges.emplace_back(FirstOf(*w, CwdhFirstGlyph), FirstOf(*w, CwdhLastGlyph));
    WidthBlockOfGlyph = FirstCovering(ranges);
}

const CFontBlock* CFontBlockSet::DecidingMapBlock(uint16_t code) const {
    if (!MapBlockOfCode.empty()) {
        int32_t i = MapBlockOfCode[code];
        return i < 0 ? nullptr : GetBlock(TagCMAP, static_cast<uint32_t>(i));
    }
    for (uint32_t i = 0; const CFontBlock* m = GetBlock(TagCMAP, i); ++i)
        if (FirstOf(*m, CmapFirstCode) <= code && code <= FirstOf(*m, CmapLastCode)) return m;
    return nullptr;
}

const CFontBlock* CFontBlockSet::CoveringWidthBlock(uint16_t glyph) const {
    if (!WidthBlockOfGlyph.empty()) {
        int32_t i = WidthBlockOfGlyph[glyph];
        return i < 0 ? nullptr : GetBlock(TagCWDH, static_cast<uint32_t>(i));
    }
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
        if (!finf || finf->Length() < FinfSize) return CharWidths{};
        entry = finf->Data() + FinfDefaultLeft;
    }
    return CharWidths{static_cast<int8_t>(entry[0]), entry[1], entry[2]};
}

uint32_t CFontBlockSet::CellCount() const {
    const CFontBlock* cglp = GetBlock(TagCGLP, 0);
    if (!cglp || cglp->Length() < CglpHeadSize) return 0;
    uint16_t cellSize = GetU16(cglp->Data() + CglpCellSize);
    // Empty cells take no room, so any index has one.
    if (cellSize == 0) return 0x10000;
    return (cglp->Length() - CglpHeadSize) / cellSize;
}

const uint8_t* CFontBlockSet::GetCellBits(uint16_t glyph) const {
    if (glyph >= CellCount()) return nullptr;
    const CFontBlock* cglp = GetBlock(TagCGLP, 0);
    return cglp->Data() + CglpHeadSize + static_cast<std::size_t>(glyph) * GetU16(cglp->Data() + CglpCellSize);
}
