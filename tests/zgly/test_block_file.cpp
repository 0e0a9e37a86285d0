#include <gtest/gtest.h>

#include <functional>

#include "synthetic_font.h"
#include "zgly/font_block_file.h"
#include "zgly/zgly_format.h"
#include "zgly_test_util.h"
#include "zgly/char_map_builder.h"

using namespace zgly;

// Every check of a file's header and blocks, in order, with its message.
TEST(ZglyBlockFile, ValidationMessages) {
    CScratchDir dir;
    const auto finf = Block(TagFINF, Finf()), cglp = Block(TagCGLP, Cglp(1, 1));
    const auto good = File({finf, cglp});
    using Edit = std::function<void(std::vector<uint8_t>&)>;
    const std::string e = "ZGLY File Error:\n ";
    const struct {
        std::vector<uint8_t> Bytes;
        Edit Change;
        std::string Message;
    } cases[] = {
        {good, [](auto&) {}, ""},
        {good, [](auto& b) { b[0] = 'X', b[6] = 0x99; }, e + "The file is not ZGLY file"},
        {good, [](auto& b) { SetU16(b, 4, 0xFFFE); }, e + "Little endian byte order support only"},
        {good, [](auto& b) { SetU16(b, 4, 0x1234); }, e + "The file is not ZGLY file"},
        {good, [](auto& b) { SetU16(b, 6, 0x0102), SetU16(b, 12, 20); }, e + "Unsupported version(=0102, supports 0101, 0100)"},
        {good, [](auto& b) { SetU16(b, 6, 0x0100), SetU16(b, 12, 20); }, e + "Unknown header size(=20, must be 16)"},
        {good, [](auto& b) { SetU16(b, 14, 1); }, e + "Number of blocks is too small(=1)"},
        // The count is not compared with the blocks present, nor is the file size.
        {good, [](auto& b) { SetU16(b, 14, 65535), SetU32(b, 8, 3); }, ""},
        {{'Y', 'L', 'G'}, [](auto&) {}, e + "The file is not ZGLY file"},
        {File({cglp, cglp}), [](auto&) {}, e + "The file has no FINF block"},
        {File({finf, finf}), [](auto&) {}, e + "The file has no CGLP block"},
        {File({Block(TagFINF, {1, 2, 3}), cglp}), [](auto&) {}, e + "FINF block is too small(=4, must be at least 8)"},
        {File({finf, Block(TagCGLP, {2, 2})}), [](auto&) {}, e + "CGLP block is too small(=4, must be at least 8)"},
        {File({Block(TagFINF, Finf(4)), cglp}), [](auto&) {}, e + "Unsupported encoding(=4, supports 0 to 3)"},
        {File({finf, Block(TagCGLP, Cglp(1, 1, 0))}), [](auto&) {}, e + "Unsupported bits per pixel(=0, supports 1 to 8)"},
        {File({finf, Block(TagCGLP, Cglp(1, 1, 3))}), [](auto&) {},  // 2 x 2 x 3 bits need 2 bytes
         e + "Cell size(=1) is too small for 2x2 pixels at 3 bits per pixel(needs 2)"},
        {good, [](auto& b) { SetU32(b, 20, 4); }, e + "The block at offset 16 has an invalid size(=4, must be at least 8)"},
        {good, [](auto& b) { SetU32(b, 20, 4000); }, e + "The block at offset 16 runs past the end of the file(block size=4000, file size=64)"},
        {good, [](auto& b) { b.insert(b.end(), {1, 2, 3}); }, e + "The block at offset 64 is cut off by the end of the file(size=67)"},
        {File({finf, cglp, Block(TagCWDH, {0, 0, 9, 0, 0, 0, 0, 0, 1, 1, 1})}), [](auto&) {},
         e + "CWDH block 0 for glyphs 0 to 9 runs past its block(size=12)"},
        {File({finf, cglp, Block(TagCMAP, Cmap(0x41, 0x60, 1, {0, 1}))}), [](auto&) {},
         e + "CMAP block 0 (codes 0041 to 0060, method 1) runs past its block(size=16)"},
        {File({finf, cglp, Block(TagCMAP, Cmap(0, 0xFFFF, 2, {5, 0x41, 0}))}), [](auto&) {},  // 5 pairs claimed, 1 held
         e + "CMAP block 0 (codes 0000 to FFFF, method 2) runs past its block(size=20)"},
        {File({finf, cglp, Block(TagCMAP, {1, 2, 3, 4})}), [](auto&) {}, e + "CMAP block 0 is too small(=4, must be at least 12)"},
    };
    for (const auto& c : cases) {
        auto bytes = c.Bytes;
        c.Change(bytes);
        PutFile(dir / "f.zgly", bytes);
        EXPECT_EQ(ErrorOf([&] { CheckNativeFontFile(dir / "f.zgly"); }), c.Message);
    }
    EXPECT_EQ(ErrorOf([&] { CheckNativeFontFile(dir / "none.zgly"); }),
              "Parameter Error:\n File(" + (dir / "none.zgly").string() + ") not exists.");
}

// The CMAP blocks a writer makes: a direct block for long runs, tables for dense
// areas, one scan block for the rest.
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
