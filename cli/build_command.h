// glyphwright-cli build: every font of a recipe, in parallel, each only when
// its output is missing or anything it was made from changed.
#pragma once

#include <string>
#include <vector>

// args excludes "build". Returns the exit status; recipe errors are reported
// here (status 2), usage errors thrown as CUsageError.
int RunBuildCommand(const std::vector<std::string>& args);
