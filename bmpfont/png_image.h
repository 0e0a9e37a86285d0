// PNG pictures for glyph grids: any PNG read as colours (libpng's own
// conversions: indexed, grey, RGB, with or without alpha, 8 or 16 bits), and
// the 8-bit grid picture written as an indexed PNG.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "bmpfont/grid_colors.h"

class CBmpImage;

bool IsPng(const std::vector<uint8_t>& bytes);
// Transparent pixels become white. Throws "Input file(%s) is broken PNG(%s)."
CColorPixels DecodePng(const std::vector<uint8_t>& bytes, const std::filesystem::path& path);
// The writer's bottom-up 8-bit picture as an indexed PNG with its palette's
// used entries.
// orderName (when not empty) is kept in a text chunk, so that reading the
// grid with another order can be named.
void SaveIndexedPng(const std::filesystem::path& path, const CBmpImage& picture, const std::string& orderName);
// The order name a grid PNG was written with; empty when it has none.
std::string PngOrderName(const std::vector<uint8_t>& bytes);
