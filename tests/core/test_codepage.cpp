#include "core/codepage.h"

#include <gtest/gtest.h>

namespace {

// {code page, character, code}, one way or both ways (NoChar: none).
struct Mapping { int Cp; char16_t U; uint16_t Code; };

TEST(CodePage, EncodesAndDecodesWithoutBestFits) {
    const Mapping encodes[] = {
        {932, u'\uFF71', 0xB1}, {1252, u'\u3042', NoChar}, {437, u'A', NoChar},  // no table for 437
        // Refused best fits: not plain 'a', not the euro byte, not the backslash
        // byte, not the fullwidth cent or tilde.
        {1252, u'\u0101', NoChar}, {1252, u'\u0080', NoChar}, {932, u'\u00A5', NoChar}, {932, u'\u00A2', NoChar},
        {932, u'\u301C', NoChar}, {932, u'\uFF5E', 0x8160}, {932, u'\uE758', NoChar},
        {932, u'\uFFFF', NoChar}, {932, 0xD800, NoChar}, {1252, 0xDFFF, NoChar}, {1252, u'\uFFFF', NoChar},
        // Duplicates: JIS X 0208 before NEC row 13 before IBM extensions before NEC-selected IBM.
        {932, u'\u2252', 0x81E0}, {932, u'\uFFE2', 0x81CA}, {932, u'\u2160', 0x8754}, {932, u'\u2170', 0xFA40},
        {932, u'\u7E8A', 0xFA5C}};
    for (const Mapping& e : encodes) EXPECT_EQ(UnicodeToCodePage(e.Cp, e.U), e.Code) << e.Cp << " U+" << std::hex << int(e.U);
    const Mapping decodes[] = {
        {932, u'\u4E9C', 0x889F}, {932, u'\\', 0x5C}, {-1, NoChar, 0x41},
        // Lone lead bytes, two characters, bad trail bytes, an empty row.
        {932, NoChar, 0x82}, {932, NoChar, 0xFC}, {932, NoChar, 0x4141}, {932, NoChar, 0xA1A1}, {932, NoChar, 0x827F},
        {932, NoChar, 0x8220}, {932, NoChar, 0x82FD}, {932, NoChar, 0x8540}, {1252, NoChar, 0x100},
        {1252, NoChar, 0x8080}, {932, u'\u2252', 0x8790}, {932, u'\uFFE2', 0xEEF9}, {932, u'\uFFE2', 0xFA54},
        {932, u'\u2160', 0xFA4A}, {932, u'\u2170', 0xEEEF}, {932, u'\u7E8A', 0xED40}};
    for (const Mapping& d : decodes) EXPECT_EQ(CodePageToUnicode(d.Cp, d.Code), d.U) << d.Cp << " 0x" << std::hex << d.Code;
    const Mapping both[] = {
        {932, u'\u3042', 0x82A0}, {932, u'A', 0x41}, {1252, u'\u20AC', 0x80}, {1252, u'\u00E9', 0xE9},
        // Windows' own: 932 single bytes as controls and private use, the user-defined
        // area row by row (skipping trail byte 0x7F), 1252's unassigned bytes as controls.
        {932, u'\u0080', 0x80}, {932, u'\uF8F0', 0xA0}, {932, u'\uF8F1', 0xFD}, {932, u'\uF8F3', 0xFF},
        {932, u'\uE000', 0xF040}, {932, u'\uE03E', 0xF07E}, {932, u'\uE03F', 0xF080}, {932, u'\uE0BB', 0xF0FC},
        {932, u'\uE0BC', 0xF140}, {932, u'\uE757', 0xF9FC}, {1252, u'\u0081', 0x81}, {1252, u'\u008D', 0x8D},
        {1252, u'\u008F', 0x8F}, {1252, u'\u0090', 0x90}, {1252, u'\u009D', 0x9D}};
    for (const Mapping& b : both) {
        EXPECT_EQ(CodePageToUnicode(b.Cp, b.Code), b.U) << b.Cp << " 0x" << std::hex << b.Code;
        EXPECT_EQ(UnicodeToCodePage(b.Cp, b.U), b.Code) << b.Cp << " 0x" << std::hex << b.Code;
    }
}

}  // namespace
