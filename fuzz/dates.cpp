// Fuzz target: dates (twDateToTM, twTMToDate, twDateCmp, twIsDateValid,
// twIsTimeValid). An input is a routine byte, a form byte, a separator and
// then either a text or twice the fields of a date (the first with its time).
// twTMToDate writes into a heap block of exactly 12 bytes, the room its
// callers make; a calendar date written in a form reads back.
#include "support/input.h"
#include "validate/text/dates.h"

using namespace fuzz;

void dates(Input& in) {
    const uint8_t op = in.byte(), f = in.byte();
    const int32_t form = f < 0xC0 ? 1 << (f % 6) : static_cast<int32_t>(f) - 0xC0 - 8;  // mostly the six forms
    const char separator = in.ch();
    struct tm d, e;
    memset(&d, 0x5A, sizeof d);
    if (op % 2 == 0) {
        Heap t(in.text());
        twDateToTM(&d, t.get(), form);
        e = d;
    } else {
        d = in.date();
        d.tm_hour = in.signedNumber();
        d.tm_min = in.signedNumber();
        d.tm_sec = in.signedNumber();
        e = in.date();
    }
    const int32_t valid = twIsDateValid(&d);
    check(twIsTimeValid(&d) <= 1 && twDateCmp(&d, &e) == -twDateCmp(&e, &d) && twDateCmp(&d, &d) == 0,
          "twDateCmp is antisymmetric");
    Heap buffer(std::string(), 12, 'B');
    const int32_t n = twTMToDate(buffer.get(), &d, form, separator);
    check(buffer.terminated() && n >= 0 && buffer.str().size() == static_cast<size_t>(n), "twTMToDate's length");
    const bool four = form == 2 || form == 8 || form == 32, known = four || form == 1 || form == 4 || form == 16;
    if (!known || !valid || d.tm_mday == 0 || d.tm_year < 0 || d.tm_year > (four ? 8099 : 99) ||
        (separator >= '0' && separator <= '9') || separator == 0)
        return;
    struct tm back = {};
    twDateToTM(&back, buffer.get(), form);
    check(twDateCmp(&back, &d) == 0, "a written date reads back", buffer.str());
}

FK_FUZZ_ROUTINES(dates)
