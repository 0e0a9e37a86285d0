// convert to ZGLY, info and usage: every option must show in the file it writes.
#include <gtest/gtest.h>

#include "cli_runner.h"

namespace {

// Codes 0x20..0x7E ('?' is glyph 31, 'A' 33) and `kana` codes from U+3041.
std::filesystem::path MakeFont(const CScratchDir& dir, int kana = 20, const std::string& name = "in.zgly") {
    SyntheticFontSpec fontSpec;
    fontSpec.Codes = CodeRange(0x20, 95);
    auto more = CodeRange(0x3041, kana);
    fontSpec.Codes.insert(fontSpec.Codes.end(), more.begin(), more.end());
    auto font = MakeSyntheticFont(fontSpec);
    font->AlternateChar.Set(u'?');
    WriteSyntheticZgly(*font, dir / name);
    return dir / name;
}

constexpr std::size_t FI = 24;  // FINF content: the first block's, behind the file header

}  // namespace

TEST(CliConvert, ZglyOptionsChangeOnlyTheirFields) {
    CScratchDir dir;
    auto in = MakeFont(dir, 0);
    auto convert = [&](const std::string& options) {
        auto r = RunCli(dir, "convert --from-zgly " + Q(in) + " --to-zgly " + Q(dir / "o.zgly") + " " + options);
        EXPECT_EQ(r.Status, 0) << options << ": " << r.Err;
        // Not a terminal: no bar, no warning, only the summary line (none when quiet).
        if (options.find("--quiet") == std::string::npos)
            EXPECT_EQ(r.Err.rfind("Wrote " + (dir / "o.zgly").string() + ": ", 0), 0u) << options << ": " << r.Err;
        EXPECT_EQ(r.Err.find("Warning: "), std::string::npos) << options;
        return FileBytes(dir / "o.zgly");
    };
    const auto plain = convert("");
    ASSERT_GT(plain.size(), 100u);
    EXPECT_EQ(FileBytes(in), plain);  // the input had no options either
    const std::size_t cglp = U32At(plain, FI + 8);
    // {options, {offset, value}...}: the file equals the plain one but at these bytes.
    const struct {
        std::string Options;
        std::vector<std::pair<std::size_t, uint8_t>> Bytes;
    } cases[] = {
        {"--encoding utf-8", {{FI + 7, 0}}},
        {"--encoding utf-16", {}},
        {"--encoding cp1252", {{FI + 7, 3}}},
        {"--line-height 255", {{FI + 1, 255}}},
        {"--line-height=0", {{FI + 1, 0}}},
        {"--alt-char A", {{FI + 2, 33}}},
        {"--alt-char 0x42", {{FI + 2, 34}}},
        {"--default-left=-128", {{FI + 4, 0x80}, {FI + 6, plain[FI + 6] - plain[FI + 4] - 128}}},
        {"--default-left 127", {{FI + 4, 127}, {FI + 6, plain[FI + 6] - plain[FI + 4] + 127}}},
        {"--default-width 0", {{FI + 5, 0}, {FI + 6, plain[FI + 6] - plain[FI + 5]}}},
        {"--default-right 0", {{FI + 6, plain[FI + 4] + plain[FI + 5]}}},
        {"--default-left 1 --default-width 2 --default-right 3", {{FI + 4, 1}, {FI + 5, 2}, {FI + 6, 6}}},
        {"--rotation 0", {}},
        {"--rotation 180", {{cglp + 7, 4}}},
    };
    for (const auto& c : cases) {
        auto expected = plain;
        for (auto [at, value] : c.Bytes) expected[at] = value;
        auto got = convert(c.Options);
        if (c.Options == "--rotation 180") got.resize(cglp + 8);  // the turned cells are the reader's test
        if (c.Options == "--rotation 180") expected.resize(cglp + 8);
        EXPECT_EQ(got, expected) << c.Options;
    }
    // Shift_JIS lacks most of these glyphs' codes only as warnings; the flag is set.
    EXPECT_EQ(convert("--encoding shift_jis --quiet")[FI + 7], 2);
    // A quarter turn stores the turned cell: width and height swap, flags 2 and 6.
    for (auto [rotation, flags] : {std::pair{"90", 2}, std::pair{"270", 6}}) {
        auto b = convert(std::string("--rotation ") + rotation);
        EXPECT_EQ(b[cglp + 7], flags) << rotation;
        EXPECT_EQ(b[cglp], plain[cglp + 1]) << rotation;
        EXPECT_EQ(b[cglp + 1], plain[cglp]) << rotation;
    }
}

