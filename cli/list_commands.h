// `glyphwright-cli list-orders` and `list-fonts`: what a conversion can name.
#pragma once

#include <cstdio>

void RunListOrders(bool json, std::FILE* out, std::FILE* err);
void RunListFonts(bool json, std::FILE* out);
