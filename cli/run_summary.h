// The one line a finished convert prints: what was written and how it went.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "cli/options.h"
#include "core/font_io.h"

struct CRunSummary {
    std::vector<std::string> SourceNames;
    std::vector<std::size_t> SourceGlyphs;  // per source, when there are several
    std::size_t Glyphs = 0;
    int CellWidth = 0, CellHeight = 0, Bpp = 0;

    // A ZGLY output may hold fewer characters than the font had (those its
    // encoding lacks are left out, with warnings): count what the file holds.
    void TakeFromZglyFile(const std::string& path);
};

// "Wrote PATH: N glyphs (A: n1, B: n2), cell WxH, B bits per pixel, S bytes, W warnings"
// for the run's output as it now is.
std::string SummaryLine(CRunSummary summary, const CliOptions& options, int warnings);

// A writer that notes the prepared font's glyph count, cell and depth in the
// summary, then lets the real writer write.
class CSummaryWriter : public CFontWriter {
public:
    CSummaryWriter(std::unique_ptr<CFontWriter> inner, CRunSummary& summary);
    void CheckParameters() override { Inner->CheckParameters(); }
    void LoadGlyphOrder(CGlyphOrder& order) override { Inner->LoadGlyphOrder(order); }
    void Write(CFontData& font, const CGlyphOrder& order) override;

private:
    std::unique_ptr<CFontWriter> Inner;
    CRunSummary& Summary;
};
