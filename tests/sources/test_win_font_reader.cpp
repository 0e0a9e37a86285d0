// Installed fonts through FreeType: parameter checks, glyph counts against the
// face's own character map, the size convention and bitmap fonts. The rendered
// pixels are compared with reference files in the command-line tests.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <unistd.h>
#include <memory>
#include <string>

#include "core/bit_stream.h"
#include "core/font_data.h"
#include "core/font_filter.h"
#include "core/general_exception.h"
#include "core/headless_pg_ctrl.h"
#include "sources/font_face.h"
#include "sources/letterer.h"
#include "sources/win_font_reader.h"

namespace {

std::string CheckMessage(CWinFontReader reader) {
    try {
        reader.CheckParameters();
    } catch (const CGeneralException& e) {
        return e.Message;
    }
    return "";
}

class WinFontReader : public testing::Test {
protected:
    void SetUp() override { g_pPgCtrl = &Pg; }
    void TearDown() override { g_pPgCtrl = nullptr; }

    std::unique_ptr<CFontData> Convert(const std::string& face, int size, int bpp, int widthType = 0,
                                       int fixed = 0, bool softAA = false, const CFontFilter& filter = {}) {
        CWinFontReader reader(face, size, bpp, widthType, fixed, softAA);
        reader.CheckParameters();
        auto font = std::make_unique<CFontData>();
        reader.Read(*font, filter);
        font->PrepareForOutput();
        return font;
    }

    // Codes U+0000..U+FFFE the face maps; with positive hinted advance only
    // when onlyAdvancing (the 2-level path drops the others).
    static int MappedCodes(const std::string& face, int size, bool onlyAdvancing) {
        FontLocation loc;
        EXPECT_TRUE(ResolveFontName(face, loc));
        CFontFace f(loc, size);
        int n = 0;
        for (uint32_t c = 0; c < 0xFFFF; ++c) {
            FT_UInt gi = FT_Get_Char_Index(f.Face(), c);
            if (!gi) continue;
            if (onlyAdvancing) {
                FT_Load_Glyph(f.Face(), gi, FT_LOAD_TARGET_MONO);
                if (((f.Face()->glyph->advance.x + 32) >> 6) <= 0) continue;
            }
            ++n;
        }
        return n;
    }

    static void ExpectLevelsWithin(const CFontData& font, int bpp) {
        const int max = (1 << bpp) - 1;
        bool full = false, between = false;
        for (const auto& g : font.GetGlyphs()) {
            ASSERT_EQ(g->Bpp, bpp);
            ASSERT_EQ(g->Pixels.size(), g->PixelBytes());
            for (std::size_t i = 0; i < g->PixelBytes() * 8 / bpp; ++i) {
                const int v = static_cast<int>(PeekBits(g->Pixels.data(), i * bpp, bpp));
                ASSERT_LE(v, max);
                full = full || v == max;
                between = between || (v > 0 && v < max);
            }
        }
        EXPECT_TRUE(full);
        EXPECT_EQ(between, bpp > 1);
    }

    CHeadlessPgCtrl Pg;
};

// An 8-pixel BDF bitmap font of two characters, cells up to maxWidth wide.
std::filesystem::path WriteBdf(const std::string& name, int maxWidth, const std::string& chars) {
    const auto path = std::filesystem::temp_directory_path() / ("gw_" + name + std::to_string(getpid()) + ".bdf");
    std::ofstream(path) << "STARTFONT 2.1\nFONT -test-" << name << "-medium-r-normal--8-80-75-75-c-60-iso10646-1\n"
                        << "SIZE 8 75 75\nFONTBOUNDINGBOX " << maxWidth << " 8 0 -1\nSTARTPROPERTIES 4\n"
                        << "FONT_ASCENT 7\nFONT_DESCENT 1\nCHARSET_REGISTRY \"ISO10646\"\nCHARSET_ENCODING \"1\"\n"
                        << "ENDPROPERTIES\nCHARS 2\n" << chars << "ENDFONT\n";
    return path;
}
const std::string LetterA = "STARTCHAR A\nENCODING 65\nSWIDTH 750 0\nDWIDTH 6 0\nBBX 6 8 0 -1\nBITMAP\n"
                            "00\n30\n48\n84\nFC\n84\n84\n00\nENDCHAR\n";

}  // namespace

