// JSON string literals for the commands that print --json.
#pragma once

#include <string>

std::string JsonString(const std::string& text);
