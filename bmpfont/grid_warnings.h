// The traps of hand-edited glyph grids that would otherwise give a broken
// font without a word: colours the font's depth drops, palettes in another
// order than the grid's, glyphs without a width line, and no ink at all.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

class CBmpImage;
struct GridGeometry;
struct GridPictureSource;

// Palette index -> grey level: white is background, index 0 stands for the
// white index's value, values beyond the font's levels are background.
uint32_t GridLevel(uint32_t index, uint32_t white, uint32_t maxLevel);

// Warns when the glyph areas use more ink colours than the font's depth keeps
// (naming the colour count to read them with), and when a palette picture's
// entries used there read as other levels than their colours say (naming what
// was found).
void WarnAboutGridColors(const CBmpImage& picture, const GridPictureSource& source, const GridGeometry& grid,
                         int white, int fontBpp);

// Warns when a PNG grid names another order than the one it is read with.
void WarnAboutOtherOrder(const std::string& drawnFor, const std::filesystem::path& orderPath);

// Collects glyphs that have ink but no width line, for one warning.
class CMissingWidthLines {
public:
    void Add(uint16_t code);
    void Report() const;

private:
    int Count = 0;
    std::vector<uint16_t> First;
};

// The error for a grid whose cells hold no ink at all.
[[noreturn]] void ThrowNoInk(const std::filesystem::path& path);
