// Range ("@RNG(low,high)(low,high)...") and choice ("@CHC(a,b,c)") tests on
// a binary value of a given type code.
//
// Pure routines: no windows.h here, so they build and fuzz natively. The
// text comparison, which on Windows is the locale-aware one of the system,
// is handed in by the caller.
#pragma once

#include <stdint.h>

namespace fk {

// Longest bound or choice item; when this many characters are gathered the
// next character ends the bound or item, whatever it is.
inline constexpr int32_t kBoundMax = 80;

// strcmp-style comparison of two texts.
using TextCompare = int32_t (*)(const char* a, const char* b);

// The value a type code points to: 1 and 2 a signed 32-bit number, 3 and 12
// a double, 4 a text, 5 and 13-18 a date structure (struct tm). Any other
// code fails both tests.
//
// 1 when the value lies in one of the groups of text (which starts at the
// range keyword), else 0. compare orders texts for code 4.
int32_t RangeTest(int32_t type, const void* value, const char* text, TextCompare compare);

// 1 when the value equals one of the items of the first parenthesised group
// of text (which starts at the choice keyword), else 0. equal compares texts
// for code 4 (0 means equal).
int32_t ChoiceTest(int32_t type, const void* value, const char* text, TextCompare equal);

// The date form that bounds and items of a date type code are read in
// (code 5 reads as 13); 0 for a code that is not a date.
int32_t DateFormOf(int32_t type);

}  // namespace fk
