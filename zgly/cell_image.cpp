#include "zgly/cell_image.h"

#include <algorithm>

#include "core/bit_stream.h"
#include "core/font_data.h"
#include "core/packed_image.h"
#include "zgly/font_block_set.h"
#include "zgly/zgly_format.h"

using namespace zgly;

namespace {

// Copies the first w pixels of each of the h rows of a cw-wide cell into a
// packed w x h grid, a run of bits per row (one run when the rows are whole).
void ExtractColumns(uint8_t* dst, const uint8_t* cell, int w, int h, int cw, int bpp) {
    std::fill_n(dst, PackedBytes(w, h, bpp), uint8_t{0});
    const std::size_t rowBits = static_cast<std::size_t>(w) * bpp, cellRowBits = static_cast<std::size_t>(cw) * bpp;
    if (w == cw) {
        OrBitRun(dst, 0, cell, 0, rowBits * h);
        return;
    }
    for (int y = 0; y < h; ++y) OrBitRun(dst, y * rowBits, cell, y * cellRowBits, rowBits);
}

}  // namespace

CCellLayout ReadCellLayout(const CFontBlockSet& set) {
    const uint8_t* glyphs = set.GetBlock(TagCGLP, 0)->Data();
    CCellLayout layout;
    layout.StoredWidth = glyphs[CglpCellWidth];
    layout.StoredHeight = glyphs[CglpCellHeight];
    layout.CellSize = GetU16(glyphs + CglpCellSize);
    layout.Bpp = glyphs[CglpBpp];
    layout.Baseline = static_cast<int8_t>(glyphs[CglpBaseline]);
    layout.Vertical = (glyphs[CglpFlags] & FlagVertical) != 0;
    layout.Rotation = (glyphs[CglpFlags] >> 1) & 3;
    return layout;
}

void ExtractGlyphImage(const uint8_t* cell, const CCellLayout& layout, int glyphWidth, CGlyphImage& out) {
    const int cw = layout.StoredWidth, h = layout.StoredHeight, bpp = layout.Bpp, rotation = layout.Rotation;
    const int w = std::clamp(glyphWidth, 0, cw);
    const bool vertical = layout.Vertical;
    // Every bit of the image is written below, so a reused buffer needs no clearing.
    const std::size_t need = std::max<std::size_t>(layout.CellSize, PackedBytes(cw, h, bpp)) + 1;
    if (out.Pixels.size() < need) out.Pixels.resize(need, 0);
    uint8_t* work = out.Pixels.data();
    ExtractColumns(work, cell, w, h, cw, bpp);

    out.Width = w;
    out.Height = h;
    out.Origin = layout.Baseline;
    if (rotation == RotationClockwise) RotateCounterClockwise(work, work, w, h, bpp);
    if (rotation == RotationHalf) Rotate180(work, work, w, h, bpp);
    if (rotation == RotationCounterClockwise) RotateClockwise(work, work, w, h, bpp);
    if (layout.Turned()) std::swap(out.Width, out.Height);
    // Where the writer kept the glyph's far side at the cell's edge, the
    // origin moves with the columns left out.
    if ((!vertical && rotation == RotationClockwise) || (vertical && rotation == RotationNone)) out.Origin += w - cw;

    out.Extent = w;
    const bool inkExtent = vertical ? (rotation == RotationNone || rotation == RotationHalf) : layout.Turned();
    if (inkExtent) {
        InkBox box;
        FindInkBox(box, work, out.Width, out.Height, bpp, 0);
        out.Extent = vertical ? box.Height() : box.Width();
    }
}

std::vector<uint8_t> UnpackPixels(const CGlyphImage& image, int bpp) {
    std::vector<uint8_t> values(static_cast<std::size_t>(image.Width) * image.Height);
    CBitReader r;
    r.Start(image.Pixels.data());
    for (auto& v : values) v = static_cast<uint8_t>(r.ReadValue(bpp));
    return values;
}
