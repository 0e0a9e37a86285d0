// The recipe reader on arbitrary file bytes. A recipe it accepts must give
// every font arguments that convert accepts too: the build runs them.
#include "cli/convert_options.h"
#include "cli/recipe.h"
#include "fuzz/fuzz_support.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    CFuzzEnvironment& env = FuzzEnvironment();
    std::filesystem::path path = env.Write("glyphwright.toml", data, size);
    env.Run([&] {
        Recipe recipe;
        try {
            recipe = LoadRecipe(path);
        } catch (const CRecipeError& e) {
            if (std::string(e.what()).find(": ") == std::string::npos) __builtin_trap();  // RECIPE:LINE: problem
            return;
        }
        for (const RecipeFont& font : recipe.Fonts) {
            try {
                (void)ParseConvertOptions(font.Expanded);
            } catch (const CUsageError&) {
                __builtin_trap();
            }
        }
    });
    return 0;
}
