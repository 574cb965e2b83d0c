# Shared by the build scripts: configure and build the trees, run under X.
#   build/win     FLDKIT32.dll and its tests (i686 mingw-w64, 32-bit Wine)
#   build/win64   FLDKIT64.dll and its tests (x86-64 mingw-w64, 64-bit Wine)
#   build/native  the text routines natively, with sanitizers
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
JOBS=$(nproc 2>/dev/null || echo 2)
WIN_BUILD="$ROOT/build/win"
WIN64_BUILD="$ROOT/build/win64"
NATIVE_BUILD="$ROOT/build/native"

# Each Windows tree has its own Wine prefix; the 64-bit one is a win64
# prefix, which runs 32-bit programs too. WINEPREFIX is the 32-bit tree's
# unless a script picks the other with use_prefix.
export WINEPREFIX="$WIN_BUILD/wineprefix"
export WINEDLLOVERRIDES="mscoree,mshtml="
export WINEDEBUG=-all

use_prefix() {  # use_prefix <build tree>
    export WINEPREFIX="$1/wineprefix"
    if [ "$1" = "$WIN64_BUILD" ]; then export WINEARCH=win64; else unset WINEARCH; fi
}

# Each tree knows the other (FK_OTHER_BUILD): dist/ takes both DLLs when
# both are built, and the 32-bit tree runs the tests that need both (a
# 32-bit and a 64-bit program linked over DDE, the demo's picture from both).
build_windows() {
    cmake -S "$ROOT" -B "$WIN_BUILD" -DCMAKE_TOOLCHAIN_FILE="$ROOT/cmake/mingw-i686.cmake" \
          -DCMAKE_BUILD_TYPE=Release -DFK_OTHER_BUILD="$WIN64_BUILD" >/dev/null
    cmake --build "$WIN_BUILD" -j "$JOBS"
}

build_windows64() {
    cmake -S "$ROOT" -B "$WIN64_BUILD" -DCMAKE_TOOLCHAIN_FILE="$ROOT/cmake/mingw-x86_64.cmake" \
          -DCMAKE_BUILD_TYPE=Release -DFK_OTHER_BUILD="$WIN_BUILD" >/dev/null
    cmake --build "$WIN64_BUILD" -j "$JOBS"
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

stop_wine() {  # the wineservers of both trees' prefixes, and no other
    local tree
    for tree in "$WIN_BUILD" "$WIN64_BUILD"; do
        [ -d "$tree/wineprefix" ] || continue
        WINEPREFIX="$tree/wineprefix" wineserver -k >/dev/null 2>&1 || true
    done
}
