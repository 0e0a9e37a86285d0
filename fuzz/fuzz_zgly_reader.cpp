// The ZGLY block file (header, block split, structure checks) and the reader
// that turns the blocks into glyphs, on arbitrary file bytes.
#include "core/font_data.h"
#include "core/font_filter.h"
#include "fuzz/fuzz_support.h"
#include "zgly/font_block_file.h"
#include "zgly/zarnic_font_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    CFuzzEnvironment& env = FuzzEnvironment();
    std::filesystem::path path = env.Write("input.zgly", data, size);
    env.Run([&] {
        CFontBlockFile file(path);
        CFontBlockSet set;
        file.Load(set);
        // Every lookup of a validated set stays inside its blocks.
        uint32_t sum = 0;
        for (uint32_t code = 0; code < 0x10000; code += 7) {
            uint16_t glyph = set.FindGlyphIndex(static_cast<uint16_t>(code));
            if (glyph == 0xFFFF) continue;
            CharWidths w = set.GetCharWidths(glyph);
            sum += static_cast<uint32_t>(w.CharWidth);
            if (const uint8_t* bits = set.GetCellBits(glyph)) sum += bits[0];
        }
        (void)sum;
    });
    env.Run([&] {
        CZarnicFontReader reader(path);
        reader.CheckParameters();
        CFontData font;
        CFontFilter all;
        reader.Read(font, all);
        for (const auto& g : font.GetGlyphs())
            if (g->Pixels.size() < g->PixelBytes()) __builtin_trap();  // a glyph must hold its ink
    });
    return 0;
}
