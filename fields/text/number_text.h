// Number text of the numeric, real and currency fields: decimal text to and
// from 32-bit integers, the fixed-point digit conversion, the real field's
// value text and its decimal places on leaving, and text to double.
//
// Pure routines: no windows.h here, so they build natively as well. None of
// them looks at the C locale: the decimal point is always ".".
#pragma once

#include <stddef.h>
#include <stdint.h>

namespace fk {

// Decimal text to a 32-bit integer: leading white space (blank, tab, line
// feed, vertical tab, form feed, carriage return) is skipped, one optional
// sign taken, then digits up to the first non-digit. Text without leading
// digits (empty, "-" alone, "abc") gives 0; overflow wraps modulo 2^32
// without notice. A null text gives 0.
int32_t NumberTextToInt32(const char* text);

// Longest text WriteInt32 writes: "-2147483648".
inline constexpr size_t kInt32Text = 11;
// Signed decimal text of value (a leading "-" for negatives, no separators)
// into out of size bytes, cut to size - 1 characters. Returns the length
// written; nothing is written when out is null or size is 0.
size_t WriteInt32(char* out, size_t size, int32_t value);

// Places after the point that the fixed-point conversion works to at most;
// every double's decimal expansion ends before that, so a larger count
// changes nothing but the number of trailing zeros.
inline constexpr int32_t kMaxPlaces = 1100;
// Digits before the point a finite double can have.
inline constexpr int32_t kMaxWholeDigits = 309;

// The fixed-point digit conversion: value rounded to places digits after
// the point (by the platform's own correctly rounded conversion; ties follow
// it). digits holds the significant digits without leading zeros, ending
// places digits after the point; the point stands after the first `point`
// digits (point <= 0: -point zeros come between the point and the digits).
// A value that rounds to zero gives no digits and point = -places, so the
// text "0." + zeros always has places decimals. negative is the sign bit of
// the value (also for a value that rounds to zero). places below 0 count as
// 0 and above kMaxPlaces as kMaxPlaces. Infinities and NaN give no digits,
// point 0 and finite = false.
struct FixedDigits {
    char digits[kMaxWholeDigits + kMaxPlaces + 2];
    int32_t point;
    bool negative;
    bool finite;
};
void FixedPoint(double value, int32_t places, FixedDigits* out);

// True when the bits of value, ignoring the sign, are all zero.
bool IsZeroBits(double value);

// The real field's text for a value set by the application, with places
// decimals (below 0: 0) and "@BLNK" (blankZero):
//  - zero (either sign): "" with blankZero, else "0." and places zeros, or
//    "0" when places is 0;
//  - otherwise the fixed-point digits with "." after the first point digits
//    ("0." and -point zeros first when point <= 0) and "-" in front of a
//    negative value; with places 0, trailing "0"s (down to the second
//    character) and a final "." are stripped, so the value shows as a
//    rounded whole number;
//  - infinities and NaN: "INF", "-INF", "NAN".
// The text is cut to size - 1 characters (and to kMaxWholeDigits +
// kMaxPlaces + 7 whatever the size); nothing is written when out is null or
// size is 0.
void RealValueText(double value, int32_t places, bool blankZero, char* out, size_t size);

// The real field's text when the focus leaves it, places from "@DECP" (-1
// when there is none), in place in text of size bytes:
//  1. a text that begins with "." gets a "0" in front;
//  2. places > 0 and a "." in the text: with more than places characters
//     after the first ".", the character places + 1 after it decides the
//     rounding (above "4"): walking back from the last kept character, each
//     "9" becomes "0" and "." is skipped, and the first other character is
//     incremented whatever it is (a "-" inside the text becomes "."); then
//     the text is cut places characters after the point. With fewer, "0"s
//     are appended up to places;
//     places > 0 and no ".": "." and places zeros are appended;
//     places == 0: the text is cut at the first "." (no rounding);
//     places < 0: nothing more.
//  A carry that runs past the first digit (nines up to the start, or up to
//  a leading "-") puts a "1" in front of the digits, after the "-": 9.96
//  with one place becomes 10.0, -9.96 becomes -10.0.
// The result is cut to size - 1 characters; a text that is not terminated
// within size is cut first. Nothing happens when text is null or size is 0.
void RealLeavingText(char* text, size_t size, int32_t places);

// Text to double, like the standard conversion but always with "." as the
// point: leading white space, an optional sign, digits with at most one
// point, an optional exponent ("e" or "E", optional sign, digits; an "e"
// without digits is not part of the number). Text that does not start like
// a number gives 0. Overflow gives an infinity of the sign, underflow 0.
// When end is not null it receives the first character not converted (text
// itself when nothing was).
double NumberTextToDouble(const char* text, const char** end = nullptr);

// A double narrowed to a float as the FPU does it: beyond the float range
// an infinity of the sign, NaN stays NaN.
float NarrowToFloat(double value);

}  // namespace fk
