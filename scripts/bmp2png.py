#!/usr/bin/env python3
"""Turns every 24-bit BMP of a folder into a PNG of another folder.

    bmp2png.py SOURCE_DIR DEST_DIR
"""
import glob, os, struct, sys, zlib

src, dst = sys.argv[1], sys.argv[2]

def chunk(kind, data):
    body = kind + data
    return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body) & 0xFFFFFFFF)

for bmp in sorted(glob.glob(os.path.join(src, "*.bmp"))):
    raw = open(bmp, "rb").read()
    offset, = struct.unpack_from("<I", raw, 10)
    width, height, _, bits = struct.unpack_from("<iiHH", raw, 18)
    assert bits == 24, bmp
    stride = (width * 3 + 3) & ~3
    rows = []
    for y in range(abs(height)):
        row = y if height < 0 else abs(height) - 1 - y
        line = raw[offset + row * stride: offset + row * stride + width * 3]
        rgb = bytearray(width * 3)
        rgb[0::3], rgb[1::3], rgb[2::3] = line[2::3], line[1::3], line[0::3]
        rows.append(b"\0" + bytes(rgb))
    png = (b"\x89PNG\r\n\x1a\n"
           + chunk(b"IHDR", struct.pack(">IIBBBBB", width, abs(height), 8, 2, 0, 0, 0))
           + chunk(b"IDAT", zlib.compress(b"".join(rows), 9))
           + chunk(b"IEND", b""))
    name = os.path.join(dst, os.path.splitext(os.path.basename(bmp))[0] + ".png")
    open(name, "wb").write(png)
    print("docs/" + os.path.basename(name), width, "x", abs(height))
