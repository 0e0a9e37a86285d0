// Parsing of the convert command's options: the sources (each --from-...
// starts one and takes the source options after it), the output, and the
// characters to convert.
#pragma once

#include <string>
#include <vector>

#include "cli/options.h"

// What an option's value is; a recipe key of the same name takes the same.
enum class OptionValue {
    Flag,       // none
    Text,       // a string
    Number,     // an integer
    Texts,      // a string, given as often as wanted
    Codes,      // a code or a range, given as often as wanted
    Pair,       // two or four integers joined by the option's separator
};

enum class OptionGroup {
    Input,      // --from-...: starts a source
    LcHalf,     // --lc-half: completes an LC source, or starts one
    Source,     // belongs to the source before it
    Output,     // --to-...: the one output
    Run,        // the output's options, the characters and the rest
};

struct ConvertOption {
    const char* Name;                      // "--size"
    OptionValue Value;
    OptionGroup Group;
    InputKind Input = InputKind::None;     // the only input a source option applies to
    OutputKind Output = OutputKind::None;  // the only output a run option applies to
    bool IsPath = false;                   // a file (or a face), relative to where the run starts
    char Separator = 0;                    // of a Pair
};

// Every option of convert except --settings, in the order a command line
// wants them: sources first, then the output and the rest.
const std::vector<ConvertOption>& ConvertOptionTable();

// The words of the options that choose from a list, in the order of the
// values they stand for.
extern const std::vector<std::string> LevelChoices;     // --colors, --levels
extern const std::vector<std::string> WidthChoices;     // --width
extern const std::vector<std::string> EncodingChoices;  // --encoding

// args follow the word "convert". Throws CUsageError.
CliOptions ParseConvertOptions(const std::vector<std::string>& args);

// A whole number for an option, or CUsageError naming the option.
int ParseIntOption(const std::string& option, const std::string& text);

// "U+3041", "0x3041" or "12353", and FIRST-LAST of two of them; CUsageError
// when the text is neither or the range runs backwards or past U+10FFFF.
CliCodeRange ParseCodeRange(const std::string& text);
