// The characters-file decoder (--chars-file, a .txt filter) on arbitrary
// file bytes, and the same bytes as a --chars text.
#include "xmlfiles/char_selection.h"
#include "core/font_filter.h"
#include "fuzz/fuzz_support.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    CFuzzEnvironment& env = FuzzEnvironment();
    std::filesystem::path path = env.Write("chars.txt", data, size);
    env.Run([&] {
        CFontFilter filter;
        CharSelection selection;
        selection.TextFiles = {path};
        LoadCharSelection(filter, selection);
        if (filter.IsExcluded(0x0020)) __builtin_trap();  // the space is always kept
        // The window's filter field reads a .txt file the same way.
        CFontFilter field;
        LoadFilterFile(field, path);
        for (uint32_t code = 0; code < 0x10000; ++code)
            if (filter.IsExcluded(static_cast<uint16_t>(code)) != field.IsExcluded(static_cast<uint16_t>(code)))
                __builtin_trap();
    });
    env.Run([&] {
        CFontFilter filter;
        CharSelection selection;
        selection.Texts = {std::string(reinterpret_cast<const char*>(data), size)};
        LoadCharSelection(filter, selection);
    });
    return 0;
}
