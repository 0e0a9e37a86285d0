#include "cli/option_words.h"

#include "cli/command_help.h"
#include "cli/options.h"
#include "cli/suggestions.h"

std::string UnknownOptionProblem(const std::string& name, const std::set<std::string>& valueOptions,
                                 const std::set<std::string>& flags) {
    std::vector<std::string> known(valueOptions.begin(), valueOptions.end());
    known.insert(known.end(), flags.begin(), flags.end());
    known.push_back("--help");
    return "unknown option '" + name + "'" + DidYouMean(name, known);
}

OptionWord ReadOptionWord(const std::vector<std::string>& args, std::size_t& i,
                          const std::set<std::string>& valueOptions, const std::set<std::string>& flags) {
    OptionWord word{args[i], ""};
    if (word.Name == "--help" || word.Name == "-h") throw CHelpRequest{};
    const std::size_t eq = word.Name.rfind("--", 0) == 0 ? word.Name.find('=') : std::string::npos;
    if (eq != std::string::npos) {
        word.Value = word.Name.substr(eq + 1);
        word.Name = word.Name.substr(0, eq);
    }
    if (flags.count(word.Name)) {
        if (eq != std::string::npos) throw CUsageError(word.Name + " takes no value");
    } else if (!valueOptions.count(word.Name)) {
        throw CUsageError(UnknownOptionProblem(word.Name, valueOptions, flags));
    } else if (eq == std::string::npos) {
        if (i + 1 >= args.size()) throw CUsageError(word.Name + " needs a value");
        word.Value = args[++i];
    }
    return word;
}

void CheckOutputExtension(const std::string& option, const std::string& path, const std::vector<std::string>& extensions) {
    std::string list;
    for (const std::string& ext : extensions) {
        if (path.size() > ext.size() && SameIgnoringCase(path.substr(path.size() - ext.size()), ext)) return;
        list += (list.empty() ? "" : " or ") + ext;
    }
    throw CUsageError(option + " needs a file name ending in " + list + ", not '" + path + "'");
}
