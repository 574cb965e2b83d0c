#!/usr/bin/env bash
# Builds FieldKit and runs every test: the text routines natively (with
# sanitizers) and a short run of each fuzz target, then the DLL's tests under
# Wine in a private Xvfb display.
set -euo pipefail
source "$(dirname "$0")/common.sh"

bash "$ROOT/scripts/setup.sh"

build_native
ctest --test-dir "$NATIVE_BUILD" --output-on-failure
bash "$ROOT/scripts/fuzz.sh" short

build_windows
trap stop_wine EXIT
with_display ctest --test-dir "$WIN_BUILD" --output-on-failure "$@"
