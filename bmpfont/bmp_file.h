// BMP files: loading any uncompressed 1- to 32-bit picture into a CBmpImage
// (top row first) and saving an 8-bit palette picture.
#pragma once

#include <cstdint>

#include "bmpfont/bmp_image.h"
#include "zgly/binary_file.h"

inline constexpr uint32_t BmpFileHeaderBytes = 14;
inline constexpr uint32_t BmpInfoHeaderBytes = 40;

// Opens, reads and closes the file; the image holds its rows top row first.
void LoadBmp(CBinaryFile& file, CBmpImage& image);
// Writes the image (8 bits per pixel, rows stored bottom row first).
void SaveBmp(CBinaryFile& file, const CBmpImage& image);
// Checks the 14-byte file header and the 40-byte information header.
void CheckBmpHeader(const CBinaryFile& file, const uint8_t* fileHeader, const uint8_t* infoHeader);
