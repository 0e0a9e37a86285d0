// Draws the font as a glyph-grid BMP picture in the cells of a glyph order file.
#pragma once

#include <cstdint>

#include "bmpfont/bmp_font_layout.h"
#include "core/font_io.h"

class CBmpFontWriter : public CFontWriter {
public:
    CBmpFontWriter(std::filesystem::path path, std::filesystem::path orderPath, bool drawGrid, int32_t cellWidth,
                   int32_t cellHeight, int32_t offsetLeft, int32_t offsetTop, int32_t marginRight,
                   int32_t marginBottom)
        : CFontWriter(std::move(path)),
          OrderPath(std::move(orderPath)),
          DrawGrid(drawGrid),
          Cells{cellWidth, cellHeight, offsetLeft, offsetTop, marginRight, marginBottom} {}
    void CheckParameters() override;
    void Write(CFontData& font, const CGlyphOrder& order) override;
    void LoadGlyphOrder(CGlyphOrder& order) override;

    std::filesystem::path OrderPath;
    bool DrawGrid;
    BmpCellSettings Cells;
};
