// Helpers shared by the XML and BMP tests: a temporary directory per test and
// the expectation that a call throws one exact message.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "core/general_exception.h"

class CTempDir {
public:
    CTempDir() {
        std::random_device rd;
        Dir = std::filesystem::temp_directory_path() / ("gw_test_" + std::to_string(rd()) + std::to_string(rd()));
        std::filesystem::create_directories(Dir);
    }
    ~CTempDir() {
        std::error_code ec;
        std::filesystem::remove_all(Dir, ec);
    }
    std::filesystem::path operator/(const std::string& name) const { return Dir / name; }
    std::filesystem::path Write(const std::string& name, const std::string& text) const {
        std::ofstream(Dir / name, std::ios::binary) << text;
        return Dir / name;
    }

    std::filesystem::path Dir;
};

// The message the call throws, or "" when it returns.
template <class F>
std::string ErrorOf(F&& f) {
    try {
        f();
    } catch (const CGeneralException& e) {
        return e.Message;
    }
    return "";
}
