// Fuzz target: dates (twDateToTM, twTMToDate, twDateCmp, twIsDateValid,
// twIsTimeValid). An input is a routine byte, a form byte, a separator and
// then either a text or twice six 32-bit field values. twTMToDate writes into
// a heap block of exactly 12 bytes, the room its callers make.
#include <string>

#include "support/calendar.h"
#include "support/input.h"

namespace {

using namespace fuzz;

std::string shown(const struct tm& d) {
    return std::to_string(d.tm_year) + "/" + std::to_string(d.tm_mon) + "/" + std::to_string(d.tm_mday);
}

// Writes d in form; checks the 12-byte contract and returns the text.
std::string toText(const struct tm& d, int32_t form, char separator) {
    Heap buffer(std::string(), 12, 'B');
    const struct tm before = d;
    const int32_t n = twTMToDate(buffer.get(), &d, form, separator);
    check(memcmp(&before, &d, sizeof d) == 0, "twTMToDate leaves the date alone", shown(d));
    check(known(form) || (n == 0 && buffer.get()[0] == 0), "an unknown form writes nothing", shown(d));
    check(buffer.terminated() && n >= 0 && n <= 11 && buffer.str().size() == static_cast<size_t>(n),
          "twTMToDate returns the length it wrote", shown(d));
    return buffer.str();
}

void checkValidity(const struct tm& d) {
    const int32_t date = twIsDateValid(&d);
    const bool time =
        d.tm_sec >= 0 && d.tm_sec <= 59 && d.tm_min >= 0 && d.tm_min <= 59 && d.tm_hour >= 0 && d.tm_hour <= 23;
    check(date == 0 || date == 1, "twIsDateValid is 0 or 1", shown(d));
    check(twIsTimeValid(&d) == time, "twIsTimeValid checks the ranges", shown(d));
    const bool empty = d.tm_mday == 0 && d.tm_year == 0 && (d.tm_mon == -1 || d.tm_mon == 0);
    check(empty || date == 0 || (d.tm_mon >= 0 && d.tm_mon <= 11 && d.tm_mday >= 1 && d.tm_mday <= 31),
          "a valid date has a month and a day", shown(d));
}

void fromText(const std::string& text, int32_t form) {
    Heap t(text);
    struct tm d;
    memset(&d, 0x5A, sizeof d);
    twDateToTM(&d, t.get(), form);
    check(t.str() == text, "twDateToTM leaves the text alone", text);
    // Only day, month and year change, and only in a known form.
    struct tm before;
    memset(&before, 0x5A, sizeof before);
    if (known(form)) before.tm_mday = d.tm_mday, before.tm_mon = d.tm_mon, before.tm_year = d.tm_year;
    check(memcmp(&before, &d, sizeof d) == 0, "twDateToTM touches only day, month and year", text);
    // Only the first twelve characters count.
    struct tm cut;
    memset(&cut, 0x5A, sizeof cut);
    twDateToTM(&cut, text.substr(0, 12).c_str(), form);
    check(memcmp(&cut, &d, sizeof d) == 0, "twDateToTM reads twelve characters", text);
    checkValidity(d);
    toText(d, form, '/');
}

struct tm fields(Input& in) {
    struct tm d = in.date();
    d.tm_hour = in.signedNumber();
    d.tm_min = in.signedNumber();
    d.tm_sec = in.signedNumber();
    return d;
}

void fromFields(Input& in, int32_t form, char separator) {
    const struct tm d = fields(in), e = fields(in);
    checkValidity(d);
    const std::string text = toText(d, form, separator);

    // Antisymmetric, and the same day compares equal.
    const int32_t ab = twDateCmp(&d, &e);
    const bool sameDay = d.tm_year == e.tm_year && d.tm_mon == e.tm_mon && d.tm_mday == e.tm_mday;
    check((ab == 0 || ab == 1 || ab == -1) && ab == -twDateCmp(&e, &d), "twDateCmp is antisymmetric", shown(d));
    check(twDateCmp(&d, &d) == 0, "a date equals itself", shown(d));
    check(ab == 0 || !sameDay, "only day, month and year are compared", shown(d) + "|" + shown(e));

    // A calendar date written in a form reads back, with any separator that
    // ends a number.
    if (isDigit(separator) || separator == 0 || !writable(d, form)) return;
    struct tm back = {};
    twDateToTM(&back, text.c_str(), form);
    check(twDateCmp(&back, &d) == 0, "a written date reads back", shown(d) + " " + text);
}

void dates(Input& in) {
    const uint8_t op = in.byte(), f = in.byte();
    // Mostly the six real forms, sometimes any number.
    const int32_t form = f < 0xC0 ? 1 << (f % 6) : static_cast<int32_t>(f) - 0xC0 - 8;
    const char separator = in.ch();
    if (op % 2 == 0)
        fromText(in.text(), form);
    else
        fromFields(in, form, separator);
}

}  // namespace

FK_FUZZ_ROUTINES(dates)
