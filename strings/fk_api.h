// Calling convention of the exported routines. The text routines build for
// 32-bit Windows (stdcall, exported from FLDKIT32.dll) and natively on the
// build machine (plain C calls), so that they can be tested and fuzzed there.
#pragma once

#if defined(_WIN32) && !defined(_WIN64)
#define FK_API __stdcall
#else
#define FK_API
#endif
