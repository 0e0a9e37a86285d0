// A plain description of a ZGLY file for display: header, FINF, CGLP, width
// and map blocks, built from a loaded block set.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

class CFontBlockSet;

struct ZglyWidthBlockInfo {
    uint16_t FirstGlyph = 0;
    uint16_t LastGlyph = 0;
};

struct ZglyMapBlockInfo {
    uint16_t FirstCode = 0;
    uint16_t LastCode = 0;
    uint16_t Method = 0;
    // Codes of the block's range that it maps to a glyph.
    uint32_t MappedCodes = 0;
};

struct ZglyInfo {
    // Header
    uint16_t Version = 0;
    uint32_t FileSize = 0;
    uint16_t BlockCount = 0;
    // FINF
    int LineFeed = 0;
    uint16_t AlternateGlyph = 0;
    int DefaultLeft = 0;
    int DefaultGlyphWidth = 0;
    int DefaultCharWidth = 0;
    int Encoding = 0;
    // CGLP
    int CellWidth = 0;
    int CellHeight = 0;
    int CellSize = 0;
    int Baseline = 0;
    int MaxCharWidth = 0;
    int Bpp = 0;
    bool Vertical = false;
    int Rotation = 0;
    uint32_t GlyphCount = 0;
    std::vector<ZglyWidthBlockInfo> WidthBlocks;
    std::vector<ZglyMapBlockInfo> MapBlocks;
    // Codes that map to a glyph, over the whole chain.
    uint32_t MappedCodes = 0;
    // The highest file code mapped to the alternate glyph, if any.
    bool HasAlternateCode = false;
    uint16_t AlternateCode = 0;
};

// The set must have passed loading (header and structure checks).
ZglyInfo DescribeZgly(const CFontBlockSet& set);
// Loads the file with the format's checks and messages, then describes it.
ZglyInfo DescribeZglyFile(const std::filesystem::path& path);
