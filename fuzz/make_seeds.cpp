// Writes the seed corpus of every fuzz target into OUTDIR/<target>/: small
// valid files made by the program's own writers, plus a few hand-made edge
// files. Usage: fuzz_make_seeds OUTDIR
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "bmpfont/bmp_font_writer.h"
#include "core/bit_stream.h"
#include "core/font_data.h"
#include "core/general_exception.h"
#include "core/glyph_order.h"
#include "core/headless_pg_ctrl.h"
#include "zgly/synthetic_font.h"

extern const char* const FuzzGridOrder;

namespace {

namespace fs = std::filesystem;

void WriteFile(const fs::path& path, const std::string& bytes) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

std::string ReadFile(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

// A raw BMP of any depth, bottom-up unless topDown; pixel value (x + 2y) mod 2^bpp.
std::string RawBmp(int width, int height, int bpp, bool topDown) {
    std::string out;
    auto put = [&](uint32_t v, int n) {
        for (int i = 0; i < n; ++i) out += static_cast<char>((v >> (8 * i)) & 0xFF);
    };
    int stride = ((bpp * width + 31) / 32) * 4;
    uint32_t paletteBytes = bpp <= 8 ? 4u << bpp : 0;
    uint32_t offset = 54 + paletteBytes;
    put(0x4D42, 2);
    put(offset + stride * height, 4);
    put(0, 4);
    put(offset, 4);
    put(40, 4);
    put(static_cast<uint32_t>(width), 4);
    put(static_cast<uint32_t>(topDown ? -height : height), 4);
    put(1, 2);
    put(static_cast<uint32_t>(bpp), 2);
    for (int i = 0; i < 6; ++i) put(0, 4);
    for (uint32_t i = 0; i < paletteBytes / 4; ++i) put(i * 0x010101u * (255u >> (bpp < 8 ? 8 - bpp : 0)), 4);
    for (int y = 0; y < height; ++y) {
        std::vector<uint8_t> row(static_cast<std::size_t>(stride), 0);
        CBitWriter w;
        w.Start(row.data());
        for (int x = 0; x < width; ++x) {
            uint32_t v = static_cast<uint32_t>(x + 2 * y) * 0x01030507u;
            if (bpp <= 8)
                w.Write(bpp, v & ((1u << bpp) - 1));
            else
                for (int b = 0; b < bpp; b += 8) w.Write(8, (v >> b) & 0xFF);
        }
        w.MarkPending();
        w.Flush();
        out.append(reinterpret_cast<const char*>(row.data()), row.size());
    }
    return out;
}

// A glyph with ink in the box (x0,y0)-(x1,y1) of a 6 x 8 (8 x 6 vertical) cell.
std::unique_ptr<CGlyph> Glyph(int bpp, bool vertical, int x0, int y0, int x1, int y1, int seed) {
    int w = vertical ? 8 : 6, h = vertical ? 6 : 8;
    std::vector<uint8_t> packed(PackedBytes(w, h, bpp) + 1);
    CBitWriter wr;
    wr.Start(packed.data());
    uint32_t levels = (1u << bpp) - 1;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            bool ink = x >= x0 && x < x1 && y >= y0 && y < y1;
            wr.WriteValue(bpp, ink ? (x * 3 + y * 5 + seed) % levels + 1 : 0);
            wr.MarkPending();
        }
    wr.Flush();
    auto g = std::make_unique<CGlyph>();
    g->SetFromCell(packed.data(), w, h, bpp, vertical, 1, 1, vertical ? 4 : 6);
    return g;
}

std::unique_ptr<CFontData> SeedFont(int bpp, bool vertical) {
    auto font = std::make_unique<CFontData>();
    font->Bpp.Set(bpp);
    font->IsVertical.Set(vertical);
    font->AddGlyph(Glyph(bpp, vertical, 1, 1, 5, 6, 0), 'A');
    font->AddGlyph(Glyph(bpp, vertical, 0, 2, 4, 8, 1), 'B');
    font->AddGlyph(Glyph(bpp, vertical, 0, 3, 3, 8, 2), 'g');
    font->AddGlyph(Glyph(bpp, vertical, 2, 0, 6, 6, 3), 'y');
    font->PrepareForOutput();
    return font;
}

void GridSeeds(const fs::path& out, const fs::path& work) {
    fs::path order = work / "grid.xlor";
    WriteFile(order, FuzzGridOrder);
    int n = 0;
    for (int bpp : {1, 2, 4, 8})
        for (bool vertical : {false, true})
            for (bool grid : {true, false}) {
                if (!grid && bpp != 2) continue;
                auto font = SeedFont(bpp, vertical);
                fs::path pic = out / "grid_reader" / ("grid" + std::to_string(n++) + ".bmp");
                fs::create_directories(pic.parent_path());
                CBmpFontWriter writer(pic, order, grid, -1, -1, -1, -1, 1, 1);
                CGlyphOrder o;
                writer.LoadGlyphOrder(o);
                writer.Write(*font, o);
                // The loader sees the same pictures.
                fs::copy_file(pic, out / "bmp_loader" / pic.filename(), fs::copy_options::overwrite_existing);
            }
}

void BmpSeeds(const fs::path& out) {
    for (int bpp : {1, 4, 8, 16, 24, 32})
        for (bool topDown : {false, true})
            WriteFile(out / "bmp_loader" / ("raw" + std::to_string(bpp) + (topDown ? "td" : "bu") + ".bmp"),
                      RawBmp(5, 3, bpp, topDown));
}

void XmlSeeds(const fs::path& out, const fs::path& xlorDir) {
    for (const char* name : {"ASCII.xlor", "Kana.xlor", "Latin1.xlor"})
        if (fs::exists(xlorDir / name)) WriteFile(out / "order_loader" / name, ReadFile(xlorDir / name));
    WriteFile(out / "order_loader" / "grid.xlor", FuzzGridOrder);
    WriteFile(out / "order_loader" / "dtd.xlor",
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE letter-order [<!ELEMENT letter-order ANY>"
              "<!ENTITY e \"xyz\">]>\n<letter-order version=\"1.0\"><head><title>T&e;</title><comment>c</comment>"
              "</head><body><area width=\"3\" height=\"2\"/><order>&e;<code>0x41</code><code>66</code><null/>"
              "<sp/></order></body></letter-order>\n");
    WriteFile(out / "filter_loader" / "plain.xllt",
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<letter-list version=\"1.0\"><head><title>t</title>"
              "</head><body><letter>ABC&#x3042;<sp/><code>0x20AC</code><code>65</code></letter>"
              "<letter>xyz</letter></body></letter-list>\n");
    WriteFile(out / "filter_loader" / "dtd.xllt",
              "<?xml version=\"1.0\"?><!DOCTYPE letter-list [<!ELEMENT letter-list ANY><!ELEMENT body ANY>"
              "<!ELEMENT letter ANY><!ENTITY e \"ab\">]><letter-list version=\"1.0\"><body><letter>&e;"
              "</letter></body></letter-list>");
}

void ZglySeeds(const fs::path& out) {
    struct Kind {
        int Bpp;
        bool Vertical;
        int Encoding;
    };
    int n = 0;
    for (Kind k : {Kind{1, false, 1}, Kind{2, false, 2}, Kind{4, true, 1}, Kind{8, false, 3}, Kind{2, true, 2}}) {
        SyntheticFontShape fontShape;
        fontShape.Codes = CodeRange(0x20, 12);
        for (uint16_t c : {0x3042, 0x30A2, 0x4E00, 0xFF61}) fontShape.Codes.push_back(c);
        fontShape.CellWidth = 6;
        fontShape.CellHeight = 8;
        fontShape.Origin = 6;
        fontShape.Bpp = k.Bpp;
        fontShape.Vertical = k.Vertical;
        fontShape.Seed = static_cast<uint32_t>(n + 1);
        auto font = MakeSyntheticFont(fontShape);
        fs::path path = out / "zgly_reader" / ("font" + std::to_string(n++) + ".zgly");
        fs::create_directories(path.parent_path());
        WriteSyntheticZgly(*font, path, k.Encoding);
        fs::create_directories(out / "zgly_info");
        fs::copy_file(path, out / "zgly_info" / path.filename(), fs::copy_options::overwrite_existing);
    }
}

// The LC target takes a selector byte (size and options), then the content,
// zero-filled to the size: a few records of real Shift_JIS codes are enough.
void LcSeeds(const fs::path& out) {
    const int rowBytes[] = {1, 1, 1, 1, 1, 2, 2, 2};
    const int heights[] = {8, 10, 12, 16, 8, 10, 12, 16};
    const uint16_t codes[] = {0x8140, 0x8260, 0x8281, 0x82A0, 0x8341, 0x889F, 0x83BF, 0x8440};
    for (int size = 0; size < 8; ++size)
        for (int options : {0x00, 0x70}) {
            std::string bytes(1, static_cast<char>(size | options));
            for (uint16_t code : codes) {
                bytes += static_cast<char>(code >> 8);
                bytes += static_cast<char>(code & 0xFF);
                for (int y = 0; y < heights[size] * rowBytes[size]; ++y)
                    bytes += static_cast<char>((0x18 << (y % 4)) ^ code);
            }
            WriteFile(out / "lc_reader" / ("lc" + std::to_string(size) + "_" + std::to_string(options) + ".bin"),
                      bytes);
        }
}

void SettingsSeeds(const fs::path& out) {
    WriteFile(out / "settings_ini" / "window.ini",
              "; comment\n[Main]\nInput=2\nOutput=1\nFilter=/home/u/a.xllt\n\n[InWin]\nFace=IPA\\3042Gothic\n"
              "Size=16\r\n[OutBmp]\nDrawGrid=1\nCellWidth=-1\n[History]\nPath0=C:\\\\x\\ty\n");
    WriteFile(out / "settings_ini" / "odd.ini", "[ Main ]\n input = 7 \n[main]\nInput=8\nnoequals\n=v\n[\n]x=y\n");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: fuzz_make_seeds OUTDIR XLORDIR\n");
        return 2;
    }
    fs::path out = argv[1];
    CHeadlessPgCtrl pg;
    CPgCtrlScope scope(pg);
    fs::path work = out / "work";
    try {
        fs::create_directories(out / "bmp_loader");
        GridSeeds(out, work);
        BmpSeeds(out);
        XmlSeeds(out, argv[2]);
        ZglySeeds(out);
        LcSeeds(out);
        SettingsSeeds(out);
    } catch (const CGeneralException& e) {
        std::fprintf(stderr, "%s\n", e.Message.c_str());
        return 1;
    }
    fs::remove_all(work);
    return 0;
}
