// The installed fonts through fontconfig.
#include "sources/font_catalog.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <map>
#include <memory>
#include <set>

#include <hb-ot.h>
#include <hb.h>

#include "sources/font_source_checks.h"
#include "sources/font_style.h"
#include "sources/fontconfig_support.h"

namespace {


bool IsCollectionFile(const std::string& path) {
    const std::size_t dot = path.rfind('.');
    const std::string ext = dot == std::string::npos ? "" : path.substr(dot + 1);
    return ext == "ttc" || ext == "TTC" || ext == "otc" || ext == "OTC";
}


bool FileHasVerticalForms(const char* file, int index) {
    hb_blob_t* blob = hb_blob_create_from_file_or_fail(file);
    if (!blob) return false;
    hb_face_t* face = hb_face_create(blob, static_cast<unsigned>(index));
    unsigned found = 0;
    for (hb_tag_t tag : {HB_TAG('v', 'e', 'r', 't'), HB_TAG('v', 'r', 't', '2')}) {
        unsigned count = 0;
        hb_tag_t tags[] = {tag, HB_TAG_NONE};
        hb_set_t* lookups = hb_set_create();
        hb_ot_layout_collect_lookups(face, HB_OT_TAG_GSUB, nullptr, nullptr, tags, lookups);
        count = hb_set_get_population(lookups);
        hb_set_destroy(lookups);
        found += count;
    }
    hb_face_destroy(face);
    hb_blob_destroy(blob);
    return found > 0;
}

// Only fonts for East Asian languages are opened to look for vertical forms.
bool CoversEastAsian(FcPattern* font) {
    FcLangSet* langs = nullptr;
    if (FcPatternGetLangSet(font, FC_LANG, 0, &langs) != FcResultMatch) return false;
    for (const char* lang : {"ja", "zh-cn", "zh-tw", "ko"})
        if (FcLangSetHasLang(langs, reinterpret_cast<const FcChar8*>(lang)) == FcLangEqual) return true;
    return false;
}

// What a path names of the font: a face of a collection, a named instance,
// the axes of a variable font.
void AddFaceDetails(FamilyListing& f, FcPattern* font, const std::string& file, int index) {
    if (file.empty()) return;
    if (IsCollectionFile(file)) f.CollectionFaces.insert(file + "#" + std::to_string(index & 0xFFFF));
    FcChar8* style = nullptr;
    if ((index >> 16) != 0 && FcPatternGetString(font, FC_STYLE, 0, &style) == FcResultMatch)
        f.Instances.insert(reinterpret_cast<const char*>(style));
    // Files of one family may vary along different axes: the one with most is shown.
    FcBool variable = FcFalse;
    if (FcPatternGetBool(font, FC_VARIABLE, 0, &variable) != FcResultMatch || !variable) return;
    const auto axes = FontAxes({file, index & 0xFFFF, {}, nullptr});
    if (axes.size() <= f.Axes.size()) return;
    f.Axes.clear();
    for (const auto& a : axes) f.Axes.push_back({a.Tag, a.Min, a.Default, a.Max});
}

// The files of the matched font's family and style: bitmap families usually
// ship one file per size.
std::vector<FontLocation> StyleFiles(FcPattern* match, const std::string& family) {
    std::vector<FontLocation> files;
    FcChar8* style = nullptr;
    FcPatternGetString(match, FC_STYLE, 0, &style);
    FcPatternPtr pattern(FcPatternCreate());
    FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    if (style) FcPatternAddString(pattern.get(), FC_STYLE, style);
    FcObjectSetPtr objects(FcObjectSetBuild(FC_FILE, FC_INDEX, FC_SCALABLE, FC_OUTLINE, nullptr));
    FcFontSetPtr fonts(FcFontList(nullptr, pattern.get(), objects.get()));
    if (!fonts) return files;
    for (int i = 0; i < fonts->nfont; ++i) {
        FcPattern* font = fonts->fonts[i];
        FcChar8* file = nullptr;
        int index = 0;
        if (IsScalablePattern(font) || FcPatternGetString(font, FC_FILE, 0, &file) != FcResultMatch) continue;
        FcPatternGetInteger(font, FC_INDEX, 0, &index);
        FontLocation location;
        location.File = reinterpret_cast<const char*>(file);
        location.Index = index;
        files.push_back(location);
    }
    return files;
}

}  // namespace

bool FontCatalogAvailable() { return true; }

