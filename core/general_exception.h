// The one exception type of the program, and the printf-style formatters that
// build every message and warning.
#pragma once

#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>

#include "platform/paths.h"

class CPgCtrl;

// Thrown by value with the complete, already formatted text; caught by reference.
class CGeneralException {
public:
    explicit CGeneralException(std::string message) : Message(std::move(message)) {}
    std::string Message;
};

// One argument of FormatString: a number (for %d, %X, %c) or a text (for %s).
class CFormatArg {
public:
    CFormatArg(int v) : Number(v) {}
    CFormatArg(unsigned v) : Number(v) {}
    CFormatArg(long v) : Number(v) {}
    CFormatArg(unsigned long v) : Number(static_cast<long long>(v)) {}
    CFormatArg(long long v) : Number(v) {}
    CFormatArg(char16_t v) : Number(v) {}
    CFormatArg(const char* v) : Text(v ? v : "(null)"), IsText(true) {}
    CFormatArg(const std::string& v) : Text(v), IsText(true) {}
    CFormatArg(std::string_view v) : Text(v), IsText(true) {}
    CFormatArg(const std::filesystem::path& v) : Owned(PathText(v)), Text(Owned), IsText(true) {}

    long long Number = 0;
    std::string Owned;
    std::string_view Text;
    bool IsText = false;
};

// Longest message in Unicode characters; longer results are cut.
inline constexpr std::size_t MaxMessageChars = 1023;

// printf-style formatting into UTF-8: %s text, %d / %u decimal, %c one UTF-16
// code unit shown as its character, %X / %x hexadecimal, with flags, width and
// precision ("%04X"), and %% a literal percent. Arguments are shown as they
// stand, so a '%' inside an argument stays literal.
std::string FormatStringList(std::string_view format, std::initializer_list<CFormatArg> args);

template <class... Args>
std::string FormatString(std::string_view format, const Args&... args) {
    return FormatStringList(format, {CFormatArg(args)...});
}

// Cuts a UTF-8 text to at most MaxMessageChars Unicode characters.
std::string CutMessage(std::string text);

// Formats like FormatString and hands the text to the progress interface as a
// warning. Never fails towards its caller.
void ReportWarningList(CPgCtrl* pgCtrl, std::string_view format, std::initializer_list<CFormatArg> args);

template <class... Args>
void ReportWarning(CPgCtrl* pgCtrl, std::string_view format, const Args&... args) {
    ReportWarningList(pgCtrl, format, {CFormatArg(args)...});
}

// Throws CGeneralException with the formatted text.
template <class... Args>
[[noreturn]] void ThrowError(std::string_view format, const Args&... args) {
    throw CGeneralException(FormatString(format, args...));
}

