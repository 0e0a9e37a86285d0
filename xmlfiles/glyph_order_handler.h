// The handler that fills a CGlyphOrder from a glyph order file (.xlor).
#pragma once

#include "core/glyph_order.h"
#include "xmlfiles/xml_frame.h"

// Reads an .xlor file into the order; throws on failure.
void LoadGlyphOrderFile(CGlyphOrder& order, const std::filesystem::path& path);

class CGlyphOrderHandler : public CXmlHandlerBase {
public:
    explicit CGlyphOrderHandler(CGlyphOrder& order) : CXmlHandlerBase(false), Order(order) {}

    void Characters(std::u16string_view text) override;
    void StartElement(std::string_view name, const CXmlAttributes& attrs) override;
    void EndElement(std::string_view name) override;

    bool InOrder = false;
    bool InCode = false;
    bool InBody = false;

private:
    CGlyphOrder& Order;
};