bool FindInstalledFamily(const std::string& family, InstalledFamilyMatch& out) {
    if (!FcInit()) return false;
    FcPatternPtr pattern(FcPatternCreate());
    FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    FcPatternAddInteger(pattern.get(), FC_WEIGHT, FC_WEIGHT_REGULAR);
    FcPatternAddInteger(pattern.get(), FC_SLANT, FC_SLANT_ROMAN);
    FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    FcResult result = FcResultNoMatch;
    FcPatternPtr match(FcFontMatch(nullptr, pattern.get(), &result));
    // fontconfig always offers a fallback; only the family asked for counts.
    if (!match || !HasName(match.get(), FC_FAMILY, family)) return false;
    FcChar8* file = nullptr;
    if (FcPatternGetString(match.get(), FC_FILE, 0, &file) != FcResultMatch) return false;
    int index = 0;
    FcPatternGetInteger(match.get(), FC_INDEX, 0, &index);
    out.Font = FontLocation();
    out.Font.File = reinterpret_cast<const char*>(file);
    out.Font.Index = index;
    out.Scalable = IsScalablePattern(match.get());
    out.StyleFiles = out.Scalable ? std::vector<FontLocation>{} : StyleFiles(match.get(), family);
    return true;
}

namespace {

// Style names are typed as "Extra Light" as often as "extralight".
std::string FoldedStyle(const std::string& name) {
    std::string folded;
    for (char c : name)
        if (c != ' ') folded += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return folded;
}

bool HasStyle(FcPattern* font, const std::string& wanted) {
    FcChar8* value = nullptr;
    for (int i = 0; FcPatternGetString(font, FC_STYLE, i, &value) == FcResultMatch; ++i)
        if (FoldedStyle(reinterpret_cast<const char*>(value)) == FoldedStyle(wanted)) return true;
    return false;
}

}  // namespace

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

std::vector<FontFaceInfo> ListInstalledFaces() {
    std::vector<FontFaceInfo> result;
    if (!FcInit()) return result;
    FcPatternPtr pattern(FcPatternCreate());
    FcObjectSetPtr objects(FcObjectSetBuild(FC_FAMILY, FC_SCALABLE, FC_OUTLINE, FC_PIXEL_SIZE, FC_FILE, FC_INDEX,
                                            FC_LANG, FC_STYLE, FC_VARIABLE, FC_COLOR, nullptr));
    FcFontSetPtr fonts(FcFontList(nullptr, pattern.get(), objects.get()));
    if (!fonts) return result;

    std::map<std::string, FamilyListing> families;
    // Per family, the last file asked for vertical forms, so each is opened once.
    std::map<std::string, std::string> checkedFiles;
    for (int i = 0; i < fonts->nfont; ++i) {
        FcPattern* font = fonts->fonts[i];
        // Colour bitmaps are drawn at any size, in grey levels, as outlines are.
        FcBool colour = FcFalse;
        FcPatternGetBool(font, FC_COLOR, 0, &colour);
        const bool isScalable = IsScalablePattern(font) || colour;
        FcChar8* file = nullptr;
        int index = 0;
        FcPatternGetString(font, FC_FILE, 0, &file);
        FcPatternGetInteger(font, FC_INDEX, 0, &index);
        const bool eastAsian = isScalable && file && CoversEastAsian(font);
        FcChar8* name = nullptr;
        for (int n = 0; FcPatternGetString(font, FC_FAMILY, n, &name) == FcResultMatch; ++n) {
            FamilyListing& f = families[reinterpret_cast<const char*>(name)];
            // A family's fonts name their style in several languages; the first is the usual one.
            if (FcChar8* style = nullptr; FcPatternGetString(font, FC_STYLE, 0, &style) == FcResultMatch)
                f.Styles.insert(reinterpret_cast<const char*>(style));
            f.Scalable = f.Scalable || isScalable;
            AddFaceDetails(f, font, file ? reinterpret_cast<const char*>(file) : "", index);
            double px = 0;
            for (int k = 0; !isScalable && FcPatternGetDouble(font, FC_PIXEL_SIZE, k, &px) == FcResultMatch; ++k)
                f.PixelSizes.insert(static_cast<int>(std::lround(px)));
            if (eastAsian && !f.HasVerticalForms) {
                const std::string path = reinterpret_cast<const char*>(file);
                if (std::string& checked = checkedFiles[reinterpret_cast<const char*>(name)]; checked != path) {
                    checked = path;
                    f.HasVerticalForms = FileHasVerticalForms(path.c_str(), index);
                }
            }
        }
    }
    return FamilyList(families);
}
