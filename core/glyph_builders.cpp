// Turning a cell image into a glyph, and a glyph back into a cell.
#include <algorithm>
#include <tuple>
#include <utility>

#include "core/bit_stream.h"
#include "core/font_data.h"
#include "core/packed_image.h"

namespace {

// The spaces before and after the ink along the advance (extent pixels),
// from the width line's margins: a cell without a width line advances by
// nothing (its space before cancels its ink), a cell without ink is all
// space before it.
std::pair<int, int> SpacesFromMargins(int extent, int ink0, int ink1, int marginBefore, int marginAfter) {
    if (marginBefore == extent) return {ink0 - ink1, 0};
    if (ink0 == 0 && ink1 == 0) return {extent - marginBefore - marginAfter, 0};
    return {ink0 - marginBefore, extent - ink1 - marginAfter};
}

}  // namespace

void CGlyph::CropCell(const uint8_t* cell, int cellWidth, int cellHeight, int bpp) {
    int left = cellWidth + 1, top = cellHeight + 1, right = 0, bottom = 0;
    if (cellWidth <= 0 || cellHeight <= 0) {
        // A cell without area holds no ink.
        Ink = InkBox{};
        return;
    }
    if (bpp >= 1 && bpp <= 8) {
        for (int y = 0; y < cellHeight; ++y) {
            int first, last;
            if (!FindRowInk(cell, static_cast<std::size_t>(y) * cellWidth * bpp, cellWidth, bpp, first, last))
                continue;
            left = std::min(left, first);
            right = std::max(right, last + 1);
            top = std::min(top, y);
            bottom = y + 1;
        }
    } else {
        CBitReader r;
        r.Start(cell);
        for (int y = 0; y < cellHeight; ++y)
            for (int x = 0; x < cellWidth; ++x) {
                if (r.ReadValue(bpp) != 0) {
                    left = std::min(left, x);
                    top = std::min(top, y);
                    right = std::max(right, x + 1);
                    bottom = std::max(bottom, y + 1);
                }
            }
    }
    if (right == 0)
        Ink = InkBox{};
    else
        Ink = InkBox{left, top, right, bottom};
}

void CGlyph::ExtractInk(const uint8_t* cell, int cellWidth, int bpp, int originRow, int originFromRight) {
    int w = Ink.Width(), h = Ink.Height();
    Pixels.assign(w > 0 && h > 0 ? PackedBytes(w, h, bpp) : 0, 0);
    if (!Pixels.empty() && bpp >= 1 && bpp <= 8) {
        // Pixels is zeroed: each ink row is one run of bits.
        const std::size_t rowBits = static_cast<std::size_t>(w) * bpp;
        for (int y = Ink.Y0; y < Ink.Y1; ++y)
            OrBitRun(Pixels.data(), (y - Ink.Y0) * rowBits, cell,
                     (static_cast<std::size_t>(y) * cellWidth + Ink.X0) * bpp, rowBits);
    } else if (!Pixels.empty()) {
        CBitReader r;
        r.Start(cell);
        CBitWriter wr;
        wr.Start(Pixels.data());
        for (int y = Ink.Y0; y < Ink.Y1; ++y) {
            long long bit = (static_cast<long long>(y) * cellWidth + Ink.X0) * bpp;
            r.In = cell + bit / 8;
            r.BitsLeft = 0;
            if (bit % 8) {
                r.Current = *r.In++;
                r.BitsLeft = 8 - static_cast<int>(bit % 8);
            }
            for (int x = 0; x < w; ++x) {
                wr.WriteValue(bpp, r.ReadValue(bpp));
                wr.MarkPending();
            }
        }
        wr.Flush();
    }
    Ascent = originRow - Ink.Y0;
    RightExtent = Ink.X1 - (cellWidth - originFromRight);
    Bpp = bpp;
}

void CGlyph::SetFromCell(const uint8_t* cell, int cellWidth, int cellHeight, int bpp, bool vertical, int space1,
                         int space2, int origin) {
    CropCell(cell, cellWidth, cellHeight, bpp);
    if (vertical) {
        TopSpace = space1;
        BottomSpace = space2;
        ExtractInk(cell, cellWidth, bpp, 0, origin);
    } else {
        LeftSpace = space1;
        RightSpace = space2;
        ExtractInk(cell, cellWidth, bpp, origin, cellWidth - Ink.X0);
    }
}

void CGlyph::SetFromCellWithMargins(const uint8_t* cell, int cellWidth, int cellHeight, int bpp, bool vertical,
                                    int marginBefore, int marginAfter, int origin) {
    CropCell(cell, cellWidth, cellHeight, bpp);
    if (vertical) {
        std::tie(TopSpace, BottomSpace) = SpacesFromMargins(cellHeight, Ink.Y0, Ink.Y1, marginBefore, marginAfter);
        ExtractInk(cell, cellWidth, bpp, 0, origin);
    } else {
        std::tie(LeftSpace, RightSpace) = SpacesFromMargins(cellWidth, Ink.X0, Ink.X1, marginBefore, marginAfter);
        ExtractInk(cell, cellWidth, bpp, origin, cellWidth - Ink.X0);
    }
}

