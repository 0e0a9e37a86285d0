#!/usr/bin/env python3
"""Generates the glyph order files shipped in data/xlor.

Each file lists its cells row by row, one row per line. Printable characters
stand as themselves; spaces, invisible characters and combining marks are
written as <code>, the space as <sp/>, and positions without a character as
<null/>, so that every cell keeps its place in the grid.

Run from anywhere: python3 scripts/gen_xlor.py
"""
import os
import unicodedata

OUT_DIR = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "data", "xlor")


def cell(ch):
    if ch is None:
        return "<null/>"
    if ch == " ":
        return "<sp/>"
    if ch in "&<>":
        return {"&": "&amp;", "<": "&lt;", ">": "&gt;"}[ch]
    cat = unicodedata.category(ch)
    if cat[0] in "LNPS":
        return ch
    return "<code>0x%04X</code>" % ord(ch)


def write_order(name, title, comment, width, rows):
    lines = [
        '<?xml version="1.0" encoding="UTF-8"?>',
        '<letter-order version="1.0">',
        "  <head>",
        "    <title>%s</title>" % title,
        "    <comment>%s</comment>" % comment,
        "  </head>",
        "  <body>",
        '    <area width="%d"/>' % width,
        "    <order>",
    ]
    for row in rows:
        assert len(row) == width, (name, len(row))
        lines.append("      " + "".join(cell(ch) for ch in row))
    lines += ["    </order>", "  </body>", "</letter-order>", ""]
    with open(os.path.join(OUT_DIR, name), "w", encoding="utf-8", newline="\n") as f:
        f.write("\n".join(lines))


def chunk(chars, width):
    return [chars[i:i + width] for i in range(0, len(chars), width)]


def code_range(first, last, skip=()):
    """Characters first..last; unassigned ones and those in skip leave an empty cell."""
    out = []
    for c in range(first, last + 1):
        ch = chr(c)
        out.append(None if c in skip or unicodedata.category(ch) == "Cn" else ch)
    return out


def cp1252_cells():
    out = []
    for b in range(0x20, 0x100):
        try:
            ch = bytes([b]).decode("cp1252")
        except UnicodeDecodeError:
            ch = None
        if ch is not None and unicodedata.category(ch) == "Cc":
            ch = None
        out.append(ch)
    return out


def jis_rows():
    """Rows 1 to 94 of JIS X 0208 as code page 932 encodes them in Shift_JIS.

    Row k (ku) has lead byte 0x81 + (k - 1) // 2 (0xE0 onward after 0x9F);
    odd rows take the trail bytes 0x40..0x9E (skipping 0x7F), even rows
    0x9F..0xFC. A character that code page 932 also has at an earlier place
    keeps only that first cell.
    """
    seen = set()
    rows = []
    for ku in range(1, 95):
        lead = 0x81 + (ku - 1) // 2
        if lead > 0x9F:
            lead += 0x40
        if ku % 2:
            trails = [t for t in range(0x40, 0x9F) if t != 0x7F]
        else:
            trails = list(range(0x9F, 0xFD))
        row = []
        for t in trails:
            try:
                ch = bytes([lead, t]).decode("cp932")
            except UnicodeDecodeError:
                ch = None
            if ch is not None and (len(ch) != 1 or ord(ch) > 0xFFFF or ch in seen or 0xE000 <= ord(ch) <= 0xF8FF):
                ch = None
            if ch is not None:
                seen.add(ch)
            row.append(ch)
        rows.append(row)
    return rows


def main():
    os.makedirs(OUT_DIR, exist_ok=True)
    ascii_cells = code_range(0x20, 0x7F, skip={0x7F})
    write_order("ASCII.xlor", "ASCII",
                "U+0020-U+007E, 16 cells a row; a cell's column is the low hex digit of its code.",
                16, chunk(ascii_cells, 16))
    latin1 = ascii_cells + code_range(0xA0, 0xFF)
    write_order("Latin1.xlor", "Latin-1",
                "U+0020-U+007E and U+00A0-U+00FF, 16 cells a row; a cell's column is the low hex digit of its code.",
                16, chunk(latin1, 16))
    write_order("CP1252.xlor", "Windows code page 1252",
                "Every character of code page 1252 (bytes 0x20-0xFF) in byte order, 16 cells a row; "
                "bytes without a character are empty cells.",
                16, chunk(cp1252_cells(), 16))
    kana = code_range(0x3000, 0x30FF) + code_range(0xFF60, 0xFF9F, skip={0xFF60})
    write_order("Kana.xlor", "Japanese kana",
                "Japanese punctuation (U+3000-U+303F), hiragana (U+3040-U+309F), katakana (U+30A0-U+30FF) "
                "and half-width katakana (U+FF61-U+FF9F), 16 cells a row.",
                16, chunk(kana, 16))
    write_order("JIS-X-0208.xlor", "JIS X 0208 (Shift_JIS)",
                "Every double-byte character of code page 932 in rows 1 to 94 of JIS X 0208, in Shift_JIS order: "
                "one row of 94 cells per JIS row, so cell (x, y) holds the character of row y + 1, cell x + 1.",
                94, jis_rows())


if __name__ == "__main__":
    main()
