// Glyphs built straight from a rendering: the packed pixels at every depth,
// the crop from rows with a pitch through a level table, and soft
// anti-aliasing against the plain halving of the 17-level image.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/bit_stream.h"
#include "core/font_data.h"
#include "sources/letterer.h"

namespace {

class CTestLetterer : public CLetterer {
public:
    void Prepare(const FontRequest&) override {}
    bool MakeGlyph(CGlyph&, char16_t) override { return false; }
    using CLetterer::BuildGlyph;
};

// The glyph as a pixel-by-pixel crop and pack would make it: the box of
// levels other than background, turned clockwise when vertical.
struct Expected {
    int W = 0, H = 0, OriginRow = 0;  // baseline row counted from the ink's top
    std::vector<uint8_t> Pixels;
};
Expected Reference(const std::vector<uint8_t>& levels, int width, int height, int baseline, int bpp, bool vertical,
                   uint8_t background = 0) {
    int x0 = width, y0 = height, x1 = 0, y1 = 0;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            if (levels[y * width + x] != background) {
                x0 = std::min(x0, x), x1 = std::max(x1, x + 1), y0 = std::min(y0, y), y1 = std::max(y1, y + 1);
            }
    Expected e;
    e.OriginRow = baseline;
    if (x1 == 0) return e;
    const int w = x1 - x0, h = y1 - y0;
    e.W = vertical ? h : w;
    e.H = vertical ? w : h;
    e.OriginRow = baseline - y0;
    e.Pixels.assign(PackedBytes(w, h, bpp), 0);
    std::size_t bit = 0;
    for (int y = 0; y < e.H; ++y)
        for (int x = 0; x < e.W; ++x, bit += bpp) {
            const uint8_t v = vertical ? levels[(y0 + h - 1 - x) * width + x0 + y] : levels[(y0 + y) * width + x0 + x];
            OrBits(e.Pixels.data(), bit, bpp, v & ((1u << bpp) - 1));
        }
    return e;
}

// Coverage rows of `width` bytes, `pitch` apart, from a seeded generator: ink
// in a box that moves with the seed, blank margins around it, the odd faint
// pixel below the ink threshold.
std::vector<uint8_t> Coverage(int width, int height, int pitch, unsigned seed) {
    std::vector<uint8_t> c(static_cast<std::size_t>(pitch) * height, 0xEE);  // bytes beyond width are junk
    unsigned r = seed;
    const int left = seed % 11, top = seed % 3, right = width - (seed % 9), bottom = height - (seed % 4);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            r = r * 1103515245u + 12345u;
            const bool inside = x >= left && x < right && y >= top && y < bottom;
            c[y * pitch + x] = inside ? static_cast<uint8_t>(r >> 16) : ((r >> 16) % 7 == 0 ? 5 : 0);
        }
    return c;
}

}  // namespace

