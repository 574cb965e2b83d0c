// Fuzz target: dates (twDateToTM, twTMToDate, twDateCmp, twIsDateValid,
// twIsTimeValid). An input is a routine byte, a form byte, a separator and
// then either a text or six 32-bit field values. twTMToDate writes into a
// heap block of exactly 12 bytes, the room its callers make.
#include <string.h>
#include <time.h>

#include <string>

#include "support/input.h"
#include "validate/text/dates.h"

namespace {

using fuzz::check;
using fuzz::Heap;
using fuzz::Input;

constexpr int32_t kForms[] = {1, 2, 4, 8, 16, 32};

int32_t formOf(uint8_t b) {
    // Mostly the six real forms, sometimes any number.
    return b < 0xC0 ? kForms[b % 6] : static_cast<int32_t>(b) - 0xC0 - 8;
}

bool known(int32_t form) {
    for (int32_t f : kForms)
        if (f == form) return true;
    return false;
}

struct tm fields(Input& in) {
    struct tm d;
    memset(&d, 0x5A, sizeof d);
    d.tm_year = in.signedNumber();
    d.tm_mon = in.signedNumber();
    d.tm_mday = in.signedNumber();
    d.tm_hour = in.signedNumber();
    d.tm_min = in.signedNumber();
    d.tm_sec = in.signedNumber();
    return d;
}

std::string shown(const struct tm& d) {
    return std::to_string(d.tm_year) + "/" + std::to_string(d.tm_mon) + "/" + std::to_string(d.tm_mday);
}

// Writes d in form; checks the 12-byte contract and returns the text.
std::string toText(const struct tm& d, int32_t form, char separator) {
    Heap buffer(std::string(), 12, 'B');
    const struct tm before = d;
    const int32_t n = twTMToDate(buffer.get(), &d, form, separator);
    check(memcmp(&before, &d, sizeof d) == 0, "twTMToDate leaves the date alone", shown(d));
    if (!known(form)) {
        check(n == 0 && buffer.get()[0] == 0, "an unknown form writes nothing", shown(d));
        return std::string();
    }
    check(buffer.terminated() && n >= 0 && n <= 11 && buffer.str().size() == static_cast<size_t>(n),
          "twTMToDate returns the length it wrote", shown(d));
    return buffer.str();
}

void checkValidity(const struct tm& d) {
    const int32_t date = twIsDateValid(&d);
    const int32_t time = twIsTimeValid(&d);
    check(date == 0 || date == 1, "twIsDateValid is 0 or 1", shown(d));
    check(time ==
              (d.tm_sec >= 0 && d.tm_sec <= 59 && d.tm_min >= 0 && d.tm_min <= 59 && d.tm_hour >= 0 && d.tm_hour <= 23),
          "twIsTimeValid checks the ranges", shown(d));
    const bool empty = d.tm_mday == 0 && d.tm_year == 0 && (d.tm_mon == -1 || d.tm_mon == 0);
    if (!empty) {
        check(date == 0 || (d.tm_mon >= 0 && d.tm_mon <= 11 && d.tm_mday >= 1 && d.tm_mday <= 31),
              "a valid date has a month and a day", shown(d));
    }
}

void fromText(Input& in, int32_t form) {
    const std::string text = in.rest();
    Heap t(text);
    struct tm d;
    memset(&d, 0x5A, sizeof d);
    struct tm before = d;
    twDateToTM(&d, t.get(), form);
    check(t.str() == text, "twDateToTM leaves the text alone", text);
    // Only day, month and year change.
    before.tm_mday = d.tm_mday;
    before.tm_mon = d.tm_mon;
    before.tm_year = d.tm_year;
    check(memcmp(&before, &d, sizeof d) == 0, "twDateToTM touches only day, month and year", text);
    if (!known(form)) {
        check(d.tm_mday == 0x5A5A5A5A && d.tm_mon == 0x5A5A5A5A && d.tm_year == 0x5A5A5A5A,
              "an unknown form reads nothing", text);
    }
    // Only the first twelve characters count.
    if (text.size() > 12) {
        struct tm cut;
        memset(&cut, 0x5A, sizeof cut);
        twDateToTM(&cut, text.substr(0, 12).c_str(), form);
        check(memcmp(&cut, &d, sizeof d) == 0, "twDateToTM reads twelve characters", text);
    }
    checkValidity(d);
    toText(d, form, '/');
}

void fromFields(Input& in, int32_t form, char separator) {
    const struct tm d = fields(in);
    const struct tm e = fields(in);
    checkValidity(d);
    const std::string text = toText(d, form, separator);

    // Antisymmetric, and the same day compares equal.
    const int32_t ab = twDateCmp(&d, &e);
    const int32_t ba = twDateCmp(&e, &d);
    check((ab == 0 || ab == 1 || ab == -1) && ab == -ba, "twDateCmp is antisymmetric", shown(d) + "|" + shown(e));
    check(twDateCmp(&d, &d) == 0, "a date equals itself", shown(d));
    check(ab == 0 || !(d.tm_year == e.tm_year && d.tm_mon == e.tm_mon && d.tm_mday == e.tm_mday),
          "only day, month and year are compared", shown(d) + "|" + shown(e));

    // A calendar date written in a form reads back (two-digit forms keep
    // years 0-99, four-digit ones 1900-9999), with any separator that ends a
    // number.
    const bool digit = separator >= '0' && separator <= '9';
    if (!known(form) || digit || separator == 0 || twIsDateValid(&d) == 0 || d.tm_mday == 0) return;
    const bool fourDigits = form == 2 || form == 8 || form == 32;
    if (d.tm_year < 0 || d.tm_year > (fourDigits ? 8099 : 99)) return;
    struct tm back;
    memset(&back, 0, sizeof back);
    twDateToTM(&back, text.c_str(), form);
    check(twDateCmp(&back, &d) == 0, "a written date reads back", shown(d) + " " + text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Input in(data, size);
    const uint8_t op = in.byte();
    const int32_t form = formOf(in.byte());
    const char separator = in.ch();
    if (op % 2 == 0)
        fromText(in, form);
    else
        fromFields(in, form, separator);
    return 0;
}
