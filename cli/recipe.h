// A recipe file: the fonts of a game, each one convert run, written as TOML.
// Every [[font]] table turns into the argument vector of the equivalent
// convert command, so the build and convert share one parser and pipeline.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "cli/options.h"

struct RecipeFont {
    std::string Label;              // the "name" key, else the output path as written
    int Line = 0;                   // of the [[font]] header
    std::vector<std::string> Args;  // convert's arguments, paths made absolute
    std::vector<std::string> Expanded;  // the same with a settings file's options written out
    CliOptions Options;             // Args as convert parses them
};

struct Recipe {
    std::filesystem::path Path;
    std::filesystem::path Folder;   // relative paths and the runs start here
    std::vector<RecipeFont> Fonts;
};

// A recipe that cannot run; the text starts with "RECIPE:LINE: ".
class CRecipeError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Reads and checks the whole recipe before anything runs; throws
// CRecipeError for syntax, unknown keys, wrong types and any combination
// that convert refuses.
Recipe LoadRecipe(const std::filesystem::path& path);
