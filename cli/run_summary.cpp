#include "cli/run_summary.h"

#include <filesystem>

#include "core/font_data.h"
#include "core/general_exception.h"
#include "platform/paths.h"
#include "zgly/zgly_info.h"

namespace {

std::string Count(std::uintmax_t n, const char* one, const char* many) {
    return std::to_string(n) + " " + (n == 1 ? one : many);
}

}  // namespace

std::string SummaryLine(CRunSummary s, const CliOptions& options, int warnings) {
    const std::string& path = options.OutputPath;
    if (options.Output == OutputKind::Zgly) s.TakeFromZglyFile(path);
    const int64_t size = FileSize(path);
    const std::uintmax_t fileSize = size < 0 ? 0 : static_cast<std::uintmax_t>(size);
    std::string line = "Wrote " + path + ": " + Count(s.Glyphs, "glyph", "glyphs");
    if (s.SourceGlyphs.size() > 1) {
        line += " (";
        for (std::size_t n = 0; n < s.SourceGlyphs.size(); ++n)
            line += (n ? ", " : "") + (n < s.SourceNames.size() ? s.SourceNames[n] : "?") + ": " +
                    std::to_string(s.SourceGlyphs[n]);
        line += ")";
    }
    line += ", cell " + std::to_string(s.CellWidth) + "x" + std::to_string(s.CellHeight) + ", " +
            Count(static_cast<std::uintmax_t>(s.Bpp), "bit per pixel", "bits per pixel") + ", " +
            Count(fileSize, "byte", "bytes") + ", " + Count(static_cast<std::uintmax_t>(warnings), "warning", "warnings");
    return line;
}

void CRunSummary::TakeFromZglyFile(const std::string& path) {
    try {
        const ZglyInfo info = DescribeZglyFile(path);
        Glyphs = info.MappedCodes;
        CellWidth = info.CellWidth;
        CellHeight = info.CellHeight;
        Bpp = info.Bpp;
    } catch (const CGeneralException&) {
        // The file was just written and checked; the font's own numbers stand.
    }
}

CSummaryWriter::CSummaryWriter(std::unique_ptr<CFontWriter> inner, CRunSummary& summary)
    : CFontWriter(inner->Path), Inner(std::move(inner)), Summary(summary) {}

void CSummaryWriter::Write(CFontData& font, const CGlyphOrder& order) {
    Summary.Glyphs = font.GlyphCount();
    Summary.CellWidth = font.CellWidth.Value;
    Summary.CellHeight = font.CellHeight.Value;
    Summary.Bpp = font.Bpp.Value;
    Inner->Write(font, order);
}
