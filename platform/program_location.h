// Where the running program lives: its data (glyph order files) sits beside it.
#pragma once

#include <filesystem>

// The folder of the program's executable; the current folder when unknown.
std::filesystem::path ProgramDirectory();
