#include <gtest/gtest.h>

#include "core/font_data.h"
#include "core/glyph_order.h"
#include "core/headless_pg_ctrl.h"
#include "synthetic_font.h"
#include "zgly/zarnic_font_writer.h"
#include "zgly_test_util.h"

namespace {

std::unique_ptr<CFontData> OneDotFont(bool vertical = false) {
    auto font = std::make_unique<CFontData>();
    font->Bpp.Set(1);
    font->IsVertical.Set(vertical);
    auto g = std::make_unique<CGlyph>();
    uint8_t cell = 0x80;
    g->SetFromCellTrimmed(&cell, 1, 1, 1, vertical, 1);
    font->AddGlyph(std::move(g), 0x41);
    font->PrepareForOutput();
    return font;
}

}  // namespace

TEST(ZglyWriter, OneGlyphFileLayout) {
    CScratchDir dir;
    auto font = OneDotFont();
    WriteSyntheticZgly(*font, dir / "one.zgly");
    auto b = FileBytes(dir / "one.zgly");
    ASSERT_EQ(b.size(), 112u);
    EXPECT_EQ(std::string(b.begin(), b.begin() + 4), "YLGZ");
    EXPECT_EQ(U16At(b, 4), 0xFEFF);
    EXPECT_EQ(U16At(b, 6), 0x0101);
    EXPECT_EQ(U32At(b, 8), 112u);
    EXPECT_EQ(U16At(b, 12), 16);
    EXPECT_EQ(U16At(b, 14), 4);
    const std::pair<const char*, std::pair<uint32_t, uint32_t>> blocks[] = {
        {"FNIF", {16, 28}}, {"PLGC", {44, 20}}, {"HDWC", {64, 20}}, {"PAMC", {84, 28}}};
    for (const auto& [tag, at] : blocks) {
        EXPECT_EQ(std::string(b.begin() + at.first, b.begin() + at.first + 4), tag);
        EXPECT_EQ(U32At(b, at.first + 4), at.second) << tag;
    }
    EXPECT_EQ(U32At(b, 24 + 8), 52u);
    EXPECT_EQ(U32At(b, 24 + 12), 72u);
    EXPECT_EQ(U32At(b, 24 + 16), 92u);
    EXPECT_EQ(b[24 + 7], 1);  // UTF-16
    EXPECT_EQ(b[52], 1);      // cell 1 x 1
    EXPECT_EQ(b[53], 1);
    EXPECT_EQ(U16At(b, 54), 1);
    EXPECT_EQ(b[58], 1);      // bpp
    EXPECT_EQ(b[59], 0);      // flags
    EXPECT_EQ(b[60], 0x80);   // the one ink pixel
    EXPECT_EQ(U16At(b, 72), 0);  // CWDH glyphs 0..0, no next
    EXPECT_EQ(U16At(b, 74), 0);
    EXPECT_EQ(U32At(b, 76), 0u);
    EXPECT_EQ(b[81], 1);  // glyph width 1
    EXPECT_EQ(U16At(b, 92), 0x0000);  // one scan block over everything
    EXPECT_EQ(U16At(b, 94), 0xFFFF);
    EXPECT_EQ(U16At(b, 96), 2);
    EXPECT_EQ(U16At(b, 104), 1);
    EXPECT_EQ(U16At(b, 106), 0x41);
    EXPECT_EQ(U16At(b, 108), 0);
}

TEST(ZglyWriter, QuarterTurnSwapsStoredCellAndSetsFlags) {
    CScratchDir dir;
    for (bool vertical : {false, true}) {
        SyntheticFontSpec spec;
        spec.Codes = CodeRange(0x41, 5);
        spec.Vertical = vertical;
        spec.CellWidth = 10;
        spec.CellHeight = 12;
        spec.Origin = 10;
        auto font = MakeSyntheticFont(spec);
        font->PrepareForOutput();
        // Widen to exactly 10 x 12; the glyphs come from such cells, so they fit.
        ASSERT_LE(font->CellWidth.Value, 10);
        ASSERT_LE(font->CellHeight.Value, 12);
        font->CellWidth.Set(10);
        font->CellHeight.Set(12);
        WriteSyntheticZgly(*font, dir / "turned.zgly", 1, 1);
        auto b = FileBytes(dir / "turned.zgly");
        std::size_t cglp = U32At(b, 24 + 8);
        EXPECT_EQ(b[cglp], 12);
        EXPECT_EQ(b[cglp + 1], 10);
        EXPECT_EQ(b[cglp + 7], vertical ? 3 : 2);
    }
}

