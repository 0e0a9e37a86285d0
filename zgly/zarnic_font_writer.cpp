#include "zgly/zarnic_font_writer.h"

#include <cstring>
#include <vector>

#include "core/codepage.h"
#include "core/font_data.h"
#include "core/general_exception.h"
#include "core/packed_image.h"
#include "core/pg_ctrl.h"
#include "zgly/char_map_builder.h"
#include "zgly/font_block_file.h"
#include "zgly/path_checks.h"
#include "zgly/zgly_format.h"

using namespace zgly;

namespace {

constexpr int MaxByte = 255;

bool Given(int32_t v) { return v != NotGiven; }

// The code a Unicode character has in the output encoding, 0xFFFF when none.
uint16_t OutputCode(int encoding, uint16_t unicode) {
    int codePage = EncodingCodePage(encoding);
    return codePage < 0 ? unicode : UnicodeToCodePage(codePage, static_cast<char16_t>(unicode));
}

void Step(int d) {
    if (g_pPgCtrl) g_pPgCtrl->StepProgress(d);
}

}  // namespace

void CZarnicFontWriter::CheckParameters() {
    CheckOutputFile(Path);
    if (AlternateChar == 0) throw CGeneralException("Parameter Error:\n Invalid alternate character(0x0000).");
    if (Given(LineHeight) && (LineHeight < 0 || LineHeight > 255))
        ThrowError("Parameter Error:\n LineHeight(=%d) out of range[%d ～ %d]", LineHeight, 0, 255);
    if (Given(DefaultLeftSpace) && (DefaultLeftSpace < -128 || DefaultLeftSpace > 127))
        ThrowError("Parameter Error:\n DefaultLeftSpace(=%d) out of range[%d ～ %d]", DefaultLeftSpace, -128, 127);
}

std::unique_ptr<CFontData> CZarnicFontWriter::Recode(const CFontData& font) const {
    auto work = CFontData::CopySettingsFrom(font);
    work->ReserveGlyphs(font.GlyphCount());
    for (const auto& glyph : font.GetGlyphs()) {
        uint16_t code = OutputCode(Encoding, glyph->Code);
        if (code == NoChar) {
            ReportWarning(g_pPgCtrl, "Can't represent output character('%c': U+%04X) in the specified character set.",
                          static_cast<char16_t>(glyph->Code), static_cast<int>(glyph->Code));
            continue;
        }
        work->AddGlyph(CGlyph::CopyFrom(*glyph), code);
    }
    work->SortGlyphs();
    return work;
}

void CZarnicFontWriter::CheckDefaultWidths(const CFontData& work) const {
    int cellWidth = work.CellWidth.Value;
    if (Given(DefaultWidth) && (DefaultWidth < 0 || DefaultWidth > cellWidth))
        ThrowError("Parameter Error:\n DefaultWidth(=%d) out of range[%d ～ %d]", DefaultWidth, 0, cellWidth);
    if (Given(DefaultRightSpace)) {
        int left = Given(DefaultLeftSpace) ? DefaultLeftSpace : work.DefaultWidth.Value.Left;
        int width = Given(DefaultWidth) ? DefaultWidth : work.DefaultWidth.Value.GlyphWidth;
        int low = -128 - width - left, high = 127 - width - left;
        if (DefaultRightSpace < low || DefaultRightSpace > high)
            ThrowError("Parameter Error:\n DefaultRightSpace(=%d) out of range[%d ～ %d]", DefaultRightSpace, low,
                       high);
    }
}

void CZarnicFontWriter::Write(CFontData& font, const CGlyphOrder& order) {
    (void)order;
    CFontBlockSet blocks;
    if (g_pPgCtrl) {
        g_pPgCtrl->SetStatus(" Writing ZARNIC Font...");
        g_pPgCtrl->ResetProgress();
    }
    std::unique_ptr<CFontData> work = Recode(font);
    CheckDefaultWidths(*work);
    BuildBlocks(*work, blocks);
    CFontBlockFile(Path).Save(blocks);
}

void CZarnicFontWriter::BuildBlocks(const CFontData& work, CFontBlockSet& blocks) const {
    if (g_pPgCtrl) g_pPgCtrl->SetProgressRange(3 * static_cast<int>(work.GlyphCount()));
    if (work.CellWidth.Value > MaxByte)
        ThrowError("Parameter Error:\n Max glyph width(=%d) over %d.", work.CellWidth.Value, MaxByte);
    if (work.CellHeight.Value > MaxByte)
        ThrowError("Parameter Error:\n Font height(=%d) over %d.", work.CellHeight.Value, MaxByte);
    if (work.MaxCharWidth.Value > MaxByte)
        ThrowError("Parameter Error:\n Max char width(=%d) over %d.", work.MaxCharWidth.Value, MaxByte);
    if (work.Baseline.Value > 127) ThrowError("Parameter Error:\n Baseline position(=%d) over %d.", work.Baseline.Value, 127);
    if (work.Baseline.Value < -128)
        ThrowError("Parameter Error:\n Baseline position(=%d) under %d.", work.Baseline.Value, -128);

    AddFontInfo(work, blocks);
    AddGlyphCells(work, blocks);
    AddWidths(work, blocks);
    AddCharMap(work, blocks);
    FixOffsets(blocks);
}

