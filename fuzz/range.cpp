// Fuzz target: range and choice tests (fk::RangeTest, fk::ChoiceTest) for
// every type code. An input is a type byte, a routine byte, the value (a
// number, or a text, or the fields of a date) and the range or choice text.
// The value lies in a heap block of exactly its type's size; the comparison
// handed in checks every bound and item it is given: terminated, never more
// than the 80 characters a bound holds.
#include <memory>
#include <string>

#include "support/calendar.h"
#include "support/input.h"
#include "validate/text/range_parse.h"

namespace {

using namespace fuzz;

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
    const int32_t r =
        range ? fk::RangeTest(type, v.get(), t.get(), compare) : fk::ChoiceTest(type, v.get(), t.get(), equal);
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

FK_FUZZ_ROUTINES(ranges)
