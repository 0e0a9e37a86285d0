// The installed families where there is no fontconfig (Windows): every font
// file the system lists, its family and style names read with FreeType.
#include <algorithm>
#include <map>
#include <set>

#include <hb-ft.h>
#include <hb-ot.h>
#include FT_SFNT_NAMES_H
#include FT_TRUETYPE_IDS_H
#include FT_TRUETYPE_TABLES_H

#include "platform/font_files.h"
#include "platform/paths.h"
#include "sources/face_file.h"
#include "sources/font_catalog.h"
#include "sources/font_face.h"
#include "sources/font_style.h"

namespace {

struct CatalogFace {
    std::string Family;
    std::set<std::string> OtherNames;  // the family in the name table's other languages
    std::string Style;
    FontLocation Location;
    bool Scalable = true;
    bool Regular = false;
    std::vector<FT_Bitmap_Size> Strikes;
    bool EastAsian = false;
    bool InCollection = false;
};


// A Windows name record (UTF-16, big-endian) as UTF-8.
std::string NameText(const FT_SfntName& name) {
    std::string out;
    for (FT_UInt i = 0; i + 1 < name.string_len; i += 2) {
        unsigned c = (name.string[i] << 8) | name.string[i + 1];
        if (c >= 0xD800 && c <= 0xDFFF) continue;
        if (c < 0x80) out += static_cast<char>(c);
        else if (c < 0x800) {
            out += static_cast<char>(0xC0 | (c >> 6));
            out += static_cast<char>(0x80 | (c & 0x3F));
        } else {
            out += static_cast<char>(0xE0 | (c >> 12));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return out;
}

void AddFace(FT_Face face, const std::filesystem::path& file, int index, std::vector<CatalogFace>& out) {
    if (!face->family_name) return;
    CatalogFace f;
    f.InCollection = face->num_faces > 1;
    f.Family = face->family_name;
    f.Style = face->style_name ? face->style_name : "Regular";
    f.Location.File = file;
    f.Location.Index = index;
    f.Scalable = FT_IS_SCALABLE(face);
    f.Regular = !(face->style_flags & (FT_STYLE_FLAG_BOLD | FT_STYLE_FLAG_ITALIC));
    f.Strikes.assign(face->available_sizes, face->available_sizes + face->num_fixed_sizes);
    // Localised family names (Windows lists "ＭＳ ゴシック" for "MS Gothic").
    for (FT_UInt i = 0, n = FT_Get_Sfnt_Name_Count(face); i < n; ++i) {
        FT_SfntName name{};
        if (FT_Get_Sfnt_Name(face, i, &name) == 0 && name.platform_id == TT_PLATFORM_MICROSOFT &&
            (name.name_id == TT_NAME_ID_FONT_FAMILY || name.name_id == TT_NAME_ID_TYPOGRAPHIC_FAMILY))
            if (std::string text = NameText(name); !text.empty() && text != f.Family) f.OtherNames.insert(text);
    }
    // Code pages of Japanese, Chinese and Korean: worth looking for vertical forms.
    if (auto* os2 = static_cast<TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2)))
        f.EastAsian = (os2->ulCodePageRange1 & 0x003E0000) != 0;
    out.push_back(std::move(f));
}

const std::vector<CatalogFace>& Catalog() {
    static const std::vector<CatalogFace> faces = [] {
        std::vector<CatalogFace> all;
        FtLibraryPtr lib = MakeFtLibrary();
        for (const auto& file : InstalledFontFiles()) {
            FT_Face face = nullptr;
            if (OpenFaceFile(lib.get(), file, 0, &face) != 0) continue;
            const int count = static_cast<int>(face->num_faces);
            AddFace(face, file, 0, all);
            FT_Done_Face(face);
            for (int i = 1; i < count; ++i)
                if (OpenFaceFile(lib.get(), file, i, &face) == 0) {
                    AddFace(face, file, i, all);
                    FT_Done_Face(face);
                }
        }
        return all;
    }();
    return faces;
}

bool IsFamily(const CatalogFace& f, const std::string& lowerName) {
    if (LowerAscii(f.Family) == lowerName) return true;
    for (const std::string& other : f.OtherNames)
        if (LowerAscii(other) == lowerName) return true;
    return false;
}

bool HasVerticalForms(const FontLocation& location) {
    FtLibraryPtr lib = MakeFtLibrary();
    FT_Face face = nullptr;
    if (OpenFaceFile(lib.get(), location.File, location.Index, &face) != 0) return false;
    hb_face_t* hb = hb_ft_face_create_referenced(face);
    unsigned found = 0;
    for (hb_tag_t tag : {HB_TAG('v', 'e', 'r', 't'), HB_TAG('v', 'r', 't', '2')}) {
        hb_tag_t tags[] = {tag, HB_TAG_NONE};
        hb_set_t* lookups = hb_set_create();
        hb_ot_layout_collect_lookups(hb, HB_OT_TAG_GSUB, nullptr, nullptr, tags, lookups);
        found += hb_set_get_population(lookups);
        hb_set_destroy(lookups);
    }
    hb_face_destroy(hb);
    FT_Done_Face(face);
    return found > 0;
}

}  // namespace

std::vector<FontFaceInfo> ListInstalledFaces() {
    std::map<std::string, FamilyListing> families;
    for (const CatalogFace& face : Catalog()) {
        FamilyListing& f = families[face.Family];
        f.Styles.insert(face.Style);
        if (face.InCollection)
            f.CollectionFaces.insert(PathText(face.Location.File) + "#" + std::to_string(face.Location.Index));
        f.Scalable = f.Scalable || face.Scalable;
        if (!face.Scalable)
            for (const FT_Bitmap_Size& s : face.Strikes) f.PixelSizes.insert(static_cast<int>((s.y_ppem + 32) >> 6));
        if (face.Scalable && face.EastAsian && !f.HasVerticalForms) f.HasVerticalForms = HasVerticalForms(face.Location);
    }
    return FamilyList(families);
}

bool FontCatalogAvailable() { return true; }

bool FindInstalledFamily(const std::string& family, InstalledFamilyMatch& out) {
    const std::string wanted = LowerAscii(family);
    const CatalogFace* match = nullptr;
    for (const CatalogFace& face : Catalog())
        if (IsFamily(face, wanted) && (!match || (face.Regular && !match->Regular))) match = &face;
    if (!match) return false;
    out.Font = match->Location;
    out.Scalable = match->Scalable;
    // Bitmap families ship a file per size: every one of the matched style.
    out.StyleFiles.clear();
    for (const CatalogFace& face : Catalog())
        if (!face.Scalable && IsFamily(face, wanted) && face.Style == match->Style) out.StyleFiles.push_back(face.Location);
    return true;
}

bool ResolveFamilyStyle(const std::string& family, const std::string& style, FontLocation& out) {
    const std::string wanted = LowerAscii(family), wantedStyle = LowerAscii(style);
    for (const CatalogFace& face : Catalog())
        if (IsFamily(face, wanted) && LowerAscii(face.Style) == wantedStyle) {
            out = face.Location;
            return true;
        }
    return false;
}
