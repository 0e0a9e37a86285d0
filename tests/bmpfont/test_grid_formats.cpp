// The pictures editors save read exactly as the palette grid they came from:
// 24- and 32-bit BMPs, run-length BMPs and PNG, and the writer's own PNG.
#include <gtest/gtest.h>
#include <png.h>

#include "bmp_test_support.h"
#include "bmpfont/bmp_decoders.h"
#include "bmpfont/bmp_file.h"
#include "bmpfont/bmp_font_reader.h"
#include "bmpfont/bmp_font_writer.h"
#include "bmpfont/bmp_image.h"
#include "core/font_filter.h"
#include "core/glyph_order.h"
#include "core/headless_pg_ctrl.h"
#include "zgly/binary_file.h"

namespace {

void Put(std::string& out, uint32_t v, int bytes) {
    for (int i = 0; i < bytes; ++i) out += static_cast<char>(i < 4 ? (v >> (8 * i)) & 0xFF : 0);
}

// A BMP file: infoExtra follows the 40-byte header inside the information
// header, table (palette or colour masks) after it, then the data.
std::string Bmp(int w, int h, int bpp, uint32_t compression, const std::string& table, const std::string& data,
                const std::string& infoExtra = "") {
    const uint32_t offset = 54 + static_cast<uint32_t>(infoExtra.size() + table.size()), size = static_cast<uint32_t>(data.size());
    std::string out = "BM";
    for (auto [v, n] : {std::pair{offset + size, 4}, {0u, 4}, {offset, 4}, {40 + static_cast<uint32_t>(infoExtra.size()), 4},
                        {static_cast<uint32_t>(w), 4}, {static_cast<uint32_t>(h), 4}, {1u, 2}, {static_cast<uint32_t>(bpp), 2},
                        {compression, 4}, {size, 4}, {0u, 16}})
        Put(out, v, n);
    return out + infoExtra + table + data;
}

std::string Palette(const std::vector<uint32_t>& entries, std::size_t count) {
    std::string out;
    for (std::size_t i = 0; i < count; ++i) Put(out, i < entries.size() ? entries[i] : 0, 4);
    return out;
}

// Colours of the loaded (top row first) 8-bit picture.
std::vector<uint32_t> Colors(const CBmpImage& pic) {
    std::vector<uint32_t> out;
    for (int y = 0; y < pic.Height; ++y)
        for (int x = 0; x < pic.Width; ++x) out.push_back(pic.Palette[pic.GetPixel(x, y)] & 0xFFFFFF);
    return out;
}

std::string TrueColor(const CBmpImage& pic, int bpp, bool withAlpha) {
    std::vector<uint32_t> colors = Colors(pic);
    std::string data;
    for (int y = pic.Height - 1; y >= 0; --y) {
        std::string row;
        for (int x = 0; x < pic.Width; ++x) {
            uint32_t c = colors[static_cast<std::size_t>(y) * pic.Width + x];
            // White as transparent black: paper either way.
            if (withAlpha) c = c == 0xFFFFFF ? 0 : c | 0xFF000000u;
            Put(row, c, bpp / 8);
        }
        row.append((4 - row.size() % 4) % 4, '\0');
        data += row;
    }
    if (bpp == 24) return Bmp(pic.Width, pic.Height, 24, 0, "", data);
    std::string masks;
    for (uint32_t m : {0x00FF0000u, 0x0000FF00u, 0x000000FFu, 0xFF000000u}) Put(masks, m, 4);
    return Bmp(pic.Width, pic.Height, 32, withAlpha ? 3 : 0, "", data, withAlpha ? masks : "");
}

// Run-length data of repeated runs, rows bottom first (absolute runs and
// jumps are hand-made below).
std::string RunLength(const CBmpImage& pic, bool four) {
    std::string data;
    for (int y = pic.Height - 1; y >= 0; --y) {
        for (int x = 0, n; x < pic.Width; x += n) {
            uint32_t v = pic.GetPixel(x, y);
            for (n = 1; x + n < pic.Width && n < 255 && pic.GetPixel(x + n, y) == v;) ++n;
            data += static_cast<char>(n);
            data += static_cast<char>(four ? v << 4 | v : v);
        }
        data += std::string("\0\0", 2);
    }
    data += std::string("\0\1", 2);
    return Bmp(pic.Width, pic.Height, four ? 4 : 8, four ? 2 : 1, Palette(pic.Palette, four ? 16 : 256), data);
}

void WritePngFile(const std::filesystem::path& path, const CBmpImage& pic, bool grey) {
    std::vector<uint32_t> colors = Colors(pic);
    std::vector<uint8_t> buffer;
    for (uint32_t c : colors) {
        // Grey, or white as transparent black.
        const bool paper = c == 0xFFFFFF;
        for (int s : grey ? std::vector<int>{0} : std::vector<int>{16, 8, 0, 24})
            buffer.push_back(grey ? static_cast<uint8_t>(c) : paper ? 0 : s == 24 ? 255 : static_cast<uint8_t>(c >> s));
    }
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(pic.Width), image.height = static_cast<png_uint_32>(pic.Height);
    image.format = grey ? PNG_FORMAT_GRAY : PNG_FORMAT_RGBA;
    ASSERT_TRUE(png_image_write_to_file(&image, path.c_str(), 0, buffer.data(), 0, nullptr)) << image.message;
}

class GridFormats : public ::testing::Test {
protected:

