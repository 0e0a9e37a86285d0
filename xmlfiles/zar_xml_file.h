// Reads only the head (title and comment) of a glyph order file, for the list
// of order files offered to the user. One object may read many files in turn.
#pragma once

#include <filesystem>
#include <string>

#include "xmlfiles/glyph_order_files.h"
#include "xmlfiles/xml_frame.h"

class CZarXmlFile : public CXmlHandlerBase {
public:
    CZarXmlFile() : CXmlHandlerBase(false) {}
    // Fills info; throws CGeneralException on failure (Loaded stays false).
    void Load(GlyphOrderInfo& info, const std::filesystem::path& path);

    void characters(const XMLCh* const chars, const XMLSize_t length) override;
    void startElement(const XMLCh* const name, xercesc::AttributeList& attrs) override;
    void endElement(const XMLCh* const name) override;

    bool Loaded = false;
    bool InHead = false;
    bool InComment = false;
    bool InTitle = false;
    GlyphOrderInfo* Target = nullptr;

private:
    void StoreText();

    // Collected as UTF-16 so that a character split over two chunks survives.
    std::u16string Title;
    std::u16string Comment;
};
