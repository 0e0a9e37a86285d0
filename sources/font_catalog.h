// The fonts installed in the system, found by family name: the one place
// that asks the system's font catalog (fontconfig; on Windows the font files
// the system lists). Elsewhere a build without fontconfig (GLYPHWRIGHT_FONTCONFIG
// off) finds no installed fonts; faces are then given as font files.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "sources/font_face.h"

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
    // design axes of its variable file with the most axes.
    std::vector<std::string> Instances;
    struct Axis {
        std::string Tag;
        double Min = 0, Default = 0, Max = 0;
    };
    std::vector<Axis> Axes;
};

// What a catalog gathers about one family while it walks the system's faces.
struct FamilyListing {
    bool Scalable = false;
    std::set<int> PixelSizes;
    bool HasVerticalForms = false;
    std::set<std::string> Styles;
    std::set<std::string> CollectionFaces;
    std::set<std::string> Instances;
    std::vector<FontFaceInfo::Axis> Axes;
};
// The families as the face list shows them, sorted by name without regard to case.
std::vector<FontFaceInfo> FamilyList(const std::map<std::string, FamilyListing>& families);
// ASCII letters in lower case; family and style names are matched this way.
std::string LowerAscii(const std::string& s);

// This build can find installed fonts by family name.
bool FontCatalogAvailable();

// Every installed family once, sorted case-insensitively.
std::vector<FontFaceInfo> ListInstalledFaces();

struct InstalledFamilyMatch {
    FontLocation Font;
    bool Scalable = true;
    // For a bitmap family: every file of the matched style (one per size,
    // usually), so that the one nearest a size can be picked.
    std::vector<FontLocation> StyleFiles;
};

// The family's regular upright font as the catalog matches it; false when no
// family of that name (ignoring case) is installed.
bool FindInstalledFamily(const std::string& family, InstalledFamilyMatch& out);
