#include "bmpfont/bmp_decoders.h"

#include <algorithm>
#include <bit>

#include "bmpfont/bmp_header.h"
#include "core/general_exception.h"

namespace {

enum : uint32_t { Uncompressed = 0, Rle8 = 1, Rle4 = 2, BitFields = 3 };

uint32_t Get(const std::vector<uint8_t>& b, std::size_t at, int bytes) {
    uint32_t v = 0;
    for (int i = 0; i < bytes; ++i) v |= uint32_t(at + i < b.size() ? b[at + i] : 0) << (8 * i);
    return v;
}

// The header as far as the bytes go; missing bytes read as zeros.
BmpHeader Parse(const std::vector<uint8_t>& b) {
    uint8_t head[BmpFileHeaderBytes + BmpInfoHeaderBytes] = {};
    std::copy_n(b.begin(), std::min(b.size(), sizeof head), head);
    return ParseBmpHeader(head, head + BmpFileHeaderBytes);
}

// One colour channel through its mask, scaled to 8 bits.
uint32_t Channel(uint32_t pixel, uint32_t mask) {
    if (mask == 0) return 0;
    int shift = std::countr_zero(mask);
    int bits = std::popcount(mask);
    uint32_t v = (pixel & mask) >> shift;
    uint32_t max = bits >= 32 ? 0xFFFFFFFFu : (1u << bits) - 1;
    return static_cast<uint32_t>((uint64_t(v) * 255 + max / 2) / max);
}

class CDecoder {
public:
    CDecoder(const std::vector<uint8_t>& bytes, const std::filesystem::path& path)
        : B(bytes), Path(path), H(Parse(bytes)) {}

    CColorPixels Decode() {
        Rows = H.Height < 0 ? -static_cast<int64_t>(H.Height) : H.Height;
        if (H.Width < 1 || Rows < 1 || int64_t(H.Width) * Rows > MaxColorPixels) Broken();
        Out.Width = H.Width;
        Out.Height = static_cast<int>(Rows);
        Out.Rgb.assign(static_cast<std::size_t>(H.Width) * Rows, 0);
        if (H.Bpp <= 8) {
            ReadPalette();
            Runs();
        } else {
            Direct();
        }
        return std::move(Out);
    }

private:
    [[noreturn]] void Broken() const { ThrowError("Input file(%s) is broken.", Path); }

    // Stored row i (file order) is picture row i from the bottom for a positive height.
    uint32_t& At(int x, int64_t storedRow) {
        int64_t y = H.Height > 0 ? Rows - 1 - storedRow : storedRow;
        return Out.Rgb[static_cast<std::size_t>(y * H.Width + x)];
    }

    void ReadPalette() {
        uint32_t count = H.ColorsUsed > 0 && H.ColorsUsed < (1u << H.Bpp) ? H.ColorsUsed : 1u << H.Bpp;
        std::size_t at = 14 + std::size_t(H.InfoSize);
        if (at + 4 * count > B.size()) Broken();
        Palette.assign(256, 0);
        for (uint32_t i = 0; i < count; ++i) Palette[i] = Get(B, at + 4 * i, 4) & 0x00FFFFFF;
    }

