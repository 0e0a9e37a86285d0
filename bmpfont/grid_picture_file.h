// Glyph-grid pictures on disk: palette BMPs as they are, and the pictures
// editors save (true-colour and run-length BMPs, PNG) turned into the grid
// palette; written as BMP, or as an indexed PNG for a ".png" path.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

class CBmpImage;

// Where the picture's colours came from.
struct GridPictureSource {
    // Colours were mapped to the grid palette (the picture had no usable one).
    bool Mapped = false;
    // Mapped pictures: the colours before mapping (0x00RRGGBB, top row first).
    std::vector<uint32_t> Colors;
    // The glyph order a PNG grid names as the one it was drawn for.
    std::string OrderName;
};

// Loads the picture top row first. 1-, 4- and 8-bit uncompressed BMPs load
// with their own palette; everything else with the palette of a fontBpp grid.
void LoadGridPicture(const std::filesystem::path& path, int fontBpp, CBmpImage& image,
                     GridPictureSource* source = nullptr);
// The writer's bottom-up 8-bit picture, as PNG when the path ends in ".png"
// (any case), else as BMP. A PNG keeps the order's name.
void SaveGridPicture(const std::filesystem::path& path, const CBmpImage& picture, const std::string& orderName);
