// A named style ("Bold", "Oblique", ...) of an installed family.
#pragma once

#include <string>

#include "sources/font_face.h"

// The file of the family's style (the family without regard to case, the
// style to case and spaces); false when the family is not installed or has
// no such style.
bool ResolveFamilyStyle(const std::string& family, const std::string& style, FontLocation& out);
