// Saves an RGB picture as a PNG file through the binary file layer, so a
// failed save leaves any old file untouched.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

struct CRgbImage;

// Rows of 8-bit pixels top row first: RGB triples, or palette indices when
// Palette (0x00RRGGBB entries) is not empty.
struct CPngRows {
    int Width = 0;
    int Height = 0;
    std::vector<const uint8_t*> Rows;
    std::vector<uint32_t> Palette;
    // tEXt chunks: keyword and Latin-1 text.
    std::vector<std::pair<std::string, std::string>> Text;
};

// Throws "Can not write to a file (%s)." style messages of the file layer, or
// "Internal Error:" when the PNG library refuses the picture.
void WritePng(const std::filesystem::path& path, const CRgbImage& image);
// The same for RGB or indexed rows.
void WritePngRows(const std::filesystem::path& path, const CPngRows& picture);
