#!/usr/bin/env python3
"""Writes the pictures of the demo form and the gallery into sample/:

sample/logo.bmp       the FieldKit logo, 8 bits, RLE8 compressed (gxBitmap32)
sample/tb_clear.bmp   toolbar strips of four 20x20 images each: up, down,
sample/tb_check.bmp   focused, disabled (gxButton32)
sample/tb_lock.bmp
sample/ok.ico         status icons, 16x16 and 32x32 at 32 bits (gxIcon32):
sample/warn.ico       checked, refused, locked
sample/lock.ico

Run from the repository root; the files are committed, so the build does not
need Python. Every pixel is computed here.
"""
import struct

# ---- BMP and ICO writing ----


def bmp24(width, height, pixel):
    """A bottom-up 24-bit BMP of pixel(x, y) -> (r, g, b), y = 0 at the top."""
    stride = (width * 3 + 3) & ~3
    rows = b""
    for y in range(height - 1, -1, -1):
        row = b"".join(bytes((b, g, r)) for r, g, b in (pixel(x, y) for x in range(width)))
        rows += row + b"\0" * (stride - len(row))
    info = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(rows), 2835, 2835, 0, 0)
    return b"BM" + struct.pack("<IHHI", 54 + len(rows), 0, 0, 54) + info + rows


def bmp_rle8(width, height, palette, index):
    """A bottom-up RLE8 BMP of index(x, y) into palette [(r, g, b)]."""
    data = b""
    for y in range(height - 1, -1, -1):
        x = 0
        while x < width:
            n = 1
            while x + n < width and n < 255 and index(x + n, y) == index(x, y):
                n += 1
            data += bytes((n, index(x, y)))
            x += n
        data += b"\0\0"
    data += b"\0\1"
    table = b"".join(bytes((b, g, r, 0)) for r, g, b in palette)
    offset = 54 + len(table)
    info = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 8, 1, len(data), 2835, 2835, len(palette), 0)
    return b"BM" + struct.pack("<IHHI", offset + len(data), 0, 0, offset) + info + table + data