TEST(LettererPacking, CropsAndPacksThroughTheLevelTableAtEveryDepth) {
    // Widths around the eight-byte steps, rows starting mid-byte at odd widths.
    const struct { int Width, Height; } sizes[] = {{1, 1}, {7, 3}, {8, 5}, {9, 4}, {17, 6}, {31, 9}, {64, 3}, {75, 11}};
    CTestLetterer l;
    for (int bpp = 1; bpp <= 5; ++bpp) {
        // Output levels of coverage as the grey letterer makes them: level 0
        // below a threshold, then rising.
        uint8_t table[256];
        const int max = (1 << bpp) - 1;
        for (int v = 0; v < 256; ++v) table[v] = static_cast<uint8_t>((((v * 16 + 127) / 255) * max + 8) / 16);
        for (bool vertical : {false, true}) {
            l.Setup(bpp, 0, 0, vertical);
            for (const auto& s : sizes)
                for (unsigned seed : {1u, 6u, 13u}) {
                    const int pitch = s.Width + 3;
                    const auto coverage = Coverage(s.Width, s.Height, pitch, seed);
                    std::vector<uint8_t> levels(static_cast<std::size_t>(s.Width) * s.Height);
                    for (int y = 0; y < s.Height; ++y)
                        for (int x = 0; x < s.Width; ++x) levels[y * s.Width + x] = table[coverage[y * pitch + x]];
                    RenderedCell cell{s.Width, s.Height, 0, s.Width, s.Height - 1, static_cast<uint8_t>(max), 0};
                    const Expected e = Reference(levels, s.Width, s.Height, cell.Baseline, bpp, vertical);
                    const std::string where = "bpp " + std::to_string(bpp) + (vertical ? " vertical " : " ") +
                                              std::to_string(s.Width) + "x" + std::to_string(s.Height) + " seed " +
                                              std::to_string(seed);
                    CGlyph fromCoverage, fromLevels;
                    l.BuildGlyph(fromCoverage, coverage.data(), pitch, table, cell);
                    l.BuildGlyph(fromLevels, levels.data(), cell);
                    for (const CGlyph* g : {&fromCoverage, &fromLevels}) {
                        EXPECT_EQ(g->Bpp, bpp) << where;
                        EXPECT_EQ(g->Ink.Width(), e.W) << where;
                        EXPECT_EQ(g->Ink.Height(), e.H) << where;
                        EXPECT_EQ(vertical ? g->RightExtent : g->Ascent, e.OriginRow) << where;
                        EXPECT_EQ(g->Pixels, e.Pixels) << where;
                    }
                }
        }
    }
}

TEST(LettererPacking, SoftAntiAliasingEqualsTheHalvedSeventeenLevels) {
    // Odd and even widths and baselines, descenders, a blank and a flat glyph.
    const std::u16string codes = u"AgjQ.|_-W@% \u00C5\u2500\u203E";
    for (int size : {-11, -16, 23}) {
        for (int bpp : {2, 4}) {
            CVectorLetterer soft;
            soft.SoftAA = true;
            soft.Setup(bpp, 2, 0, false);
            soft.Prepare(ParseFaceName("DejaVu Sans", size));
            CTestLetterer plain;
            plain.Setup(bpp, 2, 0, false);
            FT_Face face = soft.Font()->Face();
            for (char16_t code : codes) {
                const std::string where = "size " + std::to_string(size) + " bpp " + std::to_string(bpp) + " U+" +
                                          std::to_string(static_cast<int>(code));
                CGlyph made;
                ASSERT_TRUE(soft.MakeGlyph(made, code)) << where;
                ASSERT_EQ(FT_Load_Glyph(face, FT_Get_Char_Index(face, code),
                                        FT_LOAD_TARGET_NORMAL | FT_LOAD_NO_BITMAP | FT_LOAD_RENDER),
                          0);
                const FT_GlyphSlot slot = face->glyph;
                const int w = static_cast<int>(slot->bitmap.width), h = static_cast<int>(slot->bitmap.rows);
                const bool area = w > 0 && h > 0;
                std::vector<uint8_t> image(area ? static_cast<std::size_t>(w) * h : 0);
                for (int y = 0; area && y < h; ++y)
                    for (int x = 0; x < w; ++x)
                        image[y * w + x] = static_cast<uint8_t>((slot->bitmap.buffer[y * slot->bitmap.pitch + x] * 16 + 127) / 255);
                RenderedCell cell{area ? w : 0, area ? h : 0, slot->bitmap_left,
                                  static_cast<int32_t>((slot->advance.x + 32) >> 6), slot->bitmap_top,
                                  static_cast<uint8_t>((1 << bpp) - 1), 0};
                image.resize(image.size() + 1);  // room for halving an empty image
                HalveImage(image.data(), cell);
                ScaleLevels(image.data(), static_cast<std::size_t>(cell.Width) * cell.Height, cell.MaxLevel);
                CGlyph expected;
                plain.BuildGlyph(expected, image.data(), cell);
                EXPECT_TRUE(made.SameAs(expected)) << where;
                EXPECT_EQ(made.Ascent, expected.Ascent) << where;
                EXPECT_EQ(made.LeftSpace, expected.LeftSpace) << where;
                EXPECT_EQ(made.RightSpace, expected.RightSpace) << where;
            }
        }
    }
}
