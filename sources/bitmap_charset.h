// Bitmap fonts (BDF, PCF) whose characters are numbered in a national
// character set rather than Unicode: JIS X 0208 and JIS X 0201 fonts, the
// classic Japanese pixel fonts, and Windows-1252 ones. Their codes come from
// the program's own code-page tables.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <ft2build.h>
#include FT_FREETYPE_H

class CCharsetMap {
public:
    // The map for a face that has no Unicode charmap but names its character
    // set (BDF and PCF do); nullptr for every other face. Selects the face's
    // own charmap. Throws "Parameter Error:" for a character set without a
    // table. name is the font as the user gave it.
    static std::unique_ptr<CCharsetMap> ForFace(FT_Face face, const std::string& name);

    // The face's character code for a Unicode code; 0 when it has none.
    uint32_t CharCode(char16_t code) const { return Codes[code]; }

private:
    std::vector<uint16_t> Codes;
};

// The JIS X 0208 code (row + 0x20, cell + 0x20) of a two-byte Shift_JIS code
// of rows 1 to 94; 0 for anything else.
uint16_t ShiftJisToJis(uint16_t sjis);
