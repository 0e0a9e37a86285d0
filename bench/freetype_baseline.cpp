// A bare FreeType loop: load and render every BMP code a font maps, nothing
// else. The yardstick for the font conversion's own overhead.
//
// freetype_baseline FONT_FILE PIXELS_PER_EM mono|gray [REPEATS]
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <ft2build.h>
#include FT_FREETYPE_H

int main(int argc, char** argv) {
    if (argc < 4) {
        std::fprintf(stderr, "usage: %s FONT_FILE PIXELS_PER_EM mono|gray [REPEATS]\n", argv[0]);
        return 2;
    }
    const double ppem = std::atof(argv[2]);
    const bool mono = std::strcmp(argv[3], "mono") == 0;
    const int repeats = argc > 4 ? std::atoi(argv[4]) : 5;
    const FT_Int32 flags = FT_LOAD_RENDER | (mono ? FT_LOAD_TARGET_MONO : FT_LOAD_TARGET_NORMAL | FT_LOAD_NO_BITMAP);
    double best = 1e30;
    long glyphs = 0, inkBytes = 0;
    for (int r = 0; r < repeats; ++r) {
        const auto start = std::chrono::steady_clock::now();
        FT_Library lib = nullptr;
        FT_Face face = nullptr;
        if (FT_Init_FreeType(&lib) || FT_New_Face(lib, argv[1], 0, &face)) {
            std::fprintf(stderr, "cannot open %s\n", argv[1]);
            return 1;
        }
        FT_Set_Char_Size(face, 0, static_cast<FT_F26Dot6>(ppem * 64 + 0.5), 72, 72);
        glyphs = 0;
        inkBytes = 0;
        for (FT_ULong c = 0; c < 0xFFFF; ++c) {
            const FT_UInt index = FT_Get_Char_Index(face, c);
            if (!index || FT_Load_Glyph(face, index, flags)) continue;
            ++glyphs;
            inkBytes += static_cast<long>(face->glyph->bitmap.rows) * face->glyph->bitmap.pitch;
        }
        FT_Done_Face(face);
        FT_Done_FreeType(lib);
        const double ms = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
        if (ms < best) best = ms;
    }
    std::printf("freetype_baseline: %ld glyphs, %ld bitmap bytes, best of %d: %.1f ms\n", glyphs, inkBytes, repeats,
                best);
    return 0;
}
