// Dates and times: conversion between the broken-down time structure and the
// fixed-width text that the date field shows.
#include "validate/text/dates.h"

#include <stdio.h>
#include <string.h>

namespace {

// twDateToTM reads its text from here: the first 12 characters, zero-padded,
// so that parts beyond a short text read as 0.
constexpr int kDateWorkMax = 12;
char g_dateWork[kDateWorkMax + 1];

// Days per month, common year then leap year.
constexpr int32_t kMonthDays[2][12] = {
    {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31},
    {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31},
};

// The leap rule applied to the stored years-since-1900 value: 1900 (stored 0)
// is a leap year and 2000 (stored 100) is not. Existing data depends on it.
bool IsLeap(int32_t storedYear) {
    return (storedYear % 4 == 0 && storedYear % 100 != 0) || storedYear % 400 == 0;
}

// A four-digit year field: 201 and above are full years, below that the
// number is already years since 1900 ("0095" is 1995).
int32_t FourDigitYear(int32_t n) {
    return n >= 201 ? n - 1900 : n;
}

}  // namespace

namespace fk {

int32_t TextToLong(const char* text) {
    if (text == nullptr) {
        return 0;
    }
    const char* p = text;
    while (*p == ' ' || *p == '\t' || *p == '\n' || *p == '\r' || *p == '\v' || *p == '\f') {
        ++p;
    }
    bool negative = false;
    if (*p == '-' || *p == '+') {
        negative = *p == '-';
        ++p;
    }
    int64_t n = 0;
    while (*p >= '0' && *p <= '9') {
        if (n <= 2147483648LL) {
            n = n * 10 + (*p - '0');
        }
        ++p;
    }
    if (negative) {
        n = -n;
    }
    if (n > INT32_MAX) {
        return INT32_MAX;
    }
    if (n < INT32_MIN) {
        return INT32_MIN;
    }
    return static_cast<int32_t>(n);
}

bool IsEmptyDate(const struct tm* date, bool zeroMonth) {
    return date->tm_mday == 0 && date->tm_year == 0 && (date->tm_mon == -1 || (zeroMonth && date->tm_mon == 0));
}

}  // namespace fk

extern "C" {

int32_t FK_API twTMToDate(char* buffer, const struct tm* date, int32_t form, char separator) {
    if (buffer == nullptr || date == nullptr) {
        return 0;
    }
    // Month and full year wrap at the 32-bit limits instead of overflowing.
    const int month = static_cast<int>(static_cast<uint32_t>(date->tm_mon) + 1u);
    const int day = date->tm_mday;
    const int year = date->tm_year;
    const int full = static_cast<int>(static_cast<uint32_t>(year) + 1900u);
    // Formatted aside first: nonsense field values can make a longer text
    // than the 11 characters callers make room for.
    char text[64];
    switch (form) {
        case 1: snprintf(text, sizeof text, "%02d%c%02d%c%02d", month, separator, day, separator, year); break;
        case 2: snprintf(text, sizeof text, "%02d%c%02d%c%04d", month, separator, day, separator, full); break;
        case 4: snprintf(text, sizeof text, "%02d%c%02d%c%02d", day, separator, month, separator, year); break;
        case 8: snprintf(text, sizeof text, "%02d%c%02d%c%04d", day, separator, month, separator, full); break;
        case 16: snprintf(text, sizeof text, "%02d%c%02d%c%02d", year, separator, month, separator, day); break;
        case 32: snprintf(text, sizeof text, "%04d%c%02d%c%02d", full, separator, month, separator, day); break;
        default: return 0;
    }
    constexpr size_t kMaxWritten = 11;
    size_t len = strlen(text);
    if (len > kMaxWritten) {
        len = kMaxWritten;
    }
    memcpy(buffer, text, len);
    buffer[len] = 0;
    return static_cast<int32_t>(len);
}

void FK_API twDateToTM(struct tm* date, const char* text, int32_t form) {
    if (date == nullptr || text == nullptr) {
        return;
    }
    strncpy(g_dateWork, text, kDateWorkMax);
    g_dateWork[kDateWorkMax] = 0;
    const char* w = g_dateWork;
    // Month is stored 0-based; the arithmetic is done wide so that nonsense
    // text cannot overflow.
    auto month = [](int32_t n) { return static_cast<int32_t>(static_cast<int64_t>(n) - 1); };
    switch (form) {
        case 1:
        case 2:
            date->tm_mon = month(fk::TextToLong(w));
            date->tm_mday = fk::TextToLong(w + 3);
            date->tm_year = fk::TextToLong(w + 6);
            break;
        case 4:
        case 8:
            date->tm_mday = fk::TextToLong(w);
            date->tm_mon = month(fk::TextToLong(w + 3));
            date->tm_year = fk::TextToLong(w + 6);
            break;
        case 16:
            date->tm_year = fk::TextToLong(w);
            date->tm_mon = month(fk::TextToLong(w + 3));
            date->tm_mday = fk::TextToLong(w + 6);
            break;
        case 32:
            date->tm_year = fk::TextToLong(w);
            date->tm_mon = month(fk::TextToLong(w + 5));
            date->tm_mday = fk::TextToLong(w + 8);
            break;
        default:
            return;
    }
    if (form == 2 || form == 8 || form == 32) {
        date->tm_year = FourDigitYear(date->tm_year);
    }
}

int32_t FK_API twDateCmp(const struct tm* a, const struct tm* b) {
    if (a == nullptr || b == nullptr) {
        return 0;
    }
    if (a->tm_year != b->tm_year) {
        return a->tm_year > b->tm_year ? 1 : -1;
    }
    if (a->tm_mon != b->tm_mon) {
        return a->tm_mon > b->tm_mon ? 1 : -1;
    }
    if (a->tm_mday != b->tm_mday) {
        return a->tm_mday > b->tm_mday ? 1 : -1;
    }
    return 0;
}

int32_t FK_API twIsDateValid(const struct tm* date) {
    if (date == nullptr) {
        return 0;
    }
    if (fk::IsEmptyDate(date, true)) {
        return 1;
    }
    if (date->tm_mon < 0 || date->tm_mon > 11) {
        return 0;
    }
    const int32_t last = kMonthDays[IsLeap(date->tm_year) ? 1 : 0][date->tm_mon];
    return date->tm_mday >= 1 && date->tm_mday <= last ? 1 : 0;
}

int32_t FK_API twIsTimeValid(const struct tm* time) {
    if (time == nullptr) {
        return 0;
    }
    return time->tm_sec >= 0 && time->tm_sec <= 59 && time->tm_min >= 0 && time->tm_min <= 59 && time->tm_hour >= 0 &&
                   time->tm_hour <= 23
               ? 1
               : 0;
}

struct tm* FK_API twTimeNow(struct tm* time) {
    if (time == nullptr) {
        return nullptr;
    }
    const time_t now = ::time(nullptr);
    struct tm* local = localtime(&now);
    if (local == nullptr) {
        return nullptr;
    }
    time->tm_sec = local->tm_sec;
    time->tm_min = local->tm_min;
    time->tm_hour = local->tm_hour;
    time->tm_mday = local->tm_mday;
    time->tm_mon = local->tm_mon;
    time->tm_year = local->tm_year;
    time->tm_wday = local->tm_wday;
    time->tm_yday = local->tm_yday;
    time->tm_isdst = local->tm_isdst;
    return local;
}

}  // extern "C"
