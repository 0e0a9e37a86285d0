// The characters-file decoder (--chars-file, a .txt filter) on arbitrary file
// bytes in every encoding a text file may be read with; the first byte picks
// the encoding (UTF-8 as the default, or one named by --chars-encoding).
#include "core/font_filter.h"
#include "fuzz/fuzz_support.h"
#include "xmlfiles/char_selection.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    CFuzzEnvironment& env = FuzzEnvironment();
    const int encoding = data[0] % 5 - 1;  // -1: not named, else utf-8, utf-16, shift_jis, cp1252
    std::filesystem::path path = env.Write("chars.txt", data + 1, size - 1);
    env.Run([&] {
        CFontFilter filter;
        CharSelection selection;
        selection.TextFiles = {path};
        selection.TextEncoding = encoding;
        LoadCharSelection(filter, selection);
        if (filter.IsExcluded(0x0020)) __builtin_trap();  // the space is always kept
        if (encoding != -1) return;
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
        selection.Texts = {std::string(reinterpret_cast<const char*>(data + 1), size - 1)};
        LoadCharSelection(filter, selection);
    });
    return 0;
}
