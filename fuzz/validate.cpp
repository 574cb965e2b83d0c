// Fuzz target: validation's text routines. The first byte picks one of two
// groups, each as many runs as the other:
// - dates (twDateToTM, twTMToDate, twDateCmp, twIsDateValid,
//   twIsTimeValid): a routine byte, a form byte, a separator and then either
//   a text or twice six 32-bit field values. twTMToDate writes into a heap
//   block of exactly 12 bytes, the room its callers make.
// - range (fk::RangeTest, fk::ChoiceTest) for every type code: a type byte,
//   a routine byte, the value (a number, or a text, or the fields of a date)
//   and the range or choice text. The value lies in a heap block of exactly
//   its type's size; the comparison handed in checks every bound and item it
//   is given: terminated, never more than the 80 characters a bound holds.
#include <string>

#include "support/input.h"
#include "validate/text/dates.h"
#include "validate/text/range_parse.h"

namespace {

using namespace fuzz;

bool known(int32_t form) { return form == 1 || form == 2 || form == 4 || form == 8 || form == 16 || form == 32; }

// A calendar date that form writes and reads back: two-digit forms keep years
// 0-99, four-digit ones 1900-9999.
bool writable(const struct tm& d, int32_t form) {
    const bool fourDigits = form == 2 || form == 8 || form == 32;
    return known(form) && twIsDateValid(&d) != 0 && d.tm_mday != 0 && d.tm_year >= 0 &&
           d.tm_year <= (fourDigits ? 8099 : 99);
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
    check(known(form) || (n == 0 && buffer.get()[0] == 0), "an unknown form writes nothing", shown(d));
    check(buffer.terminated() && n >= 0 && n <= 11 && buffer.str().size() == static_cast<size_t>(n),
          "twTMToDate returns the length it wrote", shown(d));
    return buffer.str();
}

void checkValidity(const struct tm& d) {
    const int32_t date = twIsDateValid(&d);
    const bool time = d.tm_sec >= 0 && d.tm_sec <= 59 && d.tm_min >= 0 && d.tm_min <= 59 && d.tm_hour >= 0 &&
                      d.tm_hour <= 23;
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

enum class Kind { Whole, Real, Text, Date, None };

Kind kindOf(int32_t type) {
    if (type == 1 || type == 2) return Kind::Whole;
    if (type == 3 || type == 12) return Kind::Real;
    if (type == 4) return Kind::Text;
    if (type == 5 || (type >= 13 && type <= 18)) return Kind::Date;
    return Kind::None;
}

const char* g_value = nullptr;  // the text value handed to the routine
int32_t g_calls = 0;

int32_t compare(const char* value, const char* piece) {
    ++g_calls;
    check(value == g_value, "the value is handed to the comparison as it is");
    check(piece != nullptr && strlen(piece) <= static_cast<size_t>(fk::kBoundMax), "a bound holds at most 80",
          piece != nullptr ? piece : "");
    return strcmp(value, piece);
}

int32_t equal(const char* value, const char* item) {
    const size_t n = strlen(item);
    check(strchr(item, ')') == nullptr && (n == 0 || (item[0] != ' ' && item[n - 1] != ' ')),
          "a choice item comes without blanks around it and without \")\"", item);
    return compare(value, item);
}

// The value of a type in a block of its own size.
struct Value {
    Kind kind;
    std::unique_ptr<int32_t> whole;
    std::unique_ptr<double> real;
    std::unique_ptr<Heap> text;
    std::unique_ptr<struct tm> date;
    int64_t number = 0;  // whole and real values

    const void* get() const {
        if (kind == Kind::Real) return real.get();
        if (kind == Kind::Text) return text->get();
        return kind == Kind::Date ? static_cast<const void*>(date.get()) : whole.get();
    }
};

// The test of text (range or choice) on v: 0 or 1, the text left alone.
int32_t run(bool range, int32_t type, const Value& v, const std::string& text) {
    Heap t(text);
    const int32_t r = range ? fk::RangeTest(type, v.get(), t.get(), compare) : fk::ChoiceTest(type, v.get(), t.get(), equal);
    check((r == 0 || r == 1) && t.str() == text, "a test is 0 or 1 and leaves its text alone", text);
    return r;
}

int32_t range(int32_t type, const Value& v, const std::string& text) { return run(true, type, v, text); }
int32_t choice(int32_t type, const Value& v, const std::string& text) { return run(false, type, v, text); }

// What holds whatever the text: no bounds at all let every value in, a text
// item equal to the value matches, numbers obey their bounds.
void properties(int32_t type, const Value& v, Input& in) {
    if (v.kind == Kind::None)
        return check(range(type, v, "@RNG(,)") == 0 && choice(type, v, "@CHC(1)") == 0, "an unknown type fails");
    check(range(type, v, "@RNG(,)") == 1, "a group without bounds takes every value");
    check(range(type, v, "@RNG(") == 0 && choice(type, v, "@CHC(") == 0, "an unfinished group fails");
    std::string own;  // the value as a bound
    if (v.kind == Kind::Text) {
        own = v.text->str();
        if (own.size() > static_cast<size_t>(fk::kBoundMax) || own.find_first_of(",)") != std::string::npos) return;
        check(range(type, v, "@RNG(" + own + "," + own + ")") == 1, "a text lies between itself and itself", own);
        if (!own.empty() && own.front() != ' ' && own.back() != ' ')
            check(choice(type, v, "@CHC(x," + own + " ,y)") == 1, "a text is one of a list holding it", own);
    }
    // A calendar date written in its type's form is within itself and one of
    // a list holding it.
    if (v.kind == Kind::Date && writable(*v.date, fk::DateFormOf(type))) {
        char text[12];
        twTMToDate(text, v.date.get(), fk::DateFormOf(type), (in.byte() & 1) != 0 ? '.' : '-');
        own = text;
        check(range(type, v, "@RNG(" + own + "," + own + ")") == 1, "a date lies between itself and itself", own);
        check(choice(type, v, "@CHC(01/01/01," + own + ")") == 1, "a date is one of a list holding it", own);
    }
    if (v.kind != Kind::Whole && v.kind != Kind::Real) return;
    // Bounds as whole numbers; the value may be a quarter for real types.
    const int64_t low = in.signedNumber(), high = in.signedNumber();
    const double value = v.kind == Kind::Whole ? *v.whole : *v.real;
    const bool inside = value >= static_cast<double>(low) && value <= static_cast<double>(high);
    const std::string group = "(" + std::to_string(low) + "," + std::to_string(high) + ")";
    check(range(type, v, "@RNG(,0)" + group) == (inside || value <= 0), "a failing group moves on to the next", group);
    check(range(type, v, "@RNG" + group) == inside, "numbers obey their bounds", group);
    if (v.kind == Kind::Whole)
        check(choice(type, v, "@CHC(" + std::to_string(low) + "," + std::to_string(v.number) + ")") == 1,
              "a number is one of a list holding it", group);
}

void ranges(Input& in) {
    const uint8_t t = in.byte();
    const int32_t type = t < 0xF0 ? 1 + t % 18 : static_cast<int32_t>(t) - 0xF8;  // 1-18, now and then -8..7
    const uint8_t op = in.byte();
    Value v;
    v.kind = kindOf(type);
    if (v.kind == Kind::Text) {
        v.text = std::make_unique<Heap>(in.text(120));
    } else if (v.kind == Kind::Date) {
        v.date = std::make_unique<struct tm>(in.date());
    } else {
        v.number = in.signedNumber();
        v.whole = std::make_unique<int32_t>(static_cast<int32_t>(v.number));
        v.real = std::make_unique<double>(static_cast<double>(v.number) / ((in.byte() & 1) != 0 ? 4 : 1));
    }
    g_value = v.kind == Kind::Text ? v.text->get() : nullptr;
    g_calls = 0;
    run(op % 2 == 0, type, v, in.text());
    check(v.kind == Kind::Text || g_calls == 0, "only texts are compared by the caller's routine");
    properties(type, v, in);
}

}  // namespace

FK_FUZZ_ROUTINES(dates, ranges)
