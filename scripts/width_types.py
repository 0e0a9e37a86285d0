#!/usr/bin/env python3
"""Stacks the previews of one word converted in each glyph width type, each
labelled with its --width word, into one picture for the README.

usage: width_types.py OUT.png glyph.png keep-space.png margin.png fixed.png
"""
import sys

from PIL import Image, ImageDraw, ImageFont

FONT = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"
LABELS = [
    ("glyph", "as wide as the ink; a space is nothing"),
    ("keep-space", "as wide as the ink; a space keeps its advance"),
    ("margin", "the font's own side bearings and advances"),
    ("fixed", "the ink centred in --fixed-width (here 12)"),
]


def main():
    out, previews = sys.argv[1], [Image.open(p).convert("RGB") for p in sys.argv[2:]]
    if len(previews) != len(LABELS):
        sys.exit("width_types: give the four previews in the order glyph, keep-space, margin, fixed")
    label_w, pad = 420, 12
    width = label_w + max(p.width for p in previews) + pad
    height = sum(p.height + pad for p in previews) + pad
    pic = Image.new("RGB", (width, height), "white")
    draw = ImageDraw.Draw(pic)
    bold = ImageFont.truetype(FONT.replace("Sans.ttf", "Sans-Bold.ttf"), 18)
    small = ImageFont.truetype(FONT, 14)
    y = pad
    for (word, text), preview in zip(LABELS, previews):
        draw.text((pad, y + 2), "--width " + word, fill="black", font=bold)
        draw.text((pad, y + 26), text, fill=(90, 90, 90), font=small)
        pic.paste(preview, (label_w, y))
        y += preview.height + pad
    pic.save(out)


main()
