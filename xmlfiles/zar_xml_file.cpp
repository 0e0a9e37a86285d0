#include "xmlfiles/zar_xml_file.h"

#include "core/general_exception.h"
#include "core/utf8.h"

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
        ParseXmlFile(*this, path, ZarXmlTexts);
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

void CZarXmlFile::Characters(std::u16string_view text) {
    if (InComment)
        Comment.append(text);
    else if (InTitle)
        Title.append(text);
}

void CZarXmlFile::StartElement(std::string_view name, const CXmlAttributes& attrs) {
    if (IsElement(name, "comment")) {
        if (!InHead || Depth != 2) ThrowNesting("comment", "head");
        InComment = true;
    } else if (IsElement(name, "title")) {
        if (!InHead || Depth != 2) ThrowNesting("title", "head");
        InTitle = true;
    } else if (IsElement(name, "head")) {
        if (Depth != 1) ThrowNesting("head", "letter-order");
        InHead = true;
    } else if (IsElement(name, "letter-order")) {
        CheckRootVersion(ErrorText, "letter-order", attrs);
    }
    ++Depth;
}

void CZarXmlFile::EndElement(std::string_view name) {
    --Depth;
    if (IsElement(name, "comment"))
        InComment = false;
    else if (IsElement(name, "title"))
        InTitle = false;
    else if (IsElement(name, "head"))
        InHead = false;
}
