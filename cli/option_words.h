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
// word. Throws CHelpRequest for --help and -h, and CUsageError for an
// unknown option (naming the nearest known one), a value given to a flag or
// a value missing at the end.
OptionWord ReadOptionWord(const std::vector<std::string>& args, std::size_t& i,
                          const std::set<std::string>& valueOptions, const std::set<std::string>& flags);

// "unknown option 'NAME'", with the nearest of the known options.
std::string UnknownOptionProblem(const std::string& name, const std::set<std::string>& valueOptions,
                                 const std::set<std::string>& flags);

// Throws CUsageError unless path ends in one of the extensions (".png"),
// in any case: a picture written under another name would mislead.
void CheckOutputExtension(const std::string& option, const std::string& path, const std::vector<std::string>& extensions);
