// The command line with the other inputs and outputs: installed fonts against
// reference renderings, glyph grids and their options, and the listings.
#include <gtest/gtest.h>

#include <sstream>

#include "cli_runner.h"
#include "glyph_compare.h"

namespace {

std::filesystem::path MakeLatinFont(const CScratchDir& dir, bool vertical) {
    SyntheticFontSpec fontSpec;
    fontSpec.Codes = CodeRange(0x21, 94);
    fontSpec.Vertical = vertical;
    auto font = MakeSyntheticFont(fontSpec);
    WriteSyntheticZgly(*font, dir / "in.zgly");
    return dir / "in.zgly";
}

std::string Letters(const std::string& letters) {
    return "<letter-list version=\"1.0\"><body><letter>" + letters + "</letter></body></letter-list>";
}

uint32_t Le32(const std::string& b, std::size_t at) {
    return static_cast<uint8_t>(b[at]) | static_cast<uint8_t>(b[at + 1]) << 8 | static_cast<uint8_t>(b[at + 2]) << 16 |
           static_cast<uint32_t>(static_cast<uint8_t>(b[at + 3])) << 24;
}

}  // namespace

// Each file in tests/cli/render-refs holds the letters, the options and the hex
// bytes of the ZGLY file scripts/make_render_refs.sh made from them.
TEST(CliFonts, InstalledFontsRenderAsTheReferences) {
    CScratchDir dir;
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(GLYPHWRIGHT_TEST_DATA "/cli/render-refs")) {
        std::ifstream in(entry.path());
        std::string line, letters, options, hex;
        while (std::getline(in, line)) {
            if (line.rfind("letters: ", 0) == 0) letters = line.substr(9);
            else if (line.rfind("options: ", 0) == 0) options = line.substr(9);
            else if (!line.empty() && line[0] != '#') hex += line;
        }
        std::vector<uint8_t> expected;
        for (std::size_t i = 0; i + 1 < hex.size(); i += 2) expected.push_back(std::stoi(hex.substr(i, 2), nullptr, 16));
        std::string args;
        std::stringstream split(options);
        for (std::string arg; std::getline(split, arg, ';');) args += " " + Q(arg);
        std::ofstream(dir / "f.xllt") << Letters(letters);
        const std::string name = entry.path().filename().string();
        auto r = RunCli(dir, "convert" + args + " --filter " + Q(dir / "f.xllt") + " --to-zgly " + Q(dir / "o.zgly"));
        ASSERT_EQ(r.Status, 0) << name << ": " << r.Err;
        auto got = FileBytes(dir / "o.zgly");
        if (got != expected) {
            ADD_FAILURE() << name << " differs from its reference (" << got.size() << " bytes, expected "
                          << expected.size() << ")";
            PutFile(dir / "ref.zgly", expected);
            ExpectSameGlyphs(*ReadZgly(dir / "ref.zgly"), *ReadZgly(dir / "o.zgly"), name);
        }
        ++files;
    }
    EXPECT_EQ(files, 19);
}

TEST(CliFonts, FontAndSourceErrors) {
    CScratchDir dir;
    const std::pair<std::string, std::string> cases[] = {
        {"--from-font 'DejaVu Sans' --size 0", "Parameter Error:\n Invalid Font Size(0)\n"},
        {"--from-font 'DejaVu Sans' --cell-height=-5", "Parameter Error:\n Invalid Font Size(-5)\n"},
        {"--from-font NoSuchFace --cell-height 12", "Parameter Error:\n Font(NoSuchFace) is not installed.\n"},
        {"--from-font 'DejaVu Sans' --size 12 --width fixed --fixed-width 0", "Parameter Error:\n Invalid fixed width(0)\n"},
        {"--from-zgly " + Q(dir / "in.zgly") + " --filter " + Q(dir / "none.xllt"),
         "Parameter Error:\n Filter file(" + (dir / "none.xllt").string() + ") not exists\n"},
    };
    MakeLatinFont(dir, false);
    for (const auto& [options, message] : cases) {
        auto r = RunCli(dir, "convert " + options + " --to-zgly " + Q(dir / "x.zgly"));
        EXPECT_EQ(r.Status, 1) << options;
        EXPECT_EQ(r.Err, message) << options;
    }
    auto r = RunCli(dir, "convert --from-lc " + Q(dir / "missing.dat") + " --to-zgly " + Q(dir / "x.zgly"));
    EXPECT_EQ(r.Status, 1);
    EXPECT_EQ(r.Err, "Can not open a file (" + (dir / "missing.dat").string() + ").\n");
    EXPECT_FALSE(std::filesystem::exists(dir / "x.zgly"));
}

TEST(CliGrids, ZglyToGlyphGridAndBackKeepsTheGlyphs) {
    CScratchDir dir;
    for (bool vertical : {false, true}) {
        auto in = MakeLatinFont(dir, vertical);
        // The shipped order by name, without its extension.
        auto r = RunCli(dir, "convert --from-zgly " + Q(in) + " --to-bmp " + Q(dir / "grid.bmp") + " --to-order Latin1");
        ASSERT_EQ(r.Status, 0) << r.Err;
        r = RunCli(dir, "convert --from-bmp " + Q(dir / "grid.bmp") + " --from-order latin1.xlor --colors 4 --to-zgly " +
                            Q(dir / "back.zgly"));
        ASSERT_EQ(r.Status, 0) << r.Err;
        ExpectSameGlyphs(*ReadZgly(in), *ReadZgly(dir / "back.zgly"), vertical ? "vertical" : "horizontal");
    }
}

