#!/bin/sh
# Makes the private Wine prefix of the test run. Windows are unmanaged: with
# no window manager on the private X display, Wine would otherwise wait two
# seconds for every top-level window to be withdrawn when it is destroyed.
set -e
wineboot -i
wineserver -w
wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null
wineserver -w
# A program that crashes ends at once, with its backtrace, instead of waiting
# for an answer to the crash dialog until the test's timeout.
wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f >/dev/null
wineserver -w
