// Operations on whole packed pixel streams.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/font_data.h"

// dst is height x width: new (x, y) = old (y, height - 1 - x). dst may be src.
void RotateClockwise(uint8_t* dst, const uint8_t* src, int width, int height, int bpp);
// dst is width x height with the pixels in reverse order. dst may be src.
void Rotate180(uint8_t* dst, const uint8_t* src, int width, int height, int bpp);
// dst is height x width: new (x, y) = old (width - 1 - y, x). dst may be src.
void RotateCounterClockwise(uint8_t* dst, const uint8_t* src, int width, int height, int bpp);
// Copies the w x h block at (srcX, srcY) to (dstX, dstY); other pixels keep their values.
void CopyRect(uint8_t* dst, const uint8_t* src, int srcWidth, int dstWidth, int srcX, int srcY, int w,
              int h, int dstX, int dstY, int bpp);
// The first and last pixel that is not 0 in a row of width pixels starting at
// bit rowBit (bpp 1 to 8); false when the row is blank.
bool FindRowInk(const uint8_t* src, std::size_t rowBit, int width, int bpp, int& first, int& last);
// Smallest box (right and bottom exclusive) of pixels differing from background;
// false and an all-zero box when there is none.
bool FindInkBox(InkBox& out, const uint8_t* src, int width, int height, int bpp, uint32_t background);
