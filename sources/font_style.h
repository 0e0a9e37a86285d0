// A named style ("Bold", "Oblique", ...) of an installed family.
#pragma once

#include <string>
#include <vector>

#include "sources/font_face.h"

// The file of the family's style (both case-insensitive); false when the
// family is not installed or has no such style.
bool ResolveFamilyStyle(const std::string& family, const std::string& style, FontLocation& out);

// The family's styles, as fontconfig names them first, sorted, each once.
std::vector<std::string> FamilyStyles(const std::string& family);