    std::unique_ptr<CFontData> Read(const std::filesystem::path& picture, int bpp) {
        auto font = std::make_unique<CFontData>();
        Pg.Warnings.clear();
        CBmpFontReader reader(picture, Order, bpp);
        reader.CheckParameters();
        reader.Read(*font, CFontFilter());
        EXPECT_EQ(Pg.Warnings, std::vector<std::string>{}) << picture;
        return font;
    }

    CTempDir Dir;
    CHeadlessPgCtrl Pg;
    CPgCtrlScope PgScope{Pg};
    std::filesystem::path Order = Dir.Write("t.xlor", GridFontOrder);
};

}  // namespace

TEST_F(GridFormats, EditorsPicturesReadAsTheirPaletteOriginal) {
    for (int bpp : {1, 2, 3, 4})
        for (bool grid : {true, false}) {
            const std::string what = "bpp " + std::to_string(bpp) + " grid " + std::to_string(grid);
            auto font = GridFont(bpp, false);
            WriteGridPicture(*font, Dir / "grid.bmp", Order, grid, {-1, -1, 0, 0, 0, 0});
            auto original = Read(Dir / "grid.bmp", bpp);
            ASSERT_EQ(original->GlyphCount(), 5u) << what;
            CBinaryFile file(Dir / "grid.bmp");
            CBmpImage pic;
            LoadBmp(file, pic);

            std::vector<std::pair<std::string, std::string>> variants = {{"24.bmp", TrueColor(pic, 24, false)},
                                                                         {"32a.bmp", TrueColor(pic, 32, true)},
                                                                         {"rle8.bmp", RunLength(pic, false)}};
            if (bpp <= 3) variants.push_back({"rle4.bmp", RunLength(pic, true)});
            for (const auto& [name, bytes] : variants)
                ExpectSameGlyphs(*original, *Read(Dir.Write(name, bytes), bpp), what + " " + name);

            // The writer's own PNG: indexed (colour type 3), holding the palette it uses.
            WriteGridPicture(*font, Dir / "grid.PNG", Order, grid, {-1, -1, 0, 0, 0, 0});
            const std::string png = GridBytes(Dir / "grid.PNG").Data;
            ASSERT_GT(png.size(), 40u);
            EXPECT_EQ(png[25], 3) << what;
            std::size_t plte = png.find("PLTE");
            ASSERT_NE(plte, std::string::npos);
            uint32_t plteBytes = static_cast<uint8_t>(png[plte - 1]) | static_cast<uint8_t>(png[plte - 2]) << 8;
            EXPECT_EQ(plteBytes, 3u * ((1u << bpp) + (grid ? 1 : 0))) << what;
            ExpectSameGlyphs(*original, *Read(Dir / "grid.PNG", bpp), what + " own png");

            WritePngFile(Dir / "rgba.png", pic, false);
            ExpectSameGlyphs(*original, *Read(Dir / "rgba.png", bpp), what + " rgba png");
            if (!grid) {
                // Grey keeps every colour of a grid drawn without frames.
                WritePngFile(Dir / "grey.png", pic, true);
                ExpectSameGlyphs(*original, *Read(Dir / "grey.png", bpp), what + " grey png");
            }
        }
}

TEST_F(GridFormats, RunLengthEscapesAndBrokenFiles) {
    // 4 x 2, white and black: two black, then a jump to (3, row 1), one black;
    // or the top row as an absolute run of three (padded to 16 bits) and one.
    const std::string palette = Palette({0xFFFFFF, 0}, 256);
    auto decode = [&](const std::string& data) {
        auto path = Dir.Write("r.bmp", Bmp(4, 2, 8, 1, palette, data));
        return DecodeColorBmp(ReadWholeFile(path), path).Rgb;
    };
    const std::vector<uint32_t> want{0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0, 0, 0, 0xFFFFFF, 0xFFFFFF};
    EXPECT_EQ(decode(std::string("\x02\x01\x00\x02\x01\x01\x01\x01\x00\x01", 10)), want);
    // The end-of-picture code may be missing.
    EXPECT_EQ(decode(std::string("\x02\x01\x00\x02\x01\x01\x01\x01", 8)), want);
    EXPECT_EQ(decode(std::string("\x02\x01\x02\x00\x00\x00\x00\x03\x00\x00\x00\x00\x01\x01", 14)), want);

    // 4 bits: a run of three takes the high nibble first.
    auto four = Dir.Write("r4.bmp", Bmp(4, 1, 4, 2, Palette({0xFFFFFF, 0}, 16), std::string("\x03\x01\x00\x01", 4)));
    EXPECT_EQ(DecodeColorBmp(ReadWholeFile(four), four).Rgb, (std::vector<uint32_t>{0xFFFFFF, 0, 0xFFFFFF, 0xFFFFFF}));

    auto broken = Dir.Write("b.bmp", Bmp(4, 2, 8, 1, palette, std::string("\x00\x05\x01\x01", 4)));
    EXPECT_EQ(ErrorOf([&] { DecodeColorBmp(ReadWholeFile(broken), broken); }),
              "Input file(" + broken.string() + ") is broken.");
    auto png = Dir.Write("cut.png", std::string("\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR", 16));
    EXPECT_EQ(ErrorOf([&] {
                  CBmpFontReader(png, Order, 1).CheckParameters();
              }).rfind("Input file(" + png.string() + ") is broken PNG(", 0),
              0u);
    // Compressions no editor writes for these depths stay refused.
    auto jpeg = Dir.Write("j.bmp", Bmp(4, 2, 24, 4, "", std::string(32, '\0')));
    EXPECT_EQ(ErrorOf([&] { CBmpFontReader(jpeg, Order, 1).CheckParameters(); }),
              "Input file(" + jpeg.string() + ") is unsupported BMP.");
}
