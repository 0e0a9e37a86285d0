// Times writing and reading a large synthetic ZGLY font; with --make it only
// writes a synthetic font (for the demo and for trying the command line).
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include "core/general_exception.h"
#include "synthetic_font.h"

namespace {

// Printable ASCII, then CJK ideographs with a few holes, up to count codes.
std::vector<uint16_t> BenchCodes(int count) {
    std::vector<uint16_t> codes = CodeRange(0x20, count < 95 ? count : 95);
    for (uint32_t c = 0x4E00; static_cast<int>(codes.size()) < count && c < 0xFFFF; ++c)
        if (c % 53 != 0) codes.push_back(static_cast<uint16_t>(c));
    return codes;
}

double Seconds(std::chrono::steady_clock::time_point since) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - since).count();
}

}  // namespace

int main(int argc, char** argv) {
    int glyphs = 10000;
    std::string makePath;
    bool vertical = false;
    for (int i = 1; i < argc; ++i) {
        if (!std::strcmp(argv[i], "--glyphs") && i + 1 < argc) glyphs = std::atoi(argv[++i]);
        else if (!std::strcmp(argv[i], "--make") && i + 1 < argc) makePath = argv[++i];
        else if (!std::strcmp(argv[i], "--vertical")) vertical = true;
        else {
            std::fprintf(stderr, "usage: zgly_roundtrip [--glyphs N] [--make FILE.zgly [--vertical]]\n");
            return 2;
        }
    }
    SyntheticFontShape fontShape;
    fontShape.Codes = BenchCodes(glyphs);
    fontShape.CellWidth = 16;
    fontShape.CellHeight = 16;
    fontShape.Origin = 13;
    fontShape.Vertical = vertical;
    try {
        if (!makePath.empty()) {
            auto font = MakeSyntheticFont(fontShape);
            font->AlternateChar.Set(u'?');
            WriteSyntheticZgly(*font, makePath);
            return 0;
        }
        auto dir = std::filesystem::temp_directory_path() / "glyphwright-bench";
        std::filesystem::create_directories(dir);
        auto path = dir / "roundtrip.zgly";
        auto font = MakeSyntheticFont(fontShape);
        auto start = std::chrono::steady_clock::now();
        WriteSyntheticZgly(*font, path);
        double write = Seconds(start);
        start = std::chrono::steady_clock::now();
        auto back = ReadZgly(path);
        double read = Seconds(start);
        std::printf("zgly_roundtrip: %zu glyphs, %ju bytes: write %.3f s, read %.3f s\n", back->GlyphCount(),
                    static_cast<uintmax_t>(std::filesystem::file_size(path)), write, read);
        std::filesystem::remove_all(dir);
    } catch (const CGeneralException& e) {
        std::fprintf(stderr, "%s\n", e.Message.c_str());
        return 1;
    }
    return 0;
}
