#include "core/grey_levels.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "core/bit_stream.h"
#include "core/font_data.h"

void RescaleGlyphLevels(CGlyph& glyph, int fromBpp, int toBpp) {
    const int stored = glyph.Bpp;
    if (fromBpp == toBpp || fromBpp < 1 || fromBpp > 8 || toBpp < 1 || toBpp > 8 || stored < 1 || stored > 8) return;
    const long long w = glyph.Ink.Width(), h = glyph.Ink.Height();
    std::size_t count = w > 0 && h > 0 ? static_cast<std::size_t>(w * h) : 0;
    // A short buffer keeps its pixels; the missing ones stay background.
    if (count * static_cast<std::size_t>(stored) > glyph.Pixels.size() * 8)
        count = glyph.Pixels.size() * 8 / static_cast<std::size_t>(stored);
    const uint32_t fromMax = (1u << fromBpp) - 1, toMax = (1u << toBpp) - 1;
    glyph.Bpp = stored >= toBpp ? stored : toBpp;
    std::vector<uint8_t> out(glyph.PixelBytes(), 0);
    for (std::size_t i = 0; i < count; ++i) {
        uint32_t v = std::min(PeekBits(glyph.Pixels.data(), i * stored, stored), fromMax);
        OrBits(out.data(), i * glyph.Bpp, glyph.Bpp, (v * toMax + fromMax / 2) / fromMax);
    }
    glyph.Pixels = std::move(out);
}
