#include <gtest/gtest.h>

#include <string_view>

#include "core/font_data.h"
#include "core/font_filter.h"
#include "core/grey_levels.h"
#include "core/headless_pg_ctrl.h"
#include "core/merged_font_reader.h"

namespace {

// A 1-row glyph of the given grey values, stored at `stored` bits a pixel.
std::unique_ptr<CGlyph> Glyph(std::vector<uint32_t> values, int stored, int ascent = 5) {
    auto g = std::make_unique<CGlyph>();
    g->Bpp = stored;
    g->Ink = InkBox{0, 0, static_cast<int32_t>(values.size()), 1};
    g->Ascent = ascent;
    g->RightExtent = static_cast<int32_t>(values.size());
    g->Pixels.assign(g->PixelBytes(), 0);
    for (std::size_t i = 0; i < values.size(); ++i)
        for (int k = 0; k < stored; ++k)
            if ((values[i] >> (stored - 1 - k)) & 1u) {
                std::size_t bit = i * stored + k;
                g->Pixels[bit / 8] = static_cast<uint8_t>(g->Pixels[bit / 8] | (0x80u >> (bit % 8)));
            }
    return g;
}

// A source of a few glyphs that remembers which codes it was asked for.
class CFakeReader : public CFontReader {
public:
    CFakeReader(int bpp, std::u16string codes, int stored = 8) : Bpp(bpp), Codes(std::move(codes)), Stored(stored) {}
    void CheckParameters() override {}
    void Read(CFontData& font, const CFontFilter& filter) override {
        font.Bpp.Set(Bpp);
        if (LineHeight) font.LineHeight.Set(LineHeight);
        for (char16_t c : Codes) {
            if (filter.IsExcluded(c)) continue;
            Asked += c;
            // Full ink and one level below it, in this source's levels.
            const uint32_t max = (1u << Bpp) - 1;
            font.AddGlyph(Glyph({0, max - 1, max}, Stored, Ascent), c);
        }
    }
    int Bpp;
    std::u16string Codes;
    int Stored;
    int LineHeight = 0;
    int Ascent = 5;
    std::u16string Asked;
};

TEST(GreyLevels, RescaledValuesAndStorage) {
    struct Case {
        int From, To, Stored;
        std::vector<uint32_t> In, Out;
        int StoredAfter;
    } cases[] = {
        {1, 4, 1, {0, 1, 1, 0}, {0, 15, 15, 0}, 4},   // two levels become background and full ink
        {4, 1, 4, {0, 7, 8, 15}, {0, 0, 1, 1}, 4},    // halves round to the nearer level
        {2, 4, 8, {0, 1, 2, 3}, {0, 5, 10, 15}, 8},   // one byte a pixel stays one byte a pixel
        {4, 2, 8, {0, 5, 10, 15}, {0, 1, 2, 3}, 8},
    };
    for (const auto& c : cases) {
        auto g = Glyph(c.In, c.Stored);
        RescaleGlyphLevels(*g, c.From, c.To);
        auto want = Glyph(c.Out, c.StoredAfter);
        EXPECT_EQ(g->Bpp, c.StoredAfter) << c.From << "->" << c.To;
        EXPECT_EQ(g->Pixels, want->Pixels) << c.From << "->" << c.To;
    }
}

TEST(MergedFontReader, FirstSourceWinsLaterOnesFillTheGapsInItsLevels) {
    CHeadlessPgCtrl pg;
    CPgCtrl* saved = g_pPgCtrl;
    g_pPgCtrl = &pg;
    auto first = std::make_unique<CFakeReader>(4, u"AB");
    auto second = std::make_unique<CFakeReader>(2, u"BCD");
    first->LineHeight = 0;     // the first source has no line feed ...
    second->LineHeight = 21;   // ... so the second one's is taken
    second->Ascent = 9;        // glyphs keep their own metrics
    CFakeReader* firstRaw = first.get();
    CFakeReader* secondRaw = second.get();
    std::vector<CMergedFontReader::Source> sources;
    sources.push_back({std::move(first), "one"});
    sources.push_back({std::move(second), "two"});
    std::vector<std::size_t> counts;
    CMergedFontReader reader(std::move(sources), &counts);

    CFontFilter filter;
    filter.PassAll = false;
    for (char16_t c : std::u16string_view(u"ABCE")) filter.Letters[c] = true;
    CFontData font;
    reader.Read(font, filter);
    g_pPgCtrl = saved;

    EXPECT_EQ(firstRaw->Asked, u"AB");
    EXPECT_EQ(secondRaw->Asked, u"C");  // B was there already, D and E not wanted
    EXPECT_EQ(counts, (std::vector<std::size_t>{2, 1}));
    EXPECT_TRUE(pg.Warnings.empty());   // no "multiple glyphs" for the filled gaps
    EXPECT_EQ(font.Bpp.Value, 4);
    EXPECT_EQ(font.LineHeight.Value, 21);
    ASSERT_EQ(font.GlyphCount(), 3u);
    EXPECT_EQ(font.FindGlyph(u'B')->Pixels, Glyph({0, 14, 15}, 8)->Pixels);
    EXPECT_EQ(font.FindGlyph(u'C')->Pixels, Glyph({0, 10, 15}, 8)->Pixels);  // 2 of 3 is 10 of 15
    EXPECT_EQ(font.FindGlyph(u'C')->Ascent, 9);
}

}  // namespace
