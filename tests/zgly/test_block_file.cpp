#include <gtest/gtest.h>

#include "synthetic_font.h"
#include "zgly/font_block_file.h"
#include "zgly/zgly_format.h"
#include "zgly_test_util.h"

using namespace zgly;

namespace {

std::string LoadMessage(const CScratchDir& dir, const std::vector<uint8_t>& bytes) {
    PutFile(dir / "f.zgly", bytes);
    return MessageOf([&] { CheckNativeFontFile(dir / "f.zgly"); });
}

}  // namespace

TEST(ZglyBlockFile, HeaderChecksInOrder) {
    CScratchDir dir;
    auto good = File({Block(TagFINF, Finf()), Block(TagCGLP, Cglp(1, 1))});
    EXPECT_EQ(LoadMessage(dir, good), "");
    auto bad = good;
    bad[0] = 'X';
    bad[6] = 0x99;
    EXPECT_EQ(LoadMessage(dir, bad), "ZGLY File Error:\n The file is not ZGLY file");
    bad = good;
    SetU16(bad, 4, 0xFFFE);
    EXPECT_EQ(LoadMessage(dir, bad), "ZGLY File Error:\n Little endian byte order support only");
    SetU16(bad, 4, 0x1234);
    EXPECT_EQ(LoadMessage(dir, bad), "ZGLY File Error:\n The file is not ZGLY file");
    bad = good;
    SetU16(bad, 6, 0x0102);
    SetU16(bad, 12, 20);
    EXPECT_EQ(LoadMessage(dir, bad), "ZGLY File Error:\n Unsupported version(=0102, supports 0101, 0100)");
    SetU16(bad, 6, 0x0100);
    EXPECT_EQ(LoadMessage(dir, bad), "ZGLY File Error:\n Unknown header size(=20, must be 16)");
    SetU16(bad, 12, 16);
    SetU16(bad, 14, 1);
    EXPECT_EQ(LoadMessage(dir, bad), "ZGLY File Error:\n Number of blocks is too small(=1)");
    SetU16(bad, 14, 65535);  // the count is not compared with the blocks present
    SetU32(bad, 8, 3);       // nor is the file size
    EXPECT_EQ(LoadMessage(dir, bad), "");
    EXPECT_EQ(LoadMessage(dir, {'Y', 'L', 'G'}), "ZGLY File Error:\n The file is not ZGLY file");
    EXPECT_EQ(MessageOf([&] { CheckNativeFontFile(dir / "none.zgly"); }),
              "Parameter Error:\n File(" + (dir / "none.zgly").string() + ") not exists.");
}

TEST(ZglyBlockFile, MalformedStructureGivesFileErrors) {
    CScratchDir dir;
    auto finf = Block(TagFINF, Finf());
    auto cglp = Block(TagCGLP, Cglp(1, 1));
    auto expectError = [&](const std::vector<uint8_t>& bytes, const std::string& detail) {
        std::string m = LoadMessage(dir, bytes);
        EXPECT_EQ(m.rfind("ZGLY File Error:\n ", 0), 0u) << m;
        EXPECT_NE(m.find(detail), std::string::npos) << m;
    };
    expectError(File({cglp, cglp}), "no FINF block");
    expectError(File({finf, finf}), "no CGLP block");
    expectError(File({Block(TagFINF, {1, 2, 3}), cglp}), "FINF block is too small");
    expectError(File({finf, Block(TagCGLP, {2, 2})}), "CGLP block is too small");
    expectError(File({Block(TagFINF, Finf(4)), cglp}), "Unsupported encoding(=4");
    expectError(File({finf, Block(TagCGLP, Cglp(1, 1, 0))}), "Unsupported bits per pixel(=0");
    auto tooSmallCells = Cglp(1, 1, 3);  // 2 x 2 x 3 bits need 2 bytes
    expectError(File({finf, Block(TagCGLP, tooSmallCells)}), "Cell size(=1) is too small");

    auto tiny = File({finf, cglp});
    SetU32(tiny, 16 + 4, 4);
    expectError(tiny, "invalid size(=4");
    auto past = File({finf, cglp});
    SetU32(past, 16 + 4, 4000);
    expectError(past, "runs past the end of the file");
    auto cut = File({finf, cglp});
    cut.insert(cut.end(), {1, 2, 3});
    expectError(cut, "cut off");

    std::vector<uint8_t> widths = {0, 0, 9, 0, 0, 0, 0, 0, 1, 1, 1};  // glyphs 0..9, one entry
    expectError(File({finf, cglp, Block(TagCWDH, widths)}), "CWDH block 0 for glyphs 0 to 9 runs past");
    expectError(File({finf, cglp, Block(TagCMAP, Cmap(0x41, 0x60, 1, {0, 1}))}), "CMAP block 0 (codes 0041 to 0060");
    auto scan = Cmap(0, 0xFFFF, 2, {5, 0x41, 0});  // claims 5 pairs, holds 1
    expectError(File({finf, cglp, Block(TagCMAP, scan)}), "runs past its block");
    expectError(File({finf, cglp, Block(TagCMAP, {1, 2, 3, 4})}), "CMAP block 0 is too small");
}

