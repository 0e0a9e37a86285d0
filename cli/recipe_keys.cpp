#include "cli/recipe_keys.h"

#include <vector>

namespace {

// convert's options in its order (sources first, then the output and the
// rest); each input also under its short name, for [[font.source]] tables.
std::vector<RecipeKey> MakeKeys() {
    std::vector<RecipeKey> keys;
    for (const ConvertOption& o : ConvertOptionTable()) {
        const std::string option = o.Name;
        // The build reports each font itself.
        if (option == "--quiet") continue;
        const bool input = o.Group == OptionGroup::Input;
        if (input)
            keys.push_back({option.substr(7), option, o.Value, RecipePlace::Source, o.IsPath, o.Separator, true});
        const bool ofSource = o.Group != OptionGroup::Output && o.Group != OptionGroup::Run;
        keys.push_back({option.substr(2), option, o.Value, ofSource ? RecipePlace::Both : RecipePlace::Font, o.IsPath,
                        o.Separator, input});
    }
    keys.push_back({"settings", "--settings", OptionValue::Text, RecipePlace::Font, true});
    // Not an option: the font's name in the report.
    keys.push_back({"name", "", OptionValue::Text, RecipePlace::Font});
    return keys;
}

const std::vector<RecipeKey>& Keys() {
    static const std::vector<RecipeKey> keys = MakeKeys();
    return keys;
}

}  // namespace

std::vector<std::string> RecipeKeyNames() {
    std::vector<std::string> names = {"source"};
    for (const RecipeKey& k : Keys()) names.push_back(k.Name);
    return names;
}

const RecipeKey* FindRecipeKey(const std::string& name) {
    for (const RecipeKey& k : Keys())
        if (name == k.Name) return &k;
    return nullptr;
}

int RecipeKeyRank(const RecipeKey& key) {
    // The window's settings come first, so that the recipe's keys override them.
    if (key.Name == "settings") return -1;
    return static_cast<int>(&key - Keys().data());
}
