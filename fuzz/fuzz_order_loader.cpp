// The glyph order loader and the head-only reader of the order list, on
// arbitrary file bytes.
#include "core/glyph_order.h"
#include "fuzz/fuzz_support.h"
#include "xmlfiles/glyph_order_files.h"
#include "xmlfiles/glyph_order_handler.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    CFuzzEnvironment& env = FuzzEnvironment();
    std::filesystem::path path = env.Write("input.xlor", data, size);
    env.Run([&] {
        CGlyphOrder order;
        LoadGlyphOrderFile(order, path);
        // Every cell of the grid must be answerable.
        uint32_t sum = 0;
        for (int y = 0; y < order.Height && y < 4096; ++y)
            for (int x = 0; x < order.Width && x < 4096; ++x) sum += order.GetCode(x, y);
        (void)sum;
    });
    env.Run([&] {
        GlyphOrderInfo info;
        LoadGlyphOrderInfo(info, path);
    });
    return 0;
}
