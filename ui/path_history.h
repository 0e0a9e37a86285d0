// The most-recent-first history of one file path field and its section in the
// settings file ("Path", "0".."9", "HistoryNum"). Free of Qt; the field's
// widgets only mirror it.
#pragma once

#include <string>
#include <vector>

class CSettingsStore;

class CPathHistory {
public:
    CPathHistory(const CSettingsStore& settings, std::string section) : Settings(settings), Section(std::move(section)) {}

    // Reads the entries; an empty history gets the current directory.
    void Load();
    // Writes the first Capacity entries (the section is rewritten whole) and
    // the capacity. The caller writes "Path" right afterwards.
    void Save() const;
    // Removes the first equal entry and inserts text at the front. Memory is
    // not trimmed: only saving is limited to Capacity.
    void MoveToFront(const std::string& text);
    // After a successful conversion: text to the front, saved, "Path" written.
    void Commit(const std::string& text);
    // Entry i chosen while the field showed current: the chosen one goes to
    // the front, then current, then the rest. False when i is out of range.
    bool Select(int i, const std::string& current);

    std::string StoredPath() const;
    void StorePath(const std::string& text) const;

    const std::vector<std::string>& Entries() const { return Items; }
    const std::string& SectionName() const { return Section; }

    static constexpr int Capacity = 10;

private:
    const CSettingsStore& Settings;
    std::string Section;
    std::vector<std::string> Items;
};
