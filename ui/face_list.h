// The installed faces as the Windows font panel lists them: every family, and
// "@Family" for each family with vertical forms, with its scalable flag and
// the sizes offered.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "sources/font_catalog.h"

struct FaceEntry {
    bool Scalable = true;
    std::vector<int> PixelSizes;
};

class CFaceList {
public:
    // Builds the list from the catalogue's records.
    explicit CFaceList(const std::vector<FontFaceInfo>& faces);

    // Names sorted without regard to case.
    std::vector<std::string> Names() const;
    bool IsScalable(const std::string& name) const;
    // A bitmap face's strike sizes, or the usual sizes of outline faces.
    std::vector<int> SizesFor(const std::string& name) const;

private:
    std::map<std::string, FaceEntry> Faces;
};
