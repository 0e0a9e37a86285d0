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

    void Characters(std::u16string_view text) override;
    void StartElement(std::string_view name, const CXmlAttributes& attrs) override;
    void EndElement(std::string_view name) override;

    bool Loaded = false;
    bool InHead = false;
    bool InComment = false;
    bool InTitle = false;
    GlyphOrderInfo* Target = nullptr;

private:
    void StoreText();

    // Collected as UTF-16, as the frame delivers text.
    std::u16string Title;
    std::u16string Comment;
};
