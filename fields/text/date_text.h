// The date field's text rules: which order and separator a style resolves
// to, the mask it shows, and the conversion between its raw text (only the
// digits, "12311999") and the date structure.
//
// Pure routines: no windows.h here, so they build natively as well. Only
// day, month and years since 1900 of the structure are touched.
#pragma once

#include <stddef.h>
#include <stdint.h>
#include <time.h>

namespace fk {

// Style bits of the date field.
inline constexpr uint32_t kDateOrderBits = 0x000F;  // 1 default, 2..7 the orders
inline constexpr uint32_t kDateDefault = 0x0001;
inline constexpr uint32_t kDateDot = 0x0010;
inline constexpr uint32_t kDateDash = 0x0020;
inline constexpr uint32_t kDateSlash = 0x0040;
inline constexpr uint32_t kDateSeparatorBits = 0x0070;
inline constexpr uint32_t kDateToday = 0x8000;  // "@DATE": every value set becomes today

// The raw text holds at most this many characters.
inline constexpr int32_t kDateRawMax = 20;
// Longest short-date pattern read from the system settings.
inline constexpr int32_t kShortDateMax = 30;

// The separator of the short-date pattern read last ('/', '-', '.', or 0
// when none has been read or the pattern had none). Library-wide: a field
// whose style and method string name no separator takes this one.
extern char g_shortDateSeparator;

// 1..7 for "DEFAULT", "MMDDYY", ... "YYYYMMDD" (any case), else 0.
uint32_t DateOrderNamed(const char* name);

// Reads a short-date pattern such as "dd.MM.yy": its separator (the first of
// '/', '-', '.' found, 0 when none) and its order (2..7, 0 when the pattern
// names none). At most kShortDateMax characters are read.
uint32_t DateOrderOfPattern(const char* pattern, char* separator);

// The style a field takes from its style and method string. shortDate is the
// system's short-date pattern; it is read (and g_shortDateSeparator set) only
// when the order is still the default after "@FORMAT". Null texts count as
// empty.
uint32_t ResolveDateStyle(uint32_t style, const char* method, const char* shortDate);

// The order (low four bits) and whether it writes a four-digit year.
inline uint32_t DateOrder(uint32_t style) { return style & kDateOrderBits; }
inline bool IsFourDigitOrder(uint32_t order) { return order == 3 || order == 5 || order == 7; }

// One of the nine masks ("**/**/****" ...), by year width and separator.
const char* DateMask(uint32_t style);
// The separator the mask shows: '.', '-', or '/' (also when none is set).
char DateSeparator(uint32_t style);
// Digits of an empty date: 6 or 8.
int32_t DateRawWidth(uint32_t style);

// True when the method string asks for a blank empty date ("@BLNK", case
// counts).
bool DateBlankWanted(const char* method);

// Parses raw text (at most 159 characters are read) through the style's mask
// into day, month (0-based) and years since 1900. Four-digit orders with a
// day other than 0 complete the century: below 100 add 1900, then above 999
// take 1900 away ("95", "0095" and "1995" are all 95).
void ParseDateText(const char* raw, uint32_t style, struct tm* date);

// Writes the raw text of a date into out (outSize bytes, terminator
// included; longer text is cut) and returns its length. Day 0 is the empty
// date: "" when blank, else six or eight "0". A two-digit order writes years
// since 1900 as they are, so 2001 is "101".
int32_t FormatDateText(char* out, size_t outSize, const struct tm* date, uint32_t style, bool blank);

// What leaving the field makes of its raw text: parsed, a year of 1900 or
// more taken as a full year, and written again. An empty date (day 0) leaves
// the text as typed. Returns the length written into out.
int32_t NormaliseDateText(char* out, size_t outSize, const char* raw, uint32_t style, bool blank);

}  // namespace fk
