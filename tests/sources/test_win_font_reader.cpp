// Installed fonts through FreeType: parameter checks and the paths of bitmap
// fonts and flat renderings. The rendered pixels are compared with reference
// files in the command-line tests.
#include <gtest/gtest.h>

#include <unistd.h>

#include <fstream>

#include "core/font_data.h"
#include "core/font_filter.h"
#include "core/headless_pg_ctrl.h"
#include "sources/win_font_reader.h"
#include "xmlfiles/test_support.h"

namespace {

class WinFontReader : public testing::Test {
protected:
    void SetUp() override { g_pPgCtrl = &Pg; }
    void TearDown() override { g_pPgCtrl = nullptr; }
    std::unique_ptr<CFontData> Convert(const std::string& face, int size, int bpp, int widthType = 0,
                                       const CFontFilter& filter = {}) {
        CWinFontReader reader(face, size, bpp, widthType, 0, true);
        reader.CheckParameters();
        auto font = std::make_unique<CFontData>();
        reader.Read(*font, filter);
        font->PrepareForOutput();
        return font;
    }
    // An 8-pixel BDF bitmap font of two characters, cells up to maxWidth wide.
    std::filesystem::path WriteBdf(int maxWidth, const std::string& chars) {
        return Dir.Write("f" + std::to_string(maxWidth) + ".bdf", "STARTFONT 2.1\nFONT -test-GwBdf-medium-r-normal--8-80-75-75-c-60-iso10646-1\n"
                                  "SIZE 8 75 75\nFONTBOUNDINGBOX " + std::to_string(maxWidth) + " 8 0 -1\nSTARTPROPERTIES 4\n"
                                  "FONT_ASCENT 7\nFONT_DESCENT 1\nCHARSET_REGISTRY \"ISO10646\"\nCHARSET_ENCODING \"1\"\n"
                                  "ENDPROPERTIES\nCHARS 2\nSTARTCHAR A\nENCODING 65\nSWIDTH 750 0\nDWIDTH 6 0\n"
                                  "BBX 6 8 0 -1\nBITMAP\n00\n30\n48\n84\nFC\n84\n84\n00\nENDCHAR\n" + chars + "ENDFONT\n");
    }

    CHeadlessPgCtrl Pg;
    CTempDir Dir;
};

}  // namespace

TEST_F(WinFontReader, ChecksInOrder) {
    const struct {
        std::string Face;
        int Size, Bpp, WidthType, Fixed;
        std::string Message;
    } cases[] = {
        {"", 0, 9, 9, 0, "Internal Error:\n Font is not selected."},
        {"DejaVu Sans", 0, 9, 9, 0, "Parameter Error:\n Invalid Font Size(0)"},
        {"No Such Face", 12, 1, 3, 0, "Parameter Error:\n Invalid fixed width(0)"},
        {"No Such Face", 12, 1, 3, 5, "Parameter Error:\n Font(No Such Face) is not installed."},
        {"@/nonexistent/x.ttf", 12, 1, 0, 0, "Parameter Error:\n Font(@/nonexistent/x.ttf) is not installed."},
        {"dejavu sans", -12, 5, 3, 1, ""},
        {"DejaVu Sans", 1, 1, 0, 0, ""},
        {"/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", 12, 1, 0, 0, ""}};
    for (const auto& c : cases)
        EXPECT_EQ(ErrorOf([&] { CWinFontReader(c.Face, c.Size, c.Bpp, c.WidthType, c.Fixed, false).CheckParameters(); }),
                  c.Message)
            << c.Face;
    EXPECT_THROW(Convert("DejaVu Sans", 100000, 1, 0, CFontFilter{false, {{'A', true}}}), CGeneralException);
}

TEST_F(WinFontReader, BitmapFontsGoThroughTheTwoLevelPath) {
    const auto path = WriteBdf(6, "STARTCHAR space\nENCODING 32\nSWIDTH 750 0\nDWIDTH 6 0\nBBX 6 8 0 -1\nBITMAP\n"
                                  "00\n00\n00\n00\n00\n00\n00\n00\nENDCHAR\n");
    auto font = Convert(path.string(), 8, 1, 1);
    ASSERT_EQ(font->GlyphCount(), 2u);
    const CGlyph* a = font->FindGlyph('A');
    EXPECT_EQ(std::vector<int>({a->Ink.Width(), a->Ink.Height(), a->Ascent}), std::vector<int>({6, 6, 6}));
    // Row "30": two ink pixels in the middle of the top row.
    EXPECT_EQ(std::vector<uint8_t>(a->Pixels.begin(), a->Pixels.begin() + 6), (std::vector<uint8_t>{0, 0, 1, 1, 0, 0}));
    EXPECT_EQ(font->FindGlyph(' ')->LeftSpace + font->FindGlyph(' ')->RightSpace, 6);

    // Cells 12 wide and 8 high: 'W' fills the top rows of the 12 x 12 scratch
    // bitmap, whose rows below the cell are blank from their first column.
    font = Convert(WriteBdf(12, "STARTCHAR W\nENCODING 87\nSWIDTH 1500 0\nDWIDTH 12 0\nBBX 12 8 0 -1\nBITMAP\n"
                                "0000\n8010\n8010\n8410\n4A20\n5120\n2040\n0000\nENDCHAR\n").string(), 8, 1, 2);
    ASSERT_NE(font->FindGlyph('A'), nullptr);
    const CGlyph* w = font->FindGlyph('W');
    ASSERT_NE(w, nullptr);
    EXPECT_EQ(w->Ink.Width(), 12);
    EXPECT_EQ(w->LeftSpace + w->Ink.Width() + w->RightSpace, 12);
}

TEST_F(WinFontReader, SoftAntiAliasingOfAFlatRendering) {
    // IPA Gothic draws U+203E at 8 pixels per em as 8 x 0 pixels with its top 7
    // rows up: halving counts an extra row for it, which must not be written.
    auto font = Convert("IPAGothic", -4, 4, 0, CFontFilter{false, {{0x203E, true}}});
    ASSERT_EQ(font->GlyphCount(), 1u);
    EXPECT_TRUE(font->FindGlyph(0x203E)->Pixels.empty());
}
