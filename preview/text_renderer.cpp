#include "preview/text_renderer.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/codepage.h"
#include "core/general_exception.h"
#include "core/utf8.h"
#include "zgly/font_block_file.h"
#include "zgly/path_checks.h"
#include "zgly/zgly_format.h"

using namespace zgly;

namespace {

// Guides stay light so that the text reads over them.
constexpr uint32_t BaselineColor = 0x8CB8F0;
constexpr uint32_t BoxColor = 0xD2D2D2;
constexpr uint32_t AdvanceColor = 0xF0A0A0;
constexpr uint32_t LabelColor = 0x707070;
// Paper around the drawing, in font pixels.
constexpr int Margin = 2;
// Keeps a runaway text or zoom from asking for gigabytes.
constexpr long long MaxSide = 32000;
constexpr long long MaxPixels = 64LL * 1024 * 1024;

// Hex digits 3 pixels wide and 5 high for the sheet's labels, a row in the
// low 3 bits, leftmost pixel highest.
constexpr uint8_t DigitRows[16][5] = {
    {7, 5, 5, 5, 7}, {2, 6, 2, 2, 7}, {7, 1, 7, 4, 7}, {7, 1, 7, 1, 7}, {5, 5, 7, 1, 1}, {7, 4, 7, 1, 7},
    {7, 4, 7, 5, 7}, {7, 1, 1, 2, 2}, {7, 5, 7, 5, 7}, {7, 5, 7, 1, 7}, {2, 5, 7, 5, 5}, {6, 5, 6, 5, 6},
    {7, 4, 4, 4, 7}, {6, 5, 5, 5, 6}, {7, 4, 6, 4, 7}, {7, 4, 6, 4, 4}};
constexpr int LabelWidth = 4 * 4 - 1;
constexpr int LabelHeight = 5;
constexpr int LabelGap = 2;

struct CBox {
    int X0 = std::numeric_limits<int>::max(), Y0 = std::numeric_limits<int>::max();
    int X1 = std::numeric_limits<int>::min(), Y1 = std::numeric_limits<int>::min();
    bool Empty() const { return X0 > X1 || Y0 > Y1; }
    void Add(int x0, int y0, int x1, int y1) {
        X0 = std::min(X0, x0);
        Y0 = std::min(Y0, y0);
        X1 = std::max(X1, x1);
        Y1 = std::max(Y1, y1);
    }
};

uint8_t Channel(uint32_t color, int shift) { return static_cast<uint8_t>(color >> shift); }

}  // namespace

uint32_t CRgbImage::Pixel(int x, int y) const {
    const uint8_t* p = Rgb.data() + (static_cast<std::size_t>(y) * Width + x) * 3;
    return (static_cast<uint32_t>(p[0]) << 16) | (p[1] << 8) | p[2];
}

struct CTextRenderer::CScene {
    enum class GuideKind { HLine, VLine, Box };
    struct Guide {
        GuideKind Kind;
        int X0, Y0, X1, Y1;
        uint32_t Color;
    };
    struct Placed {
        const CSprite* Sprite;
        int X, Y;  // the image's top left
    };
    struct Label {
        int X, Y;
        uint16_t Code;
    };
    std::vector<Placed> Glyphs;
    std::vector<Guide> Guides;
    std::vector<Label> Labels;
    CBox Bounds;

    void AddGuide(GuideKind kind, int x0, int y0, int x1, int y1, uint32_t color) {
        Guides.push_back({kind, x0, y0, x1, y1, color});
        Bounds.Add(x0, y0, x1, y1);
    }
};

CTextRenderer::CTextRenderer(const CFontBlockSet& set) : Set(set), CellLayout(ReadCellLayout(set)) {
    const uint8_t* info = set.GetBlock(TagFINF, 0)->Data();
    LineFeed = static_cast<int8_t>(info[FinfLineFeed]);
    AlternateGlyph = GetU16(info + FinfAlternateGlyph);
    Encoding = info[FinfEncoding];
}

