#include "core/bmp_image.h"

#include <gtest/gtest.h>

#include "core/general_exception.h"
#include "packed_reference.h"

namespace {

CBmpImage Image(int width, int height, int bpp, int stride, std::vector<uint8_t> data) {
    CBmpImage img;
    img.SetPalette(bpp, nullptr, 0, 0);
    img.Create(width, height, stride, data.data(), data.size());
    return img;
}

}  // namespace

TEST(BmpImage, PixelsAtEveryDepthAndRects) {
    const std::vector<uint8_t> row = {0xA5, 0x3C, 0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC};
    // {width, height, bpp, stride, x, y, value}
    const struct { int W, H, Bpp, Stride, X, Y; uint32_t Value; } cases[] = {
        {8, 1, 1, 8, 0, 0, 1}, {8, 1, 1, 8, 1, 0, 0}, {8, 1, 1, 8, 10, 0, 1}, {8, 1, 4, 8, 0, 0, 0xA},
        {8, 1, 4, 8, 3, 0, 0xC}, {8, 1, 8, 8, 2, 0, 0x12}, {4, 1, 16, 8, 1, 0, 0x1234},
        {2, 1, 24, 8, 1, 0, 0x345678}, {2, 1, 32, 8, 1, 0, 0x56789ABC}, {4, 2, 8, 4, 1, 1, 0x78}};
    for (const auto& c : cases)
        EXPECT_EQ(Image(c.W, c.H, c.Bpp, c.Stride, row).GetPixel(c.X, c.Y), c.Value) << c.Bpp << " " << c.X;
    try {
        Image(8, 1, 2, 8, row).GetPixel(0, 0);
        ADD_FAILURE();
    } catch (const CGeneralException& e) {
        EXPECT_EQ(e.Message, "Internal Error:\n bpp == 2");
    }
    // 4 bpp, two stored rows of 4 bytes: 0 1 2 3 4 5 6 7 / 8 9 A B C D E F
    auto img = Image(8, 2, 4, 4, {0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF});
    std::vector<uint8_t> dst(3, 0xFF);
    img.ExtractRect(dst.data(), 3, 0, 3, 2);
    EXPECT_EQ(UnpackRef(dst, 6, 4), (std::vector<uint32_t>{3, 4, 5, 0xB, 0xC, 0xD}));
}

TEST(BmpImage, PaletteAndFindColor) {
    const uint32_t entries[2] = {0x000000, 0xFFFFFF};
    CBmpImage img;
    img.SetPalette(1, entries, 2, 1);
    EXPECT_EQ(img.PaletteSize, 2);
    EXPECT_EQ(img.FindColor(0xFFFFFF, 0), 1);
    EXPECT_EQ(img.FindColor(0x000000, 1), -1);
    img.SetPalette(24, entries, 2, 1);  // no palette above 8 bits
    EXPECT_EQ(img.PaletteSize, 0);
    EXPECT_TRUE(img.Palette.empty());
}
