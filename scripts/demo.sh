#!/usr/bin/env bash
# The main job: builds FLDKIT32.dll, lays out dist/ (DLL, import library,
# header) and runs the sample program under Wine.
set -euo pipefail
source "$(dirname "$0")/common.sh"

bash "$ROOT/scripts/setup.sh"
build_windows
cmake --build "$WIN_BUILD" --target dist >/dev/null
echo "dist/ holds:"
(cd "$ROOT/dist" && find . -type f | sort | sed 's|^\./|  |')
echo
trap stop_wine EXIT
with_display wine "$ROOT/dist/bin/fksample.exe"
