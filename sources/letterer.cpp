// The letterers' common part: opening the face, rendering a character (turned
// for vertical faces), and building the glyph from the rendered cell.
#include "sources/letterer.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "core/bit_stream.h"
#include "core/font_data.h"
#include "core/general_exception.h"
#include "sources/vertical_forms.h"

CLetterer::CLetterer() = default;
CLetterer::~CLetterer() = default;

void CLetterer::Setup(int32_t bpp, int32_t widthType, int32_t fixedWidth, bool vertical) {
    if (bpp < 1 || bpp > 5) ThrowError("Internal Error:\n Invalid input parameter: bpp(%d) exceed range.", bpp);
    if (widthType < 0 || widthType >= GlyphWidthTypeCount) ThrowError("Internal Error:\n Invalid width type (%d).", widthType);
    Bpp = bpp;
    WidthType = widthType;
    FixedWidth = fixedWidth;
    Vertical = vertical;
}

void CLetterer::OpenFace(const FontLocation& location, int32_t size) {
    Face = std::make_unique<CFontFace>(location, size);
    FontAscent = Face->Ascent;
    CellSize = std::max(Face->Height(), Face->MaxCharWidth);
    if (Vertical) Forms = std::make_unique<CVerticalForms>(Face->Face());
}

FT_UInt CLetterer::GlyphIndex(char16_t code) const { return Face->GlyphIndex(code); }

void CLetterer::Widen(const FT_Bitmap& bitmap) {
    const int w = static_cast<int>(bitmap.width), h = static_cast<int>(bitmap.rows);
    Coverage.resize(static_cast<std::size_t>(w) * h);
    const int pitch = bitmap.pitch;
    const uint8_t* rows = bitmap.buffer;
    if (pitch < 0) rows -= static_cast<long>(pitch) * (h - 1);
    for (int y = 0; y < h; ++y) {
        const uint8_t* src = rows + static_cast<long>(y) * pitch;
        uint8_t* dst = Coverage.data() + static_cast<std::size_t>(y) * w;
        switch (bitmap.pixel_mode) {
        case FT_PIXEL_MODE_MONO:
            for (int x = 0; x < w; ++x) dst[x] = (src[x >> 3] & (0x80 >> (x & 7))) ? 255 : 0;
            break;
        case FT_PIXEL_MODE_GRAY:
            if (bitmap.num_grays == 256) {
                std::memcpy(dst, src, w);
            } else {
                const int top = std::max(1, bitmap.num_grays - 1);
                for (int x = 0; x < w; ++x) dst[x] = static_cast<uint8_t>(std::min(255, src[x] * 255 / top));
            }
            break;
        case FT_PIXEL_MODE_BGRA:
            for (int x = 0; x < w; ++x) dst[x] = src[x * 4 + 3];
            break;
        default:
            std::memset(dst, 0, w);
        }
    }
}

// Turns a full-width character as the vertical face delivers it: lying a
// quarter turn counter-clockwise on the horizontal line, its em centred on
// the cell, advancing by the cell height.
void CLetterer::TurnCounterClockwise(Bitmap& b) {
    const int w = b.Width, h = b.Rows;
    Turned.resize(static_cast<std::size_t>(w) * h);
    for (int r = 0; r < w; ++r)
        for (int x = 0; x < h; ++x) Turned[static_cast<std::size_t>(r) * h + x] = b.Pixels[x * b.Pitch + (w - 1 - r)];
    const int ascent = Face->Ascent, descent = Face->Descent;
    const int centre = ((ascent - descent) - b.Advance) / 2;
    Bitmap t;
    t.Pixels = Turned.data();
    t.Width = h;
    t.Rows = w;
    t.Pitch = h;
    t.Left = ascent - b.Top;
    t.Top = b.Left + w + centre;
    t.Advance = ascent + descent;
    b = t;
}

bool CLetterer::Render(char16_t code, FT_UInt index, FT_Int32 loadFlags, Bitmap& out) {
    FT_Face face = Face->Face();
    const bool upright = Forms && Forms->IsUpright(code, index);
    if (upright) index = Forms->Substitute(code, index);
    if (FT_Load_Glyph(face, index, loadFlags | FT_LOAD_RENDER) != 0) return false;
    FT_GlyphSlot slot = face->glyph;
    if (slot->format != FT_GLYPH_FORMAT_BITMAP) return false;
    const FT_Bitmap& bitmap = slot->bitmap;
    out.Width = static_cast<int32_t>(bitmap.width);
    out.Rows = static_cast<int32_t>(bitmap.rows);
    if (bitmap.pixel_mode == FT_PIXEL_MODE_GRAY && bitmap.num_grays == 256 && bitmap.pitch >= 0) {
        // Already one byte a pixel: read it where it is.
        out.Pixels = bitmap.buffer;
        out.Pitch = bitmap.pitch;
    } else {
        Widen(bitmap);
        out.Pixels = Coverage.data();
        out.Pitch = out.Width;
    }
    out.Left = slot->bitmap_left;
    out.Top = slot->bitmap_top;
    out.Advance = static_cast<int32_t>((slot->advance.x + 32) >> 6);
    if (upright) TurnCounterClockwise(out);
    return true;
}

