#!/usr/bin/env bash
# The main job: builds FLDKIT32.dll, lays out dist/ (DLL, import library,
# header, the demo program) and runs the order-entry form under Wine: it
# fills the form as a user would, validates it, prints what every field
# holds, saves a picture of the form as dist/demo-form.bmp and writes what a
# screen reader announces on it (docs/accessibility.md).
#   scripts/demo.sh            the scripted run (no user needed)
#   scripts/demo.sh --show     the form stays open for a user (needs a display)
set -euo pipefail
source "$(dirname "$0")/common.sh"

bash "$ROOT/scripts/setup.sh"
build_windows
cmake --build "$WIN_BUILD" --target dist >/dev/null
echo "dist/ holds (also as $(ls "$WIN_BUILD"/fieldkit-*-win32.zip 2>/dev/null | tail -n1)):"
(cd "$ROOT/dist" && find . -type f | sort | sed 's|^\./|  |')
echo
trap stop_wine EXIT
cd "$ROOT/dist"
if [[ "${1:-}" == "--show" ]]; then
    wine bin/fkdemo.exe
else
    with_display wine bin/fkdemo.exe --auto --shot demo-form.bmp --transcript accessibility.md
    # What a screen reader announces on the form, kept with the documents.
    if [[ -f accessibility.md ]]; then cp accessibility.md "$ROOT/docs/accessibility.md"; fi
fi
