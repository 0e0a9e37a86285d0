// The window's settings file as convert options: the tabs it had selected and
// every field of them, so that a set-up made in the window can be rebuilt
// from the command line.
#pragma once

#include <string>
#include <vector>

// convert's arguments (after the command) with "--settings FILE" replaced by
// the file's options; every option the user gives wins over the file's. The
// arguments come back unchanged when there is no --settings.
std::vector<std::string> ExpandSettingsOption(const std::vector<std::string>& args);
