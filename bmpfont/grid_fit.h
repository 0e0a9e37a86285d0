// A glyph grid read with another order than it was drawn with: the frames
// drawn in the picture show its real cells, so the mistake is named once
// instead of as a warning per cell and a missing baseline.
#pragma once

#include <filesystem>

class CBmpImage;
struct GridGeometry;

// Throws "BMP Error:" when the picture's cell frames show cells of another
// size than the order gives it, naming both sizes and the shipped order that
// fits. Pictures without frames of their own colour pass unchecked.
void CheckGridFitsOrder(const CBmpImage& picture, const GridGeometry& grid, const std::filesystem::path& orderPath);
