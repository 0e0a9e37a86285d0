#include "xmlfiles/font_filter_handler.h"

#include "core/general_exception.h"
#include "xmlfiles/xml_numbers.h"

namespace {

const XmlFailureTexts FontFilterTexts{"XML Error:\n %s", "XML Error:\n Invalid filter file", "XML Error:\n %s", true};

}  // namespace

void CFontFilterHandler::Characters(std::u16string_view text) {
    if (!InLetter) return;
    if (InCode) {
        // Only the first piece of a code's text is its number.
        InCode = false;
        Filter.Letters[ParseCodeNumber(text)] = true;
        return;
    }
    for (char16_t c : text)
        if (!IsXmlWhitespace(c)) Filter.Letters[static_cast<uint16_t>(c)] = true;
}

void CFontFilterHandler::StartElement(std::string_view name, const CXmlAttributes& attrs) {
    if (IsElement(name, "code")) {
        if (!InLetter) ThrowNesting("code", "letter");
        InCode = true;
    } else if (IsElement(name, "sp")) {
        if (!InLetter) ThrowNesting("sp", "letter");
        Filter.Letters[0x0020] = true;
    } else if (IsElement(name, "letter")) {
        if (!InBody) ThrowNesting("letter", "body");
        InLetter = true;
    } else if (IsElement(name, "body")) {
        if (Depth != 1) ThrowNesting("body", "letter-list");
        InBody = true;
    } else if (IsElement(name, "letter-list")) {
        CheckRootVersion(ErrorText, "letter-list", attrs);
    }
    ++Depth;
}

void CFontFilterHandler::EndElement(std::string_view name) {
    --Depth;
    if (IsElement(name, "code"))
        InCode = false;
    else if (IsElement(name, "letter"))
        InLetter = false;
    else if (IsElement(name, "body"))
        InBody = false;
}

void LoadFontFilterFile(CFontFilter& filter, const std::filesystem::path& path) {
    CFontFilterHandler handler(filter);
    ParseXmlFile(handler, path, FontFilterTexts);
    filter.Letters[0x0020] = true;
    filter.PassAll = false;
}
