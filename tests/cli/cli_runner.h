// Runs the built glyphwright-cli from tests and captures what it prints.
#pragma once

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "synthetic_font.h"

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

