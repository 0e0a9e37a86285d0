// What the last build made, kept in a small file beside the recipe: for each
// output, the hash of its settings, of the output itself and of every input
// it read. A font is up to date when all of them still match.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

struct FileStamp {
    std::filesystem::path Path;
    uint64_t Hash = 0;       // of the content; 0 for a missing file
    bool operator==(const FileStamp&) const = default;
};

struct FontState {
    uint64_t SettingsHash = 0;
    FileStamp Output;
    std::vector<FileStamp> Inputs;
    bool operator==(const FontState&) const = default;
};

using BuildState = std::map<std::filesystem::path, FontState>;  // by output path

// A stamp of the file as it is now.
FileStamp StampFile(const std::filesystem::path& path);
uint64_t HashText(const std::string& text);

// The state file of a recipe: ".NAME.state" beside it.
std::filesystem::path StatePathFor(const std::filesystem::path& recipe);
// A missing or unreadable file is an empty state: everything gets built.
BuildState LoadBuildState(const std::filesystem::path& path);
// Replaces the file in one step; throws CGeneralException when it cannot.
void SaveBuildState(const std::filesystem::path& path, const BuildState& state);
