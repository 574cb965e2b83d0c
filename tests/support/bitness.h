// What a test that reads the DLL's window words or records directly needs to
// know about the build it runs in: FLDKIT32.dll's figures or FLDKIT64.dll's.
#pragma once

#include <windows.h>

namespace fktest {

inline constexpr bool kWide = sizeof(void*) == 8;

// A figure of the 32-bit build or of the 64-bit one (a position, a size).
constexpr int Bits(int bits32, int bits64) { return kWide ? bits64 : bits32; }

// The text a pointer word holds (a method string, a mask): at32 in the
// 32-bit build, at64 in the 64-bit one.
inline const char* TextWord(HWND h, int at32, int at64) {
    return reinterpret_cast<const char*>(GetWindowLongPtrA(h, Bits(at32, at64)));
}

}  // namespace fktest
