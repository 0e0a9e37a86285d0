#include "xmlfiles/font_filter_handler.h"

#include <xercesc/util/XMLChar.hpp>

#include "core/general_exception.h"

using namespace xercesc;

namespace {

const XmlFailureTexts FontFilterTexts{"XML Error:\n %s", "XML Error:\n Invalid filter file", "XML Error:\n %s", true};

}  // namespace

void CFontFilterHandler::characters(const XMLCh* const chars, const XMLSize_t length) {
    if (!InLetter) return;
    if (InCode) {
        // Only the first piece of a code's text is its number.
        InCode = false;
        Filter.Letters[ParseCodeNumber(std::u16string_view(chars, length))] = true;
        return;
    }
    for (XMLSize_t i = 0; i < length; ++i)
        if (!XMLChar1_0::isWhitespace(chars[i])) Filter.Letters[static_cast<uint16_t>(chars[i])] = true;
}

void CFontFilterHandler::startElement(const XMLCh* const name, AttributeList& attrs) {
    if (IsElement(name, u"code")) {
        if (!InLetter) ThrowNesting("code", "letter");
        InCode = true;
    } else if (IsElement(name, u"sp")) {
        if (!InLetter) ThrowNesting("sp", "letter");
        Filter.Letters[0x0020] = true;
    } else if (IsElement(name, u"letter")) {
        if (!InBody) ThrowNesting("letter", "body");
        InLetter = true;
    } else if (IsElement(name, u"body")) {
        if (Depth != 1) ThrowNesting("body", "letter-list");
        InBody = true;
    } else if (IsElement(name, u"letter-list")) {
        CheckRootVersion(ErrorText, "letter-list", attrs);
    }
    ++Depth;
}

void CFontFilterHandler::endElement(const XMLCh* const name) {
    --Depth;
    if (IsElement(name, u"code"))
        InCode = false;
    else if (IsElement(name, u"letter"))
        InLetter = false;
    else if (IsElement(name, u"body"))
        InBody = false;
}

void CFontFilter::Load(const std::filesystem::path& path) {
    CFontFilterHandler handler(*this);
    ParseXmlFile(handler, path, handler.ErrorText, FontFilterTexts);
    Letters[0x0020] = true;
    PassAll = false;
}
