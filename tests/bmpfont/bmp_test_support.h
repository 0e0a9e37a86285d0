// Test glyphs and hand-made BMP files for the glyph-grid tests.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "bmpfont/bmp_font_writer.h"
#include "core/bit_stream.h"
#include "core/glyph_order.h"
#include "core/conversion.h"
#include "core/font_data.h"
#include "glyph_compare.h"
#include "xmlfiles/char_selection.h"
#include "xmlfiles/test_support.h"

// A glyph from a cell given as one value per pixel (row by row).
inline std::unique_ptr<CGlyph> MakeGlyph(const std::vector<uint32_t>& cell, int w, int h, int bpp, bool vertical,
                                         int space1, int space2, int origin) {
    std::vector<uint8_t> packed(PackedBytes(w, h, bpp) + 1);
    for (std::size_t bit = 0; bit < cell.size() * bpp; ++bit)
        packed[bit / 8] |= static_cast<uint8_t>(((cell[bit / bpp] >> (bpp - 1 - bit % bpp)) & 1) << (7 - bit % 8));
    auto g = std::make_unique<CGlyph>();
    g->SetFromCell(packed.data(), w, h, bpp, vertical, space1, space2, origin);
    return g;
}

// Tall, wide, descending, negatively spaced and ink-less glyphs, with ink at the
// given pixels of an 8 x 12 source cell (turned to 12 x 8 for a vertical font).
inline std::unique_ptr<CFontData> GridFont(int bpp, bool vertical) {
    auto box = [](int x0, int y0, int x1, int y1) {
        std::vector<std::pair<int, int>> out;
        for (int y = y0; y < y1; ++y)
            for (int x = x0; x < x1; ++x) out.emplace_back(x, y);
        return out;
    };
    const struct {
        char Code;
        std::vector<std::pair<int, int>> Pixels;
        int Space1, Space2;
    } glyphs[] = {{'A', box(1, 0, 6, 9), 1, 1}, {'g', box(2, 5, 5, 12), 0, 2}, {'-', box(0, 6, 8, 7), -2, 1},
                  {'x', {{3, 0}, {4, 11}, {0, 6}, {7, 6}}, 2, -1}, {' ', {}, 5, 0}};
    auto font = std::make_unique<CFontData>();
    font->Bpp.Set(bpp);
    font->IsVertical.Set(vertical);
    const int w = vertical ? 12 : 8, h = vertical ? 8 : 12;
    for (int k = 0; k < 5; ++k) {
        std::vector<uint32_t> cell(static_cast<std::size_t>(w * h), 0);
        for (auto [x, y] : glyphs[k].Pixels) {
            if (vertical) std::swap(x, y);
            cell[static_cast<std::size_t>(y * w + x)] = (x + 2 * y + k) % ((1u << bpp) - 1) + 1;
        }
        font->AddGlyph(MakeGlyph(cell, w, h, bpp, vertical, glyphs[k].Space1, glyphs[k].Space2, vertical ? 6 : 9),
                       static_cast<uint16_t>(glyphs[k].Code));
    }
    font->PrepareForOutput();
    return font;
}

// The order of GridFont's glyphs, three cells a row.
inline const char* const GridFontOrder =
    "<letter-order version=\"1.0\"><body><area width=\"3\"/><order>Ag-x<sp/></order></body></letter-order>";

// Writes the font as a glyph grid with the writer's cell settings {width, height,
// offset left, top, margin right, bottom}; the order the writer loaded.
inline CGlyphOrder WriteGridPicture(CFontData& font, const std::filesystem::path& out, const std::filesystem::path& order,
                                    bool grid, const std::array<int, 6>& m) {
    CBmpFontWriter writer(out, order, grid, m[0], m[1], m[2], m[3], m[4], m[5]);
    CGlyphOrder o;
    writer.LoadGlyphOrder(o);
    writer.Write(font, o);
    return o;
}

// A little-endian BMP file written byte by byte; rows given top row first.
struct RawBmp {
    int Width = 1, Height = 1, Bpp = 8;
    std::vector<uint32_t> Palette;
    std::vector<uint32_t> Pixels;  // Width x Height values, top row first
    bool TopDown = false;
    uint32_t InfoSize = 40, Compression = 0, ColorsUsed = 0;
    uint16_t Planes = 1, Reserved1 = 0;

