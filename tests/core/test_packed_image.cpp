// The packed-pixel operations under every glyph: exact pixels at odd bit
// offsets and across scan chunks.
#include <gtest/gtest.h>

#include "core/packed_image.h"
#include "packed_reference.h"

namespace {

std::vector<int> Box(const InkBox& b) { return {b.X0, b.Y0, b.X1, b.Y1}; }

TEST(PackedImage, TurnsCopiesAndFindsInk) {
    // 3 x 2 at 3 bits, turned in place and into another buffer.
    const auto src = PackRef({1, 2, 3, 4, 5, 6}, 3);
    using Turn = void (*)(uint8_t*, const uint8_t*, int, int, int);
    const std::pair<Turn, std::vector<uint32_t>> turns[] = {
        {RotateClockwise, {4, 1, 5, 2, 6, 3}}, {RotateCounterClockwise, {3, 6, 2, 5, 1, 4}}, {Rotate180, {6, 5, 4, 3, 2, 1}}};
    for (const auto& [turn, want] : turns) {
        auto img = src;
        turn(img.data(), img.data(), 3, 2, 3);
        EXPECT_EQ(img, PackRef(want, 3));
        std::vector<uint8_t> dst(src.size(), 0);
        turn(dst.data(), src.data(), 3, 2, 3);
        EXPECT_EQ(dst, PackRef(want, 3));
    }

    // 1 bit: two zero pixels into the middle of the second row's byte; w < 1 copies nothing.
    std::vector<uint8_t> dst = {0xFF, 0xFF, 0xFF};
    const std::vector<uint8_t> zeros = {0x00};
    CopyRect(dst.data(), zeros.data(), 2, 8, 0, 0, 2, 1, 3, 1, 1);
    CopyRect(dst.data(), zeros.data(), 2, 8, 0, 0, 0, 1, 0, 0, 1);
    EXPECT_EQ(dst, (std::vector<uint8_t>{0xFF, 0xE7, 0xFF}));
    // 3 bits: the 2 x 2 block at (1, 1) of a 4 x 3 source to (2, 0) of a 5 x 3 destination of 7s.
    const auto from = PackRef({0, 1, 2, 3, 4, 5, 6, 0, 1, 2, 3, 4}, 3);
    auto to = PackRef(std::vector<uint32_t>(15, 7), 3);
    CopyRect(to.data(), from.data(), 4, 5, 1, 1, 2, 2, 2, 0, 3);
    EXPECT_EQ(to, PackRef({7, 7, 5, 6, 7, 7, 7, 2, 3, 7, 7, 7, 7, 7, 7}, 3));

    // Ink boxes across 56-bit scan chunks (18 pixels at 3 bits) and against a non-zero background.
    std::vector<uint32_t> wide(40 * 3, 0);
    wide[40 + 19] = 1, wide[80 + 37] = 4;
    InkBox box{9, 9, 9, 9};
    EXPECT_TRUE(FindInkBox(box, PackRef(wide, 3).data(), 40, 3, 3, 0));
    EXPECT_EQ(Box(box), (std::vector<int>{19, 1, 38, 3}));
    const auto blank = PackRef(std::vector<uint32_t>(12, 3), 2);
    EXPECT_FALSE(FindInkBox(box, blank.data(), 4, 3, 2, 3));
    EXPECT_EQ(Box(box), (std::vector<int>{0, 0, 0, 0}));
    const auto dots = PackRef({0, 0, 0, 0, 0, 0, 2, 0, 0, 1, 0, 0}, 2);
    EXPECT_TRUE(FindInkBox(box, dots.data(), 4, 3, 2, 3));  // every other value is ink, 0 included
    EXPECT_EQ(Box(box), (std::vector<int>{0, 0, 4, 3}));
}

}  // namespace
