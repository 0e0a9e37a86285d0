// The LC Font reader. The variant of an LC Font file is known only from its
// size, so the first input byte picks the size (one of the eight) and the
// options; the rest is the file's content, zero-filled to that size. The
// file is read with both mappings.
#include <vector>

#include "core/font_data.h"
#include "core/font_filter.h"
#include "fuzz/fuzz_support.h"
#include "sources/lc_font_reader.h"

namespace {
constexpr uint32_t LcSizes[] = {7520, 9024, 10528, 13536, 73320, 161304, 190632, 249288};
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    if (size < 1) return 0;
    CFuzzEnvironment& env = FuzzEnvironment();
    uint8_t select = data[0];
    // Bit 3 keeps the input's own length, so that wrong sizes are tried too.
    std::vector<uint8_t> content(data + 1, data + size);
    if (!(select & 0x08)) content.resize(LcSizes[select & 7], 0);
    std::filesystem::path path = env.Write("input.lc", content.data(), content.size());
    bool fixed = select & 0x10, halfFixed = select & 0x20, vertical = select & 0x40;
    for (int mapping = 0; mapping < 2; ++mapping)
        env.Run([&] {
            CLcFontReader reader(mapping == 0 ? path : std::filesystem::path(),
                                 mapping == 1 ? path : std::filesystem::path(), fixed, halfFixed, vertical);
            reader.CheckParameters();
            CFontData font;
            CFontFilter all;
            reader.Read(font, all);
        });
    return 0;
}
