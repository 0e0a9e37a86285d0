#include "bmpfont/bmp_font_reader.h"

#include <algorithm>
#include <memory>
#include <vector>

#include "bmpfont/bmp_font_layout.h"
#include "bmpfont/grid_fit.h"
#include "bmpfont/grid_picture_file.h"
#include "bmpfont/grid_warnings.h"
#include "core/bit_stream.h"
#include "bmpfont/bmp_image.h"
#include "core/font_data.h"
#include "core/font_filter.h"
#include "core/general_exception.h"
#include "core/glyph_order.h"
#include "core/pg_ctrl.h"
#include "xmlfiles/glyph_order_files.h"
#include "xmlfiles/glyph_order_handler.h"
#include "zgly/path_checks.h"

namespace {

constexpr uint32_t White = 0x00FFFFFF;

void CheckGridSize(const CBmpImage& pic, const CGlyphOrder& order, const std::filesystem::path& orderPath) {
    // An order without cells has no pitch to divide the picture by.
    if (order.Width < 1 || order.Height < 1) ThrowError("BMP Error:\n Glyph order(%s) has no cells.", orderPath);
    int pitchX = pic.Width / order.Width, pitchY = pic.Height / order.Height;
    if (pitchX - 4 < 1)
        ThrowError("BMP Error:\n BMP width(%d) too small. Must be >= %d", pic.Width, 4ll * order.Width);
    if (pitchY - 4 < 1)
        ThrowError("BMP Error:\n BMP height(%d) too small. Must be >= %d", pic.Height, 4ll * order.Height);
    if (pic.Bpp < 1 || pic.Bpp > 8) ThrowError("BMP Error:\n Unsupported BMP bpp(%d).", pic.Bpp);
    if (pitchX * order.Width != pic.Width)
        ThrowError("BMP Error:\n BMP width(%d) is not multiply of horizontal number of blocks(%d)", pic.Width,
                   order.Width);
    if (pitchY * order.Height != pic.Height)
        ThrowError("BMP Error:\n BMP height(%d) is not multiply of vertical number of blocks(%d)", pic.Height,
                   order.Height);
}

GridGeometry MeasureGrid(const CBmpImage& pic, const CGlyphOrder& order) {
    GridGeometry g;
    g.Columns = order.Width;
    g.Rows = order.Height;
    g.PitchX = pic.Width / g.Columns;
    g.PitchY = pic.Height / g.Rows;
    uint32_t corner = pic.GetPixel(0, 0);
    g.Vertical = corner == pic.GetPixel(0, g.PitchY - 3) && pic.GetPixel(2, 0) != corner;
    g.AreaW = g.PitchX - (g.Vertical ? 6 : 4);
    g.AreaH = g.PitchY - (g.Vertical ? 4 : 6);
    return g;
}

int FindWhite(const CBmpImage& pic) {
    int white = pic.FindColor(White, 0);
    if (white < 0) throw CGeneralException("BMP Error:\n Color white not found in BMP.");
    return white;
}

class CColorModel {
public:
    CColorModel(int white, int fontBpp) : WhiteIndex(static_cast<uint32_t>(white)), MaxLevel((1u << fontBpp) - 1) {}
    uint32_t Level(uint32_t p) const { return GridLevel(p, WhiteIndex, MaxLevel); }
    uint32_t WhiteIndex;
    uint32_t MaxLevel;
};

// Position of the single pixel that differs from the rest, or count.
int FindMarker(const uint8_t* pixels, int count, uint32_t white, int bpp) {
    CBitReader r;
    r.Start(pixels);
    int whites = 0, lastWhite = count, lastOther = count;
    for (int i = 0; i < count; ++i) {
        if (r.ReadValue(bpp) == white) {
            ++whites;
            lastWhite = i;
        } else {
            lastOther = i;
        }
    }
    if (count <= 0 || whites == 0 || whites == count) return count;
    if (whites == 1) return lastWhite;
    if (whites == count - 1) return lastOther;
    throw CGeneralException("BMP Error:\n BMP has no baseline info.");
}

struct LineMargins {
    int Before = 0, After = 0;
};

LineMargins MeasureWidthLine(const uint8_t* pixels, int count, uint32_t white, int bpp) {
    enum { Leading, Inside, Trailing } state = Leading;
    LineMargins m;
    CBitReader r;
    r.Start(pixels);
    for (int i = 0; i < count; ++i) {
        bool isWhite = r.ReadValue(bpp) == white;
        if (state == Leading) {
            if (isWhite)
                ++m.Before;
            else
                state = Inside;
        } else if (isWhite) {
            ++m.After;
            state = Trailing;
        }
    }
    return m;
}

void ToLevels(uint8_t* pixels, int count, int bpp, const CColorModel& colors) {
    CBitReader r;
    r.Start(pixels);
    CBitWriter w;
    w.Start(pixels);
    for (int i = 0; i < count; ++i) {
        w.WriteValue(bpp, colors.Level(r.ReadValue(bpp)));
        w.MarkPending();
    }
    w.Flush();
}

bool IsBlankCell(const uint8_t* pixels, int count, int bpp, const CColorModel& colors) {
    CBitReader r;
    r.Start(pixels);
    for (int i = 0; i < count; ++i)
        if (colors.Level(r.ReadValue(bpp)) != 0) return false;
    return true;
}

bool SameColor(const CBmpImage& pic, int x, int y, int dx, int dy, int count, uint32_t color) {
    for (int i = 0; i < count; ++i)
        if (pic.GetPixel(x + i * dx, y + i * dy) != color) return false;
    return true;
}

// The frame just inside the outer frame, and the separator, are of one colour.
bool CheckCellFrame(const CBmpImage& pic, int x, int y, int w, int h, bool vertical) {
    uint32_t c = pic.GetPixel(x, y);
    if (!SameColor(pic, x, y, 1, 0, w, c) || !SameColor(pic, x, y + h - 1, 1, 0, w, c) ||
        !SameColor(pic, x, y, 0, 1, h, c) || !SameColor(pic, x + w - 1, y, 0, 1, h, c))
        return false;
    return vertical ? SameColor(pic, x + 2, y, 0, 1, h, c) : SameColor(pic, x, y + h - 3, 1, 0, w, c);
}

// The picture and its order, loaded and checked as both the parameter check and
// the reading need them.
struct LoadedGrid {
    CBmpImage Picture;
    GridPictureSource Source;
    CGlyphOrder Order;
    GridGeometry Geometry;
};

// Reads the order against the loaded picture and measures the grid.
void LoadGridOrder(LoadedGrid& grid, const std::filesystem::path& orderPath, int columnsRowsProgress) {
    LoadGlyphOrderFile(grid.Order, orderPath);
    CheckGridSize(grid.Picture, grid.Order, orderPath);
    if (columnsRowsProgress) g_pPgCtrl->SetProgressRange(grid.Order.Width * grid.Order.Height);
    grid.Geometry = MeasureGrid(grid.Picture, grid.Order);
    // Before any cell is read: a picture drawn for another grid is one mistake.
    CheckGridFitsOrder(grid.Picture, grid.Geometry, orderPath);
}

std::unique_ptr<LoadedGrid> LoadGrid(const std::filesystem::path& path, const std::filesystem::path& orderPath,
                                     int fontBpp, int columnsRowsProgress) {
    auto grid = std::make_unique<LoadedGrid>();
    LoadGridPicture(path, fontBpp, grid->Picture, &grid->Source);
    LoadGridOrder(*grid, orderPath, columnsRowsProgress);
    return grid;
}

// The picture's white: the first white palette entry; a second one within
// the font's levels, and colours the grid should not have, are warned about.
int PickWhite(const LoadedGrid& grid, int fontBpp) {
    const CBmpImage& pic = grid.Picture;
    const int white = FindWhite(pic);
    const int second = pic.FindColor(White, white + 1);
    if (second >= 0 && second < (1 << fontBpp)) ReportWarning(g_pPgCtrl, "2 or more white colors are found.");
    WarnAboutGridColors(pic, grid.Source, grid.Geometry, white, fontBpp);
    return white;
}

// Reads the cells of a loaded grid into glyphs, row by row, one progress
// step each, counting what it met.
class CCellReader {
public:
    CCellReader(const LoadedGrid& grid, int white, int fontBpp, const std::filesystem::path& orderPath)
        : Grid(grid),
          Pic(grid.Picture),
          G(grid.Geometry),
          Bpp(grid.Picture.Bpp),
          White(static_cast<uint32_t>(white)),
          Colors(white, fontBpp),
          OrderPath(orderPath),
          // A pitch of 5 or 6 passes the size check yet leaves a negative area:
          // its cells are empty (every loop over them runs zero times).
          Cell(PackedBytes(std::max(G.AreaW, 0), std::max(G.AreaH, 0), Bpp)),
          Line(static_cast<std::size_t>(std::max(G.PitchX, G.PitchY))) {}

