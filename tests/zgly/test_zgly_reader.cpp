#include <gtest/gtest.h>

#include "core/codepage.h"
#include "core/font_filter.h"
#include "core/headless_pg_ctrl.h"
#include "glyph_compare.h"
#include "synthetic_font.h"
#include "zgly/zarnic_font_reader.h"
#include "zgly_test_util.h"

using namespace zgly;

namespace {

std::vector<uint16_t> CodesFor(int encoding) {
    std::vector<uint16_t> codes = CodeRange(0x20, 95);  // one direct block
    if (encoding != EncodingShiftJis) {
        auto latin = CodeRange(0xA0, 50);
        codes.insert(codes.end(), latin.begin(), latin.end());
    }
    if (encoding != EncodingCp1252) {
        auto kana = CodeRange(0x3041, 30);
        codes.insert(codes.end(), kana.begin(), kana.end());
        codes.push_back(0x4E00);
    }
    return codes;
}

void RoundTrip(int encoding) {
    CScratchDir dir;
    for (bool vertical : {false, true})
        for (int rotation = 0; rotation < 4; ++rotation) {
            SyntheticFontSpec fontSpec;
            fontSpec.Codes = CodesFor(encoding);
            fontSpec.Vertical = vertical;
            fontSpec.Bpp = 1 + rotation * 2;
            fontSpec.Origin = vertical ? 9 : 13;
            auto font = MakeSyntheticFont(fontSpec);
            font->AlternateChar.Set(u'?');
            font->LineHeight.Set(21);
            font->PrepareForOutput();
            std::string what = "enc " + std::to_string(encoding) + " vertical " + std::to_string(vertical) +
                               " rotation " + std::to_string(rotation);
            auto path = dir / "rt.zgly";
            WriteSyntheticZgly(*font, path, encoding, rotation);
            auto back = ReadZgly(path);
            ExpectSameGlyphs(*font, *back, what);
            EXPECT_EQ(back->AlternateChar.Value, u'?') << what;
            EXPECT_EQ(back->LineHeight.Value, 21) << what;
            EXPECT_EQ(back->Bpp.Value, fontSpec.Bpp) << what;
            EXPECT_EQ(back->Vertical(), vertical) << what;
            if (!vertical) {
                // Horizontal fonts come back exactly: writing again gives the same file.
                auto first = FileBytes(path);
                back->PrepareForOutput();
                WriteSyntheticZgly(*back, dir / "again.zgly", encoding, rotation);
                EXPECT_EQ(FileBytes(dir / "again.zgly"), first) << what;
            }
        }
}

}  // namespace

TEST(ZglyReader, RoundTripsEveryEncodingInEveryRotation) {
    for (int encoding : {EncodingUtf8, EncodingUtf16, EncodingShiftJis, EncodingCp1252}) RoundTrip(encoding);
}

TEST(ZglyReader, ReencodingLeavesOutWhatTheCodePageLacks) {
    CScratchDir dir;
    SyntheticFontSpec fontSpec;
    fontSpec.Codes = {0x41, 0x0101, 0x3042};
    auto font = MakeSyntheticFont(fontSpec);
    font->PrepareForOutput();
    CHeadlessPgCtrl pg;
    WriteSyntheticZgly(*font, dir / "sjis.zgly", EncodingShiftJis, 0, &pg);
    ASSERT_EQ(pg.Warnings.size(), 1u);
    EXPECT_EQ(pg.Warnings[0], "Can't represent output character('\xC4\x81': U+0101) in the specified character set.");
    auto back = ReadZgly(dir / "sjis.zgly");
    EXPECT_EQ(back->GlyphCount(), 2u);
    EXPECT_NE(back->FindGlyph(0x3042), nullptr);
    pg.Warnings.clear();
    WriteSyntheticZgly(*font, dir / "1252.zgly", EncodingCp1252, 0, &pg);
    EXPECT_EQ(pg.Warnings.size(), 2u);
    EXPECT_EQ(ReadZgly(dir / "1252.zgly")->GlyphCount(), 1u);
}

