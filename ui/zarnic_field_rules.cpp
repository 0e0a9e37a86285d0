#include "ui/zarnic_field_rules.h"

#include <cstdlib>
#include <string>

#include "core/codepage.h"
#include "core/general_exception.h"

uint16_t ParseAlternateChar(std::string_view text, int encoding) {
    std::u16string units = Utf8ToUtf16(text);
    if (units.size() == 1) return units[0];

    std::string digits(text);
    uint16_t number = static_cast<uint16_t>(std::strtoul(digits.c_str(), nullptr, 0) & 0xFFFF);
    if (encoding < 0 || encoding >= EncodingCount)
        throw CGeneralException("Parameter Error:\n Outout encoding is not selected.");
    int codePage = EncodingCodePage(encoding);
    uint16_t code = codePage < 0 ? number : static_cast<uint16_t>(CodePageToUnicode(codePage, number));
    if (code == 0xFFFF)
        ThrowError("Parameter Error:\n Can't represent AlternateChar(0x%04X) in the Unicode character set.\n Please use other AlternateChar.",
                   static_cast<unsigned>(number));
    return code;
}

bool AcceptSignedNumberChar(std::u16string_view text, int selStart, int selLength, char16_t ch) {
    int length = static_cast<int>(text.size());
    if (length - selLength > 4) return false;
    bool startsWithMinus = !text.empty() && text.front() == u'-';
    if (ch >= u'0' && ch <= u'9') return !(startsWithMinus && selStart == 0 && selLength == 0);
    if (ch == u'-') {
        if (selStart != 0) return false;
        return selLength > 0 || !startsWithMinus;
    }
    return false;
}
