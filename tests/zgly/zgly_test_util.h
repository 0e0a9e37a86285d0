// Small helpers shared by the ZGLY tests: raw file building and reading.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "core/general_exception.h"

inline std::vector<uint8_t> FileBytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::vector<uint8_t>(std::istreambuf_iterator<char>(in), {});
}

inline void PutFile(const std::filesystem::path& path, const std::vector<uint8_t>& bytes) {
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

inline uint32_t U32At(const std::vector<uint8_t>& b, std::size_t at) {
    return b[at] | (b[at + 1] << 8) | (b[at + 2] << 16) | (static_cast<uint32_t>(b[at + 3]) << 24);
}
inline uint16_t U16At(const std::vector<uint8_t>& b, std::size_t at) {
    return static_cast<uint16_t>(b[at] | (b[at + 1] << 8));
}
inline void SetU16(std::vector<uint8_t>& b, std::size_t at, uint32_t v) {
    b[at] = static_cast<uint8_t>(v);
    b[at + 1] = static_cast<uint8_t>(v >> 8);
}
inline void SetU32(std::vector<uint8_t>& b, std::size_t at, uint32_t v) {
    SetU16(b, at, v);
    SetU16(b, at + 2, v >> 16);
}

// The message of the CGeneralException that f throws, or "" when none.
template <class F>
std::string MessageOf(F&& f) {
    try {
        f();
    } catch (const CGeneralException& e) {
        return e.Message;
    }
    return "";
}
