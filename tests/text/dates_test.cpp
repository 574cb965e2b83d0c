// Dates: text forms in and out, ordering, the calendar check.
#include <gtest/gtest.h>

#include <string.h>
#include <time.h>

#include <string>

#include "validate/dates.h"

namespace {

struct tm Date(int year, int month, int day) {
    struct tm d;
    memset(&d, 0, sizeof d);
    d.tm_year = year;
    d.tm_mon = month;
    d.tm_mday = day;
    return d;
}

TEST(DateToTM, FixedPositionsAndYearRule) {
    struct Case {
        const char* text;
        int32_t form;
        int year, month, day;
    } cases[] = {
        {"12/31/1999", 2, 99, 11, 31},
        {"02/29/0100", 2, 100, 1, 29},   // below 201: already years since 1900
        {"01/01/0200", 2, 200, 0, 1},
        {"01/01/0201", 2, -1699, 0, 1},  // 201 and above are full years
        {"1999-12-31", 32, 99, 11, 31},
        {"0150-06-01", 32, 150, 5, 1},
        {"31.12.1999", 8, 99, 11, 31},
        {"31.12.05", 4, 5, 11, 31},      // two digits: no century window
        {"12/31/95", 1, 95, 11, 31},
        {"99/12/31", 16, 99, 11, 31},
        {"12/31/105", 1, 105, 11, 31},   // three-digit year of a two-digit form
        {" 1/ 2/ 3", 1, 3, 0, 2},        // leading blanks of each part
        {"12", 1, 0, 11, 0},             // parts past the text read as 0
    };
    for (const Case& c : cases) {
        struct tm d = Date(7, 7, 7);
        d.tm_hour = 13;
        twDateToTM(&d, c.text, c.form);
        EXPECT_EQ(d.tm_year, c.year) << c.text;
        EXPECT_EQ(d.tm_mon, c.month) << c.text;
        EXPECT_EQ(d.tm_mday, c.day) << c.text;
        EXPECT_EQ(d.tm_hour, 13) << "other fields stay";
    }
}

TEST(DateToTM, ReadsOnlyTwelveCharacters) {
    // Form 32's day at position 8; the work buffer holds 12 characters, so a
    // long tail of digits is cut there.
    struct tm d = Date(0, 0, 0);
    twDateToTM(&d, "1999-12-31999999999", 32);
    EXPECT_EQ(d.tm_mday, 3199);
    twDateToTM(&d, "1999-12-31", 64);  // unknown form: nothing read
    EXPECT_EQ(d.tm_mday, 3199);
}

TEST(TMToDate, Forms) {
    struct Case {
        struct tm date;
        int32_t form;
        char sep;
        const char* text;
    } cases[] = {
        {Date(105, 0, 5), 1, '/', "01/05/105"},
        {Date(105, 0, 5), 32, '-', "2005-01-05"},
        {Date(99, 11, 31), 2, '/', "12/31/1999"},
        {Date(99, 11, 31), 4, '.', "31.12.99"},
        {Date(99, 11, 31), 8, '.', "31.12.1999"},
        {Date(5, 0, 9), 16, '/', "05/01/09"},
        {Date(-1900, 0, 1), 32, '-', "0000-01-01"},
    };
    for (const Case& c : cases) {
        char buf[32];
        memset(buf, 'x', sizeof buf);
        EXPECT_EQ(twTMToDate(buf, &c.date, c.form, c.sep), static_cast<int32_t>(strlen(c.text)));
        EXPECT_STREQ(buf, c.text);
    }
}

TEST(TMToDate, UnknownFormAndOversizeFields) {
    char buf[32] = "keep";
    struct tm d = Date(99, 11, 31);
    EXPECT_EQ(twTMToDate(buf, &d, 3, '/'), 0);
    EXPECT_STREQ(buf, "keep");
    // Nonsense fields never write past the 11 characters and terminator
    // callers make room for.
    d = Date(2000000000, -2000000000, 2000000000);
    memset(buf, 'x', sizeof buf);
    EXPECT_EQ(twTMToDate(buf, &d, 2, '/'), 11);
    EXPECT_EQ(buf[11], 0);
    EXPECT_EQ(buf[12], 'x');
}

TEST(TMToDate, ExtremeFieldsWrapWithoutOverflow) {
    // The month shown is the stored month plus one and the full year the
    // stored year plus 1900, both wrapping at the 32-bit limits.
    struct Case {
        struct tm date;
        int32_t form;
        const char* text;
    } cases[] = {
        {Date(99, INT32_MAX, 1), 1, "-2147483648"},
        {Date(99, INT32_MAX, 1), 16, "99/-2147483"},
        {Date(INT32_MAX, 0, 1), 32, "-2147481749"},
        {Date(INT32_MAX, 0, 1), 8, "01/01/-2147"},
        {Date(INT32_MIN, INT32_MIN, INT32_MIN), 2, "-2147483647"},
    };
    for (const Case& c : cases) {
        char buf[12];
        memset(buf, 'x', sizeof buf);
        EXPECT_EQ(twTMToDate(buf, &c.date, c.form, '/'), static_cast<int32_t>(strlen(c.text))) << c.text;
        EXPECT_STREQ(buf, c.text);
    }
}

TEST(DateCmp, OrdersByYearMonthDayOnly) {
    struct tm a = Date(99, 5, 10), b = Date(99, 5, 10);
    a.tm_hour = 23;
    b.tm_hour = 1;
    EXPECT_EQ(twDateCmp(&a, &b), 0);
    struct Case {
        struct tm a, b;
        int32_t want;
    } cases[] = {
        {Date(100, 0, 1), Date(99, 11, 31), 1},
        {Date(99, 0, 31), Date(99, 1, 1), -1},
        {Date(99, 1, 2), Date(99, 1, 1), 1},
        {Date(-5, 0, 1), Date(5, 0, 1), -1},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(twDateCmp(&c.a, &c.b), c.want);
        EXPECT_EQ(twDateCmp(&c.b, &c.a), -c.want);
    }
}

TEST(IsDateValid, CalendarOnStoredYear) {
    struct Case {
        struct tm date;
        int32_t valid;
    } cases[] = {
        {Date(0, 0, 0), 1},      // empty, month 0
        {Date(0, -1, 0), 1},     // empty, month -1
        {Date(95, 5, 0), 0},
        {Date(100, 1, 29), 0},   // 2000 stored as 100: not a leap year here
        {Date(0, 1, 29), 1},     // 1900 stored as 0: a leap year here
        {Date(96, 1, 29), 1},
        {Date(97, 1, 29), 0},
        {Date(99, 3, 31), 0},
        {Date(99, 11, 31), 1},
        {Date(99, 12, 1), 0},
        {Date(99, -1, 1), 0},
        {Date(-4, 1, 29), 1},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(twIsDateValid(&c.date) != 0, c.valid != 0)
            << c.date.tm_year << "/" << c.date.tm_mon << "/" << c.date.tm_mday;
    }
}

TEST(IsTimeValid, Bounds) {
    const int cases[][4] = {{0, 0, 0, 1}, {23, 59, 59, 1}, {24, 0, 0, 0}, {0, 60, 0, 0}, {0, 0, 60, 0}, {0, -1, 0, 0}};
    for (const auto& c : cases) {
        struct tm t = Date(0, 0, 0);
        t.tm_hour = c[0], t.tm_min = c[1], t.tm_sec = c[2];
        EXPECT_EQ(twIsTimeValid(&t) != 0, c[3] != 0) << c[0] << ":" << c[1] << ":" << c[2];
    }
}

TEST(TimeNow, FillsAndReturnsRuntimeStructure) {
    EXPECT_EQ(twTimeNow(nullptr), nullptr);
    struct tm t = Date(0, 0, 0);
    struct tm* r = twTimeNow(&t);
    ASSERT_NE(r, nullptr);
    EXPECT_NE(r, &t);
    EXPECT_EQ(r->tm_year, t.tm_year);
    EXPECT_EQ(r->tm_yday, t.tm_yday);
    EXPECT_GE(t.tm_year, 120);
}

TEST(Dates, NullPointersAreQuiet) {
    struct tm d = Date(1, 1, 1);
    twDateToTM(nullptr, "01/01/99", 1);
    twDateToTM(&d, nullptr, 1);
    EXPECT_EQ(twTMToDate(nullptr, &d, 1, '/'), 0);
    EXPECT_EQ(twDateCmp(nullptr, &d), 0);
    EXPECT_EQ(twIsDateValid(nullptr), 0);
    EXPECT_EQ(twIsTimeValid(nullptr), 0);
}

}  // namespace
