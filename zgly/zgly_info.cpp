#include "zgly/zgly_info.h"

#include <algorithm>

#include "zgly/font_block_file.h"
#include "zgly/path_checks.h"
#include "zgly/zgly_format.h"

using namespace zgly;

ZglyInfo DescribeZgly(const CFontBlockSet& set) {
    ZglyInfo info;
    info.Version = set.Header.Version;
    info.FileSize = set.Header.FileSize;
    info.BlockCount = set.Header.BlockCount;

    const uint8_t* f = set.GetBlock(TagFINF, 0)->Data();
    info.LineFeed = static_cast<int8_t>(f[FinfLineFeed]);
    info.AlternateGlyph = GetU16(f + FinfAlternateGlyph);
    info.DefaultLeft = static_cast<int8_t>(f[FinfDefaultLeft]);
    info.DefaultGlyphWidth = f[FinfDefaultGlyphWidth];
    info.DefaultCharWidth = f[FinfDefaultCharWidth];
    info.Encoding = f[FinfEncoding];

    const uint8_t* g = set.GetBlock(TagCGLP, 0)->Data();
    info.CellWidth = g[CglpCellWidth];
    info.CellHeight = g[CglpCellHeight];
    info.CellSize = GetU16(g + CglpCellSize);
    info.Baseline = static_cast<int8_t>(g[CglpBaseline]);
    info.MaxCharWidth = g[CglpMaxCharWidth];
    info.Bpp = g[CglpBpp];
    info.Vertical = (g[CglpFlags] & FlagVertical) != 0;
    info.Rotation = (g[CglpFlags] >> 1) & 3;

    uint32_t widthEnd = 0;
    for (uint32_t i = 0; const CFontBlock* w = set.GetBlock(TagCWDH, i); ++i) {
        ZglyWidthBlockInfo b{GetU16(w->Data() + CwdhFirstGlyph), GetU16(w->Data() + CwdhLastGlyph)};
        if (b.FirstGlyph <= b.LastGlyph) widthEnd = std::max<uint32_t>(widthEnd, b.LastGlyph + 1u);
        info.WidthBlocks.push_back(b);
    }
    // Empty cells take no room, so then the width entries tell the count.
    info.GlyphCount = info.CellSize > 0 ? set.CellCount() : widthEnd;

    for (uint32_t i = 0; const CFontBlock* m = set.GetBlock(TagCMAP, i); ++i)
        info.MapBlocks.push_back(ZglyMapBlockInfo{GetU16(m->Data() + CmapFirstCode), GetU16(m->Data() + CmapLastCode),
                                                  GetU16(m->Data() + CmapMethod), CountMappedCodes(*m)});
    for (uint32_t c = 0; c <= 0xFFFF; ++c) {
        uint16_t glyph = set.FindGlyphIndex(static_cast<uint16_t>(c));
        if (glyph == NoGlyph) continue;
        ++info.MappedCodes;
        if (glyph == info.AlternateGlyph) {
            info.HasAlternateCode = true;
            info.AlternateCode = static_cast<uint16_t>(c);
        }
    }
    return info;
}

ZglyInfo DescribeZglyFile(const std::filesystem::path& path) {
    CheckInputFile(path);
    CFontBlockSet set;
    CFontBlockFile(path).Load(set);
    return DescribeZgly(set);
}
