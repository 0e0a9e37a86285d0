#include "zgly/zarnic_font_writer.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "core/codepage.h"
#include "core/font_data.h"
#include "core/general_exception.h"
#include "core/packed_image.h"
#include "core/pg_ctrl.h"
#include "zgly/char_map_builder.h"
#include "zgly/binary_file.h"
#include "zgly/font_block_file.h"
#include "zgly/font_block_set.h"
#include "zgly/path_checks.h"
#include "zgly/zgly_format.h"

using namespace zgly;

namespace {

constexpr int MaxByte = 255;

bool Given(int32_t v) { return v != NotGiven; }

void Step(int d) { g_pPgCtrl->StepProgress(d); }

}  // namespace

void CZarnicFontWriter::CheckParameters() {
    CheckOutputFile(Path);
    if (AlternateChar == 0) throw CGeneralException("Parameter Error:\n Invalid alternate character(0x0000).");
    if (Given(LineHeight) && (LineHeight < 0 || LineHeight > 255))
        ThrowError("Parameter Error:\n LineHeight(=%d) out of range[%d ～ %d]", LineHeight, 0, 255);
    if (Given(DefaultLeftSpace) && (DefaultLeftSpace < -128 || DefaultLeftSpace > 127))
        ThrowError("Parameter Error:\n DefaultLeftSpace(=%d) out of range[%d ～ %d]", DefaultLeftSpace, -128, 127);
}

CZarnicFontWriter::OutputGlyphs CZarnicFontWriter::Recode(const CFontData& font) const {
    OutputGlyphs list;
    list.reserve(font.GlyphCount());
    // Where each output code went in the list; the first glyph of a code is
    // kept and a later one that differs is reported.
    std::vector<int32_t> slotOf(0x10000, -1);
    for (const auto& glyph : font.GetGlyphs()) {
        uint16_t code = UnicodeToFileCode(Encoding, glyph->Code);
        if (code == NoChar) {
            ReportWarning(g_pPgCtrl, "Can't represent output character('%c': U+%04X) in the specified character set.",
                          static_cast<char16_t>(glyph->Code), static_cast<int>(glyph->Code));
            continue;
        }
        int32_t& slot = slotOf[code];
        if (slot < 0) {
            slot = static_cast<int32_t>(list.size());
            list.push_back(OutputGlyph{code, glyph.get()});
        } else if (!glyph->SameAs(*list[slot].Glyph)) {
            ReportWarning(g_pPgCtrl,
                          "A character code('%c': U+%04X) has multiple glyphs. Second and later glyphs are ignored.",
                          static_cast<char16_t>(code), static_cast<int>(code));
        }
    }
    std::sort(list.begin(), list.end(), [](const OutputGlyph& a, const OutputGlyph& b) { return a.Code < b.Code; });
    return list;
}

void CZarnicFontWriter::CheckDefaultWidths(const CFontData& font) const {
    int cellWidth = font.CellWidth.Value;
    if (Given(DefaultWidth) && (DefaultWidth < 0 || DefaultWidth > cellWidth))
        ThrowError("Parameter Error:\n DefaultWidth(=%d) out of range[%d ～ %d]", DefaultWidth, 0, cellWidth);
    if (Given(DefaultRightSpace)) {
        int left = Given(DefaultLeftSpace) ? DefaultLeftSpace : font.DefaultWidth.Value.Left;
        int width = Given(DefaultWidth) ? DefaultWidth : font.DefaultWidth.Value.GlyphWidth;
        int low = -128 - width - left, high = 127 - width - left;
        if (DefaultRightSpace < low || DefaultRightSpace > high)
            ThrowError("Parameter Error:\n DefaultRightSpace(=%d) out of range[%d ～ %d]", DefaultRightSpace, low,
                       high);
    }
}