    std::string Bytes() const {
        std::string out;
        auto put = [&](uint32_t v, int n) {
            for (int i = 0; i < n; ++i) out += static_cast<char>(i < 4 ? (v >> (8 * i)) & 0xFF : 0);
        };
        const int stride = ((Bpp * Width + 31) / 32) * 4;
        const uint32_t offset = 14 + InfoSize + 4 * static_cast<uint32_t>(Palette.size());
        for (auto [v, n] : {std::pair{0x4D42u, 2}, {offset + stride * Height, 4}, {Reserved1, 2}, {0u, 2}, {offset, 4},
                            {InfoSize, 4}, {static_cast<uint32_t>(Width), 4}, {static_cast<uint32_t>(TopDown ? -Height : Height), 4},
                            {Planes, 2}, {static_cast<uint32_t>(Bpp), 2}, {Compression, 4}, {0u, 12}, {ColorsUsed, 4}, {0u, 4}})
            put(v, n);
        out.append(InfoSize - 40, '\0');
        for (uint32_t c : Palette) put(c, 4);
        for (int k = 0; k < Height; ++k) {
            const int y = TopDown ? k : Height - 1 - k;
            std::vector<uint8_t> row(static_cast<std::size_t>(stride), 0);
            CBitWriter wr;
            wr.Start(row.data());
            for (int x = 0; x < Width; ++x) {
                const uint32_t v = Pixels[static_cast<std::size_t>(y * Width + x)];
                for (int b = Bpp - 8; b >= 0 && Bpp > 8; b -= 8) wr.Write(8, (v >> b) & 0xFF);
                if (Bpp <= 8) wr.Write(Bpp, v);
            }
            wr.MarkPending();
            wr.Flush();
            out.append(reinterpret_cast<const char*>(row.data()), row.size());
        }
        return out;
    }
};

// A written 8-bit BMP, edited in place; y counts from the top.
struct GridBytes {
    explicit GridBytes(const std::filesystem::path& p) : Path(p) {
        std::ifstream in(p, std::ios::binary);
        Data.assign(std::istreambuf_iterator<char>(in), {});
    }
    uint32_t Field(int at) const {
        return static_cast<uint8_t>(Data[at]) | static_cast<uint8_t>(Data[at + 1]) << 8 |
               static_cast<uint8_t>(Data[at + 2]) << 16;
    }
    int Width() const { return static_cast<int>(Field(18)); }
    int Height() const { return static_cast<int>(Field(22)); }
    char& At(int x, int y) { return Data[Field(10) + static_cast<std::size_t>(Height() - 1 - y) * ((Width() + 3) & ~3) + x]; }
    void SetPalette(int index, uint32_t rgb) {
        for (int i = 0; i < 3; ++i) Data[54 + 4 * index + i] = static_cast<char>(rgb >> (8 * i));
    }
    void Save() const { std::ofstream(Path, std::ios::binary) << Data; }
    std::filesystem::path Path;
    std::string Data;
};

// A front end that runs a conversion without a window.
class CTestFrontEnd : public CConversionFrontEnd {
public:
    void BeginRun() override {}
    void LockControls() override {}
    void UnlockControls() override {}
    void EndRun() override {}
    bool UseFilter() override { return !FilterPath.empty(); }
    std::string FilterPathText() override { return FilterPath; }
    std::string CommitFilterPath() override { return FilterPath; }
    void LoadFilter(CFontFilter& filter) override { LoadFilterFile(filter, CommitFilterPath()); }
    std::unique_ptr<CFontReader> CreateReader() override { return MakeReader(); }
    std::unique_ptr<CFontWriter> CreateWriter() override { return MakeWriter(); }
    void CommitInputHistory() override { ++Commits; }
    void CommitOutputHistory() override { ++Commits; }
    void ClearMessages() override { Errors.clear(); }
    void AppendError(const std::string& text) override { Errors.push_back(text); }
    void ShowMessages() override { Shown = true; }
    bool MessagesShown() override { return Shown; }
    bool MessagesHaveText() override { return !Errors.empty(); }
    void CloseMessages() override { Shown = false; }

    std::function<std::unique_ptr<CFontReader>()> MakeReader;
    std::function<std::unique_ptr<CFontWriter>()> MakeWriter;
    std::string FilterPath;
    std::vector<std::string> Errors;
    bool Shown = false;
    int Commits = 0;
};
