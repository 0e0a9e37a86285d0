#include "xmlfiles/xml_numbers.h"

#include <cerrno>
#include <cwchar>
#include <cwctype>
#include <limits>
#include <string>

#include "core/general_exception.h"
#include "xmlfiles/xml_frame.h"

uint16_t ParseCodeNumber(std::u16string_view text) {
    // Read as a 32-bit unsigned long whatever this platform's width, so that a
    // file gives the same codes everywhere: larger numbers saturate, and a sign
    // negates in 32 bits.
    std::wstring wide(text.begin(), text.end());
    const wchar_t* p = wide.c_str();
    while (std::iswspace(static_cast<wint_t>(*p))) ++p;
    bool negative = *p == L'-';
    if (*p == L'-' || *p == L'+') ++p;
    // The digits must follow the sign at once.
    if (std::iswspace(static_cast<wint_t>(*p)) || *p == L'-' || *p == L'+') return 0;
    errno = 0;
    unsigned long long magnitude = std::wcstoull(p, nullptr, 0);
    if (errno == ERANGE || magnitude > 0xFFFFFFFFull) return 0xFFFF;
    uint32_t value = static_cast<uint32_t>(magnitude);
    if (negative) value = 0u - value;
    return static_cast<uint16_t>(value & 0xFFFF);
}

int32_t ParseDecimalNumber(const char* value, const char* what) {
    std::string_view text(value);
    while (!text.empty() && IsXmlWhitespace(static_cast<unsigned char>(text.front()))) text.remove_prefix(1);
    while (!text.empty() && IsXmlWhitespace(static_cast<unsigned char>(text.back()))) text.remove_suffix(1);
    bool negative = !text.empty() && text.front() == '-';
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
    if (text.empty()) throw CXmlValueError{FormatString("%s \"%s\" is not a decimal number", what, value)};
    // Counted in 64 bits, stopping as soon as the number leaves the 32-bit range.
    long long magnitude = 0;
    bool overflow = false;
    for (char c : text) {
        if (c < '0' || c > '9') throw CXmlValueError{FormatString("%s \"%s\" is not a decimal number", what, value)};
        if (!overflow) magnitude = magnitude * 10 + (c - '0');
        if (magnitude > 2147483648ll) overflow = true;
    }
    long long number = negative ? -magnitude : magnitude;
    if (overflow || number > std::numeric_limits<int32_t>::max())
        throw CXmlValueError{FormatString("%s \"%s\" is out of range (%d \xEF\xBD\x9E %d)", what, value,
                                          static_cast<long long>(std::numeric_limits<int32_t>::min()),
                                          static_cast<long long>(std::numeric_limits<int32_t>::max()))};
    return static_cast<int32_t>(number);
}