void CZarnicFontWriter::AddFontInfo(const CFontData& work, CFontBlockSet& blocks) const {
    uint16_t alternateIndex = 0;
    uint16_t a = NoChar;
    if (AlternateChar != NoChar)
        a = AlternateChar;
    else if (work.AlternateChar.Specified && work.AlternateChar.Value != NoChar)
        a = work.AlternateChar.Value;
    if (a != NoChar) {
        uint16_t code = OutputCode(Encoding, a);
        if (code == NoChar)
            ThrowError("Parameter Error:\n Can't represent AlternateChar('%c': U+%04X) in the target character set.\n "
                       "Please use Unicode character set or other AlternateChar.",
                       static_cast<char16_t>(a), static_cast<int>(a));
        const CGlyph* glyph = work.FindGlyph(code);
        if (!glyph) {
            if (EncodingCodePage(Encoding) < 0)
                ThrowError("Parameter Error:\n Specified AlternateChar('%c' : U+%04X) is not included in the Font",
                           static_cast<char16_t>(a), static_cast<int>(code));
            ThrowError("Parameter Error:\n Specified AlternateChar('%c' : 0x%04X) is not included in the Font",
                       static_cast<char16_t>(a), static_cast<int>(code));
        }
        alternateIndex = glyph->Index;
    }

    const CharWidths& d = work.DefaultWidth.Value;
    int left = Given(DefaultLeftSpace) ? DefaultLeftSpace : d.Left;
    int width = Given(DefaultWidth) ? DefaultWidth : d.GlyphWidth;
    int right = Given(DefaultRightSpace) ? DefaultRightSpace : static_cast<int8_t>(d.CharWidth) - d.GlyphWidth - d.Left;
    int lineFeed = Given(LineHeight) ? LineHeight : work.LineHeight.Value;

    uint8_t c[FinfSize] = {};
    c[FinfFontType] = 0;
    c[FinfLineFeed] = static_cast<uint8_t>(lineFeed);
    PutU16(c + FinfAlternateGlyph, alternateIndex);
    c[FinfDefaultLeft] = static_cast<uint8_t>(left);
    c[FinfDefaultGlyphWidth] = static_cast<uint8_t>(width);
    c[FinfDefaultCharWidth] = static_cast<uint8_t>(left + width + right);
    c[FinfEncoding] = static_cast<uint8_t>(Encoding);
    blocks.AddBlock(TagFINF, c, FinfSize);
}

void CZarnicFontWriter::AddGlyphCells(const CFontData& work, CFontBlockSet& blocks) const {
    const int w = work.CellWidth.Value, h = work.CellHeight.Value, bpp = work.Bpp.Value;
    const int baseline = work.Baseline.Value;
    const bool vertical = work.Vertical();
    const std::size_t cellSize = (static_cast<std::size_t>(w) * h * bpp + 7) / 8;
    const std::size_t count = work.GlyphCount();
    if (CglpHeadSize + cellSize * count > 0x7FFFFFF0u)
        ThrowError("Parameter Error:\n Too many glyphs(=%d) for the cell size(=%d).", static_cast<long long>(count),
                   static_cast<long long>(cellSize));

    std::vector<uint8_t> content(CglpHeadSize + cellSize * count, 0);
    std::vector<uint8_t> scratch(cellSize + 1, 0);
    for (const auto& glyph : work.GetGlyphs()) {
        Step(1);
        uint8_t* cell = content.data() + CglpHeadSize + glyph->Index * cellSize;
        const int inkW = glyph->Ink.Width(), inkH = glyph->Ink.Height();
        if (!vertical) {
            RenderToCell(*glyph, cell, w, h, baseline, w, bpp);
            if (Rotation == 1) {
                RotateClockwise(cell, cell, w, h, bpp);
            } else if (Rotation == 2) {
                // Turned half round, the ink must end at the left edge again.
                std::fill(scratch.begin(), scratch.end(), 0);
                CopyRect(scratch.data(), cell, w, w, 0, 0, inkW, h, w - inkW, 0, bpp);
                Rotate180(cell, scratch.data(), w, h, bpp);
            } else if (Rotation == 3) {
                RotateCounterClockwise(cell, cell, w, h, bpp);
            }
        } else {
            RenderToCell(*glyph, cell, w, h, glyph->Ascent, baseline, bpp);
            if (Rotation == 1) {
                std::fill(scratch.begin(), scratch.end(), 0);
                CopyRect(scratch.data(), cell, w, w, 0, 0, w, inkH, 0, h - inkH, bpp);
                RotateClockwise(cell, scratch.data(), w, h, bpp);
            } else if (Rotation == 2) {
                Rotate180(cell, cell, w, h, bpp);
            } else if (Rotation == 3) {
                RotateCounterClockwise(cell, cell, w, h, bpp);
            }
        }
    }
    bool turned = Rotation == 1 || Rotation == 3;
    uint8_t* c = content.data();
    c[CglpCellWidth] = static_cast<uint8_t>(turned ? h : w);
    c[CglpCellHeight] = static_cast<uint8_t>(turned ? w : h);
    PutU16(c + CglpCellSize, static_cast<uint32_t>(cellSize));
    c[CglpBaseline] = static_cast<uint8_t>(baseline);
    c[CglpMaxCharWidth] = static_cast<uint8_t>(vertical ? work.MaxCharHeight.Value : work.MaxCharWidth.Value);
    c[CglpBpp] = static_cast<uint8_t>(bpp);
    c[CglpFlags] = static_cast<uint8_t>((vertical ? FlagVertical : 0) + 2 * Rotation);
    blocks.AddBlock(TagCGLP, content.data(), static_cast<uint32_t>(content.size()));
}

