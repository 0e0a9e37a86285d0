// Vertical alternates through HarfBuzz's GSUB lookups.
#include "sources/vertical_forms.h"

#include <hb-ft.h>
#include <hb-ot.h>
#include <hb.h>

namespace {

struct Range {
    char16_t First, Last;
};

// Wide (W) and full-width (F) blocks of the BMP.
constexpr Range WideRanges[] = {
    {0x1100, 0x115F}, {0x231A, 0x231B}, {0x2329, 0x232A}, {0x2E80, 0x303E}, {0x3041, 0x33FF},
    {0x3400, 0x4DBF}, {0x4E00, 0x9FFF}, {0xA000, 0xA4CF}, {0xA960, 0xA97F}, {0xAC00, 0xD7A3},
    {0xF900, 0xFAFF}, {0xFE10, 0xFE19}, {0xFE30, 0xFE6F}, {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6},
};

// Ambiguous-width blocks: upright only where the font draws them full width,
// as Japanese fonts do for Greek, Cyrillic, arrows, box drawing and shapes.
constexpr Range AmbiguousRanges[] = {
    {0x00A7, 0x00A8}, {0x00B0, 0x00B1}, {0x00B4, 0x00B4}, {0x00B6, 0x00B6}, {0x00D7, 0x00D7},
    {0x00F7, 0x00F7}, {0x0370, 0x04FF}, {0x2010, 0x203B}, {0x2100, 0x2BFF},
};

bool InRanges(char16_t code, const Range* begin, const Range* end) {
    for (const Range* r = begin; r != end; ++r)
        if (code >= r->First && code <= r->Last) return true;
    return false;
}

}  // namespace

bool IsWideCharacter(char16_t code) {
    return InRanges(code, std::begin(WideRanges), std::end(WideRanges));
}

CVerticalForms::CVerticalForms(FT_Face face)
    : Face(face),
      HbFace(hb_ft_face_create_referenced(face)),
      HbFont(hb_font_create(HbFace)),
      Buffer(hb_buffer_create()),
      Replaced(hb_set_create()) {
    // Shaping guesses the language from the locale, read (through setlocale,
    // not thread-safe) on the first call only: made here, on the thread that
    // builds the first letterer, before any rendering thread can shape.
    hb_language_get_default();
    hb_tag_t features[] = {HB_TAG('v', 'r', 't', '2'), HB_TAG('v', 'e', 'r', 't'), HB_TAG_NONE};
    hb_set_t* lookups = hb_set_create();
    hb_ot_layout_collect_lookups(HbFace, HB_OT_TAG_GSUB, nullptr, nullptr, features, lookups);
    for (hb_codepoint_t l = HB_SET_VALUE_INVALID; hb_set_next(lookups, &l);)
        hb_ot_layout_lookup_collect_glyphs(HbFace, HB_OT_TAG_GSUB, l, nullptr, Replaced, nullptr, nullptr);
    hb_set_destroy(lookups);
}

CVerticalForms::~CVerticalForms() {
    hb_set_destroy(Replaced);
    hb_buffer_destroy(Buffer);
    hb_font_destroy(HbFont);
    hb_face_destroy(HbFace);
}

bool CVerticalForms::IsUpright(char16_t code, FT_UInt glyph) const {
    if (IsWideCharacter(code)) return true;
    if (!InRanges(code, std::begin(AmbiguousRanges), std::end(AmbiguousRanges)) || !FT_IS_SCALABLE(Face))
        return false;
    FT_Fixed advance = 0;
    if (FT_Get_Advance(Face, glyph, FT_LOAD_NO_SCALE, &advance) != 0) return false;
    return advance * 10 >= static_cast<FT_Fixed>(Face->units_per_EM) * 9;
}

FT_UInt CVerticalForms::Substitute(char16_t code, FT_UInt glyph) {
    if (!hb_set_has(Replaced, glyph)) return glyph;
    // Fonts list their vertical lookups under the kana or han script or the
    // default one; punctuation of the common script may be under any of them.
    static const hb_feature_t features[] = {{HB_TAG('v', 'r', 't', '2'), 1, 0, ~0u},
                                            {HB_TAG('v', 'e', 'r', 't'), 1, 0, ~0u}};
    for (hb_script_t script : {HB_SCRIPT_INVALID, HB_SCRIPT_KATAKANA, HB_SCRIPT_HAN}) {
        hb_buffer_clear_contents(Buffer);
        const uint16_t text[] = {code};
        hb_buffer_add_utf16(Buffer, text, 1, 0, 1);
        hb_buffer_guess_segment_properties(Buffer);
        if (script != HB_SCRIPT_INVALID) hb_buffer_set_script(Buffer, script);
        hb_buffer_set_direction(Buffer, HB_DIRECTION_TTB);
        hb_shape(HbFont, Buffer, features, 2);
        unsigned count = 0;
        const hb_glyph_info_t* info = hb_buffer_get_glyph_infos(Buffer, &count);
        if (count == 1 && info[0].codepoint != glyph) return info[0].codepoint;
    }
    return glyph;
}
