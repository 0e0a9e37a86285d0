// Packed pixel streams: rows top to bottom, pixels left to right, 1 to 8 bits
// each (wider through WriteValue/ReadValue), most significant bit first, with
// no fill between rows.
#pragma once

#include <algorithm>
#include <bit>
#include <cstring>
#include <cstddef>
#include <cstdint>

// Bytes of a w x h image at bpp bits per pixel.
inline std::size_t PackedBytes(long long w, long long h, long long bpp) {
    return static_cast<std::size_t>((w * h * bpp + 7) / 8);
}

// One value of 1 to 8 bits at a bit offset of a packed stream; touches no
// byte beyond the value's own.
inline uint32_t PeekBits(const uint8_t* src, std::size_t bit, int bpp) {
    const std::size_t i = bit >> 3;
    const int end = static_cast<int>(bit & 7) + bpp;
    const uint32_t mask = (1u << bpp) - 1;
    if (end > 8) return ((static_cast<uint32_t>(src[i]) << 8 | src[i + 1]) >> (16 - end)) & mask;
    return (static_cast<uint32_t>(src[i]) >> (8 - end)) & mask;
}

// Up to 56 bits (n) at a bit offset, as the low bits of the result; touches
// only the bytes that hold them. Lets scans look at many pixels at once.
inline uint64_t PeekWideBits(const uint8_t* src, std::size_t bit, int n) {
    const uint8_t* p = src + (bit >> 3);
    const int bytes = (static_cast<int>(bit & 7) + n + 7) >> 3;
    uint64_t acc = 0;
    for (int i = 0; i < bytes; ++i) acc = acc << 8 | p[i];
    return (acc >> (bytes * 8 - static_cast<int>(bit & 7) - n)) & ((uint64_t{1} << n) - 1);
}

// ORs a value of 1 to 8 bits (no higher bits set) into a stream whose bits
// there are still zero; touches no byte beyond the value's own.
inline void OrBits(uint8_t* dst, std::size_t bit, int bpp, uint32_t value) {
    const uint32_t word = value << (16 - static_cast<int>(bit & 7) - bpp);
    dst[bit >> 3] |= static_cast<uint8_t>(word >> 8);
    if (word & 0xFF) dst[(bit >> 3) + 1] |= static_cast<uint8_t>(word);
}

// ORs n bits of src, from bit srcBit on, into a stream whose bits from dstBit
// on are still zero. Once the destination reaches a byte boundary, each
// destination byte takes its 8 bits from at most two source bytes (glyph rows
// and whole cells go through here).
inline void OrBitRun(uint8_t* dst, std::size_t dstBit, const uint8_t* src, std::size_t srcBit, std::size_t n) {
    const int head = static_cast<int>(std::min<std::size_t>(n, (8 - (dstBit & 7)) & 7));
    if (head > 0) {
        if (const uint32_t v = PeekBits(src, srcBit, head)) OrBits(dst, dstBit, head, v);
        dstBit += head;
        srcBit += head;
        n -= head;
    }
    uint8_t* d = dst + (dstBit >> 3);
    const uint8_t* s = src + (srcBit >> 3);
    const int shift = static_cast<int>(srcBit & 7);
    if (shift == 0) {
        for (; n >= 64; n -= 64, d += 8, s += 8) {
            uint64_t a, b;
            std::memcpy(&a, d, 8);
            std::memcpy(&b, s, 8);
            a |= b;
            std::memcpy(d, &a, 8);
        }
        for (; n >= 8; n -= 8) *d++ |= *s++;
    } else {
        if constexpr (std::endian::native == std::endian::little) {
            // Eight destination bytes a step: the source word read most
            // significant byte first, shifted, topped up from the ninth byte
            // (which still holds bits of the run).
            for (; n >= 64; n -= 64, d += 8, s += 8) {
                uint64_t a, b;
                std::memcpy(&a, d, 8);
                std::memcpy(&b, s, 8);
                b = __builtin_bswap64(b) << shift | uint64_t{s[8]} >> (8 - shift);
                a |= __builtin_bswap64(b);
                std::memcpy(d, &a, 8);
            }
        }
        // Both source bytes hold bits of the run, so neither read is beyond it.
        for (; n >= 8; n -= 8, ++s) *d++ |= static_cast<uint8_t>(s[0] << shift | s[1] >> (8 - shift));
    }
    if (n > 0)
        if (const uint32_t v = PeekBits(s, shift, static_cast<int>(n))) OrBits(d, 0, static_cast<int>(n), v);
}

class CBitWriter {
public:
    void Start(uint8_t* buffer) { Out = buffer; BitsFree = 8; Current = 0; Pending = false; }
    void Write(int bits, uint32_t value);
    void WriteValue(int bits, uint32_t value);
    void WriteRepeated(int bits, int count, uint32_t value);
    void Skip(int bits);
    void Flush();
    // Pixel writers call this after each pixel.
    void MarkPending() { Pending = BitsFree != 8; }

    int32_t BitsFree = 8;
    uint8_t* Out = nullptr;
    uint8_t Current = 0;
    bool Pending = false;
};

class CBitReader {
public:
    void Start(const uint8_t* buffer) { In = buffer; BitsLeft = 0; }
    uint32_t Read(int bits);
    uint32_t ReadValue(int bits);
    void Skip(int bits);

    const uint8_t* In = nullptr;
    uint8_t Current = 0;
    int32_t BitsLeft = 0;
};
