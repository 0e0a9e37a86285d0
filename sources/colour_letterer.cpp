#include "sources/colour_letterer.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "sources/face_file.h"

namespace {

// The source pixels one target pixel covers along one axis, with the share
// of each: target pixel t spans [t / scale, (t + 1) / scale) in source pixels,
// the source being `count` pixels from `from` on.
struct Tap {
    int Source;
    double Weight;
};

std::vector<std::vector<Tap>> Taps(int targetFrom, int targetTo, double from, int count, double scale) {
    std::vector<std::vector<Tap>> taps;
    for (int t = targetFrom; t < targetTo; ++t) {
        const double lo = t / scale - from, hi = (t + 1) / scale - from;
        std::vector<Tap> list;
        for (int s = std::max(0, static_cast<int>(std::floor(lo))); s < count && s < hi; ++s) {
            const double overlap = std::min(hi, s + 1.0) - std::max(lo, static_cast<double>(s));
            if (overlap > 0) list.push_back({s, overlap * scale});
        }
        taps.push_back(std::move(list));
    }
    return taps;
}

}  // namespace

bool IsColourBitmapFont(const FontLocation& location) {
    FtLibraryPtr lib = MakeFtLibrary();
    FT_Face face = nullptr;
    if (OpenFaceFile(lib.get(), location.File, location.Index, &face) != 0) return false;
    const bool colour = FT_HAS_COLOR(face) && !FT_IS_SCALABLE(face) && face->num_fixed_sizes > 0;
    FT_Done_Face(face);
    return colour;
}

void CColourLetterer::Prepare(const FontLocation& location, int32_t size) {
    OpenFace(location, size);
    // The strike nearest the size is drawn scaled to it: a cell height for
    // sizes above 0, an em for sizes below.
    const double strike = size > 0 ? Face->Height() : Face->Ppem26 / 64.0;
    Scale = strike > 0 ? std::abs(size) / strike : 1;
    FontAscent = static_cast<int32_t>(std::lround(Face->Ascent * Scale));
    for (int v = 0; v < 256; ++v) Levels[v] = static_cast<uint8_t>((v * MaxLevel() + 127) / 255);
}

bool CColourLetterer::MakeGlyph(CGlyph& glyph, char16_t code) {
    const FT_UInt index = GlyphIndex(code);
    if (index == 0) return false;
    Bitmap b;
    if (!Render(code, index, FT_LOAD_COLOR, b)) return false;
    if (Luminance) DarkenByLuminance(b);
    // Edges in target pixels, x from the pen, y down from the baseline.
    const int x0 = static_cast<int>(std::floor(b.Left * Scale));
    const int x1 = static_cast<int>(std::ceil((b.Left + b.Width) * Scale));
    const int y0 = static_cast<int>(std::floor(-b.Top * Scale));
    const int y1 = static_cast<int>(std::ceil((b.Rows - b.Top) * Scale));
    const int w = b.Width ? x1 - x0 : 0, h = b.Rows ? y1 - y0 : 0;
    const auto across = Taps(x0, x0 + w, b.Left, b.Width, Scale);
    const auto down = Taps(y0, y0 + h, -b.Top, b.Rows, Scale);
    // Rows first (each target column's share of every source row), then columns.
    Rows.assign(static_cast<std::size_t>(w) * b.Rows, 0.0);
    for (int r = 0; r < b.Rows; ++r)
        for (int x = 0; x < w; ++x) {
            double sum = 0;
            for (const Tap& t : across[x]) sum += b.Pixels[r * b.Pitch + t.Source] * t.Weight;
            Rows[static_cast<std::size_t>(r) * w + x] = sum;
        }
    Image.assign(static_cast<std::size_t>(w) * h, 0);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            double sum = 0;
            for (const Tap& t : down[y]) sum += Rows[static_cast<std::size_t>(t.Source) * w + x] * t.Weight;
            Image[static_cast<std::size_t>(y) * w + x] = static_cast<uint8_t>(std::clamp(std::lround(sum), 0L, 255L));
        }
    RenderedCell cell;
    cell.Width = w;
    cell.Height = h;
    cell.OriginX = x0;
    cell.Advance = static_cast<int32_t>(std::lround(b.Advance * Scale));
    cell.Baseline = -y0;
    BuildGlyph(glyph, Image.data(), w, Levels, cell);
    return true;
}

void CColourLetterer::DarkenByLuminance(Bitmap& b) {
    const FT_Bitmap& colour = Face->Face()->glyph->bitmap;
    if (colour.pixel_mode != FT_PIXEL_MODE_BGRA || static_cast<int>(colour.width) != b.Width ||
        static_cast<int>(colour.rows) != b.Rows)
        return;
    Ink.resize(static_cast<std::size_t>(b.Width) * b.Rows);
    for (int r = 0; r < b.Rows; ++r) {
        const uint8_t* px = colour.buffer + static_cast<long>(r) * colour.pitch;
        for (int x = 0; x < b.Width; ++x, px += 4) {
            // Premultiplied: the luminance already carries the alpha.
            const int luma = (px[2] * 299 + px[1] * 587 + px[0] * 114 + 500) / 1000;
            Ink[static_cast<std::size_t>(r) * b.Width + x] = static_cast<uint8_t>(std::max(0, px[3] - luma));
        }
    }
    b.Pixels = Ink.data();
    b.Pitch = b.Width;
}
