// Draws text the way a game draws it from a ZGLY file, using nothing but the
// file: codes through the file's encoding and character maps, widths from the
// width blocks, cells turned back upright.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "core/font_data.h"
#include "zgly/cell_image.h"

class CFontBlockSet;

struct CRgbImage {
    int Width = 0;
    int Height = 0;
    std::vector<uint8_t> Rgb;  // 3 bytes a pixel, rows top to bottom, no padding
    // Where the first line's pen start (horizontal: on its baseline;
    // vertical: the first column's reference line at its top) lands.
    int OriginX = 0;
    int OriginY = 0;

    uint32_t Pixel(int x, int y) const;  // 0xRRGGBB
};

struct CPreviewOptions {
    int Zoom = 2;
    bool Guides = false;
    uint32_t Ink = 0x000000;
    uint32_t Paper = 0xFFFFFF;
};

inline constexpr int MaxPreviewZoom = 16;

class CTextRenderer {
public:
    // The set must stay alive and have been loaded (validated).
    explicit CTextRenderer(const CFontBlockSet& set);

    // UTF-8 text; "\n" starts a new line (a new column in vertical fonts).
    CRgbImage DrawText(std::string_view utf8, const CPreviewOptions& options);
    // Every mapped code of the file in a grid, each labelled with its file code.
    CRgbImage DrawSheet(const CPreviewOptions& options);

    // The glyph drawn for a Unicode code unit: its file code's glyph, else the
    // alternate glyph.
    uint16_t GlyphFor(char16_t unicode) const;
    const CCellLayout& Layout() const { return CellLayout; }

private:
    // A glyph image cropped to its ink, one value a pixel.
    struct CSprite {
        int Width = 0, Height = 0, Origin = 0;  // the upright image
        InkBox Ink;                             // inside the image
        std::vector<uint8_t> Values;            // Ink.Width() x Ink.Height()
    };
    struct CScene;

    const CSprite& SpriteOf(uint16_t glyph);
    // Places one glyph with its pen at (x, y) and returns the advance.
    int PlaceGlyph(CScene& scene, uint16_t glyph, int x, int y, bool guides);
    CRgbImage Paint(const CScene& scene, const CPreviewOptions& options) const;

    const CFontBlockSet& Set;
    CCellLayout CellLayout;
    int LineFeed = 0;
    uint16_t AlternateGlyph = 0;
    int Encoding = 0;
    std::map<uint16_t, CSprite> Sprites;
};

// Loads a ZGLY file for drawing with the reader's checks and messages.
void LoadZglyForPreview(const std::filesystem::path& path, CFontBlockSet& set);
