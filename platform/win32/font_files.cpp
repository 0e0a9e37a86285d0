#include "platform/font_files.h"

#include <windows.h>

#include <algorithm>
#include <cwctype>
#include <set>
#include <string>

#include "platform/paths.h"
#include "platform/win32/wide_text.h"

namespace {

std::wstring Environment(const wchar_t* name) {
    wchar_t value[MAX_PATH * 2];
    DWORD n = ::GetEnvironmentVariableW(name, value, MAX_PATH * 2);
    return n > 0 && n < MAX_PATH * 2 ? std::wstring(value, n) : std::wstring();
}

bool IsFontName(const std::wstring& name) {
    std::wstring lower = name;
    for (wchar_t& c : lower) c = static_cast<wchar_t>(std::towlower(c));
    for (const wchar_t* ext : {L".ttf", L".ttc", L".otf", L".otc", L".fon", L".fnt", L".pcf", L".bdf"})
        if (lower.size() > 4 && lower.ends_with(ext)) return true;
    return false;
}

// The values of a registry font list: "Name (TrueType)" = "file.ttf", a file
// name in the folder given or a full path.
void AddRegistered(HKEY root, const std::wstring& folder, std::vector<std::wstring>& files) {
    HKEY key = nullptr;
    if (::RegOpenKeyExW(root, L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Fonts", 0, KEY_READ, &key) != ERROR_SUCCESS)
        return;
    for (DWORD i = 0;; ++i) {
        wchar_t name[512];
        wchar_t data[MAX_PATH * 2];
        DWORD nameSize = 512, dataSize = sizeof data, type = 0;
        LONG r = ::RegEnumValueW(key, i, name, &nameSize, nullptr, &type, reinterpret_cast<BYTE*>(data), &dataSize);
        if (r == ERROR_NO_MORE_ITEMS) break;
        if (r != ERROR_SUCCESS || (type != REG_SZ && type != REG_EXPAND_SZ)) continue;
        std::wstring file(data, dataSize / sizeof(wchar_t));
        while (!file.empty() && file.back() == L'\0') file.pop_back();
        if (file.empty()) continue;
        const bool full = file.size() > 2 && (file[1] == L':' || (file[0] == L'\\' && file[1] == L'\\'));
        files.push_back(full ? file : folder + L"\\" + file);
    }
    ::RegCloseKey(key);
}

void AddFolder(const std::wstring& folder, std::vector<std::wstring>& files) {
    if (folder.empty()) return;
    for (const auto& entry : ListDirectory(PathFromWide(folder))) {
        const std::wstring name = entry.native();
        if (IsFontName(name) && !IsDirectory(entry)) files.push_back(name);
    }
}

}  // namespace

std::vector<std::filesystem::path> InstalledFontFiles() {
    const std::wstring windows = Environment(L"WINDIR");
    const std::wstring system = windows.empty() ? std::wstring() : windows + L"\\Fonts";
    const std::wstring local = Environment(L"LOCALAPPDATA");
    const std::wstring user = local.empty() ? std::wstring() : local + L"\\Microsoft\\Windows\\Fonts";
    std::vector<std::wstring> files;
    AddFolder(system, files);
    AddRegistered(HKEY_LOCAL_MACHINE, system, files);
    AddFolder(user, files);
    AddRegistered(HKEY_CURRENT_USER, user, files);

    std::vector<std::filesystem::path> result;
    std::set<std::wstring> seen;
    for (const std::wstring& f : files) {
        std::wstring key = f;
        for (wchar_t& c : key) c = c == L'/' ? L'\\' : static_cast<wchar_t>(std::towlower(c));
        if (seen.insert(key).second && PathExists(PathFromWide(f))) result.push_back(PathFromWide(f));
    }
    return result;
}