namespace {

// ORs n values of Bpp bits (no higher bits set) into a stream whose bits from
// `bit` on are still zero. Depths that divide a byte fill whole bytes at once
// once the position is aligned.
template <int Bpp>
void PackRow(uint8_t* dst, std::size_t bit, const uint8_t* values, int n) {
    int i = 0;
    if constexpr (8 % Bpp == 0) {
        for (; i < n && (bit & 7) != 0; ++i, bit += Bpp) OrBits(dst, bit, Bpp, values[i]);
        constexpr int PerByte = 8 / Bpp;
        uint8_t* d = dst + (bit >> 3);
        for (; i + PerByte <= n; i += PerByte) {
            unsigned byte = 0;
            for (int k = 0; k < PerByte; ++k) byte = byte << Bpp | values[i + k];
            *d++ = static_cast<uint8_t>(byte);
        }
        bit = static_cast<std::size_t>(d - dst) * 8;
    }
    for (; i < n; ++i, bit += Bpp) OrBits(dst, bit, Bpp, values[i]);
}

// The same from the image's bytes, through a table of the packed levels of
// two neighbouring bytes (a | b << 8): one look-up for every two pixels.
template <int Bpp>
void PackImageRow(uint8_t* dst, std::size_t bit, const uint8_t* src, int n, const uint8_t* level,
                  const uint8_t* pairs) {
    int i = 0;
    for (; i < n && (bit & 7) != 0; ++i, bit += Bpp) OrBits(dst, bit, Bpp, level[src[i]]);
    constexpr int PerByte = 8 / Bpp;
    uint8_t* d = dst + (bit >> 3);
    if constexpr (std::endian::native == std::endian::little) {
        // The packed byte of eight equal pixels of value 0 or 255.
        unsigned blank = 0, solid = 0;
        for (int k = 0; k < PerByte; k += 2) {
            blank = blank << (2 * Bpp) | pairs[0];
            solid = solid << (2 * Bpp) | pairs[0xFFFF];
        }
        // Eight pixels a step from one load: pixel j is byte j of the word.
        for (; i + 8 <= n; i += 8) {
            uint64_t v;
            std::memcpy(&v, src + i, 8);
            // Blank and solid stretches, most of a large glyph, take no look-ups.
            if (v == 0 || v == ~uint64_t{0}) {
                std::memset(d, v == 0 ? blank : solid, 8 / PerByte);
                d += 8 / PerByte;
                continue;
            }
            for (int o = 0; o < 8; o += PerByte) {
                unsigned byte = 0;
                for (int k = 0; k < PerByte; k += 2) byte = byte << (2 * Bpp) | pairs[(v >> (8 * (o + k))) & 0xFFFF];
                *d++ = static_cast<uint8_t>(byte);
            }
        }
    }
    for (; i + PerByte <= n; i += PerByte) {
        unsigned byte = 0;
        for (int k = 0; k < PerByte; k += 2) byte = byte << (2 * Bpp) | pairs[src[i + k] | src[i + k + 1] << 8];
        *d++ = static_cast<uint8_t>(byte);
    }
    bit = static_cast<std::size_t>(d - dst) * 8;
    for (; i < n; ++i, bit += Bpp) OrBits(dst, bit, Bpp, level[src[i]]);
}

void PackRowAtDepth(int bpp, uint8_t* dst, std::size_t bit, const uint8_t* values, int n) {
    switch (bpp) {
    case 1: PackRow<1>(dst, bit, values, n); break;
    case 2: PackRow<2>(dst, bit, values, n); break;
    case 3: PackRow<3>(dst, bit, values, n); break;
    case 4: PackRow<4>(dst, bit, values, n); break;
    default: PackRow<5>(dst, bit, values, n); break;
    }
}

}  // namespace

bool CLetterer::InkInWord(const uint8_t* bytes) const {
    // A byte b is at least InkFrom when b + (128 - InkFrom) reaches bit 7
    // (InkFrom up to 128), or when b has bit 7 and its low bits plus
    // (256 - InkFrom) do too; the low 7 bits never carry into the next byte.
    constexpr uint64_t Low = 0x7F7F7F7F7F7F7F7Full, High = 0x8080808080808080ull;
    uint64_t v;
    std::memcpy(&v, bytes, 8);
    const uint64_t sum = (v & Low) + InkAdd;
    return ((InkFrom <= 128 ? v | sum : v & sum) & High) != 0;
}

void CLetterer::BuildGlyph(CGlyph& glyph, const uint8_t* image, const RenderedCell& cell) {
    BuildGlyph(glyph, image, cell.Width, nullptr, cell);
}

