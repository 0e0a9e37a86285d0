// LC Font files of all eight sizes, built here: identification, both mappings,
// fixed and proportional glyphs, vertical turning, and the check order.
#include <gtest/gtest.h>

#include "core/font_data.h"
#include "core/font_filter.h"
#include "xmlfiles/test_support.h"
#include "core/headless_pg_ctrl.h"
#include "sources/lc_font_reader.h"
#include "sources/lc_half_width_map.h"

#include <fstream>
#include <string>
#include <vector>

namespace {

struct Variant { int FileSize, Width, Height, Baseline, RowBytes; };
const Variant Variants[] = {
    {7520, 4, 8, 7, 1},    {9024, 5, 10, 9, 1},     {10528, 6, 12, 10, 1},   {13536, 8, 16, 14, 1},
    {73320, 8, 8, 7, 1},   {161304, 10, 10, 9, 2},  {190632, 12, 12, 10, 2}, {249288, 16, 16, 14, 2},
};

// {code, ink columns [X0, X1)} of rows [1, baseline); bits past the width are set too, to show they are ignored.
struct Record { uint16_t Code; int X0, X1; };

class LcFontReader : public testing::Test {
protected:
    std::filesystem::path Write(const std::string& name, const Variant& v, const std::vector<Record>& records, int extra = 0) {
        std::string bytes;
        for (int i = 0; i < v.FileSize / (2 + v.Height * v.RowBytes); ++i) {
            const Record r = i < static_cast<int>(records.size()) ? records[i] : Record{0xFFFF, 0, 0};
            bytes += {static_cast<char>(r.Code >> 8), static_cast<char>(r.Code & 0xFF)};
            for (int y = 0; y < v.Height; ++y)
                for (int k = 0; k < v.RowBytes; ++k) {
                    uint8_t b = 0;
                    for (int x = k * 8; x < k * 8 + 8; ++x)
                        if (y >= 1 && y < v.Baseline && ((x >= r.X0 && x < r.X1) || x >= v.Width)) b |= 0x80 >> (x % 8);
                    bytes += static_cast<char>(b);
                }
        }
        return Dir.Write(name, bytes + std::string(extra, '\0'));
    }
    std::unique_ptr<CFontData> Read(CLcFontReader reader, const CFontFilter& filter = {}) {
        reader.CheckParameters();
        auto font = std::make_unique<CFontData>();
        reader.Read(*font, filter);
        return font;
    }

    CHeadlessPgCtrl Pg;
    CPgCtrlScope PgScope{Pg};
    CTempDir Dir;
};

}  // namespace

