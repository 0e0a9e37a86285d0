#include "xmlfiles/zar_xml_file.h"

#include "core/general_exception.h"

namespace {

const XmlFailureTexts ZarXmlTexts{"XML Error:\n %s\n", "XML Error:\n Invalid order file.", "XML Error: %s\n", false};

}  // namespace

void CZarXmlFile::Load(GlyphOrderInfo& info, const std::filesystem::path& path) {
    Loaded = InHead = InComment = InTitle = false;
    Depth = 0;
    ErrorText.clear();
    Title.clear();
    Comment.clear();
    Target = &info;
    info.Path = path;
    info.FileName = path.filename().string();
    try {
        ParseXmlFile(*this, path, ErrorText, ZarXmlTexts);
    } catch (...) {
        StoreText();
        Target = nullptr;
        throw;
    }
    StoreText();
    Target = nullptr;
    Loaded = true;
}

void CZarXmlFile::StoreText() {
    if (!Target) return;
    Target->Title = Utf16ToUtf8(Title);
    Target->Comment = Utf16ToUtf8(Comment);
}

void CZarXmlFile::characters(const XMLCh* const chars, const XMLSize_t length) {
    if (InComment)
        Comment.append(chars, length);
    else if (InTitle)
        Title.append(chars, length);
}

void CZarXmlFile::startElement(const XMLCh* const name, xercesc::AttributeList& attrs) {
    if (IsElement(name, u"comment")) {
        if (!InHead || Depth != 2) ThrowNesting("comment", "head");
        InComment = true;
    } else if (IsElement(name, u"title")) {
        if (!InHead || Depth != 2) ThrowNesting("title", "head");
        InTitle = true;
    } else if (IsElement(name, u"head")) {
        if (Depth != 1) ThrowNesting("head", "letter-order");
        InHead = true;
    } else if (IsElement(name, u"letter-order")) {
        CheckRootVersion(ErrorText, "letter-order", attrs);
    }
    ++Depth;
}

void CZarXmlFile::endElement(const XMLCh* const name) {
    --Depth;
    if (IsElement(name, u"comment"))
        InComment = false;
    else if (IsElement(name, u"title"))
        InTitle = false;
    else if (IsElement(name, u"head"))
        InHead = false;
}
