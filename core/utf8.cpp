#include "core/utf8.h"

std::size_t DecodeUtf8(std::string_view text, std::size_t at, char32_t& cp) {
    const auto b = static_cast<unsigned char>(text[at]);
    std::size_t len;
    char32_t min;
    if (b < 0x80) {
        cp = b;
        return 1;
    }
    if ((b & 0xE0) == 0xC0) {
        len = 2;
        cp = b & 0x1F;
        min = 0x80;
    } else if ((b & 0xF0) == 0xE0) {
        len = 3;
        cp = b & 0x0F;
        min = 0x800;
    } else if ((b & 0xF8) == 0xF0) {
        len = 4;
        cp = b & 0x07;
        min = 0x10000;
    } else {
        return 0;
    }
    if (at + len > text.size()) return 0;
    for (std::size_t k = 1; k < len; ++k) {
        const auto c = static_cast<unsigned char>(text[at + k]);
        if ((c & 0xC0) != 0x80) return 0;
        cp = (cp << 6) | (c & 0x3F);
    }
    if (cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return 0;
    return len;
}

std::string CodePointToUtf8(char32_t cp) {
    std::string out;
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
    return out;
}

std::u16string Utf8ToUtf16(std::string_view text) {
    std::u16string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        char32_t cp = 0;
        const std::size_t len = DecodeUtf8(text, i, cp);
        if (len == 0) {
            out += u'\uFFFD';
            ++i;
            continue;
        }
        i += len;
        if (cp >= 0x10000) {
            cp -= 0x10000;
            out += static_cast<char16_t>(0xD800 + (cp >> 10));
            out += static_cast<char16_t>(0xDC00 + (cp & 0x3FF));
        } else {
            out += static_cast<char16_t>(cp);
        }
    }
    return out;
}

std::string Utf16ToUtf8(std::u16string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char16_t c = text[i];
        if (c >= 0xD800 && c < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000) {
            out += CodePointToUtf8(0x10000 + ((c - 0xD800) << 10) + (text[i + 1] - 0xDC00));
            ++i;
        } else {
            out += CodePointToUtf8(c);
        }
    }
    return out;
}
