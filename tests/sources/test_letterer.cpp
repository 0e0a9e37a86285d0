// Level scaling, soft anti-aliasing and the width types of BuildGlyph.
#include <gtest/gtest.h>

#include <vector>

#include "core/font_data.h"
#include "core/general_exception.h"
#include "sources/letterer.h"

namespace {

class CTestLetterer : public CLetterer {
public:
    void Prepare(const FontRequest&) override {}
    bool MakeGlyph(CGlyph&, char16_t) override { return false; }
};

}  // namespace

TEST(Letterer, ScaleLevelsMapsSeventeenLevels) {
    std::vector<uint8_t> v{0, 1, 7, 8, 15, 16};
    ScaleLevels(v.data(), v.size(), 1);
    EXPECT_EQ(v, (std::vector<uint8_t>{0, 0, 0, 1, 1, 1}));
    v = {0, 1, 8, 16};
    ScaleLevels(v.data(), v.size(), 15);
    EXPECT_EQ(v, (std::vector<uint8_t>{0, 0, 7, 15}));
    v = {0, 5, 16};
    ScaleLevels(v.data(), v.size(), 3);  // ((v + 2) * 3) / 16
    EXPECT_EQ(v, (std::vector<uint8_t>{0, 1, 3}));
}

TEST(Letterer, HalveImageKeepsBaselineBetweenBlocks) {
    // 3 x 10, baseline 7: both 7 and 3 odd, so an empty row joins above and below.
    std::vector<uint8_t> img(30, 0);
    for (int x = 0; x < 3; ++x) img[x] = 16;       // row 0 pairs with the row above
    for (int x = 0; x < 3; ++x) img[9 * 3 + x] = 8;  // row 9 pairs with the row below
    RenderedCell cell{3, 10, 3, 9, 7, 15, 0};
    HalveImage(img.data(), cell);
    EXPECT_EQ(cell.Width, 2);
    EXPECT_EQ(cell.Height, 6);
    EXPECT_EQ(cell.Baseline, 4);
    EXPECT_EQ(cell.OriginX, 1);
    EXPECT_EQ(cell.Advance, 5);
    EXPECT_EQ(img[0], 8);   // (16 + 16 + 0 + 0 + 2) / 4
    EXPECT_EQ(img[1], 4);   // the odd last column pairs with nothing
    EXPECT_EQ(img[5 * 2 + 0], 4);

    std::vector<uint8_t> even{16, 16, 16, 16};
    RenderedCell c2{2, 2, 0, 2, 2, 15, 0};
    HalveImage(even.data(), c2);
    EXPECT_EQ(c2.Height, 1);
    EXPECT_EQ(even[0], 16);
}

TEST(Letterer, WidthTypesSetSpaces) {
    CTestLetterer l;
    EXPECT_THROW(l.Setup(6, 0, 0, false), CGeneralException);
    try {
        l.Setup(2, 4, 0, false);
        FAIL();
    } catch (const CGeneralException& e) {
        EXPECT_EQ(e.Message, "Internal Error:\n Invalid width type (4).");
    }
    // 12 wide, ink in columns 3..7, baseline 6 rows down, advance 10, bearing 1.
    std::vector<uint8_t> img(12 * 8, 0);
    for (int x = 3; x < 8; ++x) img[2 * 12 + x] = 3;
    RenderedCell cell{12, 8, 1, 10, 6, 3, 0};
    struct Case {
        int Type, Fixed, Left, Right;
    } cases[] = {{0, 0, 0, 0}, {1, 0, 0, 0}, {2, 0, 4, 1}, {3, 8, 1, 2}, {3, 3, -1, -1}};
    for (const Case& c : cases) {
        l.Setup(2, c.Type, c.Fixed, false);
        CGlyph g;
        l.BuildGlyph(g, img.data(), cell);
        EXPECT_EQ(g.LeftSpace, c.Left) << c.Type;
        EXPECT_EQ(g.RightSpace, c.Right) << c.Type;
        EXPECT_EQ(g.Ascent, 4);
        EXPECT_EQ(g.Ink.Width(), 5);
    }
    // An ink-less character keeps its advance only from type 1 on.
    std::vector<uint8_t> blank(12 * 8, 0);
    l.Setup(2, 1, 0, false);
    CGlyph space;
    l.BuildGlyph(space, blank.data(), cell);
    EXPECT_EQ(space.LeftSpace + space.RightSpace, 10);
    EXPECT_TRUE(space.Pixels.empty());

    // Vertical: the ink turns a quarter turn clockwise, spaces go top/bottom.
    l.Setup(2, 2, 0, true);
    CGlyph v;
    l.BuildGlyph(v, img.data(), cell);
    EXPECT_EQ(v.Ink.Width(), 1);
    EXPECT_EQ(v.Ink.Height(), 5);
    EXPECT_EQ(v.TopSpace, 4);
    EXPECT_EQ(v.BottomSpace, 1);
    EXPECT_EQ(v.LeftSpace, 0);
}
