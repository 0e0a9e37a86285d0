#include "xmlfiles/xml_frame.h"

#include <exception>
#include <memory>
#include <set>
#include <utility>
#include <vector>

// The amplification limits are declared only for parsers built with DTD
// support, which every packaged expat is.
#ifndef XML_DTD
#define XML_DTD
#endif
#include <expat.h>

#include "core/general_exception.h"
#include "core/utf8.h"
#include "platform/file_handle.h"
#include "platform/paths.h"
#include "xmlfiles/xml_encodings.h"

namespace {

constexpr int ChunkSize = 64 * 1024;

// Keeps the first error of a parse: text is stored only while errorText is empty.
void RecordFirstError(std::string& errorText, const std::string& text) {
    if (errorText.empty()) errorText = text;
}

// "path : line n : column n\n\n message\n"
std::string ParseErrorText(const std::string& systemId, long long line, long long column, const std::string& message) {
    return FormatString("%s : line %d : column %d\n\n %s\n", systemId, line, column, message);
}

// One load: the parser, the handler it feeds, and what the callbacks found.
class CXmlParse {
public:
    CXmlParse(CXmlHandlerBase& handler, std::string systemId);

    // Feeds the file to the parser until the document ends or the first error.
    // Returns false when reading the file failed (LastSystemErrorText tells why).
    bool Feed(CFileHandle& file);

    CXmlHandlerBase& Handler;
    std::string SystemId;
    std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> Parser;
    std::exception_ptr Thrown;  // a handler's exception, raised again once the parser has returned
    bool Stopped = false;
    bool Completed = false;

private:
    static CXmlParse& Of(void* data) { return *static_cast<CXmlParse*>(data); }
    // Runs one callback; what it throws stops the parse.
    template <class F>
    void Guard(F&& f);
    void Fail(const std::string& message);
    void Stop();
    // Hands the character data gathered since the last markup to the handler.
    void Flush();
    long long Line() const { return static_cast<long long>(XML_GetCurrentLineNumber(Parser.get())); }
    long long Column() const { return static_cast<long long>(XML_GetCurrentColumnNumber(Parser.get())) + 1; }
    std::string ErrorMessage(XML_Error code) const;

    static void OnStart(void* data, const XML_Char* name, const XML_Char** attrs);
    static void OnEnd(void* data, const XML_Char* name);
    static void OnText(void* data, const XML_Char* text, int length);
    static void OnMarkup(void* data);
    static void OnComment(void* data, const XML_Char*) { OnMarkup(data); }
    static void OnInstruction(void* data, const XML_Char*, const XML_Char*) { OnMarkup(data); }
    static void OnDoctype(void* data, const XML_Char* name, const XML_Char* systemId, const XML_Char* publicId,
                          int hasInternalSubset);
    static void OnAttributeDeclaration(void* data, const XML_Char* element, const XML_Char* attribute,
                                       const XML_Char* type, const XML_Char* value, int required);
    static int OnExternalEntity(XML_Parser parser, const XML_Char* context, const XML_Char* base,
                                const XML_Char* systemId, const XML_Char* publicId);

