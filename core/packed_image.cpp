#include "core/packed_image.h"

#include <algorithm>
#include <vector>

#include "core/bit_stream.h"

namespace {

std::vector<uint32_t> Unpack(const uint8_t* src, int width, int height, int bpp) {
    std::vector<uint32_t> px(static_cast<std::size_t>(width) * height);
    CBitReader r;
    r.Start(src);
    for (auto& v : px) v = r.ReadValue(bpp);
    return px;
}

template <class At>
void Pack(uint8_t* dst, int width, int height, int bpp, At at) {
    CBitWriter w;
    w.Start(dst);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            w.WriteValue(bpp, at(x, y));
            w.MarkPending();
        }
    w.Flush();
}

// Turns by a map from new (x, y) to the old pixel index, reading a copy of the
// source so that the turn may be done in place.
template <class From>
bool TurnPacked(uint8_t* dst, const uint8_t* src, int newWidth, int newHeight, int bpp, From from) {
    if (bpp < 1 || bpp > 8 || newWidth < 1 || newHeight < 1) return false;
    const std::size_t bytes = PackedBytes(newWidth, newHeight, bpp);
    const std::vector<uint8_t> copy(src, src + bytes);
    std::fill_n(dst, bytes, uint8_t{0});
    std::size_t bit = 0;
    for (int y = 0; y < newHeight; ++y)
        for (int x = 0; x < newWidth; ++x, bit += bpp)
            if (const uint32_t v = PeekBits(copy.data(), from(x, y) * bpp, bpp)) OrBits(dst, bit, bpp, v);
    return true;
}

}  // namespace

void RotateClockwise(uint8_t* dst, const uint8_t* src, int width, int height, int bpp) {
    if (TurnPacked(dst, src, height, width, bpp,
                   [&](int x, int y) { return static_cast<std::size_t>(height - 1 - x) * width + y; }))
        return;
    auto px = Unpack(src, width, height, bpp);
    // New image is height wide, width high: new (x, y) = old (y, height - 1 - x).
    Pack(dst, height, width, bpp, [&](int x, int y) { return px[static_cast<std::size_t>(height - 1 - x) * width + y]; });
}

void Rotate180(uint8_t* dst, const uint8_t* src, int width, int height, int bpp) {
    const std::size_t last = static_cast<std::size_t>(width) * height - 1;
    if (TurnPacked(dst, src, width, height, bpp,
                   [&](int x, int y) { return last - (static_cast<std::size_t>(y) * width + x); }))
        return;
    auto px = Unpack(src, width, height, bpp);
    std::size_t n = px.size();
    Pack(dst, width, height, bpp, [&](int x, int y) { return px[n - 1 - (static_cast<std::size_t>(y) * width + x)]; });
}

void RotateCounterClockwise(uint8_t* dst, const uint8_t* src, int width, int height, int bpp) {
    if (TurnPacked(dst, src, height, width, bpp,
                   [&](int x, int y) { return static_cast<std::size_t>(x) * width + (width - 1 - y); }))
        return;
    auto px = Unpack(src, width, height, bpp);
    // new (x, y) = old (width - 1 - y, x)
    Pack(dst, height, width, bpp, [&](int x, int y) { return px[static_cast<std::size_t>(x) * width + (width - 1 - y)]; });
}

void CopyRect(uint8_t* dst, const uint8_t* src, int srcWidth, int dstWidth, int srcX, int srcY, int w, int h,
              int dstX, int dstY, int bpp) {
    if (w < 1 || h < 1) return;
    for (int row = 0; row < h; ++row) {
        CBitReader r;
        r.Start(src);
        long long srcBit = (static_cast<long long>(srcY + row) * srcWidth + srcX) * bpp;
        r.In = src + srcBit / 8;
        r.BitsLeft = 0;
        if (srcBit % 8) {
            r.Current = *r.In++;
            r.BitsLeft = 8 - static_cast<int>(srcBit % 8);
        }
        long long dstBit = (static_cast<long long>(dstY + row) * dstWidth + dstX) * bpp;
        CBitWriter wr;
        wr.Start(dst + dstBit / 8);
        if (dstBit % 8) wr.Skip(static_cast<int>(dstBit % 8));
        for (int x = 0; x < w; ++x) {
            wr.WriteValue(bpp, r.ReadValue(bpp));
            wr.MarkPending();
        }
        // Keep the destination's bits after the block in the last byte.
        if (wr.BitsFree < 8) {
            wr.Current |= static_cast<uint8_t>(*wr.Out & ((1u << wr.BitsFree) - 1));
            *wr.Out = wr.Current;
        }
    }
}

bool FindInkBox(InkBox& out, const uint8_t* src, int width, int height, int bpp, uint32_t background) {
    int left = width, top = height, right = -1, bottom = -1;
    CBitReader r;
    r.Start(src);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            if (r.ReadValue(bpp) != background) {
                if (x < left) left = x;
                if (x > right) right = x;
                if (y < top) top = y;
                bottom = y;
            }
        }
    if (right < 0) {
        out = InkBox{};
        return false;
    }
    out = InkBox{left, top, right + 1, bottom + 1};
    return true;
}
