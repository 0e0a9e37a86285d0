// Bringing a glyph's grey levels to another bit depth, so that glyphs of
// sources with different depths can share one font.
#pragma once

class CGlyph;

// Moves the glyph's grey values from the levels of a fromBpp font to those of
// a toBpp font (both 1 to 8 bits): full ink stays full ink, background stays
// background, and the levels between keep their share of full ink, rounded to
// the nearest level. A glyph may store its values in more bits than its font
// has levels (one byte a pixel); it keeps that storage when the new levels fit.
void RescaleGlyphLevels(CGlyph& glyph, int fromBpp, int toBpp);
