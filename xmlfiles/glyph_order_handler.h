// The SAX handler that fills a CGlyphOrder from a glyph order file (.xlor).
#pragma once

#include "core/glyph_order.h"
#include "xmlfiles/xml_frame.h"

class CGlyphOrderHandler : public CXmlHandlerBase {
public:
    explicit CGlyphOrderHandler(CGlyphOrder& order) : CXmlHandlerBase(false), Order(order) {}

    void characters(const XMLCh* const chars, const XMLSize_t length) override;
    void startElement(const XMLCh* const name, xercesc::AttributeList& attrs) override;
    void endElement(const XMLCh* const name) override;

    bool InOrder = false;
    bool InCode = false;
    bool InBody = false;

private:
    CGlyphOrder& Order;
};
