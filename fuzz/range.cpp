// Fuzz target: range and choice tests (fk::RangeTest, fk::ChoiceTest) for
// every type code. An input is a type byte, a routine byte, the value (a
// number, or a text, or the fields of a date) and the range or choice text.
// The value lies in a heap block of exactly its type's size; the comparison
// handed in checks every bound and item it is given: terminated, never more
// than the 80 characters a bound holds.
#include <stdlib.h>
#include <string.h>
#include <time.h>

#include <memory>
#include <string>

#include "support/input.h"
#include "validate/text/dates.h"
#include "validate/text/range_parse.h"

namespace {

using fuzz::check;
using fuzz::Heap;
using fuzz::Input;

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

void checkPiece(const char* value, const char* piece) {
    ++g_calls;
    check(value == g_value, "the value is handed to the comparison as it is");
    check(piece != nullptr && strlen(piece) <= static_cast<size_t>(fk::kBoundMax),
          "a bound holds at most 80 characters", piece != nullptr ? piece : "");
}

int32_t compare(const char* a, const char* b) {
    checkPiece(a, b);
    return strcmp(a, b);
}

int32_t equal(const char* a, const char* b) {
    checkPiece(a, b);
    const size_t n = strlen(b);
    check(strchr(b, ')') == nullptr && (n == 0 || (b[0] != ' ' && b[n - 1] != ' ')),
          "a choice item comes without blanks around it and without \")\"", b);
    return strcmp(a, b);
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
        switch (kind) {
        case Kind::Whole: return whole.get();
        case Kind::Real: return real.get();
        case Kind::Text: return text->get();
        case Kind::Date: return date.get();
        case Kind::None: break;
        }
        return whole.get();  // not read
    }
};

Value valueOf(Input& in, int32_t type) {
    Value v;
    v.kind = kindOf(type);
    switch (v.kind) {
    case Kind::Text: v.text = std::make_unique<Heap>(in.text(120)); break;
    case Kind::Date:
        v.date = std::make_unique<struct tm>();
        memset(v.date.get(), 0x5A, sizeof(struct tm));
        v.date->tm_year = in.signedNumber();
        v.date->tm_mon = in.signedNumber();
        v.date->tm_mday = in.signedNumber();
        break;
    default:
        v.number = in.signedNumber();
        v.whole = std::make_unique<int32_t>(static_cast<int32_t>(v.number));
        v.real = std::make_unique<double>(static_cast<double>(v.number) / ((in.byte() & 1) != 0 ? 4 : 1));
        break;
    }
    g_value = v.kind == Kind::Text ? v.text->get() : nullptr;
    return v;
}

int32_t range(int32_t type, const Value& v, const std::string& text) {
    Heap t(text);
    const int32_t r = fk::RangeTest(type, v.get(), t.get(), compare);
    check(r == 0 || r == 1, "RangeTest is 0 or 1", text);
    check(t.str() == text, "RangeTest leaves the text alone", text);
    return r;
}

int32_t choice(int32_t type, const Value& v, const std::string& text) {
    Heap t(text);
    const int32_t r = fk::ChoiceTest(type, v.get(), t.get(), equal);
    check(r == 0 || r == 1, "ChoiceTest is 0 or 1", text);
    check(t.str() == text, "ChoiceTest leaves the text alone", text);
    return r;
}

// What holds whatever the text: no bounds at all let every value in, a text
// item equal to the value matches, whole numbers obey their bounds.
void properties(int32_t type, const Value& v, Input& in) {
    if (v.kind == Kind::None) {
        check(range(type, v, "@RNG(,)") == 0 && choice(type, v, "@CHC(1)") == 0, "an unknown type fails both tests");
        return;
    }
    check(range(type, v, "@RNG(,)") == 1, "a group without bounds takes every value");
    check(range(type, v, "@RNG(") == 0 && choice(type, v, "@CHC(") == 0, "an unfinished group fails");
    if (v.kind == Kind::Text) {
        const std::string s = v.text->str();
        if (s.size() <= static_cast<size_t>(fk::kBoundMax) && s.find_first_of(",)") == std::string::npos) {
            check(range(type, v, "@RNG(" + s + "," + s + ")") == 1, "a text lies between itself and itself", s);
            if (!s.empty() && s.front() != ' ' && s.back() != ' ')
                check(choice(type, v, "@CHC(x," + s + " ,y)") == 1, "a text is one of a list holding it", s);
        }
    }
    if (v.kind == Kind::Date) {
        // A calendar date written in its type's form is within itself and
        // one of a list holding it.
        const struct tm& d = *v.date;
        const int32_t form = fk::DateFormOf(type);
        const bool fourDigits = form == 2 || form == 8 || form == 32;
        if (twIsDateValid(&d) != 0 && d.tm_mday != 0 && d.tm_year >= 0 && d.tm_year <= (fourDigits ? 8099 : 99)) {
            char text[12];
            twTMToDate(text, &d, form, (in.byte() & 1) != 0 ? '.' : '-');
            const std::string t = text;
            check(range(type, v, "@RNG(" + t + "," + t + ")") == 1, "a date lies between itself and itself", t);
            check(choice(type, v, "@CHC(01/01/01," + t + ")") == 1, "a date is one of a list holding it", t);
        }
    }
    if (v.kind == Kind::Whole || v.kind == Kind::Real) {
        // Bounds as whole numbers; the value may be a quarter for real types.
        const int64_t low = in.signedNumber();
        const int64_t high = in.signedNumber();
        const double value = v.kind == Kind::Whole ? *v.whole : *v.real;
        const bool inside = value >= static_cast<double>(low) && value <= static_cast<double>(high);
        const std::string group = "(" + std::to_string(low) + "," + std::to_string(high) + ")";
        check(range(type, v, "@RNG(,0)" + group) == (inside || value <= 0 ? 1 : 0),
              "a failing group moves on to the next", group);
        if (v.kind == Kind::Whole) {
            check(range(type, v, "@RNG" + group) == (inside ? 1 : 0), "whole numbers obey their bounds", group);
            check(choice(type, v, "@CHC(" + std::to_string(low) + "," + std::to_string(v.number) + ")") == 1,
                  "a number is one of a list holding it");
        } else {
            check(range(type, v, "@RNG" + group) == (inside ? 1 : 0), "real numbers obey their bounds", group);
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Input in(data, size);
    const uint8_t t = in.byte();
    const int32_t type = t < 0xF0 ? 1 + t % 18 : static_cast<int32_t>(t) - 0xF8;  // 1-18, now and then -8..7
    const uint8_t op = in.byte();
    const Value v = valueOf(in, type);
    const std::string text = in.text();
    g_calls = 0;
    if (op % 2 == 0)
        range(type, v, text);
    else
        choice(type, v, text);
    check(v.kind == Kind::Text || g_calls == 0, "only texts are compared by the caller's routine");
    properties(type, v, in);
    return 0;
}