    std::string Pending;
    std::vector<std::string> Open;  // names of the open elements, for messages
    std::set<std::pair<std::string, std::string>> DeclaredAttributes;
    bool RootStarted = false;
};

CXmlParse::CXmlParse(CXmlHandlerBase& handler, std::string systemId)
    : Handler(handler), SystemId(std::move(systemId)), Parser(XML_ParserCreate(nullptr), &XML_ParserFree) {
    if (!Parser) throw std::bad_alloc();
    XML_Parser p = Parser.get();
    XML_SetUserData(p, this);
    XML_SetElementHandler(p, OnStart, OnEnd);
    XML_SetCharacterDataHandler(p, OnText);
    XML_SetCommentHandler(p, OnComment);
    XML_SetProcessingInstructionHandler(p, OnInstruction);
    XML_SetCdataSectionHandler(p, OnMarkup, OnMarkup);
    XML_SetStartDoctypeDeclHandler(p, OnDoctype);
    XML_SetAttlistDeclHandler(p, OnAttributeDeclaration);
    // A document is read on its own: nothing it names outside itself (an
    // external DTD or entity, a URL, a device) is opened. Parameter entities
    // are parsed so that an external one is refused rather than skipped.
    XML_SetParamEntityParsing(p, XML_PARAM_ENTITY_PARSING_UNLESS_STANDALONE);
    XML_SetExternalEntityRefHandler(p, OnExternalEntity);
    XML_SetExternalEntityRefHandlerArg(p, this);
    XML_SetUnknownEncodingHandler(p, XmlUnknownEncoding, nullptr);
#if XML_MAJOR_VERSION > 2 || (XML_MAJOR_VERSION == 2 && XML_MINOR_VERSION >= 4)
    XML_SetBillionLaughsAttackProtectionMaximumAmplification(p, XmlMaxAmplification);
    XML_SetBillionLaughsAttackProtectionActivationThreshold(p, XmlAmplificationThreshold);
#endif
}

bool CXmlParse::Feed(CFileHandle& file) {
    for (;;) {
        void* buffer = XML_GetBuffer(Parser.get(), ChunkSize);
        if (!buffer) throw std::bad_alloc();
        const int64_t got = file.ReadSome(buffer, ChunkSize);
        if (got < 0) return false;
        bool last = got == 0;
        XML_Status status = XML_ParseBuffer(Parser.get(), static_cast<int>(got), last);
        if (Thrown) return true;
        if (status == XML_STATUS_ERROR) {
            XML_Error code = XML_GetErrorCode(Parser.get());
            if (code != XML_ERROR_ABORTED) Handler.Error(ParseErrorText(SystemId, Line(), Column(), ErrorMessage(code)));
            return true;
        }
        if (last) {
            Completed = !Stopped;
            return true;
        }
    }
}

template <class F>
void CXmlParse::Guard(F&& f) {
    // The parser may deliver an event or two after being stopped.
    if (Stopped) return;
    try {
        f();
    } catch (const CXmlValueError& e) {
        Fail(e.Message);
    } catch (...) {
        Thrown = std::current_exception();
        Stop();
    }
}

void CXmlParse::Fail(const std::string& message) {
    Handler.Error(ParseErrorText(SystemId, Line(), Column(), message));
    Stop();
}

void CXmlParse::Stop() {
    if (Stopped) return;
    Stopped = true;
    XML_StopParser(Parser.get(), XML_FALSE);
}

void CXmlParse::Flush() {
    if (Pending.empty()) return;
    std::u16string text = Utf8ToUtf16(Pending);
    Pending.clear();
    Handler.Characters(text);
}

std::string CXmlParse::ErrorMessage(XML_Error code) const {
    // Say which element is left open where the parser's own words would not.
    if (!Open.empty() && code == XML_ERROR_TAG_MISMATCH) return "mismatched tag: expected </" + Open.back() + ">";
    if (!Open.empty() && code == XML_ERROR_NO_ELEMENTS) return "the file ends before </" + Open.back() + ">";
    const XML_LChar* text = XML_ErrorString(code);
    return text ? text : "unknown parser error";
}

void CXmlParse::OnStart(void* data, const XML_Char* name, const XML_Char** attrs) {
    CXmlParse& parse = Of(data);
    parse.Guard([&] {
        parse.Flush();
        // Whatever the prolog recorded (a warning that counts) ends the load
        // before the document's content is read.
        if (!parse.RootStarted && !parse.Handler.ErrorText.empty()) {
            parse.Stop();
            return;
        }
        parse.RootStarted = true;
        parse.Handler.StartElement(name, CXmlAttributes(attrs));
        parse.Open.emplace_back(name);
    });
}

void CXmlParse::OnEnd(void* data, const XML_Char* name) {
    CXmlParse& parse = Of(data);
    parse.Guard([&] {
        parse.Flush();
        if (!parse.Open.empty()) parse.Open.pop_back();
        parse.Handler.EndElement(name);
    });
}

void CXmlParse::OnText(void* data, const XML_Char* text, int length) {
    CXmlParse& parse = Of(data);
    parse.Guard([&] { parse.Pending.append(text, static_cast<std::size_t>(length)); });
}

void CXmlParse::OnMarkup(void* data) {
    CXmlParse& parse = Of(data);
    parse.Guard([&] { parse.Flush(); });
}

void CXmlParse::OnDoctype(void* data, const XML_Char*, const XML_Char* systemId, const XML_Char*, int) {
    CXmlParse& parse = Of(data);
    parse.Guard([&] {
        if (systemId)
            throw CXmlValueError{FormatString("the external DTD \"%s\" is not read (a definition file must be complete in itself)",
                                              systemId)};
    });
}

void CXmlParse::OnAttributeDeclaration(void* data, const XML_Char* element, const XML_Char* attribute,
                                       const XML_Char*, const XML_Char*, int) {
    CXmlParse& parse = Of(data);
    parse.Guard([&] {
        // The first declaration counts; a second one is legal but worth a warning.
        if (parse.DeclaredAttributes.emplace(element, attribute).second) return;
        parse.Handler.Warning(ParseErrorText(
            parse.SystemId, parse.Line(), parse.Column(),
            FormatString("attribute '%s' has already been declared for element '%s'", attribute, element)));
    });
}

int CXmlParse::OnExternalEntity(XML_Parser parser, const XML_Char*, const XML_Char*, const XML_Char* systemId,
                                const XML_Char*) {
    CXmlParse& parse = Of(parser);
    parse.Guard([&] {
        throw CXmlValueError{FormatString(
            "the external entity \"%s\" is not read (a definition file must be complete in itself)", systemId)};
    });
    return XML_STATUS_ERROR;
}

}  // namespace

