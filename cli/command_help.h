// What each sub-command prints for --help, and the one-line hint after a
// usage error.
#pragma once

#include <string>
#include <vector>

// The sub-commands, in the order the help lists them.
const std::vector<std::string>& CommandNames();

// The usage of one sub-command; the whole help for convert and for an
// unknown command.
std::string CommandHelp(const std::string& command);

// "Try 'glyphwright-cli COMMAND --help'." for a known command, else the
// pointer to the whole help.
std::string UsageHint(const std::string& command);

// Thrown by the option readers for --help or -h; the front end prints the
// command's help and ends with status 0.
struct CHelpRequest {};
