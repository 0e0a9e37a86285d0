#include <gtest/gtest.h>

#include "core/font_filter.h"
#include "core/glyph_order.h"
#include "core/headless_pg_ctrl.h"
#include "xmlfiles/char_selection.h"
#include "xmlfiles/test_support.h"

namespace {

class CharSelectionTest : public testing::Test {
protected:
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
    std::string Error(const CharSelection& s) { return ErrorOf([&] { Load(s); }); }

    CHeadlessPgCtrl Pg;
    CPgCtrlScope PgScope{Pg};
    CTempDir Dir;
};

TEST_F(CharSelectionTest, UnionOfTextFilesRangesAndFilterFiles) {
    auto xllt = Dir.Write("f.xllt", "<letter-list version=\"1.0\"><body><letter>Z<code>0x3042</code></letter></body></letter-list>");
    // A byte-order mark and line ends are not characters; repeats count once.
    auto txt = Dir.Write("c.txt", "\xEF\xBB\xBF" "ba\r\nab\n\xE3\x81\x84");
    const struct {
        CharSelection Selection;
        std::u16string Codes;
    } cases[] = {
        {{true, xllt, {"Qa", "\xC3\xA9"}, {txt}, {{0x30, 0x32}, {0x3044, 0x3044}}}, u" 012QZab\u00E9\u3042\u3044"},
        // Each alone, always with the space.
        {{false, {}, {"A"}, {}, {}}, u" A"},
        {{false, {}, {}, {txt}, {}}, u" ab\u3044"},
        {{false, {}, {}, {}, {{0x41, 0x41}}}, u" A"},
        {{true, xllt, {}, {}, {}}, u" Z\u3042"},
        // The window's filter field takes a .txt file as characters.
        {{true, Dir.Write("w.TXT", "xy"), {}, {}, {}}, u" xy"},
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
    EXPECT_EQ(Pg.Warnings, (std::vector<std::string>{
        "A char ('\xF0\x9F\x98\x80': U+1F600) is above U+FFFF and is skipped; character codes are 16-bit.",
        "A char ('\xF0\xA0\xAE\xB7': U+20BB7) is above U+FFFF and is skipped; character codes are 16-bit.",
        "The range U+FFFE-U+10010 goes above U+FFFF; the codes above it are skipped, character codes are 16-bit."}));
}

TEST_F(CharSelectionTest, RefusedInputs) {
    const auto bad = Dir / "bad.txt", missing = Dir / "none.txt";
    // {bytes of a characters file, where the UTF-8 breaks}: a stray byte, an overlong '/', a surrogate half.
    for (auto [bytes, offset] : {std::pair{"ab\xFF", 2}, {"\xC0\xAF", 0}, {"x\xED\xA0\x80", 1}}) {
        Dir.Write("bad.txt", bytes);
        EXPECT_EQ(Error({false, {}, {}, {bad}, {}}), "Parameter Error:\n Characters file(" + bad.string() +
                                                         ") is not valid UTF-8 (at byte offset " +
                                                         std::to_string(offset) + ").");
    }
    EXPECT_EQ(Error({false, {}, {"ok\x80"}, {}, {}}),
              "Parameter Error:\n The characters text is not valid UTF-8 (at byte offset 2).");
    EXPECT_EQ(Error({false, {}, {}, {missing}, {}}),
              "Parameter Error:\n Characters file(" + missing.string() + ") does not exist.");
    EXPECT_EQ(Error({true, {}, {}, {}, {}}),
              "Parameter Error:\n \"Use Filter\" checked, but filter file path not specified.");
    const std::string wrong = Error({true, Dir.Write("v.xllt", "<letter-list version=\"2.0\"/>"), {}, {}, {}});
    EXPECT_EQ(wrong.rfind("XML Error:\n letter-list version mismatch", 0), 0u) << wrong;
}


// {width, height, codes, height given, loaded}
CGlyphOrder Order(int width, int height, std::vector<uint16_t> codes, bool loaded = true) {
    return CGlyphOrder{width, height, std::move(codes), false, loaded};
}

std::vector<uint16_t> Letters(const CFontFilter& filter) {
    std::vector<uint16_t> out;
    for (auto [code, included] : filter.Letters)
        if (included) out.push_back(code);
    return out;
}

}  // namespace

TEST(FontFilter, RestrictedToTheOrdersCells) {
    CFontFilter filter;
    EXPECT_FALSE(filter.IsExcluded('A'));
    filter.RestrictToOrder(CGlyphOrder{});  // unloaded order: nothing to take
    filter.RestrictToOrder(Order(2, 1, {NoCode, NoCode}));  // only empty cells
    EXPECT_TRUE(filter.PassAll);
    filter.RestrictToOrder(Order(2, 2, {'A', NoCode, 'C', 'A', 'D'}));  // 'D' lies outside the grid
    EXPECT_FALSE(filter.PassAll);
    EXPECT_EQ(Letters(filter), (std::vector<uint16_t>{'A', 'C'}));
    EXPECT_TRUE(filter.IsExcluded('D'));
    EXPECT_TRUE(filter.IsExcluded(NoCode));

    // A loaded filter keeps only what the order also has.
    CFontFilter loaded{false, {{'A', true}, {'B', true}, {' ', true}}};
    loaded.RestrictToOrder(Order(2, 1, {'A', 'C'}, false));  // not loaded: unchanged
    EXPECT_EQ(Letters(loaded), (std::vector<uint16_t>{' ', 'A', 'B'}));
    loaded.RestrictToOrder(Order(2, 2, {' ', 'A', 'C', NoCode}));
    EXPECT_EQ(Letters(loaded), (std::vector<uint16_t>{' ', 'A'}));
    EXPECT_EQ(loaded.Letters.size(), 2u);  // entries removed, not just cleared
    EXPECT_TRUE(loaded.IsExcluded('C'));
}
