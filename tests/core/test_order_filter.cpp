#include <gtest/gtest.h>

#include "core/font_data.h"
#include "core/font_filter.h"
#include "core/glyph_order.h"
#include "core/headless_pg_ctrl.h"

namespace {

CGlyphOrder Order(std::vector<uint16_t> codes, int width, int height, bool loaded = true) {
    CGlyphOrder order;
    order.Codes = std::move(codes);
    order.Width = width;
    order.Height = height;
    order.Loaded = loaded;
    return order;
}

CFontFilter LoadedFilter(std::initializer_list<uint16_t> codes) {
    CFontFilter filter;
    filter.PassAll = false;
    for (uint16_t c : codes) filter.Letters[c] = true;
    return filter;
}

std::vector<uint16_t> Letters(const CFontFilter& filter) {
    std::vector<uint16_t> out;
    for (auto [code, included] : filter.Letters)
        if (included) out.push_back(code);
    return out;
}

TEST(GlyphOrder, GetCodeBounds) {
    const CGlyphOrder empty;
    EXPECT_EQ(empty.Width, 16);
    EXPECT_EQ(empty.GetCode(0, 0), NoCode);

    std::vector<uint16_t> codes(100);
    for (int i = 0; i < 100; ++i) codes[i] = static_cast<uint16_t>(0x100 + i);
    const auto order = Order(codes, 16, 8);
    EXPECT_EQ(order.GetCode(0, 0), 0x100);
    EXPECT_EQ(order.GetCode(3, 6), 0x100 + 99);
    EXPECT_EQ(order.GetCode(4, 6), NoCode);  // cell 100
    EXPECT_EQ(order.GetCode(15, 7), NoCode);
    EXPECT_EQ(order.GetCode(-1, 0), NoCode);
    EXPECT_EQ(order.GetCode(16, 0), NoCode);  // would be cell 16 of the next row
    EXPECT_EQ(order.GetCode(0, 8), NoCode);
    EXPECT_EQ(order.GetCode(0, -1), NoCode);
}

TEST(FontFilter, PassAllUntilRestricted) {
    CFontFilter filter;
    EXPECT_FALSE(filter.IsExcluded('A'));
    EXPECT_FALSE(filter.IsExcluded(0xFFFE));

    filter.RestrictToOrder(CGlyphOrder{});  // unloaded order: nothing to take
    EXPECT_TRUE(filter.PassAll);
    filter.RestrictToOrder(Order({NoCode, NoCode}, 2, 1));  // only empty cells
    EXPECT_TRUE(filter.PassAll);

    filter.RestrictToOrder(Order({'A', NoCode, 'C', 'A', 'D'}, 2, 2));  // 'D' lies outside the grid
    EXPECT_FALSE(filter.PassAll);
    EXPECT_EQ(Letters(filter), (std::vector<uint16_t>{'A', 'C'}));
    EXPECT_FALSE(filter.IsExcluded('C'));
    EXPECT_TRUE(filter.IsExcluded('D'));
    EXPECT_TRUE(filter.IsExcluded(NoCode));
    filter.Letters['C'] = false;
    EXPECT_TRUE(filter.IsExcluded('C'));
}

TEST(FontFilter, LoadedFilterIntersectsLoadedOrder) {
    auto filter = LoadedFilter({'A', 'B', ' '});
    filter.RestrictToOrder(Order({'A', 'C'}, 2, 1, false));  // not loaded: unchanged
    EXPECT_EQ(Letters(filter), (std::vector<uint16_t>{' ', 'A', 'B'}));

    filter.RestrictToOrder(Order({'A', 'C'}, 2, 1));
    EXPECT_EQ(Letters(filter), (std::vector<uint16_t>{'A'}));
    EXPECT_EQ(filter.Letters.size(), 1u);  // entries removed, not just cleared
    EXPECT_TRUE(filter.IsExcluded(' '));
    EXPECT_TRUE(filter.IsExcluded('C'));

    auto withSpace = LoadedFilter({'A', 'B', ' '});
    withSpace.RestrictToOrder(Order({' ', 'A', 'C', NoCode}, 2, 2));
    EXPECT_EQ(Letters(withSpace), (std::vector<uint16_t>{' ', 'A'}));
}

TEST(FontFilter, ReportsMissingLetters) {
    CHeadlessPgCtrl pg;
    g_pPgCtrl = &pg;
    CFontData font;
    auto glyph = std::make_unique<CGlyph>();
    font.AddGlyph(std::move(glyph), 'A');
    auto filter = LoadedFilter({0x3042, 'A', ' '});
    filter.Letters['B'] = false;  // not included: no warning
    filter.ReportMissingLetters(font);
    g_pPgCtrl = nullptr;
    ASSERT_EQ(pg.Warnings.size(), 2u);
    EXPECT_EQ(pg.Warnings[0],
              "A char (' ': U+0020) included in the Filter is not include in the INPUT font.");
    EXPECT_EQ(pg.Warnings[1],
              "A char ('\u3042': U+3042) included in the Filter is not include in the INPUT font.");
}

}  // namespace
