// `glyphwright-cli check`: which characters of a game's text a ZGLY font
// lacks, so that a build fails when the text outgrows its font; and
// `info --chars`, the characters a ZGLY file holds.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

struct CheckText {
    enum class Kind { Chars, File, Range } From = Kind::Chars;
    std::string Value;  // the text, or the file's path, or the range as typed
    uint32_t First = 0, Last = 0;
};

struct CheckOptions {
    std::string FontPath;
    std::vector<CheckText> Texts;
    int TextEncoding = -1;  // --chars-encoding, as convert takes it
    bool Json = false;
};

// args follow the word "check". Throws CUsageError.
CheckOptions ParseCheckCommand(const std::vector<std::string>& args);

// Prints every character the font lacks with its first use; returns 1 when
// any is missing, 0 otherwise. Throws the reader's messages for a bad font
// and the character options' messages for a bad text file.
int RunCheckCommand(const CheckOptions& options, std::FILE* out, std::FILE* err);

// Prints the characters the ZGLY file holds, one "U+0041\tA" line each, or
// as JSON.
void RunInfoChars(const std::string& path, bool json, std::FILE* out);
