// The character filter loader on arbitrary file bytes.
#include "core/font_filter.h"
#include "fuzz/fuzz_support.h"
#include "xmlfiles/font_filter_handler.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    CFuzzEnvironment& env = FuzzEnvironment();
    std::filesystem::path path = env.Write("input.xllt", data, size);
    env.Run([&] {
        CFontFilter filter;
        LoadFontFilterFile(filter, path);
        if (filter.IsExcluded(0x0020)) __builtin_trap();  // a loaded filter always passes the space
    });
    return 0;
}
