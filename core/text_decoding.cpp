#include "core/text_decoding.h"

#include "core/codepage.h"
#include "core/general_exception.h"

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

std::size_t DecodeUtf8(std::string_view text, std::size_t at, uint32_t& cp) {
    const auto b = static_cast<unsigned char>(text[at]);
    std::size_t len;
    uint32_t min;
    if (b < 0x80) { cp = b; return 1; }
    if ((b & 0xE0) == 0xC0) { len = 2; cp = b & 0x1F; min = 0x80; }
    else if ((b & 0xF0) == 0xE0) { len = 3; cp = b & 0x0F; min = 0x800; }
    else if ((b & 0xF8) == 0xF0) { len = 4; cp = b & 0x07; min = 0x10000; }
    else return 0;
    if (at + len > text.size()) return 0;
    for (std::size_t k = 1; k < len; ++k) {
        const auto c = static_cast<unsigned char>(text[at + k]);
        if ((c & 0xC0) != 0x80) return 0;
        cp = (cp << 6) | (c & 0x3F);
    }
    if (cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return 0;
    return len;
}
