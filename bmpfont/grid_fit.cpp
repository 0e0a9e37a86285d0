#include "bmpfont/grid_fit.h"

#include <optional>

#include "bmpfont/bmp_font_layout.h"
#include "bmpfont/bmp_image.h"
#include "core/general_exception.h"
#include "core/glyph_order.h"
#include "xmlfiles/glyph_order_files.h"
#include "xmlfiles/glyph_order_handler.h"

namespace {

// The pitch of the cells along the line just inside the outer frames (row 1
// or column 1): inner frame colour, then an outer frame pixel at the end of
// each cell and one at the start of the next. Nothing when the line does not
// repeat that exactly.
std::optional<int> DrawnPitch(const CBmpImage& pic, bool alongX) {
    const int length = alongX ? pic.Width : pic.Height;
    auto at = [&](int i) { return alongX ? pic.GetPixel(i, 1) : pic.GetPixel(1, i); };
    const uint32_t outer = pic.GetPixel(0, 0), inner = pic.GetPixel(1, 1);
    if (outer == inner || length < 4) return std::nullopt;
    int pitch = 0;
    for (int i = 2; i < length && !pitch; ++i)
        if (at(i) == outer) pitch = i + 1;
    if (pitch < 5 || length % pitch != 0) return std::nullopt;
    for (int i = 0; i < length; ++i) {
        const int inCell = i % pitch;
        const bool frame = inCell == 0 || inCell == pitch - 1;
        if ((at(i) == outer) != frame) return std::nullopt;
    }
    return pitch;
}

// The first shipped order of the given grid, by file name.
std::string ShippedOrderOf(int columns, int rows) {
    for (const auto& dir : GlyphOrderDirectories()) {
        std::error_code ec;
        for (const auto& entry : std::filesystem::directory_iterator(dir, ec)) {
            if (entry.path().extension() != ".xlor") continue;
            CGlyphOrder order;
            try {
                LoadGlyphOrderFile(order, entry.path());
            } catch (const CGeneralException&) {
                continue;
            }
            if (order.Width == columns && order.Height == rows) return entry.path().filename().string();
        }
    }
    return {};
}

}  // namespace

void CheckGridFitsOrder(const CBmpImage& pic, const GridGeometry& g, const std::filesystem::path& orderPath) {
    const std::optional<int> pitchX = DrawnPitch(pic, true), pitchY = DrawnPitch(pic, false);
    if (!pitchX || !pitchY || (*pitchX == g.PitchX && *pitchY == g.PitchY)) return;
    const int columns = pic.Width / *pitchX, rows = pic.Height / *pitchY;
    const std::string fits = ShippedOrderOf(columns, rows);
    const std::string advice = fits.empty()
                                   ? FormatString("No shipped glyph order has %d x %d cells.", columns, rows)
                                   : FormatString("Read it with the glyph order %s (%d x %d cells).", fits, columns, rows);
    ThrowError("BMP Error:\n BMP(%dx%d) is drawn as %d x %d cells of %dx%d pixels, but %s has %d x %d cells, "
               "which would make it %dx%d. %s",
               pic.Width, pic.Height, columns, rows, *pitchX, *pitchY, orderPath.filename().string(), g.Columns, g.Rows,
               g.Columns * *pitchX, g.Rows * *pitchY, advice);
}
