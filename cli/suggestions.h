// The nearest known word to a mistyped one, so that a message can say what
// the user probably meant.
#pragma once

#include <string>
#include <vector>

// a and b are the same word but for the case of ASCII letters.
bool SameIgnoringCase(const std::string& a, const std::string& b);

// Edits (insert, delete, replace, swap of neighbours) from a to b, ignoring case.
int EditDistance(const std::string& a, const std::string& b);

// The known word closest to `word`, when it is close enough to be a typo
// (at most one edit in four letters, and at least one); empty otherwise.
std::string NearestWord(const std::string& word, const std::vector<std::string>& known);

// " (did you mean WORD?)" for the nearest known word, or nothing.
std::string DidYouMean(const std::string& word, const std::vector<std::string>& known);
