// The calendar rules the date targets share (dates, range).
#pragma once

#include <time.h>

#include "validate/text/dates.h"

namespace fuzz {

inline bool known(int32_t form) { return form == 1 || form == 2 || form == 4 || form == 8 || form == 16 || form == 32; }

// A calendar date that form writes and reads back: two-digit forms keep years
// 0-99, four-digit ones 1900-9999.
inline bool writable(const struct tm& d, int32_t form) {
    const bool fourDigits = form == 2 || form == 8 || form == 32;
    return known(form) && twIsDateValid(&d) != 0 && d.tm_mday != 0 && d.tm_year >= 0 &&
           d.tm_year <= (fourDigits ? 8099 : 99);
}

}  // namespace fuzz
