// Byte layout of ZGLY files: tags, header values, block field positions, and
// the little-endian accessors every part of the format code uses.
#pragma once

#include <cstdint>

#include "core/little_endian.h"

namespace zgly {

inline constexpr uint32_t Magic = 0x5A474C59;  // the bytes "YLGZ"
inline constexpr uint16_t ByteOrderMark = 0xFEFF;
inline constexpr uint16_t SwappedByteOrderMark = 0xFFFE;
inline constexpr uint16_t Version = 0x0101;
inline constexpr uint16_t OldVersion = 0x0100;
inline constexpr uint16_t HeaderSize = 16;
inline constexpr uint32_t BlockHeaderSize = 8;

inline constexpr uint32_t TagFINF = 0x46494E46;
inline constexpr uint32_t TagCGLP = 0x43474C50;
inline constexpr uint32_t TagCWDH = 0x43574448;
inline constexpr uint32_t TagCMAP = 0x434D4150;

// FINF content
inline constexpr uint32_t FinfSize = 20;
// The fields a reader uses end at the encoding byte; the offsets after it
// only serve consumers that map the file.
inline constexpr uint32_t FinfReadSize = 8;
inline constexpr uint32_t FinfFontType = 0;
inline constexpr uint32_t FinfLineFeed = 1;
inline constexpr uint32_t FinfAlternateGlyph = 2;
inline constexpr uint32_t FinfDefaultLeft = 4;
inline constexpr uint32_t FinfDefaultGlyphWidth = 5;
inline constexpr uint32_t FinfDefaultCharWidth = 6;
inline constexpr uint32_t FinfEncoding = 7;
inline constexpr uint32_t FinfGlyphOffset = 8;
inline constexpr uint32_t FinfWidthOffset = 12;
inline constexpr uint32_t FinfMapOffset = 16;

// CGLP content
inline constexpr uint32_t CglpHeadSize = 8;
inline constexpr uint32_t CglpCellWidth = 0;
inline constexpr uint32_t CglpCellHeight = 1;
inline constexpr uint32_t CglpCellSize = 2;
inline constexpr uint32_t CglpBaseline = 4;
inline constexpr uint32_t CglpMaxCharWidth = 5;
inline constexpr uint32_t CglpBpp = 6;
inline constexpr uint32_t CglpFlags = 7;
inline constexpr uint8_t FlagVertical = 1;

// CWDH content
inline constexpr uint32_t CwdhHeadSize = 8;
inline constexpr uint32_t CwdhFirstGlyph = 0;
inline constexpr uint32_t CwdhLastGlyph = 2;
inline constexpr uint32_t CwdhNext = 4;
inline constexpr uint32_t WidthEntrySize = 3;

// CMAP content
inline constexpr uint32_t CmapHeadSize = 12;
inline constexpr uint32_t CmapFirstCode = 0;
inline constexpr uint32_t CmapLastCode = 2;
inline constexpr uint32_t CmapMethod = 4;
inline constexpr uint32_t CmapNext = 8;
inline constexpr uint16_t MethodDirect = 0;
inline constexpr uint16_t MethodTable = 1;
inline constexpr uint16_t MethodScan = 2;

inline constexpr uint16_t NoGlyph = 0xFFFF;

// How the cells are turned in the file (the CGLP flags hold it doubled).
enum CellRotation : int32_t {
    RotationNone = 0,
    RotationClockwise = 1,  // a quarter turn clockwise
    RotationHalf = 2,
    RotationCounterClockwise = 3,  // a quarter turn counter-clockwise
};

// A block's size in a file: header plus content, padded to a multiple of 4.
inline uint32_t PaddedBlockSize(uint32_t contentLength) { return BlockHeaderSize + ((contentLength + 3) & ~3u); }

}  // namespace zgly
