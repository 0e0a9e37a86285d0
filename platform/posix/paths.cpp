#include "platform/paths.h"

#include <sys/stat.h>
#include <unistd.h>

#include <system_error>

bool PathExists(const std::filesystem::path& path) {
    struct stat st {};
    return ::stat(path.c_str(), &st) == 0;
}

bool IsDirectory(const std::filesystem::path& path) {
    struct stat st {};
    return ::stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

bool IsRegularFile(const std::filesystem::path& path) {
    struct stat st {};
    return ::stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

int64_t FileSize(const std::filesystem::path& path) {
    struct stat st {};
    return ::stat(path.c_str(), &st) == 0 ? static_cast<int64_t>(st.st_size) : -1;
}

std::string PathText(const std::filesystem::path& path) { return path.string(); }

bool IsPathSeparator(char c) { return c == '/'; }

bool IsWritableFile(const std::filesystem::path& path) {
    struct stat st {};
    if (::stat(path.c_str(), &st) != 0) return false;
    return ::access(path.c_str(), W_OK) == 0 && (st.st_mode & 0222) != 0;
}

bool IsWritableDirectory(const std::filesystem::path& path) {
    return IsDirectory(path) && ::access(path.c_str(), W_OK) == 0;
}

std::vector<std::filesystem::path> ListDirectory(const std::filesystem::path& dir) {
    std::vector<std::filesystem::path> entries;
    std::error_code ec;
    for (std::filesystem::directory_iterator it(dir, ec), end; !ec && it != end; it.increment(ec))
        entries.push_back(it->path());
    return entries;
}
