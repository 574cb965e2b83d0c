#!/usr/bin/env bash
# Builds the library and prints the benchmarks' figures: the text routines
# natively (Google Benchmark, CPU time per call over growing inputs), then
# every benchmark program under Wine (the entry fields against the system
# edit control, validations per second, links, tables), against
# FLDKIT64.dll and then FLDKIT32.dll. Nothing passes or fails.
#   scripts/bench.sh [rounds]    rounds of the field benchmark (7 unless told)
set -euo pipefail
source "$(dirname "$0")/common.sh"
BENCH_NATIVE="$ROOT/build/bench-native"

bash "$ROOT/scripts/setup.sh"
cmake -S "$ROOT" -B "$BENCH_NATIVE" -DCMAKE_BUILD_TYPE=Release -DFK_SANITIZE=OFF >/dev/null
cmake --build "$BENCH_NATIVE" -j "$JOBS" --target text_bench >/dev/null
echo "== text_bench (native)"
"$BENCH_NATIVE/bin/text_bench" --benchmark_min_time=0.2 2>&1 | grep -v "Library was built as DEBUG"

trap stop_wine EXIT
# FLDKIT64.dll first (64-bit Wine: native speed on any x86-64 machine), then
# FLDKIT32.dll (32-bit Wine: native or emulated, see the README).
for tree in "$WIN64_BUILD" "$WIN_BUILD"; do
    if [ "$tree" = "$WIN64_BUILD" ]; then build_windows64 >/dev/null; bits=64; else build_windows >/dev/null; bits=32; fi
    use_prefix "$tree"
    [ -f "$WINEPREFIX/system.reg" ] || with_display sh "$ROOT/cmake/wineprefix.sh"
    for exe in "$tree"/bin/*_bench.exe; do
        echo
        echo "== $(basename "$exe" .exe) (FLDKIT$bits.dll)"
        with_display wine "$exe" "$@"
    done
done
