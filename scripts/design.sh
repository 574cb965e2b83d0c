#!/usr/bin/env bash
# The design host: builds the library and tools/fkdesign.exe (CMake target
# fkdesign), runs its scripted run under Wine in a private X display (it
# prints the CONTROL lines and writes BMPs) and turns the pictures into
# docs/design-*.png.
#   scripts/design.sh          the scripted run
#   scripts/design.sh --show   the host stays open for a user (needs a display)
set -euo pipefail
source "$(dirname "$0")/common.sh"

build_windows
OUT="$WIN_BUILD/design"
mkdir -p "$OUT"
cp "$WIN_BUILD/bin/fkdesign.exe" "$WIN_BUILD/bin/FLDKIT32.dll" "$OUT/"
rm -f "$OUT"/*.bmp
trap stop_wine EXIT
if [ "${1:-}" = "--show" ]; then
    (cd "$OUT" && wine fkdesign.exe)
    exit 0
fi
(cd "$OUT" && with_display wine fkdesign.exe --auto .)

mkdir -p "$ROOT/docs"
python3 "$ROOT/scripts/bmp2png.py" "$OUT" "$ROOT/docs"
