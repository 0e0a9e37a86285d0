// The face list built from what a catalog gathered, the same for every catalog.
#include <algorithm>

#include "sources/font_catalog.h"

std::string LowerAscii(const std::string& s) {
    std::string r = s;
    for (char& c : r)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return r;
}

std::vector<FontFaceInfo> FamilyList(const std::map<std::string, FamilyListing>& families) {
    std::vector<FontFaceInfo> result;
    for (const auto& [name, f] : families) {
        FontFaceInfo info;
        info.Family = name;
        info.Scalable = f.Scalable;
        if (!f.Scalable) info.PixelSizes.assign(f.PixelSizes.begin(), f.PixelSizes.end());
        info.HasVerticalForms = f.HasVerticalForms;
        info.Styles.assign(f.Styles.begin(), f.Styles.end());
        info.CollectionFaces.assign(f.CollectionFaces.begin(), f.CollectionFaces.end());
        info.Instances.assign(f.Instances.begin(), f.Instances.end());
        info.Axes = f.Axes;
        result.push_back(std::move(info));
    }
    std::stable_sort(result.begin(), result.end(), [](const FontFaceInfo& a, const FontFaceInfo& b) {
        return LowerAscii(a.Family) < LowerAscii(b.Family);
    });
    return result;
}
