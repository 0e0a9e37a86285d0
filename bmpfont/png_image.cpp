#include "bmpfont/png_image.h"

#include <png.h>

#include <algorithm>
#include <cstring>

#include "bmpfont/bmp_image.h"
#include "core/general_exception.h"
#include "preview/png_writer.h"

bool IsPng(const std::vector<uint8_t>& bytes) {
    static const uint8_t signature[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    return bytes.size() >= 8 && std::memcmp(bytes.data(), signature, 8) == 0;
}

CColorPixels DecodePng(const std::vector<uint8_t>& bytes, const std::filesystem::path& path) {
    png_image image;
    std::memset(&image, 0, sizeof image);
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()))
        ThrowError("Input file(%s) is broken PNG(%s).", path, image.message);
    image.format = PNG_FORMAT_RGBA;
    if (uint64_t(image.width) * image.height > uint64_t(MaxColorPixels)) {
        png_image_free(&image);
        ThrowError("Input file(%s) is broken PNG(%s).", path, "picture too large");
    }
    CColorPixels out;
    out.Width = static_cast<int>(image.width);
    out.Height = static_cast<int>(image.height);
    out.Rgb.resize(static_cast<std::size_t>(out.Width) * out.Height);
    // The RGBA bytes land in the colours' own storage (4 bytes a pixel) and
    // each pixel's bytes become its colour in place.
    uint8_t* rgba = reinterpret_cast<uint8_t*>(out.Rgb.data());
    if (!png_image_finish_read(&image, nullptr, rgba, 0, nullptr))
        ThrowError("Input file(%s) is broken PNG(%s).", path, image.message);
    for (std::size_t i = 0; i < out.Rgb.size(); ++i) {
        const uint8_t* p = rgba + 4 * i;
        uint32_t a = p[3], rgb = 0;
        for (int c = 0; c < 3; ++c) rgb = (rgb << 8) | ((p[c] * a + 255 * (255 - a) + 127) / 255);
        out.Rgb[i] = rgb;
    }
    return out;
}

namespace {

constexpr char OrderKeyword[] = "glyphwright order";

uint32_t Be32(const uint8_t* p) { return uint32_t(p[0]) << 24 | uint32_t(p[1]) << 16 | uint32_t(p[2]) << 8 | p[3]; }

}  // namespace

std::string PngOrderName(const std::vector<uint8_t>& bytes) {
    // Chunks after the signature: length, type, data, CRC.
    for (std::size_t at = 8; at + 12 <= bytes.size();) {
        const uint32_t length = Be32(&bytes[at]);
        if (length > bytes.size() - at - 12) break;
        const uint8_t* type = &bytes[at + 4];
        const char* data = reinterpret_cast<const char*>(&bytes[at + 8]);
        if (std::memcmp(type, "IDAT", 4) == 0 || std::memcmp(type, "IEND", 4) == 0) break;
        const std::size_t keyLength = sizeof OrderKeyword;  // with its zero separator
        if (std::memcmp(type, "tEXt", 4) == 0 && length >= keyLength && std::memcmp(data, OrderKeyword, keyLength) == 0)
            return std::string(data + keyLength, length - keyLength);
        at += 12 + std::size_t(length);
    }
    return {};
}

void SaveIndexedPng(const std::filesystem::path& path, const CBmpImage& picture, const std::string& orderName) {
    CPngRows rows;
    rows.Width = picture.Width;
    rows.Height = picture.Height;
    uint8_t top = 0;
    for (int y = picture.Height - 1; y >= 0; --y) {
        const uint8_t* row = picture.Pixels.data() + static_cast<std::size_t>(y) * picture.Stride;
        rows.Rows.push_back(row);
        top = std::max(top, *std::max_element(row, row + picture.Width));
    }
    rows.Palette.assign(picture.Palette.begin(),
                        picture.Palette.begin() + std::min<std::size_t>(picture.Palette.size(), top + 1u));
    if (!orderName.empty()) rows.Text.push_back({OrderKeyword, orderName});
    WritePngRows(path, rows);
}