void CLetterer::BuildGlyph(CGlyph& glyph, const uint8_t* image, std::ptrdiff_t pitch, const uint8_t* levels,
                           const RenderedCell& cell) {
    if (levels != TableFor || Bpp != TableBpp) {
        for (int v = 0; v < 256; ++v) {
            const uint8_t level = levels ? levels[v] : static_cast<uint8_t>(v);
            Ink[v] = level != 0;
            Level[v] = static_cast<uint8_t>(level & MaxLevel());
        }
        if (Bpp == 1 || Bpp == 2 || Bpp == 4) {
            Pairs.resize(0x10000);
            for (int v = 0; v < 0x10000; ++v) Pairs[v] = static_cast<uint8_t>(Level[v & 0xFF] << Bpp | Level[v >> 8]);
        }
        // Tables of coverage or levels mark ink from one byte value up, which
        // lets the scan test eight bytes at a time.
        int from = 0;
        while (from < 256 && !Ink[from]) ++from;
        bool threshold = from >= 1 && from <= 255;
        for (int v = 0; v < 256 && threshold; ++v) threshold = Ink[v] == (v >= from);
        InkFrom = threshold ? from : 0;
        InkAdd = 0x0101010101010101ull * static_cast<uint64_t>(from <= 128 ? 128 - from : 256 - from);
        TableFor = levels;
        TableBpp = Bpp;
    }
    // Each row is looked at from both ends up to its first and last ink only.
    int x0 = cell.Width, y0 = cell.Height, x1 = 0, y1 = 0;
    for (int y = 0; y < cell.Height; ++y) {
        const uint8_t* row = image + y * pitch;
        int first = 0;
        if (InkFrom > 0)
            while (first + 8 <= cell.Width && !InkInWord(row + first)) first += 8;
        while (first < cell.Width && !Ink[row[first]]) ++first;
        if (first == cell.Width) continue;
        int last = cell.Width - 1;
        // The word holding `first` has ink, so this stops at it at the latest.
        if (InkFrom > 0)
            while (last >= 7 && !InkInWord(row + last - 7)) last -= 8;
        while (!Ink[row[last]]) --last;
        x0 = std::min(x0, first);
        x1 = std::max(x1, last + 1);
        y0 = std::min(y0, y);
        y1 = y + 1;
    }
    if (x1 == 0) x0 = y0 = 0;
    const int w = x1 - x0, h = y1 - y0;

    int left = 0, right = 0;
    switch (WidthType) {
    case WidthKeepSpace:
        if (w == 0) {
            left = cell.OriginX;
            right = cell.Advance - cell.OriginX;
        }
        break;
    case WidthIncludeMargin:
        left = cell.OriginX + x0;
        right = cell.Advance - left - w;
        break;
    case WidthFixed:
        left = (FixedWidth - w) / 2;
        right = FixedWidth - left - w;
        break;
    default:
        break;
    }
    const int originRow = cell.Baseline - y0;
    glyph.Bpp = Bpp;
    glyph.Pixels.assign(PackedBytes(w, h, Bpp), 0);
    uint8_t* dst = glyph.Pixels.data();
    const uint8_t* ink = image + y0 * pitch + x0;
    // Each packed row goes through one row of levels.
    const int rowLength = Vertical ? h : w, rows = Vertical ? w : h;
    Row.resize(static_cast<std::size_t>(std::max(rowLength, 0)));
    uint8_t* levelRow = Row.data();
    for (int y = 0; y < rows && rowLength > 0; ++y) {
        const std::size_t bit = static_cast<std::size_t>(y) * rowLength * Bpp;
        if (!Vertical) {
            const uint8_t* src = ink + y * pitch;
            switch (Bpp) {
            case 1: PackImageRow<1>(dst, bit, src, w, Level, Pairs.data()); continue;
            case 2: PackImageRow<2>(dst, bit, src, w, Level, Pairs.data()); continue;
            case 4: PackImageRow<4>(dst, bit, src, w, Level, Pairs.data()); continue;
            default: break;
            }
            for (int x = 0; x < w; ++x) levelRow[x] = Level[src[x]];
        } else {
            // A quarter turn clockwise: new (x, y) = old (y, h - 1 - x).
            for (int x = 0; x < h; ++x) levelRow[x] = Level[ink[(h - 1 - x) * pitch + y]];
        }
        PackRowAtDepth(Bpp, dst, bit, levelRow, rowLength);
    }
    if (!Vertical) {
        glyph.Ink = w > 0 ? InkBox{0, 0, w, h} : InkBox{};
        glyph.LeftSpace = left;
        glyph.RightSpace = right;
        glyph.Ascent = originRow;
        glyph.RightExtent = w;
        return;
    }
    // Turned into an h x w cell, the origin row becomes the reference column,
    // counted from the right.
    glyph.Ink = w > 0 ? InkBox{0, 0, h, w} : InkBox{};
    glyph.TopSpace = left;
    glyph.BottomSpace = right;
    glyph.Ascent = 0;
    glyph.RightExtent = originRow;
}
