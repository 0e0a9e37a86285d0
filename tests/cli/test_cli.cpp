// convert from and to ZGLY, info and usage: every option must show in the file
// it writes, every refusal in its exact message.
#include <gtest/gtest.h>

#include "cli_runner.h"

using namespace zgly;

namespace {

constexpr std::size_t FI = 24;  // FINF content: the first block's, behind the file header

std::string Utf8Of(char16_t c) {
    if (c < 0x800) return {static_cast<char>(0xC0 | (c >> 6)), static_cast<char>(0x80 | (c & 0x3F))};
    return {static_cast<char>(0xE0 | (c >> 12)), static_cast<char>(0x80 | ((c >> 6) & 0x3F)),
            static_cast<char>(0x80 | (c & 0x3F))};
}

std::string SizeOf(const std::filesystem::path& p) { return std::to_string(std::filesystem::file_size(p)); }

}  // namespace

TEST(CliConvert, ZglyOptionsChangeOnlyTheirFields) {
    CScratchDir dir;
    auto in = MakeFont(dir, "in.zgly", {.Alt = true});
    auto convert = [&](const std::string& options) {
        auto r = RunCli(dir, "convert --from-zgly " + Q(in) + " --to-zgly " + Q(dir / "o.zgly") + " " + options);
        EXPECT_EQ(r.Status, 0) << options << ": " << r.Err;
        // Not a terminal: no bar, no warning, only the summary line (none when quiet).
        if (options.find("--quiet") == std::string::npos)
            EXPECT_EQ(r.Err.rfind("Wrote " + (dir / "o.zgly").string() + ": ", 0), 0u) << options << ": " << r.Err;
        else
            EXPECT_EQ(r.Err, "") << options;
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
        {"--encoding utf-16 --quiet", {}},
        {"--encoding cp1252", {{FI + 7, 3}}},
        {"--line-height=0", {{FI + 1, 0}}},
        {"--alt-char A", {{FI + 2, 33}}},
        {"--alt-char 0x42", {{FI + 2, 34}}},
        {"--default-left=-128", {{FI + 4, 0x80}, {FI + 6, plain[FI + 6] - plain[FI + 4] - 128}}},
        {"--default-width 0", {{FI + 5, 0}, {FI + 6, plain[FI + 6] - plain[FI + 5]}}},
        {"--default-right 0", {{FI + 6, plain[FI + 4] + plain[FI + 5]}}},
        {"--default-left 1 --default-width 2 --default-right 3", {{FI + 4, 1}, {FI + 5, 2}, {FI + 6, 6}}},
        {"--rotation 0", {}},
    };
    for (const auto& c : cases) {
        auto expected = plain;
        for (auto [at, value] : c.Bytes) expected[at] = value;
        EXPECT_EQ(convert(c.Options), expected) << c.Options;
    }
    // Shift_JIS lacks most of these glyphs' codes only as warnings; the flag is set.
    EXPECT_EQ(convert("--encoding shift_jis --quiet")[FI + 7], 2);
    // The alternate character is looked up under its code in the output encoding.
    EXPECT_EQ(RunCli(dir, "convert --from-zgly " + Q(in) + " --to-zgly " + Q(dir / "o.zgly") +
                              " --encoding shift_jis --alt-char \xE3\x81\x82").Err,
              "Parameter Error:\n Specified AlternateChar('\xE3\x81\x82' : 0x82A0) is not included in the Font\n");
    // A turn stores the turned cell: width and height swap at a quarter turn; flags 2, 4 and 6.
    for (auto [rotation, flags] : {std::pair{"90", 2}, std::pair{"180", 4}, std::pair{"270", 6}}) {
        auto b = convert(std::string("--rotation ") + rotation);
        EXPECT_EQ(b[cglp + 7], flags) << rotation;
        EXPECT_EQ(b[cglp], plain[cglp + (flags == 4 ? 0 : 1)]) << rotation;
        EXPECT_EQ(b[cglp + 1], plain[cglp + (flags == 4 ? 1 : 0)]) << rotation;
    }
}

