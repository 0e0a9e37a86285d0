// Bit-by-bit reference packing for the tests, independent of CBitWriter/CBitReader.
#pragma once

#include <cstdint>
#include <vector>

inline std::vector<uint8_t> PackRef(const std::vector<uint32_t>& values, int bpp) {
    std::vector<uint8_t> out((values.size() * bpp + 7) / 8, 0);
    std::size_t bit = 0;
    for (uint32_t v : values)
        for (int b = bpp - 1; b >= 0; --b, ++bit)
            if ((v >> b) & 1) out[bit / 8] |= static_cast<uint8_t>(0x80 >> (bit % 8));
    return out;
}

inline std::vector<uint32_t> UnpackRef(const uint8_t* data, std::size_t count, int bpp) {
    std::vector<uint32_t> out(count, 0);
    std::size_t bit = 0;
    for (auto& v : out)
        for (int b = 0; b < bpp; ++b, ++bit) v = (v << 1) | ((data[bit / 8] >> (7 - bit % 8)) & 1);
    return out;
}

inline std::vector<uint32_t> UnpackRef(const std::vector<uint8_t>& data, std::size_t count, int bpp) {
    return UnpackRef(data.data(), count, bpp);
}
