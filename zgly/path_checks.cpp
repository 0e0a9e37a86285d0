#include "zgly/path_checks.h"

#include "core/general_exception.h"
#include "platform/paths.h"

bool FileExists(const std::filesystem::path& path) {
    if (path.empty()) throw CGeneralException("Parameter Error:\n File not specified");
    return PathExists(path);
}

void CheckInputFile(const std::filesystem::path& path) {
    if (!FileExists(path)) ThrowError("Parameter Error:\n File(%s) not exists.", path);
}

void CheckOutputFile(const std::filesystem::path& path) {
    if (FileExists(path)) {
        if (IsDirectory(path)) ThrowError("Parameter Error:\n Specified path(%s) indicates directory.", path);
        if (!IsWritableFile(path)) ThrowError("Parameter Error:\n Specified file(%s) is read only.", path);
        return;
    }
    // The directory part as written, keeping its trailing separator.
    const std::string text = PathText(path);
    std::size_t end = text.size();
    while (end > 0 && !IsPathSeparator(text[end - 1])) --end;
    const std::string dir = end == 0 ? std::string(".") : text.substr(0, end);
    if (!FileExists(dir)) ThrowError("Parameter Error:\n Directory(%s) not exists.", dir);
}
