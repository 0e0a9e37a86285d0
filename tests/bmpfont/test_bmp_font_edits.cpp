// A written glyph grid edited by hand, as users do, and read back.
#include <gtest/gtest.h>

#include "bmp_test_support.h"
#include "bmpfont/bmp_font_reader.h"
#include "bmpfont/bmp_font_writer.h"
#include "bmpfont/grid_template.h"
#include "core/font_filter.h"
#include "core/glyph_order.h"
#include "core/headless_pg_ctrl.h"
#include "xmlfiles/glyph_order_handler.h"

namespace {

std::string OrderFile(const std::string& order, int width = 4) {
    return "<letter-order version=\"1.0\"><body><area width=\"" + std::to_string(width) + "\"/><order>" + order +
           "</order></body></letter-order>";
}

// A 2-bit horizontal font of A (3 x 4 ink), B (2 x 5 ink) and a space, drawn
// with grid into 8 x 10 cells at offset (1, 1): pitch 12 x 16, 48 x 16 in all.
class BmpFontEdits : public ::testing::Test {
protected:
    void SetUp() override {
        CFontData font;
        font.Bpp.Set(2);
        std::vector<uint32_t> a(6 * 8, 0), b(6 * 8, 0);
        for (int y = 2; y < 6; ++y)
            for (int x = 1; x < 4; ++x) a[y * 6 + x] = 3;
        for (int y = 1; y < 6; ++y)
            for (int x = 2; x < 4; ++x) b[y * 6 + x] = 2;
        font.AddGlyph(MakeGlyph(a, 6, 8, 2, false, 1, 1, 6), 'A');
        font.AddGlyph(MakeGlyph(b, 6, 8, 2, false, 0, 1, 6), 'B');
        font.AddGlyph(MakeGlyph(std::vector<uint32_t>(48, 0), 6, 8, 2, false, 3, 0, 6), ' ');
        font.PrepareForOutput();
        WriteGridPicture(font, Bmp, Order, true, {8, 10, 1, 1, 0, 0});
        Pg.Warnings.clear();
    }

    // A, B, C and D at the given depth in Grid, level values running through every grey.
    void WriteGrid(int bpp) {
        CFontData font;
        font.Bpp.Set(bpp);
        for (int k = 0; k < 4; ++k) {
            std::vector<uint32_t> cell(6 * 8, 0);
            for (int i = 0; i < 16; ++i) cell[static_cast<std::size_t>(8 + i + k)] = (i + k) % ((1u << bpp) - 1) + 1;
            font.AddGlyph(MakeGlyph(cell, 6, 8, bpp, false, 1, 1, 6), static_cast<uint16_t>('A' + k));
        }
        font.PrepareForOutput();
        WriteGridPicture(font, Grid, Abcd, true, {8, 10, 1, 1, 0, 0});
    }
    // Reads a picture into Font, warnings from scratch; the error message or "".
    std::string Read(const std::filesystem::path& bmp, const std::filesystem::path& order, int bpp) {
        Pg.Warnings.clear();
        Font = std::make_unique<CFontData>();
        return ErrorOf([&] {
            CBmpFontReader reader(bmp, order, bpp);
            reader.CheckParameters();
            reader.Read(*Font, CFontFilter());
        });
    }
    std::unique_ptr<CFontData> ReadBack() {
        EXPECT_EQ(Read(Bmp, Order, 2), "");
        return std::move(Font);
    }
    std::string CheckError(const std::filesystem::path& bmp, const std::filesystem::path& order, int bpp = 2) {
        return ErrorOf([&] { CBmpFontReader(bmp, order, bpp).CheckParameters(); });
    }

    CTempDir Dir;
    CHeadlessPgCtrl Pg;
    CPgCtrlScope PgScope{Pg};
    std::filesystem::path Order = Dir.Write("ab.xlor", OrderFile("AB<sp/><null/>")), Bmp = Dir / "ab.bmp";
    std::filesystem::path Abcd = Dir.Write("abcd.xlor", OrderFile("ABCD")), Grid = Dir / "grid.bmp";
    std::unique_ptr<CFontData> Font;
};

}  // namespace

