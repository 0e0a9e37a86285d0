// Rules of the ZGLY output panel's fields that need no widgets: the alternate
// character text and the signed-number key filter.
#pragma once

#include <cstdint>
#include <string_view>

// The alternate character for a field text: one character stands for itself;
// anything else is a number ("0x" hex, leading "0" octal, else decimal) in the
// chosen encoding's code page (encoding index 0..3, anything else: none
// selected). Throws the panel's parameter messages.
uint16_t ParseAlternateChar(std::string_view text, int encoding);

// Whether a typed character may enter a signed-number field showing `text`
// with the selection [selStart, selStart + selLength).
// At most five characters; a minus only at the very front.
bool AcceptSignedNumberChar(std::u16string_view text, int selStart, int selLength, char16_t ch);
