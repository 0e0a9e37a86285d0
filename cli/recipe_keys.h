// The keys a recipe's [[font]] and [[font.source]] tables take: convert's
// long option names without the dashes, and what value each one needs.
#pragma once

#include <string>
#include <vector>

#include "cli/convert_options.h"

enum class RecipePlace { Font, Source, Both };

struct RecipeKey {
    std::string Name;       // the key
    std::string Option;     // convert's option; empty for "name"
    OptionValue Value;
    RecipePlace Place;
    bool IsPath = false;    // relative to the recipe's folder
    char Separator = 0;     // of a Pair
    bool StartsSource = false;
};

// Every key a table takes, for suggestions.
std::vector<std::string> RecipeKeyNames();
// Null for a key no table takes.
const RecipeKey* FindRecipeKey(const std::string& name);
// The order the options are given in, so that a source's options follow it.
int RecipeKeyRank(const RecipeKey& key);
