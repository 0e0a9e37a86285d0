#include "zgly/path_checks.h"

#include <sys/stat.h>
#include <unistd.h>

#include "core/general_exception.h"

bool FileExists(const std::filesystem::path& path) {
    if (path.empty()) throw CGeneralException("Parameter Error:\n File not specified");
    struct stat st {};
    return ::stat(path.c_str(), &st) == 0;
}

void CheckInputFile(const std::filesystem::path& path) {
    if (!FileExists(path)) ThrowError("Parameter Error:\n File(%s) not exists.", path);
}

void CheckOutputFile(const std::filesystem::path& path) {
    if (FileExists(path)) {
        struct stat st {};
        if (::stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode))
            ThrowError("Parameter Error:\n Specified path(%s) indicates directory.", path);
        // No write bit counts as read only even for root, whom access() lets write anything.
        if (::access(path.c_str(), W_OK) != 0 || (st.st_mode & 0222) == 0)
            ThrowError("Parameter Error:\n Specified file(%s) is read only.", path);
        return;
    }
    // The directory part as written, keeping its trailing separator.
    std::string text = path.string();
    auto slash = text.find_last_of('/');
    const std::string dir = slash == std::string::npos ? std::string(".") : text.substr(0, slash + 1);
    if (!FileExists(dir)) ThrowError("Parameter Error:\n Directory(%s) not exists.", dir);
}
