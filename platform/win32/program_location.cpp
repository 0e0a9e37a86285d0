#include "platform/program_location.h"

#include <windows.h>

#include <system_error>

#include "platform/win32/wide_text.h"

std::filesystem::path ProgramDirectory() {
    std::wstring name(MAX_PATH, L'\0');
    for (;;) {
        DWORD n = ::GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
        if (n == 0) {
            std::error_code ec;
            return std::filesystem::current_path(ec);
        }
        if (n < name.size()) {
            name.resize(n);
            break;
        }
        name.resize(name.size() * 2);
    }
    return PathFromWide(name).parent_path();
}
