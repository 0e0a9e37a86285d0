#include "ui/zarnic_field_rules.h"

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
