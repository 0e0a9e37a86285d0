#include <gtest/gtest.h>

#include "core/font_filter.h"
#include "core/glyph_order.h"

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

}  // namespace

TEST(GlyphOrder, GetCodeBounds) {
    EXPECT_EQ(CGlyphOrder{}.Width, 16);
    EXPECT_EQ(CGlyphOrder{}.GetCode(0, 0), NoCode);
    std::vector<uint16_t> codes(100);
    for (int i = 0; i < 100; ++i) codes[i] = static_cast<uint16_t>(0x100 + i);
    const auto order = Order(codes, 16, 8);
    // {x, y, code}: cell 99 is the last; x beyond the row is not the next row's cell.
    const struct { int X, Y; uint16_t Code; } cells[] = {
        {0, 0, 0x100}, {3, 6, 0x100 + 99}, {4, 6, NoCode}, {15, 7, NoCode}, {-1, 0, NoCode},
        {16, 0, NoCode}, {0, 8, NoCode}, {0, -1, NoCode}};
    for (const auto& c : cells) EXPECT_EQ(order.GetCode(c.X, c.Y), c.Code) << c.X << "," << c.Y;
}

TEST(FontFilter, RestrictedToTheOrdersCells) {
    CFontFilter filter;
    EXPECT_FALSE(filter.IsExcluded('A'));
    filter.RestrictToOrder(CGlyphOrder{});  // unloaded order: nothing to take
    filter.RestrictToOrder(Order({NoCode, NoCode}, 2, 1));  // only empty cells
    EXPECT_TRUE(filter.PassAll);
    filter.RestrictToOrder(Order({'A', NoCode, 'C', 'A', 'D'}, 2, 2));  // 'D' lies outside the grid
    EXPECT_FALSE(filter.PassAll);
    EXPECT_EQ(Letters(filter), (std::vector<uint16_t>{'A', 'C'}));
    EXPECT_TRUE(filter.IsExcluded('D'));
    EXPECT_TRUE(filter.IsExcluded(NoCode));

    // A loaded filter keeps only what the order also has.
    auto loaded = LoadedFilter({'A', 'B', ' '});
    loaded.RestrictToOrder(Order({'A', 'C'}, 2, 1, false));  // not loaded: unchanged
    EXPECT_EQ(Letters(loaded), (std::vector<uint16_t>{' ', 'A', 'B'}));
    loaded.RestrictToOrder(Order({' ', 'A', 'C', NoCode}, 2, 2));
    EXPECT_EQ(Letters(loaded), (std::vector<uint16_t>{' ', 'A'}));
    EXPECT_EQ(loaded.Letters.size(), 2u);  // entries removed, not just cleared
    EXPECT_TRUE(loaded.IsExcluded('C'));
}
