// Fuzz target: dates (twDateToTM, twTMToDate, twDateCmp, twIsDateValid,
// twIsTimeValid). An input is a routine byte, a form byte, a separator and
// then either a text or twice the fields of a date (the first with its time).
// twTMToDate writes into a heap block of exactly 12 bytes, the room its
// callers make.
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
    check(twIsDateValid(&d) <= 1 && twIsTimeValid(&d) <= 1 && twDateCmp(&d, &e) == -twDateCmp(&e, &d) &&
              twDateCmp(&d, &d) == 0,
          "twDateCmp is antisymmetric");
    Heap buffer(std::string(), 12, 'B');
    const int32_t n = twTMToDate(buffer.get(), &d, form, separator);
    check(buffer.terminated() && n >= 0 && buffer.str().size() == static_cast<size_t>(n), "twTMToDate's length");
    twDateToTM(&e, buffer.get(), form);
}

FK_FUZZ_ROUTINE(dates)
