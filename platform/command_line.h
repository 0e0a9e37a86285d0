// The program's start: its arguments as UTF-8, and standard output and error
// set up to show UTF-8 text.
#pragma once

#include <string>
#include <vector>

// The arguments after the program's name.
std::vector<std::string> CommandLineArguments(int argc, char** argv);
