#!/usr/bin/env bash
# Soak under Wine: create / configure / use / destroy cycles of every class
# (10,000 per class unless told), with the process's windows, global atoms,
# GDI objects and heap blocks printed before and after. Exits non-zero when
# a figure grew.
#
#   scripts/soak.sh [cycles]
set -euo pipefail
source "$(dirname "$0")/common.sh"

CYCLES="${1:-10000}"
[ $# -gt 0 ] && shift

build_windows >/dev/null
trap stop_wine EXIT
if [ ! -f "$WINEPREFIX/system.reg" ]; then
    with_display sh "$ROOT/cmake/wineprefix.sh"
fi
with_display wine "$WIN_BUILD/bin/soak_tests.exe" --cycles "$CYCLES"
