#include <gtest/gtest.h>

#include "bmp_test_support.h"
#include "bmpfont/bmp_file.h"
#include "bmpfont/bmp_font_layout.h"
#include "bmpfont/bmp_font_reader.h"
#include "bmpfont/bmp_font_writer.h"
#include "core/bmp_image.h"
#include "core/font_filter.h"
#include "core/glyph_order.h"
#include "core/headless_pg_ctrl.h"

namespace {

uint32_t Le32(const std::string& b, std::size_t at) {
    return static_cast<uint8_t>(b[at]) | static_cast<uint8_t>(b[at + 1]) << 8 | static_cast<uint8_t>(b[at + 2]) << 16 |
           static_cast<uint32_t>(static_cast<uint8_t>(b[at + 3])) << 24;
}

std::string OrderFile(const std::string& order, int width = 4) {
    return "<letter-order version=\"1.0\"><body><area width=\"" + std::to_string(width) + "\"/><order>" + order +
           "</order></body></letter-order>";
}

// A 2-bit horizontal font of A (3 x 4 ink), B (2 x 5 ink) and a space, drawn
// with grid into 8 x 10 cells at offset (1, 1): pitch 12 x 16.
class BmpFontEdits : public ::testing::Test {
protected:
    void SetUp() override {
        g_pPgCtrl = &Pg;
        Order = Dir.Write("ab.xlor", OrderFile("AB<sp/><null/>"));
        Bmp = Dir / "ab.bmp";
        CFontData font;
        font.Bpp.Set(2);
        std::vector<uint32_t> a(6 * 8, 0), b(6 * 8, 0);
        for (int y = 2; y < 6; ++y)
            for (int x = 1; x < 4; ++x) a[y * 6 + x] = 3;
        for (int y = 1; y < 6; ++y)
            for (int x = 2; x < 4; ++x) b[y * 6 + x] = 2;
        font.AddGlyph(MakeGlyph(a, 6, 8, 2, false, 1, 1, 6), 'A');
        font.AddGlyph(MakeGlyph(b, 6, 8, 2, false, 0, 1, 6), 'B');
        font.AddGlyph(MakeGlyph(std::vector<uint32_t>(48, 0), 6, 8, 2, false, 3, 0, 6), ' ');
        font.PrepareForOutput();
        CBmpFontWriter writer(Bmp, Order, true, 8, 10, 1, 1, 0, 0);
        CGlyphOrder o;
        writer.LoadGlyphOrder(o);
        writer.Write(font, o);
        Pg.Warnings.clear();
    }
    void TearDown() override { g_pPgCtrl = nullptr; }

