// Parsing of the convert command's options: the sources (each --from-...
// starts one and takes the source options after it), the output, and the
// characters to convert.
#pragma once

#include <string>
#include <vector>

#include "cli/options.h"

// args follow the word "convert". Throws CUsageError.
CliOptions ParseConvertOptions(const std::vector<std::string>& args);

// A whole number for an option, or CUsageError naming the option.
int ParseIntOption(const std::string& option, const std::string& text);

// "U+3041", "0x3041" or "12353", and FIRST-LAST of two of them; CUsageError
// when the text is neither or the range runs backwards or past U+10FFFF.
CliCodeRange ParseCodeRange(const std::string& text);
