// Runs the built glyphwright-cli from tests and captures what it prints; the
// fonts the command-line tests start from.
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

inline void WriteText(const std::filesystem::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

// Runs glyphwright-cli with the arguments (already quoted) in `cwd` (default: here),
// capturing both streams.
inline CliResult RunCli(const CScratchDir& dir, const std::string& args, const std::string& cwd = ".") {
    std::string cmd = "cd '" + cwd + "' && '" + GLYPHWRIGHT_BIN_DIR + "/glyphwright-cli' " + args + " >'" +
                      (dir / "out.txt").string() + "' 2>'" + (dir / "err.txt").string() + "'";
    int raw = std::system(cmd.c_str());
    return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, Slurp(dir / "out.txt"), Slurp(dir / "err.txt")};
}

inline std::string Q(const std::filesystem::path& p) { return "'" + p.string() + "'"; }

// A synthetic ZGLY font of `Count` codes from `First` and `Kana` codes from U+3041,
// with '?' as its alternate character when `Alt`.
struct FontShape {
    uint16_t First = 0x20;
    int Count = 95, Kana = 0;
    bool Vertical = false, Alt = false;
    uint32_t Seed = 1;
};

inline std::filesystem::path MakeFont(const CScratchDir& dir, const std::string& name, const FontShape& shape = {}) {
    SyntheticFontShape synthetic;
    synthetic.Codes = CodeRange(shape.First, shape.Count);
    auto kana = CodeRange(0x3041, shape.Kana);
    synthetic.Codes.insert(synthetic.Codes.end(), kana.begin(), kana.end());
    synthetic.Vertical = shape.Vertical;
    synthetic.Seed = shape.Seed;
    auto font = MakeSyntheticFont(synthetic);
    if (shape.Alt) font->AlternateChar.Set(u'?');
    WriteSyntheticZgly(*font, dir / name);
    return dir / name;
}
