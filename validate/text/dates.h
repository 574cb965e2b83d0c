// Dates and times held in the standard broken-down time structure, and their
// fixed-width text forms ("12/31/99", "31.12.1999", "1999-12-31", ...).
//
// Pure routines: no windows.h here, so they build natively as well. Only the
// fields are touched by name (day, month, years since 1900 for dates), since
// the structure is larger on some native platforms.
#pragma once

#include <stdint.h>
#include <time.h>

#include "strings/fk_api.h"

#ifdef __cplusplus
extern "C" {
#endif

// Writes the date in the given form (1, 2, 4, 8, 16 or 32) with the separator
// between its parts; returns the number of characters written (0 for an
// unknown form). At most 11 characters and a terminator are written.
int32_t FK_API twTMToDate(char* buffer, const struct tm* date, int32_t form, char separator);
// Reads day, month and year of text in the given form; other fields stay.
void FK_API twDateToTM(struct tm* date, const char* text, int32_t form);
// 1 when a is later than b, -1 when earlier, 0 on the same day.
int32_t FK_API twDateCmp(const struct tm* a, const struct tm* b);
// Nonzero for the empty date and for calendar dates.
int32_t FK_API twIsDateValid(const struct tm* date);
// Nonzero when seconds, minutes and hours are in range.
int32_t FK_API twIsTimeValid(const struct tm* time);
// Fills time with the local time now; returns the runtime's own structure.
struct tm* FK_API twTimeNow(struct tm* time);

#ifdef __cplusplus
}
#endif

#ifdef __cplusplus
namespace fk {
// Decimal text to a 32-bit number the way atol reads it: leading blanks, an
// optional sign, digits up to the first other character; out-of-range values
// stop at the 32-bit limits.
int32_t TextToLong(const char* text);
// True for the empty date: day 0, month -1 (or 0 when zeroMonth) and year 0.
bool IsEmptyDate(const struct tm* date, bool zeroMonth);
}  // namespace fk
#endif
