#include "sources/font_source_checks.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <set>

#include "core/general_exception.h"
#include "platform/paths.h"
#include "sources/colour_letterer.h"
#include "sources/face_file.h"
#include "sources/font_catalog.h"

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

void AddStrikes(FT_Library lib, const std::filesystem::path& file, int index, bool cellHeights, std::set<int>& sizes) {
    FT_Face face = nullptr;
    if (OpenFaceFile(lib, file, index, &face) != 0) return;
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
    if (name.empty() || !IsRegularFile(name)) return;
    FtLibraryPtr lib = MakeFtLibrary();
    FT_Face face = nullptr;
    const FT_Error error = OpenFaceFile(lib.get(), name, 0, &face);
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
    if (IsColourBitmapFont(location)) {
        // Drawn scaled from the strike: the cell grows with the em.
        const CFontFace strike(location, size);
        const double ppem = strike.Ppem26 / 64.0;
        const int cell = std::max(strike.Height(), strike.MaxCharWidth);
        if (ppem <= 0 || cell <= 0 || -size * cell <= MaxZglyCell * ppem) return;
        ThrowError("Parameter Error:\n Font Size(=%d) out of range[%d ～ %d]", -size, 1,
                   static_cast<int>(MaxZglyCell * ppem / cell));
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
    AddStrikes(lib.get(), location.File, location.Index, cellHeights, sizes);
    // A family named by name may ship one file per size.
    std::error_code ec;
    InstalledFamilyMatch match;
    if (!std::filesystem::is_regular_file(name, ec) && FindInstalledFamily(name, match))
        for (const FontLocation& file : match.StyleFiles)
            AddStrikes(lib.get(), file.File, file.Index, cellHeights, sizes);
    return {sizes.begin(), sizes.end()};
}

void CheckStrikeSize(const std::string& name, const FontLocation& location, int32_t size) {
    // Colour strikes are scaled to any size.
    if (size == 0 || !IsBitmapOnly(location) || IsColourBitmapFont(location)) return;
    const bool cellHeights = size > 0;
    // The file the family lookup picked is the nearest; it must be exact.
    std::set<int> own;
    AddStrikes(MakeFtLibrary().get(), location.File, location.Index, cellHeights, own);
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
    if (OpenFaceFile(lib.get(), location.File, location.Index, &face) != 0) return;
    FtFacePtr owner(face);
    if (FT_Select_Charmap(face, FT_ENCODING_UNICODE) != 0) CCharsetMap::ForFace(face, name);
}

std::string AxisValueText(double value) {
    std::string text = FormatString("%d", static_cast<int>(std::lround(value * 1000)));
    // Thousandths, without the zeros a whole number does not need.
    const bool negative = text[0] == '-';
    if (negative) text.erase(0, 1);
    text.insert(0, std::string(text.size() < 4 ? 4 - text.size() : 0, '0'));
    text.insert(text.size() - 3, ".");
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return (negative ? "-" : "") + text;
}

std::vector<FontAxisRange> FontAxes(const FontLocation& location) {
    std::vector<FontAxisRange> axes;
    FtLibraryPtr lib = MakeFtLibrary();
    FT_Face face = nullptr;
    if (OpenFaceFile(lib.get(), location.File, location.Index & 0xFFFF, &face) != 0) return axes;
    FtFacePtr owner(face);
    FT_MM_Var* mm = nullptr;
    if (!FT_HAS_MULTIPLE_MASTERS(face) || FT_Get_MM_Var(face, &mm) != 0) return axes;
    for (FT_UInt i = 0; i < mm->num_axis; ++i)
        axes.push_back({AxisTagText(mm->axis[i].tag), mm->axis[i].minimum / 65536.0, mm->axis[i].def / 65536.0,
                        mm->axis[i].maximum / 65536.0});
    FT_Done_MM_Var(lib.get(), mm);
    return axes;
}

void CheckFaceAndAxes(const std::string& name, const FontLocation& location) {
    std::string file;
    int number = 0;
    if (SplitFaceNumber(name, file, number)) {
        FtLibraryPtr lib = MakeFtLibrary();
        FT_Face face = nullptr;
        if (OpenFaceFile(lib.get(), location.File, -1, &face) == 0) {
            const long faces = face->num_faces;
            FT_Done_Face(face);
            // The high bits name a variable font's instance, not a face.
            const int faceNumber = number & 0xFFFF;
            if (faceNumber >= faces)
                ThrowError("Parameter Error:\n Font file(%s) has %s; there is no face #%d.", file,
                           faces == 1 ? std::string("one face, #0") : FormatString("faces #0 ～ #%d", faces - 1),
                           faceNumber);
        }
    }
    if (location.Axes.empty()) return;
    // A named instance is still the font of its file.
    const std::string font = number > 0xFFFF ? file : name;
    const std::vector<FontAxisRange> axes = FontAxes(location);
    if (axes.empty()) ThrowError("Parameter Error:\n Font(%s) is not a variable font; it has no axis %s.", font, location.Axes[0].Tag);
    std::string list;
    for (const auto& a : axes)
        list += (list.empty() ? "" : ", ") + a.Tag + " " + AxisValueText(a.Min) + " ～ " + AxisValueText(a.Max);
    for (const FontAxisSetting& setting : location.Axes) {
        const auto axis = std::find_if(axes.begin(), axes.end(), [&](const FontAxisRange& a) { return a.Tag == setting.Tag; });
        if (axis == axes.end())
            ThrowError("Parameter Error:\n Font(%s) has no axis %s; its axes are %s.", font, setting.Tag, list);
        if (setting.Value < axis->Min || setting.Value > axis->Max)
            ThrowError("Parameter Error:\n Axis %s(=%s) out of range[%s ～ %s]", setting.Tag, AxisValueText(setting.Value),
                       AxisValueText(axis->Min), AxisValueText(axis->Max));
    }
}
