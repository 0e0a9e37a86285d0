// LC Font files of all eight sizes, built here: identification, both mappings,
// fixed and proportional glyphs, vertical turning, and the check order.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <unistd.h>
#include <string>
#include <vector>

#include "core/font_data.h"
#include "core/font_filter.h"
#include "core/general_exception.h"
#include "core/headless_pg_ctrl.h"
#include "sources/lc_font_reader.h"

namespace {

struct Variant {
    int FileSize, Width, Height, Baseline, RowBytes;
    int RecordSize() const { return 2 + Height * RowBytes; }
};

const Variant Variants[] = {
    {7520, 4, 8, 7, 1},    {9024, 5, 10, 9, 1},     {10528, 6, 12, 10, 1},   {13536, 8, 16, 14, 1},
    {73320, 8, 8, 7, 1},   {161304, 10, 10, 9, 2},  {190632, 12, 12, 10, 2}, {249288, 16, 16, 14, 2},
};

// Ink covering columns [x0, x1) of rows [1, baseline); bits past the width are set
// too, to show they are ignored.
struct Record {
    uint16_t Code;
    int X0, X1;
};

class LcFontReader : public testing::Test {
protected:
    void SetUp() override {
        g_pPgCtrl = &Pg;
        Dir = std::filesystem::temp_directory_path() / ("gw_lc_" + std::to_string(getpid()));
        std::filesystem::create_directories(Dir);
    }
    void TearDown() override {
        g_pPgCtrl = nullptr;
        std::filesystem::remove_all(Dir);
    }

    std::filesystem::path Write(const std::string& name, const Variant& v, const std::vector<Record>& records,
                                int extraBytes = 0) {
        std::vector<uint8_t> bytes;
        const int count = v.FileSize / v.RecordSize();
        for (int i = 0; i < count; ++i) {
            const Record r = i < static_cast<int>(records.size()) ? records[i] : Record{0xFFFF, 0, 0};
            bytes.push_back(static_cast<uint8_t>(r.Code >> 8));
            bytes.push_back(static_cast<uint8_t>(r.Code & 0xFF));
            for (int y = 0; y < v.Height; ++y) {
                std::vector<uint8_t> row(v.RowBytes, 0);
                for (int x = 0; x < v.RowBytes * 8; ++x) {
                    const bool ink = y >= 1 && y < v.Baseline && ((x >= r.X0 && x < r.X1) || x >= v.Width);
                    if (ink) row[x / 8] |= static_cast<uint8_t>(0x80 >> (x % 8));
                }
                bytes.insert(bytes.end(), row.begin(), row.end());
            }
        }
        bytes.resize(bytes.size() + extraBytes, 0);
        const auto path = Dir / name;
        std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        return path;
    }

    std::unique_ptr<CFontData> Read(CLcFontReader reader, const CFontFilter& filter = {}) {
        reader.CheckParameters();
        auto font = std::make_unique<CFontData>();
        reader.Read(*font, filter);
        return font;
    }

    static std::string CheckMessage(CLcFontReader reader) {
        try {
            reader.CheckParameters();
        } catch (const CGeneralException& e) {
            return e.Message;
        }
        return "";
    }

    CHeadlessPgCtrl Pg;
    std::filesystem::path Dir;
};

}  // namespace