void CZarnicFontWriter::Write(CFontData& font, const CGlyphOrder& order) {
    (void)order;
    g_pPgCtrl->SetStatus(" Writing ZARNIC Font...");
    g_pPgCtrl->ResetProgress();
    const OutputGlyphs glyphs = Recode(font);
    CheckDefaultWidths(font);
    g_pPgCtrl->SetProgressRange(3 * static_cast<int>(glyphs.size()));
    CheckCellLimits(font);

    // Everything but the glyph cells is made first; the cells, tens of
    // megabytes at large sizes, go to the file as they are drawn.
    CFontBlockSet blocks;
    AddFontInfo(font, glyphs, blocks);
    const uint32_t cellsLength = GlyphBlockLength(font, glyphs.size());
    AddWidths(font, glyphs, blocks);
    AddCharMap(glyphs, blocks);
    FixOffsets(blocks, cellsLength);
    CFontBlockFile::StreamedBlock cells{TagCGLP, cellsLength,
                                        [&](CBinaryFile& file) { WriteGlyphCells(font, glyphs, file); }};
    CFontBlockFile(Path).Save(blocks, cells);
}

void CZarnicFontWriter::CheckCellLimits(const CFontData& font) const {
    if (font.CellWidth.Value > MaxByte)
        ThrowError("Parameter Error:\n Max glyph width(=%d) over %d.", font.CellWidth.Value, MaxByte);
    if (font.CellHeight.Value > MaxByte)
        ThrowError("Parameter Error:\n Font height(=%d) over %d.", font.CellHeight.Value, MaxByte);
    if (font.MaxCharWidth.Value > MaxByte)
        ThrowError("Parameter Error:\n Max char width(=%d) over %d.", font.MaxCharWidth.Value, MaxByte);
    if (font.Baseline.Value > 127) ThrowError("Parameter Error:\n Baseline position(=%d) over %d.", font.Baseline.Value, 127);
    if (font.Baseline.Value < -128)
        ThrowError("Parameter Error:\n Baseline position(=%d) under %d.", font.Baseline.Value, -128);
}

