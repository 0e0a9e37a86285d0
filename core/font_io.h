// The reader and writer interfaces that every source and output implements.
#pragma once

#include <cstdint>
#include <filesystem>

// A numeric parameter that is not given; the font's own value is used.
inline constexpr int32_t NotGiven = 0xFFFF;

class CFontData;
class CFontFilter;
class CGlyphOrder;

class CFontIO {
public:
    CFontIO() = default;
    explicit CFontIO(std::filesystem::path path) : Path(std::move(path)) {}
    virtual ~CFontIO() = default;
    CFontIO(const CFontIO&) = delete;
    CFontIO& operator=(const CFontIO&) = delete;
    // Checks parameters and named files before anything is read; throws on
    // the first problem.
    virtual void CheckParameters() = 0;

    std::filesystem::path Path;
};

class CFontReader : public CFontIO {
public:
    using CFontIO::CFontIO;
    virtual void Read(CFontData& font, const CFontFilter& filter) = 0;
};

class CFontWriter : public CFontIO {
public:
    using CFontIO::CFontIO;
    virtual void Write(CFontData& font, const CGlyphOrder& order) = 0;
    // Loads the writer's glyph order into the run's order object, or nothing.
    virtual void LoadGlyphOrder(CGlyphOrder& order) { (void)order; }
};
