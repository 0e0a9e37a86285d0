// Installed bitmap families: listed once with their sizes, and of a family that
// ships one file per size, the file whose strike is the chosen size is read, at
// 2 levels whatever levels were asked for.
#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <fstream>

#include <fontconfig/fontconfig.h>

#include "core/font_data.h"
#include "core/font_filter.h"
#include "core/headless_pg_ctrl.h"
#include "sources/font_catalog.h"
#include "sources/win_font_reader.h"

namespace {

// One file of the family: "A" is a solid block half the size wide and the
// size tall, so its ink tells which file was read.
void WriteStrike(const std::filesystem::path& file, int px) {
    const int width = px / 2;
    std::ofstream out(file);
    out << "STARTFONT 2.1\nFONT -gw-GwStrikes-medium-r-normal--" << px << "-" << px * 10 << "-75-75-c-" << width * 10
        << "-iso10646-1\nSIZE " << px << " 75 75\nFONTBOUNDINGBOX " << width << " " << px
        << " 0 -2\nSTARTPROPERTIES 6\nFAMILY_NAME \"GwStrikes\"\nPIXEL_SIZE " << px << "\nFONT_ASCENT " << px - 2
        << "\nFONT_DESCENT 2\nCHARSET_REGISTRY \"ISO10646\"\nCHARSET_ENCODING \"1\"\nENDPROPERTIES\nCHARS 1\n"
        << "STARTCHAR A\nENCODING 65\nSWIDTH 500 0\nDWIDTH " << width << " 0\nBBX " << width << " " << px
        << " 0 -2\nBITMAP\n";
    const std::string row = px == 16 ? "FF" : px == 12 ? "FC" : "F0";
    for (int y = 0; y < px; ++y) out << row << "\n";
    out << "ENDCHAR\nENDFONT\n";
}

std::string Lower(std::string s) {
    for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

}  // namespace

TEST(BitmapStrikes, TheChosenSizesFileIsReadAtTwoLevels) {
    const auto dir = std::filesystem::temp_directory_path() / ("gw_strikes_" + std::to_string(getpid()));
    std::filesystem::create_directories(dir);
    ASSERT_TRUE(FcInit());
    for (int px : {8, 12, 16}) {
        const auto file = dir / ("strike" + std::to_string(px) + ".bdf");
        WriteStrike(file, px);
        ASSERT_TRUE(FcConfigAppFontAddFile(nullptr, reinterpret_cast<const FcChar8*>(file.c_str())));
    }
    // The list: families once, sorted without case, with bitmap sizes.
    const auto faces = ListInstalledFaces();
    auto family = [&](const std::string& name) {
        return std::find_if(faces.begin(), faces.end(), [&](const FontFaceInfo& f) { return f.Family == name; });
    };
    ASSERT_NE(family("GwStrikes"), faces.end());
    EXPECT_FALSE(family("GwStrikes")->Scalable);
    EXPECT_EQ(family("GwStrikes")->PixelSizes, (std::vector<int>{8, 12, 16}));
    EXPECT_EQ(std::count_if(faces.begin(), faces.end(), [](const FontFaceInfo& f) { return f.Family == "DejaVu Sans"; }), 1);
    EXPECT_TRUE(std::is_sorted(faces.begin(), faces.end(), [](const FontFaceInfo& a, const FontFaceInfo& b) {
        return Lower(a.Family) < Lower(b.Family);
    }));

    CHeadlessPgCtrl pg;
    g_pPgCtrl = &pg;
    // {size, levels asked, ink width, ink height}: cell heights, an em height (negative),
    // the nearest strike for a size between two, and more levels than the face has.
    const int cases[][4] = {{8, 1, 4, 8}, {12, 1, 6, 12}, {16, 1, 8, 16}, {-12, 1, 6, 12}, {15, 1, 8, 16},
                            {12, 4, 6, 12}, {16, 3, 8, 16}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "size " << c[0] << " bpp " << c[1]);
        CWinFontReader reader("GwStrikes", c[0], c[1], 0, 0, false);
        reader.CheckParameters();
        CFontData font;
        reader.Read(font, CFontFilter{});
        EXPECT_EQ(font.Bpp.Value, 1);
        const CGlyph* a = font.FindGlyph('A');
        ASSERT_NE(a, nullptr);
        EXPECT_EQ(a->Ink.Width(), c[2]);
        EXPECT_EQ(a->Ink.Height(), c[3]);
        EXPECT_EQ(*std::min_element(a->Pixels.begin(), a->Pixels.end()), 1);  // solid, full ink at 1 bpp
    }
    g_pPgCtrl = nullptr;
    std::filesystem::remove_all(dir);
}
