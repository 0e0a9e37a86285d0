// Packed pixel streams: rows top to bottom, pixels left to right, 1 to 8 bits
// each (wider through WriteValue/ReadValue), most significant bit first, with
// no fill between rows.
#pragma once

#include <cstddef>
#include <cstdint>

// Bytes of a w x h image at bpp bits per pixel.
inline std::size_t PackedBytes(long long w, long long h, long long bpp) {
    return static_cast<std::size_t>((w * h * bpp + 7) / 8);
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
