#!/usr/bin/env python3
"""Writes core/codepage_tables.cpp: code pages 932 and 1252 as Windows converts
them without best-fit mappings and with invalid sequences refused.

Python's cp932 and cp1252 codecs follow Windows' tables; where they do not,
the differences are filled in here:
  - cp1252: bytes 0x81, 0x8D, 0x8F, 0x90, 0x9D are C1 controls on Windows;
  - cp932: the user-defined area F040-F9FC is U+E000-U+E757 in order;
  - cp932: Python's encoder has a few best fits (U+00A2 to the code of U+FFE0);
    Windows refuses them under WC_NO_BEST_FIT_CHARS;
  - cp932 encoding of characters with several codes: Windows prefers JIS X 0208,
    then NEC row 13, then the IBM extensions (FA40-FC4B), and never writes the
    NEC-selected IBM extensions (ED40-EEFC); Python picks ED/EE there.

Usage: scripts/gen_codepages.py [output path]   (default core/codepage_tables.cpp)
"""
import os
import sys

NO_CHAR = 0xFFFF
LEADS_932 = list(range(0x81, 0xA0)) + list(range(0xE0, 0xFD))
TRAIL_FIRST, TRAIL_LAST = 0x40, 0xFC
WINDOWS_1252_C1 = (0x81, 0x8D, 0x8F, 0x90, 0x9D)


def decode(data, codec):
    try:
        text = data.decode(codec)
    except UnicodeDecodeError:
        return NO_CHAR
    return ord(text) if len(text) == 1 else NO_CHAR


def single_bytes(codec):
    return [decode(bytes([b]), codec) for b in range(256)]


def double_bytes_932():
    table = {}
    for lead in LEADS_932:
        for trail in range(TRAIL_FIRST, TRAIL_LAST + 1):
            table[lead * 256 + trail] = decode(bytes([lead, trail]), "cp932")
    pua = 0xE000
    for lead in range(0xF0, 0xFA):
        for trail in list(range(0x40, 0x7F)) + list(range(0x80, 0xFD)):
            table[lead * 256 + trail] = pua
            pua += 1
    assert pua == 0xE758
    return table


def encoder_rank_932(code):
    lead = code >> 8
    if lead == 0x87:
        return 1  # NEC row 13
    if 0xFA <= lead <= 0xFC:
        return 2  # IBM extensions
    if 0xED <= lead <= 0xEE:
        return 3  # NEC-selected IBM extensions
    return 0


def decode_only_932(single, double):
    """Codes whose character the encoder writes with another code."""
    by_char = {}
    for code, u in list(enumerate(single)) + sorted(double.items()):
        if u != NO_CHAR:
            by_char.setdefault(u, []).append(code)
    result = []
    for u, codes in by_char.items():
        if len(codes) < 2:
            continue
        chosen = min(codes, key=lambda c: (encoder_rank_932(c), c))
        python = int.from_bytes(chr(u).encode("cp932"), "big")
        assert python in codes
        assert python == chosen or encoder_rank_932(python) == 3, hex(u)
        result.extend(c for c in codes if c != chosen)
    return sorted(result)


def expected_encoding(single, double, decode_only):
    """Unicode to code as the generated inverse of the decoding tables."""
    result = {}
    for code, u in list(enumerate(single)) + sorted(double.items()):
        if u != NO_CHAR and code not in decode_only:
            result[u] = code
    return result


def check_against_python(codec, encoding):
    """Python's encoder must agree, apart from the duplicates resolved above."""
    for u in range(0x10000):
        if 0xD800 <= u <= 0xDFFF:
            continue
        try:
            data = chr(u).encode(codec)
            # A code that decodes to another character is a best fit: refused.
            python = int.from_bytes(data, "big") if data.decode(codec) == chr(u) else NO_CHAR
        except UnicodeError:
            python = NO_CHAR
        ours = encoding.get(u, NO_CHAR)
        if codec == "cp1252" and u in WINDOWS_1252_C1:
            assert ours == u
        elif python != ours:
            assert codec == "cp932" and encoder_rank_932(python) == 3, (codec, hex(u))


def c_array(name, values, comment, per_line=16):
    lines = [f"// {comment}", f"constexpr uint16_t {name}[{len(values)}] = {{"]
    for i in range(0, len(values), per_line):
        lines.append("    " + ", ".join(f"0x{v:04X}" for v in values[i:i + per_line]) + ",")
    lines.append("};")
    return "\n".join(lines)


