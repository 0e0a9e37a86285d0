#include <gtest/gtest.h>

#include <string_view>

#include "core/font_data.h"
#include "core/font_filter.h"
#include "core/grey_levels.h"
#include "core/headless_pg_ctrl.h"
#include "core/merged_font_reader.h"
#include "packed_reference.h"

namespace {

// A 1-row glyph of the given grey values, stored at `stored` bits a pixel.
std::unique_ptr<CGlyph> Glyph(const std::vector<uint32_t>& values, int stored, int ascent = 5) {
    auto g = std::make_unique<CGlyph>();
    g->Bpp = stored;
    g->Ink = InkBox{0, 0, static_cast<int32_t>(values.size()), 1};
    g->Ascent = ascent;
    g->RightExtent = static_cast<int32_t>(values.size());
    g->Pixels = PackRef(values, stored);
    return g;
}

// A source of a few glyphs (full ink and one level below it, in its levels)
// that remembers which codes it was asked for.
class CFakeReader : public CFontReader {
public:
    CFakeReader(int bpp, std::u16string codes, int lineHeight, int ascent)
        : Bpp(bpp), Codes(std::move(codes)), LineHeight(lineHeight), Ascent(ascent) {}
    void CheckParameters() override {}
    void Read(CFontData& font, const CFontFilter& filter) override {
        font.Bpp.Set(Bpp);
        if (LineHeight) font.LineHeight.Set(LineHeight);
        const uint32_t max = (1u << Bpp) - 1;
        for (char16_t c : Codes)
            if (!filter.IsExcluded(c)) Asked += c, font.AddGlyph(Glyph({0, max - 1, max}, 8, Ascent), c);
    }
    int Bpp;
    std::u16string Codes, Asked;
    int LineHeight, Ascent;
};

TEST(GreyLevels, RescaledValuesAndStorage) {
    const struct {
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
        EXPECT_EQ(g->Bpp, c.StoredAfter) << c.From << "->" << c.To;
        EXPECT_EQ(g->Pixels, PackRef(c.Out, c.StoredAfter)) << c.From << "->" << c.To;
    }
}

TEST(MergedFontReader, FirstSourceWinsLaterOnesFillTheGapsInItsLevels) {
    CHeadlessPgCtrl pg;
    CPgCtrlScope scope(pg);
    // The first source has no line feed, so the second one's is taken; glyphs keep their own metrics.
    auto first = std::make_unique<CFakeReader>(4, u"AB", 0, 5);
    auto second = std::make_unique<CFakeReader>(2, u"BCD", 21, 9);
    CFakeReader *firstRaw = first.get(), *secondRaw = second.get();
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

    EXPECT_EQ(firstRaw->Asked, u"AB");
    EXPECT_EQ(secondRaw->Asked, u"C");  // B was there already, D and E not wanted
    EXPECT_EQ(counts, (std::vector<std::size_t>{2, 1}));
    EXPECT_TRUE(pg.Warnings.empty());   // no "multiple glyphs" for the filled gaps
    EXPECT_EQ(font.Bpp.Value, 4);
    EXPECT_EQ(font.LineHeight.Value, 21);
    ASSERT_EQ(font.GlyphCount(), 3u);
    EXPECT_EQ(font.FindGlyph(u'B')->Pixels, PackRef({0, 14, 15}, 8));
    EXPECT_EQ(font.FindGlyph(u'C')->Pixels, PackRef({0, 10, 15}, 8));  // 2 of 3 is 10 of 15
    EXPECT_EQ(font.FindGlyph(u'C')->Ascent, 9);
}

}  // namespace
