#include "core/font_data.h"

#include <gtest/gtest.h>

#include "core/headless_pg_ctrl.h"
#include "xmlfiles/test_support.h"
#include <filesystem>
#include "core/general_exception.h"

namespace {

// A glyph with a w x h ink box at (1, 1) and 1-bit pixels all set.
std::unique_ptr<CGlyph> Glyph(int w, int h, int ascent, int left = 0, int right = 0) {
    auto g = std::make_unique<CGlyph>();
    g->Bpp = 1;
    if (w > 0 && h > 0) {
        g->Ink = InkBox{1, 1, 1 + w, 1 + h};
        g->Pixels.assign(g->PixelBytes(), 0xFF);
    }
    g->Ascent = ascent;
    g->RightExtent = w;
    g->LeftSpace = left;
    g->RightSpace = right;
    return g;
}

}  // namespace

TEST(FontData, DuplicateCodesKeepTheFirstGlyph) {
    CHeadlessPgCtrl pg;
    CPgCtrlScope scope(pg);
    CFontData font;
    font.AddGlyph(Glyph(2, 2, 2), 0x3042);
    const CGlyph* first = font.FindGlyph(0x3042);
    font.AddGlyph(Glyph(2, 2, 2), 0x3042);  // identical: silent
    auto moved = Glyph(2, 2, 2);
    moved->Ink = InkBox{5, 5, 7, 7};  // same size elsewhere in its cell: still the same
    font.AddGlyph(std::move(moved), 0x3042);
    EXPECT_TRUE(pg.Warnings.empty());
    auto differentPixels = Glyph(2, 2, 2);
    differentPixels->Pixels[0] = 0x7F;
    font.AddGlyph(std::move(differentPixels), 0x3042);
    font.AddGlyph(Glyph(2, 2, 1), 0x3042);
    EXPECT_EQ(pg.Warnings, std::vector<std::string>(2, "A character code('\u3042': U+3042) has multiple glyphs. "
                                                       "Second and later glyphs are ignored."));
    EXPECT_EQ(font.GlyphCount(), 1u);
    EXPECT_EQ(font.FindGlyph(0x3042), first);
    EXPECT_EQ(font.FindGlyph(0x3041), nullptr);
}

TEST(FontData, PrepareDerivesCellFromInkAndKeepsReaderValues) {
    CFontData font;
    font.Bpp.Set(4);
    font.Baseline.Set(99);
    font.AddGlyph(Glyph(3, 4, 3, 1, 1), 'B');   // descent 1, advance 5
    font.AddGlyph(Glyph(2, 6, 5, -4, 0), 'A');  // descent 1, advance -2
    font.AddGlyph(Glyph(0, 0, 0, 2, 6), ' ');   // no ink: advance only
    auto g = Glyph(2, 2, 4);
    g->RightExtent = 4;  // reaches 2 columns right of its ink
    g->TopSpace = 1;
    g->BottomSpace = 3;
    font.AddGlyph(std::move(g), 'C');
    font.PrepareForOutput();
    EXPECT_EQ(std::vector<int>({font.Baseline.Value, font.CellHeight.Value, font.CellWidth.Value, font.MaxCharWidth.Value,
                                font.MaxCharHeight.Value, font.LineHeight.Value, font.DefaultWidth.Value.GlyphWidth,
                                font.DefaultWidth.Value.CharWidth, font.GetGlyphs().front()->Code, font.FindGlyph('C')->Index}),
              std::vector<int>({5, 6, 4, 8, 6, 6, 4, 4, ' ', 3}));
    font.IsVertical.Set(true);
    font.PrepareForOutput();
    EXPECT_EQ(font.Baseline.Value, 4);  // from RightExtent

    // The depth's range edges.
    font.Bpp = {};
    EXPECT_EQ(ErrorOf([&] { font.PrepareForOutput(); }), "Internal Error:\n Bits Per Pixel(0) is not specified");
    for (int bpp : {0, 1, 8, 9}) {
        font.Bpp.Set(bpp);
        EXPECT_EQ(ErrorOf([&] { font.PrepareForOutput(); }),
                  bpp == 1 || bpp == 8 ? "" : FormatString("Internal Error:\n Bits Per Pixel(%d) is out of range", bpp));
    }
}

TEST(FormatString, ConversionsAndTheCutAt1023Characters) {
    EXPECT_EQ(FormatString("%s|%s", "x", std::filesystem::path("/tmp/f.xlor")), "x|/tmp/f.xlor");
    EXPECT_EQ(FormatString("(%d,%d)", -3, 12), "(-3,12)");
    EXPECT_EQ(FormatString("'%c': U+%04X", u'\u3042', 0x3042), "'\u3042': U+3042");
    EXPECT_EQ(FormatString("100%% %d", 5), "100% 5");
    // A '%' inside an argument is shown as it stands.
    EXPECT_EQ(FormatString("(%s).", std::string("50%d%s.bmp")), "(50%d%s.bmp).");

    EXPECT_EQ(FormatString("%s", std::string(2000, 'x')).size(), 1023u);
    const std::string exact(1023, 'y');
    EXPECT_EQ(FormatString("%s", exact), exact);
    std::string kana;
    for (int i = 0; i < 1500; ++i) kana += "\u3042";
    EXPECT_EQ(FormatString("a%s", kana), "a" + kana.substr(0, 1022 * 3));  // never inside a character
}