TEST(CliConvert, RangeEdgesOfTheWriterOptions) {
    CScratchDir dir;
    auto in = MakeFont(dir, 0);
    auto out = dir / "o.zgly";
    auto convert = [&](const std::string& options) {
        std::filesystem::remove(out);
        return RunCli(dir, "convert --from-zgly " + Q(in) + " --to-zgly " + Q(out) + " " + options);
    };
    ASSERT_EQ(convert("").Status, 0);
    auto plain = FileBytes(out);
    const int left = static_cast<int8_t>(plain[FI + 4]), width = plain[FI + 5];
    const int cellWidth = plain[U32At(plain, FI + 8)];
    const std::string cw = std::to_string(cellWidth);
    const std::string rightLow = std::to_string(-128 - width - left), rightHigh = std::to_string(127 - width - left);
    // {accepted edge, refused value beyond it, message detail}
    const struct {
        std::string Good, Bad, Message;
    } cases[] = {
        {"--line-height 255", "--line-height 256", "LineHeight(=256) out of range[0 ～ 255]"},
        {"--line-height 0", "--line-height=-1", "LineHeight(=-1) out of range[0 ～ 255]"},
        {"--default-left 127", "--default-left 128", "DefaultLeftSpace(=128) out of range[-128 ～ 127]"},
        {"--default-left=-128", "--default-left=-129", "DefaultLeftSpace(=-129) out of range[-128 ～ 127]"},
        {"--default-width " + cw, "--default-width " + std::to_string(cellWidth + 1),
         "DefaultWidth(=" + std::to_string(cellWidth + 1) + ") out of range[0 ～ " + cw + "]"},
        {"--default-width 0", "--default-width=-1", "DefaultWidth(=-1) out of range[0 ～ " + cw + "]"},
        {"--default-right " + rightHigh, "--default-right " + std::to_string(128 - width - left),
         "DefaultRightSpace(=" + std::to_string(128 - width - left) + ") out of range[" + rightLow + " ～ " +
             rightHigh + "]"},
        {"--default-right=" + rightLow, "--default-right=" + std::to_string(-129 - width - left),
         "DefaultRightSpace(=" + std::to_string(-129 - width - left) + ") out of range[" + rightLow + " ～ " +
             rightHigh + "]"},
        {"--alt-char 0x7E", "--alt-char 0xFFFF",
         "Can't represent AlternateChar(0xFFFF) in the Unicode character set.\n Please use other AlternateChar."},
        {"--alt-char '~'", "--alt-char '\xC3\xA9'", "Specified AlternateChar('\xC3\xA9' : U+00E9) is not included in the Font"},
    };
    for (const auto& c : cases) {
        auto r = convert(c.Good);
        EXPECT_EQ(r.Status, 0) << c.Good << ": " << r.Err;
        r = convert(c.Bad);
        EXPECT_EQ(r.Status, 1) << c.Bad;
        EXPECT_EQ(r.Err, "Parameter Error:\n " + c.Message + "\n") << c.Bad;
        EXPECT_FALSE(std::filesystem::exists(out)) << c.Bad;
    }
    // The reader's checks come before the writer's.
    auto r = RunCli(dir, "convert --from-zgly " + Q(dir / "none.zgly") + " --to-zgly " + Q(out) + " --line-height 300");
    EXPECT_EQ(r.Err, "Parameter Error:\n File(" + (dir / "none.zgly").string() + ") not exists.\n");
}

TEST(CliConvert, AtMostOneHundredWarningsThenTheLimitLine) {
    CScratchDir dir;
    auto warning = [](int i) {
        char16_t c = static_cast<char16_t>(0x3041 + i);
        return "Warning: Can't represent output character('" + Utf8Of(c) + "': U+" + Hex4(c) +
               ") in the specified character set.\n";
    };
    for (int kana : {100, 101, 150}) {
        auto in = MakeFont(dir, kana);
        auto r = RunCli(dir, "convert --from-zgly " + Q(in) + " --to-zgly " + Q(dir / "o.zgly") + " --encoding cp1252");
        EXPECT_EQ(r.Status, 0) << r.Err;
        std::string expected;
        for (int i = 0; i < 100; ++i) expected += warning(i);
        if (kana > 100) expected += "Warning: Number of warnings over max limit.\n";
        EXPECT_EQ(r.Err.substr(0, expected.size()), expected) << kana;
        // The summary counts every warning, also those past the limit.
        const std::string tail = ", " + std::to_string(kana) + " warnings\n";
        ASSERT_GT(r.Err.size(), expected.size() + tail.size());
        EXPECT_EQ(r.Err.substr(r.Err.size() - tail.size()), tail) << kana;
        EXPECT_EQ(ReadZgly(dir / "o.zgly")->GlyphCount(), 95u);  // the kana left out
        r = RunCli(dir, "convert --quiet --from-zgly " + Q(in) + " --to-zgly " + Q(dir / "o.zgly") + " --encoding cp1252");
        EXPECT_EQ(r.Status, 0);
        EXPECT_EQ(r.Err, "");
    }
}

