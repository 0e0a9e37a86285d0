#include "bmpfont/bmp_image.h"

#include <algorithm>
#include <cstring>

#include "core/bit_stream.h"
#include "core/general_exception.h"

void CBmpImage::SetPalette(int bpp, const uint32_t* entries, uint32_t colorsUsed, uint32_t colorsImportant) {
    Bpp = bpp;
    Palette.clear();
    PaletteSize = 0;
    if (entries && bpp <= 8) {
        ColorsUsed = colorsUsed;
        ColorsImportant = colorsImportant;
        PaletteSize = 1 << bpp;
        Palette.assign(entries, entries + PaletteSize);
    }
}

void CBmpImage::Create(int width, int height, int stride, const uint8_t* data, std::size_t dataBytes) {
    Width = width;
    Height = height;
    Stride = stride;
    ImageSize = static_cast<uint32_t>(static_cast<std::size_t>(stride) * height);
    Pixels.assign(static_cast<std::size_t>(stride) * height, 0);
    if (data) std::memcpy(Pixels.data(), data, std::min(dataBytes, Pixels.size()));
}

uint32_t CBmpImage::GetPixel(int x, int y) const {
    const uint8_t* row = Pixels.data() + static_cast<std::size_t>(y) * Stride;
    switch (Bpp) {
    case 1: return (row[x / 8] >> (7 - x % 8)) & 1;
    case 4: return (x % 2 == 0) ? (row[x / 2] >> 4) : (row[x / 2] & 0x0F);
    case 8: return row[x];
    case 16: return (uint32_t(row[x * 2]) << 8) | row[x * 2 + 1];
    case 24: return (uint32_t(row[x * 3]) << 16) | (uint32_t(row[x * 3 + 1]) << 8) | row[x * 3 + 2];
    case 32:
        return (uint32_t(row[x * 4]) << 24) | (uint32_t(row[x * 4 + 1]) << 16) | (uint32_t(row[x * 4 + 2]) << 8) |
               row[x * 4 + 3];
    default: ThrowError("Internal Error:\n bpp == %d", Bpp);
    }
}

int CBmpImage::FindColor(uint32_t color, int start) const {
    for (int i = std::max(start, 0); i < PaletteSize; ++i)
        if (Palette[static_cast<std::size_t>(i)] == color) return i;
    return -1;
}

void CBmpImage::ExtractRect(uint8_t* dst, int x, int y, int w, int h) const {
    CBitWriter wr;
    wr.Start(dst);
    for (int row = 0; row < h; ++row) {
        const uint8_t* src = Pixels.data() + static_cast<std::size_t>(y + row) * Stride;
        long long bit = static_cast<long long>(x) * Bpp;
        CBitReader r;
        r.Start(src + bit / 8);
        if (bit % 8) {
            r.Current = *r.In++;
            r.BitsLeft = 8 - static_cast<int>(bit % 8);
        }
        for (int i = 0; i < w; ++i) {
            wr.WriteValue(Bpp, r.ReadValue(Bpp));
            wr.MarkPending();
        }
    }
    wr.Flush();
}

void CBmpImage::PutRows(const uint8_t* src, int xBytes, int y, int rowBytes, int rows) {
    int first = Height - y - rows;
    for (int i = 0; i < rows; ++i)
        std::memcpy(Pixels.data() + static_cast<std::size_t>(first + i) * Stride + xBytes,
                    src + static_cast<std::size_t>(i) * rowBytes, static_cast<std::size_t>(rowBytes));
}

void CBmpImage::Blit(const uint8_t* src, int xBytes, int y, int wBytes, int rows, int srcX, int srcY, int srcStride,
                     int srcHeight) {
    int first = Height - y - rows;
    int srcFirst = srcHeight - rows - srcY;
    for (int i = 0; i < rows; ++i)
        std::memcpy(Pixels.data() + static_cast<std::size_t>(first + i) * Stride + xBytes,
                    src + static_cast<std::size_t>(srcFirst + i) * srcStride + srcX, static_cast<std::size_t>(wBytes));
}

void CBmpImage::BlitClipped(const uint8_t* src, int x, int y, int w, int h, int srcX, int srcY, int srcStride,
                            int srcHeight) {
    w = std::min({w, Width - x, srcStride - srcX});
    h = std::min({h, Height - y, srcHeight - srcY});
    if (w >= 1 && h >= 1) Blit(src, x, y, w, h, srcX, srcY, srcStride, srcHeight);
}
