#include "synthetic_font.h"

#include "core/bit_stream.h"
#include "core/font_filter.h"
#include "core/glyph_order.h"
#include "core/headless_pg_ctrl.h"
#include "core/pg_ctrl.h"
#include "zgly/zarnic_font_reader.h"
#include "zgly/zarnic_font_writer.h"

namespace {

struct CRandom {
    explicit CRandom(uint32_t seed) : State(seed * 2654435761u + 12345u) {}
    int Next(int n) {
        State = State * 1664525u + 1013904223u;
        return static_cast<int>((State >> 8) % static_cast<uint32_t>(n));
    }
    uint32_t State;
};

// The given progress interface, or a silent one, as g_pPgCtrl for a call.
struct CPgScope {
    explicit CPgScope(CPgCtrl* pg) : Scope(pg ? *pg : Silent) {}
    CHeadlessPgCtrl Silent;
    CPgCtrlScope Scope;
};

}  // namespace

std::vector<uint16_t> CodeRange(uint16_t first, int count) {
    std::vector<uint16_t> codes;
    for (int i = 0; i < count; ++i) codes.push_back(static_cast<uint16_t>(first + i));
    return codes;
}

std::unique_ptr<CFontData> MakeSyntheticFont(const SyntheticFontShape& fontShape) {
    auto font = std::make_unique<CFontData>();
    font->Bpp.Set(fontShape.Bpp);
    font->IsVertical.Set(fontShape.Vertical);
    const int w = fontShape.CellWidth, h = fontShape.CellHeight, maxValue = (1 << fontShape.Bpp) - 1;
    std::vector<uint8_t> cell(PackedBytes(w, h, fontShape.Bpp) + 1);
    for (uint16_t code : fontShape.Codes) {
        CRandom rnd(fontShape.Seed * 65537u + code);
        std::fill(cell.begin(), cell.end(), 0);
        bool ink = code != 0x20 && code % 97 != 0;
        int x0 = rnd.Next(w / 2), y0 = rnd.Next(h / 2);
        int x1 = x0 + 1 + rnd.Next(w - x0), y1 = y0 + 1 + rnd.Next(h - y0);
        CBitWriter out;
        out.Start(cell.data());
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x) {
                bool inside = ink && x >= x0 && x < x1 && y >= y0 && y < y1;
                // The box's corners are always inked so that the ink box is the box.
                bool corner = (x == x0 || x == x1 - 1) && (y == y0 || y == y1 - 1);
                uint32_t v = inside ? (corner ? maxValue : static_cast<uint32_t>(rnd.Next(maxValue + 1))) : 0;
                out.Write(fontShape.Bpp, v);
                out.MarkPending();
            }
        out.Flush();
        auto glyph = std::make_unique<CGlyph>();
        // Negative space only beside ink, so that no advance is negative.
        int before = rnd.Next(4) - (ink ? 1 : 0), after = rnd.Next(3);
        glyph->SetFromCell(cell.data(), w, h, fontShape.Bpp, fontShape.Vertical, before, after, fontShape.Origin);
        font->AddGlyph(std::move(glyph), code);
    }
    return font;
}

void WriteSyntheticZgly(CFontData& font, const std::filesystem::path& path, int encoding, int rotation,
                        CPgCtrl* pg) {
    CPgScope scope(pg);
    if (!font.CellWidth.Specified) font.PrepareForOutput();
    CZarnicFontWriter writer(path, {.Encoding = static_cast<EncodingNumber>(encoding), .Rotation = rotation});
    writer.CheckParameters();
    writer.Write(font, CGlyphOrder());
}

std::unique_ptr<CFontData> ReadZgly(const std::filesystem::path& path, CPgCtrl* pg) {
    CPgScope scope(pg);
    CZarnicFontReader reader(path);
    reader.CheckParameters();
    auto font = std::make_unique<CFontData>();
    reader.Read(*font, CFontFilter());
    return font;
}
