#include "platform/save_target.h"

#include <windows.h>

#include <string>

#include "platform/win32/wide_text.h"

namespace {

// ".NAME.XXXXXX" beside the target, six letters and digits that name no file yet.
HANDLE CreateTemporaryBeside(const std::wstring& target, std::wstring& tempPath) {
    const std::size_t slash = target.find_last_of(L"\\:");
    const std::wstring dir = slash == std::wstring::npos ? std::wstring() : target.substr(0, slash + 1);
    const std::wstring name = slash == std::wstring::npos ? target : target.substr(slash + 1);
    static const wchar_t Letters[] = L"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    unsigned long long seed = ::GetTickCount64() ^ (static_cast<unsigned long long>(::GetCurrentProcessId()) << 32);
    for (int attempt = 0; attempt < 100; ++attempt) {
        std::wstring suffix;
        for (int i = 0; i < 6; ++i) {
            seed = seed * 6364136223846793005ULL + 1442695040888963407ULL;
            suffix += Letters[(seed >> 33) % 62];
        }
        tempPath = dir + L"." + name + L"." + suffix;
        HANDLE h = ::CreateFileW(tempPath.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                 nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (h != INVALID_HANDLE_VALUE || ::GetLastError() != ERROR_FILE_EXISTS) return h;
    }
    return INVALID_HANDLE_VALUE;
}

}  // namespace

CFileHandle* CSaveTarget::Begin() {
    Discard();
    const std::wstring target = WidePath(Path);
    Target = Path;
    const DWORD attributes = ::GetFileAttributesW(target.c_str());
    const bool exists = attributes != INVALID_FILE_ATTRIBUTES;
    // A folder or a read-only file is never replaced.
    if (exists && (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY))) return nullptr;
    WriteInPlace = false;
    std::wstring temp;
    HANDLE h = CreateTemporaryBeside(target, temp);
    if (h == INVALID_HANDLE_VALUE) return nullptr;
    TempPath = temp;
    File = CFileHandle(reinterpret_cast<std::intptr_t>(h));
    return &File;
}

bool CSaveTarget::Commit() {
    if (!File.IsOpen()) return false;
    bool ok = CommitReplace();
    Discard();
    return ok;
}

// ReplaceFileW keeps the old file's attributes, security and streams; where
// it cannot be used (a new file, some file systems) the rename replaces it.
bool CSaveTarget::CommitReplace() {
    bool ok = ::FlushFileBuffers(reinterpret_cast<HANDLE>(File.Handle)) != 0;
    ok = File.Close() && ok;
    if (!ok) return false;
    const std::wstring target = WidePath(Target);
    const std::wstring temp = TempPath.native();
    bool replaced = ::GetFileAttributesW(target.c_str()) != INVALID_FILE_ATTRIBUTES &&
                    ::ReplaceFileW(target.c_str(), temp.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr);
    if (!replaced)
        replaced = ::MoveFileExW(temp.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
    if (replaced) TempPath.clear();
    return replaced;
}

bool CSaveTarget::CommitInPlace() { return false; }

bool SaveWholeFile(const std::filesystem::path& path, std::string_view content) {
    CSaveTarget save(path);
    CFileHandle* file = save.Begin();
    if (!file || !file->Write(content.data(), content.size())) return false;
    return save.Commit();
}
