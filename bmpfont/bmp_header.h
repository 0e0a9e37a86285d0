// The fields of a BMP file's 14-byte file header and its information header
// that the readers look at, read in one place.
#pragma once

#include <cstdint>

struct BmpHeader {
    uint16_t Magic;  // "BM"
    uint16_t Reserved1, Reserved2;
    uint32_t PixelOffset;
    uint32_t InfoSize;
    int32_t Width;
    int32_t Height;  // negative: rows stored top row first
    int Planes;
    int Bpp;
    uint32_t Compression;
    uint32_t ColorsUsed;
    uint32_t ColorsImportant;
};

inline constexpr uint16_t BmpMagic = 0x4D42;
inline constexpr uint32_t BmpFileHeaderBytes = 14;
inline constexpr uint32_t BmpInfoHeaderBytes = 40;

// fileHeader: 14 bytes; info: the first 40 bytes of the information header.
BmpHeader ParseBmpHeader(const uint8_t* fileHeader, const uint8_t* info);
