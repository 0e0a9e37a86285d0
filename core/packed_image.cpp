#include "core/packed_image.h"

#include <algorithm>
#include <bit>
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

// Turns by a map from new (x, y) to the old pixel index. The source is first
// spread to one byte a pixel (so the turn may be done in place), then the new
// image is packed in its own order through an accumulator: no per-pixel bit
// addressing on either side. The depth is a constant here so that the shifts
// are too (every glyph of a font turns at one depth). The scratch buffer
// lives on between calls.
template <int Bpp, class From>
void TurnAtDepth(uint8_t* dst, const uint8_t* src, int newWidth, int newHeight, From from) {
    static thread_local std::vector<uint8_t> scratch;
    const std::size_t count = static_cast<std::size_t>(newWidth) * newHeight;
    scratch.resize(count);
    // A plain pointer: byte stores through dst could otherwise alias the
    // vector's own fields and force reloads every pixel.
    uint8_t* const values = scratch.data();
    constexpr uint32_t Mask = (1u << Bpp) - 1;
    if constexpr (8 % Bpp == 0) {
        // Depths that fill whole bytes: every source byte read once.
        std::size_t i = 0;
        for (const uint8_t* p = src; i < count; ++p)
            for (int shift = 8 - Bpp; shift >= 0 && i < count; shift -= Bpp)
                values[i++] = static_cast<uint8_t>(*p >> shift & Mask);
    } else {
        for (std::size_t i = 0; i < count; ++i) values[i] = static_cast<uint8_t>(PeekBits(src, i * Bpp, Bpp));
    }
    uint32_t pending = 0;  // the low `held` bits are not yet written
    int held = 0;
    for (int y = 0; y < newHeight; ++y)
        for (int x = 0; x < newWidth; ++x) {
            pending = pending << Bpp | values[from(x, y)];
            held += Bpp;
            if (held >= 8) {
                held -= 8;
                *dst++ = static_cast<uint8_t>(pending >> held);
            }
        }
    if (held > 0) *dst = static_cast<uint8_t>(pending << (8 - held));
}

// False for depths and sizes the pixel-list fallback handles.
template <class From>
bool TurnPacked(uint8_t* dst, const uint8_t* src, int newWidth, int newHeight, int bpp, From from) {
    if (newWidth < 1 || newHeight < 1) return false;
    switch (bpp) {
    case 1: TurnAtDepth<1>(dst, src, newWidth, newHeight, from); return true;
    case 2: TurnAtDepth<2>(dst, src, newWidth, newHeight, from); return true;
    case 3: TurnAtDepth<3>(dst, src, newWidth, newHeight, from); return true;
    case 4: TurnAtDepth<4>(dst, src, newWidth, newHeight, from); return true;
    case 5: TurnAtDepth<5>(dst, src, newWidth, newHeight, from); return true;
    case 6: TurnAtDepth<6>(dst, src, newWidth, newHeight, from); return true;
    case 7: TurnAtDepth<7>(dst, src, newWidth, newHeight, from); return true;
    case 8: TurnAtDepth<8>(dst, src, newWidth, newHeight, from); return true;
    default: return false;
    }
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

bool FindRowInk(const uint8_t* src, std::size_t rowBit, int width, int bpp, int& first, int& last) {
    // Up to 56 bits at a time: a pixel is not 0 when any of its bits is set,
    // so the zero bits before the first and after the last set bit tell both.
    const int perChunk = 56 / bpp;
    first = last = -1;
    for (int x0 = 0; x0 < width; x0 += perChunk) {
        const int bits = std::min(perChunk, width - x0) * bpp;
        const uint64_t v = PeekWideBits(src, rowBit + static_cast<std::size_t>(x0) * bpp, bits);
        if (v == 0) continue;
        if (first < 0) first = x0 + (std::countl_zero(v) - (64 - bits)) / bpp;
        last = x0 + (bits - 1 - std::countr_zero(v)) / bpp;
    }
    return first >= 0;
}

bool FindInkBox(InkBox& out, const uint8_t* src, int width, int height, int bpp, uint32_t background) {
    int left = width, top = height, right = -1, bottom = -1;
    if (background == 0 && bpp >= 1 && bpp <= 8) {
        for (int y = 0; y < height; ++y) {
            int first, last;
            if (!FindRowInk(src, static_cast<std::size_t>(y) * width * bpp, width, bpp, first, last)) continue;
            left = std::min(left, first);
            right = std::max(right, last);
            top = std::min(top, y);
            bottom = y;
        }
    } else {
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
    }
    if (right < 0) {
        out = InkBox{};
        return false;
    }
    out = InkBox{left, top, right + 1, bottom + 1};
    return true;
}
