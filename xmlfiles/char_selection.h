// The characters of a run given as text, text files, code ranges and filter
// files; their union fills the run's filter.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

class CFontFilter;

struct CharSelection {
    bool UseFilterFile = false;  // a filter file was named, perhaps as an empty path
    std::filesystem::path FilterFile;
    std::vector<std::string> Texts;                  // UTF-8
    std::vector<std::filesystem::path> TextFiles;    // UTF-8 text files
    std::vector<std::pair<uint32_t, uint32_t>> Ranges;  // code points, both ends included
    // How text files without a UTF-16 byte-order mark are read (an
    // EncodingNumber); TextEncodingAuto is UTF-8.
    int TextEncoding = -1;
};

// Fills the filter with the union of everything the selection names, as a
// loaded filter file does: the space is always included. Characters above
// U+FFFF are skipped with one warning each, a text file without characters
// with one warning. Throws "Parameter Error:" for a missing file, text not in
// its encoding, or texts, text files and ranges that hold no character but
// the space; "XML Error:" for a bad filter file.
void LoadCharSelection(CFontFilter& filter, const CharSelection& selection);

// A filter file as the window's filter field names it: a .txt file holds the
// characters as text, anything else is an .xllt filter file. An empty path is
// the "Use Filter" box checked without a file.
void LoadFilterFile(CFontFilter& filter, const std::filesystem::path& path);
