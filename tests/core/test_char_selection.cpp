#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "core/char_selection.h"
#include "core/font_filter.h"
#include "core/general_exception.h"
#include "core/headless_pg_ctrl.h"

namespace {

// The run's progress interface for one test, and a scratch folder.
class CharSelectionTest : public testing::Test {
protected:
    void SetUp() override {
        Saved = g_pPgCtrl;
        g_pPgCtrl = &Pg;
        // ctest runs the tests of this file side by side: one folder each.
        Dir = std::filesystem::path(testing::TempDir()) /
              ("glyphwright_char_selection_" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
        std::filesystem::create_directories(Dir);
    }
    void TearDown() override {
        g_pPgCtrl = Saved;
        std::filesystem::remove_all(Dir);
    }
    std::filesystem::path File(const std::string& name, const std::string& bytes) {
        std::ofstream(Dir / name, std::ios::binary) << bytes;
        return Dir / name;
    }
    // The included codes of a filter built from the selection.
    std::u16string Load(const CharSelection& selection) {
        CFontFilter filter;
        LoadCharSelection(filter, selection);
        EXPECT_FALSE(filter.PassAll);
        std::u16string codes;
        for (const auto& [code, included] : filter.Letters)
            if (included) codes += static_cast<char16_t>(code);
        return codes;
    }
    std::string ErrorOf(const CharSelection& selection) {
        try {
            Load(selection);
        } catch (const CGeneralException& e) {
            return e.Message;
        }
        return "";
    }

    CHeadlessPgCtrl Pg;
    CPgCtrl* Saved = nullptr;
    std::filesystem::path Dir;
};

TEST_F(CharSelectionTest, UnionOfTextFilesRangesAndFilterFiles) {
    auto xllt = File("f.xllt", "<letter-list version=\"1.0\"><body><letter>Z<code>0x3042</code></letter></body></letter-list>");
    // A byte-order mark and line ends are not characters; repeats count once.
    auto txt = File("c.txt", "\xEF\xBB\xBF" "ba\r\nab\n\xE3\x81\x84");
    CharSelection all;
    all.UseFilterFile = true;
    all.FilterFile = xllt;
    all.Texts = {"Qa", "\xC3\xA9"};
    all.TextFiles = {txt};
    all.Ranges = {{0x30, 0x32}, {0x3044, 0x3044}};
    EXPECT_EQ(Load(all), u" 012QZab\u00E9\u3042\u3044");

    // Each alone, always with the space.
    struct Case {
        CharSelection Selection;
        std::u16string Codes;
    } cases[] = {
        {{false, {}, {"A"}, {}, {}}, u" A"},
        {{false, {}, {}, {txt}, {}}, u" ab\u3044"},
        {{false, {}, {}, {}, {{0x41, 0x41}}}, u" A"},
        {{true, xllt, {}, {}, {}}, u" Z\u3042"},
        // The window's filter field takes a .txt file as characters.
        {{true, File("w.TXT", "xy"), {}, {}, {}}, u" xy"},
        // Surrogate codes and the no-character code never become characters.
        {{false, {}, {}, {}, {{0xD7FF, 0xE000}, {0xFFFE, 0xFFFF}}}, u" \uD7FF\uE000\uFFFE"},
    };
    for (const auto& c : cases) EXPECT_EQ(Load(c.Selection), c.Codes);
    EXPECT_TRUE(Pg.Warnings.empty());
}

TEST_F(CharSelectionTest, CharactersAboveFfffAreSkippedWithOneWarningEach) {
    CharSelection s;
    // U+1F600 twice and U+20BB7 once: never their surrogate halves.
    s.Texts = {"A\xF0\x9F\x98\x80" "B\xF0\x9F\x98\x80", "\xF0\xA0\xAE\xB7"};
    s.Ranges = {{0xFFFE, 0x10010}};
    EXPECT_EQ(Load(s), u" AB\uFFFE");
    ASSERT_EQ(Pg.Warnings.size(), 3u);
    EXPECT_EQ(Pg.Warnings[0], "A char ('\xF0\x9F\x98\x80': U+1F600) is above U+FFFF and is skipped; character codes are 16-bit.");
    EXPECT_EQ(Pg.Warnings[1], "A char ('\xF0\xA0\xAE\xB7': U+20BB7) is above U+FFFF and is skipped; character codes are 16-bit.");
    EXPECT_EQ(Pg.Warnings[2],
              "The range U+FFFE-U+10010 goes above U+FFFF; the codes above it are skipped, character codes are 16-bit.");
}

TEST_F(CharSelectionTest, RefusedInputs) {
    const auto missing = Dir / "none.txt";
    struct Case {
        std::string Bytes;  // of a characters file
        std::string Message;
    } cases[] = {
        {"ab\xFF", "at byte offset 2"},
        {"\xC0\xAF", "at byte offset 0"},                     // overlong '/'
        {"x\xED\xA0\x80", "at byte offset 1"},                // a surrogate half
    };
    for (const auto& c : cases) {
        CharSelection s;
        s.TextFiles = {File("bad.txt", c.Bytes)};
        EXPECT_EQ(ErrorOf(s), "Parameter Error:\n Characters file(" + (Dir / "bad.txt").string() +
                                  ") is not valid UTF-8 (" + c.Message + ").");
    }
    CharSelection s;
    s.Texts = {"ok\x80"};
    EXPECT_EQ(ErrorOf(s), "Parameter Error:\n The characters text is not valid UTF-8 (at byte offset 2).");
    s = {};
    s.TextFiles = {missing};
    EXPECT_EQ(ErrorOf(s), "Parameter Error:\n Characters file(" + missing.string() + ") does not exist.");
    s = {};
    s.UseFilterFile = true;
    EXPECT_EQ(ErrorOf(s), "Parameter Error:\n \"Use Filter\" checked, but filter file path not specified.");
    s.FilterFile = File("bad.xllt", "<letter-list version=\"2.0\"/>");
    EXPECT_EQ(ErrorOf(s).rfind("XML Error:\n letter-list version mismatch", 0), 0u) << ErrorOf(s);
}

}  // namespace
