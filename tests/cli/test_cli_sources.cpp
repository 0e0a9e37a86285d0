#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "cli_runner.h"
#include "synthetic_font.h"
#include "zgly_test_util.h"

namespace {

std::filesystem::path MakeZgly(const CScratchDir& dir, const std::string& name, uint16_t first, int count, int bpp) {
    SyntheticFontSpec fontSpec;
    fontSpec.Codes = CodeRange(first, count);
    fontSpec.Bpp = bpp;
    fontSpec.Seed = first;
    auto font = MakeSyntheticFont(fontSpec);
    WriteSyntheticZgly(*font, dir / name);
    return dir / name;
}

// "cell WxH" as the file's glyph block states it.
std::string CellOf(const std::filesystem::path& path) {
    auto b = FileBytes(path);
    const std::string tag = "PLGC";
    auto at = std::search(b.begin(), b.end(), tag.begin(), tag.end()) - b.begin() + 8;
    return std::to_string(b[at]) + "x" + std::to_string(b[at + 1]);
}

std::string Size(const std::filesystem::path& path) { return std::to_string(std::filesystem::file_size(path)); }

void ExpectSameGlyphs(const CFontData& got, const CFontData& want, std::u16string_view codes) {
    for (char16_t c : codes) {
        const CGlyph* g = got.FindGlyph(c);
        const CGlyph* w = want.FindGlyph(c);
        ASSERT_TRUE(g && w) << static_cast<int>(c);
        EXPECT_TRUE(g->SameAs(*w)) << static_cast<int>(c);
        EXPECT_EQ(g->Pixels, w->Pixels) << static_cast<int>(c);
    }
}

TEST(CliSources, DejaVuAndIpaGothicMergeAsTheirOwnRuns) {
    CScratchDir dir;
    // The later font takes the first one's size and levels.
    const std::string chars = " --chars 'Ag0,' --range U+3042-U+3044 --to-zgly ";
    auto r = RunCli(dir, "convert --from-font 'DejaVu Sans' --size 16 --levels 4 --from-font IPAGothic" + chars +
                             Q(dir / "m.zgly"));
    ASSERT_EQ(r.Status, 0) << r.Err;
    EXPECT_EQ(r.Err, "Wrote " + (dir / "m.zgly").string() + ": 8 glyphs (DejaVu Sans: 5, IPAGothic: 3), cell " +
                         CellOf(dir / "m.zgly") + ", 2 bits per pixel, " + Size(dir / "m.zgly") + " bytes, 0 warnings\n");
    ASSERT_EQ(RunCli(dir, "convert --from-font 'DejaVu Sans' --size 16 --levels 4" + chars + Q(dir / "d.zgly")).Status, 0);
    ASSERT_EQ(RunCli(dir, "convert --from-font IPAGothic --size 16 --levels 4" + chars + Q(dir / "i.zgly")).Status, 0);
    auto merged = ReadZgly(dir / "m.zgly");
    auto dejaVu = ReadZgly(dir / "d.zgly");
    ExpectSameGlyphs(*merged, *dejaVu, u"Ag0,");
    // The space has no ink, so only its advance is its own.
    EXPECT_EQ(merged->FindGlyph(u' ')->LeftSpace + merged->FindGlyph(u' ')->RightSpace,
              dejaVu->FindGlyph(u' ')->LeftSpace + dejaVu->FindGlyph(u' ')->RightSpace);
    ExpectSameGlyphs(*merged, *ReadZgly(dir / "i.zgly"), u"\u3042\u3043\u3044");
}

TEST(CliSources, SummaryCountsEveryWarning) {
    CScratchDir dir;
    auto in = MakeZgly(dir, "in.zgly", 0x20, 10, 2);
    // 256 characters the font lacks: 100 warnings shown, all 256 counted.
    auto r = RunCli(dir, "convert --from-zgly " + Q(in) + " --range 0x100-0x1FF --to-zgly " + Q(dir / "o.zgly"));
    ASSERT_EQ(r.Status, 0) << r.Err;
    EXPECT_EQ(std::count(r.Err.begin(), r.Err.end(), '\n'), 102);
    EXPECT_NE(r.Err.find("Warning: A char ('\xC4\x80': U+0100) included in the Filter is not include in the INPUT font.\n"),
              std::string::npos);
    EXPECT_NE(r.Err.find("Warning: Number of warnings over max limit.\nWrote " + (dir / "o.zgly").string() +
                         ": 1 glyph, cell 0x0, 2 bits per pixel, " + Size(dir / "o.zgly") + " bytes, 256 warnings\n"),
              std::string::npos)
        << r.Err;
    r = RunCli(dir, "convert --quiet --from-zgly " + Q(in) + " --range 0x100-0x1FF --to-zgly " + Q(dir / "o.zgly"));
    EXPECT_EQ(r.Err, "");
    // The count is of what the file holds: code page 1252 has no U+0080.
    auto edge = MakeZgly(dir, "edge.zgly", 0x7E, 4, 2);
    r = RunCli(dir, "convert --from-zgly " + Q(edge) + " --encoding cp1252 --to-zgly " + Q(dir / "o.zgly"));
    EXPECT_NE(r.Err.find("\nWrote " + (dir / "o.zgly").string() + ": 3 glyphs, cell "), std::string::npos) << r.Err;
    EXPECT_NE(r.Err.find(" bytes, 1 warning\n"), std::string::npos) << r.Err;
}

TEST(CliSources, ParameterErrors) {
    CScratchDir dir;
    auto in = MakeZgly(dir, "in.zgly", 0x20, 10, 2);
    const std::string out = " --to-zgly " + Q(dir / "o.zgly");
    struct Case {
        std::string Args, Err;
    } cases[] = {
        {"--from-zgly " + Q(in) + " --filter ''",
         "Parameter Error:\n \"Use Filter\" checked, but filter file path not specified.\n"},
        {"--from-font /no/such/face.ttf --size 12", "Parameter Error:\n Font file(/no/such/face.ttf) does not exist.\n"},
        {"--from-font 'DejaVu Sans' --size 12 --from-font @IPAGothic",
         "Parameter Error:\n Vertical and horizontal sources can not be mixed: DejaVu Sans is horizontal, but "
         "@IPAGothic is vertical.\n"},
        {"--from-font 'DejaVu Sans' --style Heavy --size 12", "Parameter Error:\n Font(DejaVu Sans) has no style Heavy.\n"},
        {"--from-zgly " + Q(in) + " --chars-file " + Q(dir / "none.txt"),
         "Parameter Error:\n Characters file(" + (dir / "none.txt").string() + ") does not exist.\n"},
    };
    for (const auto& c : cases) {
        auto r = RunCli(dir, "convert " + c.Args + out);
        EXPECT_EQ(r.Status, 1) << c.Args;
        EXPECT_EQ(r.Err, c.Err) << c.Args;
    }
    EXPECT_FALSE(std::filesystem::exists(dir / "o.zgly"));
}

TEST(CliSources, CommandLineShape) {
    CScratchDir dir;
    struct Case {
        std::string Args, Problem;
    } cases[] = {
        {"convert font.ttf --to-zgly o",
         "'font.ttf' is not an option. convert needs an input (--from-zgly, --from-bmp, --from-font or --from-lc) and "
         "an output (--to-zgly or --to-bmp), each followed by its file or face"},
        {"convert --from-zgly a --from-bmp b --to-zgly o", "--from-bmp needs --from-order (source 2)"},
        {"convert --from-font F --size 9 --from-zgly a --colors 4 --to-zgly o", "--colors does not apply to this input (source 2)"},
        {"convert --from-zgly a --from-font F --to-zgly o", "--from-font needs exactly one of --size and --cell-height (source 2)"},
        {"convert --from-zgly a --to-zgly o --range 0x41-0x40", "--range '0x41-0x40' ends before it starts"},
        {"convert --from-zgly a --to-zgly o --range U+110000", "--range: 'U+110000' is beyond U+10FFFF"},
        {"convert --from-zgly a --to-zgly o --range A-Z", "--range takes FIRST-LAST or CODE (as U+3041, 0x3041 or 12353), not 'A-Z'"},
    };
    for (const auto& c : cases) {
        auto r = RunCli(dir, c.Args);
        EXPECT_EQ(r.Status, 2) << c.Args;
        EXPECT_EQ(r.Err.substr(0, r.Err.find('\n')), "glyphwright-cli: " + c.Problem) << c.Args;
    }
    // Source options before the first source, a later font taking the first
    // one's size, LC files in either order, characters repeated: all accepted.
    auto r = RunCli(dir, "convert --size 12 --from-font 'DejaVu Sans' --from-font IPAGothic --chars A --chars B "
                         "--range 65 --range=U+3042 --to-zgly " + Q(dir / "o.zgly"));
    EXPECT_EQ(r.Status, 0) << r.Err;
    EXPECT_NE(r.Err.find(": 4 glyphs (DejaVu Sans: 3, IPAGothic: 1)"), std::string::npos) << r.Err;
    r = RunCli(dir, "convert --help");
    EXPECT_EQ(r.Status, 0);
    EXPECT_NE(r.Out.find("  Two fonts merged, Latin from DejaVu Sans, kana and kanji from IPAGothic:\n"), std::string::npos);
}

TEST(CliSources, StylesOfInstalledFamilies) {
    CScratchDir dir;
    auto r = RunCli(dir, "list-fonts");
    EXPECT_NE(r.Out.find("\nDejaVu Sans\tscalable\t\tBold,Bold Oblique,Book,"), std::string::npos) << r.Out;
    r = RunCli(dir, "list-fonts --json");
    EXPECT_NE(r.Out.find("\"family\":\"IPAGothic\",\"scalable\":true,\"sizes\":[],\"vertical\":true,\"styles\":[\"Regular\"]}"),
              std::string::npos);
    for (const char* style : {"Book", "bold"}) {
        r = RunCli(dir, "convert --from-font 'DejaVu Sans' --style " + std::string(style) + " --size 16 --chars W --to-zgly " +
                            Q(dir / (std::string(style) + ".zgly")));
        ASSERT_EQ(r.Status, 0) << r.Err;
    }
    RunCli(dir, "convert --from-font 'DejaVu Sans' --size 16 --chars W --to-zgly " + Q(dir / "plain.zgly"));
    EXPECT_EQ(FileBytes(dir / "Book.zgly"), FileBytes(dir / "plain.zgly"));
    EXPECT_NE(FileBytes(dir / "bold.zgly"), FileBytes(dir / "plain.zgly"));
}

}  // namespace
