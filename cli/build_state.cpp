#include "cli/build_state.h"

#include <sstream>
#include <vector>

#include "core/general_exception.h"
#include "platform/file_handle.h"
#include "platform/save_target.h"

namespace fs = std::filesystem;

namespace {

constexpr uint64_t FnvOffset = 1469598103934665603ull;
constexpr uint64_t FnvPrime = 1099511628211ull;

uint64_t Fnv(uint64_t h, const char* data, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        h ^= static_cast<unsigned char>(data[i]);
        h *= FnvPrime;
    }
    return h;
}

const char* Header = "glyphwright build state 1";

}  // namespace

uint64_t HashText(const std::string& text) { return Fnv(FnvOffset, text.data(), text.size()) | 1; }

FileStamp StampFile(const fs::path& path) {
    FileStamp stamp{path, 0};
    CFileHandle in;
    if (!in.OpenForReading(path)) return stamp;
    uint64_t h = FnvOffset;
    std::vector<char> buffer(1 << 16);
    for (int64_t n; (n = in.ReadSome(buffer.data(), buffer.size())) > 0;)
        h = Fnv(h, buffer.data(), static_cast<std::size_t>(n));
    // Never 0, which stands for a missing file.
    stamp.Hash = h | 1;
    return stamp;
}

fs::path StatePathFor(const fs::path& recipe) {
    return recipe.parent_path() / ("." + recipe.filename().string() + ".state");
}

BuildState LoadBuildState(const fs::path& path) {
    BuildState state;
    CFileHandle file;
    std::string content;
    if (file.OpenForReading(path)) {
        const int64_t size = file.Size();
        content.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
        const int64_t got = file.Read(content.data(), content.size());
        content.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    }
    std::istringstream in(content);
    std::string line;
    if (!std::getline(in, line) || line != Header) return {};
    FontState* current = nullptr;
    while (std::getline(in, line)) {
        std::istringstream fields(line);
        std::string kind, hash, file;
        std::getline(fields, kind, '\t');
        std::getline(fields, hash, '\t');
        std::getline(fields, file);
        uint64_t value = std::strtoull(hash.c_str(), nullptr, 16);
        if (kind == "output") {
            current = &state[file];
            current->Output = {file, value};
        } else if (kind == "settings" && current) {
            current->SettingsHash = value;
        } else if (kind == "input" && current) {
            current->Inputs.push_back({file, value});
        } else {
            return {};
        }
    }
    return state;
}

void SaveBuildState(const fs::path& path, const BuildState& state) {
    std::ostringstream text;
    text << Header << '\n' << std::hex;
    for (const auto& [out, font] : state) {
        text << "output\t" << font.Output.Hash << '\t' << out.string() << '\n';
        text << "settings\t" << font.SettingsHash << "\t\n";
        for (const FileStamp& in : font.Inputs) text << "input\t" << in.Hash << '\t' << in.Path.string() << '\n';
    }
    if (!SaveWholeFile(path, text.str())) ThrowError("Internal Error:\n Can not write to a file (%s).", path);
}
