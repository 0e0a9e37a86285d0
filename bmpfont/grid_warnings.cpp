#include "bmpfont/grid_warnings.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <map>

#include "bmpfont/bmp_font_layout.h"
#include "bmpfont/grid_colors.h"
#include "bmpfont/grid_picture_file.h"
#include "bmpfont/bmp_image.h"
#include "core/general_exception.h"
#include "core/pg_ctrl.h"

namespace {

constexpr uint32_t White = 0x00FFFFFF;
constexpr std::size_t ListedGlyphs = 5;
constexpr std::size_t ListedColors = 5;

// The level a colour stands for in the grid of a fontBpp font: the nearest of
// white, the greys and black.
uint32_t LevelOfColor(uint32_t rgb, const std::vector<uint32_t>& grid, int fontBpp) {
    uint32_t best = 0;
    for (uint32_t i = 1; i < (1u << fontBpp); ++i)
        if (ColorDistance(rgb, grid[i]) < ColorDistance(rgb, grid[best])) best = i;
    return best;
}

// Palette indices and colours met in the glyph areas, each colour with the
// first pixel (in the order the cells are read) that has it.
struct AreaContents {
    std::array<bool, 256> Indices{};
    std::map<uint32_t, std::pair<int, int>> Colors;
};

AreaContents ReadAreas(const CBmpImage& pic, const GridPictureSource& source, const GridGeometry& g) {
    AreaContents out;
    uint32_t last = 0xFFFFFFFF;  // runs of one colour are looked up once
    // A negative area has no pixels: its loops run zero times.
    for (int r = 0; r < g.Rows; ++r)
        for (int c = 0; c < g.Columns; ++c)
            for (int y = r * g.PitchY + 2, y1 = y + g.AreaH; y < y1; ++y)
                for (int x = c * g.PitchX + g.GlyphLeft(), x1 = x + g.AreaW; x < x1; ++x) {
                    uint32_t index = pic.GetPixel(x, y) & 0xFF;
                    out.Indices[index] = true;
                    uint32_t rgb = source.Mapped ? source.Colors[static_cast<std::size_t>(y) * pic.Width + x]
                                                 : pic.Palette[index] & 0x00FFFFFF;
                    if (rgb != last) out.Colors.emplace(last = rgb, std::pair{x, y});
                }
    return out;
}

bool IsGrey(uint32_t rgb) { return (rgb >> 16 & 0xFF) == (rgb >> 8 & 0xFF) && (rgb >> 8 & 0xFF) == (rgb & 0xFF); }

// Names the ink colours a grid of the font's depth does not have, with the
// first pixel of each. More colours help only when those are greys; paint of
// another colour does not belong in a glyph area at all.
void WarnAboutExtraColors(const AreaContents& seen, int inkColors, int fontBpp, int colorsNeeded) {
    const int maxLevel = (1 << fontBpp) - 1;
    const std::vector<uint32_t> grid = GridPalette(fontBpp);
    const auto kept = grid.begin() + 1, keptEnd = grid.begin() + 1 + maxLevel;
    std::vector<std::pair<uint32_t, std::pair<int, int>>> greys, others;
    for (const auto& [rgb, at] : seen.Colors)
        if (std::find(kept, keptEnd, rgb) == keptEnd) (IsGrey(rgb) ? greys : others).push_back({rgb, at});
    // Paint that is no grey is named alone: it is the mistake to fix.
    const auto& named = others.empty() ? greys : others;
    std::string list;
    for (std::size_t i = 0; i < named.size() && i < ListedColors; ++i)
        list += (list.empty() ? "" : ", ") + FormatString("#%06X (first at %d,%d)", static_cast<int>(named[i].first),
                                                         named[i].second.first, named[i].second.second);
    if (named.size() > ListedColors) list += FormatString(" and %d more", static_cast<int>(named.size() - ListedColors));
    const std::string head = FormatString("The picture uses %d ink colors, but %d colors keep only %d of them", inkColors,
                                          maxLevel + 1, maxLevel);
    if (others.empty())
        ReportWarning(g_pPgCtrl, "%s; read it with %d colors. Colors beyond the %d-color grid: %s.", head, colorsNeeded,
                      maxLevel + 1, list);
    else
        ReportWarning(g_pPgCtrl, "%s. Colors that are not grey: %s; paint them over in white, the greys or black.",
                      head, list);
}

}  // namespace

