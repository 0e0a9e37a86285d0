#include "xmlfiles/glyph_order_files.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <system_error>

#include "core/general_exception.h"
#include "core/glyph_order.h"
#include "core/pg_ctrl.h"
#include "xmlfiles/zar_xml_file.h"
#include "zgly/path_checks.h"

namespace {

std::filesystem::path ExecutableDirectory() {
    std::error_code ec;
    std::filesystem::path exe = std::filesystem::read_symlink("/proc/self/exe", ec);
    if (ec || exe.empty()) return std::filesystem::current_path(ec);
    return exe.parent_path();
}

bool HasOrderExtension(const std::filesystem::path& name) {
    std::string ext = name.extension().string();
    std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return std::tolower(c); });
    return ext == ".xlor";
}

}  // namespace

void LoadGlyphOrderInfo(GlyphOrderInfo& info, const std::filesystem::path& path) {
    CZarXmlFile reader;
    reader.Load(info, path);
}

std::vector<std::filesystem::path> GlyphOrderDirectories() {
    std::filesystem::path exeDir = ExecutableDirectory();
    std::vector<std::filesystem::path> dirs{exeDir / "xlor"};
    // An installed program lives in prefix/bin; its data in prefix/share.
    if (exeDir.filename() == "bin") dirs.push_back(exeDir.parent_path() / "share" / "glyphwright" / "xlor");
    return dirs;
}

void FindGlyphOrderFiles(std::vector<GlyphOrderInfo>& list) { FindGlyphOrderFilesIn(list, GlyphOrderDirectories()); }

void FindGlyphOrderFilesIn(std::vector<GlyphOrderInfo>& list, const std::vector<std::filesystem::path>& dirs) {
    CZarXmlFile reader;
    for (const auto& dir : dirs) {
        std::error_code ec;
        std::vector<std::filesystem::path> files;
        for (std::filesystem::directory_iterator it(dir, ec), end; !ec && it != end; it.increment(ec))
            if (HasOrderExtension(it->path().filename()) && it->is_regular_file(ec)) files.push_back(it->path());
        // Sorted, so that the list reads the same on every run.
        std::sort(files.begin(), files.end());
        for (const auto& file : files) {
            // A name found in an earlier directory hides the later one.
            std::string name = file.filename().string();
            if (std::any_of(list.begin(), list.end(), [&](const GlyphOrderInfo& i) { return i.FileName == name; }))
                continue;
            GlyphOrderInfo info;
            try {
                reader.Load(info, file);
            } catch (const CGeneralException& e) {
                ReportWarning(g_pPgCtrl, "%s", e.Message);
                continue;
            }
            if (reader.Loaded) list.push_back(info);
        }
    }
}

void CheckGlyphOrderFile(const std::filesystem::path& path) {
    CheckInputFile(path);
    CGlyphOrder order;
    order.Load(path);
}
