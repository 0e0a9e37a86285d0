#include "sources/font_style.h"

#include <set>

#include "sources/fontconfig_support.h"

bool ResolveFamilyStyle(const std::string& family, const std::string& style, FontLocation& out) {
    if (!FcInit()) return false;
    // Listing rather than matching: fontconfig's best match would hand back
    // another style when the one asked for is missing.
    FcPatternPtr pattern(FcPatternCreate());
    FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    FcObjectSetPtr objects(FcObjectSetBuild(FC_FAMILY, FC_STYLE, FC_FILE, FC_INDEX, nullptr));
    FcFontSetPtr fonts(FcFontList(nullptr, pattern.get(), objects.get()));
    if (!fonts) return false;
    for (int i = 0; i < fonts->nfont; ++i) {
        FcPattern* font = fonts->fonts[i];
        if (!HasName(font, FC_FAMILY, family) || !HasName(font, FC_STYLE, style)) continue;
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
    std::set<std::string> styles;
    if (!FcInit()) return {};
    FcPatternPtr pattern(FcPatternCreate());
    FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    FcObjectSetPtr objects(FcObjectSetBuild(FC_FAMILY, FC_STYLE, nullptr));
    FcFontSetPtr fonts(FcFontList(nullptr, pattern.get(), objects.get()));
    for (int i = 0; fonts && i < fonts->nfont; ++i) {
        FcChar8* style = nullptr;
        if (HasName(fonts->fonts[i], FC_FAMILY, family) &&
            FcPatternGetString(fonts->fonts[i], FC_STYLE, 0, &style) == FcResultMatch)
            styles.insert(reinterpret_cast<const char*>(style));
    }
    return {styles.begin(), styles.end()};
}
