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

std::string Write(CFontData& font, const std::filesystem::path& path, uint16_t alt = NotGiven) {
    std::filesystem::remove(path);
    return ErrorOf([&] {
        CZarnicFontWriter(path, {.AlternateChar = alt}).Write(font, CGlyphOrder());
    });
}

}  // namespace

TEST(ZglyWriter, OneGlyphFileLayout) {
    CScratchDir dir;
    CFontData font;
    font.Bpp.Set(1);
    font.AddGlyph(BoxGlyph(1, 1, 0, 0, 1, 1, false, 0, 0, 1), 0x41);
    font.PrepareForOutput();
    WriteSyntheticZgly(font, dir / "one.zgly");
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

TEST(ZglyWriter, ParameterChecksAndTheFontsSizeEdges) {
    CScratchDir dir;
    const std::string e = "Parameter Error:\n ";
    auto check = [&](const std::filesystem::path& path, uint16_t alt) {
        return ErrorOf([&] { CZarnicFontWriter(path, {.AlternateChar = alt}).CheckParameters(); });
    };
    EXPECT_EQ(check(dir / "no/x.zgly", NotGiven), e + "Directory(" + (dir / "no/").string() + ") not exists.");
    PutFile(dir / "ro.zgly", {1});
    std::filesystem::permissions(dir / "ro.zgly", std::filesystem::perms::owner_read);
    EXPECT_EQ(check(dir / "ro.zgly", NotGiven), e + "Specified file(" + (dir / "ro.zgly").string() + ") is read only.");
    EXPECT_EQ(check(dir / "x.zgly", 0), e + "Invalid alternate character(0x0000).");

    // The font's own sizes at their edges, from glyphs that make them:
    // {ascent of A, ascent of B (1 x 1 ink each), A's reach, A's advance}.
    CHeadlessPgCtrl pg;
    CPgCtrlScope scope(pg);
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
        uint8_t Stored;
    } edges[] = {
        {sized(1, 1, 255, 2), sized(1, 1, 256, 2), "Max glyph width(=256) over 255.", 0, 255},
        {sized(100, -154, 1, 2), sized(100, -155, 1, 2), "Font height(=256) over 255.", 1, 255},
        {sized(1, 1, 1, 255), sized(1, 1, 1, 256), "Max char width(=256) over 255.", 5, 255},
        {sized(127, 1, 1, 2), sized(128, 1, 1, 2), "Baseline position(=128) over 127.", 4, 127},
    };
    const auto out = dir / "w.zgly";
    for (const auto& edge : edges) {
        EXPECT_EQ(Write(*edge.Bad, out), e + edge.Message);
        EXPECT_FALSE(std::filesystem::exists(out)) << edge.Message;
        EXPECT_EQ(Write(*edge.Good, out), "") << edge.Message;
        auto b = FileBytes(out);
        EXPECT_EQ(b[U32At(b, 24 + 8) + edge.At], edge.Stored) << edge.Message;
    }
    auto low = sized(3, 1, 3, 4);
    low->Baseline.Set(-129);
    EXPECT_EQ(Write(*low, out), e + "Baseline position(=-129) under -128.");
}

// The width entries follow the turned cell.
TEST(ZglyWriter, WidthEntriesFollowTheTurn) {
    CScratchDir dir;
    for (bool vertical : {false, true}) {
        CFontData font;
        font.Bpp.Set(1);
        font.IsVertical.Set(vertical);
        // Horizontal: cell 3 x 6, baseline 5; A ascends 3 (ink 3 x 4), B ascends 5 (ink 1 x 2).
        // Vertical: cell 5 x 5, baseline 1; A reaches 1 right of the reference column, B 3 left of it.
        font.AddGlyph(vertical ? BoxGlyph(8, 6, 2, 1, 5, 5, true, 1, 2, 4) : BoxGlyph(6, 8, 1, 2, 4, 6, false, 1, 2, 5), 'A');
        font.AddGlyph(vertical ? BoxGlyph(8, 6, 0, 0, 1, 2, true, 0, 0, 4) : BoxGlyph(6, 8, 0, 0, 1, 2, false, 0, 0, 5), 'B');
        font.AddGlyph(BoxGlyph(8, 8, 0, 0, 0, 0, vertical, 3, 0, 5), 'C');  // no ink
        font.PrepareForOutput();
        // Glyph widths of A and B for rotations 0 to 3; C's is always 0.
        const int expected[2][4][2] = {{{3, 1}, {4, 6}, {3, 1}, {6, 2}}, {{5, 1}, {4, 2}, {3, 5}, {4, 2}}};
        for (int rotation = 0; rotation < 4; ++rotation) {
            WriteSyntheticZgly(font, dir / "w.zgly", 1, rotation);
            auto b = FileBytes(dir / "w.zgly");
            const std::size_t at = U32At(b, 24 + 12) + 8;
            const std::string what = "vertical " + std::to_string(vertical) + " rotation " + std::to_string(rotation);
            // {A's left or top space, glyph width, advance; B's glyph width; C's glyph width, advance}
            EXPECT_EQ(std::vector<int>({b[at], b[at + 1], b[at + 2], b[at + 4], b[at + 7], b[at + 8]}),
                      std::vector<int>({1, expected[vertical][rotation][0], 1 + (vertical ? 4 : 3) + 2,
                                        expected[vertical][rotation][1], 0, 3}))
                << what;
        }
    }
}

// The offsets in FINF, CWDH and CMAP chain every block of a written file, in file order.
TEST(ZglyWriter, OffsetsChainTheBlocks) {
    CScratchDir dir;
    SyntheticFontShape fontShape;
    fontShape.Codes = CodeRange(0x20, 95);  // a direct block
    for (uint16_t c : {0x3042, 0x4E00, 0x7000, 0x9000}) fontShape.Codes.push_back(c);  // and a scan block
    for (uint16_t c : CodeRange(0x100, 40)) fontShape.Codes.push_back(c);  // and a table or direct block
    WriteSyntheticZgly(*MakeSyntheticFont(fontShape), dir / "c.zgly");
    auto b = FileBytes(dir / "c.zgly");
    std::map<std::string, std::vector<uint32_t>> contents;  // tag -> content offsets, in file order
    for (std::size_t at = 16; at + 8 <= b.size(); at += U32At(b, at + 4))
        contents[std::string(b.begin() + at, b.begin() + at + 4)].push_back(static_cast<uint32_t>(at + 8));
    ASSERT_GE(contents["PAMC"].size(), 3u);
    EXPECT_EQ(U32At(b, 24 + 8), contents["PLGC"].at(0));
    for (auto [tag, finf, next] : {std::tuple{"HDWC", 12, 4}, std::tuple{"PAMC", 16, 8}}) {
        std::vector<uint32_t> chain;
        for (uint32_t at = U32At(b, 24 + finf); at != 0 && chain.size() < 10; at = U32At(b, at + next)) chain.push_back(at);
        EXPECT_EQ(chain, contents[tag]) << tag;
    }
}
