#include "ui/face_list.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace {

const std::vector<int> OutlineSizes = {8, 9, 10, 11, 12, 13, 14, 15, 16, 18, 20, 22, 24, 26, 28, 32, 36, 40, 48, 64, 72};

std::string Lower(std::string s) {
    for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

}  // namespace

CFaceList::CFaceList(const std::vector<FontFaceInfo>& faces) {
    for (const FontFaceInfo& face : faces) {
        const FaceEntry entry{face.Scalable, face.PixelSizes};
        Faces.emplace(face.Family, entry);
        if (face.HasVerticalForms) Faces.emplace("@" + face.Family, entry);
    }
}

std::vector<std::string> CFaceList::Names() const {
    std::vector<std::string> names;
    for (const auto& [name, entry] : Faces) names.push_back(name);
    // A vertical "@Family" follows its family instead of heading the list.
    auto key = [](const std::string& name) {
        bool vertical = !name.empty() && name[0] == '@';
        return std::make_pair(Lower(vertical ? name.substr(1) : name), vertical);
    };
    std::stable_sort(names.begin(), names.end(),
                     [&](const std::string& a, const std::string& b) { return key(a) < key(b); });
    return names;
}

bool CFaceList::IsScalable(const std::string& name) const {
    auto it = Faces.find(name);
    return it != Faces.end() && it->second.Scalable;
}

std::vector<int> CFaceList::SizesFor(const std::string& name) const {
    auto it = Faces.find(name);
    if (it == Faces.end() || it->second.Scalable || it->second.PixelSizes.empty()) return OutlineSizes;
    return it->second.PixelSizes;
}
