// The signed-number key filter of the ZGLY output panel, free of widgets.
#pragma once

#include <string_view>

// Whether a typed character may enter a signed-number field showing `text`
// with the selection [selStart, selStart + selLength).
// At most five characters; a minus only at the very front.
bool AcceptSignedNumberChar(std::u16string_view text, int selStart, int selLength, char16_t ch);
