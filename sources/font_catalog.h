// The installed font families, as the face list and the font reader see them.
#pragma once

#include <string>
#include <vector>

struct FontFaceInfo {
    std::string Family;
    bool Scalable = true;
    // Pixel sizes of a bitmap face's strikes, ascending, each once; empty for
    // outline faces.
    std::vector<int> PixelSizes;
    // The face has vertical alternate forms, so "@Family" is offered too.
    bool HasVerticalForms = false;
    // The family's styles ("Book", "Bold", ...), sorted, each once.
    std::vector<std::string> Styles;
};

// Every installed family once, sorted case-insensitively.
std::vector<FontFaceInfo> ListInstalledFaces();
