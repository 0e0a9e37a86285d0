// Text files as translators have them: UTF-8, UTF-16 with or without a
// byte-order mark, Shift_JIS or Windows-1252, turned into UTF-8.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// No encoding chosen: UTF-8, or UTF-16 when a byte-order mark says so.
inline constexpr int TextEncodingAuto = -1;

// The text's bytes as UTF-8 (a UTF-8 text is returned as it is). A UTF-16
// byte-order mark always wins; without one, encoding (an EncodingNumber)
// says how to read them. Throws "Parameter Error:\n <what> is not valid
// <encoding> (at byte offset N)." for bytes that are not.
std::string DecodeTextToUtf8(std::string_view bytes, int encoding, const std::string& what);

