// Glyph order files: the list of those shipped beside the program, and the
// check that a chosen one loads.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

struct GlyphOrderInfo {
    std::string Title;
    std::string Comment;
    std::filesystem::path Path;
    std::string FileName;
};

// Reads only the head (title, comment) of an order file; throws on failure.
void LoadGlyphOrderInfo(GlyphOrderInfo& info, const std::filesystem::path& path);
// Appends one record per loadable .xlor file of the xlor directories; a file
// that fails becomes one warning.
void FindGlyphOrderFiles(std::vector<GlyphOrderInfo>& list);
// The same search over the given directories, in their order.
void FindGlyphOrderFilesIn(std::vector<GlyphOrderInfo>& list, const std::vector<std::filesystem::path>& dirs);
// The xlor directories searched: beside the executable, then prefix/share/glyphwright/xlor.
std::vector<std::filesystem::path> GlyphOrderDirectories();
void CheckGlyphOrderFile(const std::filesystem::path& path);