// Both mappings in every size: fixed glyphs keep the cell's margins, proportional
// ones a column; vertical fonts keep the full-width glyphs upright and turn the
// half-width ones a quarter turn clockwise.
TEST_F(LcFontReader, BothMappingsAllSizes) {
    for (const Variant& v : Variants) {
        SCOPED_TRACE(v.FileSize);
        const int inkW = v.Width - 3, inkH = v.Baseline - 1, records = v.FileSize / v.RecordSize();
        // 0x82A0 is U+3042; 0x8080 has an invalid lead byte.
        const auto main = Write("main.dat", v, {{0x0041, 2, v.Width - 1}, {0x82A0, 1, 2}, {0x8080, 0, 2}});
        const auto half = Write("half.dat", v, {{0x8260, 2, v.Width - 1}, {0x82A0, 1, 2}, {0x8393, 1, 3}});
        for (bool fixed : {false, true})
            for (bool vertical : {false, true}) {
                const std::string what = std::string(fixed ? "fixed" : "proportional") + (vertical ? " vertical" : "");
                auto font = Read({main, "", fixed, false, vertical});
                EXPECT_EQ(font->GlyphCount(), 2u) << what;
                EXPECT_EQ(font->Bpp.Value, 1);
                EXPECT_EQ(font->Vertical(), vertical);
                EXPECT_NE(font->FindGlyph(0x3042), nullptr);
                const CGlyph* a = font->FindGlyph('A');
                ASSERT_NE(a, nullptr);
                const std::vector<int> upright = {inkW, inkH, vertical ? -1 : v.Baseline - 1, vertical ? 1 : (fixed ? 2 : 1),
                                                  vertical ? 0 : (fixed ? 1 : 0)};
                EXPECT_EQ(std::vector<int>({a->Ink.Width(), a->Ink.Height(), a->Ascent,
                                            vertical ? a->TopSpace : a->LeftSpace,
                                            vertical ? a->LeftSpace : a->RightSpace}),
                          upright)
                    << what;
                EXPECT_EQ(Pg.ProgressRange(), records);
                EXPECT_EQ(Pg.ProgressPos(), records);

                auto halfFont = Read({"", half, false, fixed, vertical});
                EXPECT_EQ(halfFont->GlyphCount(), 2u);  // A and U+FF9D; 0x82A0 is not in the map
                EXPECT_EQ(Pg.ProgressRange(), 272);
                EXPECT_NE(halfFont->FindGlyph(0xFF9D), nullptr);
                const CGlyph* h = halfFont->FindGlyph('A');
                ASSERT_NE(h, nullptr);
                if (vertical)
                    EXPECT_EQ(std::vector<int>({h->Ink.Width(), h->Ink.Height(), h->TopSpace, h->BottomSpace,
                                                h->RightExtent}),
                              std::vector<int>({inkH, inkW, fixed ? 2 : 1, fixed ? 1 : 0, v.Baseline - 1}))
                        << what;
                else
                    EXPECT_EQ(h->Ink.Width(), inkW) << what;
            }
    }
}

TEST_F(LcFontReader, DefaultMappingWinsAndFilterApplies) {
    const Variant& v = Variants[3];
    const auto main = Write("main.dat", v, {{0x0041, 0, 1}, {0x0042, 0, 1}});
    const auto half = Write("half.dat", v, {{0x8260, 0, 8}, {0x8263, 0, 8}, {0x8264, 0, 8}});
    auto font = Read({main, half, false, false, false});
    EXPECT_EQ(font->GlyphCount(), 4u);
    EXPECT_EQ(font->FindGlyph('A')->Ink.Width(), 1);
    EXPECT_EQ(font->FindGlyph('D')->Ink.Width(), 8);

    CFontFilter filter{false, {{'A', true}, {'D', true}}};
    auto filtered = Read({main, half, false, false, false}, filter);
    EXPECT_EQ(filtered->GlyphCount(), 2u);
}

TEST_F(LcFontReader, ChecksFilesBeforeReading) {
    const Variant& v = Variants[3];
    const auto good = Write("good.dat", v, {});
    const auto bad = Write("bad.dat", v, {}, 1);
    EXPECT_EQ(CheckMessage({"", "", false, false, false}), "Parameter Error:\n LC Font file path required");
    EXPECT_EQ(CheckMessage({bad, good, false, false, false}),
              "Parameter Error:\n Input file(" + bad.string() + ") is not LC Font file.");
    EXPECT_EQ(CheckMessage({good, bad, false, false, false}),
              "Parameter Error:\n Input file(" + bad.string() + ") is not LC Font file.");
    EXPECT_EQ(CheckMessage({Dir / "missing.dat", "", false, false, false}),
              "Can not open a file (" + (Dir / "missing.dat").string() + ").");
    EXPECT_EQ(CheckMessage({good, "", false, false, false}), "");
}
