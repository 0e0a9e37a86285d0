// `glyphwright-cli info`: what a ZGLY file holds, as text or as one JSON object.
#pragma once

#include <cstdio>
#include <string>

struct ZglyInfo;

std::string FormatInfoText(const std::string& path, const ZglyInfo& info);
std::string FormatInfoJson(const std::string& path, const ZglyInfo& info);

// Prints the description to out; returns the exit status (errors go to err).
int RunInfoCommand(const std::string& path, bool json, std::FILE* out, std::FILE* err);
