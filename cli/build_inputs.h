// The files a conversion reads, so that a change to any of them rebuilds it.
#pragma once

#include <filesystem>
#include <vector>

#include "cli/options.h"

// Paths are taken relative to folder (where the conversion runs); files that
// cannot be found are left out, as the conversion fails on them anyway.
std::vector<std::filesystem::path> ConversionInputs(const CliOptions& options, const std::filesystem::path& folder);
