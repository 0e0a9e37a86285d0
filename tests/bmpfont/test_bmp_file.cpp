#include <gtest/gtest.h>

#include "bmp_test_support.h"
#include "bmpfont/bmp_file.h"
#include "bmpfont/bmp_image.h"
#include "zgly/binary_file.h"

namespace {

CBmpImage Load(const std::filesystem::path& path) {
    CBinaryFile file(path);
    CBmpImage image;
    LoadBmp(file, image);
    return image;
}

RawBmp Sample(int bpp) {
    RawBmp b{5, 3, bpp, {}, {}};
    if (bpp <= 8)
        for (int i = 0; i < (1 << bpp); ++i) b.Palette.push_back(0x00010203u * static_cast<uint32_t>(i));
    for (int i = 0; i < 15; ++i) b.Pixels.push_back(static_cast<uint32_t>(i * 7) % (bpp >= 8 ? 251 : (1u << bpp)));
    return b;
}

}  // namespace

TEST(BmpFile, LoadsEveryDepthTopRowFirstAndShortPalettes) {
    CTempDir dir;
    for (int bpp : {1, 4, 8, 16, 24, 32}) {
        RawBmp b = Sample(bpp);
        CBmpImage up = Load(dir.Write("up.bmp", b.Bytes()));
        b.TopDown = true;
        CBmpImage down = Load(dir.Write("down.bmp", b.Bytes()));
        EXPECT_EQ(up.Pixels, down.Pixels) << bpp;
        EXPECT_EQ(up.Stride, ((bpp * 5 + 31) / 32) * 4);
        EXPECT_EQ(up.PaletteSize, bpp <= 8 ? 1 << bpp : 0);
        for (int y = 0; y < 3; ++y)
            for (int x = 0; x < 5; ++x) EXPECT_EQ(up.GetPixel(x, y), b.Pixels[y * 5 + x]) << bpp;
    }
    // A longer information header: the palette follows the whole header.
    RawBmp v5 = Sample(4);
    v5.InfoSize = 124;
    CBmpImage image = Load(dir.Write("v5.bmp", v5.Bytes()));
    EXPECT_EQ(image.Palette, v5.Palette);
    EXPECT_EQ(image.GetPixel(2, 1), v5.Pixels[7]);

    // A palette as short as its colours-used count, far below the depth's: read
    // as declared, the rest black; a palette the file cannot hold is broken.
    for (auto [bpp, used] : {std::pair{8, 2u}, std::pair{4, 3u}}) {
        const std::vector<uint32_t> colors = {0xFFFFFF, 0x123456, 0xABCDEF};
        RawBmp b{4, 2, bpp, std::vector<uint32_t>(colors.begin(), colors.begin() + used), {1, 0, 0, 1, 0, 1, used - 1, 0}};
        b.ColorsUsed = used;
        auto path = dir.Write("short.bmp", b.Bytes());
        CBmpImage pic;
        ASSERT_EQ(ErrorOf([&] { pic = Load(path); }), "") << bpp;
        auto palette = b.Palette;
        palette.resize(std::size_t(1) << bpp, 0);
        EXPECT_EQ(pic.Palette, palette) << bpp;
        for (int i = 0; i < 8; ++i) EXPECT_EQ(pic.GetPixel(i % 4, i / 4), b.Pixels[i]) << bpp;
        b.ColorsUsed = 0;
        path = dir.Write("short.bmp", b.Bytes());
        EXPECT_EQ(ErrorOf([&] { Load(path); }), "Input file(" + path.string() + ") is broken.") << bpp;
    }
}

TEST(BmpFile, RefusesBadHeadersAndShortFiles) {
    CTempDir dir;
    const auto path = dir / "b.bmp";
    const std::string p = "Input file(" + path.string() + ") ";
    const std::pair<void (*)(RawBmp&), std::string> cases[] = {
        {[](RawBmp& b) { b.Reserved1 = 1; }, "is not bmp file."},
        {[](RawBmp& b) { b.Planes = 2; }, "is unsupported BMP."},
        {[](RawBmp& b) { b.Compression = 1; }, "is unsupported BMP."},
        {[](RawBmp& b) { b.Width = 0, b.Pixels.clear(); }, "has illegal image size(0 x 3)."},
        {[](RawBmp& b) { b.Bpp = 2, b.Palette.resize(4); }, "has unsupported bpp(2)."}};
    for (const auto& [change, message] : cases) {
        RawBmp b = Sample(8);
        change(b);
        dir.Write("b.bmp", b.Bytes());
        EXPECT_EQ(ErrorOf([&] { Load(path); }), p + message);
    }
    const std::string good = Sample(8).Bytes();
    for (std::size_t cut : {std::size_t(0), std::size_t(10), std::size_t(40), std::size_t(60), good.size() - 1}) {
        dir.Write("b.bmp", good.substr(0, cut));
        const std::string e = ErrorOf([&] { Load(path); });
        EXPECT_TRUE(e == p + "is broken." || e == p + "is not bmp file.") << cut << ": " << e;
    }
    // A header claiming 2^31 pixels in a tiny file is refused before any allocation.
    std::string huge = good;
    huge.replace(18, 8, std::string("\xFF\xFF\x00\x00\x00\x80\x00\x00", 8));
    dir.Write("b.bmp", huge);
    EXPECT_EQ(ErrorOf([&] { Load(path); }), p + "is broken.");
}
