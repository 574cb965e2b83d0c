#!/usr/bin/env bash
# Installs what a fresh Debian 12 machine lacks to build and test FieldKit:
# i386 multiarch, the i686 mingw-w64 cross compiler, 32-bit Wine, Xvfb, CMake
# and clang with libFuzzer.
# Does nothing when everything is already present.
set -u

need=()
command -v i686-w64-mingw32-g++-posix >/dev/null 2>&1 || need+=(gcc-mingw-w64-i686 g++-mingw-w64-i686 binutils-mingw-w64-i686)
command -v wine >/dev/null 2>&1 || need+=(wine wine32 wine64)
[ -e /usr/lib/wine/wine ] || [ -e /usr/lib/i386-linux-gnu/wine ] || dpkg -s wine32 >/dev/null 2>&1 || need+=(wine32)
command -v Xvfb >/dev/null 2>&1 || need+=(xvfb)
command -v xauth >/dev/null 2>&1 || need+=(xauth)
command -v cmake >/dev/null 2>&1 || need+=(cmake)
[ -f /usr/src/googletest/CMakeLists.txt ] || need+=(googletest)
[ -f /usr/include/gtest/gtest.h ] || need+=(libgtest-dev)
command -v python3 >/dev/null 2>&1 || need+=(python3)
# The fuzz targets: clang with libFuzzer's runtime (a package of its own).
command -v clang++ >/dev/null 2>&1 || need+=(clang)
[ -f "$(clang++ -print-file-name=libclang_rt.fuzzer-x86_64.a 2>/dev/null)" ] || need+=(libclang-rt-14-dev)

if [ ${#need[@]} -eq 0 ]; then
    exit 0
fi

SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
export DEBIAN_FRONTEND=noninteractive

echo "setup: installing ${need[*]}"
if ! dpkg --print-foreign-architectures | grep -qx i386; then
    $SUDO dpkg --add-architecture i386
fi
# The i386 security index is sometimes broken; the packages we need are still found.
$SUDO apt-get update -q || echo "setup: apt-get update reported errors; going on"

pkgs=(gcc-mingw-w64-i686 g++-mingw-w64-i686 binutils-mingw-w64-i686 wine wine32 wine64 xvfb xauth cmake googletest
      libgtest-dev python3 clang libclang-rt-14-dev)
if ! $SUDO apt-get install -y -q --no-install-recommends "${pkgs[@]}"; then
    echo "setup: retrying with the bookworm release pinned"
    $SUDO apt-get install -y -q --no-install-recommends -t bookworm "${pkgs[@]}" || {
        echo "setup: could not install ${pkgs[*]}" >&2
        exit 1
    }
fi
exit 0
