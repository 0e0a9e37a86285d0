// Owners of fontconfig's objects, and the tests of a font the face lookups share.
#pragma once

#include <memory>
#include <string>

#include <fontconfig/fontconfig.h>

struct FcDeleter {
    void operator()(FcPattern* p) const { FcPatternDestroy(p); }
    void operator()(FcObjectSet* s) const { FcObjectSetDestroy(s); }
    void operator()(FcFontSet* s) const { FcFontSetDestroy(s); }
};
using FcPatternPtr = std::unique_ptr<FcPattern, FcDeleter>;
using FcObjectSetPtr = std::unique_ptr<FcObjectSet, FcDeleter>;
using FcFontSetPtr = std::unique_ptr<FcFontSet, FcDeleter>;

// An outline font, not only bitmap strikes.
inline bool IsScalablePattern(FcPattern* font) {
    FcBool scalable = FcFalse, outline = FcFalse;
    FcPatternGetBool(font, FC_SCALABLE, 0, &scalable);
    FcPatternGetBool(font, FC_OUTLINE, 0, &outline);
    return scalable || outline;
}

// One of the font's names for the object (FC_FAMILY, FC_STYLE) is the wanted
// one, ignoring case.
inline bool HasName(FcPattern* font, const char* object, const std::string& wanted) {
    FcChar8* value = nullptr;
    for (int i = 0; FcPatternGetString(font, object, i, &value) == FcResultMatch; ++i)
        if (FcStrCmpIgnoreCase(value, reinterpret_cast<const FcChar8*>(wanted.c_str())) == 0) return true;
    return false;
}
