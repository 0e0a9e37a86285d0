// A bitmap family that ships one file per size: the file whose strike is the
// chosen size is read, at 2 levels whatever levels were asked for.
#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include <fontconfig/fontconfig.h>

#include "core/bit_stream.h"
#include "core/font_data.h"
#include "core/font_filter.h"
#include "core/headless_pg_ctrl.h"
#include "core/pg_ctrl.h"
#include "sources/font_catalog.h"
#include "sources/win_font_reader.h"

namespace {

// One file of the family: "A" is a solid block half the size wide and the
// size tall, so its ink tells which file was read.
void WriteStrike(const std::filesystem::path& file, int px) {
    const int ascent = px - 2, width = px / 2;
    std::ofstream out(file);
    out << "STARTFONT 2.1\nFONT -gw-GwStrikes-medium-r-normal--" << px << "-" << px * 10
        << "-75-75-c-" << width * 10 << "-iso10646-1\nSIZE " << px << " 75 75\nFONTBOUNDINGBOX " << width << " " << px
        << " 0 -2\nSTARTPROPERTIES 6\nFAMILY_NAME \"GwStrikes\"\nPIXEL_SIZE " << px << "\nFONT_ASCENT " << ascent
        << "\nFONT_DESCENT 2\nCHARSET_REGISTRY \"ISO10646\"\nCHARSET_ENCODING \"1\"\nENDPROPERTIES\nCHARS 1\n"
        << "STARTCHAR A\nENCODING 65\nSWIDTH 500 0\nDWIDTH " << width << " 0\nBBX " << width << " " << px
        << " 0 -2\nBITMAP\n";
    std::string row;
    for (int x = 0; x < width; x += 8) {
        const int bits = std::min(8, width - x);
        char hex[3];
        std::snprintf(hex, sizeof hex, "%02X", (0xFF00 >> bits) & 0xFF);
        row += hex;
    }
    for (int y = 0; y < px; ++y) out << row << "\n";
    out << "ENDCHAR\nENDFONT\n";
}

}  // namespace

TEST(BitmapStrikes, TheChosenSizesFileIsReadAtTwoLevels) {
    const auto dir = std::filesystem::temp_directory_path() / ("gw_strikes_" + std::to_string(getpid()));
    std::filesystem::create_directories(dir);
    // One family match serves every size unless the strike decides.
    ASSERT_TRUE(FcInit());
    for (int px : {8, 12, 16}) {
        const auto file = dir / ("strike" + std::to_string(px) + ".bdf");
        WriteStrike(file, px);
        ASSERT_TRUE(FcConfigAppFontAddFile(nullptr, reinterpret_cast<const FcChar8*>(file.c_str())));
    }

    std::vector<int> sizes;
    for (const FontFaceInfo& f : ListInstalledFaces())
        if (f.Family == "GwStrikes") sizes = f.PixelSizes;
    EXPECT_EQ(sizes, (std::vector<int>{8, 12, 16}));

    CHeadlessPgCtrl pg;
    g_pPgCtrl = &pg;
    struct Case {
        int Size;
        int Bpp;
        int InkWidth, InkHeight;
    };
    // Cell heights, em heights (negative), the nearest strike for a size
    // between two, and 16 levels asked of a face that has only 2.
    const Case cases[] = {{8, 1, 4, 8}, {12, 1, 6, 12}, {16, 1, 8, 16}, {-12, 1, 6, 12},
                          {15, 1, 8, 16}, {12, 4, 6, 12}, {16, 3, 8, 16}};
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "size " << c.Size << " bpp " << c.Bpp);
        CWinFontReader reader("GwStrikes", c.Size, c.Bpp, 0, 0, false);
        reader.CheckParameters();
        CFontData font;
        reader.Read(font, CFontFilter{});
        EXPECT_EQ(font.Bpp.Value, 1);
        const CGlyph* a = font.FindGlyph('A');
        ASSERT_NE(a, nullptr);
        EXPECT_EQ(a->Ink.Width(), c.InkWidth);
        EXPECT_EQ(a->Ink.Height(), c.InkHeight);
        EXPECT_EQ(a->Bpp, 1);
        const std::size_t bits = static_cast<std::size_t>(a->Ink.Width()) * a->Ink.Height();
        for (std::size_t bit = 0; bit < bits; ++bit)  // solid: full ink in every pixel
            ASSERT_EQ(PeekBits(a->Pixels.data(), bit, 1), 1u) << bit;
    }
    g_pPgCtrl = nullptr;
    std::filesystem::remove_all(dir);
}
