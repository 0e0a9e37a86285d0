#include "bmpfont/grid_colors.h"

#include <algorithm>
#include <unordered_map>

#include "bmpfont/bmp_font_layout.h"
#include "bmpfont/bmp_image.h"

int ColorDistance(uint32_t a, uint32_t b) {
    int d = 0;
    for (int shift : {0, 8, 16}) {
        int x = static_cast<int>((a >> shift) & 0xFF) - static_cast<int>((b >> shift) & 0xFF);
        d += x * x;
    }
    return d;
}

namespace {

// The grid palette's colour that a colour stands for: an exact match first,
// else the nearest entry. Returns the palette index.
class CGridColorMap {
public:
    explicit CGridColorMap(int fontBpp) : Entries(GridPalette(fontBpp)), Usable(std::min((1 << fontBpp) + 1, 256)) {}
    uint8_t IndexOf(uint32_t rgb) const {
        rgb &= 0x00FFFFFF;
        int best = 0, bestDistance = ColorDistance(rgb, Entries[0]);
        for (int i = 0; i < Usable && bestDistance > 0; ++i) {
            int d = ColorDistance(rgb, Entries[static_cast<std::size_t>(i)]);
            if (d < bestDistance) best = i, bestDistance = d;
        }
        return static_cast<uint8_t>(best);
    }
    const std::vector<uint32_t>& Palette() const { return Entries; }

private:
    std::vector<uint32_t> Entries;  // all 256, as the writer fills them
    int Usable;                     // white, the greys, black and the grid colour
};

}  // namespace

void MapToGridPicture(const CColorPixels& pixels, int fontBpp, CBmpImage& image) {
    CGridColorMap map(fontBpp);
    image.SetPalette(8, map.Palette().data(), 0, 0);
    int stride = (pixels.Width + 3) & ~3;
    image.Create(pixels.Width, pixels.Height, stride, nullptr, 0);
    // Editors' pictures hold few colours: each is looked up once.
    std::unordered_map<uint32_t, uint8_t> known;
    uint32_t lastRgb = 0xFFFFFFFF;  // no colour: the first pixel is looked up
    uint8_t lastIndex = 0;
    for (int y = 0; y < pixels.Height; ++y)
        for (int x = 0; x < pixels.Width; ++x) {
            uint32_t rgb = pixels.Rgb[static_cast<std::size_t>(y) * pixels.Width + x] & 0x00FFFFFF;
            if (rgb != lastRgb) {
                auto it = known.find(rgb);
                if (it == known.end()) it = known.emplace(rgb, map.IndexOf(rgb)).first;
                lastRgb = rgb;
                lastIndex = it->second;
            }
            image.Pixels[static_cast<std::size_t>(y) * stride + x] = lastIndex;
        }
}
