// Face lookup (a font file, else the font catalog) and the cell-height size convention.
#include "sources/font_face.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include FT_TRUETYPE_TABLES_H

#include "core/general_exception.h"
#include "platform/file_handle.h"
#include "platform/paths.h"
#include "sources/face_file.h"
#include "sources/font_catalog.h"

FontRequest ParseFaceName(const std::string& faceName) {
    FontRequest r;
    r.Vertical = !faceName.empty() && faceName[0] == '@';
    r.FaceName = r.Vertical ? faceName.substr(1) : faceName;
    return r;
}

namespace {

// How far a strike is from a requested size: cell heights for size > 0, ems
// for size < 0.
int StrikeDistance(const FT_Bitmap_Size& strike, int32_t size) {
    int have = size > 0 ? strike.height : static_cast<int>((strike.y_ppem + 32) >> 6);
    return std::abs(have - std::abs(size));
}

// The distance of the face's nearest strike to the size; -1 when the file
// has no strikes or is not a font.
int NearestStrikeDistance(FT_Library lib, const std::filesystem::path& file, int index, int32_t size) {
    FT_Face face = nullptr;
    if (OpenFaceFile(lib, file, index, &face) != 0) return -1;
    int best = -1;
    for (int i = 0; i < face->num_fixed_sizes; ++i) {
        int d = StrikeDistance(face->available_sizes[i], size);
        if (best < 0 || d < best) best = d;
    }
    FT_Done_Face(face);
    return best;
}

// Among the files of a bitmap family's style, the one whose strike is
// nearest the size; the matched file unless another is nearer.
FontLocation NearestStrikeFile(const InstalledFamilyMatch& match, int32_t size) {
    FontLocation best = match.Font;
    FtLibraryPtr lib = MakeFtLibrary();
    int bestDistance = NearestStrikeDistance(lib.get(), best.File, best.Index, size);
    for (const FontLocation& file : match.StyleFiles) {
        if (bestDistance == 0) break;
        int d = NearestStrikeDistance(lib.get(), file.File, file.Index, size);
        if (d >= 0 && (bestDistance < 0 || d < bestDistance)) {
            bestDistance = d;
            best = file;
        }
    }
    return best;
}

bool IsFontFile(const std::filesystem::path& path) {
    if (!IsRegularFile(path)) return false;
    FtLibraryPtr lib = MakeFtLibrary();
    FT_Face face = nullptr;
    if (OpenFaceFile(lib.get(), path, 0, &face) != 0) return false;
    FT_Done_Face(face);
    return true;
}

int32_t RoundDiv(long long num, long long den) {
    return static_cast<int32_t>(std::llround(static_cast<double>(num) / static_cast<double>(den)));
}

}  // namespace

bool SplitFaceNumber(const std::string& name, std::string& file, int& index) {
    const std::size_t hash = name.rfind('#');
    if (hash == std::string::npos || hash + 1 == name.size() || name.size() - hash > 10 ||
        name.find_first_not_of("0123456789", hash + 1) != std::string::npos)
        return false;
    file = name.substr(0, hash);
    index = std::stoi(name.substr(hash + 1));
    return true;
}

bool ResolveFontName(const std::string& name, FontLocation& out, int32_t size) {
    if (name.empty()) return false;
    // A font file needs no family lookup, and loading fontconfig's
    // configuration costs more than the rest of a small font's start-up.
    if (IsFontFile(name)) {
        out.File = name;
        out.Index = 0;
        return true;
    }
    std::string file;
    int index = 0;
    if (SplitFaceNumber(name, file, index) && IsFontFile(file)) {
        out.File = file;
        out.Index = index;
        return true;
    }
    InstalledFamilyMatch match;
    if (!FindInstalledFamily(name, match)) return false;
    out = size != 0 && !match.Scalable ? NearestStrikeFile(match, size) : match.Font;
    return true;
}

bool IsBitmapOnly(const FontLocation& location) {
    FtLibraryPtr lib = MakeFtLibrary();
    FT_Face face = nullptr;
    if (OpenFaceFile(lib.get(), location.File, location.Index, &face) != 0) return false;
    bool bitmapOnly = !FT_IS_SCALABLE(face);
    FT_Done_Face(face);
    return bitmapOnly;
}

FtLibraryPtr MakeFtLibrary() {
    FT_Library lib = nullptr;
    if (FT_Init_FreeType(&lib) != 0) ThrowError("Internal Error:\n Fail to initialise FreeType.");
    return FtLibraryPtr(lib);
}

