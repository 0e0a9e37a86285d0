#include <gtest/gtest.h>

#include "core/codepage.h"
#include "core/general_exception.h"
#include "synthetic_font.h"
#include "zgly/font_block_set.h"
#include "zgly/text_renderer.h"

namespace {

std::unique_ptr<CFontData> MakeFont(bool vertical, int bpp) {
    SyntheticFontSpec fontSpec;
    fontSpec.Codes = CodeRange(0x20, 95);
    for (uint16_t c : CodeRange(0x3041, 20)) fontSpec.Codes.push_back(c);
    fontSpec.Codes.push_back(0xE9);  // no Shift_JIS form
    fontSpec.Vertical = vertical;
    fontSpec.Bpp = bpp;
    fontSpec.Origin = vertical ? 9 : 13;
    auto font = MakeSyntheticFont(fontSpec);
    font->AlternateChar.Set(u'?');
    font->LineHeight.Set(vertical ? 14 : 19);
    font->PrepareForOutput();
    return font;
}

CPreviewOptions Plain() {
    CPreviewOptions options;
    options.Zoom = 1;
    return options;
}

CRgbImage Draw(const std::filesystem::path& path, std::string_view text, const CPreviewOptions& options = Plain()) {
    CFontBlockSet set;
    LoadZglyForPreview(path, set);
    return CTextRenderer(set).DrawText(text, options);
}

// What a game shows: every glyph's ink (from the source font, before
// writing) at its pen and spaces, pens advancing by the glyph's advance,
// lines or columns a line feed apart, black on white at zoom 1.
CRgbImage Expected(const CRgbImage& like, const CFontData& font, std::u16string_view text, int encoding) {
    CRgbImage out = like;
    std::fill(out.Rgb.begin(), out.Rgb.end(), 0xFF);
    const int maxLevel = (1 << font.Bpp.Value) - 1, lf = font.LineHeight.Value;
    const bool vertical = font.Vertical();
    const int codePage = EncodingCodePage(encoding);
    int line = 0, pen = 0;
    for (char16_t c : text) {
        if (c == u'\n') {
            ++line;
            pen = 0;
            continue;
        }
        const CGlyph* g = font.FindGlyph(c);
        if (!g || (codePage >= 0 && UnicodeToCodePage(codePage, c) == NoChar)) g = font.FindGlyph(u'?');
        int x0, y0;
        if (vertical) {
            x0 = -line * lf + g->RightExtent - g->Ink.Width();
            y0 = pen + g->TopSpace;
            pen += g->TopSpace + g->Ink.Height() + g->BottomSpace;
        } else {
            x0 = pen + g->LeftSpace;
            y0 = line * lf - g->Ascent;
            pen += g->LeftSpace + g->Ink.Width() + g->RightSpace;
        }
        const int bitsPerPixel = g->Bpp;
        for (int y = 0; y < g->Ink.Height(); ++y)
            for (int x = 0; x < g->Ink.Width(); ++x) {
                const int bit = (y * g->Ink.Width() + x) * bitsPerPixel;
                int level = 0;
                for (int k = 0; k < bitsPerPixel; ++k)
                    level = (level << 1) | ((g->Pixels[(bit + k) / 8] >> (7 - (bit + k) % 8)) & 1);
                if (!level) continue;
                const int px = like.OriginX + x0 + x, py = like.OriginY + y0 + y;
                EXPECT_TRUE(px >= 0 && py >= 0 && px < out.Width && py < out.Height) << "ink outside the picture";
                if (px < 0 || py < 0 || px >= out.Width || py >= out.Height) continue;
                uint8_t* p = out.Rgb.data() + (py * out.Width + px) * 3;
                for (int ch = 0; ch < 3; ++ch) p[ch] = static_cast<uint8_t>(p[ch] - p[ch] * level / maxLevel);
            }
    }
    return out;
}

int CountDiffering(const CRgbImage& a, const CRgbImage& b) {
    if (a.Width != b.Width || a.Height != b.Height) return -1;
    int n = 0;
    for (std::size_t i = 0; i < a.Rgb.size(); i += 3)
        n += a.Rgb[i] != b.Rgb[i] || a.Rgb[i + 1] != b.Rgb[i + 1] || a.Rgb[i + 2] != b.Rgb[i + 2];
    return n;
}

const char* const Sample = "Hi, AbQ?_ jgy\n\n|W\xE3\x81\x82\xE3\x81\x84\xE4\xB8\x80 \xC3\xA9~";  // U+4E00 is not in the font

}  // namespace

