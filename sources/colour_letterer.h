// Colour bitmap fonts (CBDT/CBLC, sbix: emoji) rendered at any size: the
// nearest strike's colour glyph is scaled by area averaging, and its alpha
// (the coverage) becomes the grey levels.
#pragma once

#include <cstdint>
#include <vector>

#include "sources/letterer.h"

class CColourLetterer : public CLetterer {
public:
    void Prepare(const FontLocation& location, int32_t size) override;
    bool MakeGlyph(CGlyph& glyph, char16_t code) override;

    // Coverage times darkness instead of coverage alone: the dark lines of a
    // colour glyph become ink, its light fills paper.
    bool Luminance = false;

private:
    // The rendering's alpha replaced by alpha x (1 - luminance), from the
    // premultiplied colour FreeType left in the glyph slot.
    void DarkenByLuminance(Bitmap& b);
    std::vector<uint8_t> Ink;
    // Target pixels per strike pixel.
    double Scale = 1;
    std::vector<uint8_t> Image;
    std::vector<double> Rows;
    uint8_t Levels[256] = {};
};

// A face whose glyphs are colour bitmaps only (no outlines to render).
bool IsColourBitmapFont(const FontLocation& location);
