// Character encodings of native font files and the single-character
// conversions between Unicode and code pages 932 (Shift_JIS) and 1252.
#pragma once

#include <cstdint>

enum EncodingNumber : int {
    EncodingUtf8 = 0,
    EncodingUtf16 = 1,
    EncodingShiftJis = 2,
    EncodingCp1252 = 3,
};
inline constexpr int EncodingCount = 4;

// The code page behind an encoding number, -1 where there is none (the file
// code is the Unicode code) or the number is unknown.
int EncodingCodePage(int encoding);
// "UTF-8", "UTF-16", "Shift_JIS", "CodePage 1252 (ISO 8859-1)".
const char* EncodingName(int encoding);

inline constexpr uint16_t NoChar = 0xFFFF;

// Windows' own results without best-fit mappings: a byte, lead*256+trail,
// or 0xFFFF when the character has no form in the code page.
uint16_t UnicodeToCodePage(int codePage, char16_t c);
// c < 256 is one byte, else lead = c / 256 and trail = c % 256; 0xFFFF when
// the bytes are not exactly one valid character.
char16_t CodePageToUnicode(int codePage, uint16_t c);

// The code a character has in a font file of the encoding (the Unicode code
// for UTF-8 and UTF-16); NoChar when the encoding has no form for it.
uint16_t UnicodeToFileCode(int encoding, char16_t c);
// The character a file code of the encoding stands for; NoChar when none.
char16_t FileCodeToUnicode(int encoding, uint16_t code);
