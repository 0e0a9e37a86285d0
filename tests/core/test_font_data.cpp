#include "core/font_data.h"

#include <gtest/gtest.h>

#include "core/general_exception.h"
#include "core/headless_pg_ctrl.h"

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

class FontDataTest : public testing::Test {
protected:
    void SetUp() override { g_pPgCtrl = &Pg; }
    void TearDown() override { g_pPgCtrl = nullptr; }

    std::string PrepareError(CFontData& font) {
        try {
            font.PrepareForOutput();
        } catch (const CGeneralException& e) {
            return e.Message;
        }
        return "";
    }

    CHeadlessPgCtrl Pg;
};

TEST_F(FontDataTest, DuplicateCodesKeepTheFirstGlyph) {
    CFontData font;
    font.AddGlyph(Glyph(2, 2, 2), 0x3042);
    const CGlyph* first = font.FindGlyph(0x3042);
    font.AddGlyph(Glyph(2, 2, 2), 0x3042);  // identical: silent
    EXPECT_TRUE(Pg.Warnings.empty());
    auto moved = Glyph(2, 2, 2);
    moved->Ink = InkBox{5, 5, 7, 7};  // same size elsewhere in its cell: still the same
    font.AddGlyph(std::move(moved), 0x3042);
    EXPECT_TRUE(Pg.Warnings.empty());
    auto differentPixels = Glyph(2, 2, 2);
    differentPixels->Pixels[0] = 0x7F;
    font.AddGlyph(std::move(differentPixels), 0x3042);
    font.AddGlyph(Glyph(2, 2, 1), 0x3042);
    ASSERT_EQ(Pg.Warnings.size(), 2u);
    EXPECT_EQ(Pg.Warnings[0],
              "A character code('\u3042': U+3042) has multiple glyphs. Second and later glyphs are ignored.");
    EXPECT_EQ(font.GlyphCount(), 1u);
    EXPECT_EQ(font.FindGlyph(0x3042), first);
    EXPECT_EQ(font.FindGlyph(0x3041), nullptr);
}

TEST_F(FontDataTest, IndexFollowsInsertionUntilSorted) {
    CFontData font;
    EXPECT_EQ(font.FindGlyph(0x41), nullptr);
    font.AddGlyph(Glyph(1, 1, 1), 0x42);
    font.AddGlyph(Glyph(1, 1, 1), 0x41);
    EXPECT_EQ(font.FindGlyph(0x42)->Index, 0);
    EXPECT_EQ(font.FindGlyph(0x41)->Index, 1);
    font.SortGlyphs();
    EXPECT_EQ(font.FindGlyph(0x42)->Index, 1);
    EXPECT_EQ(font.FindGlyph(0x41)->Index, 0);
    EXPECT_EQ(font.GetGlyphs().front()->Code, 0x41);

    auto copy = CGlyph::CopyFrom(*font.FindGlyph(0x42));
    EXPECT_EQ(copy->Index, 0);
    EXPECT_EQ(copy->Code, 0);
    EXPECT_TRUE(copy->SameAs(*font.FindGlyph(0x42)));
}

TEST_F(FontDataTest, PrepareDerivesCellFromInk) {
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
    EXPECT_EQ(font.Baseline.Value, 5);
    EXPECT_EQ(font.CellHeight.Value, 6);   // ascent 5 + descent 1
    EXPECT_EQ(font.CellWidth.Value, 4);    // reach 4 + left reach 0
    EXPECT_EQ(font.MaxCharWidth.Value, 8);
    EXPECT_EQ(font.MaxCharHeight.Value, 6);
    EXPECT_TRUE(font.LineHeight.Specified);
    EXPECT_EQ(font.LineHeight.Value, 6);
    EXPECT_EQ(font.DefaultWidth.Value.GlyphWidth, 4);
    EXPECT_EQ(font.DefaultWidth.Value.CharWidth, 4);
    EXPECT_EQ(font.GetGlyphs().front()->Code, ' ');
    EXPECT_EQ(font.FindGlyph('C')->Index, 3);

    font.IsVertical.Set(true);
    font.PrepareForOutput();
    EXPECT_EQ(font.Baseline.Value, 4);  // from RightExtent
}

TEST_F(FontDataTest, PrepareKeepsReaderValuesAndZeroMinima) {
    CFontData font;
    font.Bpp.Set(1);
    font.LineHeight.Set(17);
    font.DefaultWidth.Set(CharWidths{-1, 3, 9});
    font.AddGlyph(Glyph(0, 0, 0, 3, 4), ' ');
    font.AddGlyph(Glyph(0, 0, 0, -5, 1), 0x3000);
    font.PrepareForOutput();
    EXPECT_EQ(font.Baseline.Value, 0);
    EXPECT_EQ(font.CellWidth.Value, 0);
    EXPECT_EQ(font.CellHeight.Value, 0);
    EXPECT_EQ(font.MaxCharWidth.Value, 7);
    EXPECT_EQ(font.LineHeight.Value, 17);
    EXPECT_EQ(font.DefaultWidth.Value.Left, -1);
    EXPECT_EQ(font.DefaultWidth.Value.CharWidth, 9);

    CFontData negative;
    negative.Bpp.Set(1);
    negative.AddGlyph(Glyph(2, 2, 2, -5, -1), 'x');
    negative.PrepareForOutput();
    EXPECT_EQ(negative.MaxCharWidth.Value, 0);
    EXPECT_EQ(negative.MaxCharHeight.Value, 2);
}

TEST_F(FontDataTest, PrepareChecksInOrder) {
    CFontData font;
    font.Bpp.Set(0);
    EXPECT_EQ(PrepareError(font), "Parameter Error:\n No glyphs in output.");
    font.AddGlyph(Glyph(1, 1, 1), 'a');
    font.Bpp = {};
    EXPECT_EQ(PrepareError(font), "Internal Error:\n Bits Per Pixel(0) is not specified");
    font.Bpp.Set(0);
    EXPECT_EQ(PrepareError(font), "Internal Error:\n Bits Per Pixel(0) is out of range");
    font.Bpp.Set(9);
    EXPECT_EQ(PrepareError(font), "Internal Error:\n Bits Per Pixel(9) is out of range");
    EXPECT_FALSE(font.CellWidth.Specified);  // nothing changed by a failed check
    EXPECT_FALSE(font.LineHeight.Specified);

    auto copy = CFontData::CopySettingsFrom(font);
    EXPECT_EQ(copy->Bpp.Value, 9);
    EXPECT_EQ(copy->GlyphCount(), 0u);
}

}  // namespace
