#!/usr/bin/env python3
"""Compares two BMP pictures pixel by pixel: exit 0 when they are the same
size and every pixel is equal, 1 otherwise (with the count of differing
pixels and the box around them), 2 when a file is not a readable BMP."""
import struct
import sys


def read(path):
    data = open(path, "rb").read()
    if data[:2] != b"BM":
        raise ValueError(f"{path}: not a BMP")
    offset, = struct.unpack_from("<I", data, 10)
    width, height, _, bits = struct.unpack_from("<iiHH", data, 18)
    if bits not in (24, 32):
        raise ValueError(f"{path}: {bits} bits per pixel")
    row = (width * bits // 8 + 3) & ~3
    step = bits // 8
    rows = [data[offset + y * row: offset + y * row + width * step] for y in range(abs(height))]
    return width, abs(height), step, rows


def main(a, b):
    try:
        wa, ha, sa, ra = read(a)
        wb, hb, sb, rb = read(b)
    except (OSError, ValueError, struct.error) as e:
        print(e)
        return 2
    if (wa, ha) != (wb, hb):
        print(f"sizes differ: {wa}x{ha} and {wb}x{hb}")
        return 1
    diff, box = 0, None
    for y in range(ha):
        if ra[y] == rb[y]:
            continue
        for x in range(wa):
            if ra[y][x * sa: x * sa + 3] != rb[y][x * sb: x * sb + 3]:
                diff += 1
                box = (min(box[0], x), min(box[1], y), max(box[2], x), max(box[3], y)) if box else (x, y, x, y)
    if diff:
        print(f"{diff} of {wa * ha} pixels differ, within x {box[0]}-{box[2]}, rows {box[1]}-{box[3]} from the bottom")
        return 1
    print(f"{wa}x{ha}: every pixel equal")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2]))
