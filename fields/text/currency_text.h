// Text of the currency field: formatting an amount by a country's
// conventions, the text a value is set as, and reading values back.
//
// Pure routines: no windows.h here, so they build natively as well. Every
// routine that writes takes its output buffer's size in bytes, always
// terminates it (when the size is at least 1) and never writes beyond it,
// whatever the input: what does not fit is cut. Input texts are read up to
// their terminator and at most 159 characters of them are used (the field's
// own text is never longer).
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "fields/text/currency_formats.h"

namespace fk {

// Style bits the text routines read (the field's style word).
inline constexpr uint32_t kCurrRightJust = 0x0010;
inline constexpr uint32_t kCurrSuppress = 0x0020;

// The row picked by a method string: its first "@CF_" (any case) compared,
// in table order and over each keyword's length, with the keywords of the
// table. An unknown "@CF_" or none gives row 0. A null method gives 0.
int32_t CurrencyRowIndex(const char* method);

// The amount text formatted for a row: blanks stripped, decimals padded or
// cut, the symbol's characters removed, thousands grouped, then the
// positive placement or the negative format of the row.
void FormatCurrency(const char* text, const CurrencyFormat& row, uint32_t style, char* out, size_t outSize);

// The text GXM_SETVALUE builds before formatting.
// A double: fixed-point digits with the row's decimals and the row's decimal
// separator; a zero is "0", or empty with blankZero. 0.5 gives the separator
// followed by 50 (no leading "0"). Returns false for an infinite or NaN
// value, which has no such text (out is then empty).
bool CurrencyDoubleText(double value, const CurrencyFormat& row, bool blankZero, char* out, size_t outSize);
// A long counting hundredths, always with "." and "," whatever the row:
// 123456 gives 1,234.56; a zero is "0.00", or empty with blankZero; a text
// shorter than three characters gets "." in front (5 gives .5).
void CurrencyLongText(int32_t hundredths, bool blankZero, char* out, size_t outSize);
// No value type and an empty field: "0", the separator and the row's zeros,
// or empty with blankZero.
void CurrencyZeroText(const CurrencyFormat& row, bool blankZero, char* out, size_t outSize);
// The last step of setting a value: an empty text stays empty; otherwise a
// suppressed field cuts it at the decimal separator, then it is formatted.
void CurrencyValueText(const char* text, const CurrencyFormat& row, uint32_t style, char* out, size_t outSize);

// A shown amount cleaned for conversion: blanks and ")" removed, the row's
// thousands separators and every character of its symbol removed, the first
// "(" turned into "-" and the first decimal separator into ".".
// decimalFirst turns the decimal separator into "." before blanks and ")"
// go (the order validation uses).
void CleanCurrency(const char* text, const CurrencyFormat& row, bool decimalFirst, char* out, size_t outSize);
// GXM_GETVALUE as a double: the cleaned text through strtod.
double CurrencyToDouble(const char* text, const CurrencyFormat& row);
// GXM_GETVALUE as a long: hundredths, reading only "$", "." and ",".
int32_t CurrencyToHundredths(const char* text);
// Decimal text to 32 bits: leading white space, an optional sign, digits up
// to the first non-digit; no digits give 0; overflow wraps.
int32_t CurrencyWhole(const char* text);

// Typing: the index just behind the first decimal separator of text, or -1.
int32_t CurrencyAfterDecimal(const char* text, const CurrencyFormat& row);

}  // namespace fk
