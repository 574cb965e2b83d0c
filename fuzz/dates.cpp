// Fuzz target: dates (twDateToTM, twTMToDate, twDateCmp, twIsDateValid,
// twIsTimeValid). An input is a routine byte, a form byte, a separator and
// then either a text or twice six 32-bit field values. twTMToDate writes into
// a heap block of exactly 12 bytes, the room its callers make.

#include "validate/text/dates.h"
#include "support/input.h"

using namespace fuzz;

void dates(Input& in) {
    const uint8_t op = in.byte(), f = in.byte();
    // Mostly the six real forms, sometimes any number.
    const int32_t form = f < 0xC0 ? 1 << (f % 6) : static_cast<int32_t>(f) - 0xC0 - 8;
    const char separator = in.ch();
    struct tm d, e;
    memset(&d, 0x5A, sizeof d);
    if (op % 2 == 0) {
        // Only the first twelve characters count, and only day, month and year change.
        const std::string text = in.text();
        Heap t(text);
        twDateToTM(&d, t.get(), form);
        e = d;
        twDateToTM(&e, text.substr(0, 12).c_str(), form);
        check(memcmp(&d, &e, sizeof d) == 0 && d.tm_hour == 0x5A5A5A5A && d.tm_isdst == 0x5A5A5A5A, "twDateToTM", text);
    } else {
        d = in.date();
        d.tm_hour = in.signedNumber();
        d.tm_min = in.signedNumber();
        d.tm_sec = in.signedNumber();
        e = in.date();
    }
    const int32_t valid = twIsDateValid(&d), time = twIsTimeValid(&d), order = twDateCmp(&d, &e);
    check((valid | time) <= 1 && order == -twDateCmp(&e, &d) && twDateCmp(&d, &d) == 0, "twDateCmp is antisymmetric");
    Heap buffer(std::string(), 12, 'B');
    const int32_t n = twTMToDate(buffer.get(), &d, form, separator);
    check(buffer.terminated() && n >= 0 && buffer.str().size() == static_cast<size_t>(n), "twTMToDate's length");
    // A calendar date written in a form reads back, with any separator that ends a number.
    const bool four = form == 2 || form == 8 || form == 32, known = four || form == 1 || form == 4 || form == 16;
    if (!known || !valid || d.tm_mday == 0 || d.tm_year < 0 || d.tm_year > (four ? 8099 : 99) ||
        (separator >= '0' && separator <= '9') || separator == 0)
        return;
    struct tm back = {};
    twDateToTM(&back, buffer.get(), form);
    check(twDateCmp(&back, &d) == 0, "a written date reads back", buffer.str());
}

FK_FUZZ_ROUTINES(dates)