uint32_t GridLevel(uint32_t index, uint32_t white, uint32_t maxLevel) {
    if (index == white) return 0;
    uint32_t value = index == 0 ? white : index;
    return value > maxLevel ? 0 : value;
}

void WarnAboutGridColors(const CBmpImage& pic, const GridPictureSource& source, const GridGeometry& grid, int white,
                         int fontBpp) {
    const uint32_t maxLevel = (1u << fontBpp) - 1;
    AreaContents seen = ReadAreas(pic, source, grid);
    const std::array<bool, 256>& used = seen.Indices;
    seen.Colors.erase(White);
    seen.Colors.erase(GridColorRgb);
    int inkColors = static_cast<int>(seen.Colors.size());
    bool tooManyLevels = false;
    if (inkColors > static_cast<int>(maxLevel)) {
        int colors = 2;
        while (colors < 16 && colors - 1 < inkColors) colors *= 2;
        if (colors > static_cast<int>(maxLevel) + 1) {
            tooManyLevels = true;
            WarnAboutExtraColors(seen, inkColors, fontBpp, colors);
        }
    }
    // Greys the depth drops are explained above; a moved white is not.
    if (source.Mapped || (tooManyLevels && white == 0)) return;
    const std::vector<uint32_t> palette = GridPalette(fontBpp);
    for (int i = 0; i < pic.PaletteSize; ++i) {
        uint32_t c = pic.Palette[static_cast<std::size_t>(i)] & 0x00FFFFFF;
        if (!used[static_cast<std::size_t>(i)] || c == White || c == GridColorRgb) continue;
        uint32_t reads = GridLevel(static_cast<uint32_t>(i), static_cast<uint32_t>(white), maxLevel);
        uint32_t means = LevelOfColor(c, palette, fontBpp);
        if (reads != means) {
            ReportWarning(
                g_pPgCtrl,
                "The palette is not in the grid's order (white at index 0, then the greys, black at index %d): "
                "white is at index %d, and index %d (#%06X) reads as level %d though its color is level %d.",
                static_cast<int>(maxLevel), white, i, c, reads, means);
            return;
        }
    }
}

void WarnAboutOtherOrder(const std::string& drawnFor, const std::filesystem::path& orderPath) {
    const std::string readWith = orderPath.filename().string();
    auto lower = [](std::string s) {
        std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        return s;
    };
    if (drawnFor.empty() || lower(drawnFor) == lower(readWith)) return;
    ReportWarning(g_pPgCtrl, "The picture was drawn for the glyph order %s, but is read with %s.", drawnFor, readWith);
}

void CMissingWidthLines::Add(uint16_t code) {
    ++Count;
    if (First.size() < ListedGlyphs) First.push_back(code);
}

void CMissingWidthLines::Report() const {
    if (Count == 0) return;
    std::string list;
    for (uint16_t code : First)
        list += (list.empty() ? "" : ", ") +
                FormatString("'%c' (U+%04X)", static_cast<char16_t>(code), static_cast<int>(code));
    if (static_cast<std::size_t>(Count) > First.size()) list += ", ...";
    ReportWarning(g_pPgCtrl, "%d glyphs have ink but no width line, so their advance is 0: %s.", Count, list);
}

void ThrowNoInk(const std::filesystem::path& path) {
    ThrowError(
        "BMP Error:\n No cell of BMP(%s) holds any ink: draw the glyphs in the cells' glyph areas, and read the "
        "picture with the number of colors it was drawn with.",
        path);
}
