// The SAX handler that fills a CFontFilter from a character filter file (.xllt).
#pragma once

#include "core/font_filter.h"
#include "xmlfiles/xml_frame.h"

class CFontFilterHandler : public CXmlHandlerBase {
public:
    // Parser warnings make a filter fail to load.
    explicit CFontFilterHandler(CFontFilter& filter) : CXmlHandlerBase(true), Filter(filter) {}

    void characters(const XMLCh* const chars, const XMLSize_t length) override;
    void startElement(const XMLCh* const name, xercesc::AttributeList& attrs) override;
    void endElement(const XMLCh* const name) override;

    bool InCode = false;
    bool InLetter = false;
    bool InBody = false;

private:
    CFontFilter& Filter;
};