// Both mappings in every size: fixed glyphs keep the cell's margins, proportional
// ones a column; vertical fonts keep the full-width glyphs upright and turn the
// half-width ones a quarter turn clockwise.
TEST_F(LcFontReader, BothMappingsAllSizes) {
    for (const Variant& v : Variants) {
        SCOPED_TRACE(v.FileSize);
        const int inkW = v.Width - 3, inkH = v.Baseline - 1, records = v.FileSize / (2 + v.Height * v.RowBytes);
        // 0x82A0 is U+3042; 0x8080 has an invalid lead byte.
        const auto mainPath = Write("main.dat", v, {{0x0041, 2, v.Width - 1}, {0x82A0, 1, 2}, {0x8080, 0, 2}});
        const auto half = Write("half.dat", v, {{0x8260, 2, v.Width - 1}, {0x82A0, 1, 2}, {0x8393, 1, 3}});
        for (bool fixed : {false, true})
            for (bool vertical : {false, true}) {
                SCOPED_TRACE(std::string(fixed ? "fixed" : "proportional") + (vertical ? " vertical" : ""));
                auto halfFont = Read({"", half, false, fixed, vertical});
                EXPECT_EQ(Pg.ProgressRange(), 272);
                auto main = Read({mainPath, "", fixed, false, vertical});
                EXPECT_EQ(std::pair(Pg.ProgressRange(), Pg.ProgressPos()), std::pair(records, records));
                // A and U+3042 from the main file; A and U+FF9D from the half-width one (0x82A0 is not in its map).
                ASSERT_TRUE(main->FindGlyph('A') && main->FindGlyph(0x3042) && halfFont->FindGlyph('A') && halfFont->FindGlyph(0xFF9D));
                EXPECT_EQ(std::vector<int>({int(main->GlyphCount()), int(halfFont->GlyphCount()), main->Bpp.Value, main->Vertical()}),
                          std::vector<int>({2, 2, 1, vertical}));
                const CGlyph *a = main->FindGlyph('A'), *h = halfFont->FindGlyph('A');
                EXPECT_EQ(std::vector<int>({a->Ink.Width(), a->Ink.Height(), a->Ascent, vertical ? a->TopSpace : a->LeftSpace,
                                            vertical ? a->LeftSpace : a->RightSpace}),
                          std::vector<int>({inkW, inkH, vertical ? -1 : v.Baseline - 1, vertical || !fixed ? 1 : 2,
                                            !vertical && fixed ? 1 : 0}));
                if (vertical)
                    EXPECT_EQ(std::vector<int>({h->Ink.Width(), h->Ink.Height(), h->TopSpace, h->BottomSpace, h->RightExtent}),
                              std::vector<int>({inkH, inkW, fixed ? 2 : 1, fixed ? 1 : 0, v.Baseline - 1}));
                else
                    EXPECT_EQ(h->Ink.Width(), inkW);
            }
    }
}

TEST_F(LcFontReader, DefaultMappingWinsFilterAppliesAndChecksComeFirst) {
    const Variant& v = Variants[3];
    const auto main = Write("main.dat", v, {{0x0041, 0, 1}, {0x0042, 0, 1}});
    const auto half = Write("half.dat", v, {{0x8260, 0, 8}, {0x8263, 0, 8}, {0x8264, 0, 8}});
    auto font = Read({main, half, false, false, false});
    EXPECT_EQ(font->GlyphCount(), 4u);
    EXPECT_EQ(font->FindGlyph('A')->Ink.Width(), 1);
    EXPECT_EQ(font->FindGlyph('D')->Ink.Width(), 8);

    const auto bad = Write("bad.dat", v, {}, 1);
    const struct {
        std::filesystem::path Main, Half;
        std::string Message;
    } checks[] = {{"", "", "Parameter Error:\n LC Font file path required"},
                  {bad, main, "Parameter Error:\n Input file(" + bad.string() + ") is not LC Font file."},
                  {main, bad, "Parameter Error:\n Input file(" + bad.string() + ") is not LC Font file."},
                  {Dir / "missing.dat", "", "Can not open a file (" + (Dir / "missing.dat").string() + ")."},
                  {main, "", ""}};
    for (const auto& c : checks)
        EXPECT_EQ(ErrorOf([&] { CLcFontReader(c.Main, c.Half, false, false, false).CheckParameters(); }), c.Message);
}

// The whole half-width map, entry by entry, against a list written out
// independently of the code.
TEST(LcHalfWidthMap, EveryEntryAsListed) {
    std::ifstream in(std::string(GLYPHWRIGHT_TEST_DATA) + "/data/lc-half-width.txt");
    ASSERT_TRUE(in);
    std::vector<HalfWidthEntry> listed;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] == '#') continue;
        listed.push_back({static_cast<uint16_t>(std::stoul(line.substr(0, 4), nullptr, 16)),
                          static_cast<char16_t>(std::stoul(line.substr(5, 4), nullptr, 16))});
    }
    ASSERT_EQ(listed.size(), HalfWidthCodeMap.size());
    for (std::size_t i = 0; i < listed.size(); ++i) {
        EXPECT_EQ(HalfWidthCodeMap[i].ShiftJis, listed[i].ShiftJis) << "entry " << i;
        EXPECT_EQ(HalfWidthCodeMap[i].Unicode, listed[i].Unicode) << "entry " << i;
    }
}
