// Stand-ins until the XML loaders land.
#include "core/font_filter.h"
#include "core/general_exception.h"
#include "core/glyph_order.h"

void CGlyphOrder::Load(const std::filesystem::path&) { throw CGeneralException("XML Error:\n Invalid order file."); }
void CFontFilter::Load(const std::filesystem::path&) { throw CGeneralException("XML Error:\n Invalid filter file"); }
