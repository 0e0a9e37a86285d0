// The installed face list: families once, sorted, scalable flags, bitmap sizes
// and vertical forms.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <unistd.h>
#include <fstream>
#include <string>

#include <fontconfig/fontconfig.h>

#include "sources/font_catalog.h"

namespace {
const FontFaceInfo* Find(const std::vector<FontFaceInfo>& faces, const std::string& family) {
    for (const auto& f : faces)
        if (f.Family == family) return &f;
    return nullptr;
}
std::string Lower(std::string s) {
    for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}
}  // namespace

TEST(FontCatalog, ListsFamiliesWithFlags) {
    // A bitmap font known to fontconfig for this process only.
    const auto dir = std::filesystem::temp_directory_path() / ("gw_catalog_" + std::to_string(getpid()));
    std::filesystem::create_directories(dir);
    const auto bdf = dir / "tiny.bdf";
    {
        std::ofstream out(bdf);
        out << "STARTFONT 2.1\nFONT -gw-GwTinyBitmap-medium-r-normal--8-80-75-75-c-60-iso10646-1\n"
               "SIZE 8 75 75\nFONTBOUNDINGBOX 6 8 0 -1\nSTARTPROPERTIES 7\nCHARSET_REGISTRY \"ISO10646\"\nCHARSET_ENCODING \"1\"\nFAMILY_NAME \"GwTinyBitmap\"\n"
               "PIXEL_SIZE 8\nFONT_ASCENT 7\nFONT_DESCENT 1\nSPACING \"C\"\nENDPROPERTIES\nCHARS 1\n"
               "STARTCHAR A\nENCODING 65\nSWIDTH 750 0\nDWIDTH 6 0\nBBX 6 8 0 -1\nBITMAP\n"
               "00\n30\n48\n84\nFC\n84\n84\n00\nENDCHAR\nENDFONT\n";
    }
    ASSERT_TRUE(FcInit());
    ASSERT_TRUE(FcConfigAppFontAddFile(nullptr, reinterpret_cast<const FcChar8*>(bdf.c_str())));

    const auto faces = ListInstalledFaces();
    std::filesystem::remove_all(dir);
    EXPECT_FALSE(Find(faces, "DejaVu Sans")->HasVerticalForms);
    const FontFaceInfo* tiny = Find(faces, "GwTinyBitmap");
    ASSERT_NE(tiny, nullptr);
    EXPECT_FALSE(tiny->Scalable);
    EXPECT_EQ(tiny->PixelSizes, std::vector<int>{8});
    EXPECT_EQ(std::count_if(faces.begin(), faces.end(), [](const FontFaceInfo& f) { return f.Family == "DejaVu Sans"; }),
              1);
    EXPECT_TRUE(std::is_sorted(faces.begin(), faces.end(), [](const FontFaceInfo& a, const FontFaceInfo& b) {
        return Lower(a.Family) < Lower(b.Family);
    }));
}
