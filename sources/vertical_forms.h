// What a vertical ("@") face does to a character: full-width characters stand
// upright in their vertical alternate forms, the rest lie on their side.
#pragma once

#include <memory>
#include <vector>

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_ADVANCES_H

struct hb_face_t;
struct hb_font_t;
struct hb_buffer_t;
struct hb_set_t;

class CVerticalForms {
public:
    explicit CVerticalForms(FT_Face face);
    ~CVerticalForms();
    CVerticalForms(const CVerticalForms&) = delete;
    CVerticalForms& operator=(const CVerticalForms&) = delete;

    // True for characters that vertical Japanese typesetting keeps upright.
    bool IsUpright(char16_t code, FT_UInt glyph) const;
    // The character's vertical alternate glyph (OpenType vrt2 or vert), or glyph.
    FT_UInt Substitute(char16_t code, FT_UInt glyph);

private:
    FT_Face Face;
    hb_face_t* HbFace = nullptr;
    hb_font_t* HbFont = nullptr;
    hb_buffer_t* Buffer = nullptr;
    // Glyphs that the vertical lookups replace; only these are shaped.
    hb_set_t* Replaced = nullptr;
};

// East Asian wide and full-width ranges (hangul, CJK, kana, full-width forms).
bool IsWideCharacter(char16_t code);
