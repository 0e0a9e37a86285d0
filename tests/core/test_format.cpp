#include <gtest/gtest.h>

#include <filesystem>

#include "core/general_exception.h"
#include "core/headless_pg_ctrl.h"

namespace {

std::size_t Utf8Chars(const std::string& s) {
    std::size_t n = 0;
    for (unsigned char c : s) n += (c & 0xC0) != 0x80;
    return n;
}

TEST(FormatString, Conversions) {
    EXPECT_EQ(FormatString("Parameter Error:\n File(%s) not exists.", std::string("a.bmp")),
              "Parameter Error:\n File(a.bmp) not exists.");
    EXPECT_EQ(FormatString("%s|%s", "x", std::filesystem::path("/tmp/f.xlor")), "x|/tmp/f.xlor");
    EXPECT_EQ(FormatString("(%d,%d)", -3, 12), "(-3,12)");
    EXPECT_EQ(FormatString("'%c': U+%04X", u'\u3042', 0x3042), "'\u3042': U+3042");
    EXPECT_EQ(FormatString("100%% %d", 5), "100% 5");
    // A '%' inside an argument is shown as it stands.
    EXPECT_EQ(FormatString("Can not open a file (%s).", std::string("50%d%s.bmp")),
              "Can not open a file (50%d%s.bmp).");
}

TEST(FormatString, CutsAt1023Characters) {
    EXPECT_EQ(FormatString("%s", std::string(2000, 'x')).size(), 1023u);
    std::string kana;
    for (int i = 0; i < 1500; ++i) kana += "\u3042";
    const std::string cut = FormatString("a%s", kana);
    EXPECT_EQ(Utf8Chars(cut), 1023u);
    EXPECT_EQ(cut.size(), 1 + 1022u * 3);  // never inside a character
    const std::string exact(1023, 'y');
    EXPECT_EQ(FormatString("%s", exact), exact);
}

TEST(SteppedPgCtrl, DivisorEdges) {
    EXPECT_EQ(ProgressDivisorFor(150), 1);
    EXPECT_EQ(ProgressDivisorFor(200), 1);
    EXPECT_EQ(ProgressDivisorFor(201), 2);
    EXPECT_EQ(ProgressDivisorFor(65536), 512);

}

}  // namespace
