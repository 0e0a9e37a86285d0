#include "xmlfiles/glyph_order_files.h"

#include <algorithm>
#include <cctype>
#include <system_error>

#include "core/general_exception.h"
#include "core/glyph_order.h"
#include "core/pg_ctrl.h"
#include "platform/paths.h"
#include "platform/program_location.h"
#include "xmlfiles/glyph_order_handler.h"
#include "xmlfiles/zar_xml_file.h"
#include "zgly/path_checks.h"

namespace {

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
    std::filesystem::path exeDir = ProgramDirectory();
    std::vector<std::filesystem::path> dirs{exeDir / "xlor"};
    // An installed program lives in prefix/bin; its data in prefix/share.
    if (exeDir.filename() == "bin") dirs.push_back(exeDir.parent_path() / "share" / "glyphwright" / "xlor");
    return dirs;
}

void FindGlyphOrderFiles(std::vector<GlyphOrderInfo>& list) { FindGlyphOrderFilesIn(list, GlyphOrderDirectories()); }

void FindGlyphOrderFilesIn(std::vector<GlyphOrderInfo>& list, const std::vector<std::filesystem::path>& dirs) {
    CZarXmlFile reader;
    for (const auto& dir : dirs) {
        std::vector<std::filesystem::path> files;
        for (const auto& entry : ListDirectory(dir)) {
            std::error_code ec;
            if (HasOrderExtension(entry.filename()) && std::filesystem::is_regular_file(entry, ec)) files.push_back(entry);
        }
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
    LoadGlyphOrderFile(order, path);
}
