// Placeholder until the generated tables land.
#include "core/codepage.h"

uint16_t UnicodeToCodePage(int, char16_t) { return NoChar; }
char16_t CodePageToUnicode(int, uint16_t) { return NoChar; }
