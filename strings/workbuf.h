// The library-wide work buffer of the numeric text routines.
//
// lstrright, lstrnocomma, lstrnodecp, lstrcomma, lstrdecp and lstrinsc build
// their result here and copy it back into the caller's text. The library runs
// on the one thread that owns the dialogs, so a single buffer serves them all;
// the routines are not reentrant.
//
// Never hand g_numWork itself to one of these routines as its text: the result
// is built over the text it is read from.
#pragma once

#include <stdint.h>

namespace fk {

// 159 characters and the terminator.
constexpr int32_t kNumWorkSize = 160;
constexpr int32_t kNumWorkMax = kNumWorkSize - 1;

// One definition for the whole library (inline variable).
inline char g_numWork[kNumWorkSize] = {};

}  // namespace fk
