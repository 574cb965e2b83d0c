#!/usr/bin/env bash
# Draws the gallery of the display controls into docs/*.png: builds the
# library, builds the small gallery program against it, runs it under Wine
# in a private X display (it writes BMPs) and converts them to PNG.
set -euo pipefail
source "$(dirname "$0")/common.sh"

build_windows
OUT="$WIN_BUILD/gallery"
mkdir -p "$OUT"
i686-w64-mingw32-g++-posix -std=c++20 -O2 -I"$ROOT" -I"$ROOT/include" \
    "$ROOT/tools/gallery.cpp" -o "$OUT/gallery.exe" \
    "$WIN_BUILD/lib/libfldkit32.a" -lgdi32 -luser32 -static -static-libgcc -static-libstdc++
cp "$WIN_BUILD/bin/FLDKIT32.dll" "$OUT/"
rm -f "$OUT"/*.bmp
mkdir -p "$OUT/pictures"
cp "$ROOT"/sample/*.bmp "$ROOT"/sample/*.ico "$OUT/pictures/"
trap stop_wine EXIT
(cd "$OUT" && with_display wine gallery.exe .)

mkdir -p "$ROOT/docs"
python3 "$ROOT/scripts/bmp2png.py" "$OUT" "$ROOT/docs"
