#include <gtest/gtest.h>

#include "zgly/char_map_builder.h"
#include "zgly/font_block_set.h"
#include "zgly/zgly_format.h"

namespace {

std::vector<CodeGlyph> Glyphs(const std::vector<std::pair<int, int>>& ranges) {
    std::vector<CodeGlyph> g;
    for (auto [first, count] : ranges)
        for (int i = 0; i < count; ++i) g.push_back(CodeGlyph{static_cast<uint16_t>(first + i), 0});
    for (std::size_t i = 0; i < g.size(); ++i) g[i].Index = static_cast<uint16_t>(i);
    return g;
}

std::vector<CharMapBlock> Build(const std::vector<CodeGlyph>& g) {
    return BuildCharMap(g, [](int) {});
}

}  // namespace

TEST(CharMap, DirectTableAndScanThresholds) {
    auto direct = Build(Glyphs({{0x20, 95}}));
    ASSERT_EQ(direct.size(), 1u);
    EXPECT_EQ(direct[0].Method, zgly::MethodDirect);
    EXPECT_EQ(direct[0].FirstCode, 0x20);
    EXPECT_EQ(direct[0].LastCode, 0x7E);
    EXPECT_EQ(direct[0].Data, std::vector<uint16_t>{0});

    auto table = Build(Glyphs({{0x20, 64}}));
    ASSERT_EQ(table.size(), 1u);
    EXPECT_EQ(table[0].Method, zgly::MethodTable);
    EXPECT_EQ(table[0].Data.size(), 64u);

    auto scan = Build(Glyphs({{0x100, 30}}));
    ASSERT_EQ(scan.size(), 1u);
    EXPECT_EQ(scan[0].Method, zgly::MethodScan);
    EXPECT_EQ(scan[0].FirstCode, 0x0000);
    EXPECT_EQ(scan[0].LastCode, 0xFFFF);
    EXPECT_EQ(scan[0].Data.size(), 60u);
    EXPECT_EQ(scan[0].Encode().size(), 12u + 2 + 4 * 30);

    auto gapped = Build(Glyphs({{0x100, 30}, {0x100 + 30 + 20, 30}}));
    ASSERT_EQ(gapped.size(), 1u);
    EXPECT_EQ(gapped[0].Method, zgly::MethodTable);
    ASSERT_EQ(gapped[0].Data.size(), 80u);
    EXPECT_EQ(std::count(gapped[0].Data.begin(), gapped[0].Data.end(), 0xFFFF), 20);
    EXPECT_EQ(gapped[0].Data[50], 30);
}

TEST(CharMap, EqualCandidatesGrowBackwardFirst) {
    // A fails alone (40/90); B takes C, then A and D are equally dense (70/125):
    // backward wins, after which D no longer fits and is left to the scan block.
    auto blocks = Build(Glyphs({{1000, 10}, {1060, 30}, {1095, 30}, {1175, 10}}));
    ASSERT_EQ(blocks.size(), 2u);
    EXPECT_EQ(blocks[0].Method, zgly::MethodTable);
    EXPECT_EQ(blocks[0].FirstCode, 1000);
    EXPECT_EQ(blocks[0].LastCode, 1124);
    EXPECT_EQ(blocks[1].Method, zgly::MethodScan);
    EXPECT_EQ(blocks[1].Data.size(), 20u);
    EXPECT_EQ(blocks[1].Data[0], 1175);
}

TEST(CharMap, TablesCoverCodesOfDirectBlocksAndEveryGlyphIsMappedOnce) {
    // A direct run splits a dense area: the table spanning it fills its codes in.
    auto g = Glyphs({{0x3000, 20}, {0x3015, 100}, {0x307A, 25}, {0x5000, 3}});
    int steps = 0;
    auto blocks = BuildCharMap(g, [&](int d) { steps += d; });
    CFontBlockSet set;
    for (const auto& b : blocks) {
        auto content = b.Encode();
        set.AddBlock(zgly::TagCMAP, content.data(), static_cast<uint32_t>(content.size()));
    }
    for (const auto& cg : g) EXPECT_EQ(set.FindGlyphIndex(cg.Code), cg.Index) << cg.Code;
    EXPECT_EQ(set.FindGlyphIndex(0x3014), 0xFFFF);
    EXPECT_EQ(set.FindGlyphIndex(0x4FFF), 0xFFFF);
    ASSERT_GE(blocks.size(), 2u);
    EXPECT_EQ(blocks[0].Method, zgly::MethodDirect);
    EXPECT_GT(steps, 0);
}
