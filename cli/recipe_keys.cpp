#include "cli/recipe_keys.h"

#include <vector>
#include <cstring>

namespace {

using V = RecipeValue;
using P = RecipePlace;

// Source starters first, then source options, then the output and the rest.
const std::vector<RecipeKey> Keys = {
    {"font", "--from-font", V::Text, P::Source, false, 0, true},
    {"from-font", "--from-font", V::Text, P::Both, false, 0, true},
    {"bmp", "--from-bmp", V::Text, P::Source, true, 0, true},
    {"from-bmp", "--from-bmp", V::Text, P::Both, true, 0, true},
    {"zgly", "--from-zgly", V::Text, P::Source, true, 0, true},
    {"from-zgly", "--from-zgly", V::Text, P::Both, true, 0, true},
    {"lc", "--from-lc", V::Text, P::Source, true, 0, true},
    {"from-lc", "--from-lc", V::Text, P::Both, true, 0, true},
    {"lc-half", "--lc-half", V::Text, P::Both, true, 0, false},
    {"style", "--style", V::Text, P::Both},
    {"from-order", "--from-order", V::Text, P::Both, true},
    {"colors", "--colors", V::Number, P::Both},
    {"size", "--size", V::Number, P::Both},
    {"cell-height", "--cell-height", V::Number, P::Both},
    {"levels", "--levels", V::Number, P::Both},
    {"width", "--width", V::Text, P::Both},
    {"fixed-width", "--fixed-width", V::Number, P::Both},
    {"no-soft-aa", "--no-soft-aa", V::Flag, P::Both},
    {"lc-proportional", "--lc-proportional", V::Flag, P::Both},
    {"lc-half-proportional", "--lc-half-proportional", V::Flag, P::Both},
    {"vertical", "--vertical", V::Flag, P::Both},
    {"to-zgly", "--to-zgly", V::Text, P::Font, true},
    {"to-bmp", "--to-bmp", V::Text, P::Font, true},
    {"encoding", "--encoding", V::Text, P::Font},
    {"alt-char", "--alt-char", V::Text, P::Font},
    {"line-height", "--line-height", V::Number, P::Font},
    {"default-left", "--default-left", V::Number, P::Font},
    {"default-width", "--default-width", V::Number, P::Font},
    {"default-right", "--default-right", V::Number, P::Font},
    {"rotation", "--rotation", V::Number, P::Font},
    {"to-order", "--to-order", V::Text, P::Font, true},
    {"no-grid", "--no-grid", V::Flag, P::Font},
    {"cell", "--cell", V::Pair, P::Font, false, 'x'},
    {"offset", "--offset", V::Pair, P::Font, false, ','},
    {"margins", "--margins", V::Pair, P::Font, false, ','},
    {"filter", "--filter", V::Text, P::Font, true},
    {"chars", "--chars", V::Texts, P::Font},
    {"chars-file", "--chars-file", V::Texts, P::Font, true},
    {"range", "--range", V::Codes, P::Font},
    {"settings", "--settings", V::Text, P::Font, true},
    // Not an option: the font's name in the report.
    {"name", "", V::Text, P::Font},
};

}  // namespace

const RecipeKey* FindRecipeKey(const std::string& name) {
    for (const RecipeKey& k : Keys)
        if (name == k.Name) return &k;
    return nullptr;
}

int RecipeKeyRank(const RecipeKey& key) {
    // The window's settings come first, so that the recipe's keys override them.
    if (std::strcmp(key.Name, "settings") == 0) return -1;
    return static_cast<int>(&key - Keys.data());
}
