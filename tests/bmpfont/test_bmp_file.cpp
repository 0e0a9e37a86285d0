#include <gtest/gtest.h>

#include "bmp_test_support.h"
#include "bmpfont/bmp_file.h"
#include "zgly/binary_file.h"

namespace {

CBmpImage Load(const std::filesystem::path& path) {
    CBinaryFile file(path);
    CBmpImage image;
    LoadBmp(file, image);
    return image;
}

RawBmp Sample(int bpp) {
    RawBmp b;
    b.Width = 5;
    b.Height = 3;
    b.Bpp = bpp;
    if (bpp <= 8)
        for (int i = 0; i < (1 << bpp); ++i) b.Palette.push_back(0x00010203u * static_cast<uint32_t>(i));
    for (int i = 0; i < 15; ++i) b.Pixels.push_back(static_cast<uint32_t>(i * 7) % (bpp >= 8 ? 251 : (1u << bpp)));
    return b;
}

}  // namespace

TEST(BmpFile, LoadsEveryDepthTopRowFirst) {
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
}

TEST(BmpFile, RefusesBadHeadersAndShortFiles) {
    CTempDir dir;
    auto err = [&](const RawBmp& b) {
        auto path = dir.Write("b.bmp", b.Bytes());
        return ErrorOf([&] { CheckBmpFile(path); });
    };
    const std::string p = "Input file(" + (dir / "b.bmp").string() + ") ";
    const std::pair<void (*)(RawBmp&), std::string> cases[] = {
        {[](RawBmp& b) { b.Reserved1 = 1; }, "is not bmp file."},
        {[](RawBmp& b) { b.Planes = 2; }, "is unsupported BMP."},
        {[](RawBmp& b) { b.Compression = 1; }, "is unsupported BMP."},
        {[](RawBmp& b) { b.Width = 0, b.Pixels.clear(); }, "has illegal image size(0 x 3)."},
        {[](RawBmp& b) { b.Bpp = 2, b.Palette.resize(4); }, "has unsupported bpp(2)."}};
    for (const auto& [change, message] : cases) {
        RawBmp b = Sample(8);
        change(b);
        EXPECT_EQ(err(b), p + message);
    }
    std::string good = Sample(8).Bytes();
    for (std::size_t cut : {std::size_t(0), std::size_t(10), std::size_t(40), std::size_t(60), good.size() - 1}) {
        auto path = dir.Write("cut.bmp", good.substr(0, cut));
        std::string e = ErrorOf([&] { CheckBmpFile(path); });
        EXPECT_TRUE(e == "Input file(" + path.string() + ") is broken." ||
                    e == "Input file(" + path.string() + ") is not bmp file.")
            << cut << ": " << e;
    }
    // A header claiming 2^31 pixels in a tiny file is refused before any allocation.
    std::string huge = good;
    huge[18] = '\xFF', huge[19] = '\xFF', huge[20] = '\x00', huge[21] = '\x00';
    huge[22] = '\x00', huge[23] = '\x80', huge[24] = '\x00', huge[25] = '\x00';
    auto path = dir.Write("huge.bmp", huge);
    EXPECT_EQ(ErrorOf([&] { CheckBmpFile(path); }), "Input file(" + path.string() + ") is broken.");
}

