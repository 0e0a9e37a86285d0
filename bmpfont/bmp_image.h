// A bitmap with palette in the layout of a device-independent bitmap: the
// in-memory form of a BMP file.
#pragma once

#include <cstdint>
#include <vector>

class CBmpImage {
public:
    void SetPalette(int bpp, const uint32_t* entries, uint32_t colorsUsed, uint32_t colorsImportant);
    void Create(int width, int height, int stride, const uint8_t* data, std::size_t dataBytes);
    // Pixel at column x of stored row y; throws for an unsupported Bpp.
    uint32_t GetPixel(int x, int y) const;
    // First palette index from start whose entry equals color, or -1.
    int FindColor(uint32_t color, int start) const;
    // Packs the w x h block whose first pixel is column x of stored row y.
    void ExtractRect(uint8_t* dst, int x, int y, int w, int h) const;
    // Bottom-up images: copies rows (bottom row of the block first) into the
    // block whose top picture row is y, xBytes into each row.
    void PutRows(const uint8_t* src, int xBytes, int y, int rowBytes, int rows);
    void Blit(const uint8_t* src, int xBytes, int y, int wBytes, int rows, int srcX, int srcY,
              int srcStride, int srcHeight);
    // 8-bit images: clips the block to both images, then blits it.
    void BlitClipped(const uint8_t* src, int x, int y, int w, int h, int srcX, int srcY, int srcStride,
                     int srcHeight);

    int32_t Width = 0;
    int32_t Height = 0;
    int32_t Bpp = 0;
    uint32_t ImageSize = 0;
    int32_t Stride = 0;
    std::vector<uint8_t> Pixels;
    int32_t PaletteSize = 0;
    uint32_t ColorsUsed = 0;
    uint32_t ColorsImportant = 0;
    std::vector<uint32_t> Palette;
};
