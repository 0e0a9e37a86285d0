#include "glyph_sheet.h"

#include <cstdio>
#include <cstdlib>

#include <png.h>

#include "core/font_data.h"

std::filesystem::path SheetDirectory() {
    const char* dir = std::getenv("GLYPHWRIGHT_SHEET_DIR");
    return dir ? std::filesystem::path(dir) : std::filesystem::path();
}

void WriteGlyphSheet(const CFontData& font, const std::filesystem::path& png, const std::vector<uint16_t>& codes,
                     int scale) {
    std::vector<const CGlyph*> glyphs;
    if (codes.empty())
        for (const auto& g : font.GetGlyphs()) glyphs.push_back(g.get());
    else
        for (uint16_t c : codes)
            if (const CGlyph* g = font.FindGlyph(c)) glyphs.push_back(g);
    const bool vertical = font.Vertical();
    const int cw = font.CellWidth.Value + 2;
    const int ch = (vertical ? font.MaxCharHeight.Value : font.CellHeight.Value) + 2;
    const int perRow = 12, rows = (static_cast<int>(glyphs.size()) + perRow - 1) / perRow;
    const int W = perRow * cw * scale, H = std::max(1, rows) * ch * scale;
    std::vector<uint8_t> img(static_cast<std::size_t>(W) * H, 255);
    const int maxLevel = (1 << font.Bpp.Value) - 1;
    auto put = [&](int x, int y, uint8_t v) {
        for (int dy = 0; dy < scale; ++dy)
            for (int dx = 0; dx < scale; ++dx) {
                int px = x * scale + dx, py = y * scale + dy;
                if (px >= 0 && px < W && py >= 0 && py < H) img[static_cast<std::size_t>(py) * W + px] = v;
            }
    };
    for (std::size_t i = 0; i < glyphs.size(); ++i) {
        const CGlyph& g = *glyphs[i];
        const int cx = static_cast<int>(i % perRow) * cw, cy = static_cast<int>(i / perRow) * ch;
        for (int x = 0; x < cw; ++x) put(cx + x, cy + ch - 1, 200);
        for (int y = 0; y < ch; ++y) put(cx + cw - 1, cy + y, 200);
        const int w = g.Ink.Width(), h = g.Ink.Height();
        int left, top;
        if (vertical) {
            const int L = font.CellWidth.Value - font.Baseline.Value;
            left = cx + L + g.RightExtent - w;
            top = cy + std::max(0, g.TopSpace);
        } else {
            left = cx + std::max(0, g.LeftSpace);
            top = cy + font.Baseline.Value - g.Ascent;
        }
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x) {
                int v = g.Pixels[static_cast<std::size_t>(y) * w + x];
                put(left + x, top + y, static_cast<uint8_t>(255 - v * 255 / maxLevel));
            }
    }
    FILE* f = std::fopen(png.c_str(), "wb");
    if (!f) return;
    png_structp p = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(p);
    if (setjmp(png_jmpbuf(p))) {
        png_destroy_write_struct(&p, &info);
        std::fclose(f);
        return;
    }
    png_init_io(p, f);
    png_set_IHDR(p, info, W, H, 8, PNG_COLOR_TYPE_GRAY, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    png_write_info(p, info);
    for (int y = 0; y < H; ++y) png_write_row(p, img.data() + static_cast<std::size_t>(y) * W);
    png_write_end(p, nullptr);
    png_destroy_write_struct(&p, &info);
    std::fclose(f);
}
