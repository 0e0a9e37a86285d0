// The parse frame shared by every XML file the program reads: one SAX parser
// per load, a progressive parse that stops at the first error, and the
// conversion of every failure into the file kind's own message.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include <xercesc/sax/AttributeList.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/sax/SAXParseException.hpp>

// The messages one kind of file raises when its load fails; each takes one %s
// except Nothing.
struct XmlFailureTexts {
    const char* Recorded;    // a recorded parser error or version mismatch
    const char* Nothing;     // the parse failed with nothing recorded
    const char* Library;     // the library raised an XMLException
    bool WrapHandlerErrors;  // a handler's own error (nesting) is wrapped in "XML Error:\n %s"
};

// Entity expansions one document may make; far above any real order or filter file.
inline constexpr XMLSize_t MaxXmlEntityExpansions = 10000;

// Parses path with handler as document and error handler. errorText is the
// handler's first recorded error, looked at between the parse steps. Returns
// normally only when the whole document was read without error.
void ParseXmlFile(xercesc::HandlerBase& handler, const std::filesystem::path& path, const std::string& errorText,
                  const XmlFailureTexts& texts);

std::string XmlText(const XMLCh* text);
std::string XmlText(const XMLCh* text, XMLSize_t length);

// Keeps the first error of a parse: text is stored only while errorText is empty.
void RecordFirstError(std::string& errorText, const std::string& text);
// "path : line n : column n\n\n message\n"
std::string ParseErrorText(const xercesc::SAXParseException& e);

// Case-insensitive element name test.
bool IsElement(const XMLCh* name, std::u16string_view known);
// Raises the nesting message "<element> must be in <parent>".
[[noreturn]] void ThrowNesting(const char* element, const char* parent);
// Records a version mismatch of the root element (its version must be "1.0").
void CheckRootVersion(std::string& errorText, const char* rootName, xercesc::AttributeList& attrs);

// The number at the start of text as a 32-bit wcstoul with base 0 reads it, low 16 bits.
uint16_t ParseCodeNumber(std::u16string_view text);

// Base of the three handlers: captures parser errors (warnings optionally).
class CXmlHandlerBase : public xercesc::HandlerBase {
public:
    explicit CXmlHandlerBase(bool warningsAreErrors) : WarningsAreErrors(warningsAreErrors) {}
    void warning(const xercesc::SAXParseException& e) override;
    void error(const xercesc::SAXParseException& e) override;
    void fatalError(const xercesc::SAXParseException& e) override;

    int32_t Depth = 0;
    std::string ErrorText;

private:
    bool WarningsAreErrors;
};
