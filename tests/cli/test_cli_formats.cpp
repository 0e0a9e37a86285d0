// The command line with every input and output: glyph grids, installed fonts,
// LC Font files, filters and the listing commands.
#include <gtest/gtest.h>

#include <fstream>

#include "cli_runner.h"
#include "glyph_compare.h"
#include "synthetic_font.h"
#include "zgly_test_util.h"

namespace {

std::filesystem::path MakeLatinFont(const CScratchDir& dir, const std::string& name, bool vertical) {
    SyntheticFontSpec fontSpec;
    fontSpec.Codes = CodeRange(0x21, 94);
    fontSpec.Vertical = vertical;
    auto font = MakeSyntheticFont(fontSpec);
    WriteSyntheticZgly(*font, dir / name);
    return dir / name;
}

}  // namespace

TEST(CliFormats, ZglyToGlyphGridAndBackKeepsTheGlyphs) {
    CScratchDir dir;
    for (bool vertical : {false, true}) {
        auto in = MakeLatinFont(dir, "in.zgly", vertical);
        // The shipped order by name, without its extension.
        auto r = RunCli(dir, "convert --from-zgly " + Q(in) + " --to-bmp " + Q(dir / "grid.bmp") + " --to-order Latin1");
        ASSERT_EQ(r.Status, 0) << r.Err;
        r = RunCli(dir, "convert --from-bmp " + Q(dir / "grid.bmp") + " --from-order latin1.xlor --colors 4 --to-zgly " +
                            Q(dir / "back.zgly"));
        ASSERT_EQ(r.Status, 0) << r.Err;
        auto original = ReadZgly(in);
        auto back = ReadZgly(dir / "back.zgly");
        ExpectSameGlyphs(*original, *back, vertical ? "vertical" : "horizontal");
    }
}

TEST(CliFormats, GlyphGridWithCellSizeAndNoGrid) {
    CScratchDir dir;
    auto in = MakeLatinFont(dir, "in.zgly", false);
    auto r = RunCli(dir, "convert --from-zgly " + Q(in) + " --to-bmp " + Q(dir / "grid.bmp") +
                             " --to-order ASCII --no-grid --cell 20x24");
    ASSERT_EQ(r.Status, 0) << r.Err;
    // 16 columns of 20 + 4 pixels.
    auto bytes = FileBytes(dir / "grid.bmp");
    ASSERT_GT(bytes.size(), 26u);
    EXPECT_EQ(bytes[18] | (bytes[19] << 8), 16 * 24);
    r = RunCli(dir, "convert --from-zgly " + Q(in) + " --to-bmp " + Q(dir / "bad.bmp") + " --to-order NoSuchOrder");
    EXPECT_EQ(r.Status, 1);
    EXPECT_EQ(r.Err, "Parameter Error:\n File(NoSuchOrder) not exists.\n");
    EXPECT_FALSE(std::filesystem::exists(dir / "bad.bmp"));
}

TEST(CliFormats, InstalledFontWithFilter) {
    CScratchDir dir;
    {
        std::ofstream f(dir / "abc.xllt");
        f << "<letter-list version=\"1.0\"><body><letter>ABC</letter></body></letter-list>";
    }
    auto r = RunCli(dir, "convert --from-font 'DejaVu Sans' --size 16 --levels 16 --filter " + Q(dir / "abc.xllt") +
                             " --to-zgly " + Q(dir / "abc.zgly"));
    ASSERT_EQ(r.Status, 0) << r.Err;
    auto font = ReadZgly(dir / "abc.zgly");
    EXPECT_EQ(font->GlyphCount(), 4u);  // A, B, C and the space
    EXPECT_EQ(font->Bpp.Value, 4);

    r = RunCli(dir, "convert --from-font 'DejaVu Sans' --size 0 --to-zgly " + Q(dir / "x.zgly"));
    EXPECT_EQ(r.Status, 1);
    EXPECT_EQ(r.Err, "Parameter Error:\n Invalid Font Size(0)\n");
    r = RunCli(dir, "convert --from-font NoSuchFace --cell-height 12 --to-zgly " + Q(dir / "x.zgly"));
    EXPECT_EQ(r.Status, 1);
    EXPECT_EQ(r.Err, "Parameter Error:\n Font(NoSuchFace) is not installed.\n");
    r = RunCli(dir, "convert --from-lc " + Q(dir / "missing.dat") + " --to-zgly " + Q(dir / "x.zgly"));
    EXPECT_EQ(r.Status, 1);
    EXPECT_FALSE(std::filesystem::exists(dir / "x.zgly"));
}

TEST(CliFormats, ListsOrdersAndFonts) {
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
