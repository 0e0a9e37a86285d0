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
    // Faces of font collections as a path names them ("FILE.ttc#2"), sorted.
    std::vector<std::string> CollectionFaces;
    // A variable font's named instances (usable as styles), sorted, and the
    // design axes of its first variable file.
    std::vector<std::string> Instances;
    struct Axis {
        std::string Tag;
        double Min = 0, Default = 0, Max = 0;
    };
    std::vector<Axis> Axes;
};

// Every installed family once, sorted case-insensitively.
std::vector<FontFaceInfo> ListInstalledFaces();
