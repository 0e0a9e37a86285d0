// Grey levels: FreeType's anti-aliased rendering reduced to 17 levels, halved
// for soft anti-aliasing, then scaled to the wanted number of levels.
#include <algorithm>
#include <bit>
#include <cstring>

#include "sources/letterer.h"

namespace {

// The size and metrics of a cell halved in 2 x 2 blocks that keep the
// baseline between blocks: an odd baseline starts the first block a row above
// the image.
void HalveCellMetrics(RenderedCell& cell) {
    const int s = cell.Baseline, H = cell.Height, W = cell.Width;
    const bool oddTop = (s % 2) != 0;
    const int rows = (oddTop && ((H - s) % 2) != 0) ? H + 1 : H;
    cell.Width = (W + 1) / 2;
    cell.Height = (rows + 1) / 2;
    cell.OriginX = cell.OriginX / 2;
    cell.Advance = (cell.Advance + 1) / 2;
    cell.Baseline = (s + 1) / 2;
}

// Maps the 17 levels 0..16 to 0..maxLevel, in place.
void ScaleLevels(uint8_t* levels, std::size_t count, int maxLevel) {
    const int k = maxLevel ? 17 / (2 * maxLevel) : 0;
    for (std::size_t i = 0; i < count; ++i) levels[i] = static_cast<uint8_t>(((levels[i] + k) * maxLevel) / 16);
}

}  // namespace

void CVectorLetterer::Prepare(const FontLocation& location, int32_t size) {
    // Soft anti-aliasing renders at double height and halves afterwards.
    OpenFace(location, SoftAA ? size * 2 : size);
    // The 17 levels count covered sub-samples out of 16; FreeType's coverage
    // 0..255 is the covered area, so a level is coverage x 16 / 255 rounded
    // to the nearest (8 and up is level 1, 248 and up is 16).
    for (int v = 0; v < 256; ++v) OutputLevels[v] = Levels17[v] = static_cast<uint8_t>((v * 16 + 127) / 255);
    ScaleLevels(OutputLevels, sizeof OutputLevels, MaxLevel());
    if (SoftAA) {
        PairSums.resize(0x10000);
        for (int v = 0; v < 0x10000; ++v) PairSums[v] = static_cast<uint8_t>(Levels17[v & 0xFF] + Levels17[v >> 8]);
        for (int sum = 0; sum <= 64; ++sum) BlockLevels[sum] = static_cast<uint8_t>((sum + 2) / 4);
        ScaleLevels(BlockLevels, sizeof BlockLevels, MaxLevel());
    }
}

// The image's 17 levels halved in 2 x 2 blocks (rows outside the image count
// as empty) and scaled to the output levels in one pass: a block is the sum
// of two horizontal pairs, each one table look-up of its two coverage bytes.
void CVectorLetterer::HalveToLevels(const Bitmap& b, RenderedCell& cell) {
    const int H = cell.Height, W = cell.Width;
    const bool oddTop = (cell.Baseline % 2) != 0;
    HalveCellMetrics(cell);
    const int nw = cell.Width, nh = cell.Height;
    Image.resize(static_cast<std::size_t>(nw) * nh);
    if (nw == 0 || nh == 0) return;
    if (ZeroRow.size() < static_cast<std::size_t>(W)) ZeroRow.resize(W, 0);
    auto row = [&](int r) { return r >= 0 && r < H ? b.Pixels + r * b.Pitch : ZeroRow.data(); };
    const uint8_t* pairs = PairSums.data();
    const int fullPairs = W / 2;
    for (int y = 0; y < nh; ++y) {
        const int r0 = oddTop ? 2 * y - 1 : 2 * y;
        const uint8_t* a = row(r0);
        const uint8_t* c = row(r0 + 1);
        uint8_t* out = Image.data() + static_cast<std::size_t>(y) * nw;
        int x = 0;
        if constexpr (std::endian::native == std::endian::little) {
            // Four blocks a step from one load of each row: byte j of a word is column j.
            for (; x + 4 <= fullPairs; x += 4) {
                uint64_t top, bottom;
                std::memcpy(&top, a + 2 * x, 8);
                std::memcpy(&bottom, c + 2 * x, 8);
                // Blank and solid stretches, most of a large glyph, take no look-ups.
                if ((top | bottom) == 0 || (top & bottom) == ~uint64_t{0}) {
                    std::memset(out + x, top == 0 ? BlockLevels[0] : BlockLevels[64], 4);
                    continue;
                }
                for (int k = 0; k < 4; ++k)
                    out[x + k] = BlockLevels[pairs[(top >> (16 * k)) & 0xFFFF] + pairs[(bottom >> (16 * k)) & 0xFFFF]];
            }
        }
        for (; x < fullPairs; ++x)
            out[x] = BlockLevels[pairs[a[2 * x] | a[2 * x + 1] << 8] + pairs[c[2 * x] | c[2 * x + 1] << 8]];
        // An odd last column pairs with nothing.
        if (W % 2) out[fullPairs] = BlockLevels[Levels17[a[W - 1]] + Levels17[c[W - 1]]];
    }
}

bool CVectorLetterer::MakeGlyph(CGlyph& glyph, char16_t code) {
    const FT_UInt index = GlyphIndex(code);
    if (index == 0) return false;
    FT_Face face = Face->Face();
    RenderedCell cell;
    Bitmap b;
    const FT_Int32 flags = FT_LOAD_TARGET_NORMAL | (Face->Scalable() ? FT_LOAD_NO_BITMAP : 0);
    if (Render(code, index, flags, b)) {
        // A rendering without area (a flat stroke) is a character without
        // ink: its black box is 0 x 0, so halving never adds a row to write.
        if (b.Width <= 0 || b.Rows <= 0) b.Width = b.Rows = 0;
        cell.Width = b.Width;
        cell.Height = b.Rows;
        cell.OriginX = b.Left;
        cell.Advance = b.Advance;
        cell.Baseline = b.Top;
    } else {
        // No outline to render: an ink-less character with the advance alone.
        FT_Fixed advance = 0;
        if (FT_Get_Advance(face, index, FT_LOAD_DEFAULT, &advance) != 0) return false;
        const auto px = static_cast<int16_t>((advance + 0x8000) >> 16);
        b = Bitmap{};
        cell.OriginX = px;
        cell.Advance = px;
    }
    if (SoftAA) {
        HalveToLevels(b, cell);
        BuildGlyph(glyph, Image.data(), cell);
    } else {
        // Coverage goes straight to the output levels where FreeType left it.
        BuildGlyph(glyph, b.Pixels, b.Pitch, OutputLevels, cell);
    }
    return true;
}
