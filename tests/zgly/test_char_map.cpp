#include <gtest/gtest.h>

#include "zgly/char_map_builder.h"
#include "zgly/zgly_format.h"

namespace {

// Glyphs 0, 1, ... for the codes of the runs {first, count}.
std::vector<CodeGlyph> Glyphs(const std::vector<std::pair<int, int>>& runs) {
    std::vector<CodeGlyph> g;
    for (auto [first, count] : runs)
        for (int i = 0; i < count; ++i) g.push_back(CodeGlyph{static_cast<uint16_t>(first + i), static_cast<uint16_t>(g.size())});
    return g;
}

// {method, first code, last code, data entries} of each block.
std::vector<std::vector<int>> Shape(const std::vector<CharMapBlock>& blocks) {
    std::vector<std::vector<int>> out;
    for (const auto& b : blocks) out.push_back({b.Method, b.FirstCode, b.LastCode, static_cast<int>(b.Data.size())});
    return out;
}

}  // namespace

TEST(CharMap, BlockMethodsAndTheirThresholds) {
    using namespace zgly;
    const struct {
        std::vector<std::pair<int, int>> Runs;
        std::vector<std::vector<int>> Blocks;
    } cases[] = {
        // Direct from 80 codes in a row, a table from 40 codes with glyphs, else the scan block.
        {{{0x20, 80}}, {{MethodDirect, 0x20, 0x6F, 1}}},
        {{{0x20, 79}}, {{MethodTable, 0x20, 0x6E, 79}}},
        {{{0x100, 40}}, {{MethodTable, 0x100, 0x127, 40}}},
        {{{0x100, 39}}, {{MethodScan, 0, 0xFFFF, 78}}},
        {{{0x100, 30}, {0x132, 30}}, {{MethodTable, 0x100, 0x14F, 80}}},  // a gap of 20 still dense enough
        // A fails alone (40/90); B takes C, then A and D are equally dense (70/125):
        // backward wins, after which D no longer fits and is left to the scan block.
        {{{1000, 10}, {1060, 30}, {1095, 30}, {1175, 10}}, {{MethodTable, 1000, 1124, 125}, {MethodScan, 0, 0xFFFF, 20}}},
        // A direct run splits a dense area: the codes it took count as missing
        // (120 / 202 is still dense enough), and the table fills them in.
        {{{0x3000, 60}, {0x303D, 80}, {0x308E, 60}, {0x5000, 3}},
         {{MethodDirect, 0x303D, 0x308C, 1}, {MethodTable, 0x3000, 0x30C9, 202}, {MethodScan, 0, 0xFFFF, 6}}},
    };
    for (const auto& c : cases) {
        const auto g = Glyphs(c.Runs);
        std::vector<int> steps;
        const auto blocks = BuildCharMap(g, [&](int d) { steps.push_back(d); });
        EXPECT_EQ(Shape(blocks), c.Blocks) << c.Runs[0].first;
        if (c.Runs[0].first != 0x3000) continue;
        // The table maps the direct block's codes too; direct and table blocks step by
        // last index minus first, the scan block once a glyph.
        EXPECT_EQ(std::vector<int>({blocks[1].Data[0x3C], blocks[1].Data[0x3D], blocks[2].Data[0], blocks[2].Data[1]}),
                  std::vector<int>({0xFFFF, 60, 0x5000, 200}));
        EXPECT_EQ(steps, (std::vector<int>{139 - 60, 199 - 0, 1, 1, 1}));
    }
    EXPECT_EQ(BuildCharMap(Glyphs({{0x100, 30}}), [](int) {})[0].Encode().size(), 12u + 2 + 4 * 30);
}
