#include "bmpfont/bmp_font_writer.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "bmpfont/bmp_file.h"
#include "bmpfont/bmp_font_layout.h"
#include "core/bmp_image.h"
#include "core/font_data.h"
#include "core/general_exception.h"
#include "core/glyph_order.h"
#include "core/pg_ctrl.h"
#include "xmlfiles/glyph_order_files.h"
#include "zgly/binary_file.h"
#include "zgly/path_checks.h"

namespace {

// Drawing on the bottom-up picture with rows counted from the top.
class CGridPainter {
public:
    CGridPainter(CBmpImage& image, const BmpGridLayout& layout) : Image(image), L(layout) {}

    void Pixel(int x, int y, int color) {
        if (x < 0 || y < 0 || x >= Image.Width || y >= Image.Height) return;
        Image.Pixels[static_cast<std::size_t>(Image.Height - 1 - y) * Image.Stride + x] = static_cast<uint8_t>(color);
    }
    void Row(int x, int y, int length, int color) {
        for (int i = 0; i < length; ++i) Pixel(x + i, y, color);
    }
    void Column(int x, int y, int length, int color) {
        for (int i = 0; i < length; ++i) Pixel(x, y + i, color);
    }

    void DrawGlyph(const CGlyph& glyph, int column, int row);
    void DrawFrames();
    void DrawMarks(bool drawGrid);

private:
    // Renders the glyph into an 8-bit scratch cell and copies its visible part,
    // rows turned bottom-up as the picture stores them.
    void BlitInk(const CGlyph& glyph, int cellW, int cellH, int originRow, int originFromRight, int visibleW,
                 int visibleH, int destX, int destY);

    CBmpImage& Image;
    const BmpGridLayout& L;
    std::vector<uint8_t> Scratch;
    std::vector<uint8_t> Flipped;
};

void CGridPainter::BlitInk(const CGlyph& glyph, int cellW, int cellH, int originRow, int originFromRight,
                           int visibleW, int visibleH, int destX, int destY) {
    std::size_t bytes = static_cast<std::size_t>(cellW) * cellH;
    Scratch.assign(bytes, 0);
    Flipped.resize(bytes);
    RenderToCell(glyph, Scratch.data(), cellW, cellH, originRow, originFromRight, 8);
    for (int r = 0; r < cellH; ++r)
        std::memcpy(Flipped.data() + static_cast<std::size_t>(cellH - 1 - r) * cellW,
                    Scratch.data() + static_cast<std::size_t>(r) * cellW, static_cast<std::size_t>(cellW));
    Image.BlitClipped(Flipped.data(), destX, destY, visibleW, visibleH, 0, 0, cellW, cellH);
}

void CGridPainter::DrawGlyph(const CGlyph& g, int column, int row) {
    int iw = g.Ink.Width(), ih = g.Ink.Height();
    int ox = column * L.PitchX + 2, oy = row * L.PitchY + 2;
    int advance = L.IsVertical ? ih + g.TopSpace + g.BottomSpace : iw + g.LeftSpace + g.RightSpace;
    int cx = (L.InkAreaWidth - iw - std::max(g.RightSpace, 0) - std::max(g.LeftSpace, 0)) / 2;
    int cy = (L.InkAreaHeight - ih - std::max(g.BottomSpace, 0) - std::max(g.TopSpace, 0)) / 2;
    if (iw > 0 && ih > 0) {
        if (!L.IsVertical) {
            int x = std::max(L.GlyphX + cx + std::max(g.LeftSpace, 0), 0);
            int y = std::max(L.GlyphY, 0);
            BlitInk(g, iw, L.InkAreaHeight, L.Baseline, g.RightExtent, std::min(L.CellWidth - x, iw),
                    std::min(L.CellHeight - y, L.InkAreaHeight), ox + x, oy + y);
        } else {
            int x = std::max(L.GlyphX, 0);
            int y = std::max(L.GlyphY + cy + std::max(g.TopSpace, 0), 0);
            BlitInk(g, L.InkAreaWidth, ih, g.Ascent, L.Baseline, std::min(L.CellWidth - x, L.InkAreaWidth),
                    std::min(L.CellHeight - y, ih), ox + 2 + x, oy + y);
        }
    }
    if (advance > 0) {
        // The width line starts at the character's origin and covers its advance.
        if (!L.IsVertical) {
            int s = std::max(L.GlyphX + cx - std::min(g.LeftSpace, 0), 0);
            Row(ox + s, oy + L.CellHeight + 1, std::min(L.CellWidth - s, advance), L.Black());
        } else {
            int s = std::max(L.GlyphY + cy - std::min(g.TopSpace, 0), 0);
            Column(ox, oy + s, std::min(L.CellHeight - s, advance), L.Black());
        }
    }
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
    if (!L.IsVertical) {
        Pixel(0, L.GlyphY + L.Baseline + 2, color);
        Pixel(0, L.CellHeight + 3, color);
    } else {
        // The mark follows the column where the glyphs' origins are drawn, so
        // that the picture reads back with the baseline it was drawn with even
        // when the ink area is narrower or wider than the cell.
        Pixel(L.GlyphX + L.InkAreaWidth - L.Baseline + 3, 0, color);
        Pixel(2, 0, color);
    }
}

}  // namespace

void CBmpFontWriter::CheckParameters() {
    CheckOutputFile(Path);
    CheckGlyphOrderFile(OrderPath);
    if (Cells.CellWidth == 0) ThrowError("Parameter Error:\n Cell Width (=%d) must be > 0.", 0);
    if (Cells.CellHeight == 0) ThrowError("Parameter Error:\n Cell Height (=%d) must be > 0.", 0);
}

void CBmpFontWriter::LoadGlyphOrder(CGlyphOrder& order) {
    order.Load(OrderPath);
    CheckOrderGrid(order, OrderPath);
}

void CBmpFontWriter::Write(CFontData& font, const CGlyphOrder& order) {
    g_pPgCtrl->SetStatus(" Writing BMP...");
    g_pPgCtrl->ResetProgress();
    CheckOrderGrid(order, OrderPath);
    BmpGridLayout layout = ComputeGridLayout(
        font, order, Cells);
    CBmpImage picture;
    CreateGridPicture(picture, layout);
    CGridPainter painter(picture, layout);

    g_pPgCtrl->SetProgressRange(layout.Columns * layout.Rows);
    for (int r = 0; r < layout.Rows; ++r)
        for (int c = 0; c < layout.Columns; ++c) {
            uint16_t code = order.GetCode(c, r);
            if (code != NoCode)
                if (const CGlyph* glyph = font.FindGlyph(code)) painter.DrawGlyph(*glyph, c, r);
            g_pPgCtrl->StepProgress(1);
        }
    if (DrawGrid) painter.DrawFrames();
    painter.DrawMarks(DrawGrid);

    CBinaryFile file(Path);
    SaveBmp(file, picture);
}
