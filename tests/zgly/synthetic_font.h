// Synthetic fonts for tests and benchmarks: deterministic glyphs with varied
// ink boxes, spaces and grey levels, and helpers that write and read them as
// ZGLY files through the real writer and reader.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

#include "core/font_data.h"
#include "xmlfiles/test_support.h"

class CPgCtrl;

struct SyntheticFontShape {
    std::vector<uint16_t> Codes;
    int CellWidth = 12;
    int CellHeight = 16;
    int Bpp = 2;
    bool Vertical = false;
    // Horizontal: rows from the cell top to the baseline. Vertical: columns
    // from the reference column to the cell's right edge.
    int Origin = 12;
    uint32_t Seed = 1;
};

// Codes first, first + 1, ..., first + count - 1.
std::vector<uint16_t> CodeRange(uint16_t first, int count);

// One glyph per code, added in the given order; the font is not prepared.
// The space (0x0020) and every code divisible by 97 are ink-less.
std::unique_ptr<CFontData> MakeSyntheticFont(const SyntheticFontShape& fontShape);

// Writes the font (prepared here if it is not yet) as a ZGLY file with the
// writer's parameters not given unless passed; throws the writer's messages.
void WriteSyntheticZgly(CFontData& font, const std::filesystem::path& path, int encoding = 1, int rotation = 0,
                        CPgCtrl* pg = nullptr);

// Reads a ZGLY file into a new font (no filter); throws the reader's messages.
std::unique_ptr<CFontData> ReadZgly(const std::filesystem::path& path, CPgCtrl* pg = nullptr);

// A fresh empty directory under the temp directory, removed by its destructor.
struct CScratchDir : CTempDir {
    const std::filesystem::path& Path() const { return Dir; }
};