TEST(CliConvert, RangeEdgesOfTheWriterOptions) {
    CScratchDir dir;
    auto in = MakeFont(dir, "in.zgly", {.Alt = true});
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
    auto right = [&](int v) {
        return "DefaultRightSpace(=" + std::to_string(v) + ") out of range[" + rightLow + " ～ " + rightHigh + "]";
    };
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
        {"--default-right " + rightHigh, "--default-right " + std::to_string(128 - width - left), right(128 - width - left)},
        {"--default-right=" + rightLow, "--default-right=" + std::to_string(-129 - width - left), right(-129 - width - left)},
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

// At most 100 warnings, then the limit line; the summary counts them all.
TEST(CliConvert, WarningsTheLimitLineAndTheSummary) {
    CScratchDir dir;
    const std::string out = Q(dir / "o.zgly"), wrote = "Wrote " + (dir / "o.zgly").string() + ": ";
    for (int kana : {100, 101, 150}) {
        auto in = MakeFont(dir, "in.zgly", {.Kana = kana, .Alt = true});
        auto r = RunCli(dir, "convert --from-zgly " + Q(in) + " --to-zgly " + out + " --encoding cp1252");
        EXPECT_EQ(r.Status, 0) << r.Err;
        std::string expected;
        for (int i = 0; i < 100; ++i) {
            char16_t c = static_cast<char16_t>(0x3041 + i);
            expected += "Warning: Can't represent output character('" + Utf8Of(c) + "': U+" +
                        FormatString("%04X", static_cast<int>(c)) + ") in the specified character set.\n";
        }
        if (kana > 100) expected += "Warning: Number of warnings over max limit.\n";
        auto z = FileBytes(dir / "o.zgly");
        const std::size_t cglp = U32At(z, FI + 8);
        EXPECT_EQ(r.Err, expected + wrote + FormatString("95 glyphs, cell %dx%d, 2 bits per pixel, ", z[cglp], z[cglp + 1]) +
                             SizeOf(dir / "o.zgly") + " bytes, " + std::to_string(kana) + " warnings\n")
            << kana;
        r = RunCli(dir, "convert --quiet --from-zgly " + Q(in) + " --to-zgly " + out + " --encoding cp1252");
        EXPECT_EQ(r.Err, "");
    }
    // Characters asked for but missing warn; a singular word for one glyph.
    auto in = MakeFont(dir, "in.zgly", {.Count = 10});
    auto r = RunCli(dir, "convert --from-zgly " + Q(in) + " --range 0x100-0x1FF --to-zgly " + out);
    EXPECT_EQ(r.Err.rfind("Warning: A char ('\xC4\x80': U+0100) included in the Filter is not include in the INPUT font.\n", 0),
              0u);
    EXPECT_NE(r.Err.find(wrote + "1 glyph, cell 0x0, 2 bits per pixel, " + SizeOf(dir / "o.zgly") + " bytes, 256 warnings\n"),
              std::string::npos) << r.Err;
}

TEST(CliInfo, DescribesEveryFieldAndCountsTheCells) {
    CScratchDir dir;
    auto in = MakeFont(dir, "in.zgly", {.Alt = true});
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
        "CWDH 0: glyphs 0 to 94\n", "CMAP 0: codes 0x0020 to 0x007E, direct, 95 mapped codes\n",
        "Alternate glyph: 33 (code 0x0041)\n"};
    for (const auto& line : lines) EXPECT_NE(text.Out.find(line), std::string::npos) << line << "in\n" << text.Out;
    auto json = RunCli(dir, "info --json " + Q(out)).Out;
    EXPECT_NE(json.find("\"encoding\":2,\"encodingName\":\"Shift_JIS\"}"), std::string::npos) << json;

    // The one-cell 1x1 font, FINF cut to `finf` bytes, scan-mapping 'A', 'B', ... to `glyphs`:
    // the block's zero padding holds no glyph, and eight FINF bytes are enough.
    auto oneCell = [](std::size_t finf, const std::vector<uint16_t>& glyphs) {
        std::vector<uint8_t> f = Finf();
        f.resize(finf);
        std::vector<uint16_t> scan = {static_cast<uint16_t>(glyphs.size())};
        for (std::size_t i = 0; i < glyphs.size(); ++i) scan.insert(scan.end(), {static_cast<uint16_t>(0x41 + i), glyphs[i]});
        return File({Block(TagFINF, f), Block(TagCGLP, {1, 1, 1, 0, 1, 1, 1, 0, 0x80}),
                     Block(TagCWDH, {0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 1}), Block(TagCMAP, Cmap(0, 0xFFFF, MethodScan, scan))});
    };
    // {file, command, status, stdout part or whole stderr}
    const struct {
        std::vector<uint8_t> File;
        const char* Command;
        int Status;
        std::string Expected;
    } cases[] = {
        {oneCell(20, {0}), "info", 0, "Glyphs: 1, mapped codes: 1\n"},
        {oneCell(8, {0}), "info", 0, "Glyphs: 1, mapped codes: 1\n"},
        {oneCell(4, {0}), "info", 1, "ZGLY File Error:\n FINF block is too small(=4, must be at least 8)\n"},
        {oneCell(20, {0, 2}), "convert --to-zgly o.zgly --from-zgly", 1,
         "ZGLY File Error:\n Glyph index(=2) of code 0x0042 is beyond the glyph cells(=1)\n"},
        {[&] { auto bad = b; SetU16(bad, 4, 0xFFFE); return bad; }(), "info", 1,
         "ZGLY File Error:\n Little endian byte order support only\n"},
        {std::vector<uint8_t>(b.begin(), b.end() - 3), "convert --to-zgly o.zgly --from-zgly", 1, "ZGLY File Error:\n"},
    };
    for (const auto& c : cases) {
        PutFile(dir / "in.zgly", c.File);
        auto r = RunCli(dir, std::string(c.Command) + " in.zgly", dir.Path().string());
        EXPECT_EQ(r.Status, c.Status) << c.Command << c.Expected << r.Err;
        if (c.Status == 0) EXPECT_NE(r.Out.find(c.Expected), std::string::npos) << r.Out;
        else if (c.Expected.size() > 17) EXPECT_EQ(r.Err, c.Expected);
        else EXPECT_EQ(r.Err.rfind(c.Expected + " ", 0), 0u) << r.Err;
    }
}