CharWidths CZarnicFontWriter::WidthEntry(const CFontData& work, const CGlyph& g) const {
    const int w = g.Ink.Width(), h = g.Ink.Height(), baseline = work.Baseline.Value;
    int left, glyphWidth, charWidth, extent;
    if (!work.Vertical()) {
        left = g.LeftSpace;
        charWidth = g.LeftSpace + w + g.RightSpace;
        extent = w;
        if (Rotation == 1)
            glyphWidth = work.CellHeight.Value - baseline + g.Ascent;
        else if (Rotation == 3)
            glyphWidth = h + baseline - g.Ascent;
        else
            glyphWidth = w;
    } else {
        left = g.TopSpace;
        charWidth = g.TopSpace + h + g.BottomSpace;
        extent = h;
        if (Rotation == 0)
            glyphWidth = g.RightExtent - baseline + work.CellWidth.Value;
        else if (Rotation == 2)
            glyphWidth = w - g.RightExtent + baseline;
        else
            glyphWidth = h;
    }
    if (extent < 1) glyphWidth = 0;
    return CharWidths{static_cast<int8_t>(left), static_cast<uint8_t>(glyphWidth), static_cast<uint8_t>(charWidth)};
}

void CZarnicFontWriter::AddWidths(const CFontData& work, CFontBlockSet& blocks) const {
    const std::size_t count = work.GlyphCount();
    if (count == 0) return;
    std::vector<uint8_t> content(CwdhHeadSize + WidthEntrySize * count, 0);
    PutU16(content.data() + CwdhFirstGlyph, 0);
    PutU16(content.data() + CwdhLastGlyph, static_cast<uint32_t>(count - 1));
    for (const auto& glyph : work.GetGlyphs()) {
        Step(1);
        CharWidths e = WidthEntry(work, *glyph);
        uint8_t* p = content.data() + CwdhHeadSize + WidthEntrySize * glyph->Index;
        p[0] = static_cast<uint8_t>(e.Left);
        p[1] = e.GlyphWidth;
        p[2] = e.CharWidth;
    }
    blocks.AddBlock(TagCWDH, content.data(), static_cast<uint32_t>(content.size()));
}

void CZarnicFontWriter::AddCharMap(const CFontData& work, CFontBlockSet& blocks) const {
    std::vector<CodeGlyph> list;
    list.reserve(work.GlyphCount());
    for (const auto& glyph : work.GetGlyphs()) list.push_back(CodeGlyph{glyph->Code, glyph->Index});
    for (const CharMapBlock& b : BuildCharMap(list, Step)) {
        std::vector<uint8_t> content = b.Encode();
        blocks.AddBlock(TagCMAP, content.data(), static_cast<uint32_t>(content.size()));
    }
}

void CZarnicFontWriter::FixOffsets(CFontBlockSet& blocks) {
    // Content offsets as the save will lay the blocks out.
    uint32_t at = HeaderSize;
    auto place = [&](uint32_t tag, std::vector<uint32_t>& offsets) {
        for (uint32_t i = 0; const CFontBlock* b = blocks.GetBlock(tag, i); ++i) {
            offsets.push_back(at + BlockHeaderSize);
            at += PaddedBlockSize(b->Length());
        }
    };
    std::vector<uint32_t> finf, cglp, cwdh, cmap;
    place(TagFINF, finf);
    place(TagCGLP, cglp);
    place(TagCWDH, cwdh);
    place(TagCMAP, cmap);

    CFontBlock* info = blocks.GetBlock(TagFINF, 0);
    PutU32(info->Data() + FinfGlyphOffset, cglp.empty() ? 0 : cglp[0]);
    PutU32(info->Data() + FinfWidthOffset, cwdh.empty() ? 0 : cwdh[0]);
    PutU32(info->Data() + FinfMapOffset, cmap.empty() ? 0 : cmap[0]);
    for (uint32_t i = 0; i < cwdh.size(); ++i)
        PutU32(blocks.GetBlock(TagCWDH, i)->Data() + CwdhNext, i + 1 < cwdh.size() ? cwdh[i + 1] : 0);
    for (uint32_t i = 0; i < cmap.size(); ++i)
        PutU32(blocks.GetBlock(TagCMAP, i)->Data() + CmapNext, i + 1 < cmap.size() ? cmap[i + 1] : 0);
}
