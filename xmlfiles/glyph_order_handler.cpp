#include "xmlfiles/glyph_order_handler.h"

#include <xercesc/util/XMLChar.hpp>
#include <xercesc/util/XMLString.hpp>

#include "core/general_exception.h"

using namespace xercesc;

namespace {

const XmlFailureTexts GlyphOrderTexts{"XML Error:\n %s", "XML Error:\n Invalid order file.", "XML Error:\n %s", true};

}  // namespace

void CGlyphOrderHandler::characters(const XMLCh* const chars, const XMLSize_t length) {
    if (!InOrder) return;
    if (InCode) {
        // Only the first piece of a code's text is its number.
        InCode = false;
        Order.Codes.push_back(ParseCodeNumber(std::u16string_view(chars, length)));
        return;
    }
    for (XMLSize_t i = 0; i < length; ++i)
        if (!XMLChar1_0::isWhitespace(chars[i])) Order.Codes.push_back(static_cast<uint16_t>(chars[i]));
}

void CGlyphOrderHandler::startElement(const XMLCh* const name, AttributeList& attrs) {
    if (IsElement(name, u"null")) {
        if (!InOrder) ThrowNesting("null", "order");
        Order.Codes.push_back(NoCode);
    } else if (IsElement(name, u"sp")) {
        if (!InOrder) ThrowNesting("sp", "order");
        Order.Codes.push_back(0x0020);
    } else if (IsElement(name, u"code")) {
        if (!InOrder) ThrowNesting("code", "order");
        InCode = true;
    } else if (IsElement(name, u"order")) {
        if (!InBody) ThrowNesting("order", "body");
        InOrder = true;
    } else if (IsElement(name, u"area")) {
        if (!InBody) ThrowNesting("area", "body");
        if (const XMLCh* width = attrs.getValue(u"width")) Order.Width = XMLString::parseInt(width);
        if (const XMLCh* height = attrs.getValue(u"height")) {
            Order.Height = XMLString::parseInt(height);
            Order.HeightGiven = true;
        }
    } else if (IsElement(name, u"body")) {
        if (Depth != 1) ThrowNesting("body", "letter-order");
        InBody = true;
    } else if (IsElement(name, u"letter-order")) {
        CheckRootVersion(ErrorText, "letter-order", attrs);
    }
    ++Depth;
}

void CGlyphOrderHandler::endElement(const XMLCh* const name) {
    --Depth;
    if (IsElement(name, u"code"))
        InCode = false;
    else if (IsElement(name, u"order"))
        InOrder = false;
    else if (IsElement(name, u"body"))
        InBody = false;
}

void CGlyphOrder::Load(const std::filesystem::path& path) {
    CGlyphOrderHandler handler(*this);
    ParseXmlFile(handler, path, handler.ErrorText, GlyphOrderTexts);
    if (Width <= 0) ThrowError("XML Error:\n Invalid order width(=%d).", Width);
    if (HeightGiven) {
        if (Height <= 0) ThrowError("XML Error:\n Invalid order height(=%d).", Height);
    } else {
        long long rows = (static_cast<long long>(Codes.size()) + Width - 1) / Width;
        Height = static_cast<int32_t>(rows);
    }
    Loaded = true;
}
