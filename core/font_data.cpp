#include "core/font_data.h"

#include <algorithm>
#include <climits>
#include <cstring>

#include "core/general_exception.h"
#include "core/pg_ctrl.h"

std::unique_ptr<CGlyph> CGlyph::CopyFrom(const CGlyph& other) {
    auto g = std::make_unique<CGlyph>();
    g->Ascent = other.Ascent;
    g->RightExtent = other.RightExtent;
    g->LeftSpace = other.LeftSpace;
    g->RightSpace = other.RightSpace;
    g->TopSpace = other.TopSpace;
    g->BottomSpace = other.BottomSpace;
    g->Bpp = other.Bpp;
    g->Ink = other.Ink;
    g->Pixels = other.Pixels;
    return g;
}

std::size_t CGlyph::PixelBytes() const {
    long long w = Ink.Width(), h = Ink.Height();
    if (w <= 0 || h <= 0) return 0;
    return static_cast<std::size_t>((h * w * Bpp + 7) / 8);
}

bool CGlyph::SameAs(const CGlyph& o) const {
    if (Ascent != o.Ascent || RightExtent != o.RightExtent || LeftSpace != o.LeftSpace ||
        RightSpace != o.RightSpace || TopSpace != o.TopSpace || BottomSpace != o.BottomSpace || Bpp != o.Bpp)
        return false;
    if (Ink.Width() != o.Ink.Width() || Ink.Height() != o.Ink.Height()) return false;
    std::size_t n = PixelBytes();
    if (Pixels.size() < n || o.Pixels.size() < n) return Pixels == o.Pixels;
    return n == 0 || std::memcmp(Pixels.data(), o.Pixels.data(), n) == 0;
}

std::unique_ptr<CFontData> CFontData::CopySettingsFrom(const CFontData& other) {
    auto f = std::make_unique<CFontData>();
    f->CopyValuesFrom(other);
    return f;
}

void CFontData::CopyValuesFrom(const CFontData& o) {
    LineHeight = o.LineHeight;
    Bpp = o.Bpp;
    Baseline = o.Baseline;
    CellWidth = o.CellWidth;
    CellHeight = o.CellHeight;
    MaxCharWidth = o.MaxCharWidth;
    MaxCharHeight = o.MaxCharHeight;
    DefaultWidth = o.DefaultWidth;
    AlternateChar = o.AlternateChar;
    IsVertical = o.IsVertical;
}

void CFontData::AddGlyph(std::unique_ptr<CGlyph> glyph, uint16_t code) {
    auto& page = GlyphByCode[code >> 8];
    if (!page) page = std::make_unique<CodePage256>();  // value-initialised: all null
    CGlyph*& slot = (*page)[code & 0xFF];
    CGlyph* stored = slot;
    if (!stored) {
        glyph->Index = static_cast<uint16_t>(Glyphs.size());
        glyph->Code = code;
        slot = glyph.get();
        Glyphs.push_back(std::move(glyph));
        return;
    }
    if (!glyph->SameAs(*stored))
        ReportWarning(g_pPgCtrl,
                      "A character code('%c': U+%04X) has multiple glyphs. Second and later glyphs are ignored.",
                      static_cast<char16_t>(code), static_cast<int>(code));
}

const CGlyph* CFontData::FindGlyph(uint16_t code) const {
    const auto& page = GlyphByCode[code >> 8];
    return page ? (*page)[code & 0xFF] : nullptr;
}

void CFontData::SortGlyphs() {
    std::sort(Glyphs.begin(), Glyphs.end(), [](const auto& a, const auto& b) { return a->Code < b->Code; });
    for (std::size_t i = 0; i < Glyphs.size(); ++i) Glyphs[i]->Index = static_cast<uint16_t>(i);
}

void CFontData::Clear() {
    Glyphs.clear();
    for (auto& page : GlyphByCode) page.reset();
}

void CFontData::PrepareForOutput() {
    if (Glyphs.empty()) throw CGeneralException("Parameter Error:\n No glyphs in output.");
    if (!Bpp.Specified) ThrowError("Internal Error:\n Bits Per Pixel(%d) is not specified", Bpp.Value);
    if (Bpp.Value < 1 || Bpp.Value > 8) ThrowError("Internal Error:\n Bits Per Pixel(%d) is out of range", Bpp.Value);

    int32_t a = INT32_MIN, d = INT32_MIN, r = INT32_MIN, l = INT32_MIN, h = 0, v = 0;
    for (const auto& g : Glyphs) {
        int32_t w = g->Ink.Width(), ih = g->Ink.Height();
        if (ih > 0 || w >= 1) {
            a = std::max(a, g->Ascent);
            d = std::max(d, ih - g->Ascent);
            r = std::max(r, g->RightExtent);
            l = std::max(l, w - g->RightExtent);
        }
        h = std::max(h, g->LeftSpace + w + g->RightSpace);
        v = std::max(v, g->TopSpace + ih + g->BottomSpace);
    }
    if (a == INT32_MIN) a = d = r = l = 0;
    Baseline.Set(Vertical() ? r : a);
    MaxCharWidth.Set(h);
    MaxCharHeight.Set(v);
    CellHeight.Set(a + d);
    CellWidth.Set(l + r);
    if (!LineHeight.Specified) LineHeight.Set(CellHeight.Value);
    if (!DefaultWidth.Specified)
        DefaultWidth.Set(CharWidths{0, static_cast<uint8_t>(CellWidth.Value), static_cast<uint8_t>(CellWidth.Value)});
    SortGlyphs();
}
