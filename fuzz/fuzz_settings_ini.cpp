// The desktop window's settings file parser on arbitrary file bytes: reading
// keys, writing one back, and the string escapes.
#include "fuzz/fuzz_support.h"
#include "settings/ini_file.h"
#include "settings/settings_store.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    CFuzzEnvironment& env = FuzzEnvironment();
    std::filesystem::path path = env.Write("settings.ini", data, size);
    std::string_view text(reinterpret_cast<const char*>(data), size);
    env.Run([&] {
        CSettingsStore store(path);
        (void)store.GetInt("Main", "Input", 0);
        (void)store.GetBool("OutBmp", "DrawGrid", true);
        std::string s = store.GetString("InWin", "Face", "x");
        // A written value reads back, whatever the file held before.
        store.SetString("Main", "Path", s);
        if (store.GetString("Main", "Path") != s) __builtin_trap();
        store.SetInt("Main", "Input", -7);
        if (store.GetInt("Main", "Input", 0) != -7) __builtin_trap();
        // A file may repeat a section; deleting removes the first, as a
        // private-profile file does, so only the call itself is exercised.
        store.DeleteSection("InWin");
    });
    env.Run([&] {
        CIniText ini(text);
        ini.Set("a", "b", "c");
        if (ini.Get("A", "B") != std::optional<std::string>("c")) __builtin_trap();
        std::string once = UnescapeSettingString(text);
        if (UnescapeSettingString(EscapeSettingString(once)) != once) __builtin_trap();
    });
    return 0;
}