FUNCTIONS = r"""
constexpr int TrailFirst = 0x40;
constexpr int TrailLast = 0xFC;
constexpr int TrailCount = TrailLast - TrailFirst + 1;

int Cp932Row(int lead) {
    if (lead >= 0x81 && lead <= 0x9F) return lead - 0x81;
    if (lead >= 0xE0 && lead <= 0xFC) return lead - 0xE0 + 0x1F;
    return -1;
}

char16_t Decode932(uint16_t c) {
    if (c < 256) return kCp932Single[c];
    const int row = Cp932Row(c >> 8);
    const int trail = c & 0xFF;
    if (row < 0 || trail < TrailFirst || trail > TrailLast) return NoChar;
    return kCp932Double[row * TrailCount + trail - TrailFirst];
}

char16_t Decode1252(uint16_t c) { return c < 256 ? kCp1252[c] : NoChar; }

// Unicode to code, built once from the decoding tables: Windows refuses any
// code that does not decode back to the same character, so the encoder is the
// inverse of the decoder, with the duplicates of 932 resolved Windows' way.
struct EncodeTables {
    uint16_t Cp932[0x10000];
    uint16_t Cp1252[0x10000];

    EncodeTables() {
        std::fill(std::begin(Cp932), std::end(Cp932), NoChar);
        std::fill(std::begin(Cp1252), std::end(Cp1252), NoChar);
        for (uint16_t b = 0; b < 256; ++b) {
            if (kCp1252[b] != NoChar) Cp1252[kCp1252[b]] = b;
            if (kCp932Single[b] != NoChar) Cp932[kCp932Single[b]] = b;
        }
        for (int lead = 0x81; lead <= 0xFC; ++lead) {
            if (Cp932Row(lead) < 0) continue;
            for (int trail = TrailFirst; trail <= TrailLast; ++trail) {
                const auto code = static_cast<uint16_t>(lead * 256 + trail);
                const char16_t u = Decode932(code);
                if (u == NoChar || std::binary_search(std::begin(kCp932DecodeOnly),
                                                      std::end(kCp932DecodeOnly), code))
                    continue;
                Cp932[u] = code;
            }
        }
    }
};

const EncodeTables& Encoders() {
    static const auto tables = std::make_unique<EncodeTables>();
    return *tables;
}

} // namespace

uint16_t UnicodeToCodePage(int codePage, char16_t c) {
    switch (codePage) {
    case 932: return Encoders().Cp932[c];
    case 1252: return Encoders().Cp1252[c];
    default: return NoChar;
    }
}

char16_t CodePageToUnicode(int codePage, uint16_t c) {
    switch (codePage) {
    case 932: return Decode932(c);
    case 1252: return Decode1252(c);
    default: return NoChar;
    }
}
"""


def main():
    root = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    out_path = sys.argv[1] if len(sys.argv) > 1 else os.path.join(root, "core", "codepage_tables.cpp")

    single_932 = single_bytes("cp932")
    double_932 = double_bytes_932()
    cp1252 = single_bytes("cp1252")
    for b in WINDOWS_1252_C1:
        assert cp1252[b] == NO_CHAR
        cp1252[b] = b
    decode_only = decode_only_932(single_932, double_932)
    check_against_python("cp932", expected_encoding(single_932, double_932, set(decode_only)))
    check_against_python("cp1252", expected_encoding(cp1252, {}, set()))

    double_rows = [double_932[lead * 256 + t] for lead in LEADS_932
                   for t in range(TRAIL_FIRST, TRAIL_LAST + 1)]
    parts = [
        "// Generated by scripts/gen_codepages.py from Python's cp932 and cp1252 codecs,",
        "// with Windows' additions; do not edit by hand.",
        '#include "core/codepage.h"',
        "",
        "#include <algorithm>",
        "#include <iterator>",
        "#include <memory>",
        "",
        "namespace {",
        "",
        c_array("kCp932Single", single_932, "Code page 932, single bytes; lead bytes alone are 0xFFFF."),
        "",
        c_array("kCp932Double", double_rows,
                "Code page 932, lead bytes 81-9F and E0-FC, trail bytes 40-FC of each (0xFFFF: none)."),
        "",
        c_array("kCp932DecodeOnly", decode_only,
                "Codes of 932 that decode to a character Windows encodes with another code."),
        "",
        c_array("kCp1252", cp1252, "Code page 1252, every byte."),
        FUNCTIONS,
    ]
    with open(out_path, "w", encoding="ascii", newline="\n") as f:
        f.write("\n".join(parts))


if __name__ == "__main__":
    main()