TEST_F(WinFontReader, ChecksInOrder) {
    const struct {
        std::string Face;
        int Size, Bpp, WidthType, Fixed;
        bool Soft;
        std::string Message;
    } cases[] = {
        {"", 0, 9, 9, 0, false, "Internal Error:\n Font is not selected."},
        {"DejaVu Sans", 0, 9, 9, 0, false, "Parameter Error:\n Invalid Font Size(0)"},
        {"DejaVu Sans", 12, 6, 9, 0, false, "Internal Error:\n Bpp(6) out of range."},
        {"DejaVu Sans", 12, 0, 0, 0, false, "Internal Error:\n Bpp(0) out of range."},
        {"DejaVu Sans", 12, 1, 4, 0, false, "Internal Error:\n Invalid GlyphWidth Type(4)"},
        {"DejaVu Sans", 12, 1, -1, 0, false, "Internal Error:\n Invalid GlyphWidth Type(-1)"},
        {"No Such Face", 12, 1, 3, 0, false, "Parameter Error:\n Invalid fixed width(0)"},
        {"No Such Face", 12, 1, 3, 5, false, "Parameter Error:\n Font(No Such Face) is not installed."},
        {"@/nonexistent/x.ttf", 12, 1, 0, 0, false, "Parameter Error:\n Font(@/nonexistent/x.ttf) is not installed."},
        {"dejavu sans", -12, 5, 3, 1, false, ""},
        {"DejaVu Sans", 1, 1, 0, 0, false, ""},
        {"/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", 12, 1, 0, 0, false, ""}};
    for (const auto& c : cases)
        EXPECT_EQ(CheckMessage({c.Face, c.Size, c.Bpp, c.WidthType, c.Fixed, c.Soft}), c.Message) << c.Face;
}

TEST_F(WinFontReader, SizeConventionFollowsWindowsMetrics) {
    FontLocation loc;
    ASSERT_TRUE(ResolveFontName("DejaVu Sans", loc));
    // DejaVu Sans: usWinAscent 1901, usWinDescent 483, 2048 units per em.
    CFontFace cell(loc, 24);
    EXPECT_EQ(cell.Height(), 24);
    EXPECT_EQ(cell.Ascent, 19);
    CFontFace em(loc, -24);
    EXPECT_EQ(em.Ascent, 22);
    EXPECT_EQ(em.Descent, 6);
    // Cap height 0.729 em: about 15 rows in a 24-pixel cell, 17-18 in a 24-pixel em.
    auto a = Convert("DejaVu Sans", 24, 2, 0, 0, false, {false, {{'H', true}}});
    auto b = Convert("DejaVu Sans", -24, 2, 0, 0, false, {false, {{'H', true}}});
    EXPECT_NEAR(a->FindGlyph('H')->Ascent, 15, 1);
    EXPECT_NEAR(b->FindGlyph('H')->Ascent, 17.5, 1);
}

TEST_F(WinFontReader, EveryMappedCodeBecomesAGlyph) {
    for (const char* face : {"DejaVu Sans", "@IPAGothic"}) {
        auto font = Convert(face, 16, 2, 0, 0, true);
        EXPECT_EQ(static_cast<int>(font->GlyphCount()), MappedCodes(face + (face[0] == '@'), 16, false)) << face;
        EXPECT_EQ(font->Vertical(), face[0] == '@');
        ExpectLevelsWithin(*font, 2);
    }
    auto mono = Convert("DejaVu Sans", 16, 1);
    // Without a positive advance there is no glyph, unless ink in the top row
    // overhangs the empty cell (as on the screen).
    const int advancing = MappedCodes("DejaVu Sans", 16, true);
    EXPECT_GE(static_cast<int>(mono->GlyphCount()), advancing);
    EXPECT_LE(static_cast<int>(mono->GlyphCount()), advancing + 8);
    ExpectLevelsWithin(*mono, 1);
    EXPECT_EQ(Pg.ProgressRange(), 0x10000);
    EXPECT_EQ(Pg.ProgressPos(), 0xFFFF);
}

