// Reads a font back from a glyph-grid BMP picture and its glyph order file.
#pragma once

#include <cstdint>

#include "core/font_io.h"

class CBmpFontReader : public CFontReader {
public:
    CBmpFontReader(std::filesystem::path path, std::filesystem::path orderPath, int32_t bpp)
        : CFontReader(std::move(path)), OrderPath(std::move(orderPath)), Bpp(bpp) {}
    void CheckParameters() override;
    void Read(CFontData& font, const CFontFilter& filter) override;

    std::filesystem::path OrderPath;
    int32_t Bpp;
};