uint16_t CTextRenderer::GlyphFor(char16_t unicode) const {
    const uint16_t code = UnicodeToFileCode(Encoding, unicode);
    if (code == NoChar) return AlternateGlyph;
    const uint16_t glyph = Set.FindGlyphIndex(code);
    return glyph == NoGlyph ? AlternateGlyph : glyph;
}

const CTextRenderer::CSprite& CTextRenderer::SpriteOf(uint16_t glyph) {
    auto found = Sprites.find(glyph);
    if (found != Sprites.end()) return found->second;
    CSprite& sprite = Sprites[glyph];
    const uint8_t* cell = Set.GetCellBits(glyph);
    // A glyph index beyond the cells (a damaged alternate index) draws nothing.
    if (!cell) return sprite;
    CGlyphImage image;
    ExtractGlyphImage(cell, CellLayout, Set.GetCharWidths(glyph).GlyphWidth, image);
    sprite.Width = image.Width;
    sprite.Height = image.Height;
    sprite.Origin = image.Origin;
    const std::vector<uint8_t> values = UnpackPixels(image, CellLayout.Bpp);
    CBox ink;
    for (int y = 0; y < image.Height; ++y)
        for (int x = 0; x < image.Width; ++x)
            if (values[static_cast<std::size_t>(y) * image.Width + x]) ink.Add(x, y, x + 1, y + 1);
    if (ink.Empty()) return sprite;
    sprite.Ink = InkBox{ink.X0, ink.Y0, ink.X1, ink.Y1};
    for (int y = ink.Y0; y < ink.Y1; ++y)
        for (int x = ink.X0; x < ink.X1; ++x) sprite.Values.push_back(values[static_cast<std::size_t>(y) * image.Width + x]);
    return sprite;
}

int CTextRenderer::PlaceGlyph(CScene& scene, uint16_t glyph, int x, int y, bool guides) {
    const CharWidths widths = Set.GetCharWidths(glyph);
    const CSprite& sprite = SpriteOf(glyph);
    int left, top;
    if (CellLayout.Vertical) {
        // x is the column's reference line, y the pen; the left space is the space above.
        left = x - (sprite.Width - sprite.Origin);
        top = y + widths.Left;
    } else {
        // y is the baseline.
        left = x + widths.Left;
        top = y - sprite.Origin;
    }
    if (!sprite.Values.empty()) {
        scene.Glyphs.push_back({&sprite, left, top});
        scene.Bounds.Add(left + sprite.Ink.X0, top + sprite.Ink.Y0, left + sprite.Ink.X1, top + sprite.Ink.Y1);
    }
    if (guides && sprite.Width > 0 && sprite.Height > 0)
        scene.AddGuide(CScene::GuideKind::Box, left, top, left + sprite.Width, top + sprite.Height, BoxColor);
    return widths.CharWidth;
}

CRgbImage CTextRenderer::DrawText(std::string_view utf8, const CPreviewOptions& options) {
    const std::u16string text = Utf8ToUtf16(utf8);
    const bool vertical = CellLayout.Vertical;
    const int width = CellLayout.UprightWidth(), height = CellLayout.UprightHeight(), base = CellLayout.Baseline;
    CScene scene;
    int line = 0, pen = 0;
    std::vector<int> ticks;
    auto endLine = [&] {
        ticks.push_back(pen);
        const int lineStart = std::min(0, pen), lineEnd = std::max(0, pen);
        if (vertical) {
            const int ref = -line * LineFeed;
            scene.Bounds.Add(ref - (width - base), lineStart, ref + base, lineEnd);
            if (!options.Guides) return;
            scene.AddGuide(CScene::GuideKind::VLine, ref, lineStart, ref, lineEnd, BaselineColor);
            for (int t : ticks) scene.AddGuide(CScene::GuideKind::HLine, ref, t, ref + 2, t, AdvanceColor);
        } else {
            const int baseline = line * LineFeed;
            scene.Bounds.Add(lineStart, baseline - base, lineEnd, baseline - base + height);
            if (!options.Guides) return;
            scene.AddGuide(CScene::GuideKind::HLine, lineStart, baseline, lineEnd, baseline, BaselineColor);
            for (int t : ticks) scene.AddGuide(CScene::GuideKind::VLine, t, baseline, t, baseline + 2, AdvanceColor);
        }
    };
    for (char16_t c : text) {
        if (c == u'\r') continue;
        if (c == u'\n') {
            endLine();
            ++line;
            pen = 0;
            ticks.clear();
            continue;
        }
        ticks.push_back(pen);
        const uint16_t glyph = GlyphFor(c);
        pen += vertical ? PlaceGlyph(scene, glyph, -line * LineFeed, pen, options.Guides)
                        : PlaceGlyph(scene, glyph, pen, line * LineFeed, options.Guides);
    }
    endLine();
    return Paint(scene, options);
}