    std::unique_ptr<CFontData> ReadBack(const std::filesystem::path& order, int bpp = 2) {
        auto font = std::make_unique<CFontData>();
        CBmpFontReader reader(Bmp, order, bpp);
        reader.CheckParameters();
        reader.Read(*font, CFontFilter());
        return font;
    }
    // Edits the written 8-bit bottom-up picture in place; y counts from the top.
    void SetPixel(int x, int y, uint8_t index) {
        std::string data = ReadFile();
        uint32_t offset = static_cast<uint8_t>(data[10]) | (static_cast<uint8_t>(data[11]) << 8);
        int width = static_cast<uint8_t>(data[18]) | (static_cast<uint8_t>(data[19]) << 8);
        int height = static_cast<uint8_t>(data[22]) | (static_cast<uint8_t>(data[23]) << 8);
        data[offset + static_cast<std::size_t>(height - 1 - y) * ((width + 3) & ~3) + x] = static_cast<char>(index);
        Dir.Write("ab.bmp", data);
    }
    uint8_t GetPixel(int x, int y) {
        std::string data = ReadFile();
        int width = static_cast<uint8_t>(data[18]) | (static_cast<uint8_t>(data[19]) << 8);
        int height = static_cast<uint8_t>(data[22]) | (static_cast<uint8_t>(data[23]) << 8);
        return static_cast<uint8_t>(data[1078 + static_cast<std::size_t>(height - 1 - y) * ((width + 3) & ~3) + x]);
    }
    std::string ReadFile() {
        std::ifstream in(Bmp, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }

    CTempDir Dir;
    CHeadlessPgCtrl Pg;
    std::filesystem::path Order, Bmp;
};

}  // namespace

TEST_F(BmpFontEdits, HandEditsReadBackWithTheirWarnings) {
    auto before = ReadBack(Order);
    const CGlyph* a0 = before->FindGlyph('A');
    ASSERT_TRUE(a0);
    EXPECT_EQ(a0->RightSpace, 1);

    // B redrawn as a 2 x 2 block of level 1 in its area (columns 14..21, rows 2..11).
    for (int y = 2; y < 12; ++y)
        for (int x = 14; x < 22; ++x) SetPixel(x, y, 0);
    for (int y = 6; y < 8; ++y)
        for (int x = 16; x < 18; ++x) SetPixel(x, y, 1);
    // A's width line (row 13) lengthened by two pixels.
    int end = 2;
    while (GetPixel(end, 13) != 3) ++end;
    while (GetPixel(end, 13) == 3) ++end;
    SetPixel(end, 13, 3);
    SetPixel(end + 1, 13, 3);
    // The space cell's inner frame broken, and a stray pixel in the empty cell.
    SetPixel(25, 5, 0);
    SetPixel(39, 3, 2);

    auto font = ReadBack(Order);
    const CGlyph* b = font->FindGlyph('B');
    ASSERT_TRUE(b);
    EXPECT_EQ(b->Ink.Width(), 2);
    EXPECT_EQ(b->Ink.Height(), 2);
    EXPECT_EQ(InkValues(*b), (std::vector<uint32_t>{1, 1, 1, 1}));
    // The baseline lies at area row 6 (offset 1 + font baseline 5); the block starts at area row 4.
    EXPECT_EQ(b->Ascent, 2);
    EXPECT_EQ(font->FindGlyph('A')->RightSpace, 3);
    EXPECT_EQ(font->FindGlyph(' ')->LeftSpace, 3);
    std::vector<std::string> want{
        "More than one color detected in margin area at (30,8).",
        "BMP position (42, 8) is <null/> in " + Order.string() + ", but the cell include non-white color."};
    EXPECT_EQ(Pg.Warnings, want);
}

TEST_F(BmpFontEdits, PaletteFramesAndMarks) {
    CBinaryFile file(Bmp);
    CBmpImage pic;
    LoadBmp(file, pic);
    // White, two greys, black, the grid colour, then black.
    EXPECT_EQ(std::vector<uint32_t>(pic.Palette.begin(), pic.Palette.begin() + 6),
              (std::vector<uint32_t>{0xFFFFFF, 0xAAAAAA, 0x555555, 0, 0x99AA99, 0}));
    EXPECT_EQ(pic.Palette[255], 0u);
    // Outer frame black, inner frame and separator (row 12) in the grid colour.
    EXPECT_EQ(pic.GetPixel(5, 0), 3u);
    EXPECT_EQ(pic.GetPixel(12, 7), 3u);
    EXPECT_EQ(pic.GetPixel(5, 1), 4u);
    EXPECT_EQ(pic.GetPixel(13, 7), 4u);
    EXPECT_EQ(pic.GetPixel(5, 12), 4u);
    // The marks, white in the black border: baseline at offset 1 + baseline 5 + 2,
    // width lines at cell height 10 + 3.
    for (int y = 0; y < 16; ++y) EXPECT_EQ(pic.GetPixel(0, y), y == 8 || y == 13 ? 0u : 3u) << y;
}

// Palette index 0 stands for the white index's level; a second white among the
// levels is reported.
TEST_F(BmpFontEdits, PaletteIndexZeroAndSecondWhites) {
    auto before = ReadBack(Order);
    std::string data = ReadFile();
    const uint32_t offset = Le32(data, 10);
    // Swap palette entries 0 (white) and 2 (a grey), and pixel values 0 and 2.
    for (int k = 0; k < 4; ++k) std::swap(data[54 + k], data[54 + 8 + k]);
    for (std::size_t i = offset; i < data.size(); ++i)
        if (data[i] == 0 || data[i] == 2) data[i] = static_cast<char>(2 - data[i]);
    Dir.Write("ab.bmp", data);
    auto swapped = ReadBack(Order);
    ExpectSameGlyphs(*before, *swapped, "white at index 2");
    EXPECT_EQ(Pg.Warnings, std::vector<std::string>{});
    ASSERT_NE(InkValues(*swapped->FindGlyph('B')), std::vector<uint32_t>(10, 0));

    // A second white at index 3 (a level of a 2-bit font) is reported; beyond the levels it is not.
    for (int at : {3, 5}) {
        std::string twice = ReadFile();
        for (int k = 0; k < 3; ++k) twice[54 + 4 * at + k] = '\xFF';
        Dir.Write("ab.bmp", twice);
        Pg.Warnings.clear();
        ReadBack(Order);
        EXPECT_EQ(Pg.Warnings, at == 3 ? std::vector<std::string>{"2 or more white colors are found."}
                                       : std::vector<std::string>{})
            << at;
        Dir.Write("ab.bmp", data);
    }
}

TEST_F(BmpFontEdits, MalformedInputsGiveTheirMessages) {
    auto readerError = [&](const std::filesystem::path& bmp, const std::filesystem::path& order, int bpp = 2) {
        return ErrorOf([&] {
            CBmpFontReader reader(bmp, order, bpp);
            reader.CheckParameters();
        });
    };
    auto empty = Dir.Write("empty.xlor", OrderFile(""));
    EXPECT_EQ(readerError(Bmp, empty), "BMP Error:\n Glyph order(" + empty.string() + ") has no cells.");
    auto wide = Dir.Write("wide.xlor", OrderFile("AB", 1000000000));
    EXPECT_EQ(readerError(Bmp, wide), "BMP Error:\n BMP width(48) too small. Must be >= 4000000000");
    EXPECT_EQ(readerError(Bmp, Order, 9), "Internal Error:\n Bpp(9) out of range.");
    auto five = Dir.Write("five.xlor", OrderFile("ABCDE", 5));
    EXPECT_EQ(readerError(Bmp, five), "BMP Error:\n BMP width(48) is not multiply of horizontal number of blocks(5)");

    RawBmp raw;
    raw.Width = 48;
    raw.Height = 16;
    raw.Bpp = 24;
    raw.Pixels.assign(48 * 16, 0xFFFFFF);
    auto rgb = Dir.Write("rgb.bmp", raw.Bytes());
    EXPECT_EQ(readerError(rgb, Order), "");  // true-colour grids are read by their colours
    raw.Bpp = 1;
    raw.Palette = {0, 0x00FF0000};
    raw.Pixels.assign(48 * 16, 0);
    auto noWhite = Dir.Write("nowhite.bmp", raw.Bytes());
    EXPECT_EQ(readerError(noWhite, Order), "BMP Error:\n Color white not found in BMP.");

    // Pitches that pass the size check but leave no glyph area (horizontal 48 x 5,
    // vertical 20 x 12 with its mark): read as empty cells, never a failed allocation;
    // a grid without ink is refused.
    for (bool vertical : {false, true}) {
        RawBmp tiny;
        tiny.Width = vertical ? 20 : 48;
        tiny.Height = vertical ? 12 : 5;
        tiny.Palette.assign(256, 0);
        tiny.Palette[0] = 0x00FFFFFF;
        tiny.Pixels.assign(static_cast<std::size_t>(tiny.Width * tiny.Height), 0);
        if (vertical) tiny.Pixels[2] = 1;
        auto path = Dir.Write("tiny.bmp", tiny.Bytes());
        CFontData font;
        EXPECT_EQ(ErrorOf([&] {
                      CBmpFontReader reader(path, Order, 2);
                      reader.CheckParameters();
                      reader.Read(font, CFontFilter());
                  }).rfind("BMP Error:\n No cell of BMP(" + path.string() + ") holds any ink", 0),
                  0u)
            << vertical;
        EXPECT_EQ(font.GlyphCount(), 0u) << vertical;
    }

    SetPixel(0, 4, 0);  // a second odd pixel in the baseline column
    EXPECT_EQ(ErrorOf([&] { ReadBack(Order); }), "BMP Error:\n BMP has no baseline info.");

    auto out = Dir / "out.bmp";
    EXPECT_EQ(ErrorOf([&] { CBmpFontWriter(out, Order, true, 0, 8, 0, 0, 0, 0).CheckParameters(); }),
              "Parameter Error:\n Cell Width (=0) must be > 0.");
    CGlyphOrder order;
    EXPECT_EQ(ErrorOf([&] { CBmpFontWriter(out, wide, true, 8, 8, 0, 0, 0, 0).LoadGlyphOrder(order); }),
              "BMP Error:\n Glyph order(" + wide.string() + ") has too many cells(1000000000 x 1).");
    EXPECT_FALSE(std::filesystem::exists(out));
}

TEST_F(BmpFontEdits, ConversionsKeepToTheOrderAndTheFilter) {
    auto out = Dir / "out.bmp";
    auto run = [&](const std::filesystem::path& outOrder, const std::string& filter) {
        CTestFrontEnd ui;
        ui.FilterPath = filter;
        ui.MakeReader = [&] { return std::make_unique<CBmpFontReader>(Bmp, Order, 2); };
        ui.MakeWriter = [&] {
            return std::make_unique<CBmpFontWriter>(out, outOrder, false, -1, -1, 0, 0, 0, 0);
        };
        Pg.Warnings.clear();
        ConversionOutcome outcome = RunConversion(ui, Pg);
        return std::make_pair(outcome, ui.Errors);
    };
    auto codes = [&](const std::filesystem::path& order) {
        auto font = std::make_unique<CFontData>();
        CBmpFontReader(out, order, 2).Read(*font, CFontFilter());
        std::string s;
        for (const auto& g : font->GetGlyphs()) s += static_cast<char>(g->Code);
        return s;
    };

    // The glyph-grid output alone limits the conversion to its order's characters.
    auto ac = Dir.Write("ac.xlor", OrderFile("AC"));
    EXPECT_EQ(run(ac, "").first, ConversionOutcome::Finished);
    EXPECT_EQ(codes(ac), "A");
    EXPECT_TRUE(Pg.Warnings.empty());

    // A filter narrowed to the order: B is filtered out, the space stays, Z is missing.
    auto abz = Dir.Write("abz.xlor", OrderFile("ABZ<sp/>"));
    auto filter = Dir.Write("f.xllt", "<letter-list version=\"1.0\"><body><letter>AZQ</letter></body></letter-list>");
    EXPECT_EQ(run(abz, filter.string()).first, ConversionOutcome::Finished);
    EXPECT_EQ(codes(abz), "A ");
    EXPECT_EQ(Pg.Warnings, std::vector<std::string>{
                               "A char ('Z': U+005A) included in the Filter is not include in the INPUT font."});

    // Broken inputs end the run with their message.
    auto bad = Dir.Write("bad.xlor", "<letter-order version=\"1.0\"><body>");
    auto [outcome, errors] = run(bad, "");
    EXPECT_EQ(outcome, ConversionOutcome::Failed);
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_EQ(errors[0].rfind("XML Error:\n " + bad.string() + " : line 1", 0), 0u) << errors[0];
    auto wide = Dir.Write("wide.xlor", OrderFile("A", 1000000000));
    std::tie(outcome, errors) = run(wide, "");
    EXPECT_EQ(outcome, ConversionOutcome::Failed);
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_EQ(errors[0].rfind("BMP Error:\n", 0), 0u);
}
