// Turning a stored ZGLY cell back into an upright glyph image: the one step
// that both the reader and the text renderer take, so that they always agree.
#pragma once

#include <cstdint>
#include <vector>

#include "zgly/zgly_format.h"

class CFontBlockSet;

// The CGLP values that decide how cells are stored.
struct CCellLayout {
    int StoredWidth = 0;   // as stored, after any quarter turn
    int StoredHeight = 0;
    int CellSize = 0;      // bytes per cell
    int Bpp = 1;
    int Baseline = 0;      // signed, measured before any turn
    bool Vertical = false;
    int Rotation = 0;      // 0..3: none, quarter clockwise, half, quarter counter-clockwise

    bool Turned() const { return Rotation == zgly::RotationClockwise || Rotation == zgly::RotationCounterClockwise; }
    // The cell as the writer drew it, before any turn.
    int UprightWidth() const { return Turned() ? StoredHeight : StoredWidth; }
    int UprightHeight() const { return Turned() ? StoredWidth : StoredHeight; }
};

// Reads CGLP block 0; the set must have been loaded (validated).
CCellLayout ReadCellLayout(const CFontBlockSet& set);

// One upright glyph image. Horizontal fonts: Origin is the image row of the
// baseline. Vertical fonts: Origin is the distance from the reference column
// to the image's right edge. Extent is the advance extent the glyph's ink
// takes along the layout direction (the glyph width, or the ink's size where
// the stored width does not tell it).
struct CGlyphImage {
    int Width = 0;
    int Height = 0;
    int Origin = 0;
    int Extent = 0;
    // Packed pixel stream (Width x Height at the layout's bpp), with at least
    // one spare byte; reused between glyphs.
    std::vector<uint8_t> Pixels;
};

// Extracts the first glyphWidth columns (clamped to 0..stored width) of a
// stored cell and undoes the stored rotation.
void ExtractGlyphImage(const uint8_t* cell, const CCellLayout& layout, int glyphWidth, CGlyphImage& out);

// The pixel values of a packed image, one byte each, row by row.
std::vector<uint8_t> UnpackPixels(const CGlyphImage& image, int bpp);
