// The keys a recipe's [[font]] and [[font.source]] tables take: convert's
// long option names without the dashes, and what value each one needs.
#pragma once

#include <string>

enum class RecipeValue {
    Text,       // a string
    Number,     // an integer
    Flag,       // a boolean: true gives the option, false leaves it out
    Texts,      // a string or a list of strings: the option once per item
    Codes,      // a string, an integer or a list of them (ranges)
    Pair,       // "AxB" text or a list of integers joined by the option's separator
};

enum class RecipePlace { Font, Source, Both };

struct RecipeKey {
    const char* Name;       // the key
    const char* Option;     // convert's option
    RecipeValue Value;
    RecipePlace Place;
    bool IsPath = false;    // relative to the recipe's folder
    char Separator = 0;     // of a Pair
    bool StartsSource = false;
};

// Null for a key no table takes.
const RecipeKey* FindRecipeKey(const std::string& name);
// The order the options are given in, so that a source's options follow it.
int RecipeKeyRank(const RecipeKey& key);
