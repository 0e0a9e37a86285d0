// Times a whole installed-font conversion (reader and output preparation),
// to set against freetype_baseline on the same face and size.
//
// font_conversion [FACE [SIZE [BPP [REPEATS]]]]   (default DejaVu Sans 16 4 5)
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "core/font_data.h"
#include "core/font_filter.h"
#include "core/general_exception.h"
#include "core/headless_pg_ctrl.h"
#include "sources/font_face.h"
#include "sources/win_font_reader.h"

int main(int argc, char** argv) {
    const std::string face = argc > 1 ? argv[1] : "DejaVu Sans";
    const int size = argc > 2 ? std::atoi(argv[2]) : 16;
    const int bpp = argc > 3 ? std::atoi(argv[3]) : 4;
    const int repeats = argc > 4 ? std::atoi(argv[4]) : 5;
    CHeadlessPgCtrl pg;
    CPgCtrlScope scope(pg);
    try {
        FontLocation location;
        if (!ResolveFontName(face, location)) {
            std::fprintf(stderr, "%s is not installed\n", face.c_str());
            return 1;
        }
        CFontFace sized(location, size);
        std::printf("font_conversion: %s = %s, %.4f pixels per em (%s)\n", face.c_str(), location.File.c_str(),
                    sized.Ppem26 / 64.0, bpp == 1 ? "mono" : "gray");
        double best = 1e30;
        std::size_t glyphs = 0;
        for (int r = 0; r < repeats; ++r) {
            const auto start = std::chrono::steady_clock::now();
            CWinFontReader reader(face, size, bpp, 0, 0, false);
            reader.CheckParameters();
            CFontData font;
            reader.Read(font, CFontFilter{});
            font.PrepareForOutput();
            glyphs = font.GlyphCount();
            const double ms =
                std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
            if (ms < best) best = ms;
        }
        std::printf("font_conversion: %zu glyphs, best of %d: %.1f ms\n", glyphs, repeats, best);
    } catch (const CGeneralException& e) {
        std::fprintf(stderr, "%s\n", e.Message.c_str());
        return 1;
    }
    return 0;
}