TEST(TextRenderer, DrawsEveryRotationAndOrientationLikeTheSourceFont) {
    CScratchDir dir;
    const std::u16string text = Utf8ToUtf16(Sample);
    for (bool vertical : {false, true}) {
        auto font = MakeFont(vertical, 2);
        CRgbImage first;
        for (int rotation = 0; rotation < 4; ++rotation) {
            const std::string what = std::string(vertical ? "vertical" : "horizontal") + " rotation " +
                                     std::to_string(rotation);
            auto path = dir / ("r" + std::to_string(rotation) + ".zgly");
            WriteSyntheticZgly(*font, path, EncodingUtf16, rotation);
            CRgbImage got = Draw(path, Sample);
            EXPECT_EQ(CountDiffering(got, Expected(got, *font, text, EncodingUtf16)), 0) << what;
            // The stored rotation never shows: same picture, same size.
            if (rotation == 0) first = got;
            EXPECT_EQ(CountDiffering(got, first), 0) << what;
            EXPECT_EQ(got.OriginX, first.OriginX) << what;
        }
    }
    // Other depths draw their grey levels over the whole range.
    for (int bpp : {1, 8}) {
        auto font = MakeFont(false, bpp);
        WriteSyntheticZgly(*font, dir / "d.zgly", EncodingUtf8, 0);
        CRgbImage got = Draw(dir / "d.zgly", Sample);
        EXPECT_EQ(CountDiffering(got, Expected(got, *font, text, EncodingUtf8)), 0) << "bpp " << bpp;
    }
}

TEST(TextRenderer, LooksCodesUpThroughTheFileEncoding) {
    CScratchDir dir;
    auto font = MakeFont(false, 2);
    WriteSyntheticZgly(*font, dir / "sjis.zgly", EncodingShiftJis, 0);
    CRgbImage got = Draw(dir / "sjis.zgly", Sample);
    // "é" has no Shift_JIS form, so the file lacks it and the alternate glyph stands in.
    EXPECT_EQ(CountDiffering(got, Expected(got, *font, Utf8ToUtf16(Sample), EncodingShiftJis)), 0);
    EXPECT_NE(CountDiffering(got, Draw(dir / "sjis.zgly", "Hi, AbQ?_ jgy\n\n|W\xE3\x81\x82\xE3\x81\x84??~")), 0);
    EXPECT_EQ(CountDiffering(got, Draw(dir / "sjis.zgly", "Hi, AbQ?_ jgy\n\n|W\xE3\x81\x82\xE3\x81\x84? ?~")), 0);

    WriteSyntheticZgly(*font, dir / "1252.zgly", EncodingCp1252, 0);
    CRgbImage latin = Draw(dir / "1252.zgly", "Q\xC3\xA9\xE3\x81\x82");  // kana: not in 1252
    EXPECT_EQ(CountDiffering(latin, Expected(latin, *font, u"Q\u00E9\u3042", EncodingCp1252)), 0);
}

TEST(TextRenderer, ZoomColoursAndGuides) {
    CScratchDir dir;
    auto font = MakeFont(false, 2);
    WriteSyntheticZgly(*font, dir / "f.zgly", EncodingUtf16, 0);
    CRgbImage one = Draw(dir / "f.zgly", "AQ\ng");
    CPreviewOptions options = Plain();
    options.Zoom = 3;
    options.Ink = 0x102030;
    options.Paper = 0xF0E0D0;
    CRgbImage three = Draw(dir / "f.zgly", "AQ\ng", options);
    ASSERT_EQ(three.Width, one.Width * 3);
    ASSERT_EQ(three.Height, one.Height * 3);
    EXPECT_EQ(three.OriginX, one.OriginX * 3);
    for (int y = 0; y < three.Height; ++y)
        for (int x = 0; x < three.Width; ++x) {
            const uint32_t was = one.Pixel(x / 3, y / 3);
            if (was == 0xFFFFFF || was == 0) ASSERT_EQ(three.Pixel(x, y), was ? 0xF0E0D0u : 0x102030u) << x << "," << y;
        }

    options = Plain();
    options.Guides = true;
    CRgbImage guides = Draw(dir / "f.zgly", "AQ\ng", options);
    ASSERT_EQ(guides.Width, one.Width);
    ASSERT_EQ(guides.Height, one.Height);
    // Full ink covers the guides; the first baseline runs through the origin row.
    for (std::size_t i = 0; i < one.Rgb.size(); ++i)
        if (one.Rgb[i] == 0) ASSERT_EQ(guides.Rgb[i], 0) << i;
    EXPECT_NE(guides.Pixel(guides.OriginX + 1, guides.OriginY), 0xFFFFFFu);
}

// The sheet shows the glyphs as stored before any rotation: the same picture for every rotation.
TEST(TextRenderer, SheetIsTheSameWhateverTheRotation) {
    CScratchDir dir;
    SyntheticFontSpec fontSpec;
    fontSpec.Codes = {0x41, 0x42, 0x3042};
    fontSpec.Vertical = true;
    auto font = MakeSyntheticFont(fontSpec);
    font->PrepareForOutput();
    CRgbImage first;
    for (int rotation = 0; rotation < 4; ++rotation) {
        WriteSyntheticZgly(*font, dir / "s.zgly", EncodingUtf16, rotation);
        CFontBlockSet set;
        LoadZglyForPreview(dir / "s.zgly", set);
        CRgbImage sheet = CTextRenderer(set).DrawSheet(Plain());
        if (rotation == 0) first = sheet;
        EXPECT_EQ(CountDiffering(sheet, first), 0) << rotation;
    }
    EXPECT_GT(first.Width, first.Height);  // three labelled places in one row
}
