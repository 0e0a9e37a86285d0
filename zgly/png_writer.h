// Saves an RGB picture as a PNG file through the binary file layer, so a
// failed save leaves any old file untouched.
#pragma once

#include <filesystem>

struct CRgbImage;

// Throws "Can not write to a file (%s)." style messages of the file layer, or
// "Internal Error:" when the PNG library refuses the picture.
void WritePng(const std::filesystem::path& path, const CRgbImage& image);
