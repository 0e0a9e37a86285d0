// Grey levels: FreeType's anti-aliased rendering reduced to 17 levels, halved
// for soft anti-aliasing, then scaled to the wanted number of levels.
#include <algorithm>
#include <cstring>

#include "sources/letterer.h"

void HalveImage(uint8_t* image, RenderedCell& cell) {
    const int s = cell.Baseline, H = cell.Height, W = cell.Width;
    const bool oddTop = (s % 2) != 0;
    const int rows = (oddTop && ((H - s) % 2) != 0) ? H + 1 : H;
    const int nw = (W + 1) / 2, nh = (rows + 1) / 2;
    cell.Width = nw;
    cell.Height = nh;
    cell.OriginX = cell.OriginX / 2;
    cell.Advance = (cell.Advance + 1) / 2;
    cell.Baseline = (s + 1) / 2;
    if (nw == 0 || nh == 0) return;
    auto at = [&](int x, int y) -> int {
        return (x < W && y >= 0 && y < H) ? image[static_cast<std::size_t>(y) * W + x] : 0;
    };
    // Reads never fall behind the write position, so the halving works in place.
    for (int y = 0; y < nh; ++y) {
        const int r0 = oddTop ? 2 * y - 1 : 2 * y;
        for (int x = 0; x < nw; ++x) {
            const int sum = at(2 * x, r0) + at(2 * x + 1, r0) + at(2 * x, r0 + 1) + at(2 * x + 1, r0 + 1);
            image[static_cast<std::size_t>(y) * nw + x] = static_cast<uint8_t>((sum + 2) / 4);
        }
    }
}

void ScaleLevels(uint8_t* image, std::size_t count, int maxLevel) {
    const int k = maxLevel ? 17 / (2 * maxLevel) : 0;
    uint8_t table[256];
    for (int v = 0; v < 256; ++v) table[v] = static_cast<uint8_t>(((v + k) * maxLevel) / 16);
    for (std::size_t i = 0; i < count; ++i) image[i] = table[image[i]];
}

void CVectorLetterer::Prepare(const FontRequest& request) {
    // Soft anti-aliasing renders at double height and halves afterwards.
    OpenFace(request, SoftAA ? request.Size * 2 : request.Size);
}

bool CVectorLetterer::MakeGlyph(CGlyph& glyph, char16_t code) {
    if (!HasGlyph(code)) return false;
    FT_Face face = Face->Face();
    RenderedCell cell;
    Bitmap b;
    const FT_Int32 flags = FT_LOAD_TARGET_NORMAL | (Face->Scalable() ? FT_LOAD_NO_BITMAP : 0);
    if (Render(code, flags, b)) {
        Image.resize(static_cast<std::size_t>(b.Width) * b.Rows);
        for (std::size_t i = 0; i < Image.size(); ++i) Image[i] = static_cast<uint8_t>((b.Pixels[i] * 16 + 127) / 255);
        cell.Width = b.Width;
        cell.Height = b.Rows;
        cell.OriginX = b.Left;
        cell.Advance = b.Advance;
        cell.Baseline = b.Top;
    } else {
        // No outline to render: an ink-less character with the advance alone.
        FT_Fixed advance = 0;
        if (FT_Get_Advance(face, FT_Get_Char_Index(face, code), FT_LOAD_DEFAULT, &advance) != 0) return false;
        const auto px = static_cast<int16_t>((advance + 0x8000) >> 16);
        Image.clear();
        cell.OriginX = px;
        cell.Advance = px;
    }
    cell.MaxLevel = MaxLevel();
    if (SoftAA) HalveImage(Image.data(), cell);
    ScaleLevels(Image.data(), static_cast<std::size_t>(cell.Width) * cell.Height, cell.MaxLevel);
    BuildGlyph(glyph, Image.data(), cell);
    return true;
}