TEST_F(WinFontReader, AbsurdSizesFailCleanly) {
    const CFontFilter onlyA{false, {{'A', true}}};
    EXPECT_THROW(Convert("DejaVu Sans", 100000, 1, 0, 0, false, onlyA), CGeneralException);
}

TEST_F(WinFontReader, BitmapFontGoesThroughTheTwoLevelPath) {
    const auto path = WriteBdf("tiny", 6,
                               "STARTCHAR space\nENCODING 32\nSWIDTH 750 0\nDWIDTH 6 0\nBBX 6 8 0 -1\nBITMAP\n"
                               "00\n00\n00\n00\n00\n00\n00\n00\nENDCHAR\n" + LetterA);
    FontLocation loc;
    ASSERT_TRUE(ResolveFontName(path.string(), loc));
    CFontFace face(loc, 8);
    EXPECT_FALSE(face.Scalable());
    EXPECT_EQ(face.Ascent, 7);
    EXPECT_EQ(face.Height(), 8);

    auto font = Convert(path.string(), 8, 1, 1);
    std::filesystem::remove(path);
    ASSERT_EQ(font->GlyphCount(), 2u);
    const CGlyph* a = font->FindGlyph('A');
    EXPECT_EQ(a->Ink.Width(), 6);
    EXPECT_EQ(a->Ink.Height(), 6);
    EXPECT_EQ(a->Ascent, 6);
    // Row "30": two ink pixels in the middle of the top row.
    EXPECT_EQ(a->Bpp, 1);
    EXPECT_EQ(PeekWideBits(a->Pixels.data(), 0, 6), 0b001100u);
    EXPECT_EQ(font->FindGlyph(' ')->LeftSpace + font->FindGlyph(' ')->RightSpace, 6);
}

TEST_F(WinFontReader, SoftAntiAliasingOfAFlatRendering) {
    // IPA Gothic draws U+203E at 8 pixels per em as 8 x 0 pixels with its top 7
    // rows up: halving counts an extra row for it, which must not be written.
    const CFontFilter onlyOverline{false, {{0x203E, true}}};
    auto font = Convert("IPAGothic", -4, 4, 0, 0, true, onlyOverline);
    ASSERT_EQ(font->GlyphCount(), 1u);
    EXPECT_TRUE(font->FindGlyph(0x203E)->Pixels.empty());
}

TEST_F(WinFontReader, TwoLevelsKeepACharacterAsWideAsTheScratchCell) {
    // Cells 12 wide and 8 high: 'W' fills the top rows of the 12 x 12 scratch
    // bitmap, whose rows below the cell are blank from their first column.
    const auto path = WriteBdf("wide", 12, LetterA +
                               "STARTCHAR W\nENCODING 87\nSWIDTH 1500 0\nDWIDTH 12 0\nBBX 12 8 0 -1\nBITMAP\n"
                               "0000\n8010\n8010\n8410\n4A20\n5120\n2040\n0000\nENDCHAR\n");
    auto font = Convert(path.string(), 8, 1, 2);
    std::filesystem::remove(path);
    ASSERT_NE(font->FindGlyph('A'), nullptr);
    const CGlyph* w = font->FindGlyph('W');
    ASSERT_NE(w, nullptr);
    EXPECT_EQ(w->Ink.Width(), 12);
    EXPECT_EQ(w->LeftSpace + w->Ink.Width() + w->RightSpace, 12);
}
