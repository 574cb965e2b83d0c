#!/usr/bin/env python3
"""Draws the toolbox pictures of the fifteen classes as 24x24 24-bit BMPs.

resources/toolbox/<class>.bmp, one per class, which the Info entries hand
to dialog editors. Run from the repository root; the .bmp files are
committed, so the build does not need Python.
"""
import os
import struct
import sys

SIZE = 24
GREY, WHITE, BLACK = (192, 192, 192), (255, 255, 255), (0, 0, 0)
DARK, BLUE, RED, GREEN = (128, 128, 128), (0, 0, 160), (200, 0, 0), (0, 150, 0)

# 5x7 digits and the few letters the pictures write, one row a string.
GLYPHS = {
    "0": ["111", "101", "101", "101", "111"], "1": ["010", "110", "010", "010", "111"],
    "2": ["111", "001", "111", "100", "111"], "3": ["111", "001", "011", "001", "111"],
    "5": ["111", "100", "111", "001", "111"], ".": ["0", "0", "0", "0", "1"],
    "$": ["010", "111", "110", "011", "111", "010"], "a": ["000", "111", "011", "101", "111"],
    "b": ["100", "100", "111", "101", "111"], "A": ["010", "101", "111", "101", "101"],
    "/": ["001", "001", "010", "100", "100"], "K": ["101", "110", "100", "110", "101"],
}


class Picture:
    def __init__(self):
        self.px = [[GREY] * SIZE for _ in range(SIZE)]

    def dot(self, x, y, c):
        if 0 <= x < SIZE and 0 <= y < SIZE:
            self.px[y][x] = c

    def fill(self, x0, y0, x1, y1, c):
        for y in range(y0, y1 + 1):
            for x in range(x0, x1 + 1):
                self.dot(x, y, c)

    def hline(self, x0, x1, y, c):
        self.fill(x0, y, x1, y, c)

    def vline(self, x, y0, y1, c):
        self.fill(x, y0, x, y1, c)

    def outline(self, x0, y0, x1, y1, c):
        self.hline(x0, x1, y0, c)
        self.hline(x0, x1, y1, c)
        self.vline(x0, y0, y1, c)
        self.vline(x1, y0, y1, c)

    def sunken(self, x0, y0, x1, y1, face=WHITE):
        """A field: white face, shadow at top and left, highlight at bottom and right."""
        self.fill(x0, y0, x1, y1, face)
        self.hline(x0, x1, y0, DARK)
        self.vline(x0, y0, y1, DARK)
        self.hline(x0 + 1, x1 - 1, y0 + 1, BLACK)
        self.vline(x0 + 1, y0 + 1, y1 - 1, BLACK)

    def raised(self, x0, y0, x1, y1):
        self.fill(x0, y0, x1, y1, GREY)
        self.hline(x0, x1, y0, WHITE)
        self.vline(x0, y0, y1, WHITE)
        self.hline(x0, x1, y1, BLACK)
        self.vline(x1, y0, y1, BLACK)
        self.hline(x0 + 1, x1 - 1, y1 - 1, DARK)
        self.vline(x1 - 1, y0 + 1, y1 - 1, DARK)

    def text(self, x, y, s, c=BLACK):
        for ch in s:
            rows = GLYPHS[ch]
            for dy, row in enumerate(rows):
                for dx, bit in enumerate(row):
                    if bit == "1":
                        self.dot(x + dx, y + dy, c)
            x += len(rows[0]) + 1

    def bmp(self):
        stride = (SIZE * 3 + 3) & ~3
        rows = b""
        for y in range(SIZE - 1, -1, -1):  # bottom-up
            row = b"".join(bytes((b, g, r)) for (r, g, b) in self.px[y])
            rows += row + b"\0" * (stride - SIZE * 3)
        info = struct.pack("<IiiHHIIiiII", 40, SIZE, SIZE, 1, 24, 0, len(rows), 2835, 2835, 0, 0)
        head = struct.pack("<2sIHHI", b"BM", 14 + len(info) + len(rows), 0, 0, 14 + len(info))
        return head + info + rows


