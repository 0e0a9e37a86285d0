// A blank glyph grid to draw a new font in: frames and both marks, no glyphs
// and no width lines.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

class CGlyphOrder;

// Zero or negative sizes and baseline stand for "not given".
struct GridTemplateSettings {
    int32_t CellWidth = 0;
    int32_t CellHeight = 0;
    // Horizontal: rows from the glyph area's top to the baseline. Vertical:
    // columns from the glyph area's right edge to the origin.
    int32_t Baseline = -1;
    int32_t Bpp = 1;
    bool Vertical = false;
};

// Draws the grid for the loaded order and saves it (PNG for a ".png" path).
// orderName is the order's file name, kept in a PNG grid.
void WriteGridTemplate(const std::filesystem::path& out, const CGlyphOrder& order, const GridTemplateSettings& s,
                       const std::string& orderName);
