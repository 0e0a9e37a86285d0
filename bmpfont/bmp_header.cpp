#include "bmpfont/bmp_header.h"

#include "core/little_endian.h"

BmpHeader ParseBmpHeader(const uint8_t* fileHeader, const uint8_t* info) {
    BmpHeader h;
    h.Magic = GetU16(fileHeader);
    h.Reserved1 = GetU16(fileHeader + 6);
    h.Reserved2 = GetU16(fileHeader + 8);
    h.PixelOffset = GetU32(fileHeader + 10);
    h.InfoSize = GetU32(info);
    h.Width = static_cast<int32_t>(GetU32(info + 4));
    h.Height = static_cast<int32_t>(GetU32(info + 8));
    h.Planes = GetU16(info + 12);
    h.Bpp = GetU16(info + 14);
    h.Compression = GetU32(info + 16);
    h.ColorsUsed = GetU32(info + 32);
    h.ColorsImportant = GetU32(info + 36);
    return h;
}
