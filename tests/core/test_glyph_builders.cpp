#include <algorithm>

#include <gtest/gtest.h>

#include "core/bit_stream.h"
#include "core/font_data.h"
#include "packed_reference.h"

namespace {

std::vector<int> Box(const CGlyph& g) { return {g.Ink.X0, g.Ink.Y0, g.Ink.X1, g.Ink.Y1}; }
// 5 x 4 at 3 bits, ink in columns 1-3, rows 1-2.
std::vector<uint8_t> InkCell() {
    return PackRef({0, 0, 0, 0, 0,
                    0, 7, 0, 5, 0,
                    0, 0, 3, 0, 0,
                    0, 0, 0, 0, 0}, 3);
}

std::vector<int> Spaces(const CGlyph& g) { return {g.LeftSpace, g.RightSpace, g.TopSpace, g.BottomSpace}; }

TEST(GlyphBuilders, EmptyCellKeepsItsAdvance) {
    const std::vector<uint8_t> blank(3, 0);  // 4 x 3 at 2 bits
    CGlyph e;
    e.SetFromCellTrimmed(blank.data(), 4, 3, 2, false, 2);
    EXPECT_EQ(Box(e), (std::vector<int>{0, 0, 0, 0}));
    EXPECT_TRUE(e.Pixels.empty());
    EXPECT_EQ(Spaces(e), (std::vector<int>{0, 4, 0, 0}));
    CGlyph ev;
    ev.SetFromCellTrimmed(blank.data(), 4, 3, 2, true, 1);
    EXPECT_EQ(Spaces(ev), (std::vector<int>{0, 0, 0, 3}));
}

// One ink run of two pixels in a line of six, laid out across (horizontal) or
// down (vertical): the margins before and after set the spaces.
TEST(GlyphBuilders, MarginsSetSpaces) {
    struct Case {
        bool Vertical, Blank;
        int Before, After;
        std::vector<int> Spaces;
    } cases[] = {
        {false, false, 1, 1, {1, 1, 0, 0}}, {false, false, 6, 0, {-2, 0, 0, 0}},  // before = width: advance 0
        {false, true, 6, 0, {0, 0, 0, 0}},  {false, true, 1, 2, {3, 0, 0, 0}},
        {true, false, 1, 2, {0, 0, 0, 1}},  {true, false, 6, 0, {0, 0, -2, 0}},
        {true, true, 6, 3, {0, 0, 0, 0}},   {true, true, 1, 2, {0, 0, 3, 0}}};
    for (const Case& c : cases) {
        // Horizontal 6 x 1 with ink in columns 2-3; vertical 1 x 6 with ink in rows 1-2.
        const uint8_t cell = c.Blank ? 0x00 : c.Vertical ? 0x60 : 0x30;
        CGlyph g;
        g.SetFromCellWithMargins(&cell, c.Vertical ? 1 : 6, c.Vertical ? 6 : 1, 1, c.Vertical, c.Before, c.After, 1);
        EXPECT_EQ(Spaces(g), c.Spaces) << c.Vertical << c.Blank << " " << c.Before << "," << c.After;
        if (!c.Blank && c.Before == 1) {
            EXPECT_EQ(c.Vertical ? g.Ascent : g.RightExtent, c.Vertical ? -1 : 2);
        }
    }
}

// Cropping at every depth, odd widths included, against a pixel reference.
TEST(GlyphBuilders, CropsRandomCellsLikeThePixelReference) {
    uint32_t seed = 777;
    auto next = [&](int n) {
        seed = seed * 1103515245u + 12345u;
        return static_cast<int>((seed >> 16) % static_cast<uint32_t>(n));
    };
    for (int round = 0; round < 300; ++round) {
        const int bpp = 1 + round % 8, w = 1 + next(13), h = 1 + next(9);
        std::vector<uint32_t> px(static_cast<std::size_t>(w) * h, 0);
        const int dots = next(5);
        for (int i = 0; i < dots; ++i) px[next(w * h)] = 1 + next((1 << bpp) - 1);
        int x0 = w, y0 = h, x1 = 0, y1 = 0;
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x)
                if (px[y * w + x]) x0 = std::min(x0, x), y0 = std::min(y0, y), x1 = std::max(x1, x + 1), y1 = y + 1;
        std::vector<uint32_t> ink;
        for (int y = y0; y < y1; ++y)
            for (int x = x0; x < x1; ++x) ink.push_back(px[y * w + x]);
        CGlyph g;
        const auto cell = PackRef(px, bpp);
        g.SetFromCellTrimmed(cell.data(), w, h, bpp, false, h);
        if (x1 == 0) {
            ASSERT_EQ(Box(g), (std::vector<int>{0, 0, 0, 0})) << "round " << round;
            continue;
        }
        ASSERT_EQ(Box(g), (std::vector<int>{x0, y0, x1, y1})) << "round " << round;
        ASSERT_EQ(g.Pixels, PackRef(ink, bpp)) << "round " << round;
    }
}

