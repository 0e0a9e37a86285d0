// The command line with the other inputs and outputs: installed fonts against
// reference renderings and merged, glyph grids and their templates, previews
// and the listings.
#include <gtest/gtest.h>
#include <png.h>

#include <algorithm>
#include <sstream>

#include "bmpfont/bmp_file.h"
#include "bmpfont/grid_picture_file.h"
#include "cli_runner.h"
#include "bmpfont/bmp_image.h"
#include "glyph_compare.h"
#include "zgly/binary_file.h"
#include "zgly/font_block_set.h"
#include "preview/text_renderer.h"

namespace {

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
        WriteText(dir / "f.xllt", "<letter-list version=\"1.0\"><body><letter>" + letters + "</letter></body></letter-list>");
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

// The later font takes the first one's size and levels; each glyph is the one
// its own font's run makes.
TEST(CliFonts, DejaVuAndIpaGothicMergeAsTheirOwnRuns) {
    CScratchDir dir;
    const std::string chars = " --chars 'Ag0,' --range U+3042-U+3044 --to-zgly ";
    auto r = RunCli(dir, "convert --from-font 'DejaVu Sans' --size 16 --levels 4 --from-font IPAGothic" + chars +
                             Q(dir / "m.zgly"));
    ASSERT_EQ(r.Status, 0) << r.Err;
    auto m = FileBytes(dir / "m.zgly");
    const std::size_t cglp = U32At(m, 24 + 8);
    EXPECT_EQ(r.Err, FormatString("Wrote %s: 8 glyphs (DejaVu Sans: 5, IPAGothic: 3), cell %dx%d, 2 bits per pixel, "
                                  "%d bytes, 0 warnings\n",
                                  (dir / "m.zgly").c_str(), m[cglp], m[cglp + 1], static_cast<int>(m.size())));
    ASSERT_EQ(RunCli(dir, "convert --from-font 'DejaVu Sans' --size 16 --levels 4" + chars + Q(dir / "d.zgly")).Status, 0);
    ASSERT_EQ(RunCli(dir, "convert --from-font IPAGothic --size 16 --levels 4" + chars + Q(dir / "i.zgly")).Status, 0);
    auto merged = ReadZgly(dir / "m.zgly");
    auto expect = [&](const std::filesystem::path& single, std::u16string_view codes) {
        auto own = ReadZgly(single);
        for (char16_t c : codes) {
            const CGlyph *g = merged->FindGlyph(c), *w = own->FindGlyph(c);
            ASSERT_TRUE(g && w) << static_cast<int>(c);
            EXPECT_TRUE(g->SameAs(*w)) << static_cast<int>(c);
            EXPECT_EQ(g->Pixels, w->Pixels) << static_cast<int>(c);
        }
    };
    expect(dir / "d.zgly", u"Ag0,");
    expect(dir / "i.zgly", u"\u3042\u3043\u3044");
}

// Rendering on several threads merges in code order: the file, the summary
// line and the warnings are those of one thread, whatever the depth, the
// direction, the soft anti-aliasing, a selection of characters, a variable
// font's axis or a colour bitmap font.
TEST(CliFonts, ThreadCountsMakeTheSameBytes) {
    CScratchDir dir;
    WriteText(dir / "f.xllt", "<letter-list version=\"1.0\"><body><letter>AB\u0e01\u0531\u3042\u10d0</letter>"
                              "</body></letter-list>");
    const std::vector<std::string> cases = {
        "--from-font 'DejaVu Sans' --size 16 --levels 2",
        "--from-font 'DejaVu Sans' --size 16 --levels 16 --no-soft-aa",
        "--from-font 'DejaVu Sans' --size 12 --levels 4 --width margin",
        "--from-font @IPAGothic --size 16 --levels 16 --no-soft-aa",
        "--from-font IPAGothic --size 20 --levels 8 --range U+3000-U+4FFF --filter " + Q(dir / "f.xllt"),
        "--from-font 'DejaVu Sans' --size 12 --levels 16 --from-font IPAGothic --range U+0020-U+30FF",
        "--from-font /usr/share/fonts/truetype/inter-vf/Inter.var.ttf --axis wght=700 --size 14 --levels 4",
        "--from-font /usr/share/fonts/truetype/noto/NotoColorEmoji.ttf --size 20 --levels 16",
    };
    for (const std::string& c : cases) {
        auto one = RunCli(dir, "convert " + c + " --threads 1 --to-zgly " + Q(dir / "1.zgly"));
        auto four = RunCli(dir, "convert " + c + " --threads 4 --to-zgly " + Q(dir / "4.zgly"));
        ASSERT_EQ(one.Status, 0) << c << ": " << one.Err;
        ASSERT_EQ(four.Status, 0) << c << ": " << four.Err;
        EXPECT_TRUE(FileBytes(dir / "1.zgly") == FileBytes(dir / "4.zgly")) << c;
        std::string err4 = four.Err;
        err4.replace(err4.find("4.zgly"), 6, "1.zgly");
        EXPECT_EQ(one.Err, err4) << c;
    }
    // The default, every core, and the most, 256, are the same too.
    ASSERT_EQ(RunCli(dir, "convert " + cases[0] + " --threads 1 --to-zgly " + Q(dir / "1.zgly")).Status, 0);
    for (const char* threads : {"", " --threads 256"}) {
        ASSERT_EQ(RunCli(dir, "convert " + cases[0] + threads + " --to-zgly " + Q(dir / "all.zgly")).Status, 0) << threads;
        EXPECT_TRUE(FileBytes(dir / "all.zgly") == FileBytes(dir / "1.zgly")) << threads;
    }
    for (const char* bad : {"0", "257", "two"}) {
        auto r = RunCli(dir, "convert " + cases[0] + " --threads " + bad + " --to-zgly " + Q(dir / "x.zgly"));
        EXPECT_EQ(r.Status, 2) << bad;
        const std::string expected = std::string(bad) == "two" ? "--threads needs a whole number, not 'two'"
                                                               : "--threads takes 1 to 256, not '" + std::string(bad) + "'";
        EXPECT_NE(r.Err.find(expected), std::string::npos) << r.Err;
        EXPECT_FALSE(std::filesystem::exists(dir / "x.zgly"));
    }
}

TEST(CliFonts, SourceErrors) {
    CScratchDir dir;
    auto in = MakeFont(dir, "in.zgly");
    const std::pair<std::string, std::string> cases[] = {
        {"--from-font 'DejaVu Sans' --size 0", "Invalid Font Size(0)"},
        {"--from-font NoSuchFace --cell-height 12", "Font(NoSuchFace) is not installed."},
        {"--from-font 'DejaVu Sans' --size 12 --width fixed --fixed-width 0", "Invalid fixed width(0)"},
        {"--from-font 'DejaVu Sans' --style Heavy --size 12",
         "Font(DejaVu Sans) has no style Heavy; its styles are Bold, Bold Oblique, Book, Condensed, Condensed Bold, "
         "Condensed Bold Oblique, Condensed Oblique, ExtraLight, Oblique."},
        {"--from-font 'DejaVu Sans' --size 12 --from-font @IPAGothic",
         "Vertical and horizontal sources can not be mixed: DejaVu Sans is horizontal, but @IPAGothic is vertical."},
        {"--from-zgly " + Q(in) + " --filter " + Q(dir / "none.xllt"), "Filter file(" + (dir / "none.xllt").string() + ") not exists"},
        {"--from-zgly " + Q(in) + " --chars-file " + Q(dir / "none.txt"),
         "Characters file(" + (dir / "none.txt").string() + ") does not exist."},
        {"--from-zgly " + Q(in) + " --to-bmp " + Q(dir / "x.bmp") + " --to-order NoSuchOrder", "File(NoSuchOrder) not exists."},
    };
    for (const auto& [options, message] : cases) {
        auto r = RunCli(dir, "convert " + options + (options.find("--to-") == std::string::npos ? " --to-zgly " + Q(dir / "x.zgly") : ""));
        EXPECT_EQ(r.Status, 1) << options;
        EXPECT_EQ(r.Err, "Parameter Error:\n " + message + "\n") << options;
    }
    auto r = RunCli(dir, "convert --from-lc " + Q(dir / "missing.dat") + " --to-zgly " + Q(dir / "x.zgly"));
    EXPECT_EQ(r.Status, 1);
    EXPECT_EQ(r.Err, "Can not open a file (" + (dir / "missing.dat").string() + ").\n");
    EXPECT_FALSE(std::filesystem::exists(dir / "x.zgly") || std::filesystem::exists(dir / "x.bmp"));
}

TEST(CliFonts, ListingsAndStyles) {
    CScratchDir dir;
    auto r = RunCli(dir, "list-orders");
    ASSERT_EQ(r.Status, 0) << r.Err;
    EXPECT_NE(r.Out.find("Latin1.xlor\t16x"), std::string::npos) << r.Out;
    EXPECT_NE(r.Out.find("JIS-X-0208.xlor\t94x94"), std::string::npos) << r.Out;
    EXPECT_EQ(RunCli(dir, "list-orders --json").Out.rfind("[{\"file\":\"ASCII.xlor\",\"title\":\"ASCII\",", 0), 0u);
    r = RunCli(dir, "list-fonts");
    EXPECT_NE(r.Out.find("\nDejaVu Sans\tscalable\t\tBold,Bold Oblique,Book,"), std::string::npos) << r.Out;
    EXPECT_NE(r.Out.find("IPAGothic\tscalable\t@IPAGothic"), std::string::npos) << r.Out;
    for (const std::string style : {"", "Book", "bold"}) {
        r = RunCli(dir, "convert --from-font 'DejaVu Sans' " + (style.empty() ? "" : "--style " + style) +
                            " --size 16 --chars W --to-zgly " + Q(dir / (style + ".zgly")));
        ASSERT_EQ(r.Status, 0) << r.Err;
    }
    EXPECT_EQ(FileBytes(dir / "Book.zgly"), FileBytes(dir / ".zgly"));
    EXPECT_NE(FileBytes(dir / "bold.zgly"), FileBytes(dir / ".zgly"));
}

TEST(CliGrids, GridOptionsShapeThePicture) {
    CScratchDir dir;
    auto in = MakeFont(dir, "in.zgly", {.First = 0x21, .Count = 94});
    WriteText(dir / "o.xlor", "<letter-order version=\"1.0\"><body><area width=\"4\"/><order>ABCDEFGH</order></body></letter-order>");
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
    for (auto [at, value] : {std::pair<std::size_t, uint32_t>{2, plain.size()}, {10, 1078}, {14, 40}, {26, 0x00080001},
                             {34, plain.size() - 1078}, {38, 2834}, {46, 0}, {50, 0}})
        EXPECT_EQ(Le32(plain, at), value) << at;
    const uint32_t inkW = Le32(plain, 18) / 4 - 4, inkH = Le32(plain, 22) / 2 - 6;

    // {options, picture width, height}: cells plus 4 (horizontal) columns and 6 rows of frame.
    const struct {
        std::string Options;
        uint32_t Width, Height;
    } sizes[] = {
        {"--cell 20x24", 4 * 24, 2 * 30},
        {"--margins 1,5", 4 * (inkW + 2 + 4), 2 * (inkH + 10 + 6)},
        {"--margins 1,5,0,2", 4 * (inkW + 1 + 4), 2 * (inkH + 7 + 6)},
    };
    for (const auto& s : sizes) {
        auto b = grid(s.Options);
        ASSERT_GT(b.size(), 54u) << s.Options;
        EXPECT_EQ(Le32(b, 18), s.Width) << s.Options;
        EXPECT_EQ(Le32(b, 22), s.Height) << s.Options;
        EXPECT_EQ(b.size(), 1078 + ((s.Width + 3) & ~3u) * s.Height) << s.Options;
    }
    // Two margins mean right = left and bottom = top; an offset moves the glyphs.
    EXPECT_EQ(grid("--margins 1,5"), grid("--margins 1,5,1,5"));
    EXPECT_NE(grid("--cell 20x24 --offset 3,4"), grid("--cell 20x24"));
    // The inner frame (just inside the black outer frame) is the grid colour, or white without a grid.
    auto bare = grid("--no-grid");
    const std::size_t topRow = 1078 + ((Le32(plain, 18) + 3) & ~3u) * (Le32(plain, 22) - 2);
    EXPECT_EQ(plain[topRow + 3], 4);
    EXPECT_EQ(bare[topRow + 3], 0);
    EXPECT_EQ(plain.size(), bare.size());

    // --colors picks the levels the picture is read with.
    grid("");
    for (auto [colors, bpp] : {std::pair{"2", 1}, std::pair{"4", 2}, std::pair{"8", 3}, std::pair{"16", 4}}) {
        auto r = RunCli(dir, "convert --from-bmp " + Q(dir / "g.bmp") + " --from-order " + Q(dir / "o.xlor") +
                                 " --colors " + colors + " --to-zgly " + Q(dir / "b.zgly"));
        ASSERT_EQ(r.Status, 0) << r.Err;
        auto z = FileBytes(dir / "b.zgly");
        EXPECT_EQ(z[U32At(z, 24 + 8) + 6], bpp) << colors;
    }
}

TEST(CliGrids, TemplateDrawsABlankGridThatReadsBackAsNoInk) {
    CScratchDir dir;
    auto order = dir / "o.xlor";
    WriteText(order, "<letter-order version=\"1.0\"><body><area width=\"4\"/><order>ABCDEFG</order></body></letter-order>");
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
    for (const char* t : {"t.bmp", "t.png"}) {
        r = RunCli(dir, "convert --from-bmp " + Q(dir / t) + " --from-order " + Q(order) +
                            (t[2] == 'p' ? " --colors 4" : "") + " --to-zgly " + Q(dir / "t.zgly"));
        EXPECT_EQ(r.Status, 1);
        EXPECT_EQ(r.Err.rfind("BMP Error:\n No cell of BMP(" + (dir / t).string() + ") holds any ink", 0), 0u) << r.Err;
    }
    const std::pair<std::string, std::string> usage[] = {
        {"--cell 8x10 --out x.bmp", "template needs --baseline N"},
        {"--cell 0x4 --baseline 7 --out x.bmp", "--cell needs a whole number from 1, not '0'"}};
    for (const auto& [args, message] : usage) {
        r = RunCli(dir, "template --order " + Q(order) + " " + args);
        EXPECT_EQ(r.Status, 2) << args;
        EXPECT_EQ(r.Err.rfind("glyphwright-cli: " + message + "\n", 0), 0u) << r.Err;
    }
}

// preview writes what the text renderer draws, as an RGB PNG.
TEST(CliPreview, WritesTheRenderedTextAsPng) {
    CScratchDir dir;
    auto font = MakeFont(dir, "f.zgly", {.Alt = true});
    // Backslash-n from the shell is a line feed; the missing character draws the alternate glyph.
    auto r = RunCli(dir, "preview " + Q(font) + " --text 'Ag\\nq\xC3\xA9!' --out " + Q(dir / "t.png") +
                             " --zoom 3 --ink 'C02010' --paper=#fffff0");
    ASSERT_EQ(r.Status, 0) << r.Err;
    EXPECT_EQ(r.Err, "Warning: The font lacks a char ('\xC3\xA9': U+00E9); the alternate glyph is drawn.\n");
    // The picture a preview wrote, as RGB bytes (empty when unreadable), and its width.
    auto readRgb = [](const std::filesystem::path& path, int& width) {
        png_image image{};
        image.version = PNG_IMAGE_VERSION;
        std::vector<uint8_t> rgb;
        if (!png_image_begin_read_from_file(&image, path.c_str())) return rgb;
        image.format = PNG_FORMAT_RGB;
        rgb.resize(PNG_IMAGE_SIZE(image));
        if (!png_image_finish_read(&image, nullptr, rgb.data(), 0, nullptr)) rgb.clear();
        width = static_cast<int>(image.width);
        return rgb;
    };
    CFontBlockSet set;
    LoadZglyForPreview(font, set);
    // {text, zoom, ink, paper} as drawn by the renderer; the zoom's edges 1 and 16.
    for (auto [text, zoom, ink, paper] : {std::tuple{"Ag\nq?!", 3, 0xC02010u, 0xFFFFF0u}, {"A", 1, 0u, 0xFFFFFFu}, {"A", 16, 0u, 0xFFFFFFu}}) {
        if (zoom != 3) r = RunCli(dir, "preview " + Q(font) + " --text A --zoom " + std::to_string(zoom) + " --out " + Q(dir / "t.png"));
        ASSERT_EQ(r.Status, 0) << zoom << ": " << r.Err;
        int width = 0;
        std::vector<uint8_t> rgb = readRgb(dir / "t.png", width);
        ASSERT_FALSE(rgb.empty()) << zoom;
        CPreviewOptions options;
        options.Zoom = zoom;
        options.Ink = ink;
        options.Paper = paper;
        CRgbImage expected = CTextRenderer(set).DrawText(text, options);
        EXPECT_EQ(width, expected.Width) << zoom;
        EXPECT_EQ(rgb, expected.Rgb) << zoom;
        EXPECT_EQ(rgb[0] << 16 | rgb[1] << 8 | rgb[2], static_cast<int>(paper)) << zoom;
        EXPECT_NE(std::count(rgb.begin(), rgb.end(), ink >> 16), 0) << zoom;
    }
    // --sheet and --guides draw what the renderer draws with them, at the default zoom.
    for (const bool sheet : {true, false}) {
        const std::string args = sheet ? " --sheet" : " --text Ag --guides";
        ASSERT_EQ(RunCli(dir, "preview " + Q(font) + args + " --out " + Q(dir / "s.png")).Status, 0) << args;
        int width = 0;
        std::vector<uint8_t> rgb = readRgb(dir / "s.png", width);
        ASSERT_FALSE(rgb.empty()) << args;
        CPreviewOptions options;
        options.Guides = !sheet;
        CTextRenderer renderer(set);
        EXPECT_EQ(rgb, (sheet ? renderer.DrawSheet(options) : renderer.DrawText("Ag", options)).Rgb) << args;
    }
    WriteText(dir / "junk.zgly", "not a font at all, but long enough");
    r = RunCli(dir, "preview " + Q(dir / "junk.zgly") + " --text A --out " + Q(dir / "x.png"));
    EXPECT_EQ(r.Status, 1);
    EXPECT_EQ(r.Err, "ZGLY File Error:\n The file is not ZGLY file\n");
    EXPECT_FALSE(std::filesystem::exists(dir / "x.png"));
    for (const char* args : {"--text A", "--text A --out x.png --zoom 0", "--text A --out x.png --zoom 17"}) {
        r = RunCli(dir, "preview " + Q(font) + " " + args);
        EXPECT_EQ(r.Status, 2) << args;
        EXPECT_NE(r.Err.find("\nTry 'glyphwright-cli preview --help'.\n"), std::string::npos) << args;
    }
}

// A grid read with another order than it was drawn for: one error naming the
// picture's size, the size the order gives it and the shipped order that fits,
// before any cell is read; a PNG grid names its order, and another one is warned about.
TEST(CliFonts, GridReadWithAnotherOrderIsNamedOnce) {
    CScratchDir dir;
    MakeFont(dir, "in.zgly");
    const std::string here = dir.Path().string();
    ASSERT_EQ(RunCli(dir, "convert --from-zgly in.zgly --to-bmp l.bmp --to-order Latin1 --cell 12x14 --quiet", here).Status, 0);
    auto r = RunCli(dir, "convert --from-bmp l.bmp --from-order ASCII --to-zgly o.zgly", here);
    EXPECT_EQ(r.Status, 1);
    EXPECT_EQ(r.Err, "BMP Error:\n BMP(256x240) is drawn as 16 x 12 cells of 16x20 pixels, but ASCII.xlor has 16 x 6 "
                     "cells, which would make it 256x120. Read it with the glyph order Latin1.xlor (16 x 12 cells).\n");
    r = RunCli(dir, "convert --from-bmp l.bmp --from-order Latin1 --to-zgly o.zgly --quiet", here);
    EXPECT_EQ(r.Status, 0) << r.Err;
    // Without frames of their own colour the cells can not be told; the reading goes on as before.
    ASSERT_EQ(RunCli(dir, "convert --from-zgly in.zgly --to-bmp n.bmp --to-order Latin1 --no-grid --quiet", here).Status, 0);
    EXPECT_EQ(RunCli(dir, "convert --from-bmp n.bmp --from-order ASCII --to-zgly o.zgly", here).Err.find("is drawn as"),
              std::string::npos);

    ASSERT_EQ(RunCli(dir, "convert --from-zgly in.zgly --to-bmp l.png --to-order Latin1 --quiet", here).Status, 0);
    std::filesystem::copy_file(std::string(GLYPHWRIGHT_BIN_DIR) + "/xlor/Latin1.xlor", dir / "Mine.xlor");
    r = RunCli(dir, "convert --from-bmp l.png --from-order Mine.xlor --colors 4 --to-zgly m.zgly", here);
    EXPECT_EQ(r.Status, 0);
    EXPECT_EQ(r.Err.substr(0, r.Err.find('\n') + 1),
              "Warning: The picture was drawn for the glyph order Latin1.xlor, but is read with Mine.xlor.\n");
    r = RunCli(dir, "convert --from-bmp l.png --from-order latin1 --colors 4 --to-zgly o.zgly", here);
    EXPECT_EQ(r.Err.find("Warning"), std::string::npos) << r.Err;
    EXPECT_EQ(Slurp(dir / "m.zgly"), Slurp(dir / "o.zgly"));
}

// LC Font files by the command line: each file keeps its fixed advance unless
// its own proportional option is given; the options are not mixed up.
TEST(CliFonts, LcFilesAndTheirProportionalOptions) {
    CScratchDir dir;
    // {name, file size, rows, bytes a row}: Ａ and Ｂ as Shift_JIS codes, ink in columns 1-2 of rows 1-12.
    for (auto [name, size, rows, rowBytes] : {std::tuple{"full.dat", 249288, 16, 2}, {"half.dat", 13536, 16, 1}}) {
        std::string bytes;
        for (int i = 0; i < size / (2 + rows * rowBytes); ++i) {
            const int code = i < 2 ? 0x8260 + i : 0xFFFF;
            bytes += {static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)};
            for (int y = 0; y < rows; ++y)
                for (int k = 0; k < rowBytes; ++k) bytes += static_cast<char>(k == 0 && y >= 1 && y < rows - 2 ? 0x60 : 0);
        }
        WriteText(dir / name, bytes);
    }
    // {input options, the characters, max char width and direction}
    for (auto [options, chars, width] : {std::tuple{"--from-lc full.dat", "U+FF21\t\xEF\xBC\xA1\n", "16, bpp 1, vertical no"},
                                         {"--from-lc full.dat --lc-proportional", "U+FF21\t\xEF\xBC\xA1\n", "3, bpp 1, vertical no"},
                                         {"--from-lc full.dat --vertical", "U+FF21\t\xEF\xBC\xA1\n", "16, bpp 1, vertical yes"},
                                         {"--lc-half half.dat", "U+0041\tA\n", "8, bpp 1, vertical no"},
                                         {"--lc-half half.dat --lc-half-proportional", "U+0041\tA\n", "3, bpp 1, vertical no"},
                                         {"--lc-half half.dat --lc-proportional", "U+0041\tA\n", "8, bpp 1, vertical no"}}) {
        auto r = RunCli(dir, "convert " + std::string(options) + " --to-zgly o.zgly", dir.Path().string());
        ASSERT_EQ(r.Status, 0) << options << ": " << r.Err;
        EXPECT_EQ(RunCli(dir, "info o.zgly --chars", dir.Path().string()).Out.substr(0, std::string(chars).size()), chars) << options;
        EXPECT_NE(RunCli(dir, "info o.zgly", dir.Path().string()).Out.find("max char width " + std::string(width)),
                  std::string::npos) << options;
    }
}
