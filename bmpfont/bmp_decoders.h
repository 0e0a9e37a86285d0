// BMP files that editors save and the palette reader does not take: 16-, 24-
// and 32-bit pictures (plain or with colour masks) and run-length encoded 4-
// and 8-bit pictures, decoded into colours.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "bmpfont/grid_colors.h"

// True for a BMP that DecodeColorBmp reads (and LoadBmp does not).
bool IsColorBmp(const std::vector<uint8_t>& bytes);
// Throws "Input file(%s) is broken." for data that runs out or does not decode.
CColorPixels DecodeColorBmp(const std::vector<uint8_t>& bytes, const std::filesystem::path& path);
