#include <gtest/gtest.h>

#include <filesystem>

#include "core/general_exception.h"
#include "core/pg_ctrl.h"

TEST(FormatString, ConversionsAndTheCutAt1023Characters) {
    EXPECT_EQ(FormatString("%s|%s", "x", std::filesystem::path("/tmp/f.xlor")), "x|/tmp/f.xlor");
    EXPECT_EQ(FormatString("(%d,%d)", -3, 12), "(-3,12)");
    EXPECT_EQ(FormatString("'%c': U+%04X", u'\u3042', 0x3042), "'\u3042': U+3042");
    EXPECT_EQ(FormatString("100%% %d", 5), "100% 5");
    // A '%' inside an argument is shown as it stands.
    EXPECT_EQ(FormatString("(%s).", std::string("50%d%s.bmp")), "(50%d%s.bmp).");

    EXPECT_EQ(FormatString("%s", std::string(2000, 'x')).size(), 1023u);
    const std::string exact(1023, 'y');
    EXPECT_EQ(FormatString("%s", exact), exact);
    std::string kana;
    for (int i = 0; i < 1500; ++i) kana += "\u3042";
    EXPECT_EQ(FormatString("a%s", kana), "a" + kana.substr(0, 1022 * 3));  // never inside a character
}

TEST(SteppedPgCtrl, DivisorEdges) {
    for (auto [n, divisor] : {std::pair{150, 1}, {200, 1}, {201, 2}, {65536, 512}}) EXPECT_EQ(ProgressDivisorFor(n), divisor);
}
