// Bringing a glyph's grey levels to another bit depth, so that glyphs of
// sources with different depths can share one font.
#pragma once

class CGlyph;

// Rewrites the glyph's pixels at bpp bits (1 to 8): full ink stays full ink,
// background stays background, and the levels between keep their share of
// full ink, rounded to the nearest level.
void RescaleGlyphLevels(CGlyph& glyph, int bpp);
