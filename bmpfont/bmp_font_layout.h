// The geometry and colours of a glyph-grid picture, shared by its writer and
// the checks that guard it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

class CBmpImage;
class CFontData;
class CGlyphOrder;

// Largest picture the writer draws, in pixel bytes; far above any useful
// grid, well below what would exhaust memory.
inline constexpr long long MaxGridBmpBytes = 1ll << 28;

// The frames' grey-green, the palette entry just after black.
inline constexpr uint32_t GridColorRgb = 0x0099AA99;

struct BmpGridLayout {
    bool IsVertical = false;
    int32_t Bpp = 1;
    int32_t Baseline = 0;
    int32_t InkAreaWidth = 0;
    int32_t InkAreaHeight = 0;
    int32_t GlyphX = 0;
    int32_t GlyphY = 0;
    int32_t CellWidth = 0;
    int32_t CellHeight = 0;
    int32_t PitchX = 0;
    int32_t PitchY = 0;
    int32_t Columns = 0;
    int32_t Rows = 0;
    // Palette indices: n - 1 is black, n (mod 256) the grid colour.
    int32_t Black() const { return (1 << Bpp) - 1; }
    int32_t GridColor() const { return (1 << Bpp) % 256; }
};

// The grid of a picture as the reader measures it against a glyph order:
// PitchX x PitchY cells, each with an AreaW x AreaH glyph area at
// (GlyphLeft(), 2) of the cell; a pitch of 5 or 6 leaves a negative area.
struct GridGeometry {
    int Columns = 0, Rows = 0;
    int PitchX = 0, PitchY = 0;
    bool Vertical = false;
    int AreaW = 0, AreaH = 0;
    int GlyphLeft() const { return Vertical ? 4 : 2; }
    int LineLength() const { return Vertical ? AreaH : AreaW; }
};

// Cell size settings of the writer: a negative cell size derives it from the
// margins, a negative offset centres the ink area.
struct BmpCellSettings {
    int32_t CellWidth;
    int32_t CellHeight;
    int32_t OffsetLeft;
    int32_t OffsetTop;
    int32_t MarginRight;
    int32_t MarginBottom;
};

// Lays the prepared font out in the order's grid; throws when the picture
// would be too large.
BmpGridLayout ComputeGridLayout(const CFontData& font, const CGlyphOrder& order, const BmpCellSettings& settings);
// Refuses an order whose grid cannot become a picture (no cells, or more cells
// than any picture may hold).
void CheckOrderGrid(const CGlyphOrder& order, const std::filesystem::path& orderPath);
// The writer's 256 palette entries for a font of bpp bits: white, the greys
// down to black, the grid colour, then black.
std::vector<uint32_t> GridPalette(int bpp);
// An all-white 8-bit picture of the layout's size with the grid palette.
void CreateGridPicture(CBmpImage& image, const BmpGridLayout& layout);