void LoadFontBytes(FontLocation& location) {
    CFileHandle in;
    if (!in.OpenForReading(location.File)) return;
    const int64_t size = in.Size();
    if (size <= 0) return;
    auto bytes = std::make_shared<std::vector<FT_Byte>>(static_cast<std::size_t>(size));
    if (in.Read(bytes->data(), bytes->size()) != size) return;
    location.Bytes = std::move(bytes);
}

CFontFace::CFontFace(const FontLocation& location, int32_t size) : Bytes(location.Bytes), Library(MakeFtLibrary()) {
    FT_Face face = nullptr;
    const FT_Error error =
        Bytes ? FT_New_Memory_Face(Library.get(), Bytes->data(), static_cast<FT_Long>(Bytes->size()), location.Index, &face)
              : OpenFaceFile(Library.get(), location.File, location.Index, &face);
    if (error != 0) ThrowError("Internal Error:\n Fail to create font.");
    FacePtr.reset(face);
    if (!location.Axes.empty()) SetAxes(location.Axes);
    if (FT_Select_Charmap(face, FT_ENCODING_UNICODE) != 0) Charset = CCharsetMap::ForFace(face, location.File.string());
    if (Scalable())
        SizeOutline(size);
    else
        SizeBitmap(size);
}

void CFontFace::SetAxes(const std::vector<FontAxisSetting>& axes) {
    FT_Face face = FacePtr.get();
    FT_MM_Var* mm = nullptr;
    if (FT_Get_MM_Var(face, &mm) != 0) ThrowError("Internal Error:\n Fail to create font.");
    // Over the named instance's values when the face is one.
    std::vector<FT_Fixed> coords(mm->num_axis);
    FT_Get_Var_Design_Coordinates(face, mm->num_axis, coords.data());
    for (const FontAxisSetting& setting : axes)
        for (FT_UInt i = 0; i < mm->num_axis; ++i)
            if (AxisTagText(mm->axis[i].tag) == setting.Tag) coords[i] = std::lround(setting.Value * 65536.0);
    const FT_Error error = FT_Set_Var_Design_Coordinates(face, mm->num_axis, coords.data());
    FT_Done_MM_Var(Library.get(), mm);
    if (error != 0) ThrowError("Internal Error:\n Fail to create font.");
}

std::string AxisTagText(FT_ULong tag) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) text += static_cast<char>((tag >> shift) & 0xFF);
    // Short tags are padded with spaces, which nobody types.
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

void CFontFace::SizeOutline(int32_t size) {
    FT_Face face = FacePtr.get();
    long long upem = face->units_per_EM ? face->units_per_EM : 1000;
    long long winAscent = face->ascender, winDescent = -face->descender;
    auto* os2 = static_cast<TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2));
    if (os2 && os2->version != 0xFFFF && os2->usWinAscent + os2->usWinDescent > 0) {
        winAscent = os2->usWinAscent;
        winDescent = os2->usWinDescent;
    }
    if (winAscent + winDescent <= 0) {
        winAscent = upem * 4 / 5;
        winDescent = upem - winAscent;
    }
    long long total = winAscent + winDescent;
    if (size > 0) {
        // The cell height is the request; the em follows from it.
        Ppem26 = std::max<FT_F26Dot6>(1, RoundDiv(size * 64LL * upem, total));
        Ascent = RoundDiv(size * winAscent, total);
        Descent = size - Ascent;
    } else {
        long long em = -static_cast<long long>(size);
        Ppem26 = em * 64;
        Ascent = RoundDiv(em * winAscent, upem);
        Descent = RoundDiv(em * winDescent, upem);
    }
    if (FT_Set_Char_Size(face, 0, Ppem26, 72, 72) != 0) ThrowError("Internal Error:\n Fail to create font.");
    MaxCharWidth = RoundDiv(static_cast<long long>(face->max_advance_width) * Ppem26, upem * 64);
}

void CFontFace::SizeBitmap(int32_t size) {
    FT_Face face = FacePtr.get();
    if (face->num_fixed_sizes < 1) ThrowError("Internal Error:\n Fail to create font.");
    int best = 0, bestDist = 1 << 30;
    for (int i = 0; i < face->num_fixed_sizes; ++i) {
        int dist = StrikeDistance(face->available_sizes[i], size);
        if (dist < bestDist) {
            best = i;
            bestDist = dist;
        }
    }
    if (FT_Select_Size(face, best) != 0) ThrowError("Internal Error:\n Fail to create font.");
    const FT_Size_Metrics& m = face->size->metrics;
    Ascent = static_cast<int32_t>((m.ascender + 63) >> 6);
    Descent = static_cast<int32_t>((-m.descender + 63) >> 6);
    MaxCharWidth = static_cast<int32_t>((m.max_advance + 63) >> 6);
    Ppem26 = m.y_ppem * 64;
}
