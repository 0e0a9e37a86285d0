#include "bmpfont/grid_painter.h"

#include <algorithm>

#include "bmpfont/bmp_image.h"
#include "core/font_data.h"

CGridPainter::CGridPainter(CBmpImage& image, const BmpGridLayout& layout)
    : Image(image), L(layout), Baseline(PlaceBaseline(layout)) {}

void CGridPainter::Pixel(int x, int y, int color) {
    if (x < 0 || y < 0 || x >= Image.Width || y >= Image.Height) return;
    Image.Pixels[static_cast<std::size_t>(Image.Height - 1 - y) * Image.Stride + x] = static_cast<uint8_t>(color);
}

void CGridPainter::Row(int x, int y, int length, int color) {
    for (int i = 0; i < length; ++i) Pixel(x + i, y, color);
}

void CGridPainter::Column(int x, int y, int length, int color) {
    for (int i = 0; i < length; ++i) Pixel(x, y + i, color);
}

bool CGridPainter::DrawGlyph(const CGlyph& g, int column, int row) {
    GlyphPlacement p = PlaceGlyph(L, Baseline, g);
    // Top-left pixel of the glyph area in the picture.
    int ax = column * L.PitchX + (L.IsVertical ? 4 : 2), ay = row * L.PitchY + 2;
    bool whole = !p.LineCut;
    if (g.Ink.Width() > 0 && g.Ink.Height() > 0 && p.ScratchW > 0 && p.ScratchH > 0) {
        Scratch.assign(static_cast<std::size_t>(p.ScratchW) * p.ScratchH, 0);
        RenderToCell(g, Scratch.data(), p.ScratchW, p.ScratchH, p.OriginRow, p.OriginFromRight, 8);
        for (int sy = 0; sy < p.ScratchH; ++sy) {
            const uint8_t* src = Scratch.data() + static_cast<std::size_t>(sy) * p.ScratchW;
            int y = p.BlockY + sy;
            for (int sx = 0; sx < p.ScratchW; ++sx) {
                int x = p.BlockX + sx;
                if (x >= 0 && y >= 0 && x < L.CellWidth && y < L.CellHeight)
                    Pixel(ax + x, ay + y, src[sx]);
                else if (src[sx] != 0)
                    whole = false;
            }
        }
    }
    if (p.Advance > 0) {
        // The width line starts at the character's origin and covers its advance.
        if (!L.IsVertical)
            Row(ax + p.LineStart, ay + L.CellHeight + 1, std::min(L.CellWidth - p.LineStart, p.Advance), L.Black());
        else
            Column(ax - 2, ay + p.LineStart, std::min(L.CellHeight - p.LineStart, p.Advance), L.Black());
    }
    return whole;
}

void CGridPainter::DrawFrames() {
    int black = L.Black(), grid = L.GridColor();
    for (int y0 = 0; y0 < Image.Height; y0 += L.PitchY)
        for (int x0 = 0; x0 < Image.Width; x0 += L.PitchX) {
            Row(x0, y0, L.PitchX, black);
            Row(x0, y0 + L.PitchY - 1, L.PitchX, black);
            Column(x0, y0, L.PitchY, black);
            Column(x0 + L.PitchX - 1, y0, L.PitchY, black);
            Row(x0 + 1, y0 + 1, L.PitchX - 2, grid);
            Row(x0 + 1, y0 + L.PitchY - 2, L.PitchX - 2, grid);
            Column(x0 + 1, y0 + 1, L.PitchY - 2, grid);
            Column(x0 + L.PitchX - 2, y0 + 1, L.PitchY - 2, grid);
            if (L.IsVertical)
                Column(x0 + 3, y0 + 1, L.PitchY - 2, grid);
            else
                Row(x0 + 1, y0 + L.PitchY - 4, L.PitchX - 2, grid);
        }
}

void CGridPainter::DrawMarks(bool drawGrid) {
    int color = drawGrid ? 0 : L.Black();
    int x, y;
    BaselineMarkPosition(L, Baseline, x, y);
    Pixel(x, y, color);
    if (!L.IsVertical)
        Pixel(0, L.CellHeight + 3, color);
    else
        Pixel(2, 0, color);
}
