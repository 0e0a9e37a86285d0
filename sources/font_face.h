// Opening a face by family name or file path, and the Windows-style size
// convention that the letterers measure with.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_ADVANCES_H
#include FT_MULTIPLE_MASTERS_H

#include "sources/bitmap_charset.h"

// A face name with its vertical mark split off.
struct FontRequest {
    std::string FaceName;  // family or file path, without the '@'
    bool Vertical = false;
};
FontRequest ParseFaceName(const std::string& faceName);

// One design-axis value of a variable font ("wght" 700).
struct FontAxisSetting {
    std::string Tag;
    double Value = 0;
};
struct FontLocation {
    std::filesystem::path File;
    // FreeType's face index: the face of a collection in the low 16 bits, a
    // named instance of a variable font (1 and up) in the high ones.
    int Index = 0;
    // Design-axis values set over the face's default (or named instance's).
    std::vector<FontAxisSetting> Axes;
    // The file's bytes, read once for the faces of several threads (each
    // mapping its own copy of the file would hold it once per thread); none:
    // each face opens the file itself.
    std::shared_ptr<const std::vector<FT_Byte>> Bytes;
};
// Reads the file's bytes into the location; leaves it as it was when the
// file cannot be read whole (the faces then open it by path, as before).
void LoadFontBytes(FontLocation& location);

// A variable font's axis tag as text ("wght").
std::string AxisTagText(FT_ULong tag);

// "FILE#N", face N of a font collection: the file and N; false for any other name.
bool SplitFaceNumber(const std::string& name, std::string& file, int& index);

// An installed family (case-insensitive), a font file that FreeType opens, or
// "FILE#N" for face N of a collection; false when the name is none of them. With a size (as CFontFace takes it), a
// bitmap family's file whose strike is nearest that size.
bool ResolveFontName(const std::string& name, FontLocation& out, int32_t size = 0);
// The face has only bitmap strikes: no grey levels to render.
bool IsBitmapOnly(const FontLocation& location);

struct FtLibraryDeleter {
    void operator()(FT_Library lib) const { FT_Done_FreeType(lib); }
};
struct FtFaceDeleter {
    void operator()(FT_Face face) const { FT_Done_Face(face); }
};
using FtLibraryPtr = std::unique_ptr<FT_LibraryRec_, FtLibraryDeleter>;
using FtFacePtr = std::unique_ptr<FT_FaceRec_, FtFaceDeleter>;

FtLibraryPtr MakeFtLibrary();

// One FreeType library and one face, sized like the Windows font mapper:
// size > 0 is the cell height (Windows ascent + descent), size < 0 the em
// height. Bitmap-only faces take the strike nearest the request.
class CFontFace {
public:
    CFontFace(const FontLocation& location, int32_t size);

    FT_Face Face() const { return FacePtr.get(); }
    // The face's glyph for a Unicode code, 0 when it has none; bitmap faces
    // numbered in another character set are looked up through its table.
    FT_UInt GlyphIndex(char16_t code) const {
        if (!Charset) return FT_Get_Char_Index(FacePtr.get(), code);
        const uint32_t charCode = Charset->CharCode(code);
        return charCode ? FT_Get_Char_Index(FacePtr.get(), charCode) : 0;
    }
    bool Scalable() const { return FT_IS_SCALABLE(FacePtr.get()); }

    // tmAscent, tmDescent, tmHeight, tmMaxCharWidth equivalents in pixels.
    int32_t Ascent = 0;
    int32_t Descent = 0;
    int32_t Height() const { return Ascent + Descent; }
    int32_t MaxCharWidth = 0;
    // Pixels per em (26.6), the scale of outline faces.
    FT_F26Dot6 Ppem26 = 0;

private:
    void SetAxes(const std::vector<FontAxisSetting>& axes);
    void SizeOutline(int32_t size);
    void SizeBitmap(int32_t size);

    std::shared_ptr<const std::vector<FT_Byte>> Bytes;  // outlives the face that reads it
    FtLibraryPtr Library;
    FtFacePtr FacePtr;
    std::unique_ptr<CCharsetMap> Charset;
};
