#!/usr/bin/env bash
# Builds FieldKit and runs every test: first FLDKIT64.dll's tests under
# 64-bit Wine (native speed on any x86-64 machine: the quick answer), then the
# text routines natively (with sanitizers) and a short run of each fuzz
# target, then FLDKIT32.dll's tests under 32-bit Wine, with the tests that
# need both DLLs. Wine runs in a private Xvfb display. Arguments go to both
# ctest runs (for example -R fields).
set -euo pipefail
source "$(dirname "$0")/common.sh"

bash "$ROOT/scripts/setup.sh"
trap stop_wine EXIT

echo "== FLDKIT64.dll"
build_windows64
use_prefix "$WIN64_BUILD"
with_display ctest --test-dir "$WIN64_BUILD" --output-on-failure "$@"

echo "== text routines (native)"
build_native
ctest --test-dir "$NATIVE_BUILD" --output-on-failure
bash "$ROOT/scripts/fuzz.sh" short

echo "== FLDKIT32.dll"
build_windows
use_prefix "$WIN_BUILD"
with_display ctest --test-dir "$WIN_BUILD" --output-on-failure "$@"
