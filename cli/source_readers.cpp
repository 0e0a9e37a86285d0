// The run's reader from its sources: font names resolved, directions
// checked, several sources merged.
#include <filesystem>
#include <optional>

#include "cli/factories.h"
#include "core/general_exception.h"
#include "core/merged_font_reader.h"
#include "sources/font_face.h"
#include "sources/font_style.h"

namespace {

std::string SourceName(const CliSource& s) {
    switch (s.Input) {
    case InputKind::Font: return s.FontFace + (s.FontStyle.empty() ? "" : " " + s.FontStyle);
    case InputKind::Lc:
        return std::filesystem::path(s.InputPath.empty() ? s.LcHalfPath : s.InputPath).filename().string();
    default: return std::filesystem::path(s.InputPath).filename().string();
    }
}

// Vertical or horizontal, where the options already say so.
std::optional<bool> KnownVertical(const CliSource& s) {
    if (s.Input == InputKind::Font) return ParseFaceName(s.FontFace).Vertical;
    if (s.Input == InputKind::Lc) return s.LcVertical;
    return std::nullopt;
}

// A face named by path must exist; a style names the family's file for it.
CliSource ResolveFace(const CliSource& s) {
    if (s.Input != InputKind::Font) return s;
    const FontRequest request = ParseFaceName(s.FontFace);
    const std::string& face = request.FaceName;
    std::error_code ec;
    if (face.find('/') != std::string::npos && !std::filesystem::exists(face, ec))
        ThrowError("Parameter Error:\n Font file(%s) does not exist.", face);
    if (s.FontStyle.empty()) return s;
    if (face.find('/') != std::string::npos)
        ThrowError("Parameter Error:\n A style(%s) needs an installed family, not a font file(%s).", s.FontStyle, face);
    FontLocation location;
    if (!ResolveFamilyStyle(face, s.FontStyle, location)) {
        std::string styles;
        for (const std::string& style : FamilyStyles(face)) styles += (styles.empty() ? "" : ", ") + style;
        if (styles.empty()) ThrowError("Parameter Error:\n Font(%s) has no style %s.", face, s.FontStyle);
        ThrowError("Parameter Error:\n Font(%s) has no style %s. Its styles: %s.", face, s.FontStyle, styles);
    }
    // The reader opens a file by path at its first face; a face further into a
    // collection can not be named that way.
    if (location.Index != 0)
        ThrowError("Parameter Error:\n Style %s of font(%s) is face %d of a font collection(%s); give the family alone.",
                   s.FontStyle, face, location.Index, location.File.string());
    CliSource resolved = s;
    resolved.FontFace = (request.Vertical ? "@" : "") + location.File.string();
    return resolved;
}

}  // namespace

std::unique_ptr<CFontReader> CreateReader(const CliOptions& o, CRunSummary& summary) {
    if (o.Sources.empty()) throw CGeneralException("Internal Error:\n No input selected.");
    std::vector<CMergedFontReader::Source> sources;
    const std::optional<bool> firstVertical = KnownVertical(o.Sources.front());
    for (const auto& s : o.Sources) {
        if (const auto v = KnownVertical(s); firstVertical && v && *v != *firstVertical)
            throw CGeneralException(MixedDirectionsMessage(SourceName(o.Sources.front()), *firstVertical, SourceName(s)));
        sources.push_back({CreateSourceReader(ResolveFace(s)), SourceName(s)});
        summary.SourceNames.push_back(sources.back().Name);
    }
    if (sources.size() == 1) return std::move(sources.front().Reader);
    return std::make_unique<CMergedFontReader>(std::move(sources), &summary.SourceGlyphs);
}
