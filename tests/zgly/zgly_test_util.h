// Small helpers shared by the ZGLY tests: raw file building and reading.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "xmlfiles/test_support.h"
#include "zgly/zgly_format.h"

inline std::vector<uint8_t> FileBytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::vector<uint8_t>(std::istreambuf_iterator<char>(in), {});
}

inline void PutFile(const std::filesystem::path& path, const std::vector<uint8_t>& bytes) {
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

inline uint16_t U16At(const std::vector<uint8_t>& b, std::size_t at) {
    return static_cast<uint16_t>(b[at] | (b[at + 1] << 8));
}
inline uint32_t U32At(const std::vector<uint8_t>& b, std::size_t at) {
    return U16At(b, at) | static_cast<uint32_t>(U16At(b, at + 2)) << 16;
}
inline void SetU16(std::vector<uint8_t>& b, std::size_t at, uint32_t v) {
    b[at] = static_cast<uint8_t>(v);
    b[at + 1] = static_cast<uint8_t>(v >> 8);
}
inline void SetU32(std::vector<uint8_t>& b, std::size_t at, uint32_t v) {
    SetU16(b, at, v);
    SetU16(b, at + 2, v >> 16);
}

// Raw file pieces for hand-made (and malformed) files.
inline std::vector<uint8_t> Block(uint32_t tag, std::vector<uint8_t> content) {
    std::vector<uint8_t> b(8);
    SetU32(b, 0, tag);
    while (content.size() % 4) content.push_back(0);
    SetU32(b, 4, static_cast<uint32_t>(8 + content.size()));
    b.insert(b.end(), content.begin(), content.end());
    return b;
}

inline std::vector<uint8_t> Finf(int encoding = 1) {
    std::vector<uint8_t> c(20, 0);
    c[5] = 4;  // default glyph width
    c[6] = 6;  // default char width
    c[7] = static_cast<uint8_t>(encoding);
    return c;
}

// Raw blocks for hand-made files.
// 2 x 2 cells at 1 bpp, cell size given, count cells.
inline std::vector<uint8_t> Cglp(int cellSize, int count, int bpp = 1) {
    std::vector<uint8_t> c(static_cast<std::size_t>(8 + cellSize * count), 0xF0);
    const uint8_t head[8] = {2, 2, static_cast<uint8_t>(cellSize), 0, 2, 2, static_cast<uint8_t>(bpp), 0};
    std::copy(head, head + 8, c.begin());
    return c;
}

inline std::vector<uint8_t> Cmap(uint16_t first, uint16_t last, uint16_t method, const std::vector<uint16_t>& data) {
    std::vector<uint8_t> c(12 + 2 * data.size(), 0);
    SetU16(c, 0, first);
    SetU16(c, 2, last);
    SetU16(c, 4, method);
    for (std::size_t i = 0; i < data.size(); ++i) SetU16(c, 12 + 2 * i, data[i]);
    return c;
}

inline std::vector<uint8_t> File(const std::vector<std::vector<uint8_t>>& blocks, uint16_t count = 0) {
    std::vector<uint8_t> f = {'Y', 'L', 'G', 'Z', 0xFF, 0xFE, 0x01, 0x01, 0, 0, 0, 0, 16, 0, 0, 0};
    for (const auto& b : blocks) f.insert(f.end(), b.begin(), b.end());
    SetU32(f, 8, static_cast<uint32_t>(f.size()));
    SetU16(f, 14, count ? count : static_cast<uint16_t>(blocks.size()));
    return f;
}
