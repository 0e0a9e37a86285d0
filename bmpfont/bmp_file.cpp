#include "bmpfont/bmp_file.h"

#include <cstring>
#include <vector>

#include "bmpfont/bmp_header.h"
#include "core/general_exception.h"
#include "core/little_endian.h"

namespace {

[[noreturn]] void ThrowBroken(const CBinaryFile& file) { ThrowError("Input file(%s) is broken.", file.Path()); }

void ReadExactly(CBinaryFile& file, void* dst, uint64_t bytes) {
    if (file.Read(dst, static_cast<uint32_t>(bytes)) != bytes) ThrowBroken(file);
}

}  // namespace

void CheckBmpHeader(const CBinaryFile& file, const uint8_t* fileHeader, const uint8_t* infoHeader) {
    const BmpHeader h = ParseBmpHeader(fileHeader, infoHeader);
    if (h.Magic != BmpMagic || h.Reserved1 != 0 || h.Reserved2 != 0 ||
        h.PixelOffset < BmpFileHeaderBytes + BmpInfoHeaderBytes || h.InfoSize < BmpInfoHeaderBytes)
        ThrowError("Input file(%s) is not bmp file.", file.Path());
    if (h.Width < 1 || h.Height == 0)
        ThrowError("Input file(%s) has illegal image size(%d x %d).", file.Path(), h.Width, h.Height);
    if (h.Bpp != 1 && h.Bpp != 4 && h.Bpp != 8 && h.Bpp != 16 && h.Bpp != 24 && h.Bpp != 32)
        ThrowError("Input file(%s) has unsupported bpp(%d).", file.Path(), h.Bpp);
    if (h.Compression != 0 || h.Planes != 1)
        ThrowError("Input file(%s) is unsupported BMP.", file.Path());
}

void LoadBmp(CBinaryFile& file, CBmpImage& image) {
    file.Open(CBinaryFile::Mode::Read);
    uint64_t fileSize = file.Size();
    uint8_t fileHeader[BmpFileHeaderBytes] = {};
    uint8_t info[BmpInfoHeaderBytes] = {};
    uint32_t got = file.Read(fileHeader, sizeof fileHeader);
    if (got == sizeof fileHeader) got += file.Read(info, sizeof info);
    // A cut-off header is tested as far as it goes (the zeros fail it), and is
    // broken if it passes.
    CheckBmpHeader(file, fileHeader, info);
    if (got != BmpFileHeaderBytes + BmpInfoHeaderBytes) ThrowBroken(file);
    const BmpHeader h = ParseBmpHeader(fileHeader, info);

    // Every size is compared with the file before anything is allocated, so a
    // header cannot ask for more memory than the file could fill.
    std::vector<uint32_t> palette;
    if (h.Bpp <= 8) {
        uint64_t paletteAt = uint64_t(BmpFileHeaderBytes) + h.InfoSize;  // after the whole information header
        // A short palette (colours used below 2^bpp) is all the file holds;
        // the entries it does not declare stay 0.
        uint64_t entries = h.ColorsUsed > 0 && h.ColorsUsed < (1u << h.Bpp) ? h.ColorsUsed : 1u << h.Bpp;
        uint64_t paletteBytes = 4 * entries;
        if (paletteAt + paletteBytes > fileSize) ThrowBroken(file);
        std::vector<uint8_t> raw(paletteBytes);
        file.Seek(static_cast<uint32_t>(paletteAt));
        ReadExactly(file, raw.data(), paletteBytes);
        palette.assign(std::size_t(1) << h.Bpp, 0);
        for (std::size_t i = 0; i < entries; ++i) palette[i] = GetU32(raw.data() + 4 * i);
    }
    uint64_t rows = h.Height < 0 ? uint64_t(-int64_t(h.Height)) : uint64_t(h.Height);
    uint64_t stride = ((uint64_t(h.Bpp) * uint64_t(h.Width) + 31) / 32) * 4;
    uint64_t bytes = stride * rows;
    if (uint64_t(h.PixelOffset) + bytes > fileSize || stride > 0x7FFFFFFF || rows > 0x7FFFFFFF) ThrowBroken(file);
    std::vector<uint8_t> data(bytes);
    file.Seek(h.PixelOffset);
    ReadExactly(file, data.data(), bytes);
    if (h.Height > 0) {
        // Bottom-up in the file: turn it so that row 0 is the top.
        std::vector<uint8_t> row(stride);
        for (uint64_t i = 0, j = rows - 1; i < j; ++i, --j) {
            std::memcpy(row.data(), data.data() + i * stride, stride);
            std::memcpy(data.data() + i * stride, data.data() + j * stride, stride);
            std::memcpy(data.data() + j * stride, row.data(), stride);
        }
    }
    image.SetPalette(h.Bpp, palette.empty() ? nullptr : palette.data(), h.ColorsUsed, h.ColorsImportant);
    image.Create(h.Width, static_cast<int>(rows), static_cast<int>(stride), data.data(), data.size());
    file.Close();
}

void SaveBmp(CBinaryFile& file, const CBmpImage& image) {
    uint32_t entries = 1u << image.Bpp;
    uint32_t paletteBytes = 4 * entries;
    uint8_t fileHeader[BmpFileHeaderBytes] = {};
    std::vector<uint8_t> info(BmpInfoHeaderBytes + paletteBytes, 0);
    PutU16(fileHeader, BmpMagic);
    PutU32(fileHeader + 2, BmpFileHeaderBytes + BmpInfoHeaderBytes + paletteBytes + image.ImageSize);
    PutU32(fileHeader + 10, BmpFileHeaderBytes + BmpInfoHeaderBytes + paletteBytes);
    PutU32(info.data(), BmpInfoHeaderBytes);
    PutU32(info.data() + 4, static_cast<uint32_t>(image.Width));
    PutU32(info.data() + 8, static_cast<uint32_t>(image.Height));
    PutU16(info.data() + 12, 1);
    PutU16(info.data() + 14, 8);
    PutU32(info.data() + 20, image.ImageSize);
    PutU32(info.data() + 24, 2834);
    PutU32(info.data() + 28, 2834);
    for (uint32_t i = 0; i < entries && i < image.Palette.size(); ++i)
        PutU32(info.data() + BmpInfoHeaderBytes + 4 * i, image.Palette[i]);

    file.Open(CBinaryFile::Mode::Write);
    file.Write(fileHeader, sizeof fileHeader);
    file.Write(info.data(), static_cast<uint32_t>(info.size()));
    file.Write(image.Pixels.data(), image.ImageSize);
    file.Close();
}
