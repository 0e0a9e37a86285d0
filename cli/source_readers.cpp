// The run's reader from its sources: font names resolved, directions
// checked, several sources merged.
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <optional>

#include "cli/factories.h"
#include "core/general_exception.h"
#include "core/merged_font_reader.h"
#include "platform/paths.h"
#include "sources/font_catalog.h"
#include "sources/font_face.h"
#include "sources/font_style.h"

namespace {

bool SameNoCase(const std::string& a, const std::string& b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return std::tolower(static_cast<unsigned char>(x)) == std::tolower(static_cast<unsigned char>(y));
           });
}

std::string SourceName(const CliSource& s) {
    switch (s.Input) {
    case InputKind::Font: return s.FontFace + (s.FontStyle.empty() ? "" : " " + s.FontStyle);
    case InputKind::Lc:
        return PathText(std::filesystem::path(s.InputPath.empty() ? s.LcHalfPath : s.InputPath).filename());
    default: return PathText(std::filesystem::path(s.InputPath).filename());
    }
}

// Vertical or horizontal, where the options already say so.
std::optional<bool> KnownVertical(const CliSource& s) {
    if (s.Input == InputKind::Font) return ParseFaceName(s.FontFace).Vertical;
    if (s.Input == InputKind::Lc) return s.LcVertical;
    return std::nullopt;
}

// A face with a folder in its name is a font file's path, not a family.
bool NamesAPath(const std::string& face) {
    for (char c : face)
        if (IsPathSeparator(c)) return true;
    return false;
}

// A face named by path must exist; a style names the family's file for it.
CliSource ResolveFace(const CliSource& s) {
    if (s.Input != InputKind::Font) return s;
    const FontRequest request = ParseFaceName(s.FontFace);
    const std::string& face = request.FaceName;
    std::string file = face;
    int number = 0;
    if (!PathExists(face)) SplitFaceNumber(face, file, number);
    if (NamesAPath(face) && !PathExists(file))
        ThrowError("Parameter Error:\n Font file(%s) does not exist.", file);
    if (s.FontStyle.empty()) return s;
    if (NamesAPath(face))
        ThrowError("Parameter Error:\n A style(%s) needs an installed family, not a font file(%s).", s.FontStyle, face);
    FontLocation location;
    if (!ResolveFamilyStyle(face, s.FontStyle, location))
    {
        std::string styles;
        for (const auto& family : ListInstalledFaces())
            if (SameNoCase(family.Family, face))
                for (const auto& style : family.Styles) styles += (styles.empty() ? "" : ", ") + style;
        if (styles.empty()) ThrowError("Parameter Error:\n Font(%s) is not installed.", face);
        ThrowError("Parameter Error:\n Font(%s) has no style %s; its styles are %s.", face, s.FontStyle, styles);
    }
    // A face further into a collection, or a variable font's named instance,
    // is named by its number after the path.
    CliSource resolved = s;
    resolved.FontFace = (request.Vertical ? "@" : "") + location.File.string() +
                        (location.Index != 0 ? "#" + std::to_string(location.Index) : "");
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
        CliSource source = ResolveFace(s);
        source.Threads = o.Threads;
        sources.push_back({CreateSourceReader(source), SourceName(s)});
        summary.SourceNames.push_back(sources.back().Name);
    }
    if (sources.size() == 1) return std::move(sources.front().Reader);
    return std::make_unique<CMergedFontReader>(std::move(sources), &summary.SourceGlyphs);
}
