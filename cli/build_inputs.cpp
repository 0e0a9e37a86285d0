#include "cli/build_inputs.h"

#include <algorithm>

#include "cli/factories.h"
#include "sources/font_face.h"
#include "sources/font_style.h"

namespace fs = std::filesystem;

namespace {

void AddFile(std::vector<fs::path>& out, const fs::path& folder, const std::string& text) {
    if (text.empty()) return;
    fs::path p = (folder / text).lexically_normal();
    if (std::find(out.begin(), out.end(), p) == out.end()) out.push_back(p);
}

void AddOrder(std::vector<fs::path>& out, const fs::path& folder, const std::string& text) {
    if (text.empty()) return;
    std::error_code ec;
    fs::path here = folder / text;
    AddFile(out, folder, fs::is_regular_file(here, ec) ? here.string() : ResolveGlyphOrder(text).string());
}

void AddFace(std::vector<fs::path>& out, const fs::path& folder, const CliSource& s) {
    // A vertical face reads the same file.
    const std::string name = ParseFaceName(s.FontFace).FaceName;
    if (name.find('/') != std::string::npos) {
        AddFile(out, folder, name);
        return;
    }
    FontLocation location;
    if (s.FontStyle.empty() ? ResolveFontName(name, location) : ResolveFamilyStyle(name, s.FontStyle, location))
        AddFile(out, folder, location.File.string());
}

}  // namespace

std::vector<fs::path> ConversionInputs(const CliOptions& o, const fs::path& folder) {
    std::vector<fs::path> inputs;
    for (const CliSource& s : o.Sources) {
        switch (s.Input) {
        case InputKind::Font: AddFace(inputs, folder, s); break;
        case InputKind::Bmp:
            AddFile(inputs, folder, s.InputPath);
            AddOrder(inputs, folder, s.FromOrder);
            break;
        case InputKind::Lc:
            AddFile(inputs, folder, s.InputPath);
            AddFile(inputs, folder, s.LcHalfPath);
            break;
        case InputKind::Zgly: AddFile(inputs, folder, s.InputPath); break;
        case InputKind::None: break;
        }
    }
    if (o.Output == OutputKind::Bmp) AddOrder(inputs, folder, o.ToOrder);
    AddFile(inputs, folder, o.FilterPath);
    for (const auto& file : o.CharsFiles) AddFile(inputs, folder, file);
    return inputs;
}
