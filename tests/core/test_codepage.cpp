#include "core/codepage.h"

#include <gtest/gtest.h>

namespace {

// Encoding one way: {code page, character, expected code} (NoChar: refused).
struct Encode { int Cp; char16_t U; uint16_t Code; };
// Decoding the other way: {code page, code, expected character}.
struct Decode { int Cp; uint16_t Code; char16_t U; };

TEST(CodePage, EncodesAndDecodesWithoutBestFits) {
    const Encode encodes[] = {
        {932, u'\u3042', 0x82A0}, {932, u'A', 0x41}, {932, u'\uFF71', 0xB1}, {1252, u'\u20AC', 0x80},
        {1252, u'\u00E9', 0xE9}, {1252, u'\u3042', NoChar}, {437, u'A', NoChar},  // no table for 437
        // Refused best fits: not plain 'a', not the euro byte, not the backslash
        // byte, not the fullwidth cent or tilde.
        {1252, u'\u0101', NoChar}, {1252, u'\u0080', NoChar}, {932, u'\u00A5', NoChar}, {932, u'\u00A2', NoChar},
        {932, u'\u301C', NoChar}, {932, u'\uFF5E', 0x8160},
        {932, u'\uFFFF', NoChar}, {932, 0xD800, NoChar}, {1252, 0xDFFF, NoChar}, {1252, u'\uFFFF', NoChar},
        // Duplicates: JIS X 0208 before NEC row 13 before IBM extensions before NEC-selected IBM.
        {932, u'\u2252', 0x81E0}, {932, u'\uFFE2', 0x81CA}, {932, u'\u2160', 0x8754}, {932, u'\u2170', 0xFA40},
        {932, u'\u7E8A', 0xFA5C}};
    for (const Encode& e : encodes)
        EXPECT_EQ(UnicodeToCodePage(e.Cp, e.U), e.Code) << e.Cp << " U+" << std::hex << int(e.U);
    const Decode decodes[] = {
        {932, 0x82A0, u'\u3042'}, {932, 0x889F, u'\u4E9C'}, {932, 0x5C, u'\\'}, {1252, 0x80, u'\u20AC'},
        {1252, 0x41, u'A'}, {-1, 0x41, NoChar},
        // Lone lead bytes, two characters, bad trail bytes, an empty row.
        {932, 0x82, NoChar}, {932, 0xFC, NoChar}, {932, 0x4141, NoChar}, {932, 0xA1A1, NoChar}, {932, 0x827F, NoChar},
        {932, 0x8220, NoChar}, {932, 0x82FD, NoChar}, {932, 0x8540, NoChar}, {1252, 0x100, NoChar},
        {1252, 0x8080, NoChar},
        {932, 0x8790, u'\u2252'}, {932, 0xEEF9, u'\uFFE2'}, {932, 0xFA54, u'\uFFE2'}, {932, 0xFA4A, u'\u2160'},
        {932, 0xEEEF, u'\u2170'}, {932, 0xED40, u'\u7E8A'}};
    for (const Decode& d : decodes)
        EXPECT_EQ(CodePageToUnicode(d.Cp, d.Code), d.U) << d.Cp << " 0x" << std::hex << d.Code;
}

TEST(CodePage, WindowsOnlyMappings) {
    // Single bytes of 932 that Windows maps to controls and private use.
    const std::pair<uint16_t, char16_t> singles932[] = {
        {0x80, u'\u0080'}, {0xA0, u'\uF8F0'}, {0xFD, u'\uF8F1'}, {0xFE, u'\uF8F2'}, {0xFF, u'\uF8F3'},
        // The user-defined area, row by row, skipping trail byte 0x7F.
        {0xF040, u'\uE000'}, {0xF07E, u'\uE03E'}, {0xF080, u'\uE03F'}, {0xF0FC, u'\uE0BB'},
        {0xF140, u'\uE0BC'}, {0xF9FC, u'\uE757'}};
    for (auto [code, u] : singles932) {
        EXPECT_EQ(CodePageToUnicode(932, code), u) << code;
        EXPECT_EQ(UnicodeToCodePage(932, u), code) << code;
    }
    EXPECT_EQ(UnicodeToCodePage(932, u'\uE758'), NoChar);
    for (uint16_t b : {0x81, 0x8D, 0x8F, 0x90, 0x9D}) {
        EXPECT_EQ(CodePageToUnicode(1252, b), b);
        EXPECT_EQ(UnicodeToCodePage(1252, static_cast<char16_t>(b)), b);
    }
}

bool IsDuplicateRow932(uint16_t code) {
    const int lead = code >> 8;
    return lead == 0x87 || lead == 0xED || lead == 0xEE || (lead >= 0xFA && lead <= 0xFC);
}

TEST(CodePage, RoundTripsOverAllInputs) {
    for (int cp : {932, 1252}) {
        int decodable = 0, duplicates = 0;
        for (uint32_t c = 0; c <= 0xFFFF; ++c) {
            const char16_t u = CodePageToUnicode(cp, static_cast<uint16_t>(c));
            if (u == NoChar) continue;
            ++decodable;
            const uint16_t back = UnicodeToCodePage(cp, u);
            if (back == c) continue;
            ++duplicates;
            ASSERT_TRUE(cp == 932 && IsDuplicateRow932(static_cast<uint16_t>(c))) << cp << " " << c;
            ASSERT_EQ(CodePageToUnicode(cp, back), u) << c;
        }
        // Every encodable character decodes to itself: no best fits.
        for (uint32_t u = 0; u <= 0xFFFF; ++u) {
            const uint16_t code = UnicodeToCodePage(cp, static_cast<char16_t>(u));
            if (code != NoChar) {
                ASSERT_EQ(CodePageToUnicode(cp, code), u) << cp << " " << u;
            }
        }
        if (cp == 1252) {
            EXPECT_EQ(decodable, 256);
            EXPECT_EQ(duplicates, 0);
        } else {
            EXPECT_EQ(duplicates, 398);
        }
    }
}

} // namespace
