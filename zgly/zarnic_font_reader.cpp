#include "zgly/zarnic_font_reader.h"

#include "core/codepage.h"
#include "core/font_data.h"
#include "core/font_filter.h"
#include "core/general_exception.h"
#include "core/pg_ctrl.h"
#include "zgly/cell_image.h"
#include "zgly/font_block_file.h"
#include "zgly/font_block_set.h"
#include "zgly/zgly_format.h"

using namespace zgly;

void CZarnicFontReader::CheckParameters() { CheckNativeFontFile(Path); }

void CZarnicFontReader::Read(CFontData& font, const CFontFilter& filter) {
    CPgCtrl* pg = g_pPgCtrl;
    pg->SetStatus(" Reading ZARNIC Font...");
    pg->ResetProgress();
    CFontBlockSet blocks;
    CFontBlockFile(Path).Load(blocks);
    pg->SetProgressRange(0x10000);

    // Load has checked that both blocks exist and are large enough.
    const uint8_t* info = blocks.GetBlock(TagFINF, 0)->Data();
    const CCellLayout layout = ReadCellLayout(blocks);
    font.LineHeight.Set(static_cast<int8_t>(info[FinfLineFeed]));
    font.DefaultWidth.Set(CharWidths{static_cast<int8_t>(info[FinfDefaultLeft]), info[FinfDefaultGlyphWidth],
                                     info[FinfDefaultCharWidth]});
    const uint16_t alternateIndex = GetU16(info + FinfAlternateGlyph);
    const int encoding = info[FinfEncoding];
    font.Bpp.Set(layout.Bpp);
    font.Baseline.Set(layout.Baseline);
    font.IsVertical.Set(layout.Vertical);
    const int cw = layout.StoredWidth;

    CGlyphImage image;
    // Every code in ascending order: a walk instead of a lookup per code.
    CCodeWalker walker(blocks);
    for (uint32_t c = 0; c <= 0xFFFF; ++c) {
        const uint16_t code = static_cast<uint16_t>(c);
        const uint16_t g = walker.GlyphOf(code);
        pg->StepProgress(1);
        if (g == NoGlyph) continue;
        const char16_t u = FileCodeToUnicode(encoding, code);
        if (u == NoChar) {
            ReportWarning(pg, " Can't represent input character(0x%04X) in the Unicode character set.",
                          static_cast<int>(code));
            continue;
        }
        if (g == alternateIndex) font.AlternateChar.Set(u);
        if (filter.IsExcluded(u)) continue;

        const uint8_t* cell = blocks.GetCellBits(g);
        if (!cell)
            ThrowError("ZGLY File Error:\n Glyph index(=%d) of code 0x%04X is beyond the glyph cells(=%d)", g,
                       static_cast<int>(code), blocks.CellCount());
        const CharWidths widths = blocks.GetCharWidths(g);
        int w = widths.GlyphWidth;
        if (w > cw) {
            // Wider than the cell cannot be drawn; the cell is all there is.
            ReportWarning(pg, "Glyph width(=%d) of glyph %d is wider than the cell(=%d); the cell width is used.",
                          w, g, cw);
            w = cw;
        }
        ExtractGlyphImage(cell, layout, w, image);
        // The char width is read unsigned, like the glyph width: advances up
        // to 255 come back as they were written.
        auto glyph = std::make_unique<CGlyph>();
        glyph->SetFromCell(image.Pixels.data(), image.Width, image.Height, layout.Bpp, layout.Vertical, widths.Left,
                           widths.CharWidth - widths.Left - image.Extent, image.Origin);
        font.AddGlyph(std::move(glyph), u);
    }
}
