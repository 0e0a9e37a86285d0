// Checks of input and output paths, run before any conversion starts.
#pragma once

#include <filesystem>

// True when the path names an existing file or directory; throws for an empty path.
bool FileExists(const std::filesystem::path& path);
void CheckInputFile(const std::filesystem::path& path);
void CheckOutputFile(const std::filesystem::path& path);
