// Text and paths at the border to the wide-character Windows API. Inside the
// program text is UTF-8; a path made from such text holds each byte as one
// wide character (the C library's narrow conversion), so paths are turned
// into real UTF-16 here, where they meet the system, and the system's wide
// names come back as UTF-8.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

std::wstring WideFromUtf8(std::string_view text);
std::string Utf8FromWide(std::wstring_view text);
// The path's characters in UTF-16, separators as written.
std::wstring WideText(const std::filesystem::path& path);
// The path as the wide-character API wants it.
std::wstring WidePath(const std::filesystem::path& path);
// A name the system gave, as a path whose narrow form is UTF-8.
std::filesystem::path PathFromWide(const std::wstring& name);