def ico(sizes, pixel):
    """An icon of square 32-bit images; pixel(x, y, size) -> (r, g, b, a)."""
    images = []
    for s in sizes:
        rows = b""
        for y in range(s - 1, -1, -1):
            rows += b"".join(bytes((b, g, r, a)) for r, g, b, a in (pixel(x, y, s) for x in range(s)))
        mask = b"\0" * (((s + 31) // 32) * 4 * s)
        info = struct.pack("<IiiHHIIiiII", 40, s, 2 * s, 1, 32, 0, len(rows) + len(mask), 0, 0, 0, 0)
        images.append((s, info + rows + mask))
    out = struct.pack("<HHH", 0, 1, len(images))
    offset = 6 + 16 * len(images)
    for s, data in images:
        out += struct.pack("<BBBBHHII", s % 256, s % 256, 0, 0, 1, 32, len(data), offset)
        offset += len(data)
    return out + b"".join(data for _, data in images)


# ---- the logo ----

FONT = {  # 5 x 7 letters
    "F": ["#####", "#....", "#....", "####.", "#....", "#....", "#...."],
    "K": ["#...#", "#..#.", "#.#..", "##...", "#.#..", "#..#.", "#...#"],
    "i": ["..#..", ".....", ".##..", "..#..", "..#..", "..#..", ".###."],
    "e": [".....", ".....", ".###.", "#...#", "#####", "#....", ".###."],
    "l": [".##..", "..#..", "..#..", "..#..", "..#..", "..#..", ".###."],
    "d": ["....#", "....#", ".####", "#...#", "#...#", "#...#", ".####"],
    "t": ["..#..", "..#..", "#####", "..#..", "..#..", "..#..", "...##"],
}


def lettering(text, scale, x0, y0):
    """The set of pixels that text covers, letters 6 columns apart."""
    on = set()
    for i, c in enumerate(text):
        for row, line in enumerate(FONT[c]):
            for col, ch in enumerate(line):
                if ch == "#":
                    for dy in range(scale):
                        for dx in range(scale):
                            on.add((x0 + (i * 6 + col) * scale + dx, y0 + row * scale + dy))
    return on


def logo():
    width, height = 96, 40
    # 0-15: a blue gradient; 16 white; 17 dark shadow; 18 gold
    palette = [(20 + 6 * i, 60 + 8 * i, 140 + 7 * i) for i in range(16)] + [(255, 255, 255), (10, 20, 60), (250, 200, 60)]
    big = lettering("FK", 3, 8, 6)
    shadow = {(x + 2, y + 2) for x, y in big}
    small = lettering("Field", 1, 48, 10) | lettering("Kit", 1, 48, 22)

    def index(x, y):
        if (x, y) in big:
            return 16
        if (x, y) in small:
            return 18
        if (x, y) in shadow:
            return 17
        if x in (0, width - 1) or y in (0, height - 1):
            return 17
        return min(15, (x + y) * 16 // (width + height))

    return bmp_rle8(width, height, palette, index)


# ---- toolbar strips ----

FACE, WHITE, SHADOW, DARK, GREY = (192, 192, 192), (255, 255, 255), (128, 128, 128), (0, 0, 0), (160, 160, 160)
SIDE = 20


def glyph_clear(x, y):
    return abs(x - y) <= 1 or abs(x + y - 19) <= 1 if 5 <= x <= 14 and 5 <= y <= 14 else False


def glyph_check(x, y):
    return (5 <= x <= 8 and abs(y - (x + 6)) <= 1) or (8 <= x <= 15 and abs(y - (22 - x)) <= 1)


def glyph_lock(x, y):
    body = 5 <= x <= 14 and 9 <= y <= 15
    shackle = 6 <= x <= 13 and 4 <= y <= 9 and not (8 <= x <= 11 and 6 <= y <= 9) and not ((x in (6, 13)) and y == 4)
    return (body or shackle) and not (x == 9 and 11 <= y <= 13)


COLOURS = {"clear": (200, 30, 30), "check": (20, 140, 40), "lock": (150, 100, 0)}


def strip(glyph, colour):
    def face(image, x, y):
        down = image == 1
        ox = 1 if down else 0
        edge_tl, edge_br = (SHADOW, WHITE) if down else (WHITE, DARK)
        if x == 0 or y == 0:
            return edge_tl
        if x == SIDE - 1 or y == SIDE - 1:
            return edge_br
        if not down and (x == SIDE - 2 or y == SIDE - 2):
            return SHADOW
        if image == 2 and (x in (3, SIDE - 4) and 3 <= y <= SIDE - 4 or y in (3, SIDE - 4) and 3 <= x <= SIDE - 4):
            return DARK if (x + y) % 2 == 0 else FACE
        if image == 3:
            if glyph(x, y):
                return SHADOW
            if glyph(x - 1, y - 1):
                return WHITE
            return FACE
        return colour if glyph(x - ox, y - ox) else FACE

    return bmp24(4 * SIDE, SIDE, lambda x, y: face(x // SIDE, x % SIDE, y))


# ---- status icons ----


def icon_ok(x, y, s):
    c = (s - 1) / 2
    if (x - c) ** 2 + (y - c) ** 2 > (s / 2 - 0.5) ** 2:
        return (0, 0, 0, 0)
    k = 20 / s
    if glyph_check(x * k, y * k) or glyph_check(x * k + 0.5, y * k):
        return (255, 255, 255, 255)
    return (30, 160, 60, 255)


def icon_warn(x, y, s):
    c = (s - 1) / 2
    if (x - c) ** 2 + (y - c) ** 2 > (s / 2 - 0.5) ** 2:
        return (0, 0, 0, 0)
    k = 20 / s
    if glyph_clear(int(x * k), int(y * k)):
        return (255, 255, 255, 255)
    return (200, 30, 30, 255)


def icon_lock(x, y, s):
    k = 20 / s
    if glyph_lock(int(x * k), int(y * k)):
        return (200, 140, 0, 255)
    return (0, 0, 0, 0)


def main():
    files = {
        "sample/logo.bmp": logo(),
        "sample/tb_clear.bmp": strip(glyph_clear, COLOURS["clear"]),
        "sample/tb_check.bmp": strip(glyph_check, COLOURS["check"]),
        "sample/tb_lock.bmp": strip(glyph_lock, COLOURS["lock"]),
        "sample/ok.ico": ico([16, 32], icon_ok),
        "sample/warn.ico": ico([16, 32], icon_warn),
        "sample/lock.ico": ico([16, 32], icon_lock),
    }
    for path, data in files.items():
        with open(path, "wb") as f:
            f.write(data)
        print(path, len(data), "bytes")


if __name__ == "__main__":
    main()
