#include "sources/font_source_checks.h"

#include <algorithm>
#include <cstdlib>
#include <set>

#include "core/general_exception.h"
#include "sources/fontconfig_support.h"

namespace {

struct FtErrorName {
    int Code;
    const char* Text;
};

// FreeType's error list, expanded into a table: its own error strings are a
// build option that a distribution may leave out.
#undef FTERRORS_H_
#define FT_ERRORDEF(e, v, s) {v, s},
#define FT_ERROR_START_LIST {
#define FT_ERROR_END_LIST {0, nullptr}};
const FtErrorName ErrorNames[] =
#include FT_ERRORS_H

int StrikeSize(const FT_Bitmap_Size& strike, bool cellHeights) {
    return cellHeights ? strike.height : static_cast<int>((strike.y_ppem + 32) >> 6);
}

void AddStrikes(FT_Library lib, const char* file, int index, bool cellHeights, std::set<int>& sizes) {
    FT_Face face = nullptr;
    if (FT_New_Face(lib, file, index, &face) != 0) return;
    if (!FT_IS_SCALABLE(face))
        for (int i = 0; i < face->num_fixed_sizes; ++i) sizes.insert(StrikeSize(face->available_sizes[i], cellHeights));
    FT_Done_Face(face);
}

std::string JoinSizes(const std::vector<int>& sizes) {
    std::string text;
    for (int s : sizes) text += (text.empty() ? "" : ", ") + std::to_string(s);
    return text;
}

}  // namespace

std::string FreeTypeErrorText(FT_Error error) {
    for (const FtErrorName* e = ErrorNames; e->Text; ++e)
        if (e->Code == FT_ERROR_BASE(error)) return e->Text;
    return FormatString("FreeType error 0x%02X", static_cast<int>(error));
}

void CheckReadableFontFile(const std::string& name) {
    std::error_code ec;
    if (name.empty() || !std::filesystem::is_regular_file(name, ec)) return;
    FtLibraryPtr lib = MakeFtLibrary();
    FT_Face face = nullptr;
    const FT_Error error = FT_New_Face(lib.get(), name.c_str(), 0, &face);
    if (error == 0) {
        FT_Done_Face(face);
        return;
    }
    ThrowError("Parameter Error:\n Font file(%s) cannot be read as a font: %s.", name, FreeTypeErrorText(error));
}

void CheckSizeFits(const FontLocation& location, int32_t size) {
    if (size > 0) {
        if (size > MaxZglyCell)
            ThrowError("Parameter Error:\n Font Size(=%d) out of range[%d ～ %d]", size, 1, MaxZglyCell);
        return;
    }
    if (IsBitmapOnly(location) || CFontFace(location, size).Height() <= MaxZglyCell) return;
    // The largest character height whose cell still fits; cell heights grow
    // with the size, so a halving search finds it.
    int32_t low = 1, high = -size;
    while (high - low > 1) {
        const int32_t mid = low + (high - low) / 2;
        (CFontFace(location, -mid).Height() <= MaxZglyCell ? low : high) = mid;
    }
    ThrowError("Parameter Error:\n Font Size(=%d) out of range[%d ～ %d]", -size, 1, low);
}

std::vector<int> StrikeSizes(const std::string& name, const FontLocation& location, bool cellHeights) {
    std::set<int> sizes;
    FtLibraryPtr lib = MakeFtLibrary();
    AddStrikes(lib.get(), location.File.c_str(), location.Index, cellHeights, sizes);
    // A family named by name may ship one file per size.
    std::error_code ec;
    if (!std::filesystem::is_regular_file(name, ec) && FcInit()) {
        FcPatternPtr pattern(FcPatternCreate());
        FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(name.c_str()));
        FcObjectSetPtr objects(FcObjectSetBuild(FC_FAMILY, FC_FILE, FC_INDEX, FC_SCALABLE, FC_OUTLINE, nullptr));
        FcFontSetPtr fonts(FcFontList(nullptr, pattern.get(), objects.get()));
        for (int i = 0; fonts && i < fonts->nfont; ++i) {
            FcPattern* font = fonts->fonts[i];
            FcChar8* file = nullptr;
            int index = 0;
            if (IsScalablePattern(font) || !HasName(font, FC_FAMILY, name) ||
                FcPatternGetString(font, FC_FILE, 0, &file) != FcResultMatch)
                continue;
            FcPatternGetInteger(font, FC_INDEX, 0, &index);
            AddStrikes(lib.get(), reinterpret_cast<const char*>(file), index, cellHeights, sizes);
        }
    }
    return {sizes.begin(), sizes.end()};
}

void CheckStrikeSize(const std::string& name, const FontLocation& location, int32_t size) {
    if (size == 0 || !IsBitmapOnly(location)) return;
    const bool cellHeights = size > 0;
    // The file the family lookup picked is the nearest; it must be exact.
    std::set<int> own;
    AddStrikes(MakeFtLibrary().get(), location.File.c_str(), location.Index, cellHeights, own);
    if (own.count(std::abs(size))) return;
    const std::vector<int> sizes = StrikeSizes(name, location, cellHeights);
    if (cellHeights)
        ThrowError("Parameter Error:\n Font(%s) has bitmap strikes only and none of cell height %d; its cell heights "
                   "are %s.",
                   name, size, JoinSizes(sizes));
    ThrowError("Parameter Error:\n Font(%s) has bitmap strikes only and none of size %d; its sizes are %s.", name,
               -size, JoinSizes(sizes));
}

void CheckCharset(const std::string& name, const FontLocation& location) {
    FtLibraryPtr lib = MakeFtLibrary();
    FT_Face face = nullptr;
    if (FT_New_Face(lib.get(), location.File.c_str(), location.Index, &face) != 0) return;
    FtFacePtr owner(face);
    if (FT_Select_Charmap(face, FT_ENCODING_UNICODE) != 0) CCharsetMap::ForFace(face, name);
}
