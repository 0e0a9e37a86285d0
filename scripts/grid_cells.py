#!/usr/bin/env python3
"""Draws the first cells of a horizontal glyph-grid BMP zoomed, with every
pixel's palette index and the parts of a cell outlined and named, for the
README's explanation of the grid.

usage: grid_cells.py GRID.bmp COLUMNS ROWS CELLS OUT.png
"""
import sys

from PIL import Image, ImageDraw, ImageFont

ZOOM = 26
FONT = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"


def main():
    path, columns, rows, cells, out = sys.argv[1], int(sys.argv[2]), int(sys.argv[3]), int(sys.argv[4]), sys.argv[5]
    grid = Image.open(path)
    if grid.mode != "P":
        sys.exit("grid_cells: %s is not a palette picture" % path)
    pitch_x, pitch_y = grid.width // columns, grid.height // rows
    area_h = pitch_y - 6
    palette = grid.getpalette()
    white = next(i for i in range(256) if palette[3 * i:3 * i + 3] == [255, 255, 255])
    border = [grid.getpixel((0, y)) for y in range(2, area_h + 2)]
    odd = [i for i, p in enumerate(border) if (p == white) != (border.count(white) > len(border) // 2)]
    baseline = odd[0] if odd else area_h

    width = pitch_x * cells
    legend_w = 560
    pic = Image.new("RGB", (width * ZOOM + legend_w, pitch_y * ZOOM + 2 * ZOOM), "white")
    draw = ImageDraw.Draw(pic)
    small = ImageFont.truetype(FONT, ZOOM * 9 // 20)
    label = ImageFont.truetype(FONT, 19)
    top = ZOOM
    for y in range(pitch_y):
        for x in range(width):
            index = grid.getpixel((x, y))
            rgb = tuple(palette[3 * index:3 * index + 3])
            box = (x * ZOOM, top + y * ZOOM, (x + 1) * ZOOM - 1, top + (y + 1) * ZOOM - 1)
            draw.rectangle(box, fill=rgb, outline=(220, 220, 220))
            ink = "white" if sum(rgb) < 384 else "black"
            draw.text((box[0] + ZOOM // 2, box[1] + ZOOM // 2), str(index), fill=ink, font=small, anchor="mm")

    def outline(x0, y0, x1, y1, color, w=4):
        draw.rectangle((x0 * ZOOM - 2, top + y0 * ZOOM - 2, x1 * ZOOM + 1, top + y1 * ZOOM + 1), outline=color, width=w)

    # The parts of the first cell; rows counted from its top.
    parts = [
        ((0, 0, pitch_x, pitch_y), (220, 30, 30), "outer frame (black)"),
        ((1, 1, pitch_x - 1, pitch_y - 1), (240, 150, 0), "inner frame and separator (grid colour)"),
        ((2, 2, pitch_x - 2, area_h + 2), (30, 120, 230), "glyph area: ink as grey levels"),
        ((2, area_h + 3, pitch_x - 2, area_h + 4), (20, 170, 60), "width line: the advance, from the origin"),
        ((0, baseline + 2, 1, baseline + 3), (200, 0, 200), "baseline mark (row of the origin)"),
        ((0, area_h + 3, 1, area_h + 4), (0, 170, 170), "width-line mark (row of the width lines)"),
    ]
    lx = width * ZOOM + 30
    for i, (box, color, text) in enumerate(parts):
        outline(*box, color)
        y = top + 20 + i * 44
        draw.rectangle((lx, y, lx + 26, y + 26), outline=color, width=4)
        draw.text((lx + 40, y + 13), text, fill="black", font=label, anchor="lm")
    y = top + 20 + len(parts) * 44 + 10
    levels = "numbers: palette indices; 0 white, 1 .. n-1 ink levels (n-1 black), n grid colour"
    for k, line in enumerate(levels.split("; ")):
        draw.text((lx, y + k * 26), line, fill="black", font=label)
    pic.save(out)


if __name__ == "__main__":
    main()