CRgbImage CTextRenderer::DrawSheet(const CPreviewOptions& options) {
    std::vector<std::pair<uint16_t, uint16_t>> entries;  // file code, glyph
    for (uint32_t c = 0; c <= 0xFFFF; ++c) {
        const uint16_t glyph = Set.FindGlyphIndex(static_cast<uint16_t>(c));
        if (glyph != NoGlyph) entries.emplace_back(static_cast<uint16_t>(c), glyph);
    }
    // One glyph alone with its pen at (0, 0): the union of every glyph's cell,
    // advance and ink is the room each grid place needs.
    const bool vertical = CellLayout.Vertical;
    const int width = CellLayout.UprightWidth(), height = CellLayout.UprightHeight(), base = CellLayout.Baseline;
    CScene probe;
    for (const auto& entry : entries) {
        const int advance = PlaceGlyph(probe, entry.second, 0, 0, false);
        if (vertical)
            probe.Bounds.Add(base - width, std::min(0, advance), base, std::max(0, advance));
        else
            probe.Bounds.Add(std::min(0, advance), -base, std::max(0, advance), height - base);
    }
    if (probe.Bounds.Empty()) probe.Bounds.Add(0, 0, 1, 1);
    const int pitchX = std::max(probe.Bounds.X1 - probe.Bounds.X0, LabelWidth) + 4;
    const int pitchY = LabelHeight + LabelGap + (probe.Bounds.Y1 - probe.Bounds.Y0) + 4;
    // About as wide as high, 16 to 64 places a row.
    const double square = std::sqrt(static_cast<double>(entries.size()) * pitchY / pitchX);
    const int columns = std::clamp(static_cast<int>(std::ceil(square)), 16, 64);

    CScene scene;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const int cx = static_cast<int>(i % columns) * pitchX, cy = static_cast<int>(i / columns) * pitchY;
        scene.Labels.push_back({cx, cy, entries[i].first});
        scene.Bounds.Add(cx, cy, cx + pitchX - 4, cy + pitchY - 4);
        const int x = cx - probe.Bounds.X0, y = cy + LabelHeight + LabelGap - probe.Bounds.Y0;
        const int advance = PlaceGlyph(scene, entries[i].second, x, y, options.Guides);
        if (!options.Guides) continue;
        if (vertical) {
            scene.AddGuide(CScene::GuideKind::VLine, x, y, x, y + advance, BaselineColor);
            scene.AddGuide(CScene::GuideKind::HLine, x, y + advance, x + 2, y + advance, AdvanceColor);
        } else {
            scene.AddGuide(CScene::GuideKind::HLine, x, y, x + advance, y, BaselineColor);
            scene.AddGuide(CScene::GuideKind::VLine, x + advance, y, x + advance, y + 2, AdvanceColor);
        }
    }
    if (entries.empty()) scene.Bounds.Add(0, 0, LabelWidth, LabelHeight);
    return Paint(scene, options);
}

