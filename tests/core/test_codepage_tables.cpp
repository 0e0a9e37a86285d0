// Both code pages checked whole, every byte sequence and every BMP character,
// against the C library's converter for Windows' code pages. The few places
// where that converter is not what Windows does are listed here by hand.
#include "core/codepage.h"

#include <gtest/gtest.h>
#include <iconv.h>

#include <map>

namespace {

class Converter {
public:
    Converter(const char* to, const char* from) : Cd(iconv_open(to, from)) {}
    ~Converter() {
        if (Cd != reinterpret_cast<iconv_t>(-1)) iconv_close(Cd);
    }
    bool Ok() const { return Cd != reinterpret_cast<iconv_t>(-1); }
    // The output bytes for exactly these input bytes, or empty when they are refused.
    std::string Run(const std::string& in) {
        iconv(Cd, nullptr, nullptr, nullptr, nullptr);
        std::string bytes = in;
        char out[16];
        char* ip = bytes.data();
        char* op = out;
        size_t il = bytes.size(), ol = sizeof out;
        if (iconv(Cd, &ip, &il, &op, &ol) == static_cast<size_t>(-1) || il != 0) return {};
        return std::string(out, op);
    }

private:
    iconv_t Cd;
};

std::string CodeBytes(uint16_t code) {
    if (code < 256) return std::string(1, static_cast<char>(code));
    return {static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)};
}

char16_t LibDecode(Converter& c, uint16_t code) {
    std::string u = c.Run(CodeBytes(code));
    return u.size() == 2 ? static_cast<char16_t>(uint8_t(u[0]) | uint8_t(u[1]) << 8) : NoChar;
}

uint16_t LibEncode(Converter& c, char16_t ch) {
    std::string b = c.Run(std::string{static_cast<char>(ch & 0xFF), static_cast<char>(ch >> 8)});
    if (b.size() == 1) return uint8_t(b[0]);
    if (b.size() == 2) return uint8_t(b[0]) * 256 + uint8_t(b[1]);
    return NoChar;
}

struct Table {
    int CodePage;
    const char* Name;
    uint16_t LastCode;
    // Where Windows differs from the C library: code -> character, character -> code.
    std::map<uint16_t, char16_t> Decodes;
    std::map<char16_t, uint16_t> Encodes;
};

TEST(CodePageTables, EveryCodeAndCharacterAsWindowsConvertsThem) {
    const Table tables[] = {
        {1252, "CP1252", 0xFF,
         // Windows keeps the five unassigned bytes as C1 controls.
         {{0x81, 0x81}, {0x8D, 0x8D}, {0x8F, 0x8F}, {0x90, 0x90}, {0x9D, 0x9D}},
         {{0x81, 0x81}, {0x8D, 0x8D}, {0x8F, 0x8F}, {0x90, 0x90}, {0x9D, 0x9D}}},
        {932, "WINDOWS-31J", 0xFFFF,
         // Windows: byte 0x80 is a control, 0xA0 and 0xFD-0xFF private-use characters.
         {{0x80, 0x80}, {0xA0, 0xF8F0}, {0xFD, 0xF8F1}, {0xFE, 0xF8F2}, {0xFF, 0xF8F3}},
         // ... and it refuses the C library's best fits (yen, cent, pound, not sign,
         // dashes, overline, minus, wave dash).
         {{0x80, 0x80}, {0xF8F0, 0xA0}, {0xF8F1, 0xFD}, {0xF8F2, 0xFE}, {0xF8F3, 0xFF},
          {0xA2, NoChar}, {0xA3, NoChar}, {0xA5, NoChar}, {0xAC, NoChar}, {0x2014, NoChar},
          {0x2016, NoChar}, {0x203E, NoChar}, {0x2212, NoChar}, {0x301C, NoChar}}},
    };
    for (const Table& t : tables) {
        Converter decoder("UTF-16LE", t.Name), encoder(t.Name, "UTF-16LE");
        if (!decoder.Ok() || !encoder.Ok()) GTEST_SKIP() << "the C library has no " << t.Name;
        int differences = 0;
        for (uint32_t code = 0; code <= t.LastCode && differences < 20; ++code) {
            auto listed = t.Decodes.find(static_cast<uint16_t>(code));
            char16_t want = listed != t.Decodes.end() ? listed->second : LibDecode(decoder, static_cast<uint16_t>(code));
            char16_t got = CodePageToUnicode(t.CodePage, static_cast<uint16_t>(code));
            if (got != want) {
                ++differences;
                ADD_FAILURE() << t.CodePage << ": code 0x" << std::hex << code << " gives U+" << int(got)
                              << ", expected U+" << int(want);
            }
        }
        for (uint32_t ch = 0; ch < 0xFFFF && differences < 20; ++ch) {
            if (ch >= 0xD800 && ch < 0xE000) continue;
            auto listed = t.Encodes.find(static_cast<char16_t>(ch));
            uint16_t want = listed != t.Encodes.end() ? listed->second : LibEncode(encoder, static_cast<char16_t>(ch));
            uint16_t got = UnicodeToCodePage(t.CodePage, static_cast<char16_t>(ch));
            if (got != want) {
                ++differences;
                ADD_FAILURE() << t.CodePage << ": U+" << std::hex << ch << " gives 0x" << got << ", expected 0x" << want;
            }
        }
    }
}

}  // namespace
