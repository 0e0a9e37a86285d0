// Drawing a glyph grid on the bottom-up 8-bit picture, rows counted from the
// top: glyphs with their width lines, the frames and the two marks.
#pragma once

#include <cstdint>
#include <vector>

#include "bmpfont/bmp_font_layout.h"
#include "bmpfont/grid_placement.h"

class CBmpImage;
class CGlyph;

class CGridPainter {
public:
    CGridPainter(CBmpImage& image, const BmpGridLayout& layout);

    // Draws the glyph into cell (column, row); false when some of its ink or
    // width line lies outside the cell and was cut off.
    bool DrawGlyph(const CGlyph& glyph, int column, int row);
    void DrawFrames();
    void DrawMarks(bool drawGrid);

private:
    void Pixel(int x, int y, int color);
    void Row(int x, int y, int length, int color);
    void Column(int x, int y, int length, int color);

    CBmpImage& Image;
    const BmpGridLayout& L;
    GridBaseline Baseline;
    std::vector<uint8_t> Scratch;
};
