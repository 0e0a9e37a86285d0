// The numbers order and filter files hold: character codes as element text,
// and the grid's width and height as attributes.
#pragma once

#include <cstdint>
#include <string_view>

// The number at the start of text as a 32-bit wcstoul with base 0 reads it, low 16 bits.
uint16_t ParseCodeNumber(std::u16string_view text);

// A whole decimal 32-bit signed number, surrounded by optional XML whitespace,
// with an optional sign. Anything else, an empty value or a number outside
// -2147483648 to 2147483647 throws CXmlValueError naming what (e.g. "area width") and the value.
int32_t ParseDecimalNumber(const char* value, const char* what);
