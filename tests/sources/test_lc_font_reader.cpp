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

TEST_F(LcFontReader, DefaultMappingAllSizes) {
    for (const Variant& v : Variants) {
        SCOPED_TRACE(v.FileSize);
        const int inkW = v.Width - 3, inkH = v.Baseline - 1;
        // 0x82A0 is U+3042; 0x8080 has an invalid lead byte.
        const auto path = Write("main.dat", v, {{0x0041, 2, v.Width - 1}, {0x82A0, 1, 2}, {0x8080, 0, 2}});
        for (bool fixed : {false, true}) {
            auto font = Read({path, "", fixed, false, false});
            EXPECT_EQ(font->GlyphCount(), 2u);
            EXPECT_EQ(font->Bpp.Value, 1);
            EXPECT_TRUE(font->IsVertical.Specified);
            EXPECT_FALSE(font->Vertical());
            ASSERT_NE(font->FindGlyph(0x3042), nullptr);
            const CGlyph* a = font->FindGlyph('A');
            ASSERT_NE(a, nullptr);
            EXPECT_EQ(a->Ink.Width(), inkW);
            EXPECT_EQ(a->Ink.Height(), inkH);
            EXPECT_EQ(a->Ascent, v.Baseline - 1);
            EXPECT_EQ(a->Bpp, 1);
            EXPECT_EQ(a->LeftSpace, fixed ? 2 : 1);
            EXPECT_EQ(a->RightSpace, fixed ? 1 : 0);
            EXPECT_EQ(Pg.ProgressRange(), v.FileSize / v.RecordSize());
            EXPECT_EQ(Pg.ProgressPos(), v.FileSize / v.RecordSize());
        }
        auto vertical = Read({path, "", false, false, true});
        EXPECT_TRUE(vertical->Vertical());
        const CGlyph* a = vertical->FindGlyph('A');
        EXPECT_EQ(a->Ink.Width(), inkW);  // not turned
        EXPECT_EQ(a->TopSpace, 1);
        EXPECT_EQ(a->LeftSpace, 0);
    }
}

TEST_F(LcFontReader, HalfWidthMappingAllSizes) {
    for (const Variant& v : Variants) {
        SCOPED_TRACE(v.FileSize);
        const int inkW = v.Width - 3, inkH = v.Baseline - 1;
        const auto path = Write("half.dat", v, {{0x8260, 2, v.Width - 1}, {0x82A0, 1, 2}, {0x8393, 1, 3}});
        auto font = Read({"", path, false, false, false});
        EXPECT_EQ(font->GlyphCount(), 2u);  // A and U+FF9D; 0x82A0 is not in the map
        EXPECT_EQ(Pg.ProgressRange(), 272);
        ASSERT_NE(font->FindGlyph(0xFF9D), nullptr);
        EXPECT_EQ(font->FindGlyph('A')->Ink.Width(), inkW);

        for (bool fixed : {false, true}) {
            auto turned = Read({"", path, false, fixed, true});
            const CGlyph* a = turned->FindGlyph('A');
            ASSERT_NE(a, nullptr);
            // Turned a quarter turn clockwise into a Height x Width cell.
            EXPECT_EQ(a->Ink.Width(), inkH);
            EXPECT_EQ(a->Ink.Height(), inkW);
            EXPECT_EQ(a->TopSpace, fixed ? 2 : 1);
            EXPECT_EQ(a->BottomSpace, fixed ? 1 : 0);
            EXPECT_EQ(a->RightExtent, v.Baseline - 1);
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
    EXPECT_NE(CheckMessage({Dir / "missing.dat", "", false, false, false}), "");
    EXPECT_EQ(CheckMessage({good, "", false, false, false}), "");
}
