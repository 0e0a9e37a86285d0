// `glyphwright-cli list-orders` and `list-fonts`: what a conversion can name.
#pragma once

#include <cstdio>

int RunListOrders(bool json, std::FILE* out, std::FILE* err);
int RunListFonts(bool json, std::FILE* out);
