// Validation's text routines: dates in and out, order and calendar check; range and choice tests by type.
#include <gtest/gtest.h>

#include <stdint.h>

#include <string.h>
#include <time.h>

#include <string>
#include <utility>
#include <vector>

#include "validate/text/dates.h"
#include "validate/text/range_parse.h"

namespace {

struct tm Date(int year, int month, int day) {
    struct tm d{};
    d.tm_year = year, d.tm_mon = month, d.tm_mday = day;
    return d;
}

TEST(Dates, TextToDateByFormAndYearRule) {
    struct { const char* text; int32_t form; int year, month, day; } cases[] = {
        {"12/31/1999", 2, 99, 11, 31}, {"02/29/0100", 2, 100, 1, 29},  // below 201: years since 1900
        {"01/01/0200", 2, 200, 0, 1},  {"01/01/0201", 2, -1699, 0, 1},  // 201 and above: full years
        {"1999-12-31", 32, 99, 11, 31}, {"0150-06-01", 32, 150, 5, 1},   {"31.12.1999", 8, 99, 11, 31},
        {"31.12.05", 4, 5, 11, 31},     {"12/31/95", 1, 95, 11, 31},     {"99/12/31", 16, 99, 11, 31},
        {"12/31/105", 1, 105, 11, 31},  {" 1/ 2/ 3", 1, 3, 0, 2},        {"12", 1, 0, 11, 0},  // missing parts: 0
        // Only 12 characters are read; an unknown form reads nothing.
        {"1999-12-31999999999", 32, 99, 11, 3199}, {"1999-12-31", 64, 7, 7, 7},
    };
    for (const auto& c : cases) {
        struct tm d = Date(7, 7, 7);
        d.tm_hour = 13;
        twDateToTM(&d, c.text, c.form);
        EXPECT_EQ((std::vector<int>{d.tm_year, d.tm_mon, d.tm_mday, d.tm_hour}),
                  (std::vector<int>{c.year, c.month, c.day, 13})) << c.text;  // other fields stay
    }
}

TEST(Dates, DateToTextByForm) {
    struct { struct tm date; int32_t form; char sep; const char* text; } cases[] = {
        {Date(105, 0, 5), 1, '/', "01/05/105"},    {Date(105, 0, 5), 32, '-', "2005-01-05"},
        {Date(99, 11, 31), 2, '/', "12/31/1999"},  {Date(99, 11, 31), 4, '.', "31.12.99"},
        {Date(99, 11, 31), 8, '.', "31.12.1999"},  {Date(5, 0, 9), 16, '/', "05/01/09"},
        // An unknown form writes nothing, no form more than 11 characters (a null text: whatever they are); month
        // + 1 and year + 1900 wrap at the 32-bit limits without overflow.
        {Date(-1900, 0, 1), 32, '-', "0000-01-01"},   {Date(99, 11, 31), 3, '/', ""},
        {Date(2000000000, -2000000000, 2000000000), 2, '/', nullptr}, {Date(99, INT32_MAX, 1), 1, '/', "-2147483648"},
        {Date(INT32_MAX, 0, 1), 32, '/', "-2147481749"}, {Date(INT32_MIN, INT32_MIN, INT32_MIN), 2, '/', "-2147483647"},
    };
    for (const auto& c : cases) {
        char buf[32];
        memset(buf, 'x', sizeof buf);
        const int32_t n = twTMToDate(buf, &c.date, c.form, c.sep);
        const std::string want = c.text ? c.text : std::string(buf, 11);
        EXPECT_EQ(n, static_cast<int32_t>(want.size())) << c.form;
        EXPECT_EQ(std::string(buf, n + 2), want + (n ? '\0' : 'x') + 'x');  // terminated (if written), no more
    }
}

TEST(Dates, OrderValidityAndNullPointers) {
    struct tm a = Date(99, 5, 10), b = Date(99, 5, 10);
    a.tm_hour = 23;
    EXPECT_EQ(twDateCmp(&a, &b), 0);  // the time fields take no part
    const struct tm later[][2] = {{Date(100, 0, 1), Date(99, 11, 31)}, {Date(99, 1, 1), Date(99, 0, 31)},
                                  {Date(99, 1, 2), Date(99, 1, 1)},    {Date(5, 0, 1), Date(-5, 0, 1)}};
    for (const auto& p : later) EXPECT_EQ(std::pair(twDateCmp(&p[0], &p[1]), twDateCmp(&p[1], &p[0])), std::pair(1, -1));
    // The leap rule runs on the stored years since 1900: 1900 (0) leaps, 2000 (100) does not.
    const std::pair<struct tm, int32_t> dates[] = {
        {Date(0, 0, 0), 1},    {Date(0, -1, 0), 1},  {Date(0, 1, 29), 1},  {Date(96, 1, 29), 1},  {Date(99, 11, 31), 1},
        {Date(-4, 1, 29), 1},  {Date(95, 5, 0), 0},  {Date(100, 1, 29), 0}, {Date(97, 1, 29), 0}, {Date(99, 3, 31), 0},
        {Date(99, 12, 1), 0},  {Date(99, -1, 1), 0},
    };
    for (const auto& [d, valid] : dates)
        EXPECT_EQ(twIsDateValid(&d), valid) << d.tm_year << "/" << d.tm_mon << "/" << d.tm_mday;
    // Hours 0-23, minutes and seconds 0-59.
    const std::pair<std::vector<int>, int32_t> times[] = {
        {{0, 0, 0}, 1}, {{23, 59, 59}, 1}, {{24, 0, 0}, 0}, {{-1, 0, 0}, 0},
        {{0, 60, 0}, 0}, {{0, -1, 0}, 0},  {{0, 0, 60}, 0}, {{0, 0, -1}, 0},
    };
    for (const auto& [hms, valid] : times) {
        struct tm t = Date(99, 0, 1);
        t.tm_hour = hms[0], t.tm_min = hms[1], t.tm_sec = hms[2];
        EXPECT_EQ(twIsTimeValid(&t), valid) << hms[0] << ":" << hms[1] << ":" << hms[2];
    }
    // Null pointers are harmless.
    struct tm t{};
    EXPECT_EQ(std::pair(twTimeNow(nullptr) == nullptr, twTimeNow(&t) != nullptr), std::pair(true, true));
    twDateToTM(nullptr, "01/01/99", 1), twDateToTM(&t, nullptr, 1);
    EXPECT_EQ(twTMToDate(nullptr, &t, 1, '/') + twDateCmp(nullptr, &t) + twIsDateValid(nullptr) + twIsTimeValid(nullptr),
              0);
}

int32_t Exact(const char* a, const char* b) { return strcmp(a, b); }
int32_t NoCase(const char* a, const char* b) { return strcasecmp(a, b); }

// The range or choice test (by text's keyword) on num (yyyymmdd for dates), or on str for type 4.
int32_t Check(int32_t type, double num, const std::string& text, const char* str) {
    int32_t whole = static_cast<int32_t>(num);
    struct tm date = Date(whole / 10000 - 1900, whole / 100 % 100 - 1, whole % 100);
    const void* v = type == 4 ? static_cast<const void*>(str) : type == 3 || type == 12 ? static_cast<const void*>(&num)
                    : type <= 2 ? static_cast<const void*>(&whole) : static_cast<const void*>(&date);
    const fk::TextCompare cmp = text.size() > 4 && text[4] == 'I' ? NoCase : Exact;
    return text.rfind("@CHC", 0) == 0 ? fk::ChoiceTest(type, v, text.c_str(), cmp)
                                      : fk::RangeTest(type, v, text.c_str(), cmp);
}

const std::string kQ(80, 'q');

TEST(RangeChoice, ByType) {
    struct { int32_t type; double num; std::string text; int32_t want; const char* str = ""; } cases[] = {
        {1, 1, "@RNG(1,10)", 1}, {1, 10, "@RNG(1,10)", 1}, {1, 11, "@RNG(1,10)", 0},
        {1, 25, "@RNG(1,10)(20,30)", 1}, {1, 15, "@RNG(1,10)(20,30)", 0}, {1, 99999, "@RNG(1,10)(20,30)(40,)", 1},
        // The next group must follow ")" directly; blanks, "+" and separators are skipped.
        {1, 25, "@RNG(1,10) (20,30)", 0}, {1, 1500, "@RNG( 1,000 , +2,000 )", 1},
        {1, -5, "@RNG(,100)", 1}, {1, 101, "@RNG(,100)", 0}, {1, 4, "@RNG(5,)", 0}, {1, -2147483647, "@RNG(,)", 1},
        {1, -3, "@RNG(-5,-1)", 1}, {1, 5, "@RNG", 0}, {1, 5, "@RNG(1,10", 0}, {1, 5, "@RNG(1", 0}, {1, 5, "", 0},
        {1, 7, "@RNG(" + std::string(100, ' ') + "5,9)", 1},  // skipped characters do not count to 80
        {1, 5, "@RNG(0," + std::string(85, '0') + ")(5,9)", 0},  // high ends at 81: ")" not before "("
        {1, 0, "@RNG(0," + std::string(85, '0') + ")(5,9)", 1},
        {3, 1.25, "@RNG(1.25,1.75)", 1}, {3, 1.8, "@RNG(1.25,1.75)", 0}, {12, -0.5, "@RNG(-1,0)", 1},
        {3, 1000.5, "@RNG(1 000.25, 1e3)", 0},  // "e" skipped: high is 13
        {4, 0, "@RNG(a,m)", 1, "b"}, {4, 0, "@RNG(a,m)", 0, "Apple"}, {4, 0, "@RNGI(a,m)", 1, "Apple"},
        {4, 0, "@RNG( a,m)", 1, "b"}, {4, 0, "@RNG(a,m)", 0, " b"}, {4, 0, "@RNG(,)", 1, ""},
        {4, 0, "@RNG(" + std::string(80, 'a') + "xzzz)", 1, "b"},  // 80 gathered: "x" ends the bound
        {4, 0, "@RNG(" + std::string(80, 'a') + "xzzz)", 0, "a"},
        {13, 19950615, "@RNG(01/01/90,12/31/99)", 1}, {13, 19950615, "@RNG(01/01/96,)", 0},
        {14, 19950615, "@RNG(06/15/1995,06/15/1995)", 1}, {16, 19950615, "@RNG(16.06.1995,)", 0},
        {18, 19950615, "@RNG(1995-01-01,1995-12-31)", 1}, {5, 19950615, "@RNG(,12/31/99)", 1},
        // Any other character in a date bound fails.
        {13, 19950615, "@RNG(Jan 1 1990,)", 0}, {13, 19950615, "@RNG(01/01/90, 12/31/99)", 0}, {7, 5, "@RNG(,)", 0},
        {1, 2, "@CHC(1,2,3)", 1}, {1, 3, "@CHC(1,2,3)", 1}, {1, 4, "@CHC(1,2,3)", 0},
        {1, 2, "@CHC(1,,2)", 1}, {1, 0, "@CHC(1,)", 0},  // empty items are skipped, an empty last item fails
        {1, -7, "@CHC( -7 ,8)", 1}, {1, 1000, "@CHC(1,000)", 0}, {1, 5, "@CHC(1,2)(5)", 0}, {1, 5, "@CHC(5", 0},
        {3, 1.5, "@CHC(1.5,2)", 1}, {12, 1.5, "@CHC(1.5,2)", 0}, {12, 15, "@CHC(1.5)", 1},  // code 12 drops the point
        {4, 0, "@CHC(Red, Green , Blue)", 1, "Green"}, {4, 0, "@CHC(Red,Green)", 0, " Red"},
        {4, 0, "@CHC(Red,Green)", 0, "red"}, {4, 0, "@CHCI(Red,Green)", 1, "red"},
        {4, 0, "@CHC( ,x)", 1, ""}, {4, 0, "@CHC(,x)", 0, ""},  // a blank item clips to "", an empty one is skipped
        {4, 0, "@CHC(" + kQ + "rs)", 1, kQ.c_str()}, {4, 0, "@CHC(" + kQ + "rs)", 1, "s"},
        {4, 0, "@CHC(" + kQ + "rs)", 0, "rs"}, {13, 19991231, "@CHC(01/01/99,12/31/99)", 1},  // the 81st is lost
        {16, 19991231, "@CHC(31.12.1999)", 1}, {16, 19991231, "@CHC(30.12.1999)", 0},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Check(c.type, c.num, c.text, c.str), c.want) << c.type << " " << c.num << c.str << " " << c.text;
        if (c.type == 1) EXPECT_EQ(Check(2, c.num, c.text, c.str), c.want) << c.num << " " << c.text;
    }
    int32_t v = 5;
    EXPECT_EQ(fk::RangeTest(1, nullptr, "@RNG(,)", Exact), 0);
    EXPECT_EQ(fk::RangeTest(1, &v, nullptr, Exact), 0);
}

}  // namespace
