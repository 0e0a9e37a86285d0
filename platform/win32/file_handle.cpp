#include "platform/file_handle.h"

#include <windows.h>

#include <algorithm>

#include "platform/win32/wide_text.h"

namespace {
HANDLE H(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }
// Each call moves at most this much, so that a count always fits the API's DWORD.
constexpr std::size_t MaxChunk = 1u << 30;
}  // namespace

bool CFileHandle::OpenForReading(const std::filesystem::path& path) {
    Close();
    // Shared for everything, as other programs may hold the file open.
    HANDLE h = ::CreateFileW(WidePath(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                             nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (h == INVALID_HANDLE_VALUE) return false;
    BY_HANDLE_FILE_INFORMATION info{};
    if (!::GetFileInformationByHandle(h, &info) || (info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) {
        ::CloseHandle(h);
        return false;
    }
    Handle = reinterpret_cast<std::intptr_t>(h);
    return true;
}

bool CFileHandle::OpenAnyForReading(const std::filesystem::path& path) {
    Close();
    // Backup semantics let a folder open as well; reading it then fails.
    HANDLE h = ::CreateFileW(WidePath(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                             nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (h == INVALID_HANDLE_VALUE) return false;
    Handle = reinterpret_cast<std::intptr_t>(h);
    return true;
}

int64_t CFileHandle::Read(void* dst, std::size_t bytes) {
    auto* p = static_cast<uint8_t*>(dst);
    std::size_t done = 0;
    while (done < bytes) {
        DWORD got = 0;
        const DWORD ask = static_cast<DWORD>(std::min(bytes - done, MaxChunk));
        if (!::ReadFile(H(Handle), p + done, ask, &got, nullptr)) return -1;
        if (got == 0) break;
        done += got;
    }
    return static_cast<int64_t>(done);
}

int64_t CFileHandle::ReadSome(void* dst, std::size_t bytes) {
    DWORD got = 0;
    if (!::ReadFile(H(Handle), dst, static_cast<DWORD>(std::min(bytes, MaxChunk)), &got, nullptr))
        return ::GetLastError() == ERROR_BROKEN_PIPE ? 0 : -1;
    return got;
}

bool CFileHandle::Write(const void* src, std::size_t bytes) {
    const auto* p = static_cast<const uint8_t*>(src);
    std::size_t done = 0;
    while (done < bytes) {
        DWORD put = 0;
        const DWORD ask = static_cast<DWORD>(std::min(bytes - done, MaxChunk));
        if (!::WriteFile(H(Handle), p + done, ask, &put, nullptr) || put == 0) return false;
        done += put;
    }
    return true;
}

bool CFileHandle::Seek(uint64_t position) {
    LARGE_INTEGER to{};
    to.QuadPart = static_cast<LONGLONG>(position);
    return ::SetFilePointerEx(H(Handle), to, nullptr, FILE_BEGIN) != 0;
}

int64_t CFileHandle::Tell() {
    LARGE_INTEGER zero{}, at{};
    if (!::SetFilePointerEx(H(Handle), zero, &at, FILE_CURRENT)) return -1;
    return at.QuadPart;
}

int64_t CFileHandle::Size() {
    LARGE_INTEGER size{};
    if (!::GetFileSizeEx(H(Handle), &size)) return -1;
    return size.QuadPart;
}

bool CFileHandle::Close() {
    if (Handle < 0) return true;
    bool ok = ::CloseHandle(H(Handle)) != 0;
    Handle = -1;
    return ok;
}

std::string LastSystemErrorText() {
    wchar_t* text = nullptr;
    const DWORD error = ::GetLastError();
    DWORD n = ::FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                               nullptr, error, 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    std::wstring wide = n ? std::wstring(text, n) : L"Error " + std::to_wstring(error);
    if (text) ::LocalFree(text);
    while (!wide.empty() && (wide.back() == L'\n' || wide.back() == L'\r' || wide.back() == L'.')) wide.pop_back();
    return Utf8FromWide(wide);
}
