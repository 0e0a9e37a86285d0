#include <gtest/gtest.h>

#include "core/codepage.h"
#include "core/utf8.h"

// Every reader of UTF-8 text shares one decoder: what the characters option
// refuses, the alternate character and the preview text never decode either.
TEST(Utf8, OneStrictDecoderForEveryReader) {
    EXPECT_EQ(Utf8ToUtf16("A\xC3\xA9\xE3\x81\x82"), u"A\u00E9\u3042");
    EXPECT_EQ(Utf8ToUtf16("\xF0\x9F\x98\x80"), u"\xD83D\xDE00");
    // Overlong forms, encoded surrogates, code points above U+10FFFF and cut
    // sequences: each byte that starts nothing valid is one U+FFFD.
    EXPECT_EQ(Utf8ToUtf16("\xC0\xAF"), u"\uFFFD\uFFFD");
    EXPECT_EQ(Utf8ToUtf16("\xE0\x80\xAF"), u"\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(Utf8ToUtf16("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(Utf8ToUtf16("\xF4\x90\x80\x80"), u"\uFFFD\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(Utf8ToUtf16("\xE3\x81"), u"\uFFFD\uFFFD");
    char32_t cp = 0;
    EXPECT_EQ(DecodeUtf8("\xF4\x8F\xBF\xBF", 0, cp), 4u);
    EXPECT_EQ(cp, 0x10FFFFu);
    EXPECT_EQ(DecodeUtf8("\xED\x9F\xBF", 0, cp), 3u);
    EXPECT_EQ(DecodeUtf8("\xED\xA0\x80", 0, cp), 0u);

    EXPECT_EQ(CodePointToUtf8(0x1F600), "\xF0\x9F\x98\x80");
    EXPECT_EQ(Utf16ToUtf8(u"\xD83D\xDE00\u3042"), "\xF0\x9F\x98\x80\xE3\x81\x82");
    // A lone surrogate keeps its three-byte form: nothing is lost.
    EXPECT_EQ(Utf16ToUtf8(u"\xD800"), "\xED\xA0\x80");
}

// The file code of a character in each encoding, both ways.
TEST(FileCodes, UnicodeToAndFromEachEncoding) {
    EXPECT_EQ(UnicodeToFileCode(EncodingUtf8, u'\u3042'), 0x3042);
    EXPECT_EQ(UnicodeToFileCode(EncodingUtf16, u'\u20AC'), 0x20AC);
    EXPECT_EQ(UnicodeToFileCode(EncodingShiftJis, u'\u3042'), 0x82A0);
    EXPECT_EQ(UnicodeToFileCode(EncodingCp1252, u'\u20AC'), 0x80);
    EXPECT_EQ(UnicodeToFileCode(EncodingCp1252, u'\u3042'), NoChar);
    EXPECT_EQ(FileCodeToUnicode(EncodingShiftJis, 0x82A0), u'\u3042');
    EXPECT_EQ(FileCodeToUnicode(EncodingCp1252, 0x80), u'\u20AC');
    EXPECT_EQ(FileCodeToUnicode(EncodingUtf8, 0xFFFE), u'\uFFFE');
    EXPECT_EQ(FileCodeToUnicode(EncodingShiftJis, 0x8220), NoChar);
}
