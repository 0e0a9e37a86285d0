// Test helper: draws a prepared font's glyphs into a PNG contact sheet for
// looking at by eye.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

class CFontData;

// Glyphs of the given codes (all glyphs when empty), 12 to a row, each in
// the font's cell, black ink on white, cell borders in grey.
void WriteGlyphSheet(const CFontData& font, const std::filesystem::path& png,
                     const std::vector<uint16_t>& codes = {}, int scale = 2);

// Where sheets go: $GLYPHWRIGHT_SHEET_DIR, or nothing when it is not set.
std::filesystem::path SheetDirectory();
