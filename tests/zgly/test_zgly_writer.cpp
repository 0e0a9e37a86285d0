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
    // {offset, bytes, value}: header, FINF's block offsets and encoding, the
    // CGLP head and its one ink pixel, CWDH for glyphs 0..0, one scan CMAP block.
    const struct { std::size_t At; int Size; uint32_t Value; } fields[] = {
        {4, 2, 0xFEFF}, {6, 2, 0x0101}, {8, 4, 112}, {12, 2, 16}, {14, 2, 4},
        {24 + 8, 4, 52}, {24 + 12, 4, 72}, {24 + 16, 4, 92}, {24 + 7, 1, 1},
        {52, 1, 1}, {53, 1, 1}, {54, 2, 1}, {58, 1, 1}, {59, 1, 0}, {60, 1, 0x80},
        {72, 2, 0}, {74, 2, 0}, {76, 4, 0}, {81, 1, 1},
        {92, 2, 0x0000}, {94, 2, 0xFFFF}, {96, 2, 2}, {104, 2, 1}, {106, 2, 0x41}, {108, 2, 0}};
    for (const auto& f : fields)
        EXPECT_EQ(f.Size == 1 ? b[f.At] : f.Size == 2 ? U16At(b, f.At) : U32At(b, f.At), f.Value) << "at " << f.At;
    const std::pair<const char*, std::pair<uint32_t, uint32_t>> blocks[] = {
        {"FNIF", {16, 28}}, {"PLGC", {44, 20}}, {"HDWC", {64, 20}}, {"PAMC", {84, 28}}};
    for (const auto& [tag, at] : blocks) {
        EXPECT_EQ(std::string(b.begin() + at.first, b.begin() + at.first + 4), tag);
        EXPECT_EQ(U32At(b, at.first + 4), at.second) << tag;
    }
}

TEST(ZglyWriter, QuarterTurnSwapsStoredCellAndSetsFlags) {
    CScratchDir dir;
    for (bool vertical : {false, true}) {
        SyntheticFontSpec fontSpec;
        fontSpec.Codes = CodeRange(0x41, 5);
        fontSpec.Vertical = vertical;
        fontSpec.CellWidth = 10;
        fontSpec.CellHeight = 12;
        fontSpec.Origin = 10;
        auto font = MakeSyntheticFont(fontSpec);
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
    SyntheticFontSpec fontSpec;
    fontSpec.Codes = CodeRange(0x41, 3);
    auto font = MakeSyntheticFont(fontSpec);
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
    SyntheticFontSpec fontSpec;
    fontSpec.Codes = CodeRange(0x41, 3);
    auto font = MakeSyntheticFont(fontSpec);
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

namespace {

// A 1 bpp glyph whose ink is the box [x0, x1) x [y0, y1) of a cw x ch cell.
std::unique_ptr<CGlyph> BoxGlyph(int cw, int ch, int x0, int y0, int x1, int y1, bool vertical, int space1,
                                 int space2, int origin) {
    std::vector<uint8_t> cell((cw * ch + 7) / 8 + 1, 0);
    for (int y = y0; y < y1; ++y)
        for (int x = x0; x < x1; ++x) cell[(y * cw + x) / 8] |= static_cast<uint8_t>(0x80 >> ((y * cw + x) % 8));
    auto g = std::make_unique<CGlyph>();
    g->SetFromCell(cell.data(), cw, ch, 1, vertical, space1, space2, origin);
    return g;
}

}  // namespace

TEST(ZglyWriter, WidthEntriesFollowTheTurnedCell) {
    CScratchDir dir;
    for (bool vertical : {false, true}) {
        auto font = std::make_unique<CFontData>();
        font->Bpp.Set(1);
        font->IsVertical.Set(vertical);
        if (!vertical) {
            // Cell 3 x 6, baseline 5: A ascends 3 (ink 3 x 4), B ascends 5 (ink 1 x 2).
            font->AddGlyph(BoxGlyph(6, 8, 1, 2, 4, 6, false, 1, 2, 5), 'A');
            font->AddGlyph(BoxGlyph(6, 8, 0, 0, 1, 2, false, 0, 0, 5), 'B');
        } else {
            // Cell 5 x 5, baseline 1: A reaches 1 right of the reference column, B 3 left of it.
            font->AddGlyph(BoxGlyph(8, 6, 2, 1, 5, 5, true, 1, 2, 4), 'A');
            font->AddGlyph(BoxGlyph(8, 6, 0, 0, 1, 2, true, 0, 0, 4), 'B');
        }
        font->AddGlyph(BoxGlyph(8, 8, 0, 0, 0, 0, vertical, 3, 0, 5), 'C');  // no ink
        font->PrepareForOutput();
        // Glyph widths of A and B for rotations 0 to 3; C's is always 0.
        const int expected[2][4][2] = {{{3, 1}, {4, 6}, {3, 1}, {6, 2}}, {{5, 1}, {4, 2}, {3, 5}, {4, 2}}};
        for (int rotation = 0; rotation < 4; ++rotation) {
            WriteSyntheticZgly(*font, dir / "w.zgly", 1, rotation);
            auto b = FileBytes(dir / "w.zgly");
            std::size_t at = U32At(b, 24 + 12) + 8;
            std::string what = (vertical ? "vertical" : "horizontal") + std::string(" rotation ") +
                               std::to_string(rotation);
            EXPECT_EQ(b[at + 1], expected[vertical][rotation][0]) << what;
            EXPECT_EQ(b[at + 4], expected[vertical][rotation][1]) << what;
            EXPECT_EQ(b[at + 7], 0) << what;
            EXPECT_EQ(b[at], 1) << what;                          // A's left / top space
            EXPECT_EQ(b[at + 2], 1 + (vertical ? 4 : 3) + 2) << what;  // A's advance
            EXPECT_EQ(b[at + 8], 3) << what;                      // C's advance is its space
        }
    }
}
