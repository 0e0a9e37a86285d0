#include <gtest/gtest.h>

#include "core/codepage.h"
#include "core/font_filter.h"
#include "core/headless_pg_ctrl.h"
#include "glyph_compare.h"
#include "synthetic_font.h"
#include "zgly/zarnic_font_reader.h"
#include "zgly_test_util.h"

using namespace zgly;

TEST(ZglyReader, RoundTripsEveryEncodingInEveryRotation) {
    CScratchDir dir;
    for (int encoding : {EncodingUtf8, EncodingUtf16, EncodingShiftJis, EncodingCp1252})
        for (bool vertical : {false, true})
            for (int rotation = 0; rotation < 4; ++rotation) {
                SyntheticFontShape fontShape;
                fontShape.Codes = CodeRange(0x20, 95);  // one direct block
                if (encoding != EncodingShiftJis)
                    for (uint16_t c : CodeRange(0xA0, 50)) fontShape.Codes.push_back(c);
                if (encoding != EncodingCp1252) {
                    for (uint16_t c : CodeRange(0x3041, 30)) fontShape.Codes.push_back(c);
                    fontShape.Codes.push_back(0x4E00);
                }
                fontShape.Vertical = vertical;
                fontShape.Bpp = 1 + rotation * 2;
                fontShape.Origin = vertical ? 9 : 13;
                auto font = MakeSyntheticFont(fontShape);
                font->AlternateChar.Set(u'?');
                font->LineHeight.Set(21);
                font->PrepareForOutput();
                const std::string what = FormatString("enc %d vertical %d rotation %d", encoding, vertical, rotation);
                WriteSyntheticZgly(*font, dir / "rt.zgly", encoding, rotation);
                auto back = ReadZgly(dir / "rt.zgly");
                ExpectSameGlyphs(*font, *back, what);
                EXPECT_EQ(back->AlternateChar.Value, u'?') << what;
                EXPECT_EQ(back->LineHeight.Value, 21) << what;
                EXPECT_EQ(back->Bpp.Value, fontShape.Bpp) << what;
                if (vertical) continue;
                // Horizontal fonts come back exactly: writing again gives the same file.
                back->PrepareForOutput();
                WriteSyntheticZgly(*back, dir / "again.zgly", encoding, rotation);
                EXPECT_EQ(FileBytes(dir / "again.zgly"), FileBytes(dir / "rt.zgly")) << what;
            }
}

TEST(ZglyReader, WhatTheFileLacksOrCannotSay) {
    CScratchDir dir;
    CHeadlessPgCtrl pg;
    // 2 x 2 cells at 1 bpp need 1 byte; this file pads each to 4. No CWDH: FINF
    // defaults (width 4 > cell width 2) are clamped with a warning.
    auto cglp = Cglp(4, 2);
    cglp[8] = 0x80;   // glyph 0: top-left pixel
    cglp[12] = 0x10;  // glyph 1: bottom-right pixel
    PutFile(dir / "p.zgly", File({Block(TagFINF, Finf()), Block(TagCGLP, cglp), Block(TagCMAP, Cmap(0x41, 0x42, MethodDirect, {0}))}));
    auto padded = ReadZgly(dir / "p.zgly", &pg);
    ASSERT_EQ(padded->GlyphCount(), 2u);
    const CGlyph* b = padded->FindGlyph(0x42);
    EXPECT_EQ(std::vector<int>({b->Ink.X0, b->Ink.Y0, padded->FindGlyph(0x41)->Ink.X0, b->LeftSpace, b->RightSpace}),
              std::vector<int>({1, 1, 0, 0, 6 - 2}));  // char width 6 minus the clamped width
    EXPECT_EQ(pg.Warnings, (std::vector<std::string>{
                               "Glyph width(=4) of glyph 0 is wider than the cell(=2); the cell width is used.",
                               "Glyph width(=4) of glyph 1 is wider than the cell(=2); the cell width is used."}));

    PutFile(dir / "lead.zgly", File({Block(TagFINF, Finf(EncodingShiftJis)), Block(TagCGLP, Cglp(1, 1)),
                                     Block(TagCMAP, Cmap(0, 0xFFFF, MethodScan, {1, 0x82, 0}))}));
    pg.Warnings.clear();
    EXPECT_EQ(ReadZgly(dir / "lead.zgly", &pg)->GlyphCount(), 0u);
    EXPECT_EQ(pg.Warnings, std::vector<std::string>{" Can't represent input character(0x0082) in the Unicode character set."});
    // The alternate character is taken even when the filter leaves it out.
    SyntheticFontShape fontShape;
    fontShape.Codes = CodeRange(0x41, 4);
    auto font = MakeSyntheticFont(fontShape);
    font->AlternateChar.Set(u'C');
    WriteSyntheticZgly(*font, dir / "a.zgly");
    pg.Statuses.clear();
    CFontData back;
    {
        CPgCtrlScope scope(pg);
        CZarnicFontReader(dir / "a.zgly").Read(back, CFontFilter{false, {{u'A', true}}});
    }
    EXPECT_EQ(back.GlyphCount(), 1u);
    EXPECT_EQ(back.AlternateChar.Value, u'C');
    EXPECT_EQ(pg.Statuses.front(), " Reading ZARNIC Font...");
}