def field(text, colour=BLACK):
    p = Picture()
    p.sunken(1, 6, 22, 17)
    p.text(4, 9, text, colour)
    return p


def bitmap():
    p = Picture()
    p.sunken(1, 2, 22, 21, (170, 210, 255))
    for i in range(9):  # a mountain
        p.hline(8 - i + 3, 8 + i + 3, 10 + i, GREEN)
    p.fill(15, 5, 18, 8, (255, 210, 0))  # the sun
    return p


def icon():
    p = Picture()
    p.fill(5, 4, 18, 19, (255, 230, 80))
    for x, y in ((5, 4), (18, 4), (5, 19), (18, 19)):
        p.dot(x, y, GREY)
    p.fill(8, 8, 9, 9, BLACK)
    p.fill(14, 8, 15, 9, BLACK)
    p.hline(9, 14, 15, BLACK)
    p.dot(8, 14, BLACK)
    p.dot(15, 14, BLACK)
    return p


def color():
    p = Picture()
    for i, c in enumerate((RED, GREEN, BLUE)):
        p.fill(2 + 4 * i, 3, 4 + 4 * i, 20, c)
    p.sunken(14, 3, 22, 20, (160, 60, 200))
    return p


def table():
    p = Picture()
    p.sunken(1, 1, 22, 22)
    for y in (7, 12, 17):
        p.hline(3, 21, y, DARK)
    p.vline(10, 3, 21, DARK)
    p.fill(3, 8, 21, 11, BLUE)
    return p


def cbtable():
    p = Picture()
    p.sunken(1, 3, 22, 10)
    p.raised(15, 4, 21, 9)
    for i in range(3):
        p.hline(16 + i, 20 - i, 6 + i, BLACK)
    p.sunken(1, 11, 22, 22)
    p.fill(3, 14, 21, 17, BLUE)
    return p


def ticker():
    p = field("123")
    for i in range(4):  # an arrow to the left
        p.vline(16 + i, 11 - i, 11 + i, RED)
    return p


def frame3d():
    p = Picture()
    p.outline(2, 5, 21, 21, DARK)
    p.outline(3, 6, 22, 22, WHITE)
    p.fill(5, 3, 12, 8, GREY)
    p.text(6, 3, "ab")
    return p


def button():
    p = Picture()
    p.outline(1, 5, 22, 18, BLACK)
    p.raised(2, 6, 21, 17)
    p.text(8, 9, "0K")
    return p


def text3d():
    p = Picture()
    p.text(9, 9, "A", WHITE)
    p.text(7, 7, "A", DARK)
    p.text(8, 8, "A", BLACK)
    p.text(14, 8, "a", BLUE)
    return p


def line():
    p = Picture()
    p.hline(2, 21, 11, DARK)
    p.hline(2, 21, 12, WHITE)
    p.vline(11, 2, 9, DARK)
    p.vline(12, 2, 9, WHITE)
    p.vline(11, 14, 21, DARK)
    p.vline(12, 14, 21, WHITE)
    return p


PICTURES = {
    "string": lambda: field("ab"), "numeric": lambda: field("123"), "real": lambda: field("1.5"),
    "bitmap": bitmap, "icon": icon, "color": color, "table": table, "cbtable": cbtable,
    "ticker": ticker, "date": lambda: field("3/1"), "frame3d": frame3d, "button": button,
    "currency": lambda: field("$5", GREEN), "text3d": text3d, "line": line,
}


def main(out_dir):
    os.makedirs(out_dir, exist_ok=True)
    for name, draw in PICTURES.items():
        with open(os.path.join(out_dir, name + ".bmp"), "wb") as f:
            f.write(draw().bmp())


if __name__ == "__main__":
    main(sys.argv[1] if len(sys.argv) > 1 else "resources/toolbox")
