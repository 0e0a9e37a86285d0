// The parse frame shared by every XML file the program reads: one expat parser
// per load, a parse that stops at the first error, and the conversion of every
// failure into the file kind's own message.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

// The messages one kind of file raises when its load fails; each takes one %s
// except Nothing.
struct XmlFailureTexts {
    const char* Recorded;    // a recorded parser error or version mismatch
    const char* Nothing;     // the parse failed with nothing recorded
    const char* Library;     // the file could not be opened or read
    bool WrapHandlerErrors;  // a handler's own error (nesting) is wrapped in "XML Error:\n %s"
};

// Entity expansion is bounded by the parser's amplification check: once a
// document has produced this many bytes, its output (entities expanded) may
// be at most this many times its input. Real order and filter files stay far
// below both; an entity bomb stops after about a megabyte of work.
inline constexpr unsigned long long XmlAmplificationThreshold = 1ull << 20;
inline constexpr float XmlMaxAmplification = 100.0f;

// The attributes of one start tag, as the parser hands them over.
class CXmlAttributes {
public:
    explicit CXmlAttributes(const char** pairs) : Pairs(pairs) {}
    // The value of the attribute of exactly this name, or nullptr.
    const char* Value(std::string_view name) const;

private:
    const char** Pairs;
};

// Raised by a handler for a value the document cannot hold (a number that does
// not parse); the frame reports it as a parse error at the element's position.
struct CXmlValueError {
    std::string Message;
};

// Base of the three handlers: the events they take, and the first error of a
// parse (parser warnings optionally count as errors).
class CXmlHandlerBase {
public:
    explicit CXmlHandlerBase(bool warningsAreErrors) : WarningsAreErrors(warningsAreErrors) {}
    virtual ~CXmlHandlerBase() = default;

    // One piece of character data: all the text between two pieces of markup
    // (elements, comments, processing instructions, CDATA section bounds),
    // line breaks and references included.
    virtual void Characters(std::u16string_view text) = 0;
    // May throw CGeneralException (stops the parse at once) or CXmlValueError.
    virtual void StartElement(std::string_view name, const CXmlAttributes& attrs) = 0;
    virtual void EndElement(std::string_view name) = 0;

    // A parse error text ("path : line n : column n\n\n message\n").
    void Error(const std::string& text);
    void Warning(const std::string& text);

    int32_t Depth = 0;
    std::string ErrorText;

private:
    bool WarningsAreErrors;
};

// Parses path with handler. Returns normally only when the whole document was
// read without error and nothing was recorded in the handler's ErrorText.
void ParseXmlFile(CXmlHandlerBase& handler, const std::filesystem::path& path, const XmlFailureTexts& texts);

// ASCII letters compared without case; names and versions are ASCII.
bool EqualsIgnoringCase(std::string_view text, std::string_view known);
// Case-insensitive element name test.
bool IsElement(std::string_view name, std::string_view known);
// XML's own whitespace: space, tab, carriage return, line feed.
inline bool IsXmlWhitespace(char16_t c) { return c == 0x20 || c == 0x09 || c == 0x0D || c == 0x0A; }
// Raises the nesting message "<element> must be in <parent>".
[[noreturn]] void ThrowNesting(const char* element, const char* parent);
// Records a version mismatch of the root element (its version must be "1.0").
void CheckRootVersion(std::string& errorText, const char* rootName, const CXmlAttributes& attrs);
