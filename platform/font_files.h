// The font files the system knows as installed, where no font service such as
// fontconfig lists them: the system's and the user's font folders and the
// fonts registered by name.
#pragma once

#include <filesystem>
#include <vector>

// Every installed font file once, the system's first.
std::vector<std::filesystem::path> InstalledFontFiles();
