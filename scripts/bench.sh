#!/usr/bin/env bash
# Builds the library and runs every benchmark program under Wine; each
# prints its figures.
set -euo pipefail
source "$(dirname "$0")/common.sh"

bash "$ROOT/scripts/setup.sh"
build_windows
[ -d "$WINEPREFIX" ] || with_display sh "$ROOT/cmake/wineprefix.sh"
trap stop_wine EXIT
for exe in "$WIN_BUILD"/bin/*_bench.exe; do
    echo "== $(basename "$exe" .exe)"
    with_display wine "$exe"
done
