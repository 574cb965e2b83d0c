# Shared by the build scripts: configure and build both trees, run under X.
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
JOBS=$(nproc 2>/dev/null || echo 2)
WIN_BUILD="$ROOT/build/win"
NATIVE_BUILD="$ROOT/build/native"

export WINEPREFIX="$WIN_BUILD/wineprefix"
export WINEDLLOVERRIDES="mscoree,mshtml="
export WINEDEBUG=-all

build_windows() {
    cmake -S "$ROOT" -B "$WIN_BUILD" -DCMAKE_TOOLCHAIN_FILE="$ROOT/cmake/mingw-i686.cmake" \
          -DCMAKE_BUILD_TYPE=Release >/dev/null
    cmake --build "$WIN_BUILD" -j "$JOBS"
}

build_native() {
    cmake -S "$ROOT" -B "$NATIVE_BUILD" -DCMAKE_BUILD_TYPE=Debug >/dev/null
    cmake --build "$NATIVE_BUILD" -j "$JOBS"
}

# Runs a command with an X display: the caller's, or a private Xvfb.
with_display() {
    if [ -n "${DISPLAY:-}" ]; then
        "$@"
    else
        xvfb-run -a -s "-screen 0 1280x1024x24" "$@"
    fi
}

stop_wine() {
    wineserver -k >/dev/null 2>&1 || true
}