TEST(ZglyReader, UsesStoredCellSizeAndDefaultWidths) {
    CScratchDir dir;
    // 2 x 2 cells at 1 bpp need 1 byte; this file pads each to 4. No CWDH: FINF
    // defaults (width 4 > cell width 2) are clamped with a warning.
    auto cglp = Cglp(4, 2);
    cglp[8] = 0x80;   // glyph 0: top-left pixel
    cglp[12] = 0x10;  // glyph 1: bottom-right pixel
    PutFile(dir / "p.zgly", File({Block(TagFINF, Finf()), Block(TagCGLP, cglp),
                                  Block(TagCMAP, Cmap(0x41, 0x42, MethodDirect, {0}))}));
    CHeadlessPgCtrl pg;
    auto font = ReadZgly(dir / "p.zgly", &pg);
    ASSERT_EQ(font->GlyphCount(), 2u);
    const CGlyph* b = font->FindGlyph(0x42);
    EXPECT_EQ(b->Ink.X0, 1);
    EXPECT_EQ(b->Ink.Y0, 1);
    EXPECT_EQ(font->FindGlyph(0x41)->Ink.X0, 0);
    EXPECT_EQ(b->LeftSpace, 0);
    EXPECT_EQ(b->RightSpace, 6 - 2);  // char width 6 minus the clamped width
    EXPECT_EQ(font->DefaultWidth.Value.CharWidth, 6);
    EXPECT_EQ(pg.Warnings.size(), 2u);
    EXPECT_NE(pg.Warnings[0].find("wider than the cell"), std::string::npos);
}

TEST(ZglyReader, BadGlyphIndexAndUndecodableCodes) {
    CScratchDir dir;
    PutFile(dir / "far.zgly", File({Block(TagFINF, Finf()), Block(TagCGLP, Cglp(1, 2)),
                                    Block(TagCMAP, Cmap(0x41, 0x43, MethodTable, {0, 0xFFFF, 5}))}));
    EXPECT_EQ(MessageOf([&] { ReadZgly(dir / "far.zgly"); }),
              "ZGLY File Error:\n Glyph index(=5) of code 0x0043 is beyond the glyph cells(=2)");

    PutFile(dir / "sjis.zgly", File({Block(TagFINF, Finf(EncodingShiftJis)), Block(TagCGLP, Cglp(1, 1)),
                                     Block(TagCMAP, Cmap(0, 0xFFFF, MethodScan, {1, 0x82, 0}))}));
    CHeadlessPgCtrl pg;
    auto font = ReadZgly(dir / "sjis.zgly", &pg);
    EXPECT_EQ(font->GlyphCount(), 0u);
    EXPECT_EQ(pg.Warnings, std::vector<std::string>{" Can't represent input character(0x0082) in the Unicode character set."});
}

TEST(ZglyReader, AlternateCharIsTakenEvenWhenFiltered) {
    CScratchDir dir;
    SyntheticFontSpec fontSpec;
    fontSpec.Codes = CodeRange(0x41, 4);
    auto font = MakeSyntheticFont(fontSpec);
    font->AlternateChar.Set(u'C');
    WriteSyntheticZgly(*font, dir / "a.zgly");
    CHeadlessPgCtrl pg;
    g_pPgCtrl = &pg;
    CFontFilter filter;
    filter.PassAll = false;
    filter.Letters[u'A'] = true;
    CFontData back;
    CZarnicFontReader(dir / "a.zgly").Read(back, filter);
    g_pPgCtrl = nullptr;
    EXPECT_EQ(back.GlyphCount(), 1u);
    EXPECT_EQ(back.AlternateChar.Value, u'C');
    EXPECT_EQ(pg.Statuses.front(), " Reading ZARNIC Font...");
}