TEST(RenderToCell, VerticalOriginAndEmptyGlyphs) {
    // Into a taller, wider cell with the vertical origin moved: ink shifts with it.
    const auto cell = InkCell();
    CGlyph v;
    v.SetFromCellTrimmed(cell.data(), 5, 4, 3, true, 2);
    std::vector<uint8_t> big(PackedBytes(7, 5, 3), 0xAA);
    RenderToCell(v, big.data(), 7, 5, 1, 3, 3);
    std::vector<uint32_t> expect(35, 0);
    expect[2 * 7 + 2] = 7;
    expect[2 * 7 + 4] = 5;
    expect[3 * 7 + 3] = 3;
    EXPECT_EQ(UnpackRef(big, 35, 3), expect);

    CGlyph empty;
    std::vector<uint8_t> blank(PackedBytes(3, 3, 2) + 1, 0xAA);
    RenderToCell(empty, blank.data(), 3, 3, 2, 2, 2);
    EXPECT_EQ(blank, (std::vector<uint8_t>{0, 0, 0, 0xAA}));
}

// Byte-per-pixel and packed glyphs at every cell depth and position, against
// a pixel-by-pixel reference: the whole cell is written, nothing past it.
TEST(RenderToCell, MatchesPixelReferenceEverywhere) {
    uint32_t seed = 12345;
    auto next = [&](int n) {
        seed = seed * 1103515245u + 12345u;
        return static_cast<int>((seed >> 16) % static_cast<uint32_t>(n));
    };
    for (int round = 0; round < 400; ++round) {
        const int bpp = 1 + round % 8, srcBpp = round % 3 ? 8 : 1 + next(8);
        const int iw = 1 + next(9), ih = 1 + next(9);
        const int cw = iw + next(6), ch = ih + next(6);
        const int before = next(cw - iw + 1), above = next(ch - ih + 1);
        std::vector<uint32_t> ink(static_cast<std::size_t>(iw) * ih);
        for (auto& v : ink) v = next(3) ? 0 : static_cast<uint32_t>(next(1 << srcBpp));
        CGlyph g;
        g.Bpp = srcBpp;
        g.Pixels = PackRef(ink, srcBpp);
        g.Ink = InkBox{0, 0, iw, ih};
        g.Ascent = 2;
        g.RightExtent = iw;
        std::vector<uint32_t> expect(static_cast<std::size_t>(cw) * ch, 0);
        for (int y = 0; y < ih; ++y)
            for (int x = 0; x < iw; ++x)
                expect[(above + y) * cw + before + x] = ink[y * iw + x] & ((1u << bpp) - 1);
        std::vector<uint8_t> out(PackedBytes(cw, ch, bpp) + 1, 0xAA);
        RenderToCell(g, out.data(), cw, ch, above + 2, cw - before, bpp);
        ASSERT_EQ(UnpackRef(out, cw * ch, bpp), expect) << "round " << round;
        ASSERT_EQ(out.back(), 0xAA) << "round " << round;
    }
}

}  // namespace