TEST_F(BmpFontEdits, HandEditsReadBackWithTheirWarnings) {
    EXPECT_EQ(ReadBack()->FindGlyph('A')->RightSpace, 1);
    GridBytes grid(Bmp);
    // White, two greys, black, the grid colour, then black; the marks white in the black border:
    // the baseline at offset 1 + baseline 5 + 2, the width lines at cell height 10 + 3.
    const std::pair<int, uint32_t> palette[] = {{0, 0xFFFFFF}, {1, 0xAAAAAA}, {2, 0x555555}, {3, 0}, {4, 0x99AA99}, {5, 0}, {255, 0}};
    for (auto [i, rgb] : palette) EXPECT_EQ(grid.Field(54 + 4 * i), rgb) << i;
    for (int y = 0; y < 16; ++y) EXPECT_EQ(grid.At(0, y), y == 8 || y == 13 ? 0 : 3) << y;
    // B redrawn as a 2 x 2 block of level 1 in its area (columns 14..21, rows 2..11).
    for (int y = 2; y < 12; ++y)
        for (int x = 14; x < 22; ++x) grid.At(x, y) = static_cast<char>(y >= 6 && y < 8 && x >= 16 && x < 18);
    // A's width line (row 13) lengthened by two pixels.
    int end = 2;
    while (grid.At(end, 13) != 3) ++end;
    while (grid.At(end, 13) == 3) ++end;
    grid.At(end, 13) = grid.At(end + 1, 13) = 3;
    // The space cell's inner frame broken, and a stray pixel in the empty cell.
    grid.At(25, 5) = 0;
    grid.At(39, 3) = 2;
    grid.Save();

    auto font = ReadBack();
    const CGlyph* b = font->FindGlyph('B');
    ASSERT_TRUE(b);
    EXPECT_EQ(InkValues(*b), (std::vector<uint32_t>{1, 1, 1, 1}));
    // The baseline lies at area row 6 (offset 1 + font baseline 5); the block starts at area row 4.
    EXPECT_EQ(std::vector<int>({b->Ink.Width(), b->Ink.Height(), b->Ascent, font->FindGlyph('A')->RightSpace,
                                font->FindGlyph(' ')->LeftSpace}),
              std::vector<int>({2, 2, 2, 3, 3}));
    EXPECT_EQ(Pg.Warnings, (std::vector<std::string>{
                               "More than one color detected in margin area at (30,8).",
                               "BMP position (42, 8) is <null/> in " + Order.string() +
                                   ", but the cell include non-white color."}));
}

// Palette index 0 stands for the white index's level; a second white among the
// levels is reported.
TEST_F(BmpFontEdits, PaletteIndexZeroAndSecondWhites) {
    auto before = ReadBack();
    // Swap palette entries 0 (white) and 2 (a grey), and pixel values 0 and 2.
    GridBytes grid(Bmp);
    grid.SetPalette(0, 0x555555);
    grid.SetPalette(2, 0xFFFFFF);
    for (int y = 0; y < grid.Height(); ++y)
        for (int x = 0; x < grid.Width(); ++x)
            if (grid.At(x, y) == 0 || grid.At(x, y) == 2) grid.At(x, y) = static_cast<char>(2 - grid.At(x, y));
    grid.Save();
    auto swapped = ReadBack();
    ExpectSameGlyphs(*before, *swapped, "white at index 2");
    EXPECT_EQ(Pg.Warnings, std::vector<std::string>{});

    // A second white at index 3 (a level of a 2-bit font) is reported; beyond the levels it is not.
    for (int at : {3, 5}) {
        GridBytes twice(Bmp);
        twice.SetPalette(at, 0xFFFFFF);
        twice.Save();
        Pg.Warnings.clear();
        ReadBack();
        EXPECT_EQ(Pg.Warnings, at == 3 ? std::vector<std::string>{"2 or more white colors are found."}
                                       : std::vector<std::string>{})
            << at;
        grid.Save();
    }
}

