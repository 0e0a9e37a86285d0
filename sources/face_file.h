// Opening a font file with FreeType by a path that may name it in any script.
#pragma once

#include <filesystem>

#include <ft2build.h>
#include FT_FREETYPE_H

// As FT_New_Face. FreeType opens file names in the system's narrow code page,
// which is not UTF-8 everywhere (Windows): other names are read through the
// program's own file handle instead.
FT_Error OpenFaceFile(FT_Library library, const std::filesystem::path& path, FT_Long index, FT_Face* face);
