// Tests of paths and listings of folders, as the system answers them now.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

// An existing file, folder or other entry (links followed).
bool PathExists(const std::filesystem::path& path);
bool IsDirectory(const std::filesystem::path& path);
// An ordinary file (links followed), not a folder, pipe or device.
bool IsRegularFile(const std::filesystem::path& path);
// The file's size in bytes; -1 when it cannot be read.
int64_t FileSize(const std::filesystem::path& path);
// The user may write it, and it has a write permission bit at all: no write
// bit counts as read only even for an administrator the system lets write.
bool IsWritableFile(const std::filesystem::path& path);
// An existing folder in which the user may create files.
bool IsWritableDirectory(const std::filesystem::path& path);
// The path as UTF-8 text, as the user wrote it: what messages show.
std::string PathText(const std::filesystem::path& path);
// A character that ends a folder's name in a path.
bool IsPathSeparator(char c);
// The entries of a folder in the system's order; empty when it cannot be read.
std::vector<std::filesystem::path> ListDirectory(const std::filesystem::path& dir);