    void ReadAll(CFontData& font, const CFontFilter& filter) {
        const int baseline = ReadBaseline();
        font.ReserveGlyphs(static_cast<std::size_t>(G.Columns) * G.Rows);
        for (int r = 0; r < G.Rows; ++r)
            for (int c = 0; c < G.Columns; ++c) {
                const uint16_t code = Grid.Order.GetCode(c, r);
                g_pPgCtrl->StepProgress(1);
                if (code != NoCode && filter.IsExcluded(code)) {
                    ++Excluded;
                    continue;
                }
                ReadCell(font, code, c * G.PitchX, r * G.PitchY, baseline);
            }
        MissingLines.Report();
    }

    int Read = 0, Inked = 0, Excluded = 0;

private:
    // One baseline for every cell, from the marks in the top-left cell's border.
    int ReadBaseline() {
        if (!G.Vertical) {
            Pic.ExtractRect(Line.data(), 0, 2, 1, G.AreaH);
            return FindMarker(Line.data(), G.AreaH, White, Bpp);
        }
        Pic.ExtractRect(Line.data(), 4, 0, G.AreaW, 1);
        return G.AreaW - FindMarker(Line.data(), G.AreaW, White, Bpp) - 1;
    }

    void ReadCell(CFontData& font, uint16_t code, int x0, int y0, int baseline) {
        const int cellPixels = G.AreaW * G.AreaH;
        Pic.ExtractRect(Cell.data(), x0 + G.GlyphLeft(), y0 + 2, G.AreaW, G.AreaH);
        if (G.Vertical)
            Pic.ExtractRect(Line.data(), x0 + 2, y0 + 2, 1, G.AreaH);
        else
            Pic.ExtractRect(Line.data(), x0 + 2, y0 + G.AreaH + 3, G.AreaW, 1);
        const LineMargins m = MeasureWidthLine(Line.data(), G.LineLength(), White, Bpp);
        if (code == NoCode) {
            const bool clean = IsBlankCell(Cell.data(), cellPixels, Bpp, Colors) &&
                               (m.Before == G.LineLength() || m.After == 0);
            if (!clean)
                ReportWarning(g_pPgCtrl, "BMP position (%d, %d) is <null/> in %s, but the cell include non-white color.",
                              x0 + G.PitchX / 2, y0 + G.PitchY / 2, OrderPath);
            return;
        }
        ToLevels(Cell.data(), cellPixels, Bpp, Colors);
        auto glyph = std::make_unique<CGlyph>();
        glyph->SetFromCellWithMargins(Cell.data(), G.AreaW, G.AreaH, Bpp, G.Vertical, m.Before, m.After, baseline);
        const bool empty = G.Vertical
                               ? glyph->TopSpace == 0 && glyph->Ink.Y1 == glyph->Ink.Y0 && glyph->BottomSpace == 0
                               : glyph->LeftSpace == 0 && glyph->Ink.X1 == glyph->Ink.X0 && glyph->RightSpace == 0;
        ++Read;
        if (glyph->Ink.Width() > 0) {
            ++Inked;
            if (m.Before == G.LineLength()) MissingLines.Add(code);
        }
        if (!empty) font.AddGlyph(std::move(glyph), code);
    }

