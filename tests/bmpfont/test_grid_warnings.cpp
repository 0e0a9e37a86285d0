// The traps of edited grids are named: colours the depth drops, a palette in
// another order, glyphs without a width line, and a grid without any ink.
#include <gtest/gtest.h>

#include "bmp_test_support.h"
#include "bmpfont/bmp_font_reader.h"
#include "bmpfont/bmp_font_writer.h"
#include "bmpfont/grid_template.h"
#include "core/font_filter.h"
#include "core/glyph_order.h"
#include "core/headless_pg_ctrl.h"

namespace {

class GridWarnings : public ::testing::Test {
protected:
    void SetUp() override { g_pPgCtrl = &Pg; }
    void TearDown() override { g_pPgCtrl = nullptr; }

    // A, B, C and D at the font's depth, level values running through every grey.
    void WriteGrid(int bpp) {
        CFontData font;
        font.Bpp.Set(bpp);
        uint32_t levels = (1u << bpp) - 1;
        for (int k = 0; k < 4; ++k) {
            std::vector<uint32_t> cell(6 * 8, 0);
            for (int i = 0; i < 16; ++i) cell[static_cast<std::size_t>(8 + i + k)] = (i + k) % levels + 1;
            font.AddGlyph(MakeGlyph(cell, 6, 8, bpp, false, 1, 1, 6), static_cast<uint16_t>('A' + k));
        }
        font.PrepareForOutput();
        CBmpFontWriter writer(Bmp, Order, true, 8, 10, 1, 1, 0, 0);
        CGlyphOrder order;
        writer.LoadGlyphOrder(order);
        writer.Write(font, order);
    }
    std::string Read(int bpp) {
        Pg.Warnings.clear();
        Font = std::make_unique<CFontData>();
        return ErrorOf([&] {
            CBmpFontReader reader(Bmp, Order, bpp);
            reader.CheckParameters();
            reader.Read(*Font, CFontFilter());
        });
    }

    CTempDir Dir;
    CHeadlessPgCtrl Pg;
    std::filesystem::path Order = Dir.Write("abcd.xlor",
                                            "<letter-order version=\"1.0\"><body><area width=\"4\"/>"
                                            "<order>ABCD</order></body></letter-order>");
    std::filesystem::path Bmp = Dir / "grid.bmp";
    std::unique_ptr<CFontData> Font;
};

}  // namespace

TEST_F(GridWarnings, ColorsTheDepthDropsAndPalettesOutOfOrder) {
    // A 16-level grid read with 2 and 4 colours: 15 greys, black among them.
    WriteGrid(4);
    for (auto [bpp, colors] : {std::pair{1, 2}, std::pair{2, 4}}) {
        EXPECT_EQ(Read(bpp), "");
        EXPECT_EQ(Pg.Warnings,
                  std::vector<std::string>{"The picture uses 15 ink colors, but " + std::to_string(colors) +
                                           " colors keep only " + std::to_string(colors - 1) +
                                           " of them; read it with 16 colors."})
            << bpp;
    }
    EXPECT_EQ(Read(4), "");
    EXPECT_TRUE(Pg.Warnings.empty());

    // A 4-level grid re-saved with white at index 2 (as an editor reorders it):
    // the pixels keep their colours, the indices move.
    WriteGrid(2);
    GridBytes grid(Bmp);
    const int moved[5] = {2, 1, 3, 0, 4};
    const uint32_t colors[4] = {0x000000, 0xAAAAAA, 0xFFFFFF, 0x555555};
    for (int i = 0; i < 4; ++i) grid.SetPalette(i, colors[i]);
    for (int y = 0; y < grid.Height(); ++y)
        for (int x = 0; x < grid.Width(); ++x)
            grid.At(x, y) = static_cast<char>(moved[static_cast<uint8_t>(grid.At(x, y))]);
    grid.Save();
    EXPECT_EQ(Read(2), "");
    EXPECT_EQ(Pg.Warnings, std::vector<std::string>{
                               "The palette is not in the grid's order (white at index 0, then the greys, black at "
                               "index 3): white is at index 2, and index 0 (#000000) reads as level 2 though its "
                               "color is level 3."});
}

TEST_F(GridWarnings, GlyphsWithoutWidthLinesAndGridsWithoutInk) {
    WriteGrid(1);
    // Pitch 12 x 16: the width lines lie in row 13, columns 2 ... 9 of each cell.
    GridBytes grid(Bmp);
    for (int cell : {1, 3})
        for (int x = 2; x < 10; ++x) grid.At(cell * 12 + x, 13) = 0;
    grid.Save();
    EXPECT_EQ(Read(1), "");
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
    EXPECT_EQ(Read(1), noInk(Bmp));

    // So is a blank template, BMP or PNG, horizontal or vertical.
    CGlyphOrder order;
    order.Load(Order);
    for (bool vertical : {false, true})
        for (const char* name : {"blank.bmp", "blank.png"}) {
            Bmp = Dir / name;
            WriteGridTemplate(Bmp, order, GridTemplateSettings{8, 10, 7, 2, vertical});
            EXPECT_EQ(Read(2), noInk(Bmp)) << name << vertical;
            EXPECT_TRUE(Pg.Warnings.empty()) << name << vertical;
        }
}
