// Reading a typed alternate character: one character is itself; anything
// else is a number (0x hexadecimal, leading 0 octal, else decimal) in the
// output encoding's code page.
#pragma once

#include <cstdint>
#include <string_view>

// encoding: 0 UTF-8, 1 UTF-16, 2 Shift_JIS, 3 code page 1252; anything else
// counts as no encoding selected. Throws the output panel's messages.
uint16_t ParseAlternateChar(std::string_view text, int encoding);
