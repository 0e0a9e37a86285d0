// Reads LC Font files: a default mapping file and/or a half-width mapping file.
#pragma once

#include "core/font_io.h"

class CLcFontReader : public CFontReader {
public:
    CLcFontReader(std::filesystem::path path, std::filesystem::path halfWidthPath, bool mainFixedWidth,
                  bool halfWidthFixedWidth, bool vertical)
        : CFontReader(std::move(path)),
          HalfWidthPath(std::move(halfWidthPath)),
          MainFixedWidth(mainFixedWidth),
          HalfWidthFixedWidth(halfWidthFixedWidth),
          Vertical(vertical) {}
    void CheckParameters() override;
    void Read(CFontData& font, const CFontFilter& filter) override;

    std::filesystem::path HalfWidthPath;
    bool MainFixedWidth;
    bool HalfWidthFixedWidth;
    bool Vertical;
};
