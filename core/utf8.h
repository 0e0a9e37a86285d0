// UTF-8, the program's text, to and from code points and UTF-16 code units.
// One decoder decides what is valid: overlong forms, surrogates and code
// points above U+10FFFF are not.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// Decodes one UTF-8 sequence at text[at]; returns its length, or 0 when the
// bytes there are not valid UTF-8.
std::size_t DecodeUtf8(std::string_view text, std::size_t at, char32_t& cp);
// A code point as UTF-8; a lone surrogate comes out as its three-byte form so
// that nothing is lost.
std::string CodePointToUtf8(char32_t cp);
// UTF-8 to UTF-16 code units; each byte that starts no valid sequence becomes U+FFFD.
std::u16string Utf8ToUtf16(std::string_view text);
// A pair of surrogates is one character; a lone one keeps its own form.
std::string Utf16ToUtf8(std::u16string_view text);
