// Files and conversion runs shared by the robustness tests.
#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <set>
#include <string>

#include "bmpfont/bmp_font_reader.h"
#include "bmpfont/bmp_font_writer.h"
#include "bmpfont/bmp_test_support.h"
#include "core/conversion.h"
#include "core/headless_pg_ctrl.h"
#include "zgly/synthetic_font.h"
#include "zgly/zarnic_font_reader.h"
#include "zgly/zarnic_font_writer.h"

inline std::string FileBytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

// The names in a directory, so that a left-over temporary file shows.
inline std::set<std::string> Names(const std::filesystem::path& dir) {
    std::set<std::string> names;
    for (const auto& e : std::filesystem::directory_iterator(dir)) names.insert(e.path().filename().string());
    return names;
}

inline std::filesystem::path AsciiOrder() {
    return std::filesystem::path(GLYPHWRIGHT_TEST_DATA) / ".." / "data" / "xlor" / "ASCII.xlor";
}

// A small ZGLY font of the printable ASCII characters.
inline void WriteSourceFont(const std::filesystem::path& path) {
    SyntheticFontSpec fontSpec;
    fontSpec.Codes = CodeRange(0x20, 95);
    fontSpec.CellWidth = 8;
    fontSpec.CellHeight = 12;
    fontSpec.Origin = 9;
    auto font = MakeSyntheticFont(fontSpec);
    WriteSyntheticZgly(*font, path);
}

enum class OutputKind { Zgly, Bmp };

// One whole conversion run from a ZGLY source to a ZGLY or glyph-grid output.
inline ConversionOutcome Convert(const std::filesystem::path& source, const std::filesystem::path& target,
                                 OutputKind kind, CHeadlessPgCtrl& pg) {
    CTestFrontEnd ui;
    ui.MakeReader = [&] { return std::make_unique<CZarnicFontReader>(source); };
    ui.MakeWriter = [&]() -> std::unique_ptr<CFontWriter> {
        if (kind == OutputKind::Zgly)
            return std::make_unique<CZarnicFontWriter>(target, NotGiven, NotGiven, NotGiven, NotGiven, NotGiven, 1,
                                                       0);
        return std::make_unique<CBmpFontWriter>(target, AsciiOrder(), true, -1, -1, -1, -1, 1, 1);
    };
    return RunConversion(ui, pg);
}
