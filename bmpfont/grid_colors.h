// Pictures whose pixels are colours rather than palette indices (true-colour
// and run-length BMPs, PNG), turned into the 8-bit grid picture the reader
// expects by mapping each colour to the writer's palette for the font's depth.
#pragma once

#include <cstdint>
#include <vector>

class CBmpImage;

// Largest colour picture decoded: far above any grid, a bounded allocation.
inline constexpr long long MaxColorPixels = 1ll << 25;

// Colours as 0x00RRGGBB, top row first.
struct CColorPixels {
    int Width = 0;
    int Height = 0;
    std::vector<uint32_t> Rgb;
};

// Squared distance of two 0x00RRGGBB colours.
int ColorDistance(uint32_t a, uint32_t b);

// An 8-bit picture with the grid palette, top row first: each colour becomes
// the palette entry (white, the greys, black or the grid colour) it matches
// exactly, else the nearest.
void MapToGridPicture(const CColorPixels& pixels, int fontBpp, CBmpImage& image);