void CGlyph::SetFromCellTrimmed(const uint8_t* cell, int cellWidth, int cellHeight, int bpp, bool vertical,
                                int origin) {
    CropCell(cell, cellWidth, cellHeight, bpp);
    if (vertical) {
        TopSpace = Ink.Y0;
        BottomSpace = cellHeight - Ink.Y1;
        ExtractInk(cell, cellWidth, bpp, 0, origin);
    } else {
        LeftSpace = Ink.X0;
        RightSpace = cellWidth - Ink.X1;
        ExtractInk(cell, cellWidth, bpp, origin, cellWidth - Ink.X0);
    }
}

namespace {

// The cell as one packed stream, pixel by pixel; also right for layouts the
// fast path below leaves alone (ink overhanging the cell, over 8 bits). Ink
// that overhangs makes the stream longer than the cell: it is cut at the
// cell's last pixel, so nothing past the cell is written.
void RenderToCellStreamed(const CGlyph& glyph, uint8_t* dst, int cellWidth, int cellHeight, int originRow,
                          int originFromRight, int bpp) {
    CBitWriter w;
    w.Start(dst);
    int room = cellWidth > 0 && cellHeight > 0 ? cellWidth * cellHeight : 0;
    auto blank = [&](int count) {
        count = std::clamp(count, 0, room);
        w.WriteRepeated(bpp, count, 0);
        room -= count;
    };
    int iw = glyph.Ink.Width(), ih = glyph.Ink.Height();
    if (glyph.Pixels.empty() || iw <= 0) {
        blank(room);
        w.Flush();
        return;
    }
    int above = originRow - glyph.Ascent;
    blank(above * cellWidth);
    int before = cellWidth - originFromRight + glyph.RightExtent - iw;
    int after = originFromRight - glyph.RightExtent;
    uint32_t mask = bpp >= 32 ? 0xFFFFFFFFu : ((1u << bpp) - 1);
    CBitReader r;
    r.Start(glyph.Pixels.data());
    for (int y = 0; y < ih && room > 0; ++y) {
        blank(before);
        for (int x = 0; x < iw && room > 0; ++x, --room) {
            w.WriteValue(bpp, r.ReadValue(glyph.Bpp) & mask);
            w.MarkPending();
        }
        blank(after);
    }
    blank((cellHeight - above - ih) * cellWidth);
    w.Flush();
}

}  // namespace

void RenderToCell(const CGlyph& glyph, uint8_t* dst, int cellWidth, int cellHeight, int originRow,
                  int originFromRight, int bpp) {
    const int iw = glyph.Ink.Width(), ih = glyph.Ink.Height();
    const bool blank = glyph.Pixels.empty() || iw <= 0;
    const int above = originRow - glyph.Ascent;
    const int before = cellWidth - originFromRight + glyph.RightExtent - iw;
    const int after = originFromRight - glyph.RightExtent;
    // The usual case, ink inside the cell: clear the cell and set only the
    // inked pixels instead of streaming every pixel through the bit writer.
    const bool inside = blank || (above >= 0 && before >= 0 && after >= 0 && above + ih <= cellHeight);
    if (!inside || bpp < 1 || bpp > 8 || cellWidth < 0 || cellHeight < 0) {
        RenderToCellStreamed(glyph, dst, cellWidth, cellHeight, originRow, originFromRight, bpp);
        return;
    }
    std::fill_n(dst, PackedBytes(cellWidth, cellHeight, bpp), uint8_t{0});
    if (blank) return;
    const uint32_t mask = (1u << bpp) - 1;
    const uint8_t* src = glyph.Pixels.data();
    const int srcBpp = glyph.Bpp;
    const std::size_t rowBits = static_cast<std::size_t>(cellWidth) * bpp;
    std::size_t rowStart = (static_cast<std::size_t>(above) * cellWidth + before) * bpp;
    if (srcBpp == 8) {
        // Rendered glyphs keep one byte a pixel.
        for (int y = 0; y < ih; ++y, rowStart += rowBits) {
            std::size_t bit = rowStart;
            for (int x = 0; x < iw; ++x, bit += bpp)
                if (const uint32_t v = src[x] & mask) OrBits(dst, bit, bpp, v);
            src += iw;
        }
        return;
    }
    if (srcBpp == bpp) {
        // Same depth: each ink row is one run of bits.
        const std::size_t inkRowBits = static_cast<std::size_t>(iw) * bpp;
        for (int y = 0; y < ih; ++y, rowStart += rowBits) OrBitRun(dst, rowStart, src, y * inkRowBits, inkRowBits);
        return;
    }
    if (srcBpp >= 1 && srcBpp < 8) {
        std::size_t srcBit = 0;
        for (int y = 0; y < ih; ++y, rowStart += rowBits) {
            std::size_t bit = rowStart;
            for (int x = 0; x < iw; ++x, bit += bpp, srcBit += srcBpp)
                if (const uint32_t v = PeekBits(src, srcBit, srcBpp) & mask) OrBits(dst, bit, bpp, v);
        }
        return;
    }
    CBitReader r;
    r.Start(src);
    for (int y = 0; y < ih; ++y, rowStart += rowBits) {
        std::size_t bit = rowStart;
        for (int x = 0; x < iw; ++x, bit += bpp)
            if (const uint32_t v = r.ReadValue(srcBpp) & mask) OrBits(dst, bit, bpp, v);
    }
}
