// A fresh directory per test, removed afterwards.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

class CTempDir {
public:
    CTempDir() {
        const auto* info = testing::UnitTest::GetInstance()->current_test_info();
        std::string name = std::string("gw_ui_") + (info ? info->name() : "x") + "_" + std::to_string(::getpid());
        Path = std::filesystem::temp_directory_path() / name;
        std::filesystem::remove_all(Path);
        std::filesystem::create_directories(Path);
    }
    ~CTempDir() {
        std::error_code ec;
        std::filesystem::remove_all(Path, ec);
    }
    std::filesystem::path operator/(const std::string& name) const { return Path / name; }

    std::filesystem::path Path;
};

inline std::string ReadFileText(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

inline void WriteFileText(const std::filesystem::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}
