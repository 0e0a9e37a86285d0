// Reads an existing ZGLY file into the font model.
#pragma once

#include "core/font_io.h"

class CZarnicFontReader : public CFontReader {
public:
    explicit CZarnicFontReader(std::filesystem::path path) : CFontReader(std::move(path)) {}
    void CheckParameters() override;
    void Read(CFontData& font, const CFontFilter& filter) override;
};
