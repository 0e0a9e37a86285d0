#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <fstream>
#include <string>

#include "cli_runner.h"
#include "synthetic_font.h"
#include "zgly_test_util.h"

namespace {

std::filesystem::path MakeFont(const CScratchDir& dir, const std::string& name) {
    SyntheticFontSpec fontSpec;
    fontSpec.Codes = CodeRange(0x20, 95);
    auto kana = CodeRange(0x3041, 20);
    fontSpec.Codes.insert(fontSpec.Codes.end(), kana.begin(), kana.end());
    auto font = MakeSyntheticFont(fontSpec);
    font->AlternateChar.Set(u'?');
    WriteSyntheticZgly(*font, dir / name);
    return dir / name;
}

}  // namespace

TEST(Cli, ConvertsZglyWithOverridesAndRotation) {
    CScratchDir dir;
    auto in = MakeFont(dir, "in.zgly");
    auto r = RunCli(dir, "convert --from-zgly " + Q(in) + " --to-zgly " + Q(dir / "out.zgly") +
                             " --encoding utf-8 --rotation 270 --line-height 30 --alt-char A --default-left=-2");
    EXPECT_EQ(r.Status, 0) << r.Err;
    // Not a terminal: no bar, only the summary line.
    EXPECT_EQ(r.Err.rfind("Wrote " + (dir / "out.zgly").string() + ": 115 glyphs, cell ", 0), 0u) << r.Err;
    auto b = FileBytes(dir / "out.zgly");
    ASSERT_GT(b.size(), 60u);
    EXPECT_EQ(b[24 + 1], 30);
    EXPECT_EQ(b[24 + 4], 0xFE);
    EXPECT_EQ(b[24 + 7], 0);
    EXPECT_EQ(U16At(b, 24 + 2), 0x41 - 0x20);
    EXPECT_EQ(b[U32At(b, 24 + 8) + 7], 6);  // horizontal, rotation 3

    auto back = ReadZgly(dir / "out.zgly");
    auto orig = ReadZgly(in);
    ASSERT_EQ(back->GlyphCount(), orig->GlyphCount());
    for (const auto& g : orig->GetGlyphs()) EXPECT_EQ(back->FindGlyph(g->Code)->Pixels, g->Pixels);
}

TEST(Cli, ErrorsWarningsAndExitStatus) {
    CScratchDir dir;
    auto in = MakeFont(dir, "in.zgly");
    auto out = dir / "o.zgly";
    auto convert = [&](const std::filesystem::path& from, const std::string& options) {
        return RunCli(dir, "convert --from-zgly " + Q(from) + " --to-zgly " + Q(out) + " " + options);
    };
    auto r = convert(in, "--line-height 300");
    EXPECT_EQ(r.Status, 1);
    EXPECT_EQ(r.Err, "Parameter Error:\n LineHeight(=300) out of range[0 ～ 255]\n");
    // The reader's checks come before the writer's.
    r = convert(dir / "none.zgly", "--line-height 300");
    EXPECT_EQ(r.Err, "Parameter Error:\n File(" + (dir / "none.zgly").string() + ") not exists.\n");
    r = convert(in, "--alt-char 0xFFFF");
    EXPECT_EQ(r.Err,
              "Parameter Error:\n Can't represent AlternateChar(0xFFFF) in the Unicode character set.\n Please use "
              "other AlternateChar.\n");
    EXPECT_FALSE(std::filesystem::exists(out));

    // 1252 lacks the kana (or, without code page tables, everything): at most
    // 100 warning lines and the limit line; --quiet drops them.
    r = convert(in, "--encoding cp1252 --alt-char A");
    EXPECT_NE(r.Err.find("Warning: Can't represent output character('\xE3\x81\x81': U+3041) in the specified character set.\n"),
              std::string::npos);
    std::size_t lines = std::count(r.Err.begin(), r.Err.end(), '\n');
    if (lines > 100) {
        EXPECT_NE(r.Err.find("Warning: Number of warnings over max limit.\n"), std::string::npos);
    }
    r = convert(in, "--quiet --encoding utf-16");
    EXPECT_EQ(r.Status, 0);
    EXPECT_EQ(r.Err, "");
}

TEST(Cli, UsageErrorsExitTwo) {
    CScratchDir dir;
    for (const std::string args :
         {"", "frobnicate", "convert --from-zgly a", "convert --to-zgly b", "convert --from-zgly a --to-zgly b --rotation 45", "convert --from-zgly a --to-zgly b --colors 4",
          "convert --from-zgly a --to-zgly b --to-bmp c --to-order d", "convert --from-font F --to-zgly b",
          "convert --from-zgly a --to-bmp b --to-order o --offset 1,2", "info", "info a b", "convert --from-zgly a --to-zgly b --line-height x"}) {
        auto r = RunCli(dir, args);
        EXPECT_EQ(r.Status, 2) << args;
        EXPECT_EQ(r.Err.rfind("glyphwright-cli: ", 0), 0u) << args;
    }
    EXPECT_EQ(RunCli(dir, "--version").Out, "glyphwright-cli 1.1.3\n");
    EXPECT_NE(RunCli(dir, "--help").Out.find("--to-zgly FILE"), std::string::npos);
}

TEST(Cli, InfoDescribesTheFileOrGivesItsError) {
    CScratchDir dir;
    auto in = MakeFont(dir, "in.zgly");
    auto r = RunCli(dir, "info --json " + Q(in));
    EXPECT_EQ(r.Status, 0) << r.Err;
    for (const char* part : {"\"blockCount\":5", "\"encoding\":1", "\"cellHeight\":", "\"method\":\"direct\"",
                             "\"method\":\"scan\"", "\"mappedCodes\":20", "\"glyphCount\":115", "\"alternateCode\":63"})
        EXPECT_NE(r.Out.find(part), std::string::npos) << part << "\n" << r.Out;
    r = RunCli(dir, "info " + Q(in));
    EXPECT_NE(r.Out.find("CMAP 0: codes 0x0020 to 0x007E, direct, 95 mapped codes"), std::string::npos) << r.Out;

    // Malformed files: a message in its category, never a crash.
    auto bytes = FileBytes(in);
    auto bad = bytes;
    SetU16(bad, 4, 0xFFFE);
    PutFile(dir / "bad.zgly", bad);
    r = RunCli(dir, "info " + Q(dir / "bad.zgly"));
    EXPECT_EQ(r.Status, 1);
    EXPECT_EQ(r.Err, "ZGLY File Error:\n Little endian byte order support only\n");
    for (std::size_t cut : {std::size_t{20}, std::size_t{50}, bytes.size() - 3}) {
        PutFile(dir / "cut.zgly", std::vector<uint8_t>(bytes.begin(), bytes.begin() + cut));
        r = RunCli(dir, "info " + Q(dir / "cut.zgly"));
        EXPECT_EQ(r.Status, 1) << cut;
        EXPECT_EQ(r.Err.rfind("ZGLY File Error:\n ", 0), 0u) << r.Err;
        r = RunCli(dir, "convert --from-zgly " + Q(dir / "cut.zgly") + " --to-zgly " + Q(dir / "o.zgly"));
        EXPECT_EQ(r.Status, 1);
        EXPECT_EQ(r.Err.rfind("ZGLY File Error:\n ", 0), 0u) << r.Err;
    }
}
