// The grid of character codes of a glyph order file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

inline constexpr uint16_t NoCode = 0xFFFF;

class CGlyphOrder {
public:
    uint16_t GetCode(int x, int y) const;

    int32_t Width = 16;
    int32_t Height = 0;
    std::vector<uint16_t> Codes;
    bool HeightGiven = false;
    bool Loaded = false;
};
