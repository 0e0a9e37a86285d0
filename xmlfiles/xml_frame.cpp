#include "xmlfiles/xml_frame.h"

#include <cerrno>
#include <cwchar>
#include <cwctype>
#include <memory>

#include <xercesc/framework/XMLPScanToken.hpp>
#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/SecurityManager.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLString.hpp>

#include "core/general_exception.h"
#include "xmlfiles/glyph_order_files.h"

using namespace xercesc;

void ParseXmlFile(HandlerBase& handler, const std::filesystem::path& path, const std::string& errorText,
                  const XmlFailureTexts& texts) {
    EnsureXmlPlatform();
    SecurityManager limits;  // outlives the parser that points to it
    limits.setEntityExpansionLimit(MaxXmlEntityExpansions);
    // The parser lives for this load only and goes on every way out.
    auto parser = std::make_unique<SAXParser>(nullptr, XMLPlatformUtils::fgMemoryManager, nullptr);
    parser->setDocumentHandler(&handler);
    parser->setErrorHandler(&handler);
    parser->setValidationScheme(SAXParser::Val_Auto);
    parser->setDoNamespaces(false);
    parser->setDoSchema(false);
    parser->setValidationSchemaFullChecking(false);
    // A document is read on its own: nothing it names outside itself (an
    // external DTD or entity, a URL, a device) is opened, and its internal
    // entities cannot expand without bound.
    parser->setLoadExternalDTD(false);
    parser->setDisableDefaultEntityResolution(true);
    parser->setSecurityManager(&limits);

    bool succeeded = false;
    try {
        std::u16string systemId = Utf8ToUtf16(path.string());
        XMLPScanToken token;
        bool more = parser->parseFirst(systemId.c_str(), token);
        if (more && errorText.empty()) {
            while (more && parser->getErrorCount() == 0) more = parser->parseNext(token);
            if (parser->getErrorCount() == 0 && errorText.empty()) {
                parser->parseReset(token);
                succeeded = true;
            }
        }
    } catch (const XMLException& e) {
        ThrowError(texts.Library, XmlText(e.getMessage()));
    } catch (const CGeneralException& e) {
        if (texts.WrapHandlerErrors) ThrowError("XML Error:\n %s", e.Message);
        throw;
    }
    if (succeeded) return;
    if (!errorText.empty()) ThrowError(texts.Recorded, errorText);
    throw CGeneralException(texts.Nothing);
}

std::string XmlText(const XMLCh* text) {
    if (!text) return "(null)";
    return Utf16ToUtf8(std::u16string_view(text));
}

std::string XmlText(const XMLCh* text, XMLSize_t length) {
    return Utf16ToUtf8(std::u16string_view(text, length));
}

void RecordFirstError(std::string& errorText, const std::string& text) {
    if (errorText.empty()) errorText = text;
}

std::string ParseErrorText(const SAXParseException& e) {
    return FormatString("%s : line %d : column %d\n\n %s\n", XmlText(e.getSystemId()),
                        static_cast<long long>(e.getLineNumber()), static_cast<long long>(e.getColumnNumber()),
                        XmlText(e.getMessage()));
}

bool IsElement(const XMLCh* name, std::u16string_view known) {
    std::u16string z(known);
    return XMLString::compareIString(name, z.c_str()) == 0;
}

void ThrowNesting(const char* element, const char* parent) {
    ThrowError("<%s> must be in <%s>", element, parent);
}

void CheckRootVersion(std::string& errorText, const char* rootName, AttributeList& attrs) {
    const XMLCh* version = attrs.getValue(u"version");
    if (version && XMLString::compareIString(version, u"1.0") == 0) return;
    RecordFirstError(errorText, FormatString("%s version mismatch(%s: must be %s)", rootName, XmlText(version), "1.0"));
}

uint16_t ParseCodeNumber(std::u16string_view text) {
    // Read as a 32-bit unsigned long whatever this platform's width, so that a
    // file gives the same codes everywhere: larger numbers saturate, and a sign
    // negates in 32 bits.
    std::wstring wide(text.begin(), text.end());
    const wchar_t* p = wide.c_str();
    while (std::iswspace(static_cast<wint_t>(*p))) ++p;
    bool negative = *p == L'-';
    if (*p == L'-' || *p == L'+') ++p;
    // The digits must follow the sign at once.
    if (std::iswspace(static_cast<wint_t>(*p)) || *p == L'-' || *p == L'+') return 0;
    errno = 0;
    unsigned long long magnitude = std::wcstoull(p, nullptr, 0);
    if (errno == ERANGE || magnitude > 0xFFFFFFFFull) return 0xFFFF;
    uint32_t value = static_cast<uint32_t>(magnitude);
    if (negative) value = 0u - value;
    return static_cast<uint16_t>(value & 0xFFFF);
}

void CXmlHandlerBase::warning(const SAXParseException& e) {
    std::string text = ParseErrorText(e);
    if (WarningsAreErrors) RecordFirstError(ErrorText, text);
}

void CXmlHandlerBase::error(const SAXParseException& e) { RecordFirstError(ErrorText, ParseErrorText(e)); }

void CXmlHandlerBase::fatalError(const SAXParseException& e) { RecordFirstError(ErrorText, ParseErrorText(e)); }