    void Direct() {
        uint32_t r = 0x00FF0000, g = 0x0000FF00, b = 0x000000FF, a = 0;
        if (H.Bpp == 16) r = 0x7C00, g = 0x03E0, b = 0x001F;
        if (H.Compression == BitFields) {
            r = Get(B, 54, 4), g = Get(B, 58, 4), b = Get(B, 62, 4);
            if (H.InfoSize >= 56) a = Get(B, 66, 4);
        }
        int bytesPerPixel = H.Bpp / 8;
        std::size_t stride = ((std::size_t(H.Bpp) * H.Width + 31) / 32) * 4;
        if (std::size_t(H.PixelOffset) + stride * Rows > B.size()) Broken();
        // An alpha channel that is zero everywhere is unused padding.
        bool alpha = false;
        for (int64_t row = 0; row < Rows && a && !alpha; ++row)
            for (int x = 0; x < H.Width && !alpha; ++x)
                alpha = (Get(B, H.PixelOffset + row * stride + std::size_t(x) * bytesPerPixel, bytesPerPixel) & a) != 0;
        for (int64_t row = 0; row < Rows; ++row)
            for (int x = 0; x < H.Width; ++x) {
                uint32_t p = Get(B, H.PixelOffset + row * stride + std::size_t(x) * bytesPerPixel, bytesPerPixel);
                uint32_t rgb[3] = {Channel(p, r), Channel(p, g), Channel(p, b)};
                if (alpha) {
                    // Transparent parts are paper.
                    uint32_t al = Channel(p, a);
                    for (uint32_t& c : rgb) c = (c * al + 255 * (255 - al) + 127) / 255;
                }
                At(x, row) = (rgb[0] << 16) | (rgb[1] << 8) | rgb[2];
            }
    }

    // Run-length data, 8 or 4 bits a pixel; pixels it skips keep index 0.
    void Runs() {
        for (int64_t row = 0; row < Rows; ++row)
            for (int x = 0; x < H.Width; ++x) At(x, row) = Palette[0];
        std::size_t p = H.PixelOffset;
        int x = 0;
        int64_t row = 0;
        // Positions past the picture are dropped and stay there, so no count overflows.
        auto put = [&](uint32_t index) {
            if (x < H.Width && row < Rows) At(x, row) = Palette[index];
            x = std::min(x + 1, H.Width);
        };
        auto byte = [&]() -> uint32_t {
            if (p >= B.size()) Broken();
            return B[p++];
        };
        bool four = H.Compression == Rle4;
        // A missing end-of-picture code at the end of the data is forgiven.
        while (row < Rows && p + 1 < B.size()) {
            uint32_t count = byte(), value = byte();
            if (count > 0) {
                for (uint32_t i = 0; i < count; ++i) put(four ? (i % 2 ? value & 0x0F : value >> 4) : value);
            } else if (value == 0) {
                x = 0, ++row;
            } else if (value == 1) {
                break;
            } else if (value == 2) {
                x = std::min(x + static_cast<int>(byte()), H.Width);
                row += byte();
            } else {
                uint32_t read = four ? (value + 1) / 2 : value;
                if (p + read > B.size()) Broken();
                for (uint32_t i = 0; i < value; ++i) {
                    uint32_t v = B[p + (four ? i / 2 : i)];
                    put(four ? (i % 2 ? v & 0x0F : v >> 4) : v);
                }
                p += read + (read % 2);  // absolute runs end on a 16-bit boundary
            }
        }
    }

    const std::vector<uint8_t>& B;
    const std::filesystem::path& Path;
    BmpHeader H;
    int64_t Rows = 0;
    std::vector<uint32_t> Palette;
    CColorPixels Out;
};

}  // namespace

bool IsColorBmp(const std::vector<uint8_t>& b) {
    const BmpHeader h = Parse(b);
    if (b.size() < BmpFileHeaderBytes + BmpInfoHeaderBytes || h.Magic != BmpMagic || h.Reserved1 != 0 ||
        h.Reserved2 != 0 || h.InfoSize < BmpInfoHeaderBytes || h.PixelOffset < BmpFileHeaderBytes + BmpInfoHeaderBytes)
        return false;
    if (h.Planes != 1) return false;
    switch (h.Compression) {
        case Uncompressed:
            return h.Bpp == 16 || h.Bpp == 24 || h.Bpp == 32;
        case BitFields:
            return h.Bpp == 16 || h.Bpp == 32;
        case Rle8:
            return h.Bpp == 8;
        case Rle4:
            return h.Bpp == 4;
        default:
            return false;
    }
}

CColorPixels DecodeColorBmp(const std::vector<uint8_t>& bytes, const std::filesystem::path& path) {
    return CDecoder(bytes, path).Decode();
}
