#!/usr/bin/env bash
# Installs what a fresh Debian 12 machine lacks to build and test FieldKit:
# i386 multiarch, the i686 and x86-64 mingw-w64 cross compilers, 32-bit and
# 64-bit Wine, Xvfb, CMake
# and clang with libFuzzer. Then makes sure 32-bit programs (32-bit Wine) can
# run: natively where the kernel runs them, otherwise under QEMU's user-mode
# emulator, registered for i386 programs with the kernel's binfmt_misc.
# Does nothing, and prints nothing, when everything is already in place.
#
#   FK_I386=auto      (default) run 32-bit programs natively when the machine can
#   FK_I386=emulate   always through the emulator (to try what CI machines do)
#   FK_I386=native    never through the emulator: switch off our registration
set -u

SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
export DEBIAN_FRONTEND=noninteractive

fail() {  # one clear message, then stop
    echo "setup: $*" >&2
    exit 1
}

install_packages() {
    local need=()
    command -v i686-w64-mingw32-g++-posix >/dev/null 2>&1 || need+=(gcc-mingw-w64-i686 g++-mingw-w64-i686 binutils-mingw-w64-i686)
    command -v x86_64-w64-mingw32-g++-posix >/dev/null 2>&1 || need+=(gcc-mingw-w64-x86-64 g++-mingw-w64-x86-64 binutils-mingw-w64-x86-64)
    [ -e /usr/lib/wine/wine64 ] || need+=(wine64)
    command -v wine >/dev/null 2>&1 || need+=(wine wine32 wine64)
    [ -e /usr/lib/wine/wine ] || [ -e /usr/lib/i386-linux-gnu/wine ] || dpkg -s wine32 >/dev/null 2>&1 || need+=(wine32)
    command -v Xvfb >/dev/null 2>&1 || need+=(xvfb)
    command -v xauth >/dev/null 2>&1 || need+=(xauth)
    command -v cmake >/dev/null 2>&1 || need+=(cmake)
    [ -f /usr/src/googletest/CMakeLists.txt ] || need+=(googletest)
    [ -f /usr/include/gtest/gtest.h ] || need+=(libgtest-dev)
    [ -f /usr/include/benchmark/benchmark.h ] || need+=(libbenchmark-dev)
    command -v python3 >/dev/null 2>&1 || need+=(python3)
    # The fuzz targets: clang with libFuzzer's runtime (a package of its own).
    command -v clang++ >/dev/null 2>&1 || need+=(clang)
    [ -f "$(clang++ -print-file-name=libclang_rt.fuzzer-x86_64.a 2>/dev/null)" ] || need+=(libclang-rt-14-dev)
    # Microsoft's import-library format and the link test of it; pkg-config for the package test.
    command -v llvm-dlltool >/dev/null 2>&1 || need+=(llvm)
    command -v lld-link >/dev/null 2>&1 || need+=(lld)
    command -v pkg-config >/dev/null 2>&1 || need+=(pkg-config)
    [ ${#need[@]} -eq 0 ] && return 0

    echo "setup: installing ${need[*]}"
    if ! dpkg --print-foreign-architectures | grep -qx i386; then
        $SUDO dpkg --add-architecture i386
    fi
    # The i386 security index is sometimes broken; the packages we need are still found.
    $SUDO apt-get update -q || echo "setup: apt-get update reported errors; going on"

    local pkgs=(gcc-mingw-w64-i686 g++-mingw-w64-i686 binutils-mingw-w64-i686
                gcc-mingw-w64-x86-64 g++-mingw-w64-x86-64 binutils-mingw-w64-x86-64 wine wine32 wine64 xvfb xauth cmake
                googletest libgtest-dev libbenchmark-dev python3 clang libclang-rt-14-dev llvm lld pkg-config)
    if ! $SUDO apt-get install -y -q --no-install-recommends "${pkgs[@]}"; then
        echo "setup: retrying with the bookworm release pinned"
        $SUDO apt-get install -y -q --no-install-recommends -t bookworm "${pkgs[@]}" ||
            fail "could not install ${pkgs[*]}"
    fi
}

# --- 32-bit programs -------------------------------------------------------

BINFMT=/proc/sys/fs/binfmt_misc
WHY="this machine cannot run 32-bit programs"
OURS=fieldkit-i386
QEMU=/usr/bin/qemu-i386
QEMU_MAJOR_NEEDED=10  # older emulators make a new Wine prefix take minutes and break Wine's pipes
# The i386 ELF header: executables and shared objects (types 2 and 3), as
# QEMU's own binfmt configuration writes it.
I386_MAGIC='\x7fELF\x01\x01\x01\x00\x00\x00\x00\x00\x00\x00\x00\x00\x02\x00\x03\x00'
I386_MASK='\xff\xff\xff\xff\xff\xfe\xfe\x00\xff\xff\xff\xff\xff\xff\xff\xff\xfe\xff\xff\xff'

runs_i386() {  # the 32-bit dynamic loader of i386 multiarch starts
    [ -e /lib/ld-linux.so.2 ] || fail "/lib/ld-linux.so.2 is missing: the i386 C library (libc6:i386) did not install"
    /lib/ld-linux.so.2 --version >/dev/null 2>&1
}

qemu_major() {  # the major version of an emulator binary, 0 when it is not QEMU
    local v
    v=$("$1" --version 2>/dev/null | sed -n 's/^qemu-[a-z0-9_]* version \([0-9]*\)\..*/\1/p' | head -n1)
    echo "${v:-0}"
}

i386_entries() {  # binfmt_misc entries that match i386 programs, enabled or not
    local f
    for f in "$BINFMT"/*; do
        case "${f##*/}" in register | status) continue ;; esac
        [ -f "$f" ] || continue
        # magic: 7f 'E' 'L' 'F', 32-bit, little-endian ... e_machine 3 (bytes 18 and 19)
        grep -q '^offset 0$' "$f" 2>/dev/null || continue
        grep -qE '^magic 7f454c460101[0-9a-f]{24}0300' "$f" 2>/dev/null && echo "$f"
    done
}

entry_enabled() { head -n1 "$1" 2>/dev/null | grep -qx enabled; }
entry_interpreter() { sed -n 's/^interpreter //p' "$1" 2>/dev/null; }

write_binfmt() {  # text to a binfmt_misc file; fails with a reason instead of a shell error
    local text=$1 file=$2
    if [ -n "$SUDO" ]; then
        printf '%s' "$text" | sudo tee "$file" >/dev/null 2>&1
    else
        (printf '%s' "$text" >"$file") 2>/dev/null
    fi
}

mount_binfmt() {
    [ -e "$BINFMT/register" ] && return 0
    [ -d "$BINFMT" ] || fail "this kernel has no binfmt_misc ($BINFMT is missing): load it with 'modprobe binfmt_misc' on the host, or use a kernel with CONFIG_BINFMT_MISC"
    $SUDO mount -t binfmt_misc binfmt_misc "$BINFMT" 2>/dev/null ||
        fail "could not mount binfmt_misc on $BINFMT (a container without the right to mount?): run 'mount -t binfmt_misc binfmt_misc $BINFMT' as root on the host, then run this script again"
}

install_qemu() {
    local have
    have=$( [ -x "$QEMU" ] && qemu_major "$QEMU" || echo 0)
    [ "$have" -ge "$QEMU_MAJOR_NEEDED" ] && return 0
    command -v apt-get >/dev/null 2>&1 ||
        fail "$WHY, and this machine has no apt-get to install QEMU $QEMU_MAJOR_NEEDED's qemu-user: install it by hand ($QEMU)"
    local codename mirror candidate
    codename=$(. /etc/os-release 2>/dev/null && echo "${VERSION_CODENAME:-}")
    candidate=$(apt-cache policy qemu-user 2>/dev/null | sed -n 's/^ *Candidate: \(1:\)\{0,1\}\([0-9]*\)\..*/\2/p')
    if [ "${candidate:-0}" -lt "$QEMU_MAJOR_NEEDED" ]; then
        # Debian 12 has QEMU 7.2; its backports suite has QEMU 10, from the mirror the machine already uses.
        [ -n "$codename" ] || fail "cannot tell this system's release (/etc/os-release): install QEMU $QEMU_MAJOR_NEEDED's qemu-user by hand"
        mirror=$(apt-get indextargets --format '$(REPO_URI) $(RELEASE)' 2>/dev/null | awk -v r="$codename" '$2 == r {print $1; exit}')
        [ -n "$mirror" ] || fail "no apt source for '$codename' to take its backports suite from: add '$codename-backports' to the apt sources"
        echo "setup: $WHY; adding $codename-backports ($mirror) for QEMU $QEMU_MAJOR_NEEDED"
        printf 'Types: deb\nURIs: %s\nSuites: %s-backports\nComponents: main\nSigned-By: /usr/share/keyrings/debian-archive-keyring.gpg\n' \
            "$mirror" "$codename" | $SUDO tee /etc/apt/sources.list.d/fieldkit-backports.sources >/dev/null
        $SUDO apt-get update -q >/dev/null 2>&1 || echo "setup: apt-get update reported errors; going on"
        echo "setup: installing qemu-user from $codename-backports"
        $SUDO apt-get install -y -q --no-install-recommends -t "$codename-backports" qemu-user >/dev/null ||
            fail "could not install qemu-user from $codename-backports: is the suite on the mirror ($mirror)? Install QEMU $QEMU_MAJOR_NEEDED or later as $QEMU by hand"
    else
        echo "setup: $WHY; installing qemu-user"
        $SUDO apt-get install -y -q --no-install-recommends qemu-user >/dev/null || fail "could not install qemu-user"
    fi
    have=$( [ -x "$QEMU" ] && qemu_major "$QEMU" || echo 0)
    [ "$have" -ge "$QEMU_MAJOR_NEEDED" ] || fail "$QEMU is QEMU $have after the install; QEMU $QEMU_MAJOR_NEEDED or later is needed"
}

# Entries of others that send i386 programs to an emulator too old for Wine
# (or to something that is not QEMU) are switched off, not removed: writing 1
# to the entry brings one back.
disable_unfit_entries() {
    local e interp
    for e in $(i386_entries); do
        [ "${e##*/}" = "$OURS" ] && continue
        entry_enabled "$e" || continue
        interp=$(entry_interpreter "$e")
        [ "$(qemu_major "$interp")" -ge "$QEMU_MAJOR_NEEDED" ] && continue
        echo "setup: switching off the binfmt_misc entry ${e##*/} (i386 programs to $interp, not QEMU $QEMU_MAJOR_NEEDED or later)"
        write_binfmt 0 "$e" || fail "cannot switch off $e (read-only, or not root): run 'echo 0 > $e' as root, then this script again"
    done
}

fit_entry_enabled() {  # some enabled i386 entry runs QEMU 10 or later
    local e
    for e in $(i386_entries); do
        entry_enabled "$e" && [ "$(qemu_major "$(entry_interpreter "$e")")" -ge "$QEMU_MAJOR_NEEDED" ] && return 0
    done
    return 1
}

register_ours() {
    local e="$BINFMT/$OURS"
    if [ -e "$e" ] && [ "$(entry_interpreter "$e")" != "$QEMU" ]; then
        write_binfmt -1 "$e" || fail "cannot remove the stale entry $e: run 'echo -1 > $e' as root"
    fi
    if [ -e "$e" ]; then
        entry_enabled "$e" && return 0
        echo "setup: switching on the binfmt_misc entry $OURS"
        write_binfmt 1 "$e" || fail "cannot switch on $e (read-only, or not root): run 'echo 1 > $e' as root"
        return 0
    fi
    echo "setup: registering $QEMU for i386 programs with binfmt_misc ($OURS)"
    # F: the kernel opens the emulator now, so it is found from any mount namespace.
    write_binfmt ":$OURS:M::$I386_MAGIC:$I386_MASK:$QEMU:F" "$BINFMT/register" ||
        fail "cannot write $BINFMT/register (read-only: a container without privileges?): register the entry on the host, as root: echo ':$OURS:M::$I386_MAGIC:$I386_MASK:$QEMU:F' > $BINFMT/register"
}

ensure_i386() {
    local mode=${FK_I386:-auto}
    case "$mode" in auto | emulate | native) ;; *) fail "FK_I386 must be auto, emulate or native, not '$mode'" ;; esac
    if [ "$mode" = native ]; then
        [ -e "$BINFMT/$OURS" ] && entry_enabled "$BINFMT/$OURS" && {
            echo "setup: switching off the binfmt_misc entry $OURS"
            write_binfmt 0 "$BINFMT/$OURS" || fail "cannot switch off $BINFMT/$OURS"
        }
        runs_i386 || fail "this machine cannot run 32-bit programs natively (FK_I386=native)"
        return 0
    fi
    # Nothing to do when 32-bit programs run, natively or through a fit emulator.
    if [ "$mode" = auto ] && runs_i386; then
        [ -e "$BINFMT/register" ] || return 0
        [ -z "$(i386_entries)" ] && return 0
        fit_entry_enabled && return 0
        local e any=""
        for e in $(i386_entries); do entry_enabled "$e" && any=1; done
        [ -z "$any" ] && return 0
    fi
    [ "$mode" = emulate ] && fit_entry_enabled && runs_i386 && return 0
    [ "$mode" = emulate ] && WHY="32-bit programs are to run emulated (FK_I386=emulate)"
    [ -n "$SUDO" ] && ! sudo -n true 2>/dev/null &&
        fail "$WHY, and setting up the emulator needs root: run 'sudo scripts/setup.sh' once"
    mount_binfmt
    disable_unfit_entries
    if [ "$mode" = auto ] && ! fit_entry_enabled && runs_i386; then
        return 0  # runs natively once the unfit entry is off
    fi
    if ! fit_entry_enabled; then
        install_qemu
        register_ours
    fi
    runs_i386 || fail "32-bit programs still do not start through $QEMU: '/lib/ld-linux.so.2 --version' fails; check 'cat $BINFMT/$OURS'"
}

install_packages
ensure_i386
exit 0
