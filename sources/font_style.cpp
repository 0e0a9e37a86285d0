#include "sources/font_style.h"

#include <fontconfig/fontconfig.h>

namespace {

struct FcDeleter {
    void operator()(FcPattern* p) const { FcPatternDestroy(p); }
    void operator()(FcObjectSet* s) const { FcObjectSetDestroy(s); }
    void operator()(FcFontSet* s) const { FcFontSetDestroy(s); }
};

bool HasValue(FcPattern* font, const char* object, const std::string& wanted) {
    FcChar8* value = nullptr;
    for (int i = 0; FcPatternGetString(font, object, i, &value) == FcResultMatch; ++i)
        if (FcStrCmpIgnoreCase(value, reinterpret_cast<const FcChar8*>(wanted.c_str())) == 0) return true;
    return false;
}

}  // namespace

bool ResolveFamilyStyle(const std::string& family, const std::string& style, FontLocation& out) {
    if (!FcInit()) return false;
    // Listing rather than matching: fontconfig's best match would hand back
    // another style when the one asked for is missing.
    std::unique_ptr<FcPattern, FcDeleter> pattern(FcPatternCreate());
    FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    std::unique_ptr<FcObjectSet, FcDeleter> objects(FcObjectSetBuild(FC_FAMILY, FC_STYLE, FC_FILE, FC_INDEX, nullptr));
    std::unique_ptr<FcFontSet, FcDeleter> fonts(FcFontList(nullptr, pattern.get(), objects.get()));
    if (!fonts) return false;
    for (int i = 0; i < fonts->nfont; ++i) {
        FcPattern* font = fonts->fonts[i];
        if (!HasValue(font, FC_FAMILY, family) || !HasValue(font, FC_STYLE, style)) continue;
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
