#include "core/glyph_order.h"

uint16_t CGlyphOrder::GetCode(int x, int y) const {
    if (x < 0 || x >= Width || y < 0 || y >= Height) return NoCode;
    long long pos = static_cast<long long>(y) * Width + x;
    if (pos >= static_cast<long long>(Codes.size())) return NoCode;
    return Codes[static_cast<std::size_t>(pos)];
}