// The defaults the help names: leaving an option out writes the same bytes as
// giving its documented default, whose value the other tests show takes effect.
TEST(CliDefaults, LeftOutOptionsTakeTheDefaultsTheHelpNames) {
    CScratchDir dir;
    const auto font = Q(MakeFont(dir, "f.zgly"));
    WriteText(dir / "t.txt", "Ab\xC3\xA9\n");
    ASSERT_EQ(RunCli(dir, "convert --from-font 'DejaVu Sans' --size 12 --chars Ab --encoding shift_jis --to-zgly " +
                          Q(dir / "sjis.zgly")).Status, 0);
    // {command with the option left out, the same with its default, output file}
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {"preview " + font + " --text Ab", " --zoom 2 --ink 000000 --paper FFFFFF", ".png"},
        {"template --order ASCII --cell 8x10 --baseline 7", " --colors 2", ".bmp"},
        {"convert --from-font 'DejaVu Sans' --size 12 --width fixed --chars Ab", " --fixed-width 16", ".zgly"},
        {"convert --from-font 'DejaVu Sans' --size 12 --chars-file " + Q(dir / "t.txt"), " --chars-encoding utf-8", ".zgly"},
        {"convert --from-font 'DejaVu Sans' --size 12 --chars 'A b'", " --width keep-space", ".zgly"},
        {"convert --from-zgly " + Q(dir / "sjis.zgly"), " --encoding utf-16", ".zgly"},
    };
    for (const auto& [command, defaults, ext] : cases) {
        const auto option = [&](const std::string& out) {
            return (ext == ".zgly" ? " --to-zgly " : " --out ") + Q(dir / (out + ext));
        };
        auto r = RunCli(dir, command + option("left-out"));
        ASSERT_EQ(r.Status, 0) << command << "\n" << r.Err;
        r = RunCli(dir, command + defaults + option("given"));
        ASSERT_EQ(r.Status, 0) << command << defaults << "\n" << r.Err;
        EXPECT_EQ(Slurp(dir / ("left-out" + ext)), Slurp(dir / ("given" + ext))) << command << defaults;
    }
}
