#include "zgly/alternate_char.h"

#include <cstdlib>
#include <string>

#include "core/codepage.h"
#include "core/general_exception.h"
#include "core/utf8.h"

uint16_t ParseAlternateChar(std::string_view text, int encoding) {
    std::u16string units = Utf8ToUtf16(text);
    if (units.size() == 1) return units[0];
    // strtoul with base 0 reads the prefixes the same way; what is not a
    // number reads as 0 and a minus sign wraps, both kept to 16 bits.
    std::string copy(text);
    auto number = static_cast<uint16_t>(std::strtoul(copy.c_str(), nullptr, 0) & 0xFFFF);
    if (encoding < 0 || encoding >= EncodingCount)
        throw CGeneralException("Parameter Error:\n Outout encoding is not selected.");
    const uint16_t result = FileCodeToUnicode(encoding, number);
    if (result == NoChar)
        ThrowError("Parameter Error:\n Can't represent AlternateChar(0x%04X) in the Unicode character set.\n Please "
                   "use other AlternateChar.",
                   static_cast<int>(number));
    return result;
}