    const LoadedGrid& Grid;
    const CBmpImage& Pic;
    const GridGeometry& G;
    const int Bpp;  // the picture's
    const uint32_t White;
    const CColorModel Colors;
    const std::filesystem::path& OrderPath;
    std::vector<uint8_t> Cell;
    std::vector<uint8_t> Line;
    CMissingWidthLines MissingLines;
};

}  // namespace

void CBmpFontReader::CheckParameters() {
    // The picture is loaded once, its errors first; the colours it had
    // before mapping only matter to the reading.
    CheckInputFile(Path);
    auto grid = std::make_unique<LoadedGrid>();
    LoadGridPicture(Path, Bpp, grid->Picture);
    CheckGlyphOrderFile(OrderPath);
    if (Bpp < 1 || Bpp > 8) ThrowError("Internal Error:\n Bpp(%d) out of range.", Bpp);
    LoadGridOrder(*grid, OrderPath, 0);
    const GridGeometry& g = grid->Geometry;
    FindWhite(grid->Picture);
    for (int r = 0; r < g.Rows; ++r)
        for (int c = 0; c < g.Columns; ++c) {
            g_pPgCtrl->StepProgress(1);
            if (grid->Order.GetCode(c, r) == NoCode) continue;
            int x0 = c * g.PitchX, y0 = r * g.PitchY;
            if (!CheckCellFrame(grid->Picture, x0 + 1, y0 + 1, g.PitchX - 2, g.PitchY - 2, g.Vertical))
                ReportWarning(g_pPgCtrl, "More than one color detected in margin area at (%d,%d).",
                              x0 + g.PitchX / 2, y0 + g.PitchY / 2);
        }
}

void CBmpFontReader::Read(CFontData& font, const CFontFilter& filter) {
    g_pPgCtrl->SetStatus(" Reading BMP...");
    g_pPgCtrl->ResetProgress();
    font.Bpp.Set(Bpp);
    auto grid = LoadGrid(Path, OrderPath, Bpp, 1);
    font.IsVertical.Set(grid->Geometry.Vertical);
    const int white = PickWhite(*grid, Bpp);
    WarnAboutOtherOrder(grid->Source.OrderName, OrderPath);
    CCellReader cells(*grid, white, Bpp, OrderPath);
    cells.ReadAll(font, filter);
    // A filter may leave only blank cells; without one, a grid without ink is a mistake.
    if (cells.Read > 0 && cells.Inked == 0 && cells.Excluded == 0) ThrowNoInk(Path);
}