TEST(ZglyBlockFile, LookupsFollowTheChain) {
    CFontBlockSet set;
    auto add = [&](uint32_t tag, const std::vector<uint8_t>& c) {
        set.AddBlock(tag, c.data(), static_cast<uint32_t>(c.size()));
    };
    add(TagFINF, Finf());
    add(TagCGLP, Cglp(1, 4));
    add(TagCWDH, {1, 0, 2, 0, 0, 0, 0, 0, 0xFF, 2, 3, 1, 1, 1});
    add(TagCMAP, Cmap(0x20, 0x7E, 0, {0}));
    std::vector<uint16_t> table(16, 0xFFFF);
    table[1] = 2;
    add(TagCMAP, Cmap(0x100, 0x10F, 1, table));
    add(TagCMAP, Cmap(0, 0xFFFF, 2, {3, 0x101, 3, 0x200, 1, 0x300, 2}));
    for (bool indexed : {false, true}) {
        if (indexed) set.Validate();
        EXPECT_EQ(set.FindGlyphIndex(0x41), 33);
        EXPECT_EQ(set.FindGlyphIndex(0x101), 2);
        EXPECT_EQ(set.FindGlyphIndex(0x102), 0xFFFF);  // the table decides; the scan block is not asked
        EXPECT_EQ(set.FindGlyphIndex(0x200), 1);
        EXPECT_EQ(set.FindGlyphIndex(0x300), 2);
        EXPECT_EQ(set.FindGlyphIndex(0x301), 0xFFFF);
        EXPECT_EQ(set.GetCharWidths(1).Left, -1);
        EXPECT_EQ(set.GetCharWidths(2).CharWidth, 1);
        EXPECT_EQ(set.GetCharWidths(0).GlyphWidth, 4);  // FINF defaults
        EXPECT_EQ(set.GetCharWidths(3).CharWidth, 6);
    }
    EXPECT_EQ(set.CellCount(), 4u);
    EXPECT_NE(set.GetCellBits(3), nullptr);
    EXPECT_EQ(set.GetCellBits(4), nullptr);
}

// Many overlapping CMAP and CWDH blocks: the indexed lookups and the code
// walker give, for every code, what a scan of the blocks in file order gives.
TEST(ZglyBlockFile, OverlappingBlocksDecideByFileOrder) {
    CFontBlockSet indexed, scanned;
    auto add = [&](uint32_t tag, const std::vector<uint8_t>& c) {
        indexed.AddBlock(tag, c.data(), static_cast<uint32_t>(c.size()));
        scanned.AddBlock(tag, c.data(), static_cast<uint32_t>(c.size()));
    };
    add(TagFINF, Finf());
    add(TagCGLP, Cglp(1, 4));
    // A scan block with its pairs out of order: the walk gives what the
    // binary search gives.
    add(TagCMAP, Cmap(0x3000, 0x3100, 2, {4, 0x3010, 7, 0x3005, 8, 0x3020, 9, 0x3001, 10}));
    uint32_t seed = 99;
    auto next = [&](int n) {
        seed = seed * 1103515245u + 12345u;
        return static_cast<int>((seed >> 8) % static_cast<uint32_t>(n));
    };
    for (int i = 0; i < 40; ++i) {
        const int first = next(0x10000), last = std::min(0xFFFF, first + next(i % 3 ? 300 : 40000));
        add(TagCMAP, Cmap(static_cast<uint16_t>(first), static_cast<uint16_t>(last), 0, {static_cast<uint16_t>(i)}));
        const int g = next(3000), n = 1 + next(50);
        std::vector<uint8_t> widths = {static_cast<uint8_t>(g), static_cast<uint8_t>(g >> 8),
                                       static_cast<uint8_t>(g + n - 1), static_cast<uint8_t>((g + n - 1) >> 8),
                                       0, 0, 0, 0};
        for (int k = 0; k < n; ++k) widths.insert(widths.end(), {static_cast<uint8_t>(i), 1, 1});
        add(TagCWDH, widths);
    }
    // A scan block over every code, its pairs in order, after the others.
    add(TagCMAP, Cmap(0, 0xFFFF, 2, {5, 0x20, 1, 0x3000, 2, 0x3007, 3, 0x8000, 4, 0xFFFF, 5}));
    indexed.Validate();
    CCodeWalker walker(indexed);
    for (uint32_t c = 0; c <= 0xFFFF; ++c) {
        const auto code = static_cast<uint16_t>(c);
        ASSERT_EQ(indexed.FindGlyphIndex(code), scanned.FindGlyphIndex(code)) << c;
        ASSERT_EQ(walker.GlyphOf(code), scanned.FindGlyphIndex(code)) << c;
    }
    for (uint16_t g = 0; g < 3100; ++g) ASSERT_EQ(indexed.GetCharWidths(g).Left, scanned.GetCharWidths(g).Left) << g;
}

