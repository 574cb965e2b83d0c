// Method strings: reading and editing "@KEYWORD(argument)" items.
//
// Pure routines: no windows.h here, so they build natively as well.
#pragma once

#include <stdint.h>

#include "../strings/fk_api.h"

#ifdef __cplusplus
extern "C" {
#endif

// Finds keyword (with its "@") and copies its argument into argument (may be
// null). method must be writable and keep two spare bytes behind its
// terminator. Returns 1 when the keyword occurs, 0 when it does not.
int32_t FK_API twGetMethodParam(char* method, const char* keyword, char* argument);
// Replaces any item with item's keyword by item, appended at the end.
int32_t FK_API twAddMethodParam(char* method, const char* item);
// Removes the first item whose keyword matches item's keyword.
int32_t FK_API twRemoveMethodParam(char* method, const char* item);

#ifdef __cplusplus
}
#endif