TEST_F(BmpFontEdits, MalformedInputsGiveTheirMessages) {
    auto empty = Dir.Write("empty.xlor", OrderFile(""));
    EXPECT_EQ(CheckError(Bmp, empty), "BMP Error:\n Glyph order(" + empty.string() + ") has no cells.");
    auto wide = Dir.Write("wide.xlor", OrderFile("AB", 1000000000));
    EXPECT_EQ(CheckError(Bmp, wide), "BMP Error:\n BMP width(48) too small. Must be >= 4000000000");
    auto five = Dir.Write("five.xlor", OrderFile("ABCDE", 5));
    EXPECT_EQ(CheckError(Bmp, five), "BMP Error:\n BMP width(48) is not multiply of horizontal number of blocks(5)");
    RawBmp raw{48, 16, 24, {}, std::vector<uint32_t>(48 * 16, 0xFFFFFF)};
    EXPECT_EQ(CheckError(Dir.Write("rgb.bmp", raw.Bytes()), Order), "");  // true-colour grids are read by their colours
    raw = RawBmp{48, 16, 1, {0, 0x00FF0000}, std::vector<uint32_t>(48 * 16, 0)};
    EXPECT_EQ(CheckError(Dir.Write("nowhite.bmp", raw.Bytes()), Order), "BMP Error:\n Color white not found in BMP.");

    GridBytes grid(Bmp);
    grid.At(0, 4) = 0;  // a second odd pixel in the baseline column
    grid.Save();
    EXPECT_EQ(Read(Bmp, Order, 2), "BMP Error:\n BMP has no baseline info.");

    auto out = Dir / "out.bmp";
    EXPECT_EQ(ErrorOf([&] { CBmpFontWriter(out, Order, true, 0, 8, 0, 0, 0, 0).CheckParameters(); }),
              "Parameter Error:\n Cell Width (=0) must be > 0.");
    CGlyphOrder order;
    EXPECT_EQ(ErrorOf([&] { CBmpFontWriter(out, wide, true, 8, 8, 0, 0, 0, 0).LoadGlyphOrder(order); }),
              "BMP Error:\n Glyph order(" + wide.string() + ") has too many cells(1000000000 x 1).");
    EXPECT_FALSE(std::filesystem::exists(out));
}

