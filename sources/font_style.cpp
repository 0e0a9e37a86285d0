#include "sources/font_style.h"

#include <algorithm>
#include <cctype>

#include "sources/fontconfig_support.h"

namespace {

// The installed faces of the family, with their style names and files.
FcFontSetPtr ListFamily(const std::string& family) {
    if (!FcInit()) return nullptr;
    // Listing rather than matching: fontconfig's best match would hand back
    // another style when the one asked for is missing.
    FcPatternPtr pattern(FcPatternCreate());
    FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    FcObjectSetPtr objects(FcObjectSetBuild(FC_FAMILY, FC_STYLE, FC_FILE, FC_INDEX, nullptr));
    return FcFontSetPtr(FcFontList(nullptr, pattern.get(), objects.get()));
}

// Style names are typed as "Extra Light" as often as "extralight".
std::string Folded(const std::string& name) {
    std::string folded;
    for (char c : name)
        if (c != ' ') folded += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return folded;
}

bool HasStyle(FcPattern* font, const std::string& wanted) {
    FcChar8* value = nullptr;
    for (int i = 0; FcPatternGetString(font, FC_STYLE, i, &value) == FcResultMatch; ++i)
        if (Folded(reinterpret_cast<const char*>(value)) == Folded(wanted)) return true;
    return false;
}

}  // namespace

bool ResolveFamilyStyle(const std::string& family, const std::string& style, FontLocation& out) {
    FcFontSetPtr fonts = ListFamily(family);
    if (!fonts) return false;
    for (int i = 0; i < fonts->nfont; ++i) {
        FcPattern* font = fonts->fonts[i];
        if (!HasName(font, FC_FAMILY, family) || !HasStyle(font, style)) continue;
        FcChar8* file = nullptr;
        if (FcPatternGetString(font, FC_FILE, 0, &file) != FcResultMatch) continue;
        int index = 0;
        FcPatternGetInteger(font, FC_INDEX, 0, &index);
        out.File = reinterpret_cast<const char*>(file);
        out.Index = index;
        return true;
    }
    return false;
}

std::vector<std::string> FamilyStyles(const std::string& family) {
    std::vector<std::string> styles;
    FcFontSetPtr fonts = ListFamily(family);
    for (int i = 0; fonts && i < fonts->nfont; ++i) {
        FcChar8* style = nullptr;
        if (HasName(fonts->fonts[i], FC_FAMILY, family) &&
            FcPatternGetString(fonts->fonts[i], FC_STYLE, 0, &style) == FcResultMatch)
            styles.emplace_back(reinterpret_cast<const char*>(style));
    }
    std::sort(styles.begin(), styles.end());
    styles.erase(std::unique(styles.begin(), styles.end()), styles.end());
    return styles;
}
