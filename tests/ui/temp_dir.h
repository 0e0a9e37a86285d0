// A fresh directory per test, and whole-file text helpers.
#pragma once

#include <sstream>

#include "xmlfiles/test_support.h"

inline std::string ReadFileText(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

inline void WriteFileText(const std::filesystem::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}
