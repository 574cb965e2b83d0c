#!/usr/bin/env bash
# Builds the fuzz targets of fuzz/ with clang (libFuzzer, address and
# undefined-behaviour sanitizers) in build/fuzz and runs each of them.
#
#   scripts/fuzz.sh short [target...]   about FUZZ_SECONDS (10) seconds per target (CI)
#   scripts/fuzz.sh long  [target...]   FUZZ_RUNS (10000000) executions per target
#   scripts/fuzz.sh build               only builds
#
# The seeds in fuzz/corpus/<target>/ are read, never written: what the fuzzer
# learns goes to build/fuzz/corpus/<target>/, crashing inputs to
# build/fuzz/artifacts/. A fuzz/<target>.dict is handed over as dictionary.
# Reproduce a finding with build/fuzz/fuzz/fuzz_<target> <file>.
set -euo pipefail
source "$(dirname "$0")/common.sh"

MODE=${1:-short}
shift || true
FUZZ_BUILD="$ROOT/build/fuzz"
FUZZ_JOBS=${FUZZ_JOBS:-2}

build_fuzz() {
    CC=clang CXX=clang++ cmake -S "$ROOT" -B "$FUZZ_BUILD" -DFK_FUZZ=ON \
        -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
    local log="$FUZZ_BUILD/logs/build-$MODE.log"
    mkdir -p "$FUZZ_BUILD/logs"
    cmake --build "$FUZZ_BUILD" --target fuzz_targets -j "$FUZZ_JOBS" >"$log" 2>&1 || {
        cat "$log" >&2
        return 1
    }
}

targets() {
    if [ $# -gt 0 ]; then
        printf '%s\n' "$@"
    else
        for f in "$ROOT"/fuzz/*.cpp; do basename "$f" .cpp; done
    fi
}

# Runs one target; prints its executions and rate, fails on a finding.
run_target() {
    local name=$1
    shift
    local bin="$FUZZ_BUILD/fuzz/fuzz_$name"
    local learned="$FUZZ_BUILD/corpus/$name"
    local artifacts="$FUZZ_BUILD/artifacts"
    local log="$FUZZ_BUILD/logs/$MODE-$name.log"
    mkdir -p "$learned" "$artifacts" "$(dirname "$log")"
    local args=(-max_len=1100 -print_final_stats=1 -artifact_prefix="$artifacts/$name-")
    [ -f "$ROOT/fuzz/$name.dict" ] && args+=(-dict="$ROOT/fuzz/$name.dict")
    local seeds=()
    [ -d "$ROOT/fuzz/corpus/$name" ] && seeds+=("$ROOT/fuzz/corpus/$name")

    local start=$SECONDS status=0
    "$bin" "${args[@]}" "$@" "$learned" "${seeds[@]}" >"$log" 2>&1 || status=$?
    local runs rate
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
    rate=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log" | tail -1)
    printf 'fuzz %-14s %12s executions  %8s/s  %4ss' "$name" "${runs:-?}" "${rate:-?}" $((SECONDS - start))
    if [ $status -ne 0 ]; then
        printf '  FAILED (exit %s), log: %s\n' "$status" "$log"
        grep -E 'ERROR|property broken|runtime error|Test unit written' "$log" | head -5 | sed 's/^/    /'
        return 1
    fi
    printf '\n'
}

command -v clang++ >/dev/null || { echo "fuzz: clang++ is missing (scripts/setup.sh installs it)" >&2; exit 1; }
build_fuzz
[ "$MODE" = build ] && exit 0

mapfile -t names < <(targets "$@")
failed=0
for name in "${names[@]}"; do
    case "$MODE" in
    short) run_target "$name" -max_total_time="${FUZZ_SECONDS:-10}" || failed=1 ;;
    long) run_target "$name" -runs="${FUZZ_RUNS:-10000000}" || failed=1 ;;
    *) echo "usage: scripts/fuzz.sh short|long|build [target...]" >&2; exit 2 ;;
    esac
done
exit $failed
