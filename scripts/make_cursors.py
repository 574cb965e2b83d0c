#!/usr/bin/env python3
"""Writes the library's two drag cursors as 32x32 monochrome .cur files.

resources/drag.cur    (resource 160): an arrow carrying a small page
resources/nodrop.cur  (resource 161): a circle with a slash

Run from the repository root; the .cur files are committed, so the build
does not need Python.
"""
import math
import struct
import sys

SIZE = 32


def arrow(x, y):
    # Classic arrow: tip at (0, 0), 16 rows tall.
    return 0 <= y < 16 and 0 <= x <= y // 1.6 + (0 if y < 11 else -(y - 11))


def drag_pixels():
    """Returns (outline, fill) sets for the drag cursor."""
    fill, outline = set(), set()
    for y in range(SIZE):
        for x in range(SIZE):
            if arrow(x, y):
                fill.add((x, y))
            if 14 <= x <= 26 and 16 <= y <= 28:  # the carried page
                fill.add((x, y))
    for (x, y) in list(fill):
        for dx, dy in ((1, 0), (-1, 0), (0, 1), (0, -1)):
            n = (x + dx, y + dy)
            if n not in fill and 0 <= n[0] < SIZE and 0 <= n[1] < SIZE:
                outline.add(n)
    return outline, fill


def nodrop_pixels():
    c, r_out, r_in = 15.5, 14.0, 10.0
    outline, fill = set(), set()
    for y in range(SIZE):
        for x in range(SIZE):
            d = math.hypot(x - c, y - c)
            ring = r_in <= d <= r_out
            # the slash from top-left to bottom-right, 4 pixels wide
            slash = d < r_out and abs((x - c) - (y - c)) <= 2.5
            if ring or slash:
                outline.add((x, y))  # drawn black
            elif d < r_in:
                fill.add((x, y))  # white inside the circle
    return outline, fill


def cur_file(black, white, hotspot):
    # XOR mask: 1 = white where the AND mask is 0. AND mask: 0 = opaque.
    xor_rows, and_rows = [], []
    for y in range(SIZE - 1, -1, -1):  # bottom-up
        xor_bits, and_bits = 0, 0
        for x in range(SIZE):
            bit = 1 << (SIZE - 1 - x)
            if (x, y) in white and (x, y) not in black:
                xor_bits |= bit
            elif (x, y) not in black:
                and_bits |= bit  # transparent
        xor_rows.append(struct.pack(">I", xor_bits))
        and_rows.append(struct.pack(">I", and_bits))
    header = struct.pack("<IiiHHIIiiII", 40, SIZE, SIZE * 2, 1, 1, 0, 0, 0, 0, 2, 0)
    palette = struct.pack("<II", 0x000000, 0xFFFFFF)
    image = header + palette + b"".join(xor_rows) + b"".join(and_rows)
    directory = struct.pack("<HHH", 0, 2, 1)
    entry = struct.pack("<BBBBHHII", SIZE, SIZE, 0, 0, hotspot[0], hotspot[1], len(image), 6 + 16)
    return directory + entry + image


def main(out_dir):
    outline, fill = drag_pixels()
    with open(f"{out_dir}/drag.cur", "wb") as f:
        f.write(cur_file(outline, fill, (0, 0)))
    black, white = nodrop_pixels()
    with open(f"{out_dir}/nodrop.cur", "wb") as f:
        f.write(cur_file(black, white, (15, 15)))


if __name__ == "__main__":
    main(sys.argv[1] if len(sys.argv) > 1 else "resources")
