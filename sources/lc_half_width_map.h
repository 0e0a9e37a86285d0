// The full-width Shift_JIS codes of a half-width mapping LC Font file and the
// half-width or ASCII characters they stand for.
#pragma once

#include <array>
#include <cstdint>

struct HalfWidthEntry {
    uint16_t ShiftJis;
    char16_t Unicode;
};

inline constexpr std::size_t HalfWidthEntryCount = 272;
// Sorted by Shift_JIS code, no code twice.
extern const std::array<HalfWidthEntry, HalfWidthEntryCount> HalfWidthCodeMap;
