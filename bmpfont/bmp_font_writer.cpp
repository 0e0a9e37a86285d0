#include "bmpfont/bmp_font_writer.h"

#include "bmpfont/bmp_font_layout.h"
#include "bmpfont/grid_painter.h"
#include "bmpfont/grid_picture_file.h"
#include "bmpfont/bmp_image.h"
#include "core/font_data.h"
#include "core/general_exception.h"
#include "core/glyph_order.h"
#include "core/pg_ctrl.h"
#include "xmlfiles/glyph_order_files.h"
#include "xmlfiles/glyph_order_handler.h"
#include "zgly/path_checks.h"

void CBmpFontWriter::CheckParameters() {
    CheckOutputFile(Path);
    CheckGlyphOrderFile(OrderPath);
    if (Cells.CellWidth == 0) ThrowError("Parameter Error:\n Cell Width (=%d) must be > 0.", 0);
    if (Cells.CellHeight == 0) ThrowError("Parameter Error:\n Cell Height (=%d) must be > 0.", 0);
}

void CBmpFontWriter::LoadGlyphOrder(CGlyphOrder& order) {
    LoadGlyphOrderFile(order, OrderPath);
    CheckOrderGrid(order, OrderPath);
}

void CBmpFontWriter::Write(CFontData& font, const CGlyphOrder& order) {
    g_pPgCtrl->SetStatus(" Writing BMP...");
    g_pPgCtrl->ResetProgress();
    CheckOrderGrid(order, OrderPath);
    BmpGridLayout layout = ComputeGridLayout(font, order, Cells);
    CBmpImage picture;
    CreateGridPicture(picture, layout);
    CGridPainter painter(picture, layout);

    g_pPgCtrl->SetProgressRange(layout.Columns * layout.Rows);
    int clipped = 0;
    for (int r = 0; r < layout.Rows; ++r)
        for (int c = 0; c < layout.Columns; ++c) {
            uint16_t code = order.GetCode(c, r);
            if (code != NoCode)
                if (const CGlyph* glyph = font.FindGlyph(code))
                    if (!painter.DrawGlyph(*glyph, c, r)) ++clipped;
            g_pPgCtrl->StepProgress(1);
        }
    if (DrawGrid) painter.DrawFrames();
    painter.DrawMarks(DrawGrid);
    if (clipped > 0)
        ReportWarning(g_pPgCtrl,
                      "%d glyphs do not fit in the %dx%d cell: their pixels or width lines outside it are cut off.",
                      clipped, layout.CellWidth, layout.CellHeight);

    SaveGridPicture(Path, picture, OrderPath.filename().string());
}
