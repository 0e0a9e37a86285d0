#include "core/packed_image.h"

#include <gtest/gtest.h>

#include "packed_reference.h"

namespace {

TEST(PackedImage, CopyRectKeepsNeighbours) {
    // 1 bpp: two zero pixels into the middle of the second row's byte.
    std::vector<uint8_t> dst = {0xFF, 0xFF, 0xFF};
    const std::vector<uint8_t> zeros = {0x00};
    CopyRect(dst.data(), zeros.data(), 2, 8, 0, 0, 2, 1, 3, 1, 1);
    EXPECT_EQ(dst, (std::vector<uint8_t>{0xFF, 0xE7, 0xFF}));
    CopyRect(dst.data(), zeros.data(), 2, 8, 0, 0, 0, 1, 0, 0, 1);  // w < 1: nothing
    EXPECT_EQ(dst[0], 0xFF);

    // 3 bpp: the 2 x 2 block at (1, 1) of a 4 x 3 source to (2, 0) of a 5 x 3 destination.
    std::vector<uint32_t> src(12), expect(15, 7);
    for (int i = 0; i < 12; ++i) src[i] = static_cast<uint32_t>(i % 7);
    auto srcBytes = PackRef(src, 3);
    auto dstBytes = PackRef(expect, 3);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 2; ++x) expect[y * 5 + 2 + x] = src[(1 + y) * 4 + 1 + x];
    CopyRect(dstBytes.data(), srcBytes.data(), 4, 5, 1, 1, 2, 2, 2, 0, 3);
    EXPECT_EQ(UnpackRef(dstBytes, 15, 3), expect);
    EXPECT_EQ(dstBytes, PackRef(expect, 3));  // trailing bits untouched too
}

TEST(PackedImage, FindsInkBox) {
    InkBox box{9, 9, 9, 9};
    auto img = PackRef({0, 0, 0, 0,
                        0, 0, 2, 0,
                        0, 1, 0, 0}, 2);
    EXPECT_TRUE(FindInkBox(box, img.data(), 4, 3, 2, 0));
    EXPECT_EQ((std::vector<int>{box.X0, box.Y0, box.X1, box.Y1}), (std::vector<int>{1, 1, 3, 3}));
    auto blank = PackRef(std::vector<uint32_t>(12, 3), 2);
    EXPECT_FALSE(FindInkBox(box, blank.data(), 4, 3, 2, 3));
    EXPECT_EQ((std::vector<int>{box.X0, box.Y0, box.X1, box.Y1}), (std::vector<int>{0, 0, 0, 0}));
    // Against a non-zero background every other value is ink, 0 included.
    EXPECT_TRUE(FindInkBox(box, img.data(), 4, 3, 2, 3));
    EXPECT_EQ((std::vector<int>{box.X0, box.Y0, box.X1, box.Y1}), (std::vector<int>{0, 0, 4, 3}));
}

// Turns and ink boxes of random images at every depth, rows longer than a
// scan chunk and odd bit offsets included, against the pixel reference.
TEST(PackedImage, RandomImagesTurnAndCropLikeTheReference) {
    uint32_t seed = 4242;
    auto next = [&](int n) {
        seed = seed * 1103515245u + 12345u;
        return static_cast<int>((seed >> 16) % static_cast<uint32_t>(n));
    };
    for (int round = 0; round < 200; ++round) {
        const int bpp = 1 + round % 8, w = 1 + next(40), h = 1 + next(12);
        std::vector<uint32_t> px(static_cast<std::size_t>(w) * h, 0);
        for (int i = next(6); i > 0; --i) px[next(w * h)] = 1 + next((1 << bpp) - 1);
        const auto at = [&](int x, int y) { return px[static_cast<std::size_t>(y) * w + x]; };
        std::vector<uint32_t> cw, ccw, half;
        for (int y = 0; y < w; ++y)
            for (int x = 0; x < h; ++x) cw.push_back(at(y, h - 1 - x)), ccw.push_back(at(w - 1 - y, x));
        for (int i = w * h - 1; i >= 0; --i) half.push_back(px[i]);
        const auto src = PackRef(px, bpp);
        using Turn = void (*)(uint8_t*, const uint8_t*, int, int, int);
        const std::pair<Turn, const std::vector<uint32_t>*> turns[] = {
            {RotateClockwise, &cw}, {RotateCounterClockwise, &ccw}, {Rotate180, &half}};
        for (const auto& [turn, want] : turns) {
            auto img = src;  // in place: trailing bits cleared too
            turn(img.data(), img.data(), w, h, bpp);
            ASSERT_EQ(img, PackRef(*want, bpp)) << "round " << round;
            std::vector<uint8_t> dst(src.size(), 0xFF);  // into another buffer
            turn(dst.data(), src.data(), w, h, bpp);
            ASSERT_EQ(UnpackRef(dst, want->size(), bpp), *want) << "round " << round;
        }

        int x0 = w, y0 = h, x1 = 0, y1 = 0;
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x)
                if (at(x, y)) x0 = std::min(x0, x), y0 = std::min(y0, y), x1 = std::max(x1, x + 1), y1 = y + 1;
        InkBox box;
        const bool found = FindInkBox(box, src.data(), w, h, bpp, 0);
        ASSERT_EQ(found, x1 > 0) << "round " << round;
        if (found) {
            ASSERT_EQ((std::vector<int>{box.X0, box.Y0, box.X1, box.Y1}), (std::vector<int>{x0, y0, x1, y1}));
        }
    }
}

}  // namespace
