#include "bmpfont/grid_placement.h"

#include <algorithm>

#include "bmpfont/bmp_font_layout.h"
#include "core/font_data.h"

GridBaseline PlaceBaseline(const BmpGridLayout& l) {
    GridBaseline b;
    if (!l.IsVertical) {
        // A centred ink area taller than the cell keeps its negative offset:
        // the overflow is cut above and below the baseline as laid out.
        b.Origin = std::clamp(l.GlyphY + l.Baseline, 0, l.CellHeight);
        b.InkAreaStart = b.Origin - l.Baseline;
    } else {
        int32_t fromLeft = l.InkAreaWidth - l.Baseline;
        b.Origin = std::clamp(l.GlyphX + fromLeft, 1, l.CellWidth + 1);
        b.InkAreaStart = b.Origin - fromLeft;
    }
    return b;
}

void BaselineMarkPosition(const BmpGridLayout& l, const GridBaseline& b, int& x, int& y) {
    if (!l.IsVertical) {
        x = 0;
        y = b.Origin + 2;
    } else {
        // One column left of the origin, counted from the glyph area at column 4.
        x = b.Origin + 3;
        y = 0;
    }
}

GlyphPlacement PlaceGlyph(const BmpGridLayout& l, const GridBaseline& b, const CGlyph& g) {
    GlyphPlacement p;
    int iw = g.Ink.Width(), ih = g.Ink.Height();
    int cx = (l.InkAreaWidth - iw - std::max(g.RightSpace, 0) - std::max(g.LeftSpace, 0)) / 2;
    int cy = (l.InkAreaHeight - ih - std::max(g.BottomSpace, 0) - std::max(g.TopSpace, 0)) / 2;
    // The glyph with its spaces moves back into the cell where it would run
    // past its end, and starts at the cell's edge at the earliest, so that
    // the width line keeps its start (the origin).
    auto fit = [](int start, int box, int cell) { return std::max(start + box > cell ? cell - box : start, 0); };
    if (!l.IsVertical) {
        int start = fit(l.GlyphX + cx, std::max(g.LeftSpace, 0) + iw + std::max(g.RightSpace, 0), l.CellWidth);
        p.ScratchW = iw;
        p.ScratchH = l.InkAreaHeight;
        p.OriginRow = l.Baseline;
        p.OriginFromRight = g.RightExtent;
        p.BlockX = start + std::max(g.LeftSpace, 0);
        p.BlockY = b.InkAreaStart;
        p.LineStart = start - std::min(g.LeftSpace, 0);
        p.Advance = iw + g.LeftSpace + g.RightSpace;
        p.LineCut = p.Advance > 0 && p.LineStart + p.Advance > l.CellWidth;
    } else {
        int start = fit(l.GlyphY + cy, std::max(g.TopSpace, 0) + ih + std::max(g.BottomSpace, 0), l.CellHeight);
        p.ScratchW = l.InkAreaWidth;
        p.ScratchH = ih;
        p.OriginRow = g.Ascent;
        p.OriginFromRight = l.Baseline;
        p.BlockX = b.InkAreaStart;
        p.BlockY = start + std::max(g.TopSpace, 0);
        p.LineStart = start - std::min(g.TopSpace, 0);
        p.Advance = ih + g.TopSpace + g.BottomSpace;
        p.LineCut = p.Advance > 0 && p.LineStart + p.Advance > l.CellHeight;
    }
    return p;
}
