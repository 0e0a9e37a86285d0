#include "core/bit_stream.h"

void CBitWriter::Write(int bits, uint32_t value) {
    while (bits > BitsFree) {
        int k = BitsFree;
        bits -= k;
        Write(k, value >> bits);
    }
    BitsFree -= bits;
    Current |= static_cast<uint8_t>((value & (0xFFu >> (8 - bits))) << BitsFree);
    if (BitsFree < 1) {
        *Out++ = Current;
        Current = 0;
        BitsFree = 8;
    }
}

void CBitWriter::WriteValue(int bits, uint32_t value) {
    while (bits > 8) {
        Write(8, value >> (bits - 8));
        bits -= 8;
    }
    if (bits > 0) Write(bits, value);
}

void CBitWriter::WriteRepeated(int bits, int count, uint32_t value) {
    if (bits == 1 && count >= 16) {
        // Whole bytes at once for long one-bit runs (blank rows of cells).
        uint8_t fill = (value & 1) ? 0xFF : 0x00;
        while (count > 0 && BitsFree != 8) { Write(1, value); --count; }
        while (count >= 8) { *Out++ = fill; count -= 8; }
    }
    for (int i = 0; i < count; ++i) WriteValue(bits, value);
    Pending = BitsFree != 8;
}

void CBitWriter::Skip(int bits) {
    if (bits < 1) return;
    // The skipped span keeps the destination's bits, also when the skip
    // starts on a byte boundary (BitsFree 8 takes the whole byte).
    Current |= static_cast<uint8_t>(*Out & ((1u << BitsFree) - 1));
    if (BitsFree > bits) {
        BitsFree -= bits;
        Current &= static_cast<uint8_t>(~((1u << BitsFree) - 1));
        return;
    }
    if (BitsFree < 8) {
        *Out++ = Current;
        bits -= BitsFree;
    }
    Out += bits / 8;
    BitsFree = 8 - (bits % 8);
    Current = static_cast<uint8_t>(BitsFree < 8 ? (*Out & ~((1u << BitsFree) - 1)) : 0);
    Pending = false;
}

void CBitWriter::Flush() {
    if (Pending && BitsFree < 8) {
        *Out++ = Current;
        Current = 0;
        BitsFree = 8;
    }
    Pending = false;
}

uint32_t CBitReader::Read(int bits) {
    if (BitsLeft >= bits) {
        BitsLeft -= bits;
        return (static_cast<uint32_t>(Current) >> BitsLeft) & (0xFFu >> (8 - bits));
    }
    int first = BitsLeft;
    uint32_t high = first > 0 ? (Current & (0xFFu >> (8 - first))) : 0;
    Current = *In++;
    BitsLeft = 8;
    int rest = bits - first;
    BitsLeft -= rest;
    uint32_t low = (static_cast<uint32_t>(Current) >> BitsLeft) & (0xFFu >> (8 - rest));
    return (high << rest) | low;
}

uint32_t CBitReader::ReadValue(int bits) {
    uint32_t v = 0;
    while (bits > 8) {
        v = (v << 8) | Read(8);
        bits -= 8;
    }
    if (bits > 0) v = (v << bits) | Read(bits);
    return v;
}

void CBitReader::Skip(int bits) {
    if (bits > BitsLeft) {
        int old = BitsLeft;
        In += (bits - old) / 8;
        bits = (bits - old) % 8;
        BitsLeft = 0;
        // Ending on a byte boundary loads nothing: the next Read does, so a
        // skip to the end of the buffer never reads past it.
        if (bits == 0) return;
        Current = *In++;
        BitsLeft = 8;
    }
    BitsLeft -= bits;
}
