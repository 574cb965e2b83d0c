// Range and choice tests: gathering bounds and items character by character
// with the filter of the value's type, then comparing.
#include "validate/text/range_parse.h"

#include <stdlib.h>
#include <string.h>
#include <time.h>

#include "validate/text/dates.h"

namespace {

enum class Kind { Whole, Real, Text, Date, None };

Kind KindOf(int32_t type) {
    switch (type) {
        case 1:
        case 2: return Kind::Whole;
        case 3:
        case 12: return Kind::Real;
        case 4: return Kind::Text;
        default: return fk::DateFormOf(type) != 0 ? Kind::Date : Kind::None;
    }
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// What the gathering filter does with one character.
enum class Take { Keep, Skip, Fail };

Take RangeFilter(Kind kind, char c) {
    switch (kind) {
        case Kind::Whole: return IsDigit(c) || c == '-' ? Take::Keep : Take::Skip;
        case Kind::Real: return IsDigit(c) || c == '.' || c == '-' ? Take::Keep : Take::Skip;
        case Kind::Text: return Take::Keep;
        case Kind::Date: return IsDigit(c) || c == '/' || c == '.' || c == '-' ? Take::Keep : Take::Fail;
        case Kind::None: return Take::Fail;
    }
    return Take::Fail;
}

// Choice items keep a decimal point for code 3 only: for code 12 it is
// dropped, so "1.5" reads as 15. Callers' choice lists rely on this.
Take ChoiceFilter(int32_t type, Kind kind, char c) {
    switch (kind) {
        case Kind::Whole: return IsDigit(c) || c == '-' ? Take::Keep : Take::Skip;
        case Kind::Real:
            if (type == 12) {
                return IsDigit(c) || c == '-' ? Take::Keep : Take::Skip;
            }
            return IsDigit(c) || c == '.' || c == '-' ? Take::Keep : Take::Skip;
        case Kind::Text:
        case Kind::Date: return c == ')' ? Take::Skip : Take::Keep;
        case Kind::None: return Take::Fail;
    }
    return Take::Fail;
}

// One gathered bound or item.
struct Piece {
    char text[fk::kBoundMax + 1];
    char end;  // the character that ended it (0: the text ran out)
    bool failed;
};

// Gathers from *p until a character in stops, or until kBoundMax characters
// are kept (then the next character ends the piece whatever it is). *p is
// left behind the ending character.
template <typename Filter>
Piece Gather(const char*& p, const char* stops, Filter filter) {
    Piece piece{};
    int32_t n = 0;
    for (;;) {
        const char c = *p;
        if (c == 0) {
            piece.end = 0;
            break;
        }
        ++p;
        if (n == fk::kBoundMax || strchr(stops, c) != nullptr) {
            piece.end = c;
            break;
        }
        switch (filter(c)) {
            case Take::Keep: piece.text[n++] = c; break;
            case Take::Skip: break;
            case Take::Fail: piece.failed = true; return piece;
        }
    }
    piece.text[n] = 0;
    return piece;
}

// A zeroed date whose day, month and year come from text.
struct tm DateOf(const char* text, int32_t type) {
    struct tm d;
    memset(&d, 0, sizeof d);
    twDateToTM(&d, text, fk::DateFormOf(type));
    return d;
}

// Orders the value against one bound: <0, 0 or >0.
int32_t Order(int32_t type, Kind kind, const void* value, const char* bound, fk::TextCompare compare) {
    switch (kind) {
        case Kind::Whole: {
            const int32_t v = *static_cast<const int32_t*>(value);
            const int32_t b = fk::TextToLong(bound);
            return v < b ? -1 : (v > b ? 1 : 0);
        }
        case Kind::Real: {
            const double v = *static_cast<const double*>(value);
            const double b = strtod(bound, nullptr);
            return v < b ? -1 : (v > b ? 1 : 0);
        }
        case Kind::Text: return compare(static_cast<const char*>(value), bound);
        case Kind::Date: {
            const struct tm b = DateOf(bound, type);
            return twDateCmp(static_cast<const struct tm*>(value), &b);
        }
        case Kind::None: break;
    }
    return 0;
}

// Strips leading and trailing blanks in place.
char* ClipBoth(char* text) {
    size_t len = strlen(text);
    while (len > 0 && text[len - 1] == ' ') {
        text[--len] = 0;
    }
    size_t lead = 0;
    while (text[lead] == ' ') {
        ++lead;
    }
    return text + lead;
}

bool ChoiceMatches(int32_t type, Kind kind, const void* value, char* item, fk::TextCompare equal) {
    switch (kind) {
        case Kind::Whole: return *static_cast<const int32_t*>(value) == fk::TextToLong(item);
        case Kind::Real: return *static_cast<const double*>(value) == strtod(item, nullptr);
        case Kind::Text: return equal(static_cast<const char*>(value), ClipBoth(item)) == 0;
        case Kind::Date: {
            const struct tm d = DateOf(item, type);
            return twDateCmp(static_cast<const struct tm*>(value), &d) == 0;
        }
        case Kind::None: break;
    }
    return false;
}

}  // namespace

namespace fk {

int32_t DateFormOf(int32_t type) {
    switch (type) {
        case 5:
        case 13: return 1;
        case 14: return 2;
        case 15: return 4;
        case 16: return 8;
        case 17: return 16;
        case 18: return 32;
        default: return 0;
    }
}

int32_t RangeTest(int32_t type, const void* value, const char* text, TextCompare compare) {
    const Kind kind = KindOf(type);
    if (text == nullptr || *text == 0 || value == nullptr || kind == Kind::None || compare == nullptr) {
        return 0;
    }
    const char* p = strchr(text, '(');
    if (p == nullptr) {
        return 0;
    }
    ++p;
    auto filter = [kind](char c) { return RangeFilter(kind, c); };
    for (;;) {
        const Piece low = Gather(p, ",", filter);
        if (low.failed || low.end == 0) {
            return 0;
        }
        const Piece high = Gather(p, ")", filter);
        if (high.failed || high.end == 0) {
            return 0;
        }
        const bool below = low.text[0] != 0 && Order(type, kind, value, low.text, compare) < 0;
        const bool above = high.text[0] != 0 && Order(type, kind, value, high.text, compare) > 0;
        if (!below && !above) {
            return 1;
        }
        // A further group must follow the ")" directly.
        if (*p != '(') {
            return 0;
        }
        ++p;
    }
}

int32_t ChoiceTest(int32_t type, const void* value, const char* text, TextCompare equal) {
    const Kind kind = KindOf(type);
    if (text == nullptr || *text == 0 || value == nullptr || kind == Kind::None || equal == nullptr) {
        return 0;
    }
    const char* p = strchr(text, '(');
    if (p == nullptr) {
        return 0;
    }
    ++p;
    auto filter = [type, kind](char c) { return ChoiceFilter(type, kind, c); };
    for (;;) {
        Piece item = Gather(p, ",)", filter);
        if (item.failed || item.end == 0) {
            return 0;
        }
        if (item.end == ')') {
            return item.text[0] != 0 && ChoiceMatches(type, kind, value, item.text, equal) ? 1 : 0;
        }
        if (item.text[0] != 0 && ChoiceMatches(type, kind, value, item.text, equal)) {
            return 1;
        }
    }
}

}  // namespace fk
