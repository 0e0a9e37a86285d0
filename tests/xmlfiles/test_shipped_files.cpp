// The shipped glyph orders and filters checked cell by cell and letter by
// letter against what their titles promise: code ranges, and for the code page
// files the C library's converter for Windows' code pages.
#include <gtest/gtest.h>
#include <iconv.h>

#include <set>
#include <string>
#include <vector>

#include "core/font_filter.h"
#include "core/glyph_order.h"
#include "xmlfiles/char_selection.h"
#include "xmlfiles/glyph_order_handler.h"

namespace {

const std::string DataDir = std::string(GLYPHWRIGHT_TEST_DATA) + "/../data/";

std::vector<uint16_t> Range(uint16_t first, uint16_t last) {
    std::vector<uint16_t> v;
    for (uint32_t c = first; c <= last; ++c) v.push_back(static_cast<uint16_t>(c));
    return v;
}
std::vector<uint16_t>& operator+=(std::vector<uint16_t>& a, const std::vector<uint16_t>& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}
// Pads with empty cells to the end of the row.
void EndRow(std::vector<uint16_t>& cells, int width) {
    while (cells.size() % width) cells.push_back(NoCode);
}

// The character of one or two code page bytes, or NoCode.
uint16_t Decode(const char* codePage, const std::string& bytes) {
    iconv_t cd = iconv_open("UTF-16LE", codePage);
    if (cd == reinterpret_cast<iconv_t>(-1)) return NoCode;
    std::string in = bytes;
    char out[8];
    char *ip = in.data(), *op = out;
    size_t il = in.size(), ol = sizeof out;
    bool ok = iconv(cd, &ip, &il, &op, &ol) != static_cast<size_t>(-1) && il == 0 && op - out == 2;
    iconv_close(cd);
    return ok ? static_cast<uint16_t>(uint8_t(out[0]) | uint8_t(out[1]) << 8) : NoCode;
}

// The Shift_JIS bytes of JIS X 0208 row and cell (both from 1).
std::string ShiftJis(int row, int cell) {
    int lead = (row + 1) / 2 + (row <= 62 ? 0x80 : 0xC0);
    int trail = row % 2 ? cell + 0x3F + (cell >= 64 ? 1 : 0) : cell + 0x9E;
    return {static_cast<char>(lead), static_cast<char>(trail)};
}

std::vector<uint16_t> JisRows(int first, int last) {
    std::vector<uint16_t> cells;
    for (int row = first; row <= last; ++row)
        for (int cell = 1; cell <= 94; ++cell) cells.push_back(Decode("WINDOWS-31J", ShiftJis(row, cell)));
    return cells;
}

// A character has one cell: where code page 932 has it twice (NEC row 13, the
// IBM extensions), the later code's cell is empty.
std::vector<uint16_t> FirstOnly(std::vector<uint16_t> cells) {
    std::set<uint16_t> seen;
    for (uint16_t& c : cells)
        if (c != NoCode && !seen.insert(c).second) c = NoCode;
    return cells;
}

TEST(ShippedFiles, OrdersHoldExactlyTheCellsTheyPromise) {
    std::vector<uint16_t> ascii = Range(0x20, 0x7E);
    EndRow(ascii, 16);
    std::vector<uint16_t> latin1 = ascii;
    latin1 += Range(0xA0, 0xFF);
    // Bytes that are controls (DEL) or unassigned are empty cells.
    std::vector<uint16_t> cp1252;
    for (int b = 0x20; b <= 0xFF; ++b)
        cp1252.push_back(b == 0x7F ? NoCode : Decode("CP1252", std::string(1, static_cast<char>(b))));
    // A cell's column is the low hex digit of its code; unassigned codes are empty.
    std::vector<uint16_t> kana = Range(0x3000, 0x30FF);
    kana += Range(0xFF60, 0xFF9F);
    for (uint16_t& c : kana)
        if (c == 0x3040 || c == 0x3097 || c == 0x3098 || c == 0xFF60) c = NoCode;
    const struct {
        const char* File;
        int Width;
        std::vector<uint16_t> Cells;
    } orders[] = {{"ASCII", 16, ascii}, {"Latin1", 16, latin1}, {"CP1252", 16, cp1252},
                  {"Kana", 16, kana}, {"JIS-X-0208", 94, FirstOnly(JisRows(1, 94))}};
    for (const auto& o : orders) {
        CGlyphOrder order;
        LoadGlyphOrderFile(order, DataDir + "xlor/" + o.File + ".xlor");
        EXPECT_EQ(order.Width, o.Width) << o.File;
        ASSERT_EQ(order.Codes.size(), o.Cells.size()) << o.File;
        int wrong = 0;
        for (std::size_t i = 0; i < o.Cells.size() && wrong < 10; ++i) {
            if (order.Codes[i] != o.Cells[i]) {
                ++wrong;
                ADD_FAILURE() << o.File << " cell " << i << ": U+" << std::hex << order.Codes[i] << ", expected U+"
                              << o.Cells[i];
            }
        }
    }
}

TEST(ShippedFiles, FiltersHoldExactlyTheLettersTheyPromise) {
    std::vector<uint16_t> ascii = Range(0x20, 0x7E);
    std::vector<uint16_t> kana = Range(0x3000, 0x30FF);
    kana += Range(0xFF61, 0xFF9F);
    for (uint16_t& c : kana)
        if (c == 0x3040 || c == 0x3097 || c == 0x3098) c = NoCode;  // unassigned
    // ASCII, the non-kanji rows 1 to 8 and the level 1 kanji (rows 16 to 47; row 47 ends at cell 51).
    std::vector<uint16_t> level1 = ascii;
    level1 += JisRows(1, 8);
    level1 += JisRows(16, 47);
    // Six characters of rows 1 and 2 in their JIS forms too, besides Windows' forms.
    level1 += {0xA2, 0xA3, 0xAC, 0x2016, 0x2212, 0x301C};
    const struct {
        const char* File;
        std::vector<uint16_t> Letters;
    } filters[] = {{"ASCII", ascii}, {"Kana", kana}, {"JIS-X-0208-Level1", level1}};
    for (const auto& f : filters) {
        std::set<uint16_t> want(f.Letters.begin(), f.Letters.end());
        want.erase(NoCode);
        want.insert(0x20);  // a loaded filter always holds the space
        CFontFilter filter;
        LoadFilterFile(filter, DataDir + "filters/" + f.File + ".xllt");
        std::set<uint16_t> got;
        for (const auto& [code, in] : filter.Letters)
            if (in) got.insert(code);
        std::vector<uint16_t> missing, extra;
        for (uint16_t c : want)
            if (!got.count(c)) missing.push_back(c);
        for (uint16_t c : got)
            if (!want.count(c)) extra.push_back(c);
        EXPECT_TRUE(missing.empty()) << f.File << ": " << missing.size() << " missing, the first U+" << std::hex
                                     << (missing.empty() ? 0 : missing[0]);
        EXPECT_TRUE(extra.empty()) << f.File << ": " << extra.size() << " extra, the first U+" << std::hex
                                   << (extra.empty() ? 0 : extra[0]);
    }
    // The level 1 filter's promise in numbers: 2965 kanji.
    std::vector<uint16_t> kanji = JisRows(16, 47);
    EXPECT_EQ(kanji.size() - std::count(kanji.begin(), kanji.end(), NoCode), 2965u);
}

}  // namespace
