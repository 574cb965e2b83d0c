#!/usr/bin/env bash
# The main job: builds FLDKIT32.dll and FLDKIT64.dll, lays out dist/ (both
# DLLs, their import libraries, the header, the CMake package, the demo
# programs) and runs the order-entry form under Wine, 32-bit and then
# 64-bit: it fills the form as a user would, validates it, prints what every
# field holds and saves a picture of the form as dist/demo-form.bmp (from
# the 64-bit demo: dist/demo-form64.bmp; the two are the same picture). The
# 32-bit run also writes what a screen reader announces on the form
# (docs/accessibility.md).
#   scripts/demo.sh            the scripted runs (no user needed)
#   scripts/demo.sh --show     the 32-bit form stays open for a user (needs a display)
#   scripts/demo.sh --show64   the same with the 64-bit form
set -euo pipefail
source "$(dirname "$0")/common.sh"

bash "$ROOT/scripts/setup.sh"
build_windows64
build_windows
cmake --build "$WIN_BUILD" --target dist >/dev/null
echo "dist/ holds (also as $(ls "$WIN_BUILD"/fieldkit-*.zip 2>/dev/null | tail -n1)):"
(cd "$ROOT/dist" && find . -type f | sort | sed 's|^\./|  |')
echo
trap stop_wine EXIT
cd "$ROOT/dist"
# Both demos run in one prefix, the 64-bit tree's (a win64 prefix runs
# 32-bit programs too), made as the tests make theirs: the two pictures are
# then drawn under the same settings.
use_prefix "$WIN64_BUILD"
[ -f "$WINEPREFIX/system.reg" ] || with_display sh "$ROOT/cmake/wineprefix.sh"
case "${1:-}" in
--show) wine bin/fkdemo.exe ;;
--show64) wine bin/fkdemo64.exe ;;
*)
    echo "== the 32-bit demo (FLDKIT32.dll)"
    with_display wine bin/fkdemo.exe --auto --shot demo-form.bmp --transcript accessibility.md
    # What a screen reader announces on the form, kept with the documents.
    if [[ -f accessibility.md ]]; then cp accessibility.md "$ROOT/docs/accessibility.md"; fi
    echo
    echo "== the 64-bit demo (FLDKIT64.dll)"
    with_display wine bin/fkdemo64.exe --auto --shot demo-form64.bmp
    echo
    python3 "$ROOT/tests/cross/compare_bmp.py" demo-form.bmp demo-form64.bmp
    ;;
esac