CRgbImage CTextRenderer::Paint(const CScene& scene, const CPreviewOptions& options) const {
    const int zoom = std::clamp(options.Zoom, 1, MaxPreviewZoom);
    CBox bounds = scene.Bounds;
    if (bounds.Empty()) bounds.Add(0, 0, 0, 0);
    const long long w = (static_cast<long long>(bounds.X1) - bounds.X0 + 2 * Margin) * zoom;
    const long long h = (static_cast<long long>(bounds.Y1) - bounds.Y0 + 2 * Margin) * zoom;
    if (w > MaxSide || h > MaxSide || w * h > MaxPixels)
        ThrowError("Preview Error:\n The picture would be too large(=%d x %d pixels).", static_cast<int>(w),
                   static_cast<int>(h));
    CRgbImage out;
    out.Width = static_cast<int>(w);
    out.Height = static_cast<int>(h);
    out.OriginX = (Margin - bounds.X0) * zoom;
    out.OriginY = (Margin - bounds.Y0) * zoom;
    out.Rgb.resize(static_cast<std::size_t>(w * h) * 3);
    for (std::size_t i = 0; i < out.Rgb.size(); i += 3) {
        out.Rgb[i] = Channel(options.Paper, 16);
        out.Rgb[i + 1] = Channel(options.Paper, 8);
        out.Rgb[i + 2] = Channel(options.Paper, 0);
    }
    // Canvas pixels; level / maxLevel of the way from what is there to the colour.
    const int maxLevel = (1 << CellLayout.Bpp) - 1;
    auto blend = [&](int x, int y, uint32_t color, int level) {
        if (x < 0 || y < 0 || x >= out.Width || y >= out.Height) return;
        uint8_t* p = out.Rgb.data() + (static_cast<std::size_t>(y) * out.Width + x) * 3;
        for (int k = 0; k < 3; ++k) {
            const int from = p[k], to = Channel(color, 16 - 8 * k);
            p[k] = static_cast<uint8_t>(from + (to - from) * level / maxLevel);
        }
    };
    auto fill = [&](int fx, int fy, uint32_t color, int level) {
        const int x0 = out.OriginX + fx * zoom, y0 = out.OriginY + fy * zoom;
        for (int y = y0; y < y0 + zoom; ++y)
            for (int x = x0; x < x0 + zoom; ++x) blend(x, y, color, level);
    };
    auto hline = [&](int fx0, int fx1, int cy, uint32_t color) {
        for (int x = out.OriginX + fx0 * zoom; x < out.OriginX + fx1 * zoom; ++x) blend(x, cy, color, maxLevel);
    };
    auto vline = [&](int cx, int fy0, int fy1, uint32_t color) {
        for (int y = out.OriginY + fy0 * zoom; y < out.OriginY + fy1 * zoom; ++y) blend(cx, y, color, maxLevel);
    };

    for (const auto& g : scene.Guides) {
        switch (g.Kind) {
        case CScene::GuideKind::HLine: hline(g.X0, g.X1, out.OriginY + g.Y0 * zoom, g.Color); break;
        case CScene::GuideKind::VLine: vline(out.OriginX + g.X0 * zoom, g.Y0, g.Y1, g.Color); break;
        case CScene::GuideKind::Box:
            hline(g.X0, g.X1, out.OriginY + g.Y0 * zoom, g.Color);
            hline(g.X0, g.X1, out.OriginY + g.Y1 * zoom - 1, g.Color);
            vline(out.OriginX + g.X0 * zoom, g.Y0, g.Y1, g.Color);
            vline(out.OriginX + g.X1 * zoom - 1, g.Y0, g.Y1, g.Color);
            break;
        }
    }
    for (const auto& label : scene.Labels)
        for (int d = 0; d < 4; ++d) {
            const int digit = (label.Code >> (12 - 4 * d)) & 0xF;
            for (int row = 0; row < 5; ++row)
                for (int col = 0; col < 3; ++col)
                    if (DigitRows[digit][row] & (4 >> col)) fill(label.X + d * 4 + col, label.Y + row, LabelColor, maxLevel);
        }
    for (const auto& placed : scene.Glyphs) {
        const CSprite& s = *placed.Sprite;
        const int inkW = s.Ink.Width();
        for (int y = 0; y < s.Ink.Height(); ++y)
            for (int x = 0; x < inkW; ++x) {
                const int level = s.Values[static_cast<std::size_t>(y) * inkW + x];
                if (level) fill(placed.X + s.Ink.X0 + x, placed.Y + s.Ink.Y0 + y, options.Ink, level);
            }
    }
    return out;
}

void LoadZglyForPreview(const std::filesystem::path& path, CFontBlockSet& set) {
    CheckInputFile(path);
    CFontBlockFile(path).Load(set);
}
