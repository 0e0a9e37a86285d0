// The characters of a preview text that the font lacks (and so draws as its
// alternate glyph), each named once.
#pragma once

#include <string>
#include <string_view>
#include <vector>

class CFontBlockSet;

// One warning text per lacking character, in the order they first occur.
std::vector<std::string> MissingCharWarnings(const CFontBlockSet& set, std::string_view utf8);
