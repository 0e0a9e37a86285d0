#include "core/bmp_image.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "core/general_exception.h"
#include "packed_reference.h"

namespace {

CBmpImage Image(int width, int height, int bpp, int stride, std::vector<uint8_t> data) {
    CBmpImage img;
    img.SetPalette(bpp, nullptr, 0, 0);
    img.Create(width, height, stride, data.data(), data.size());
    return img;
}

TEST(BmpImage, GetPixelAtEveryDepth) {
    const std::vector<uint8_t> row = {0xA5, 0x3C, 0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC};
    EXPECT_EQ(Image(8, 1, 1, 8, row).GetPixel(0, 0), 1u);
    EXPECT_EQ(Image(8, 1, 1, 8, row).GetPixel(1, 0), 0u);
    EXPECT_EQ(Image(8, 1, 1, 8, row).GetPixel(10, 0), 1u);
    EXPECT_EQ(Image(8, 1, 4, 8, row).GetPixel(0, 0), 0xAu);  // high nibble first
    EXPECT_EQ(Image(8, 1, 4, 8, row).GetPixel(3, 0), 0xCu);
    EXPECT_EQ(Image(8, 1, 8, 8, row).GetPixel(2, 0), 0x12u);
    EXPECT_EQ(Image(4, 1, 16, 8, row).GetPixel(1, 0), 0x1234u);
    EXPECT_EQ(Image(2, 1, 24, 8, row).GetPixel(1, 0), 0x345678u);
    EXPECT_EQ(Image(2, 1, 32, 8, row).GetPixel(1, 0), 0x56789ABCu);
    EXPECT_EQ(Image(4, 2, 8, 4, row).GetPixel(1, 1), 0x78u);  // second stored row
    try {
        Image(8, 1, 2, 8, row).GetPixel(0, 0);
        FAIL();
    } catch (const CGeneralException& e) {
        EXPECT_EQ(e.Message, "Internal Error:\n bpp == 2");
    }
}

TEST(BmpImage, PaletteAndFindColor) {
    const uint32_t entries[2] = {0x000000, 0xFFFFFF};
    CBmpImage img;
    img.SetPalette(1, entries, 2, 1);
    EXPECT_EQ(img.PaletteSize, 2);
    EXPECT_EQ(img.FindColor(0xFFFFFF, 0), 1);
    EXPECT_EQ(img.FindColor(0x000000, 1), -1);
    EXPECT_EQ(img.FindColor(0x000000, 2), -1);
    img.SetPalette(24, entries, 2, 1);  // no palette above 8 bits
    EXPECT_EQ(img.PaletteSize, 0);
    EXPECT_TRUE(img.Palette.empty());
}

TEST(BmpImage, ExtractsRectFromOddPosition) {
    // 4 bpp, two stored rows of 4 bytes: 0 1 2 3 4 5 6 7 / 8 9 A B C D E F
    auto img = Image(8, 2, 4, 4, {0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF});
    std::vector<uint8_t> dst(3, 0xFF);
    img.ExtractRect(dst.data(), 3, 0, 3, 2);
    EXPECT_EQ(UnpackRef(dst, 6, 4), (std::vector<uint32_t>{3, 4, 5, 0xB, 0xC, 0xD}));
}

TEST(BmpImage, PutRowsAndBlitClippedAddressBottomUpRows) {
    CBmpImage img = Image(4, 4, 8, 4, {});
    const std::vector<uint8_t> rows = {1, 2, 3, 4};  // bottom row of the block first
    img.PutRows(rows.data(), 1, 1, 2, 2);             // picture rows 2, 1 = stored rows 1, 2
    EXPECT_EQ(img.Pixels[1 * 4 + 1], 1);
    EXPECT_EQ(img.Pixels[1 * 4 + 2], 2);
    EXPECT_EQ(img.Pixels[2 * 4 + 1], 3);
    EXPECT_EQ(img.Pixels[2 * 4 + 2], 4);
    EXPECT_EQ(std::count(img.Pixels.begin(), img.Pixels.end(), 0), 12);

    // A 3 x 3 bottom-up source; its picture row r is stored row 2 - r.
    const std::vector<uint8_t> src = {20, 21, 22,
                                      10, 11, 12,
                                      0, 1, 2};
    CBmpImage dst = Image(4, 4, 8, 4, {});
    dst.BlitClipped(src.data(), 2, 3, 5, 5, 1, 1, 3, 3);  // clipped to 2 x 1
    EXPECT_EQ(dst.Pixels[0 * 4 + 2], 11);
    EXPECT_EQ(dst.Pixels[0 * 4 + 3], 12);
    dst.BlitClipped(src.data(), 0, 0, 3, 3, 3, 0, 3, 3);  // source width used up: nothing
    EXPECT_EQ(std::count(dst.Pixels.begin(), dst.Pixels.end(), 0), 14);
    dst.BlitClipped(src.data(), 0, 0, 2, 2, 0, 1, 3, 3);  // picture rows 1-2 of the source
    EXPECT_EQ(dst.Pixels[3 * 4 + 0], 10);
    EXPECT_EQ(dst.Pixels[2 * 4 + 1], 21);
}

}  // namespace
