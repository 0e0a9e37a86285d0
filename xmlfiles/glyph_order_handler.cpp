#include "xmlfiles/glyph_order_handler.h"

#include "core/general_exception.h"
#include "xmlfiles/xml_numbers.h"

namespace {

const XmlFailureTexts GlyphOrderTexts{"XML Error:\n %s", "XML Error:\n Invalid order file.", "XML Error:\n %s", true};

}  // namespace

void CGlyphOrderHandler::Characters(std::u16string_view text) {
    if (!InOrder) return;
    if (InCode) {
        // Only the first piece of a code's text is its number.
        InCode = false;
        Order.Codes.push_back(ParseCodeNumber(text));
        return;
    }
    for (char16_t c : text)
        if (!IsXmlWhitespace(c)) Order.Codes.push_back(static_cast<uint16_t>(c));
}

void CGlyphOrderHandler::StartElement(std::string_view name, const CXmlAttributes& attrs) {
    if (IsElement(name, "null")) {
        if (!InOrder) ThrowNesting("null", "order");
        Order.Codes.push_back(NoCode);
    } else if (IsElement(name, "sp")) {
        if (!InOrder) ThrowNesting("sp", "order");
        Order.Codes.push_back(0x0020);
    } else if (IsElement(name, "code")) {
        if (!InOrder) ThrowNesting("code", "order");
        InCode = true;
    } else if (IsElement(name, "order")) {
        if (!InBody) ThrowNesting("order", "body");
        InOrder = true;
    } else if (IsElement(name, "area")) {
        if (!InBody) ThrowNesting("area", "body");
        if (const char* width = attrs.Value("width")) Order.Width = ParseDecimalNumber(width, "area width");
        if (const char* height = attrs.Value("height")) {
            Order.Height = ParseDecimalNumber(height, "area height");
            Order.HeightGiven = true;
        }
    } else if (IsElement(name, "body")) {
        if (Depth != 1) ThrowNesting("body", "letter-order");
        InBody = true;
    } else if (IsElement(name, "letter-order")) {
        CheckRootVersion(ErrorText, "letter-order", attrs);
    }
    ++Depth;
}

void CGlyphOrderHandler::EndElement(std::string_view name) {
    --Depth;
    if (IsElement(name, "code"))
        InCode = false;
    else if (IsElement(name, "order"))
        InOrder = false;
    else if (IsElement(name, "body"))
        InBody = false;
}

void LoadGlyphOrderFile(CGlyphOrder& order, const std::filesystem::path& path) {
    CGlyphOrderHandler handler(order);
    ParseXmlFile(handler, path, GlyphOrderTexts);
    if (order.Width <= 0) ThrowError("XML Error:\n Invalid order width(=%d).", order.Width);
    if (order.HeightGiven) {
        if (order.Height <= 0) ThrowError("XML Error:\n Invalid order height(=%d).", order.Height);
    } else {
        long long rows = (static_cast<long long>(order.Codes.size()) + order.Width - 1) / order.Width;
        order.Height = static_cast<int32_t>(rows);
    }
    order.Loaded = true;
}
