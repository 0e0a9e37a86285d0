// The glyph-grid reader: picture bytes against one fixed glyph order (4 x 2
// cells with a space and an empty cell), read at a low and a full depth.
#include "bmpfont/bmp_font_reader.h"
#include "core/font_data.h"
#include "core/font_filter.h"
#include "fuzz/fuzz_support.h"

extern const char* const FuzzGridOrder;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    CFuzzEnvironment& env = FuzzEnvironment();
    static const std::filesystem::path order = env.Write("grid.xlor", FuzzGridOrder);
    std::filesystem::path path = env.Write("grid.bmp", data, size);
    for (int bpp : {2, 8})
        env.Run([&] {
            CBmpFontReader reader(path, order, bpp);
            reader.CheckParameters();
            CFontData font;
            CFontFilter all;
            reader.Read(font, all);
            font.SortGlyphs();
        });
    return 0;
}