void CZarnicFontWriter::AddFontInfo(const CFontData& font, const OutputGlyphs& glyphs, CFontBlockSet& blocks) const {
    uint16_t alternateIndex = 0;
    uint16_t a = NoChar;
    if (AlternateChar != NoChar)
        a = AlternateChar;
    else if (font.AlternateChar.Specified && font.AlternateChar.Value != NoChar)
        a = font.AlternateChar.Value;
    if (a != NoChar) {
        uint16_t code = UnicodeToFileCode(Encoding, a);
        if (code == NoChar)
            ThrowError("Parameter Error:\n Can't represent AlternateChar('%c': U+%04X) in the target character set.\n "
                       "Please use Unicode character set or other AlternateChar.",
                       static_cast<char16_t>(a), static_cast<int>(a));
        auto found = std::lower_bound(glyphs.begin(), glyphs.end(), code,
                                      [](const OutputGlyph& g, uint16_t c) { return g.Code < c; });
        if (found == glyphs.end() || found->Code != code) {
            if (EncodingCodePage(Encoding) < 0)
                ThrowError("Parameter Error:\n Specified AlternateChar('%c' : U+%04X) is not included in the Font",
                           static_cast<char16_t>(a), static_cast<int>(code));
            ThrowError("Parameter Error:\n Specified AlternateChar('%c' : 0x%04X) is not included in the Font",
                       static_cast<char16_t>(a), static_cast<int>(code));
        }
        alternateIndex = static_cast<uint16_t>(found - glyphs.begin());
    }

    const CharWidths& d = font.DefaultWidth.Value;
    int left = Given(DefaultLeftSpace) ? DefaultLeftSpace : d.Left;
    int width = Given(DefaultWidth) ? DefaultWidth : d.GlyphWidth;
    int right = Given(DefaultRightSpace) ? DefaultRightSpace : static_cast<int8_t>(d.CharWidth) - d.GlyphWidth - d.Left;
    int lineFeed = Given(LineHeight) ? LineHeight : font.LineHeight.Value;

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

uint32_t CZarnicFontWriter::GlyphBlockLength(const CFontData& font, std::size_t count) const {
    const std::size_t cellSize =
        (static_cast<std::size_t>(font.CellWidth.Value) * font.CellHeight.Value * font.Bpp.Value + 7) / 8;
    // Block and file sizes are 32-bit: a glyph block this large could never be saved.
    if (CglpHeadSize + cellSize * count > 0x7FFFFFF0u)
        ThrowError("Parameter Error:\n Too many glyphs(=%d) for the cell size(=%d).", static_cast<long long>(count),
                   static_cast<long long>(cellSize));
    return static_cast<uint32_t>(CglpHeadSize + cellSize * count);
}

void CZarnicFontWriter::WriteGlyphCells(const CFontData& font, const OutputGlyphs& glyphs, CBinaryFile& file) const {
    const int w = font.CellWidth.Value, h = font.CellHeight.Value, bpp = font.Bpp.Value;
    const int baseline = font.Baseline.Value;
    const bool vertical = font.Vertical();
    const std::size_t cellSize = (static_cast<std::size_t>(w) * h * bpp + 7) / 8;

    const bool turned = Rotation == RotationClockwise || Rotation == RotationCounterClockwise;
    uint8_t head[CglpHeadSize] = {};
    head[CglpCellWidth] = static_cast<uint8_t>(turned ? h : w);
    head[CglpCellHeight] = static_cast<uint8_t>(turned ? w : h);
    PutU16(head + CglpCellSize, static_cast<uint32_t>(cellSize));
    head[CglpBaseline] = static_cast<uint8_t>(baseline);
    head[CglpMaxCharWidth] = static_cast<uint8_t>(vertical ? font.MaxCharHeight.Value : font.MaxCharWidth.Value);
    head[CglpBpp] = static_cast<uint8_t>(bpp);
    head[CglpFlags] = static_cast<uint8_t>((vertical ? FlagVertical : 0) + 2 * Rotation);
    file.Write(head, CglpHeadSize);

    // Cells are drawn into a batch of about 256 KiB, written in one call.
    const std::size_t perBatch = std::max<std::size_t>(1, (std::size_t{256} << 10) / std::max<std::size_t>(cellSize, 1));
    std::vector<uint8_t> batch(perBatch * cellSize);
    std::vector<uint8_t> scratch(cellSize + 1, 0);
    std::size_t held = 0;
    for (const OutputGlyph& out : glyphs) {
        Step(1);
        const CGlyph& glyph = *out.Glyph;
        uint8_t* cell = batch.data() + held * cellSize;
        const int inkW = glyph.Ink.Width(), inkH = glyph.Ink.Height();
        if (!vertical) {
            RenderToCell(glyph, cell, w, h, baseline, w, bpp);
            if (Rotation == RotationClockwise) {
                RotateClockwise(cell, cell, w, h, bpp);
            } else if (Rotation == RotationHalf) {
                // Turned half round, the ink must end at the left edge again.
                std::fill(scratch.begin(), scratch.end(), 0);
                CopyRect(scratch.data(), cell, w, w, 0, 0, inkW, h, w - inkW, 0, bpp);
                Rotate180(cell, scratch.data(), w, h, bpp);
            } else if (Rotation == RotationCounterClockwise) {
                RotateCounterClockwise(cell, cell, w, h, bpp);
            }
        } else {
            RenderToCell(glyph, cell, w, h, glyph.Ascent, baseline, bpp);
            if (Rotation == RotationClockwise) {
                std::fill(scratch.begin(), scratch.end(), 0);
                CopyRect(scratch.data(), cell, w, w, 0, 0, w, inkH, 0, h - inkH, bpp);
                RotateClockwise(cell, scratch.data(), w, h, bpp);
            } else if (Rotation == RotationHalf) {
                Rotate180(cell, cell, w, h, bpp);
            } else if (Rotation == RotationCounterClockwise) {
                RotateCounterClockwise(cell, cell, w, h, bpp);
            }
        }
        if (++held == perBatch) {
            file.Write(batch.data(), static_cast<uint32_t>(held * cellSize));
            held = 0;
        }
    }
    if (held > 0) file.Write(batch.data(), static_cast<uint32_t>(held * cellSize));
}

CharWidths CZarnicFontWriter::WidthEntry(const CFontData& work, const CGlyph& g) const {
    const int w = g.Ink.Width(), h = g.Ink.Height(), baseline = work.Baseline.Value;
    int left, glyphWidth, charWidth, extent;
    if (!work.Vertical()) {
        left = g.LeftSpace;
        charWidth = g.LeftSpace + w + g.RightSpace;
        extent = w;
        if (Rotation == RotationClockwise)
            glyphWidth = work.CellHeight.Value - baseline + g.Ascent;
        else if (Rotation == RotationCounterClockwise)
            glyphWidth = h + baseline - g.Ascent;
        else
            glyphWidth = w;
    } else {
        left = g.TopSpace;
        charWidth = g.TopSpace + h + g.BottomSpace;
        extent = h;
        if (Rotation == RotationNone)
            glyphWidth = g.RightExtent - baseline + work.CellWidth.Value;
        else if (Rotation == RotationHalf)
            glyphWidth = w - g.RightExtent + baseline;
        else
            glyphWidth = h;
    }
    if (extent < 1) glyphWidth = 0;
    return CharWidths{static_cast<int8_t>(left), static_cast<uint8_t>(glyphWidth), static_cast<uint8_t>(charWidth)};
}

void CZarnicFontWriter::AddWidths(const CFontData& font, const OutputGlyphs& glyphs, CFontBlockSet& blocks) const {
    const std::size_t count = glyphs.size();
    if (count == 0) return;
    std::vector<uint8_t> content(CwdhHeadSize + WidthEntrySize * count, 0);
    PutU16(content.data() + CwdhFirstGlyph, 0);
    PutU16(content.data() + CwdhLastGlyph, static_cast<uint32_t>(count - 1));
    uint8_t* p = content.data() + CwdhHeadSize;
    for (const OutputGlyph& out : glyphs) {
        Step(1);
        CharWidths e = WidthEntry(font, *out.Glyph);
        p[0] = static_cast<uint8_t>(e.Left);
        p[1] = e.GlyphWidth;
        p[2] = e.CharWidth;
        p += WidthEntrySize;
    }
    blocks.AddBlock(TagCWDH, std::move(content));
}

void CZarnicFontWriter::AddCharMap(const OutputGlyphs& glyphs, CFontBlockSet& blocks) const {
    std::vector<CodeGlyph> list;
    list.reserve(glyphs.size());
    for (std::size_t i = 0; i < glyphs.size(); ++i) list.push_back(CodeGlyph{glyphs[i].Code, static_cast<uint16_t>(i)});
    for (const CharMapBlock& b : BuildCharMap(list, Step)) {
        blocks.AddBlock(TagCMAP, b.Encode());
    }
}

void CZarnicFontWriter::FixOffsets(CFontBlockSet& blocks, uint32_t glyphBlockLength) {
    // Content offsets as the save will lay the blocks out, the streamed glyph
    // block in its place after FINF.
    uint32_t at = HeaderSize;
    auto place = [&](uint32_t tag, std::vector<uint32_t>& offsets) {
        for (uint32_t i = 0; const CFontBlock* b = blocks.GetBlock(tag, i); ++i) {
            offsets.push_back(at + BlockHeaderSize);
            at += PaddedBlockSize(b->Length());
        }
    };
    std::vector<uint32_t> finf, cwdh, cmap;
    place(TagFINF, finf);
    const uint32_t cglp = at + BlockHeaderSize;
    at += PaddedBlockSize(glyphBlockLength);
    place(TagCWDH, cwdh);
    place(TagCMAP, cmap);

    CFontBlock* info = blocks.GetBlock(TagFINF, 0);
    PutU32(info->Data() + FinfGlyphOffset, cglp);
    PutU32(info->Data() + FinfWidthOffset, cwdh.empty() ? 0 : cwdh[0]);
    PutU32(info->Data() + FinfMapOffset, cmap.empty() ? 0 : cmap[0]);
    for (uint32_t i = 0; i < cwdh.size(); ++i)
        PutU32(blocks.GetBlock(TagCWDH, i)->Data() + CwdhNext, i + 1 < cwdh.size() ? cwdh[i + 1] : 0);
    for (uint32_t i = 0; i < cmap.size(); ++i)
        PutU32(blocks.GetBlock(TagCMAP, i)->Data() + CmapNext, i + 1 < cmap.size() ? cmap[i + 1] : 0);
}
