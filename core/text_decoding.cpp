#include "core/text_decoding.h"

#include "core/codepage.h"
#include "core/general_exception.h"
#include "core/utf8.h"

namespace {

[[noreturn]] void Invalid(const std::string& what, const char* encoding, std::size_t at) {
    ThrowError("Parameter Error:\n %s is not valid %s (at byte offset %d).", what, encoding, static_cast<int>(at));
}

std::string FromUtf16(std::string_view bytes, std::size_t at, bool bigEndian, const std::string& what) {
    auto unit = [&](std::size_t i) -> uint32_t {
        const auto a = static_cast<unsigned char>(bytes[i]), b = static_cast<unsigned char>(bytes[i + 1]);
        return bigEndian ? (a << 8 | b) : (b << 8 | a);
    };
    std::string out;
    while (at < bytes.size()) {
        if (at + 2 > bytes.size()) Invalid(what, "UTF-16", at);
        uint32_t cp = unit(at);
        std::size_t len = 2;
        if (cp >= 0xD800 && cp <= 0xDBFF) {
            if (at + 4 > bytes.size()) Invalid(what, "UTF-16", at);
            const uint32_t low = unit(at + 2);
            if (low < 0xDC00 || low > 0xDFFF) Invalid(what, "UTF-16", at);
            cp = 0x10000 + ((cp - 0xD800) << 10) + (low - 0xDC00);
            len = 4;
        } else if (cp >= 0xDC00 && cp <= 0xDFFF) {
            Invalid(what, "UTF-16", at);
        }
        out += CodePointToUtf8(cp);
        at += len;
    }
    return out;
}

std::string FromCodePage(std::string_view bytes, int codePage, const char* name, const std::string& what) {
    std::string out;
    for (std::size_t at = 0; at < bytes.size();) {
        const auto lead = static_cast<unsigned char>(bytes[at]);
        char16_t c = CodePageToUnicode(codePage, lead);
        std::size_t len = 1;
        // A byte that is no character alone may lead a two-byte one.
        if (c == NoChar && codePage == 932 && at + 1 < bytes.size()) {
            c = CodePageToUnicode(codePage, static_cast<uint16_t>(lead << 8 | static_cast<unsigned char>(bytes[at + 1])));
            len = 2;
        }
        if (c == NoChar) Invalid(what, name, at);
        out += CodePointToUtf8(c);
        at += len;
    }
    return out;
}

}  // namespace

std::string DecodeTextToUtf8(std::string_view bytes, int encoding, const std::string& what) {
    if (bytes.substr(0, 2) == "\xFF\xFE") return FromUtf16(bytes, 2, false, what);
    if (bytes.substr(0, 2) == "\xFE\xFF") return FromUtf16(bytes, 2, true, what);
    switch (encoding) {
    case EncodingUtf16: return FromUtf16(bytes, 0, false, what);
    case EncodingShiftJis: return FromCodePage(bytes, 932, "Shift_JIS", what);
    case EncodingCp1252: return FromCodePage(bytes, 1252, "CodePage 1252", what);
    default: return std::string(bytes);
    }
}
