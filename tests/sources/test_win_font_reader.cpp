// Installed fonts through FreeType: parameter checks, bitmap fonts and their
// strikes, and flat renderings. The rendered pixels are compared with reference
// files in the command-line tests.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include <fontconfig/fontconfig.h>

#include "core/bit_stream.h"
#include "core/font_data.h"
#include "core/font_filter.h"
#include "core/headless_pg_ctrl.h"
#include "sources/font_catalog.h"
#include "sources/win_font_reader.h"
#include "xmlfiles/test_support.h"

namespace {

// One file of a bitmap family shipped one file per size: "A" is a solid block
// half the size wide and the size tall, so its ink tells which file was read.
std::string Strike(int px) {
    const int width = px / 2;
    std::ostringstream out;
    out << "STARTFONT 2.1\nFONT -gw-GwStrikes-medium-r-normal--" << px << "-" << px * 10 << "-75-75-c-" << width * 10
        << "-iso10646-1\nSIZE " << px << " 75 75\nFONTBOUNDINGBOX " << width << " " << px
        << " 0 -2\nSTARTPROPERTIES 6\nFAMILY_NAME \"GwStrikes\"\nPIXEL_SIZE " << px << "\nFONT_ASCENT " << px - 2
        << "\nFONT_DESCENT 2\nCHARSET_REGISTRY \"ISO10646\"\nCHARSET_ENCODING \"1\"\nENDPROPERTIES\nCHARS 1\n"
        << "STARTCHAR A\nENCODING 65\nSWIDTH 500 0\nDWIDTH " << width << " 0\nBBX " << width << " " << px << " 0 -2\nBITMAP\n";
    for (int y = 0; y < px; ++y) out << (px == 16 ? "FF" : px == 12 ? "FC" : "F0") << "\n";
    out << "ENDCHAR\nENDFONT\n";
    return out.str();
}

std::string Lower(std::string s) {
    for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

class WinFontReader : public testing::Test {
protected:
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
    CPgCtrlScope PgScope{Pg};
    CTempDir Dir;
};

}  // namespace

TEST_F(WinFontReader, ChecksInOrder) {
    const struct {
        std::string Face;
        int Size, Bpp, WidthType, Fixed;
        std::string Message;
    } cases[] = {
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
    EXPECT_EQ(a->Bpp, 1);
    EXPECT_EQ(PeekWideBits(a->Pixels.data(), 0, 6), 0b001100u);
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

// The installed list shows bitmap families once with their sizes; of a family that ships
// one file per size, the file whose strike is the chosen size is read, at 2 levels.
TEST_F(WinFontReader, BitmapStrikesListedAndChosenBySize) {
    ASSERT_TRUE(FcInit());
    for (int px : {8, 12, 16}) {
        const auto file = Dir.Write("strike" + std::to_string(px) + ".bdf", Strike(px));
        ASSERT_TRUE(FcConfigAppFontAddFile(nullptr, reinterpret_cast<const FcChar8*>(file.c_str())));
    }
    // The list: families once, sorted without case, with bitmap sizes.
    const auto faces = ListInstalledFaces();
    auto family = [&](const std::string& name) {
        return std::find_if(faces.begin(), faces.end(), [&](const FontFaceInfo& f) { return f.Family == name; });
    };
    ASSERT_NE(family("GwStrikes"), faces.end());
    EXPECT_FALSE(family("GwStrikes")->Scalable);
    EXPECT_EQ(family("GwStrikes")->PixelSizes, (std::vector<int>{8, 12, 16}));
    EXPECT_EQ(std::count_if(faces.begin(), faces.end(), [](const FontFaceInfo& f) { return f.Family == "DejaVu Sans"; }), 1);
    EXPECT_TRUE(std::is_sorted(faces.begin(), faces.end(), [](const FontFaceInfo& a, const FontFaceInfo& b) {
        return Lower(a.Family) < Lower(b.Family);
    }));

    // {size, levels asked, ink width, ink height}: cell heights, an em height (negative),
    // and more levels than the face has, which one warning tells.
    const int cases[][4] = {{8, 1, 4, 8}, {12, 1, 6, 12}, {16, 1, 8, 16}, {-12, 1, 6, 12}, {12, 4, 6, 12},
                            {16, 3, 8, 16}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "size " << c[0] << " bpp " << c[1]);
        Pg.Warnings.clear();
        CWinFontReader reader("GwStrikes", c[0], c[1], 0, 0, false);
        reader.CheckParameters();
        CFontData font;
        reader.Read(font, CFontFilter{});
        EXPECT_EQ(font.Bpp.Value, 1);
        const CGlyph* a = font.FindGlyph('A');
        ASSERT_NE(a, nullptr);
        EXPECT_EQ(a->Ink.Width(), c[2]);
        EXPECT_EQ(a->Ink.Height(), c[3]);
        EXPECT_EQ(a->Bpp, 1);
        EXPECT_EQ(Pg.Warnings, c[1] == 1 ? std::vector<std::string>{}
                                         : std::vector<std::string>{FormatString(
                                               "Font(GwStrikes) has bitmap strikes only: it is read at 1 bit per "
                                               "pixel (2 levels), not %d levels.",
                                               1 << c[1])});
        const std::size_t bits = static_cast<std::size_t>(a->Ink.Width()) * a->Ink.Height();
        for (std::size_t bit = 0; bit < bits; ++bit)  // solid: full ink in every pixel
            ASSERT_EQ(PeekBits(a->Pixels.data(), bit, 1), 1u) << bit;
    }
    // A size between strikes is refused with the sizes there are, in the
    // measure of the size asked: cell heights, or ems for character heights.
    EXPECT_EQ(ErrorOf([] { CWinFontReader("GwStrikes", 15, 1, 0, 0, false).CheckParameters(); }),
              "Parameter Error:\n Font(GwStrikes) has bitmap strikes only and none of cell height 15; its cell heights "
              "are 8, 12, 16.");
    EXPECT_EQ(ErrorOf([] { CWinFontReader("GwStrikes", -9, 1, 0, 0, false).CheckParameters(); }),
              "Parameter Error:\n Font(GwStrikes) has bitmap strikes only and none of size 9; its sizes are 8, 12, 16.");
}

// A cancel on several threads ends the run where it ends on one: the font
// holds the same glyphs before that code, and no helper is left running when
// Read has passed the cancellation on.
TEST_F(WinFontReader, CancelOnSeveralThreadsStopsAtTheSameCode) {
    std::vector<std::vector<uint16_t>> codes;
    for (int threads : {1, 4}) {
        CWinFontReader reader("IPAGothic", 16, 4, 0, 0, false);
        reader.Threads = threads;
        CFontData font;
        Pg.CancelAtVisibleStep(100);
        EXPECT_THROW(reader.Read(font, {}), int) << threads;
        Pg.ClearCancel();
        codes.emplace_back();
        for (const auto& g : font.GetGlyphs()) codes.back().push_back(g->Code);
    }
    ASSERT_GT(codes[0].size(), 1000u);
    EXPECT_EQ(codes[0], codes[1]);
    EXPECT_LT(codes[0].back(), 0xC800);  // the 100th of 128 visible steps
}
