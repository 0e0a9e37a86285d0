// How a rendered character's width becomes its glyph's spaces: the four
// choices of the Windows font panel and --width, stored as their numbers.
#pragma once

#include <cstdint>

enum GlyphWidthType : int32_t {
    WidthGlyphOnly = 0,      // the ink alone; a blank character is 0 wide
    WidthKeepSpace = 1,      // the ink, and a blank character keeps its advance
    WidthIncludeMargin = 2,  // the ink with the font's own side bearings
    WidthFixed = 3,          // the ink centred in a fixed width
};
inline constexpr int32_t GlyphWidthTypeCount = 4;
