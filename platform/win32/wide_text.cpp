#include "platform/win32/wide_text.h"

#include <windows.h>

std::wstring WideFromUtf8(std::string_view text) {
    if (text.empty()) return {};
    const int size = static_cast<int>(text.size());
    int n = ::MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(n), L'\0');
    ::MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), n);
    return wide;
}

std::string Utf8FromWide(std::wstring_view text) {
    if (text.empty()) return {};
    const int size = static_cast<int>(text.size());
    int n = ::WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(n), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, text.data(), size, narrow.data(), n, nullptr, nullptr);
    return narrow;
}

namespace {

// The length of the UTF-8 sequence that starts at units[i], each unit taken
// as one byte; 0 when there is none.
std::size_t Utf8SequenceAt(const std::wstring& units, std::size_t i) {
    const unsigned lead = units[i];
    std::size_t length = lead >= 0xF0 && lead <= 0xF4 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC2 ? 2 : 0;
    if (length == 0 || lead > 0xF4 || i + length > units.size()) return 0;
    for (std::size_t k = 1; k < length; ++k)
        if (units[i + k] < 0x80 || units[i + k] > 0xBF) return 0;
    return length;
}

}  // namespace

std::wstring WideText(const std::filesystem::path& path) {
    const std::wstring& units = path.native();
    std::wstring wide;
    wide.reserve(units.size());
    // Runs of byte-sized units that spell UTF-8 came from the program's own
    // text; anything else already is what the system named it.
    for (std::size_t i = 0; i < units.size();) {
        std::size_t length = units[i] >= 0x80 && units[i] <= 0xFF ? Utf8SequenceAt(units, i) : 0;
        if (length == 0) {
            wide.push_back(units[i]);
            ++i;
            continue;
        }
        std::string bytes;
        for (std::size_t k = 0; k < length; ++k) bytes.push_back(static_cast<char>(units[i + k]));
        wide += WideFromUtf8(bytes);
        i += length;
    }
    return wide;
}

std::wstring WidePath(const std::filesystem::path& path) {
    std::wstring wide = WideText(path);
    for (wchar_t& c : wide)
        if (c == L'/') c = L'\\';
    return wide;
}

std::filesystem::path PathFromWide(const std::wstring& name) { return std::filesystem::path(name); }
