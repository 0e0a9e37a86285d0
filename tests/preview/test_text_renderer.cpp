#include <gtest/gtest.h>

#include "core/codepage.h"
#include "core/general_exception.h"
#include "core/utf8.h"
#include "synthetic_font.h"
#include "zgly/font_block_set.h"
#include "preview/text_renderer.h"

namespace {

std::unique_ptr<CFontData> MakeFont(bool vertical, int bpp) {
    SyntheticFontShape fontShape;
    fontShape.Codes = CodeRange(0x20, 95);
    for (uint16_t c : CodeRange(0x3041, 20)) fontShape.Codes.push_back(c);
    fontShape.Codes.push_back(0xE9);  // no Shift_JIS form
    fontShape.Vertical = vertical;
    fontShape.Bpp = bpp;
    fontShape.Origin = vertical ? 9 : 13;
    auto font = MakeSyntheticFont(fontShape);
    font->AlternateChar.Set(u'?');
    font->LineHeight.Set(vertical ? 14 : 19);
    font->PrepareForOutput();
    return font;
}

CRgbImage Draw(const std::filesystem::path& path, std::string_view text, bool sheet = false) {
    CFontBlockSet set;
    LoadZglyForPreview(path, set);
    const CPreviewOptions options{1};
    return sheet ? CTextRenderer(set).DrawSheet(options) : CTextRenderer(set).DrawText(text, options);
}

// What a game shows: every glyph's ink (from the source font, before writing)
// at its pen and spaces, pens advancing by the glyph's advance, lines or
// columns a line feed apart, black on white.
CRgbImage Expected(const CRgbImage& like, const CFontData& font, std::u16string_view text, int encoding) {
    CRgbImage out = like;
    std::fill(out.Rgb.begin(), out.Rgb.end(), 0xFF);
    const int maxLevel = (1 << font.Bpp.Value) - 1, lf = font.LineHeight.Value, codePage = EncodingCodePage(encoding);
    int line = 0, pen = 0;
    for (char16_t c : text) {
        if (c == u'\n') {
            ++line, pen = 0;
            continue;
        }
        const CGlyph* g = font.FindGlyph(c);
        if (!g || (codePage >= 0 && UnicodeToCodePage(codePage, c) == NoChar)) g = font.FindGlyph(u'?');
        const int w = g->Ink.Width(), h = g->Ink.Height();
        const int x0 = font.Vertical() ? -line * lf + g->RightExtent - w : pen + g->LeftSpace;
        const int y0 = font.Vertical() ? pen + g->TopSpace : line * lf - g->Ascent;
        pen += font.Vertical() ? g->TopSpace + h + g->BottomSpace : g->LeftSpace + w + g->RightSpace;
        for (int i = 0; i < w * h; ++i) {
            int level = 0;
            for (int k = i * g->Bpp; k < (i + 1) * g->Bpp; ++k) level = level << 1 | ((g->Pixels[k / 8] >> (7 - k % 8)) & 1);
            const int px = like.OriginX + x0 + i % w, py = like.OriginY + y0 + i / w;
            if (!level) continue;
            if (px < 0 || py < 0 || px >= out.Width || py >= out.Height) {
                ADD_FAILURE() << "ink outside the picture";
                continue;
            }
            for (int ch = 0; ch < 3; ++ch) {
                uint8_t& p = out.Rgb[(py * out.Width + px) * 3 + ch];
                p = static_cast<uint8_t>(p - p * level / maxLevel);
            }
        }
    }
    return out;
}

const char* const Sample = "Hi, AbQ?_ jgy\n\n|W\xE3\x81\x82\xE3\x81\x84\xE4\xB8\x80 \xC3\xA9~";  // U+4E00 is not in the font

}  // namespace

// The stored rotation never shows, neither in text nor in the sheet; every depth draws its levels.
TEST(TextRenderer, DrawsEveryRotationOrientationDepthAndEncodingLikeTheSourceFont) {
    CScratchDir dir;
    const std::u16string text = Utf8ToUtf16(Sample);
    for (bool vertical : {false, true})
        for (int bpp : {1, 2, 8}) {
            auto font = MakeFont(vertical, bpp);
            CRgbImage first, firstSheet;
            for (int rotation = 0; rotation < (bpp == 2 ? 4 : 1); ++rotation) {
                const std::string what = FormatString("vertical %d bpp %d rotation %d", vertical, bpp, rotation);
                WriteSyntheticZgly(*font, dir / "r.zgly", EncodingUtf16, rotation);
                const CRgbImage got = Draw(dir / "r.zgly", Sample), sheet = Draw(dir / "r.zgly", "", true);
                if (rotation == 0) first = got, firstSheet = sheet;
                EXPECT_EQ(got.Rgb, Expected(got, *font, text, EncodingUtf16).Rgb) << what;
                EXPECT_EQ(got.Rgb, first.Rgb) << what;
                EXPECT_EQ(got.OriginX, first.OriginX) << what;
                EXPECT_EQ(sheet.Rgb, firstSheet.Rgb) << what;
            }
        }
    // Codes are looked up through the file's encoding: "é" has no Shift_JIS form and
    // the kana none in 1252, so the files lack them and the alternate glyph stands in.
    auto font = MakeFont(false, 2);
    for (int encoding : {EncodingShiftJis, EncodingCp1252}) {
        WriteSyntheticZgly(*font, dir / "e.zgly", encoding, 0);
        const CRgbImage got = Draw(dir / "e.zgly", Sample);
        EXPECT_EQ(got.Rgb, Expected(got, *font, text, encoding).Rgb) << encoding;
    }
}

TEST(TextRenderer, ZoomColoursAndGuides) {
    CScratchDir dir;
    WriteSyntheticZgly(*MakeFont(false, 2), dir / "f.zgly", EncodingUtf16, 0);
    CFontBlockSet set;
    LoadZglyForPreview(dir / "f.zgly", set);
    CPreviewOptions options{1, false, 0x102030, 0xF0E0D0};
    const CRgbImage one = CTextRenderer(set).DrawText("AQ\ng", options);
    options.Zoom = 3;
    const CRgbImage three = CTextRenderer(set).DrawText("AQ\ng", options);
    ASSERT_EQ(std::vector<int>({three.Width, three.Height, three.OriginX}),
              std::vector<int>({one.Width * 3, one.Height * 3, one.OriginX * 3}));
    for (int y = 0; y < three.Height; ++y)
        for (int x = 0; x < three.Width; ++x) ASSERT_EQ(three.Pixel(x, y), one.Pixel(x / 3, y / 3)) << x << "," << y;
    EXPECT_EQ(one.Pixel(0, 0), 0xF0E0D0u);
    // Full ink covers the guides; the baselines run through the origin row and a line feed below it.
    options = CPreviewOptions{1, true, 0, 0xFFFFFF};
    const CRgbImage guides = CTextRenderer(set).DrawText("AQ\ng", options);
    ASSERT_EQ(guides.Rgb.size(), one.Rgb.size());
    for (int y = 0; y < one.Height; ++y)
        for (int x = 0; x < one.Width; ++x)
            ASSERT_TRUE(one.Pixel(x, y) != 0x102030 || guides.Pixel(x, y) == 0) << x << "," << y;
    EXPECT_NE(guides.Pixel(guides.OriginX + 1, guides.OriginY), 0xFFFFFFu);
    EXPECT_NE(guides.Pixel(guides.OriginX, guides.OriginY + 19), 0xFFFFFFu);
}
