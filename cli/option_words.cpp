#include "cli/option_words.h"

#include "cli/options.h"

OptionWord ReadOptionWord(const std::vector<std::string>& args, std::size_t& i,
                          const std::set<std::string>& valueOptions, const std::set<std::string>& flags) {
    OptionWord word{args[i], ""};
    const std::size_t eq = word.Name.rfind("--", 0) == 0 ? word.Name.find('=') : std::string::npos;
    if (eq != std::string::npos) {
        word.Value = word.Name.substr(eq + 1);
        word.Name = word.Name.substr(0, eq);
    }
    if (flags.count(word.Name)) {
        if (eq != std::string::npos) throw CUsageError(word.Name + " takes no value");
    } else if (!valueOptions.count(word.Name)) {
        throw CUsageError("unknown option '" + word.Name + "'");
    } else if (eq == std::string::npos) {
        if (i + 1 >= args.size()) throw CUsageError(word.Name + " needs a value");
        word.Value = args[++i];
    }
    return word;
}
