#include "fields/text/number_text.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <algorithm>
#include <cstring>
#include <limits>

namespace fk {

namespace {

bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Appends to a text being built in out[size], cutting at size - 1.
class Builder {
public:
    Builder(char* out, size_t size) : out_(out), size_(size) { out_[0] = 0; }
    void put(char c) {
        if (n_ + 1 < size_) {
            out_[n_++] = c;
            out_[n_] = 0;
        }
    }
    void put(const char* s) {
        while (*s) put(*s++);
    }
    void repeat(char c, int64_t count) {
        for (int64_t i = 0; i < count && n_ + 1 < size_; ++i) put(c);
    }
    size_t length() const { return n_; }
    char* text() { return out_; }

private:
    char* out_;
    size_t size_;
    size_t n_ = 0;
};

}  // namespace

int32_t NumberTextToInt32(const char* text) {
    if (text == nullptr) return 0;
    const char* p = text;
    while (IsSpace(*p)) ++p;
    bool negative = false;
    if (*p == '-' || *p == '+') negative = *p++ == '-';
    uint32_t v = 0;
    for (; IsDigit(*p); ++p) v = v * 10u + static_cast<uint32_t>(*p - '0');
    return static_cast<int32_t>(negative ? 0u - v : v);
}

size_t WriteInt32(char* out, size_t size, int32_t value) {
    if (out == nullptr || size == 0) return 0;
    char digits[kInt32Text + 1];
    size_t n = 0;
    uint32_t v = value < 0 ? 0u - static_cast<uint32_t>(value) : static_cast<uint32_t>(value);
    do {
        digits[n++] = static_cast<char>('0' + v % 10u);
        v /= 10u;
    } while (v != 0);
    Builder b(out, size);
    if (value < 0) b.put('-');
    while (n > 0) b.put(digits[--n]);
    return b.length();
}

bool IsZeroBits(double value) { return value == 0.0; }

void FixedPoint(double value, int32_t places, FixedDigits* out) {
    if (out == nullptr) return;
    out->digits[0] = 0;
    out->point = 0;
    out->negative = std::signbit(value);
    out->finite = std::isfinite(value);
    if (!out->finite) return;
    if (places < 0) places = 0;
    if (places > kMaxPlaces) places = kMaxPlaces;

    // The platform's correctly rounded fixed notation of |value|.
    char fixed[kMaxWholeDigits + kMaxPlaces + 8];
    const int written = std::snprintf(fixed, sizeof fixed, "%.*f", static_cast<int>(places), std::fabs(value));
    if (written < 0) return;
    fixed[sizeof fixed - 1] = 0;

    // Whole digits, the point (whatever the C locale makes of it), the
    // decimals. Leading zeros go, moving the point left.
    const char* p = fixed;
    int32_t whole = 0;
    while (IsDigit(p[whole])) ++whole;
    size_t n = 0;
    int32_t index = 0;  // position of the digit among all digits
    int32_t first = -1;
    for (; *p; ++p) {
        if (!IsDigit(*p)) continue;
        if (first < 0 && *p != '0') first = index;
        if (first >= 0 && n + 1 < sizeof out->digits) out->digits[n++] = *p;
        ++index;
    }
    out->digits[n] = 0;
    out->point = first >= 0 ? whole - first : -places;
}

void RealValueText(double value, int32_t places, bool blankZero, char* out, size_t size) {
    if (out == nullptr || size == 0) return;
    if (places < 0) places = 0;
    // Built whole first (the zeros are stripped from the whole text), then
    // cut to the caller's size.
    char work[kMaxWholeDigits + kMaxPlaces + 8];
    Builder b(work, sizeof work);
    FixedDigits fd;
    if (IsZeroBits(value)) {
        if (!blankZero) {
            b.put('0');
            if (places > 0) {
                b.put('.');
                b.repeat('0', places);
            }
        }
    } else if (FixedPoint(value, places, &fd); !fd.finite) {
        b.put(std::isnan(value) ? "NAN" : (fd.negative ? "-INF" : "INF"));
    } else {
        if (fd.negative) b.put('-');
        if (fd.point <= 0) {
            b.put("0.");
            b.repeat('0', -static_cast<int64_t>(fd.point));
            b.put(fd.digits);
        } else {
            for (int32_t i = 0; fd.digits[i] != 0; ++i) {
                if (i == fd.point) b.put('.');
                b.put(fd.digits[i]);
            }
            if (static_cast<size_t>(fd.point) >= std::strlen(fd.digits)) b.put('.');  // a whole number
        }
        if (places == 0) {
            // Trailing zeros (down to the second character) and a final point.
            size_t len = b.length();
            while (len > 2 && work[len - 1] == '0') work[--len] = 0;
            if (len > 0 && work[len - 1] == '.') work[--len] = 0;
        }
    }
    const size_t n = std::min(std::strlen(work), size - 1);
    std::memcpy(out, work, n);
    out[n] = 0;
}

void RealLeavingText(char* text, size_t size, int32_t places) {
    if (text == nullptr || size == 0) return;
    size_t len = strnlen(text, size);
    if (len == size) text[--len] = 0;  // not terminated: cut
    const size_t max = size - 1;

    if (text[0] == '.') {
        std::memmove(text + 1, text, len + 1 > max ? max : len + 1);
        text[0] = '0';
        len = len + 1 > max ? max : len + 1;
        text[len] = 0;
    }
    if (places < 0) return;
    char* point = std::strchr(text, '.');
    if (places == 0) {
        if (point) *point = 0;
        return;
    }
    if (point == nullptr) {
        Builder b(text + len, size - len);
        b.put('.');
        b.repeat('0', places);
        return;
    }
    const size_t at = static_cast<size_t>(point - text);
    const size_t after = len - at - 1;
    if (after <= static_cast<size_t>(places)) {
        Builder b(text + len, size - len);
        b.repeat('0', places - static_cast<int64_t>(after));
        return;
    }
    // More than places characters follow the point: round on the next one.
    const size_t cut = at + 1 + static_cast<size_t>(places);  // first character dropped
    const bool roundUp = static_cast<signed char>(text[cut]) > '4';
    text[cut] = 0;
    if (!roundUp) return;
    ptrdiff_t i = static_cast<ptrdiff_t>(cut) - 1;
    for (; i >= 0 && (text[i] == '9' || text[i] == '.'); --i) {
        if (text[i] == '9') text[i] = '0';
    }
    if (i > 0 || (i == 0 && text[0] != '-')) {
        text[i] = static_cast<char>(text[i] + 1);
        return;
    }
    // The carry ran past the first digit: a "1" in front of the digits (the
    // text is shorter than before by at least one character, so it fits).
    const size_t front = i == 0 ? 1 : 0;  // after a leading "-"
    const size_t n = std::strlen(text);
    std::memmove(text + front + 1, text + front, n - front + 1);
    text[front] = '1';
}

double NumberTextToDouble(const char* text, const char** end) {
    if (end) *end = text;
    if (text == nullptr) return 0.0;
    const char* p = text;
    while (IsSpace(*p)) ++p;
    bool negative = false;
    if (*p == '-' || *p == '+') negative = *p++ == '-';
    const char* mantissa = p;
    int64_t digits = 0;
    int64_t firstSignificant = 0;  // where the first non-zero digit stands: 1 = units, 0 = tenths, ...
    bool significant = false;
    int64_t place = 0;              // digits before the point seen so far
    for (; IsDigit(*p); ++p, ++digits) {
        ++place;
        if (!significant && *p != '0') significant = true, firstSignificant = place;
    }
    if (significant) firstSignificant = place - firstSignificant + 1;
    if (*p == '.') {
        int64_t after = 0;
        for (++p; IsDigit(*p); ++p, ++digits) {
            ++after;
            if (!significant && *p != '0') significant = true, firstSignificant = 1 - after;
        }
    }
    if (digits == 0) return 0.0;  // not a number
    const char* numberEnd = p;
    int64_t exponent = 0;
    if (*p == 'e' || *p == 'E') {
        const char* q = p + 1;
        const bool expNegative = *q == '-';
        if (*q == '-' || *q == '+') ++q;
        if (IsDigit(*q)) {
            for (; IsDigit(*q); ++q)
                if (exponent < 1000000) exponent = exponent * 10 + (*q - '0');
            if (expNegative) exponent = -exponent;
            numberEnd = q;
        }
    }
    if (end) *end = numberEnd;

    double v = 0.0;
    const auto r = std::from_chars(mantissa, numberEnd, v, std::chars_format::general);
    if (r.ec == std::errc::result_out_of_range)
        v = significant && firstSignificant + exponent > 0 ? std::numeric_limits<double>::infinity() : 0.0;
    else if (r.ec != std::errc())
        v = 0.0;
    return negative ? -v : v;
}

float NarrowToFloat(double value) {
    // Round to nearest: from the largest float plus half its last place on
    // the value is an infinity.
    constexpr float kMax = std::numeric_limits<float>::max();
    const double overflow = static_cast<double>(kMax) + std::ldexp(1.0, 103);
    if (std::isnan(value)) return std::numeric_limits<float>::quiet_NaN();
    if (value >= overflow) return std::numeric_limits<float>::infinity();
    if (value <= -overflow) return -std::numeric_limits<float>::infinity();
    if (value > kMax) return kMax;
    if (value < -kMax) return -kMax;
    return static_cast<float>(value);
}

}  // namespace fk
