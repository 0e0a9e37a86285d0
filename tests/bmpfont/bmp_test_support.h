// Test fonts, hand-made BMP files and a front end for whole conversion runs.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/bit_stream.h"
#include "glyph_compare.h"
#include "core/conversion.h"
#include "core/font_data.h"
#include "xmlfiles/test_support.h"

// Pixel values of a glyph's ink, row by row.
// A glyph from a cell given as one value per pixel (row by row).
inline std::unique_ptr<CGlyph> MakeGlyph(const std::vector<uint32_t>& cell, int w, int h, int bpp, bool vertical,
                                         int space1, int space2, int origin) {
    std::vector<uint8_t> packed(PackedBytes(w, h, bpp) + 1);
    CBitWriter wr;
    wr.Start(packed.data());
    for (uint32_t v : cell) {
        wr.WriteValue(bpp, v);
        wr.MarkPending();
    }
    wr.Flush();
    auto g = std::make_unique<CGlyph>();
    g->SetFromCell(packed.data(), w, h, bpp, vertical, space1, space2, origin);
    return g;
}

// A little-endian BMP file written byte by byte; rows given top row first.
struct RawBmp {
    int Width = 1, Height = 1, Bpp = 8;
    std::vector<uint32_t> Palette;
    std::vector<uint32_t> Pixels;  // Width x Height values, top row first
    bool TopDown = false;
    uint32_t InfoSize = 40;
    uint16_t Planes = 1;
    uint32_t Compression = 0;
    uint16_t Reserved1 = 0;

    std::string Bytes() const {
        std::string out;
        auto put = [&](uint32_t v, int n) {
            for (int i = 0; i < n; ++i) out += static_cast<char>((v >> (8 * i)) & 0xFF);
        };
        int stride = ((Bpp * Width + 31) / 32) * 4;
        uint32_t paletteBytes = 4 * static_cast<uint32_t>(Palette.size());
        uint32_t offset = 14 + InfoSize + paletteBytes;
        put(0x4D42, 2);
        put(offset + stride * Height, 4);
        put(Reserved1, 2);
        put(0, 2);
        put(offset, 4);
        put(InfoSize, 4);
        put(static_cast<uint32_t>(Width), 4);
        put(static_cast<uint32_t>(TopDown ? -Height : Height), 4);
        put(Planes, 2);
        put(static_cast<uint32_t>(Bpp), 2);
        put(Compression, 4);
        for (int i = 0; i < 5; ++i) put(0, 4);
        out.append(InfoSize - 40, '\0');
        for (uint32_t c : Palette) put(c, 4);
        for (int k = 0; k < Height; ++k) {
            int y = TopDown ? k : Height - 1 - k;
            std::vector<uint8_t> row(static_cast<std::size_t>(stride), 0);
            CBitWriter wr;
            wr.Start(row.data());
            for (int x = 0; x < Width; ++x) {
                uint32_t v = Pixels[static_cast<std::size_t>(y * Width + x)];
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
    std::unique_ptr<CFontReader> CreateReader() override { return MakeReader(); }
    std::unique_ptr<CFontWriter> CreateWriter() override { return MakeWriter(); }
    void CommitInputHistory() override {}
    void CommitOutputHistory() override {}
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
};
