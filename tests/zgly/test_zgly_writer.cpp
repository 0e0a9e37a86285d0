#include <gtest/gtest.h>

#include <map>
#include <tuple>

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

TEST(ZglyWriter, ParameterChecksAndTheirEdges) {
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
    EXPECT_EQ(check(NotGiven, 255, 200), "Parameter Error:\n DefaultLeftSpace(=200) out of range[-128 ～ 127]");
    EXPECT_EQ(check(NotGiven, 0, -128), "");

    // The font's own sizes at their edges, from glyphs that make them:
    // {ascent of A, ascent of B (1 x 1 ink each), A's reach, A's advance}.
    CHeadlessPgCtrl pg;
    g_pPgCtrl = &pg;
    auto sized = [](int ascentA, int ascentB, int reach, int advance) {
        auto font = std::make_unique<CFontData>();
        font->Bpp.Set(1);
        for (auto [code, ascent] : {std::pair{'A', ascentA}, std::pair{'B', ascentB}}) {
            auto g = std::make_unique<CGlyph>();
            g->Bpp = 1;
            g->Ink = InkBox{0, 0, 1, 1};
            g->Pixels = {0x80};
            g->Ascent = ascent;
            g->RightExtent = code == 'A' ? reach : 1;
            g->RightSpace = code == 'A' ? advance - 1 : 0;
            font->AddGlyph(std::move(g), code);
        }
        font->PrepareForOutput();
        return font;
    };
    const struct {
        std::unique_ptr<CFontData> Good, Bad;
        std::string Message;
        std::size_t At;  // the stored value's offset in the CGLP content
    } edges[] = {
        {sized(1, 1, 255, 2), sized(1, 1, 256, 2), "Max glyph width(=256) over 255.", 0},
        {sized(100, -154, 1, 2), sized(100, -155, 1, 2), "Font height(=256) over 255.", 1},
        {sized(1, 1, 1, 255), sized(1, 1, 1, 256), "Max char width(=256) over 255.", 5},
        {sized(127, 1, 1, 2), sized(128, 1, 1, 2), "Baseline position(=128) over 127.", 4},
    };
    auto write = [&](CFontData& font) {
        std::filesystem::remove(dir / "w.zgly");
        return MessageOf([&] {
            CZarnicFontWriter(dir / "w.zgly", NotGiven, NotGiven, NotGiven, NotGiven, NotGiven, 1, 0)
                .Write(font, CGlyphOrder());
        });
    };
    for (const auto& e : edges) {
        EXPECT_EQ(write(*e.Bad), "Parameter Error:\n " + e.Message);
        EXPECT_FALSE(std::filesystem::exists(dir / "w.zgly")) << e.Message;
        EXPECT_EQ(write(*e.Good), "") << e.Message;
        auto b = FileBytes(dir / "w.zgly");
        EXPECT_EQ(b[U32At(b, 24 + 8) + e.At], e.At == 4 ? 127 : 255) << e.Message;
    }
    auto font = sized(3, 1, 3, 4);
    font->Baseline.Set(-129);
    EXPECT_EQ(write(*font), "Parameter Error:\n Baseline position(=-129) under -128.");
    font = sized(3, 1, 3, 4);
    EXPECT_EQ(MessageOf([&] {
                  CZarnicFontWriter(dir / "w.zgly", u'Z', NotGiven, NotGiven, NotGiven, NotGiven, 1, 0)
                      .Write(*font, CGlyphOrder());
              }),
              "Parameter Error:\n Specified AlternateChar('Z' : U+005A) is not included in the Font");
    // A cancel before saving leaves nothing, not even a temporary file.
    std::filesystem::remove(dir / "w.zgly");
    pg.CancelAtVisibleStep(1);
    EXPECT_THROW(CZarnicFontWriter(dir / "w.zgly", NotGiven, NotGiven, NotGiven, NotGiven, NotGiven, 1, 0)
                     .Write(*font, CGlyphOrder()),
                 int);
    std::filesystem::remove(dir / "ro.zgly");
    EXPECT_TRUE(std::filesystem::is_empty(dir.Path()));
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

// The offsets in FINF, CWDH and CMAP chain every block of a written file, in file order.
TEST(ZglyWriter, OffsetsChainTheBlocks) {
    CScratchDir dir;
    SyntheticFontSpec fontSpec;
    fontSpec.Codes = CodeRange(0x20, 95);  // a direct block
    for (uint16_t c : {0x3042, 0x4E00, 0x7000, 0x9000}) fontSpec.Codes.push_back(c);  // and a scan block
    for (uint16_t c : CodeRange(0x100, 40)) fontSpec.Codes.push_back(c);  // and a table or direct block
    auto font = MakeSyntheticFont(fontSpec);
    WriteSyntheticZgly(*font, dir / "c.zgly");
    auto b = FileBytes(dir / "c.zgly");
    std::map<std::string, std::vector<uint32_t>> contents;  // tag -> content offsets, in file order
    for (std::size_t at = 16; at + 8 <= b.size(); at += U32At(b, at + 4))
        contents[std::string(b.begin() + at, b.begin() + at + 4)].push_back(static_cast<uint32_t>(at + 8));
    ASSERT_GE(contents["PAMC"].size(), 3u);
    EXPECT_EQ(U32At(b, 24 + 8), contents["PLGC"].at(0));
    for (auto [tag, finf, next] : {std::tuple{"HDWC", 12, 4}, std::tuple{"PAMC", 16, 8}}) {
        std::vector<uint32_t> chain;
        for (uint32_t at = U32At(b, 24 + finf); at != 0 && chain.size() < 10; at = U32At(b, at + next))
            chain.push_back(at);
        EXPECT_EQ(chain, contents[tag]) << tag;
    }
}
