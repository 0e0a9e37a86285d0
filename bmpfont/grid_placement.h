// Where the baseline and each glyph go inside a cell, so that a picture reads
// back with the origin it was drawn with in every cell size: the baseline
// mark follows the drawn origin, and a glyph that overhangs its cell moves as
// one piece (ink and width line together) before anything is cut off.
#pragma once

#include <cstdint>

struct BmpGridLayout;
class CGlyph;

// Horizontal fonts: Origin is the glyph-area row of the baseline (0 ...
// CellHeight) and InkAreaStart the row of the ink area's top. Vertical fonts:
// Origin is the glyph-area column of the origin (1 ... CellWidth + 1) and
// InkAreaStart the column of the ink area's left edge. Those ranges are what
// the baseline mark can express.
struct GridBaseline {
    int32_t Origin = 0;
    int32_t InkAreaStart = 0;
};

GridBaseline PlaceBaseline(const BmpGridLayout& layout);

// The picture position of the baseline mark in the top-left cell's border.
void BaselineMarkPosition(const BmpGridLayout& layout, const GridBaseline& baseline, int& x, int& y);

// One glyph in glyph-area coordinates: the rendered block (ScratchW x
// ScratchH, with the glyph's origin at OriginRow / OriginFromRight) goes with
// its top-left pixel at (BlockX, BlockY); the width line starts at LineStart
// along the advance and is Advance pixels long.
struct GlyphPlacement {
    int32_t ScratchW = 0, ScratchH = 0, OriginRow = 0, OriginFromRight = 0;
    int32_t BlockX = 0, BlockY = 0;
    int32_t LineStart = 0, Advance = 0;
    // The width line runs past the cell's end.
    bool LineCut = false;
};

GlyphPlacement PlaceGlyph(const BmpGridLayout& layout, const GridBaseline& baseline, const CGlyph& glyph);
