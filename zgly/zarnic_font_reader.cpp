#include "zgly/zarnic_font_reader.h"

#include <vector>

#include "core/bit_stream.h"
#include "core/codepage.h"
#include "core/font_data.h"
#include "core/font_filter.h"
#include "core/general_exception.h"
#include "core/packed_image.h"
#include "core/pg_ctrl.h"
#include "zgly/font_block_file.h"
#include "zgly/zgly_format.h"

using namespace zgly;

namespace {

// Copies the first w pixels of each of the h rows of a cw-wide cell into a
// packed w x h grid.
void ExtractColumns(uint8_t* dst, const uint8_t* cell, int w, int h, int cw, int bpp) {
    CBitReader r;
    r.Start(cell);
    CBitWriter out;
    out.Start(dst);
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            out.Write(bpp, r.Read(bpp));
            out.MarkPending();
        }
        // Not after the last row: skipping loads the next byte.
        if (cw > w && y + 1 < h) r.Skip((cw - w) * bpp);
    }
    out.Flush();
}

char16_t FileCodeToUnicode(int encoding, uint16_t code) {
    int codePage = EncodingCodePage(encoding);
    return codePage < 0 ? static_cast<char16_t>(code) : CodePageToUnicode(codePage, code);
}

}  // namespace

void CZarnicFontReader::CheckParameters() { CheckNativeFontFile(Path); }

void CZarnicFontReader::Read(CFontData& font, const CFontFilter& filter) {
    CPgCtrl* pg = g_pPgCtrl;
    if (pg) {
        pg->SetStatus(" Reading ZARNIC Font...");
        pg->ResetProgress();
    }
    CFontBlockSet blocks;
    CFontBlockFile(Path).Load(blocks);
    if (pg) pg->SetProgressRange(0x10000);

    // Load has checked that both blocks exist and are large enough.
    const uint8_t* info = blocks.GetBlock(TagFINF, 0)->Data();
    const uint8_t* glyphs = blocks.GetBlock(TagCGLP, 0)->Data();
    font.LineHeight.Set(static_cast<int8_t>(info[FinfLineFeed]));
    font.DefaultWidth.Set(CharWidths{static_cast<int8_t>(info[FinfDefaultLeft]), info[FinfDefaultGlyphWidth],
                                     info[FinfDefaultCharWidth]});
    const uint16_t alternateIndex = GetU16(info + FinfAlternateGlyph);
    const int encoding = info[FinfEncoding];
    const int bpp = glyphs[CglpBpp];
    font.Bpp.Set(bpp);
    font.Baseline.Set(static_cast<int8_t>(glyphs[CglpBaseline]));
    const bool vertical = (glyphs[CglpFlags] & FlagVertical) != 0;
    font.IsVertical.Set(vertical);
    const int rotation = (glyphs[CglpFlags] >> 1) & 3;
    const int cw = glyphs[CglpCellWidth], ch = glyphs[CglpCellHeight];

    std::vector<uint8_t> work(GetU16(glyphs + CglpCellSize) + 1u, 0);
    for (uint32_t c = 0; c <= 0xFFFF; ++c) {
        const uint16_t code = static_cast<uint16_t>(c);
        const uint16_t g = blocks.FindGlyphIndex(code);
        if (pg) pg->StepProgress(1);
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
        const int h = ch;
        int baseline = font.Baseline.Value;
        ExtractColumns(work.data(), cell, w, h, cw, bpp);

        int imageW = w, imageH = h;
        bool turned = rotation == 1 || rotation == 3;
        if (rotation == 1) RotateCounterClockwise(work.data(), work.data(), w, h, bpp);
        if (rotation == 2) Rotate180(work.data(), work.data(), w, h, bpp);
        if (rotation == 3) RotateClockwise(work.data(), work.data(), w, h, bpp);
        if (turned) std::swap(imageW, imageH);
        if ((!vertical && rotation == 1) || (vertical && rotation == 0)) baseline += w - cw;

        int extent = w;
        bool inkExtent = vertical ? (rotation == 0 || rotation == 2) : turned;
        if (inkExtent) {
            InkBox box;
            FindInkBox(box, work.data(), imageW, imageH, bpp, 0);
            extent = vertical ? box.Height() : box.Width();
        }
        // The char width is read unsigned, like the glyph width: advances up
        // to 255 come back as they were written.
        auto glyph = std::make_unique<CGlyph>();
        glyph->SetFromCell(work.data(), imageW, imageH, bpp, vertical, widths.Left,
                           widths.CharWidth - widths.Left - extent, baseline);
        font.AddGlyph(std::move(glyph), u);
    }
}
