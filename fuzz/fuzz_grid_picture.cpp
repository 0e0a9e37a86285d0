// The glyph-grid picture loader on arbitrary file bytes: palette BMPs, true-
// colour and run-length BMPs and PNG; the first byte picks the font depth.
#include "bmpfont/grid_picture_file.h"
#include "bmpfont/bmp_image.h"
#include "fuzz/fuzz_support.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    CFuzzEnvironment& env = FuzzEnvironment();
    int bpp = size > 0 ? data[0] % 8 + 1 : 1;
    std::filesystem::path path = env.Write("input.pic", data, size);
    env.Run([&] {
        CBmpImage image;
        LoadGridPicture(path, bpp, image);
        uint32_t sum = 0;
        for (int y = 0; y < image.Height; ++y)
            for (int x = 0; x < image.Width; ++x) sum += image.GetPixel(x, y);
        (void)sum;
    });
    return 0;
}
