#include "fields/text/date_text.h"

#include <ctype.h>
#include <stdio.h>
#include <string.h>

#include "fields/text/mask.h"
#include "frame/method.h"
#include "strings/lstr.h"
#include "validate/text/dates.h"

namespace fk {

char g_shortDateSeparator = 0;

namespace {

// Longest method string a field keeps, and the raw text a parse reads.
constexpr size_t kMethodText = 1023;
constexpr size_t kParseText = 159;

const char* const kOrderNames[] = {"DEFAULT", "MMDDYY", "MMDDYYYY", "DDMMYY", "DDMMYYYY", "YYMMDD", "YYYYMMDD"};

// Width class 0 (two-digit year), 1 (four-digit year last), 2 (four-digit
// year first); plus 3 for the dash and 6 for the dot.
const char* const kMasks[9] = {
    "**/**/**", "**/**/****", "****/**/**", "**-**-**", "**-**-****",
    "****-**-**", "**.**.**", "**.**.****", "****.**.**",
};

bool HasKeyword(const char* method, const char* keyword) { return lstristr(method, keyword) != nullptr; }

// The separator bit a method keyword or the system settings pick.
uint32_t SeparatorBit(const char* method) {
    if (HasKeyword(method, "@DASH")) return kDateDash;
    if (HasKeyword(method, "@SLASH")) return kDateSlash;
    if (HasKeyword(method, "@DOT")) return kDateDot;
    if (g_shortDateSeparator == '/') return kDateSlash;
    if (g_shortDateSeparator == '.') return kDateDot;
    return kDateDash;
}

int32_t Wrapped(int64_t n) { return static_cast<int32_t>(static_cast<uint32_t>(static_cast<uint64_t>(n))); }

// A number with at least `width` characters: one "0" in front of a shorter
// one (only one, so 50 in a four-digit place is "050").
void Part(char* out, size_t size, int64_t n, size_t width) {
    char digits[24];
    snprintf(digits, sizeof digits, "%lld", static_cast<long long>(n));
    snprintf(out, size, "%s%s", strlen(digits) < width ? "0" : "", digits);
}

}  // namespace

uint32_t DateOrderNamed(const char* name) {
    if (name == nullptr) return 0;
    for (uint32_t i = 0; i < 7; ++i)
        if (lstricmp(name, kOrderNames[i]) == 0) return i + 1;
    return 0;
}

uint32_t DateOrderOfPattern(const char* pattern, char* separator) {
    char text[kShortDateMax + 1] = "";
    if (pattern != nullptr) {
        strncpy(text, pattern, kShortDateMax);
        text[kShortDateMax] = 0;
    }
    char found = 0;
    for (const char c : "/-.") {
        if (c == 0) break;
        if (strchr(text, c) != nullptr) {
            found = c;
            break;
        }
    }
    if (separator != nullptr) *separator = found;
    // Both separators out, the rest upper-cased.
    char bare[kShortDateMax + 1];
    size_t n = 0;
    int removed = 0;
    for (const char* p = text; *p != 0; ++p) {
        if (found != 0 && *p == found && removed < 2) {
            ++removed;
            continue;
        }
        bare[n++] = static_cast<char>(toupper(static_cast<unsigned char>(*p)));
    }
    bare[n] = 0;
    // A lone "M" or "D" counts as "MM" or "DD".
    char order[2 * kShortDateMax + 1];
    size_t o = 0;
    for (size_t i = 0; i < n; ++i) {
        const char c = bare[i];
        order[o++] = c;
        const bool lone = (c == 'M' || c == 'D') && (i == 0 || bare[i - 1] != c) && bare[i + 1] != c;
        if (lone) order[o++] = c;
    }
    order[o] = 0;
    const uint32_t value = DateOrderNamed(order);
    return value >= 2 ? value : 0;
}

uint32_t ResolveDateStyle(uint32_t style, const char* method, const char* shortDate) {
    // twGetMethodParam wants a writable copy with two spare bytes.
    char work[kMethodText + 3] = "";
    if (method != nullptr) {
        strncpy(work, method, kMethodText);
        work[kMethodText] = 0;
    }
    if (DateOrder(style) == 0) style |= kDateDefault;
    // "@FORMAT" is ORed into the order, never substituted: DATE_DEFAULT with
    // "@FORMAT(MMDDYY)" is 1 | 2 = 3. Forms in use depend on it.
    char arg[kMethodText + 1];
    if (twGetMethodParam(work, "@FORMAT", arg)) style |= DateOrderNamed(arg);
    if (DateOrder(style) == kDateDefault) {
        char separator = 0;
        style |= DateOrderOfPattern(shortDate, &separator);
        g_shortDateSeparator = separator;
    }
    const uint32_t separator = style & kDateSeparatorBits;
    if (separator != kDateDot && separator != kDateDash && separator != kDateSlash)
        style = (style & ~kDateSeparatorBits) | SeparatorBit(work);
    if (HasKeyword(work, "@DATE")) style |= kDateToday;
    return style;
}

const char* DateMask(uint32_t style) {
    const uint32_t order = DateOrder(style);
    const int width = order == 7 ? 2 : (order == 3 || order == 5) ? 1 : 0;
    const uint32_t separator = style & kDateSeparatorBits;
    const int shift = separator == kDateDash ? 3 : separator == kDateDot ? 6 : 0;
    return kMasks[width + shift];
}

char DateSeparator(uint32_t style) {
    const char* mask = DateMask(style);
    return mask[strspn(mask, "*")];
}

int32_t DateRawWidth(uint32_t style) { return IsFourDigitOrder(DateOrder(style)) ? 8 : 6; }

bool DateBlankWanted(const char* method) { return method != nullptr && strstr(method, "@BLNK") != nullptr; }

void ParseDateText(const char* raw, uint32_t style, struct tm* date) {
    if (date == nullptr) return;
    char app[kParseText + 1] = "";
    if (raw != nullptr) {
        strncpy(app, raw, kParseText);
        app[kParseText] = 0;
    }
    const char* mask = DateMask(style);
    char screen[kParseText + 16];
    twAppToScrMask(screen, app, mask, 0, 0);
    // Three numbers between separators (a run of separators splits once).
    const char separator = DateSeparator(style);
    int32_t parts[3] = {0, 0, 0};
    int found = 0;
    for (char* p = screen; *p != 0 && found < 3;) {
        while (*p == separator) ++p;
        if (*p == 0) break;
        parts[found++] = TextToLong(p);
        while (*p != 0 && *p != separator) ++p;
    }
    const int32_t a = parts[0], b = parts[1], c = parts[2];
    const uint32_t order = DateOrder(style);
    date->tm_mday = 0;
    date->tm_mon = 0;
    date->tm_year = 0;
    if (order == 2 || order == 3) {
        date->tm_mon = Wrapped(int64_t{a} - 1);
        date->tm_mday = b;
        date->tm_year = c;
    } else if (order == 6 || order == 7) {
        date->tm_year = a;
        date->tm_mon = Wrapped(int64_t{b} - 1);
        date->tm_mday = c;
    } else {
        date->tm_mday = a;
        date->tm_mon = Wrapped(int64_t{b} - 1);
        date->tm_year = c;
    }
    // The field's own century rule, not twDateToTM's: only for a real day.
    if (IsFourDigitOrder(order) && date->tm_mday != 0) {
        if (date->tm_year < 100) date->tm_year += 1900;
        if (date->tm_year > 999) date->tm_year -= 1900;
    }
}

int32_t FormatDateText(char* out, size_t outSize, const struct tm* date, uint32_t style, bool blank) {
    if (out == nullptr || outSize == 0) return 0;
    char text[80] = "";
    const uint32_t order = DateOrder(style);
    const bool four = IsFourDigitOrder(order);
    if (date == nullptr || date->tm_mday == 0) {
        snprintf(text, sizeof text, "%s", blank ? "" : four ? "00000000" : "000000");
    } else {
        char month[24], day[24], year[24];
        Part(month, sizeof month, int64_t{date->tm_mon} + 1, 2);
        Part(day, sizeof day, date->tm_mday, 2);
        Part(year, sizeof year, four ? int64_t{date->tm_year} + 1900 : date->tm_year, four ? 4 : 2);
        if (order == 2 || order == 3)
            snprintf(text, sizeof text, "%s%s%s", month, day, year);
        else if (order == 6 || order == 7)
            snprintf(text, sizeof text, "%s%s%s", year, month, day);
        else
            snprintf(text, sizeof text, "%s%s%s", day, month, year);
    }
    const size_t n = strnlen(text, outSize - 1);
    memcpy(out, text, n);
    out[n] = 0;
    return static_cast<int32_t>(n);
}

int32_t NormaliseDateText(char* out, size_t outSize, const char* raw, uint32_t style, bool blank) {
    if (out == nullptr || outSize == 0) return 0;
    struct tm date;
    memset(&date, 0, sizeof date);
    ParseDateText(raw, style, &date);
    if (date.tm_mday == 0) {
        // Nothing to complete: the text stays as the user left it.
        const size_t n = raw ? strnlen(raw, outSize - 1) : 0;
        if (n) memcpy(out, raw, n);
        out[n] = 0;
        return static_cast<int32_t>(n);
    }
    if (date.tm_year >= 1900) date.tm_year -= 1900;
    return FormatDateText(out, outSize, &date, style, blank);
}

}  // namespace fk
