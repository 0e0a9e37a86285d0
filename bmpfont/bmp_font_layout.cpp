#include "bmpfont/bmp_font_layout.h"

#include <algorithm>
#include <vector>

#include "bmpfont/bmp_image.h"
#include "core/font_data.h"
#include "core/general_exception.h"
#include "core/glyph_order.h"

namespace {

// Placement of the ink area along one axis, centred when offset is negative.
int32_t CentreHorizontally(int32_t cell, int32_t area) {
    int32_t d = cell - area;
    return cell > area ? (d + 1) / 2 : (d - 1) / 2;
}

int32_t CentreVertically(int32_t cell, int32_t area, int32_t baseline) {
    if (area <= cell) return (cell - area) / 2;
    // Too high: the overflow is shared above and below the baseline in proportion.
    long long d = cell - area;
    return static_cast<int32_t>(d - ((area - baseline) * d) / area);
}

}  // namespace

void CheckOrderGrid(const CGlyphOrder& order, const std::filesystem::path& orderPath) {
    if (order.Width <= 0 || order.Height <= 0) ThrowError("BMP Error:\n Glyph order(%s) has no cells.", orderPath);
    // Every cell is at least 4 x 4 pixels.
    long long bytes = (4ll * order.Width) * (4ll * order.Height);
    if (bytes > MaxGridBmpBytes)
        ThrowError("BMP Error:\n Glyph order(%s) has too many cells(%d x %d).", orderPath, order.Width, order.Height);
}

BmpGridLayout ComputeGridLayout(const CFontData& font, const CGlyphOrder& order, const BmpCellSettings& s) {
    BmpGridLayout l;
    l.IsVertical = font.Vertical();
    l.Bpp = font.Bpp.Value;
    l.Baseline = font.Baseline.Value;
    l.InkAreaWidth = std::max(font.MaxCharWidth.Value, font.CellWidth.Value);
    l.InkAreaHeight = std::max(font.MaxCharHeight.Value, font.CellHeight.Value);
    if (l.IsVertical)
        // One column more than the baseline: the baseline mark sits one column
        // left of the glyphs' origin and must stay inside the glyph area, also
        // when the origin is the ink area's left edge.
        l.InkAreaWidth = std::max(l.InkAreaWidth, l.Baseline + 1);
    else
        l.InkAreaHeight = std::max(l.InkAreaHeight, l.Baseline);

    long long cellWidth = s.CellWidth, cellHeight = s.CellHeight;
    if (s.CellWidth < 0) {
        l.GlyphX = s.OffsetLeft;
        cellWidth = static_cast<long long>(s.OffsetLeft) + s.MarginRight + l.InkAreaWidth;
    } else {
        l.GlyphX = s.OffsetLeft >= 0 ? s.OffsetLeft : CentreHorizontally(s.CellWidth, l.InkAreaWidth);
    }
    if (s.CellHeight < 0) {
        l.GlyphY = s.OffsetTop;
        cellHeight = static_cast<long long>(s.OffsetTop) + s.MarginBottom + l.InkAreaHeight;
    } else {
        l.GlyphY = s.OffsetTop >= 0 ? s.OffsetTop : CentreVertically(s.CellHeight, l.InkAreaHeight, l.Baseline);
    }
    long long pitchX = cellWidth + (l.IsVertical ? 6 : 4);
    long long pitchY = cellHeight + (l.IsVertical ? 4 : 6);
    long long width = pitchX * order.Width, height = pitchY * order.Height;
    if (cellWidth < 1 || cellHeight < 1 || order.Width < 1 || order.Height < 1 || width > MaxGridBmpBytes ||
        height > MaxGridBmpBytes || ((width + 3) & ~3ll) * height > MaxGridBmpBytes)
        ThrowError("BMP Error:\n BMP size(%d x %d) is out of range.", width, height);
    l.CellWidth = static_cast<int32_t>(cellWidth);
    l.CellHeight = static_cast<int32_t>(cellHeight);
    l.PitchX = static_cast<int32_t>(pitchX);
    l.PitchY = static_cast<int32_t>(pitchY);
    l.Columns = order.Width;
    l.Rows = order.Height;
    return l;
}

std::vector<uint32_t> GridPalette(int bpp) {
    int n = 1 << bpp;
    std::vector<uint32_t> palette(256, 0);
    palette[0] = 0x00FFFFFF;
    for (int i = 1; i < n; ++i) {
        uint32_t grey = static_cast<uint32_t>((n - 1 - i) * 255 / (n - 1));
        palette[static_cast<std::size_t>(i)] = grey | (grey << 8) | (grey << 16);
    }
    if (n < 256) palette[static_cast<std::size_t>(n)] = GridColorRgb;
    return palette;
}

void CreateGridPicture(CBmpImage& image, const BmpGridLayout& l) {
    int n = 1 << l.Bpp;
    std::vector<uint32_t> palette = GridPalette(l.Bpp);
    image.SetPalette(8, palette.data(), static_cast<uint32_t>(n < 256 ? n + 1 : n), static_cast<uint32_t>(n));
    int width = l.Columns * l.PitchX, height = l.Rows * l.PitchY;
    image.Create(width, height, (width + 3) & ~3, nullptr, 0);
}
