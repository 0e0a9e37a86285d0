#include <gtest/gtest.h>
#include <png.h>

#include <fstream>

#include "cli_runner.h"
#include "synthetic_font.h"
#include "zgly/font_block_set.h"
#include "zgly/text_renderer.h"

namespace {

std::filesystem::path MakeFont(const CScratchDir& dir) {
    SyntheticFontSpec fontSpec;
    fontSpec.Codes = CodeRange(0x20, 95);
    auto font = MakeSyntheticFont(fontSpec);
    font->AlternateChar.Set(u'?');
    WriteSyntheticZgly(*font, dir / "f.zgly", 1, 2);
    return dir / "f.zgly";
}

// Reads a PNG back through libpng as 8-bit RGB; empty on failure.
CRgbImage ReadPng(const std::filesystem::path& path) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    CRgbImage out;
    if (!png_image_begin_read_from_file(&image, path.c_str())) return out;
    image.format = PNG_FORMAT_RGB;
    out.Rgb.resize(PNG_IMAGE_SIZE(image));
    if (!png_image_finish_read(&image, nullptr, out.Rgb.data(), 0, nullptr)) return CRgbImage{};
    out.Width = static_cast<int>(image.width);
    out.Height = static_cast<int>(image.height);
    return out;
}

CRgbImage DrawHere(const std::filesystem::path& font, const std::string& text, const CPreviewOptions& options) {
    CFontBlockSet set;
    LoadZglyForPreview(font, set);
    return CTextRenderer(set).DrawText(text, options);
}

}  // namespace

TEST(CliPreview, WritesTheRenderedTextAsPng) {
    CScratchDir dir;
    auto font = MakeFont(dir);
    // Backslash-n from the shell is a line feed; the missing character draws the alternate glyph.
    auto r = RunCli(dir, "preview " + Q(font) + " --text 'Ag\\nq\xC3\xA9!' --out " + Q(dir / "t.png") +
                             " --zoom 3 --ink 'C02010' --paper=#fffff0");
    ASSERT_EQ(r.Status, 0) << r.Err;
    EXPECT_EQ(r.Err, "Warning: The font lacks a char ('\xC3\xA9': U+00E9); the alternate glyph is drawn.\n");
    CPreviewOptions options;
    options.Zoom = 3;
    options.Ink = 0xC02010;
    options.Paper = 0xFFFFF0;
    CRgbImage expected = DrawHere(font, "Ag\nq?!", options);
    CRgbImage got = ReadPng(dir / "t.png");
    ASSERT_EQ(got.Width, expected.Width);
    ASSERT_EQ(got.Height, expected.Height);
    EXPECT_EQ(got.Rgb, expected.Rgb);
    EXPECT_EQ(got.Pixel(0, 0), 0xFFFFF0u);
    EXPECT_NE(std::count(got.Rgb.begin(), got.Rgb.end(), 0xC0), 0);

    // The zoom's edges: each pixel drawn as a 1 x 1 or a 16 x 16 block.
    for (int zoom : {1, 16}) {
        r = RunCli(dir, "preview " + Q(font) + " --text A --zoom " + std::to_string(zoom) + " --out " + Q(dir / "z.png"));
        ASSERT_EQ(r.Status, 0) << zoom << ": " << r.Err;
        options = CPreviewOptions{};
        options.Zoom = zoom;
        EXPECT_EQ(ReadPng(dir / "z.png").Rgb, DrawHere(font, "A", options).Rgb) << zoom;
    }
    r = RunCli(dir, "preview " + Q(font) + " --sheet --guides --out " + Q(dir / "s.png"));
    ASSERT_EQ(r.Status, 0) << r.Err;
    got = ReadPng(dir / "s.png");
    EXPECT_GT(got.Width, 16 * 15 * 2);  // 16 labelled places a row at zoom 2
}

TEST(CliPreview, BadFilesAndUsage) {
    CScratchDir dir;
    auto font = MakeFont(dir);
    auto png = dir / "x.png";
    auto r = RunCli(dir, "preview " + Q(dir / "none.zgly") + " --text A --out " + Q(png));
    EXPECT_EQ(r.Status, 1);
    EXPECT_EQ(r.Err, "Parameter Error:\n File(" + (dir / "none.zgly").string() + ") not exists.\n");
    std::ofstream(dir / "junk.zgly") << "not a font at all, but long enough";
    r = RunCli(dir, "preview " + Q(dir / "junk.zgly") + " --text A --out " + Q(png));
    EXPECT_EQ(r.Status, 1);
    EXPECT_EQ(r.Err, "ZGLY File Error:\n The file is not ZGLY file\n");
    EXPECT_FALSE(std::filesystem::exists(png));
    r = RunCli(dir, "preview " + Q(font) + " --text A --out " + Q(dir / "no-dir" / "x.png"));
    EXPECT_EQ(r.Status, 1);
    EXPECT_NE(r.Err.find("Can not open a file"), std::string::npos) << r.Err;

    for (const char* args : {"--text A", "--text A --sheet --out x.png", "--out x.png",
                                    "--text A --out x.png --zoom 0", "--text A --out x.png --zoom 17", "--text A --out x.png --ink red",
                                    "--text A --out x.png --sheet=1"}) {
        r = RunCli(dir, "preview " + Q(font) + " " + args);
        EXPECT_EQ(r.Status, 2) << args;
        EXPECT_NE(r.Err.find("usage:"), std::string::npos) << args;
    }
}
