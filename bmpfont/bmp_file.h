// BMP files as CBmpImage: loading an uncompressed 1- to 32-bit picture (top
// row first) and saving an 8-bit palette picture. Compressed and bit-field
// pictures are read by bmp_decoders.
#pragma once

#include <cstdint>

#include "bmpfont/bmp_header.h"
#include "bmpfont/bmp_image.h"
#include "zgly/binary_file.h"

// Opens, reads and closes the file; the image holds its rows top row first.
void LoadBmp(CBinaryFile& file, CBmpImage& image);
// Writes the image (8 bits per pixel, rows stored bottom row first).
void SaveBmp(CBinaryFile& file, const CBmpImage& image);
// Checks the 14-byte file header and the 40-byte information header.
void CheckBmpHeader(const CBinaryFile& file, const uint8_t* fileHeader, const uint8_t* infoHeader);