void ParseXmlFile(CXmlHandlerBase& handler, const std::filesystem::path& path, const XmlFailureTexts& texts) {
    std::string systemId = PathText(path);
    CFileHandle file;
    if (!file.OpenAnyForReading(path))
        ThrowError(texts.Library, FormatString("unable to open the file '%s': %s", systemId, LastSystemErrorText()));

    // The parser lives for this load only and goes on every way out.
    CXmlParse parse(handler, systemId);
    if (!parse.Feed(file))
        ThrowError(texts.Library, FormatString("unable to read the file '%s': %s", systemId, LastSystemErrorText()));
    if (parse.Thrown) {
        try {
            std::rethrow_exception(parse.Thrown);
        } catch (const CGeneralException& e) {
            if (texts.WrapHandlerErrors) ThrowError("XML Error:\n %s", e.Message);
            throw;
        }
    }
    if (parse.Completed && handler.ErrorText.empty()) return;
    if (!handler.ErrorText.empty()) ThrowError(texts.Recorded, handler.ErrorText);
    throw CGeneralException(texts.Nothing);
}

const char* CXmlAttributes::Value(std::string_view name) const {
    for (const char** p = Pairs; p && p[0]; p += 2)
        if (name == p[0]) return p[1];
    return nullptr;
}

void CXmlHandlerBase::Error(const std::string& text) { RecordFirstError(ErrorText, text); }

void CXmlHandlerBase::Warning(const std::string& text) {
    if (WarningsAreErrors) RecordFirstError(ErrorText, text);
}

bool EqualsIgnoringCase(std::string_view text, std::string_view known) {
    if (text.size() != known.size()) return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char a = text[i], b = known[i];
        if (a >= 'A' && a <= 'Z') a = static_cast<char>(a - 'A' + 'a');
        if (b >= 'A' && b <= 'Z') b = static_cast<char>(b - 'A' + 'a');
        if (a != b) return false;
    }
    return true;
}

bool IsElement(std::string_view name, std::string_view known) { return EqualsIgnoringCase(name, known); }

void ThrowNesting(const char* element, const char* parent) { ThrowError("<%s> must be in <%s>", element, parent); }

void CheckRootVersion(std::string& errorText, const char* rootName, const CXmlAttributes& attrs) {
    const char* version = attrs.Value("version");
    if (version && EqualsIgnoringCase(version, "1.0")) return;
    RecordFirstError(errorText, FormatString("%s version mismatch(%s: must be %s)", rootName, version, "1.0"));
}
