#include "bmpfont/grid_template.h"

#include "bmpfont/bmp_font_layout.h"
#include "bmpfont/grid_painter.h"
#include "bmpfont/grid_picture_file.h"
#include "bmpfont/bmp_image.h"
#include "core/font_data.h"

void WriteGridTemplate(const std::filesystem::path& out, const CGlyphOrder& order, const GridTemplateSettings& s,
                       const std::string& orderName) {
    // A font without glyphs whose ink area is the cell: the layout is then
    // the cell itself at offset 0.
    CFontData font;
    font.Bpp.Set(s.Bpp);
    font.IsVertical.Set(s.Vertical);
    font.Baseline.Set(s.Baseline);
    font.MaxCharWidth.Set(s.CellWidth);
    font.CellWidth.Set(s.CellWidth);
    font.MaxCharHeight.Set(s.CellHeight);
    font.CellHeight.Set(s.CellHeight);
    BmpGridLayout layout = ComputeGridLayout(font, order, BmpCellSettings{s.CellWidth, s.CellHeight, 0, 0, 0, 0});
    CBmpImage picture;
    CreateGridPicture(picture, layout);
    CGridPainter painter(picture, layout);
    painter.DrawFrames();
    painter.DrawMarks(true);
    SaveGridPicture(out, picture, orderName);
}
