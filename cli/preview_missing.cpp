#include "cli/preview_missing.h"

#include <set>

#include "core/codepage.h"
#include "core/general_exception.h"
#include "core/utf8.h"
#include "zgly/font_block_set.h"
#include "zgly/zgly_format.h"

using namespace zgly;

namespace {

bool FontHas(const CFontBlockSet& set, int encoding, char16_t c) {
    const uint16_t code = UnicodeToFileCode(encoding, c);
    return code != NoChar && set.FindGlyphIndex(code) != NoGlyph;
}

}  // namespace

std::vector<std::string> MissingCharWarnings(const CFontBlockSet& set, std::string_view utf8) {
    const int encoding = set.GetBlock(TagFINF, 0)->Data()[FinfEncoding];
    const std::u16string text = Utf8ToUtf16(utf8);
    std::set<uint32_t> named;
    std::vector<std::string> warnings;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i];
        if (c == u'\n' || c == u'\r') continue;
        // A pair of surrogates is one character; the font has neither half.
        if (c >= 0xD800 && c <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
            const uint32_t cp = 0x10000 + ((static_cast<uint32_t>(c) - 0xD800) << 10) + (text[i + 1] - 0xDC00);
            if (named.insert(cp).second)
                warnings.push_back(FormatString("The font lacks a char ('%s': U+%04X); the alternate glyph is drawn.",
                                                CodePointToUtf8(cp), static_cast<int>(cp)));
            ++i;
            continue;
        }
        if (FontHas(set, encoding, c) || !named.insert(c).second) continue;
        warnings.push_back(FormatString("The font lacks a char ('%c': U+%04X); the alternate glyph is drawn.", c,
                                        static_cast<int>(c)));
    }
    return warnings;
}
