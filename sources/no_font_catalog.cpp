// A build without a font catalog: no font is found by family name.
#include "sources/font_catalog.h"
#include "sources/font_style.h"

bool FontCatalogAvailable() { return false; }

std::vector<FontFaceInfo> ListInstalledFaces() { return {}; }

bool FindInstalledFamily(const std::string&, InstalledFamilyMatch&) { return false; }

bool ResolveFamilyStyle(const std::string&, const std::string&, FontLocation&) { return false; }
