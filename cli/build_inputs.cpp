#include "cli/build_inputs.h"

#include <algorithm>

#include "cli/factories.h"
#include "sources/font_face.h"

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

void AddFace(std::vector<fs::path>& out, const fs::path& folder, const std::string& face) {
    // A leading @ asks for the vertical forms of the same face.
    std::string name = !face.empty() && face[0] == '@' ? face.substr(1) : face;
    if (name.find('/') != std::string::npos) {
        AddFile(out, folder, name);
        return;
    }
    FontLocation location;
    if (ResolveFontName(name, location)) AddFile(out, folder, location.File.string());
}

}  // namespace

std::vector<fs::path> ConversionInputs(const CliOptions& o, const fs::path& folder) {
    std::vector<fs::path> inputs;
    switch (o.Input) {
    case InputKind::Font: AddFace(inputs, folder, o.FontFace); break;
    case InputKind::Bmp:
        AddFile(inputs, folder, o.InputPath);
        AddOrder(inputs, folder, o.FromOrder);
        break;
    case InputKind::Lc:
        AddFile(inputs, folder, o.InputPath);
        AddFile(inputs, folder, o.LcHalfPath);
        break;
    case InputKind::Zgly: AddFile(inputs, folder, o.InputPath); break;
    case InputKind::None: break;
    }
    if (o.Output == OutputKind::Bmp) AddOrder(inputs, folder, o.ToOrder);
    AddFile(inputs, folder, o.FilterPath);
    return inputs;
}