// The traps of edited grids are named: colours the depth drops, a palette in
// another order, glyphs without a width line, and a grid without any ink.
TEST_F(BmpFontEdits, ColorsTheDepthDropsAndPalettesOutOfOrder) {
    // A 16-level grid read with 2 and 4 colours: 15 greys, black among them.
    WriteGrid(4);
    // The greys the depth lacks are named with the first pixel of each.
    const std::pair<int, std::string> dropped[] = {
        {1, "The picture uses 15 ink colors, but 2 colors keep only 1 of them; read it with 16 colors. Colors beyond "
            "the 2-color grid: #111111 (first at 6,5), #222222 (first at 5,5), #333333 (first at 4,5), #444444 (first "
            "at 3,5), #555555 (first at 8,4) and 9 more."},
        {2, "The picture uses 15 ink colors, but 4 colors keep only 3 of them; read it with 16 colors. Colors beyond "
            "the 4-color grid: #111111 (first at 6,5), #222222 (first at 5,5), #333333 (first at 4,5), #444444 (first "
            "at 3,5), #666666 (first at 7,4) and 7 more."}};
    for (const auto& [bpp, warning] : dropped) {
        EXPECT_EQ(Read(Grid, Abcd, bpp), "");
        EXPECT_EQ(Pg.Warnings, std::vector<std::string>{warning}) << bpp;
    }
    EXPECT_EQ(Read(Grid, Abcd, 4), "");
    EXPECT_TRUE(Pg.Warnings.empty());

    // Stray paint is no grey: more colours would not help, so none are advised.
    WriteGrid(2);
    {
        GridBytes red(Grid);
        red.SetPalette(1, 0xFF0000);
        red.Save();
    }
    EXPECT_EQ(Read(Grid, Abcd, 1), "");
    EXPECT_EQ(Pg.Warnings, std::vector<std::string>{
                               "The picture uses 3 ink colors, but 2 colors keep only 1 of them. Colors that are not "
                               "grey: #FF0000 (first at 5,3); paint them over in white, the greys or black."});

    // A 4-level grid re-saved with white at index 2 (as an editor reorders it):
    // the pixels keep their colours, the indices move.
    WriteGrid(2);
    GridBytes grid(Grid);
    const int moved[5] = {2, 1, 3, 0, 4};
    const uint32_t colors[4] = {0x000000, 0xAAAAAA, 0xFFFFFF, 0x555555};
    for (int i = 0; i < 4; ++i) grid.SetPalette(i, colors[i]);
    for (int y = 0; y < grid.Height(); ++y)
        for (int x = 0; x < grid.Width(); ++x)
            grid.At(x, y) = static_cast<char>(moved[static_cast<uint8_t>(grid.At(x, y))]);
    grid.Save();
    EXPECT_EQ(Read(Grid, Abcd, 2), "");
    EXPECT_EQ(Pg.Warnings, std::vector<std::string>{
                               "The palette is not in the grid's order (white at index 0, then the greys, black at "
                               "index 3): white is at index 2, and index 0 (#000000) reads as level 2 though its "
                               "color is level 3."});
}

TEST_F(BmpFontEdits, GlyphsWithoutWidthLinesAndGridsWithoutInk) {
    WriteGrid(1);
    // Pitch 12 x 16: the width lines lie in row 13, columns 2 ... 9 of each cell.
    GridBytes grid(Grid);
    for (int cell : {1, 3})
        for (int x = 2; x < 10; ++x) grid.At(cell * 12 + x, 13) = 0;
    grid.Save();
    EXPECT_EQ(Read(Grid, Abcd, 1), "");
    EXPECT_EQ(Pg.Warnings,
              std::vector<std::string>{"2 glyphs have ink but no width line, so their advance is 0: 'B' (U+0042), "
                                       "'D' (U+0044)."});
    const CGlyph* b = Font->FindGlyph('B');
    EXPECT_EQ(b->LeftSpace + b->Ink.Width() + b->RightSpace, 0);

    // Every ink pixel erased: a grid without ink is an error, not an empty font.
    for (int y = 2; y < 12; ++y)
        for (int x = 0; x < 48; ++x)
            if (x % 12 >= 2 && x % 12 < 10) grid.At(x, y) = 0;
    grid.Save();
    auto noInk = [](const std::filesystem::path& p) {
        return "BMP Error:\n No cell of BMP(" + p.string() +
               ") holds any ink: draw the glyphs in the cells' glyph areas, and read the picture with the number of "
               "colors it was drawn with.";
    };
    EXPECT_EQ(Read(Grid, Abcd, 1), noInk(Grid));

    // So is a blank template, BMP or PNG, horizontal or vertical.
    CGlyphOrder order;
    LoadGlyphOrderFile(order, Abcd);
    for (bool vertical : {false, true})
        for (const char* name : {"blank.bmp", "blank.png"}) {
            Grid = Dir / name;
            WriteGridTemplate(Grid, order, GridTemplateSettings{8, 10, 7, 2, vertical}, "");
            EXPECT_EQ(Read(Grid, Abcd, 2), noInk(Grid)) << name << vertical;
            EXPECT_TRUE(Pg.Warnings.empty()) << name << vertical;
        }
}
