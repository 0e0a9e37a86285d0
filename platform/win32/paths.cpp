#include "platform/paths.h"

#include <windows.h>

#include "platform/win32/wide_text.h"

namespace {
DWORD Attributes(const std::filesystem::path& path) { return ::GetFileAttributesW(WidePath(path).c_str()); }
}  // namespace

bool PathExists(const std::filesystem::path& path) { return Attributes(path) != INVALID_FILE_ATTRIBUTES; }

bool IsDirectory(const std::filesystem::path& path) {
    DWORD a = Attributes(path);
    return a != INVALID_FILE_ATTRIBUTES && (a & FILE_ATTRIBUTE_DIRECTORY);
}

bool IsRegularFile(const std::filesystem::path& path) {
    DWORD a = Attributes(path);
    return a != INVALID_FILE_ATTRIBUTES && !(a & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE));
}

int64_t FileSize(const std::filesystem::path& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!::GetFileAttributesExW(WidePath(path).c_str(), GetFileExInfoStandard, &data)) return -1;
    return (static_cast<int64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
}

std::string PathText(const std::filesystem::path& path) { return Utf8FromWide(WideText(path)); }

bool IsPathSeparator(char c) { return c == '/' || c == '\\'; }

// The read-only attribute is what Windows users set to protect a file.
bool IsWritableFile(const std::filesystem::path& path) {
    DWORD a = Attributes(path);
    return a != INVALID_FILE_ATTRIBUTES && !(a & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY));
}

// The read-only attribute of a folder only marks it for the shell; whether
// files can be made in it shows when the save tries.
bool IsWritableDirectory(const std::filesystem::path& path) { return IsDirectory(path); }

std::vector<std::filesystem::path> ListDirectory(const std::filesystem::path& dir) {
    std::vector<std::filesystem::path> entries;
    std::wstring base = WidePath(dir);
    if (!base.empty() && base.back() != L'\\') base += L'\\';
    WIN32_FIND_DATAW found{};
    HANDLE find = ::FindFirstFileW((base + L"*").c_str(), &found);
    if (find == INVALID_HANDLE_VALUE) return entries;
    do {
        const std::wstring name = found.cFileName;
        if (name != L"." && name != L"..") entries.push_back(PathFromWide(base + name));
    } while (::FindNextFileW(find, &found));
    ::FindClose(find);
    return entries;
}
