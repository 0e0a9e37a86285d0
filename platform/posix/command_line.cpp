#include "platform/command_line.h"

// The system hands the arguments over as the bytes typed: UTF-8.
std::vector<std::string> CommandLineArguments(int argc, char** argv) { return {argv + 1, argv + argc}; }