TEST(ZglyWriter, ParameterChecksInOrder) {
    CScratchDir dir;
    auto check = [&](uint16_t alt, int line, int left) {
        return MessageOf([&] {
            CZarnicFontWriter(dir / "x.zgly", alt, line, NotGiven, left, NotGiven, 1, 0).CheckParameters();
        });
    };
    EXPECT_EQ(MessageOf([&] { CZarnicFontWriter(dir / "no/x.zgly", 0, 300, NotGiven, 200, NotGiven, 1, 0).CheckParameters(); }),
              "Parameter Error:\n Directory(" + (dir / "no/").string() + ") not exists.");
    PutFile(dir / "ro.zgly", {1});
    std::filesystem::permissions(dir / "ro.zgly", std::filesystem::perms::owner_read);
    EXPECT_EQ(MessageOf([&] { CZarnicFontWriter(dir / "ro.zgly", 0, 0, 0, 0, 0, 1, 0).CheckParameters(); }),
              "Parameter Error:\n Specified file(" + (dir / "ro.zgly").string() + ") is read only.");
    EXPECT_EQ(check(0, 300, 200), "Parameter Error:\n Invalid alternate character(0x0000).");
    EXPECT_EQ(check(NotGiven, 300, 200), "Parameter Error:\n LineHeight(=300) out of range[0 ～ 255]");
    EXPECT_EQ(check(NotGiven, -1, 200), "Parameter Error:\n LineHeight(=-1) out of range[0 ～ 255]");
    EXPECT_EQ(check(NotGiven, 255, 200), "Parameter Error:\n DefaultLeftSpace(=200) out of range[-128 ～ 127]");
    EXPECT_EQ(check(NotGiven, 0, -128), "");
}

TEST(ZglyWriter, WriteChecksComeBeforeAnyFileIsCreated) {
    CScratchDir dir;
    CHeadlessPgCtrl pg;
    g_pPgCtrl = &pg;
    SyntheticFontSpec spec;
    spec.Codes = CodeRange(0x41, 3);
    auto font = MakeSyntheticFont(spec);
    font->PrepareForOutput();
    const int cw = font->CellWidth.Value;
    auto write = [&](uint16_t alt, int width, int left, int right, int enc = 1) {
        return MessageOf([&] {
            CZarnicFontWriter(dir / "w.zgly", alt, NotGiven, width, left, right, enc, 0).Write(*font, CGlyphOrder());
        });
    };
    EXPECT_EQ(write(NotGiven, cw + 1, NotGiven, 500),
              FormatString("Parameter Error:\n DefaultWidth(=%d) out of range[0 ～ %d]", cw + 1, cw));
    EXPECT_EQ(write(NotGiven, 4, 3, 500), "Parameter Error:\n DefaultRightSpace(=500) out of range[-135 ～ 120]");
    EXPECT_EQ(write(u'Z', NotGiven, NotGiven, NotGiven),
              "Parameter Error:\n Specified AlternateChar('Z' : U+005A) is not included in the Font");
    font->CellWidth.Set(256);
    EXPECT_EQ(write(NotGiven, NotGiven, NotGiven, NotGiven), "Parameter Error:\n Max glyph width(=256) over 255.");
    font->CellWidth.Set(cw);
    font->CellHeight.Set(300);
    EXPECT_EQ(write(NotGiven, NotGiven, NotGiven, NotGiven), "Parameter Error:\n Font height(=300) over 255.");
    font->CellHeight.Set(16);
    font->Baseline.Set(-129);
    EXPECT_EQ(write(NotGiven, NotGiven, NotGiven, NotGiven), "Parameter Error:\n Baseline position(=-129) under -128.");
    EXPECT_FALSE(std::filesystem::exists(dir / "w.zgly"));
    EXPECT_TRUE(std::filesystem::is_empty(dir.Path()));  // no temporary left behind either
    g_pPgCtrl = nullptr;
}

TEST(ZglyWriter, DefaultWidthsAndAlternateGlyph) {
    CScratchDir dir;
    SyntheticFontSpec spec;
    spec.Codes = CodeRange(0x41, 3);
    auto font = MakeSyntheticFont(spec);
    font->DefaultWidth.Set(CharWidths{2, 5, 9});  // right space 2
    font->AlternateChar.Set(u'B');
    font->PrepareForOutput();
    CHeadlessPgCtrl pg;
    g_pPgCtrl = &pg;
    CZarnicFontWriter(dir / "d.zgly", NotGiven, 20, 7, NotGiven, NotGiven, 0, 0).Write(*font, CGlyphOrder());
    auto b = FileBytes(dir / "d.zgly");
    EXPECT_EQ(b[24 + 1], 20);           // line feed override
    EXPECT_EQ(U16At(b, 24 + 2), 1);     // 'B' is glyph 1
    EXPECT_EQ(b[24 + 4], 2);            // left kept
    EXPECT_EQ(b[24 + 5], 7);            // width overridden
    EXPECT_EQ(b[24 + 6], 2 + 7 + 2);    // the source's right space kept
    EXPECT_EQ(b[24 + 7], 0);            // UTF-8
    // Without any alternate character the index is 0; the cancel before saving leaves nothing.
    font->AlternateChar = {};
    pg.CancelAtVisibleStep(1);
    EXPECT_THROW(CZarnicFontWriter(dir / "c.zgly", NotGiven, NotGiven, NotGiven, NotGiven, NotGiven, 1, 0)
                     .Write(*font, CGlyphOrder()),
                 int);
    EXPECT_FALSE(std::filesystem::exists(dir / "c.zgly"));
    g_pPgCtrl = nullptr;
}