TEST(CliGrids, GridOptionsShapeThePicture) {
    CScratchDir dir;
    auto in = MakeLatinFont(dir, false);
    std::ofstream(dir / "o.xlor") << "<letter-order version=\"1.0\"><body><area width=\"4\"/><order>ABCDEFGH</order>"
                                     "</body></letter-order>";
    auto grid = [&](const std::string& options) {
        std::filesystem::remove(dir / "g.bmp");
        auto r = RunCli(dir, "convert --from-zgly " + Q(in) + " --to-bmp " + Q(dir / "g.bmp") + " --to-order " +
                                 Q(dir / "o.xlor") + " " + options);
        EXPECT_EQ(r.Status, 0) << options << ": " << r.Err;
        return Slurp(dir / "g.bmp");
    };
    // Header: file size, pixel offset (after 256 palette entries), 8 bits, resolution, colour counts.
    auto plain = grid("");
    ASSERT_GT(plain.size(), 1078u);
    EXPECT_EQ(plain.substr(0, 2), "BM");
    EXPECT_EQ(Le32(plain, 2), plain.size());
    EXPECT_EQ(Le32(plain, 10), 1078u);
    EXPECT_EQ(Le32(plain, 14), 40u);
    EXPECT_EQ(Le32(plain, 26), 0x00080001u);
    EXPECT_EQ(Le32(plain, 34), plain.size() - 1078);
    EXPECT_EQ(Le32(plain, 38), 2834u);
    EXPECT_EQ(Le32(plain, 46), 0u);
    EXPECT_EQ(Le32(plain, 50), 0u);
    const uint32_t inkW = Le32(plain, 18) / 4 - 4, inkH = Le32(plain, 22) / 2 - 6;

    // {options, picture width, height}: cells plus 4 (horizontal) columns and 6 rows of frame.
    const struct {
        std::string Options;
        uint32_t Width, Height;
    } sizes[] = {
        {"--cell 20x24", 4 * 24, 2 * 30},
        {"--cell 20x24 --offset 3,4", 4 * 24, 2 * 30},
        {"--margins 1,5", 4 * (inkW + 2 + 4), 2 * (inkH + 10 + 6)},
        {"--margins 1,5,0,2", 4 * (inkW + 1 + 4), 2 * (inkH + 7 + 6)},
    };
    for (const auto& s : sizes) {
        auto b = grid(s.Options);
        ASSERT_GT(b.size(), 54u) << s.Options;
        EXPECT_EQ(Le32(b, 18), s.Width) << s.Options;
        EXPECT_EQ(Le32(b, 22), s.Height) << s.Options;
        EXPECT_EQ(Le32(b, 2), b.size()) << s.Options;
        EXPECT_EQ(b.size(), 1078 + ((s.Width + 3) & ~3u) * s.Height) << s.Options;
    }
    // Two margins mean right = left and bottom = top.
    EXPECT_EQ(grid("--margins 1,5"), grid("--margins 1,5,1,5"));
    EXPECT_NE(grid("--cell 20x24 --offset 3,4"), grid("--cell 20x24"));
    EXPECT_EQ(grid("--cell 20x24 --offset 0,0"), grid("--cell 20x24 --offset 0,0"));
    // The inner frame (just inside the black outer frame) is the grid colour, or white without a grid.
    auto framed = grid(""), bare = grid("--no-grid");
    const std::size_t topRow = 1078 + ((Le32(framed, 18) + 3) & ~3u) * (Le32(framed, 22) - 2);
    EXPECT_EQ(framed[topRow + 3], 4);
    EXPECT_EQ(bare[topRow + 3], 0);
    EXPECT_EQ(framed.size(), bare.size());

    // --colors picks the levels the picture is read with.
    for (auto [colors, bpp] : {std::pair{"2", 1}, std::pair{"4", 2}, std::pair{"8", 3}, std::pair{"16", 4}}) {
        grid("");
        auto r = RunCli(dir, "convert --from-bmp " + Q(dir / "g.bmp") + " --from-order " + Q(dir / "o.xlor") +
                                 " --colors " + colors + " --to-zgly " + Q(dir / "b.zgly"));
        ASSERT_EQ(r.Status, 0) << r.Err;
        auto z = FileBytes(dir / "b.zgly");
        EXPECT_EQ(z[U32At(z, 24 + 8) + 6], bpp) << colors;
    }
    auto r = RunCli(dir, "convert --from-zgly " + Q(in) + " --to-bmp " + Q(dir / "bad.bmp") + " --to-order NoSuchOrder");
    EXPECT_EQ(r.Status, 1);
    EXPECT_EQ(r.Err, "Parameter Error:\n File(NoSuchOrder) not exists.\n");
    EXPECT_FALSE(std::filesystem::exists(dir / "bad.bmp"));
}

TEST(CliLists, OrdersAndFonts) {
    CScratchDir dir;
    auto r = RunCli(dir, "list-orders");
    ASSERT_EQ(r.Status, 0) << r.Err;
    EXPECT_NE(r.Out.find("Latin1.xlor\t16x"), std::string::npos) << r.Out;
    EXPECT_NE(r.Out.find("JIS-X-0208.xlor\t94x94"), std::string::npos) << r.Out;
    r = RunCli(dir, "list-orders --json");
    EXPECT_EQ(r.Out.front(), '[');
    EXPECT_NE(r.Out.find("\"file\":\"ASCII.xlor\""), std::string::npos);
    r = RunCli(dir, "list-fonts --json");
    ASSERT_EQ(r.Status, 0);
    EXPECT_NE(r.Out.find("{\"family\":\"DejaVu Sans\",\"scalable\":true"), std::string::npos) << r.Out.substr(0, 400);
    r = RunCli(dir, "list-fonts");
    EXPECT_NE(r.Out.find("IPAGothic\tscalable\t@IPAGothic"), std::string::npos) << r.Out;
    EXPECT_EQ(RunCli(dir, "list-fonts --verbose").Status, 2);
}
