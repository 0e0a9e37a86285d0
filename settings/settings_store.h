// The settings file: a private-profile (INI) text file read and written key by
// key, with no cache. Kept free of Qt so that it can be tested and fuzzed alone.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

class CSettingsStore {
public:
    CSettingsStore() = default;
    explicit CSettingsStore(std::filesystem::path path) : Path(std::move(path)) {}

    int GetInt(std::string_view section, std::string_view key, int def) const;
    bool GetBool(std::string_view section, std::string_view key, bool def) const;
    std::string GetString(std::string_view section, std::string_view key, std::string_view def = {}) const;

    void SetInt(std::string_view section, std::string_view key, int value) const;
    void SetBool(std::string_view section, std::string_view key, bool value) const { SetInt(section, key, value ? 1 : 0); }
    void SetString(std::string_view section, std::string_view key, std::string_view value) const;
    void DeleteSection(std::string_view section) const;

    bool Exists() const;

    std::filesystem::path Path;
};

// Strings are stored as printable ASCII: \t \n \r \\ and \XXXX for every
// character of 128 or more (UTF-8 in, UTF-8 out).
std::string EscapeSettingString(std::string_view text);
std::string UnescapeSettingString(std::string_view text);

// The program's path with its file name's extension replaced by ".ini" (a
// name without one gets ".ini" appended).
std::filesystem::path SettingsPathBesideProgram(const std::filesystem::path& program);

// Where the settings live: $GLYPHWRIGHT_SETTINGS when set; beside the program
// when that directory can be written; else $XDG_CONFIG_HOME/glyphwright
// (~/.config/glyphwright). Creates the missing directories of the result.
std::filesystem::path ResolveSettingsPath(const std::filesystem::path& program);
