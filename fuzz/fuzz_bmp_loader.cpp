// The BMP loader on arbitrary file bytes.
#include "bmpfont/bmp_file.h"
#include "bmpfont/bmp_image.h"
#include "fuzz/fuzz_support.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    CFuzzEnvironment& env = FuzzEnvironment();
    std::filesystem::path path = env.Write("input.bmp", data, size);
    env.Run([&] {
        CBinaryFile file(path);
        CBmpImage image;
        LoadBmp(file, image);
        // Touch every pixel so that a size the loader got wrong shows.
        uint32_t sum = 0;
        for (int y = 0; y < image.Height; ++y)
            for (int x = 0; x < image.Width; ++x) sum += image.GetPixel(x, y);
        (void)sum;
    });
    return 0;
}
