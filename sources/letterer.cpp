// The letterers' common part: opening the face, rendering a character (turned
// for vertical faces), and building the glyph from the rendered cell.
#include "sources/letterer.h"

#include <algorithm>
#include <cstring>

#include "core/font_data.h"
#include "core/general_exception.h"
#include "sources/vertical_forms.h"

FontRequest ParseFaceName(const std::string& faceName, int32_t size) {
    FontRequest r;
    r.Vertical = !faceName.empty() && faceName[0] == '@';
    r.FaceName = r.Vertical ? faceName.substr(1) : faceName;
    r.Size = size;
    return r;
}

CLetterer::CLetterer() = default;
CLetterer::~CLetterer() = default;

void CLetterer::Setup(int32_t bpp, int32_t widthType, int32_t fixedWidth, bool vertical) {
    if (bpp < 1 || bpp > 5) ThrowError("Internal Error:\n Invalid input parameter: bpp(%d) exceed range.", bpp);
    if (widthType < 0 || widthType > 3) ThrowError("Internal Error:\n Invalid width type (%d).", widthType);
    Bpp = bpp;
    WidthType = widthType;
    FixedWidth = fixedWidth;
    Vertical = vertical;
}

void CLetterer::OpenFace(const FontRequest& request, int32_t size) {
    FontLocation location;
    if (!ResolveFontName(request.FaceName, location, size))
        ThrowError("Parameter Error:\n Font(%s) is not installed.", request.FaceName);
    Face = std::make_unique<CFontFace>(location, size);
    FontAscent = Face->Ascent;
    CellSize = std::max(Face->Height(), Face->MaxCharWidth);
    if (Vertical) Forms = std::make_unique<CVerticalForms>(Face->Face());
}

bool CLetterer::HasGlyph(char16_t code) const { return FT_Get_Char_Index(Face->Face(), code) != 0; }

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
        for (int x = 0; x < h; ++x) Turned[static_cast<std::size_t>(r) * h + x] = b.Pixels[x * w + (w - 1 - r)];
    const int ascent = Face->Ascent, descent = Face->Descent;
    const int centre = ((ascent - descent) - b.Advance) / 2;
    Bitmap t;
    t.Pixels = Turned.data();
    t.Width = h;
    t.Rows = w;
    t.Left = ascent - b.Top;
    t.Top = b.Left + w + centre;
    t.Advance = ascent + descent;
    b = t;
}

bool CLetterer::Render(char16_t code, FT_Int32 loadFlags, Bitmap& out) {
    FT_Face face = Face->Face();
    FT_UInt index = FT_Get_Char_Index(face, code);
    const bool upright = Forms && Forms->IsUpright(code, index);
    if (upright) index = Forms->Substitute(code, index);
    if (FT_Load_Glyph(face, index, loadFlags | FT_LOAD_RENDER) != 0) return false;
    FT_GlyphSlot slot = face->glyph;
    if (slot->format != FT_GLYPH_FORMAT_BITMAP) return false;
    Widen(slot->bitmap);
    out.Pixels = Coverage.data();
    out.Width = static_cast<int32_t>(slot->bitmap.width);
    out.Rows = static_cast<int32_t>(slot->bitmap.rows);
    out.Left = slot->bitmap_left;
    out.Top = slot->bitmap_top;
    out.Advance = static_cast<int32_t>((slot->advance.x + 32) >> 6);
    if (upright) TurnCounterClockwise(out);
    return true;
}

void CLetterer::BuildGlyph(CGlyph& glyph, const uint8_t* image, const RenderedCell& cell) {
    int x0 = cell.Width, y0 = cell.Height, x1 = 0, y1 = 0;
    for (int y = 0; y < cell.Height; ++y) {
        const uint8_t* row = image + static_cast<std::size_t>(y) * cell.Width;
        for (int x = 0; x < cell.Width; ++x)
            if (row[x] != cell.Background) {
                x0 = std::min(x0, x);
                x1 = std::max(x1, x + 1);
                y0 = std::min(y0, y);
                y1 = std::max(y1, y + 1);
            }
    }
    if (x1 == 0) x0 = y0 = 0;
    const int w = x1 - x0, h = y1 - y0;

    int left = 0, right = 0;
    switch (WidthType) {
    case 1:
        if (w == 0) {
            left = cell.OriginX;
            right = cell.Advance - cell.OriginX;
        }
        break;
    case 2:
        left = cell.OriginX + x0;
        right = cell.Advance - left - w;
        break;
    case 3:
        left = (FixedWidth - w) / 2;
        right = FixedWidth - left - w;
        break;
    default:
        break;
    }
    const int originRow = cell.Baseline - y0;
    // The glyph is filled as SetFromCell would fill it from the cropped ink at
    // 8 bits per pixel, where the packed stream is simply one byte a pixel;
    // going through the bit reader and writer costs a quarter of a conversion.
    glyph.Bpp = 8;
    glyph.Pixels.resize(static_cast<std::size_t>(w) * h);
    uint8_t* dst = glyph.Pixels.data();
    if (!Vertical) {
        for (int y = 0; y < h; ++y)
            std::memcpy(dst + static_cast<std::size_t>(y) * w, image + static_cast<std::size_t>(y0 + y) * cell.Width + x0,
                        w);
        glyph.Ink = w > 0 ? InkBox{0, 0, w, h} : InkBox{};
        glyph.LeftSpace = left;
        glyph.RightSpace = right;
        glyph.Ascent = originRow;
        glyph.RightExtent = w;
        return;
    }
    // A quarter turn clockwise into an h x w cell: new (x, y) = old (y, h - 1 - x);
    // the origin row becomes the reference column, counted from the right.
    for (int y = 0; y < w; ++y)
        for (int x = 0; x < h; ++x)
            dst[static_cast<std::size_t>(y) * h + x] = image[static_cast<std::size_t>(y0 + h - 1 - x) * cell.Width + x0 + y];
    glyph.Ink = w > 0 ? InkBox{0, 0, h, w} : InkBox{};
    glyph.TopSpace = left;
    glyph.BottomSpace = right;
    glyph.Ascent = 0;
    glyph.RightExtent = originRow;
}
