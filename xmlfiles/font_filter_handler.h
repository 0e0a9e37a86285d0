// The handler that fills a CFontFilter from a character filter file (.xllt).
#pragma once

#include "core/font_filter.h"
#include "xmlfiles/xml_frame.h"

// Reads an .xllt file into the filter; throws on failure.
void LoadFontFilterFile(CFontFilter& filter, const std::filesystem::path& path);

class CFontFilterHandler : public CXmlHandlerBase {
public:
    // Parser warnings make a filter fail to load.
    explicit CFontFilterHandler(CFontFilter& filter) : CXmlHandlerBase(true), Filter(filter) {}

    void Characters(std::u16string_view text) override;
    void StartElement(std::string_view name, const CXmlAttributes& attrs) override;
    void EndElement(std::string_view name) override;

    bool InCode = false;
    bool InLetter = false;
    bool InBody = false;

private:
    CFontFilter& Filter;
};
