#include <gtest/gtest.h>

#include <algorithm>

#include "bmp_test_support.h"
#include "glyph_compare.h"
#include "bmpfont/bmp_font_reader.h"
#include "bmpfont/bmp_font_writer.h"
#include "core/font_filter.h"
#include "core/glyph_order.h"
#include "core/headless_pg_ctrl.h"

namespace {

const char* OrderText =
    "<letter-order version=\"1.0\"><body><area width=\"4\"/><order>Ag-<sp/><null/>BW</order></body></letter-order>";

// A 6 x 8 (horizontal) or 8 x 6 (vertical) source cell with ink in the given box.
std::unique_ptr<CGlyph> Glyph(int bpp, bool vertical, int x0, int y0, int x1, int y1, int s1, int s2, int seed) {
    int w = vertical ? 8 : 6, h = vertical ? 6 : 8;
    x1 = std::min(x1, w);
    y1 = std::min(y1, h);
    uint32_t levels = (1u << bpp) - 1;
    std::vector<uint32_t> cell(static_cast<std::size_t>(w * h), 0);
    for (int y = y0; y < y1; ++y)
        for (int x = x0; x < x1; ++x) cell[static_cast<std::size_t>(y * w + x)] = (x * 3 + y * 5 + seed) % levels + 1;
    return MakeGlyph(cell, w, h, bpp, vertical, s1, s2, vertical ? 4 : 6);
}

std::unique_ptr<CFontData> TestFont(int bpp, bool vertical) {
    auto font = std::make_unique<CFontData>();
    font->Bpp.Set(bpp);
    font->IsVertical.Set(vertical);
    font->AddGlyph(Glyph(bpp, vertical, 1, 1, 5, 6, 1, 1, 0), 'A');
    font->AddGlyph(Glyph(bpp, vertical, 0, 3, 3, 8, 0, 2, 1), 'g');
    font->AddGlyph(Glyph(bpp, vertical, 0, 3, 4, 4, -1, 2, 2), '-');
    font->AddGlyph(Glyph(bpp, vertical, 0, 0, 0, 0, 4, 0, 0), ' ');
    font->AddGlyph(Glyph(bpp, vertical, 2, 0, 6, 6, 0, 0, 3), 'W');
    font->PrepareForOutput();
    return font;
}

}  // namespace

TEST(BmpFontRoundTrip, KeepsEveryGlyphInEveryDepthLayoutAndMode) {
    CTempDir dir;
    auto order = dir.Write("t.xlor", OrderText);
    CHeadlessPgCtrl pg;
    g_pPgCtrl = &pg;
    struct Mode {
        int CellW, CellH, OffL, OffT, MarR, MarB;
    };
    const Mode modes[] = {{12, 14, -1, -1, 0, 0}, {9, 10, 1, 0, 0, 0}, {-1, -1, 1, 2, 1, 0}, {-1, -1, 0, 0, 0, 0}};
    for (bool vertical : {false, true})
        for (int bpp = 1; bpp <= 4; ++bpp)
            for (bool grid : {true, false})
                for (const Mode& m : modes) {
                    std::string what = "v" + std::to_string(vertical) + " bpp" + std::to_string(bpp) + " grid" +
                                       std::to_string(grid) + " cell" + std::to_string(m.CellW);
                    auto font = TestFont(bpp, vertical);
                    auto bmp = dir / "t.bmp";
                    CBmpFontWriter writer(bmp, order, grid, m.CellW, m.CellH, m.OffL, m.OffT, m.MarR, m.MarB);
                    writer.CheckParameters();
                    CGlyphOrder o;
                    writer.LoadGlyphOrder(o);
                    writer.Write(*font, o);

                    pg.Warnings.clear();
                    CBmpFontReader reader(bmp, order, bpp);
                    reader.CheckParameters();
                    CFontData back;
                    reader.Read(back, CFontFilter());
                    EXPECT_TRUE(pg.Warnings.empty()) << what << ": " << (pg.Warnings.empty() ? "" : pg.Warnings[0]);
                    ExpectSameGlyphs(*font, back, what);
                }
    g_pPgCtrl = nullptr;
}

