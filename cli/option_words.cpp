#include "cli/option_words.h"

#include "cli/options.h"

OptionWord ReadOptionWord(const std::vector<std::string>& args, std::size_t& i,
                          const std::set<std::string>& valueOptions, const std::set<std::string>& flags) {
    OptionWord word{args[i], ""};
    if (auto eq = word.Name.find('='); word.Name.rfind("--", 0) == 0 && eq != std::string::npos) {
        word.Value = word.Name.substr(eq + 1);
        word.Name = word.Name.substr(0, eq);
        if (!valueOptions.count(word.Name)) throw CUsageError(word.Name + " takes no value");
    } else if (valueOptions.count(word.Name)) {
        if (i + 1 >= args.size()) throw CUsageError(word.Name + " needs a value");
        word.Value = args[++i];
    } else if (!flags.count(word.Name)) {
        throw CUsageError("unknown option '" + word.Name + "'");
    }
    return word;
}
