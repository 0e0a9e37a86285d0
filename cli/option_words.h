// The words of a command line read as options: "--name value" or
// "--name=value" for options that take a value, "--name" for flags.
#pragma once

#include <set>
#include <string>
#include <vector>

struct OptionWord {
    std::string Name;
    std::string Value;
};

// Reads the option at args[i] and moves i past a value given as the next
// word. Throws CUsageError for an unknown option, a value given to a flag or
// a value missing at the end.
OptionWord ReadOptionWord(const std::vector<std::string>& args, std::size_t& i,
                          const std::set<std::string>& valueOptions, const std::set<std::string>& flags);
