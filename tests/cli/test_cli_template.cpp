#include <gtest/gtest.h>

#include <fstream>

#include "bmpfont/bmp_file.h"
#include "bmpfont/grid_picture_file.h"
#include "cli_runner.h"
#include "core/bmp_image.h"
#include "zgly/binary_file.h"

TEST(CliTemplate, DrawsABlankGridThatReadsBackAsNoInk) {
    CScratchDir dir;
    auto order = dir / "o.xlor";
    std::ofstream(order) << "<letter-order version=\"1.0\"><body><area width=\"4\"/><order>ABCDEFG</order></body>"
                            "</letter-order>";
    auto r = RunCli(dir, "template --order " + Q(order) + " --cell 8x10 --baseline 7 --out " + Q(dir / "t.bmp"));
    ASSERT_EQ(r.Status, 0) << r.Err;
    EXPECT_EQ(r.Err, "");
    CBinaryFile file(dir / "t.bmp");
    CBmpImage pic;
    LoadBmp(file, pic);
    // Pitch 12 x 16 in 4 x 2 cells; the marks white in the black border (baseline
    // at row 7 + 2, width lines at 10 + 3); glyph areas and width-line rows blank.
    ASSERT_EQ(pic.Width, 48);
    ASSERT_EQ(pic.Height, 32);
    for (int y = 0; y < 16; ++y) EXPECT_EQ(pic.GetPixel(0, y), y == 9 || y == 13 ? 0u : 1u) << y;
    for (int c = 0; c < 4; ++c)
        for (int y = 2; y < 14; ++y)
            for (int x = 2; x < 10; ++x) EXPECT_EQ(pic.GetPixel(c * 12 + x, 16 + y), y == 12 ? 2u : 0u) << c;

    r = RunCli(dir, "convert --from-bmp " + Q(dir / "t.bmp") + " --from-order " + Q(order) + " --to-zgly " +
                        Q(dir / "t.zgly"));
    EXPECT_EQ(r.Status, 1);
    EXPECT_EQ(r.Err.rfind("BMP Error:\n No cell of BMP(" + (dir / "t.bmp").string() + ") holds any ink", 0), 0u)
        << r.Err;

    // Vertical, 4 colours, as PNG: pitch 14 x 14; the baseline 7 columns from the
    // right edge puts the origin at column 1, its mark one column left of it.
    r = RunCli(dir, "template --order " + Q(order) + " --cell 8x10 --baseline 7 --colors 4 --vertical --out " +
                        Q(dir / "t.png"));
    ASSERT_EQ(r.Status, 0) << r.Err;
    CBmpImage png;
    LoadGridPicture(dir / "t.png", 2, png);
    ASSERT_EQ(png.Width, 56);
    ASSERT_EQ(png.Height, 28);
    for (int x = 0; x < 14; ++x) EXPECT_EQ(png.GetPixel(x, 0), x == 2 || x == 4 ? 0u : 3u) << x;
    r = RunCli(dir, "convert --from-bmp " + Q(dir / "t.png") + " --from-order " + Q(order) + " --colors 4 --to-zgly " +
                        Q(dir / "t.zgly"));
    EXPECT_EQ(r.Status, 1);
    EXPECT_NE(r.Err.find("holds any ink"), std::string::npos) << r.Err;

    const std::pair<std::string, std::string> usage[] = {
        {"--cell 8x10 --out x.bmp", "template needs --baseline N"},
        {"--cell 8x10 --baseline 7 --colors 3 --out x.bmp", "--colors takes 2|4|8|16, not '3'"},
        {"--cell 8 --baseline 7 --out x.bmp", "--cell needs WxH, not '8'"},
        {"--cell 0x4 --baseline 7 --out x.bmp", "--cell needs a whole number from 1, not '0'"}};
    for (const auto& [args, message] : usage) {
        r = RunCli(dir, "template --order " + Q(order) + " " + args);
        EXPECT_EQ(r.Status, 2) << args;
        EXPECT_EQ(r.Err.rfind("glyphwright-cli: " + message + "\n", 0), 0u) << r.Err;
    }
}