TEST(CliInfo, DescribesEveryField) {
    CScratchDir dir;
    auto in = MakeFont(dir, 0);
    auto out = dir / "o.zgly";
    ASSERT_EQ(RunCli(dir, "convert --from-zgly " + Q(in) + " --to-zgly " + Q(out) +
                              " --encoding shift_jis --rotation 90 --line-height 20 --alt-char A --default-left=-3")
                  .Status,
              0);
    auto b = FileBytes(out);
    const std::size_t cglp = U32At(b, FI + 8);
    auto text = RunCli(dir, "info " + Q(out));
    EXPECT_EQ(text.Status, 0) << text.Err;
    const std::string lines[] = {
        "File: " + out.string() + "\n",
        FormatString("Header: version 0101, file size %d, 4 blocks\n", static_cast<int>(b.size())),
        FormatString("FINF: line feed 20, encoding 2 (Shift_JIS), default widths left -3 glyph %d char %d\n",
                     b[FI + 5], b[FI + 6]),
        FormatString("CGLP: cell %dx%d, cell size %d bytes, baseline %d, max char width %d, bpp 2, vertical no, "
                     "rotation 90\n",
                     b[cglp], b[cglp + 1], U16At(b, cglp + 2), static_cast<int8_t>(b[cglp + 4]), b[cglp + 5]),
        "CWDH 0: glyphs 0 to 94\n",
        "CMAP 0: codes 0x0020 to 0x007E, direct, 95 mapped codes\n",
        "Alternate glyph: 33 (code 0x0041)\n"};
    for (const auto& line : lines) EXPECT_NE(text.Out.find(line), std::string::npos) << line << "in\n" << text.Out;
    auto json = RunCli(dir, "info --json " + Q(out)).Out;
    for (const char* part : {"\"encoding\":2,\"encodingName\":\"Shift_JIS\"}", "\"lineFeed\":20,\"alternateGlyph\":33",
                             "\"defaultLeft\":-3,", "\"bpp\":2,\"vertical\":false,\"rotation\":90}",
                             "\"method\":\"direct\",\"mappedCodes\":95}", "\"alternateCode\":65}\n"})
        EXPECT_NE(json.find(part), std::string::npos) << part << "\n" << json;

    // Malformed files: a message in its category, never a crash.
    auto bad = b;
    SetU16(bad, 4, 0xFFFE);
    PutFile(dir / "bad.zgly", bad);
    auto r = RunCli(dir, "info " + Q(dir / "bad.zgly"));
    EXPECT_EQ(r.Status, 1);
    EXPECT_EQ(r.Err, "ZGLY File Error:\n Little endian byte order support only\n");
    for (std::size_t cut : {std::size_t{20}, std::size_t{50}, b.size() - 3}) {
        PutFile(dir / "cut.zgly", std::vector<uint8_t>(b.begin(), b.begin() + cut));
        for (const std::string& command : {"info " + Q(dir / "cut.zgly"),
                                           "convert --from-zgly " + Q(dir / "cut.zgly") + " --to-zgly " + Q(out)}) {
            r = RunCli(dir, command);
            EXPECT_EQ(r.Status, 1) << cut;
            EXPECT_EQ(r.Err.rfind("ZGLY File Error:\n ", 0), 0u) << r.Err;
        }
    }
}

TEST(CliUsage, MistakesExitTwoWithAHint) {
    CScratchDir dir;
    for (const std::string args :
         {"", "frobnicate", "convert --from-zgly a", "convert --to-zgly b",
          "convert --from-zgly a --to-zgly b --rotation 45", "convert --from-zgly a --to-zgly b --colors 4",
          "convert --from-zgly a --to-zgly b --to-bmp c --to-order d", "convert --from-font F --to-zgly b",
          "convert --from-font F --size 9 --cell-height 9 --to-zgly b", "convert --from-bmp a --to-zgly b",
          "convert --from-zgly a --to-bmp b --to-order o --offset 1,2", "convert --from-zgly a --to-bmp b",
          "convert --from-zgly a --to-bmp b --to-order o --cell 8x8 --margins 1,1", "info", "info a b",
          "convert --from-zgly a --to-zgly b --line-height x", "convert --from-zgly a --to-zgly b --levels 4",
          "convert --from-zgly a --to-zgly b --encoding latin1", "convert --quiet=1 --from-zgly a --to-zgly b"}) {
        auto r = RunCli(dir, args);
        EXPECT_EQ(r.Status, 2) << args;
        EXPECT_EQ(r.Err.rfind("glyphwright-cli: ", 0), 0u) << args;
        EXPECT_NE(r.Err.find("usage: glyphwright-cli convert INPUT... OUTPUT"), std::string::npos) << args;
    }
    EXPECT_EQ(RunCli(dir, "--version").Out, "glyphwright-cli 1.1.3\n");
    EXPECT_NE(RunCli(dir, "--help").Out.find("--to-zgly FILE"), std::string::npos);
}
