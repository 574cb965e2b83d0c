#!/usr/bin/env bash
# Builds the library and prints the benchmarks' figures: the text routines
# natively (Google Benchmark, CPU time per call over growing inputs), then
# every benchmark program under Wine (the entry fields against the system
# edit control, validations per second, links). Nothing passes or fails.
#   scripts/bench.sh [rounds]    rounds of the field benchmark (7 unless told)
set -euo pipefail
source "$(dirname "$0")/common.sh"
BENCH_NATIVE="$ROOT/build/bench-native"

bash "$ROOT/scripts/setup.sh"
cmake -S "$ROOT" -B "$BENCH_NATIVE" -DCMAKE_BUILD_TYPE=Release -DFK_SANITIZE=OFF >/dev/null
cmake --build "$BENCH_NATIVE" -j "$JOBS" --target text_bench >/dev/null
echo "== text_bench (native)"
"$BENCH_NATIVE/bin/text_bench" --benchmark_min_time=0.2 2>&1 | grep -v "Library was built as DEBUG"

build_windows >/dev/null
[ -f "$WINEPREFIX/system.reg" ] || with_display sh "$ROOT/cmake/wineprefix.sh"
trap stop_wine EXIT
for exe in "$WIN_BUILD"/bin/*_bench.exe; do
    echo
    echo "== $(basename "$exe" .exe)"
    with_display wine "$exe" "$@"
done
