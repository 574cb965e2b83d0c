// Text of the currency field: formatting, the text of a set value, and
// reading values back. See currency_text.h for the buffer contract.
#include "fields/text/currency_text.h"

#include <inttypes.h>
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <algorithm>

#include "strings/lstr.h"
#include "strings/workbuf.h"

namespace fk {

namespace {

// The amount is worked on in a buffer of the numeric string routines' size.
using Work = char[kNumWorkSize];

// Fixed-point conversion: decimals beyond this many are noise in a double.
constexpr int32_t kMaxPlaces = 40;
// Extra decimals printed to decide the rounding of the last kept one.
constexpr int32_t kGuardPlaces = 20;
// A double has at most 309 integer digits.
constexpr size_t kConvSize = 309 + 1 + kMaxPlaces + kGuardPlaces + 8;

// Writes into a caller's buffer, cutting what does not fit. The buffer is
// terminated after every character, so a cut text is always complete.
class Out {
public:
    Out(char* p, size_t size) : p_(size > 0 ? p : nullptr), size_(size) {
        if (p_ != nullptr) *p_ = 0;
    }
    void put(char c) {
        if (p_ == nullptr || c == 0 || n_ + 1 >= size_) return;
        p_[n_++] = c;
        p_[n_] = 0;
    }
    void put(const char* s) {
        while (*s != 0) put(*s++);
    }
    void put(const char* s, size_t n) {
        for (size_t i = 0; i < n && s[i] != 0; ++i) put(s[i]);
    }
    void repeat(char c, int32_t n) {
        for (int32_t i = 0; i < n && n_ + 1 < size_; ++i) put(c);
    }

private:
    char* p_;
    size_t size_;
    size_t n_ = 0;
};

// At most 159 characters of text (none of a null text); a holds 160.
void CopyIn(char* a, const char* text) {
    a[0] = 0;
    if (text != nullptr) {
        strncpy(a, text, kNumWorkMax);
        a[kNumWorkMax] = 0;
    }
}

// The symbol as a terminated set of characters, whatever the row holds.
struct Symbol {
    char s[sizeof(CurrencyFormat::symbol)];
    explicit Symbol(const CurrencyFormat& row) {
        memcpy(s, row.symbol, sizeof s);
        s[sizeof s - 1] = 0;
    }
};

// Appends count copies of c as far as the work buffer holds them.
void Append(Work& a, char c, int32_t count) {
    size_t len = strlen(a);
    for (int32_t i = 0; i < count && len < static_cast<size_t>(kNumWorkMax); ++i) a[len++] = c;
    a[len] = 0;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The digits right behind the decimal separator become exactly places
// digits: cut (no rounding) or padded with "0". What follows them, a
// trailing sign or symbol, stays behind them.
void FitDecimals(Work& a, char* decimals, int32_t places) {
    size_t run = 0;
    while (IsDigit(decimals[run])) ++run;
    const size_t want = static_cast<size_t>(places);
    char* tail = decimals + run;
    const size_t tailLen = strlen(tail);
    if (run > want) {
        memmove(decimals + want, tail, tailLen + 1);
        return;
    }
    const size_t len = strlen(a);
    const size_t room = static_cast<size_t>(kNumWorkMax) - len;
    const size_t add = std::min(want - run, room);
    memmove(tail + add, tail, tailLen + 1);
    memset(tail, '0', add);
}

// Thousands separators in the whole part. What stands behind the decimal
// digits (a trailing sign or parenthesis) is set aside meanwhile: lstrcomma
// counts every character behind the decimal separator as a decimal.
// Without a thousands separator there is nothing to group with.
void GroupWholePart(Work& a, char sep, char dp) {
    if (sep == 0) return;
    char tail[kNumWorkSize] = "";
    if (char* point = dp != 0 ? strchr(a, dp) : nullptr) {
        char* end = point + 1;
        while (IsDigit(*end)) ++end;
        strcpy(tail, end);
        *end = 0;
    }
    lstrcomma(a, sep, dp);
    const size_t len = strlen(a);
    strncat(a, tail, static_cast<size_t>(kNumWorkMax) - len);
}

void TurnFirst(char* a, char from, char to) {
    if (from == 0) return;
    if (char* p = strchr(a, from)) *p = to;
}

// Rounds the decimal digits of v (not negative, finite) to places decimals,
// half away from zero. digits receives them without leading zeros; *point
// is the number of digits before the decimal point (negative when zeros
// stand between the point and the first digit). A value that rounds to zero
// gives no digits and a point of -places.
void FixedDigits(double v, int32_t places, char* digits, size_t size, int32_t* point) {
    char conv[kConvSize];
    snprintf(conv, sizeof conv, "%.*f", static_cast<int>(places + kGuardPlaces), v);
    const char* dot = strchr(conv, '.');
    const size_t whole = dot ? static_cast<size_t>(dot - conv) : strlen(conv);
    // Integer digits then the kept decimals.
    size_t n = 0;
    for (size_t i = 0; i < whole && n + 1 < size; ++i) digits[n++] = conv[i];
    const char* frac = dot ? dot + 1 : "";
    for (int32_t i = 0; i < places && n + 1 < size; ++i) digits[n++] = frac[i] ? frac[i] : '0';
    digits[n] = 0;
    int32_t at = static_cast<int32_t>(whole);
    const size_t fracLen = strlen(frac);
    if (static_cast<size_t>(places) < fracLen && frac[places] >= '5') {
        size_t i = n;
        while (i > 0 && digits[i - 1] == '9') digits[--i] = '0';
        if (i > 0) {
            ++digits[i - 1];
        } else if (n + 1 < size) {
            memmove(digits + 1, digits, n + 1);
            digits[0] = '1';
            ++at;
        }
    }
    size_t lead = 0;
    while (digits[lead] == '0') ++lead;
    memmove(digits, digits + lead, strlen(digits + lead) + 1);
    *point = at - static_cast<int32_t>(lead);
}

}  // namespace

int32_t CurrencyRowIndex(const char* method) {
    const char* at = lstristr(method, "@CF_");
    if (at == nullptr) return 0;
    for (int32_t row = 0; row < kCurrencyKeywords; ++row) {
        const char* keyword = kCurrencyKeywordNames[row];
        if (lstrnicmp(at, keyword, static_cast<int32_t>(strlen(keyword))) == 0) return row;
    }
    return 0;
}

void FormatCurrency(const char* text, const CurrencyFormat& row, uint32_t style, char* out, size_t outSize) {
    Out o(out, outSize);
    Work a;
    CopyIn(a, text);
    lstrpreclip(a);

    const char dp = row.decimal[0];
    const char sep = row.thousands[0];
    const bool suppress = (style & kCurrSuppress) != 0;
    char* point = dp != 0 ? strchr(a, dp) : nullptr;
    if (point != nullptr && row.digits > 0 && !suppress) {
        FitDecimals(a, point + 1, row.digits);
    } else if (point == nullptr && !suppress && (style & kCurrRightJust) == 0 && row.digits > 0 && dp != 0) {
        Append(a, dp, 1);
        Append(a, '0', row.digits);
    }

    const Symbol symbol(row);
    lstrremove(a, symbol.s);
    GroupWholePart(a, sep, dp);

    // The amount goes between the symbol and the signs without the blanks
    // the symbol left behind, so that a formatted text formats to itself.
    const char* s = symbol.s;
    if (strchr(a, '-') == nullptr && strchr(a, '(') == nullptr) {
        lstrremove(a, "()");
        lstrpreclip(lstrclip(a));
        switch (row.placement) {
        case 1: o.put(a), o.put(s); break;
        case 2: o.put(s), o.put(' '), o.put(a); break;
        case 3: o.put(a), o.put(' '), o.put(s); break;
        default: o.put(s), o.put(a); break;  // 0, and what WIN.INI may hold beyond 3
        }
        return;
    }
    lstrremove(a, "()-");
    lstrpreclip(lstrclip(a));
    switch (row.negative) {
    case 1: o.put('-'), o.put(s), o.put(a); break;
    case 2: o.put(s), o.put('-'), o.put(a); break;
    case 3: o.put(s), o.put(a), o.put('-'); break;
    case 4: o.put('('), o.put(a), o.put(s), o.put(')'); break;
    case 5: o.put('-'), o.put(a), o.put(s); break;
    case 6: o.put(a), o.put('-'), o.put(s); break;
    case 7: o.put(a), o.put(s), o.put('-'); break;
    case 8: o.put('-'), o.put(a), o.put(' '), o.put(s); break;
    case 9: o.put('-'), o.put(s), o.put(' '), o.put(a); break;
    case 10: o.put(a), o.put(' '), o.put(s), o.put('-'); break;
    default: o.put('('), o.put(s), o.put(a), o.put(')'); break;  // 0 and anything above 10
    }
}

bool CurrencyDoubleText(double value, const CurrencyFormat& row, bool blankZero, char* out, size_t outSize) {
    Out o(out, outSize);
    if (!isfinite(value)) return false;
    if (value == 0) {
        if (!blankZero) o.put('0');
        return true;
    }
    char digits[kConvSize];
    int32_t point = 0;
    FixedDigits(fabs(value), std::clamp(row.digits, 0, kMaxPlaces), digits, sizeof digits, &point);
    if (value < 0) o.put('-');
    // A text without decimal separator (an empty one in WIN.INI) ends where
    // the separator would stand.
    const char dp = row.decimal[0];
    if (point > 0) {
        o.put(digits, static_cast<size_t>(point));
        if (dp != 0) o.put(dp), o.put(digits + point);
    } else if (point == 0) {
        // No "0" before the separator: 0.5 is ",50". Kept as it always was.
        if (dp != 0) o.put(dp), o.put(digits);
    } else {
        o.put('0');
        if (dp != 0) o.put(dp), o.repeat('0', -point), o.put(digits);
    }
    return true;
}

void CurrencyLongText(int32_t hundredths, bool blankZero, char* out, size_t outSize) {
    Out o(out, outSize);
    if (hundredths == 0) {
        if (!blankZero) o.put("0.00");
        return;
    }
    Work a;
    snprintf(a, sizeof a, "%" PRId32, hundredths);
    lstrdecp(a, 2, '.');
    lstrcomma(a, ',', '.');
    if (strlen(a) < 3) o.put('.');
    o.put(a);
}

void CurrencyZeroText(const CurrencyFormat& row, bool blankZero, char* out, size_t outSize) {
    Out o(out, outSize);
    if (blankZero) return;
    o.put('0');
    if (row.decimal[0] != 0) {
        o.put(row.decimal[0]);
        o.repeat('0', row.digits);
    }
}

void CurrencyValueText(const char* text, const CurrencyFormat& row, uint32_t style, char* out, size_t outSize) {
    Out o(out, outSize);
    if (text == nullptr || *text == 0) return;
    Work a;
    CopyIn(a, text);
    if ((style & kCurrSuppress) != 0 && row.decimal[0] != 0) {
        if (char* p = strchr(a, row.decimal[0])) *p = 0;
    }
    FormatCurrency(a, row, style, out, outSize);
}

void CleanCurrency(const char* text, const CurrencyFormat& row, bool decimalFirst, char* out, size_t outSize) {
    Out o(out, outSize);
    Work a;
    CopyIn(a, text);
    lstrpreclip(a);
    const char thousands[2] = {row.thousands[0], 0};
    lstrremove(a, thousands);
    lstrremove(a, Symbol(row).s);
    if (decimalFirst) TurnFirst(a, row.decimal[0], '.');
    lstrremove(a, ") ");
    TurnFirst(a, '(', '-');
    if (!decimalFirst) TurnFirst(a, row.decimal[0], '.');
    o.put(a);
}

double CurrencyToDouble(const char* text, const CurrencyFormat& row) {
    Work a;
    CleanCurrency(text, row, false, a, sizeof a);
    return strtod(a, nullptr);
}

int32_t CurrencyToHundredths(const char* text) {
    char a[kNumWorkSize + 2];  // two more for the hundredths' zeros
    CopyIn(a, text);
    lstrpreclip(a);
    lstrremove(a, ") ");
    TurnFirst(a, '(', '-');
    lstrremovestr(a, "$");
    char* p = strchr(a, '.');
    if (p == nullptr) {
        strcat(a, "00");
    } else if (p[1] == 0) {
        strcpy(p, "00");
    } else if (p[2] == 0) {
        p[0] = p[1];
        p[1] = '0';
    } else {
        // The first two decimals are kept, the point and the rest go.
        p[0] = p[1];
        p[1] = p[2];
        p[2] = 0;
    }
    lstrremove(a, ".,");
    return CurrencyWhole(a);
}

int32_t CurrencyWhole(const char* text) {
    if (text == nullptr) return 0;
    const char* p = text;
    while (*p == ' ' || (*p >= '\t' && *p <= '\r')) ++p;
    bool negative = false;
    if (*p == '-' || *p == '+') negative = *p++ == '-';
    uint32_t v = 0;
    for (; IsDigit(*p); ++p) v = v * 10u + static_cast<uint32_t>(*p - '0');
    return static_cast<int32_t>(negative ? 0u - v : v);
}

int32_t CurrencyAfterDecimal(const char* text, const CurrencyFormat& row) {
    if (text == nullptr || row.decimal[0] == 0) return -1;
    const char* p = strchr(text, row.decimal[0]);
    return p ? static_cast<int32_t>(p - text) + 1 : -1;
}

}  // namespace fk
