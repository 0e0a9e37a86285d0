// Two grey levels: the character's cell drawn as GDI's TextOut would, with
// the blank area around the cell marked, then measured and reduced.
#include <algorithm>
#include <iterator>

#include "core/general_exception.h"
#include "sources/letterer.h"

namespace {
// Ink is the highest value, so the glyph is built from the grid as it is.
enum : uint8_t { White = 0, Outside = 1, Black = 2 };
constexpr int MaxCellSize = 4096;
}  // namespace

void CRasterLetterer::Prepare(const FontLocation& location, int32_t size) {
    OpenFace(location, size);
    // The whole cell is one scratch bitmap; refuse sizes no screen font has.
    if (CellSize < 1 || CellSize > MaxCellSize) ThrowError("Internal Error:\n Fail to CreateCompatibleBitmap.");
    Grid.resize(static_cast<std::size_t>(CellSize) * CellSize);
    // Every value from Black up is ink (only Black occurs), which lets the
    // glyph's crop test eight values at a time.
    std::fill(std::begin(GridLevels) + Black, std::end(GridLevels), MaxLevel());
}

bool CRasterLetterer::MakeGlyph(CGlyph& glyph, char16_t code) {
    const FT_UInt index = GlyphIndex(code);
    if (index == 0) return false;
    Bitmap b;
    if (!Render(code, index, FT_LOAD_TARGET_MONO, b)) return false;
    const int n = CellSize;

    // The opaque text background covers advance x cell height; ink may
    // overhang it, which widens the measured advance as on the screen.
    std::fill(Grid.begin(), Grid.end(), Outside);
    const int cellW = std::min(n, std::max(0, b.Advance)), cellH = std::min(n, Face->Height());
    for (int y = 0; y < cellH; ++y) std::fill_n(Grid.begin() + static_cast<std::size_t>(y) * n, cellW, White);
    const int top = FontAscent - b.Top;
    for (int r = 0; r < b.Rows; ++r) {
        const int y = top + r;
        if (y < 0 || y >= n) continue;
        for (int c = 0; c < b.Width; ++c) {
            const int x = b.Left + c;
            if (x >= 0 && x < n && b.Pixels[r * b.Pitch + c] >= 128) Grid[static_cast<std::size_t>(y) * n + x] = Black;
        }
    }

    int advance = 0;
    for (int y = 0; y < n; ++y) {
        const uint8_t* row = Grid.data() + static_cast<std::size_t>(y) * n;
        const int first = static_cast<int>(std::find(row, row + n, Outside) - row);
        if (first == n) continue;
        if (first == 0) {
            if (y == 0) return false;  // an empty top row: no advance
            break;                     // below the cell
        }
        advance = std::max(advance, first);
    }
    // No row ended inside the bitmap: the cell spans its whole width.
    if (advance == 0) advance = n;

    RenderedCell cell;
    cell.Width = advance;
    cell.Height = n;
    cell.OriginX = 0;
    cell.Advance = advance;
    cell.Baseline = FontAscent;
    BuildGlyph(glyph, Grid.data(), n, GridLevels, cell);
    return true;
}
