// Runs the built glyphwright-cli from tests and captures what it prints.
#pragma once

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "core/general_exception.h"
#include "synthetic_font.h"
#include "zgly_test_util.h"

struct CliResult {
    int Status = -1;
    std::string Out;
    std::string Err;
};

inline std::string Slurp(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

// Runs glyphwright-cli with the arguments (already quoted), capturing both streams.
inline CliResult RunCli(const CScratchDir& dir, const std::string& args) {
    std::string cmd = std::string("'") + GLYPHWRIGHT_BIN_DIR + "/glyphwright-cli' " + args + " >'" +
                      (dir / "out.txt").string() + "' 2>'" + (dir / "err.txt").string() + "'";
    int raw = std::system(cmd.c_str());
    CliResult r;
    r.Status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    r.Out = Slurp(dir / "out.txt");
    r.Err = Slurp(dir / "err.txt");
    return r;
}

inline std::string Q(const std::filesystem::path& p) { return "'" + p.string() + "'"; }

inline std::string Utf8Of(char16_t c) {
    if (c < 0x80) return std::string(1, static_cast<char>(c));
    if (c < 0x800) return {static_cast<char>(0xC0 | (c >> 6)), static_cast<char>(0x80 | (c & 0x3F))};
    return {static_cast<char>(0xE0 | (c >> 12)), static_cast<char>(0x80 | ((c >> 6) & 0x3F)),
            static_cast<char>(0x80 | (c & 0x3F))};
}

inline std::string Hex4(unsigned v) { return FormatString("%04X", static_cast<int>(v)); }
