// The window's settings file as convert options: the tabs it had selected and
// every field of them, so that a set-up made in the window can be rebuilt
// from the command line.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

struct ReplayedOption {
    std::string Name;   // "--size"
    std::string Value;
    bool HasValue = true;
};

// The options in three groups, so that the user's own options can replace a
// whole input or output or single options of it.
struct ReplayedSettings {
    std::vector<ReplayedOption> Input;
    std::vector<ReplayedOption> Output;
    std::vector<ReplayedOption> Common;
};

// Throws CGeneralException ("Parameter Error:") when the file is missing or
// names no encoding or glyph order the window could select.
ReplayedSettings ReadWindowSettings(const std::filesystem::path& ini);

// convert's arguments (after the command) with "--settings FILE" replaced by
// the file's options; every option the user gives wins over the file's. The
// arguments come back unchanged when there is no --settings.
std::vector<std::string> ExpandSettingsOption(const std::vector<std::string>& args);
