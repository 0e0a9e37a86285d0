// A window's settings file replayed as convert options (convert --settings),
// on arbitrary file bytes: a clean refusal or options convert takes.
#include "cli/convert_options.h"
#include "cli/settings_replay.h"
#include "fuzz/fuzz_support.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    CFuzzEnvironment& env = FuzzEnvironment();
    std::filesystem::path path = env.Write("window.ini", data, size);
    env.Run([&] {
        std::vector<std::string> args;
        try {
            args = ExpandSettingsOption({"--settings", path.string()});
            (void)ParseConvertOptions(args);
        } catch (const CUsageError& e) {
            if (std::string(e.what()).empty()) __builtin_trap();
        }
    });
    return 0;
}
