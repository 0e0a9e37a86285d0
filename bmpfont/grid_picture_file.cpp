#include "bmpfont/grid_picture_file.h"

#include <algorithm>
#include <cctype>
#include <string>

#include "bmpfont/bmp_decoders.h"
#include "bmpfont/bmp_file.h"
#include "bmpfont/grid_colors.h"
#include "bmpfont/png_image.h"
#include "bmpfont/bmp_image.h"
#include "zgly/binary_file.h"

namespace {

// Enough of the file to tell the formats apart.
std::vector<uint8_t> ReadHead(const std::filesystem::path& path) {
    CBinaryFile file(path);
    file.Open(CBinaryFile::Mode::Read);
    std::vector<uint8_t> head(64);
    head.resize(file.Read(head.data(), static_cast<uint32_t>(head.size())));
    file.Close();
    return head;
}

bool IsPngPath(const std::filesystem::path& path) {
    std::string ext = path.extension().string();
    std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return std::tolower(c); });
    return ext == ".png";
}

}  // namespace

void LoadGridPicture(const std::filesystem::path& path, int fontBpp, CBmpImage& image, GridPictureSource* source) {
    fontBpp = std::clamp(fontBpp, 1, 8);
    std::vector<uint8_t> head = ReadHead(path);
    if (!IsPng(head) && !IsColorBmp(head)) {
        // Palette BMPs, and everything that is no picture at all, take the
        // BMP loader with its messages.
        CBinaryFile file(path);
        LoadBmp(file, image);
        if (source) *source = GridPictureSource{};
        return;
    }
    std::vector<uint8_t> bytes = ReadWholeFile(path);
    CColorPixels pixels = IsPng(bytes) ? DecodePng(bytes, path) : DecodeColorBmp(bytes, path);
    MapToGridPicture(pixels, fontBpp, image);
    if (source) {
        source->Mapped = true;
        source->Colors = std::move(pixels.Rgb);
        if (IsPng(bytes)) source->OrderName = PngOrderName(bytes);
    }
}

void SaveGridPicture(const std::filesystem::path& path, const CBmpImage& picture, const std::string& orderName) {
    if (IsPngPath(path)) {
        SaveIndexedPng(path, picture, orderName);
        return;
    }
    CBinaryFile file(path);
    SaveBmp(file, picture);
}
