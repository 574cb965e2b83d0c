// The date field's text rules: style resolution, masks, parsing, formatting, leaving the field.

#include <gtest/gtest.h>

#include <string.h>

#include <string>
#include <vector>

#include "fields/text/date_text.h"

namespace {

using namespace fk;

TEST(DateStyle, ResolvesOrderSeparatorAndToday) {
    const struct { uint32_t style; const char *method, *pattern; char lastSeparator; uint32_t expected;
                   char separatorAfter; } cases[] = {
        // The order from the system pattern is ORed into the default.
        {0, "", "MM/dd/yy", 0, 0x0043, '/'},    {1, "", "dd.MM.yy", 0, 0x0015, '.'},
        {1, "", "yyyy-MM-dd", 0, 0x0027, '-'},  {1, "", "M/d/yyyy", 0, 0x0043, '/'},
        {1, "", "dd MMM yy", '/', 0x0021, 0},  // no order, no separator: dash
        // "@FORMAT" is ORed, not substituted; the pattern is not read then.
        {1, "@FORMAT(MMDDYY)", "dd.MM.yy", '/', 0x0043, '/'}, {2, "@FORMAT(DDMMYY)", "", 0, 0x0026, 0},
        {1, "@format(yyyymmdd)", "dd.MM.yy", '.', 0x0017, '.'},
        // A single separator bit stays; otherwise dash, slash, dot in turn, then the separator read last.
        {0x0012, "@DASH", "", 0, 0x0012, 0},   {0x0032, "@SLASH@DASH", "", 0, 0x0022, 0},
        {0x0002, "@DOT@SLASH", "", 0, 0x0042, 0}, {0x0002, "", "", '/', 0x0042, '/'},
        {0x0002, "", "", '.', 0x0012, '.'},
        {0x2302, "@DATE", "", '/', 0xA342, '/'},  // "@DATE", border and value bits stay
        {0x0002, nullptr, nullptr, '.', 0x0012, '.'},
    };
    for (const auto& c : cases) {
        g_shortDateSeparator = c.lastSeparator;
        EXPECT_EQ(ResolveDateStyle(c.style, c.method, c.pattern), c.expected)
            << c.style << " " << (c.method ? c.method : "null") << " " << (c.pattern ? c.pattern : "null");
        EXPECT_EQ(g_shortDateSeparator, c.separatorAfter) << c.style << " " << (c.pattern ? c.pattern : "null");
    }
}

TEST(DateStyle, PatternIsReadAtMostThirtyCharacters) {
    char separator = 'x';
    EXPECT_EQ(DateOrderOfPattern((std::string(30, ' ') + "/dd/MM/yy").c_str(), &separator), 0u);
    EXPECT_EQ(separator, 0);
    EXPECT_EQ(DateOrderOfPattern("dd/MM/yy/", &separator), 0u) << "only two separators go";
}

TEST(DateStyle, NineMasks) {
    const std::pair<uint32_t, const char*> cases[] = {
        {0x01, "**/**/**"},   {0x45, "**/**/****"}, {0x07, "****/**/**"}, {0x26, "**-**-**"},
        {0x23, "**-**-****"}, {0x27, "****-**-**"}, {0x12, "**.**.**"},   {0x15, "**.**.****"},
        {0x17, "****.**.**"}, {0x72, "**/**/**"},
    };
    for (const auto& [style, mask] : cases) {
        EXPECT_STREQ(DateMask(style), mask) << std::hex << style;
        EXPECT_EQ(DateSeparator(style), mask[strspn(mask, "*")]);
    }
}

TEST(DateText, ParsesThroughTheMaskWithTheFieldsCenturyRule) {
    const struct { uint32_t style; const char* raw; int day, month, year; } cases[] = {
        {0x43, "12311999", 31, 11, 99}, {0x43, "123195", 31, 11, 95},   {0x43, "12310095", 31, 11, 95},
        {0x43, "12312005", 31, 11, 105}, {0x43, "12310150", 31, 11, 150},  // 2050
        {0x43, "12001995", 0, 11, 1995},  // no day: the year stays as typed
        {0x43, "1231", 31, 11, 0},      {0x42, "123195", 31, 11, 95},   {0x42, "0101101", 1, 0, 101},
        {0x42, "010105", 1, 0, 5},  // 1905: two-digit orders have no window
        {0x15, "31121999", 31, 11, 99}, {0x14, "311299", 31, 11, 99},   {0x17, "19991231", 31, 11, 99},
        {0x16, "991231", 31, 11, 99},   {0x11, "311299", 31, 11, 99},  // unresolved default: day first
        {0x43, "", 0, -1, 0},           {0x42, "02/03/2004", 0, 1, 3},  // separators in the raw text split early
    };
    for (const auto& c : cases) {
        struct tm d;
        memset(&d, 0x5A, sizeof d);
        ParseDateText(c.raw, c.style, &d);
        EXPECT_EQ((std::vector<int>{d.tm_mday, d.tm_mon, d.tm_year, d.tm_hour}),
                  (std::vector<int>{c.day, c.month, c.year, 0x5A5A5A5A}))  // only the date is touched
            << c.raw << " style " << std::hex << c.style;
    }
}

TEST(DateText, FormatsRawText) {
    const struct { uint32_t style; int year, month, day; bool blank; const char* text; } cases[] = {
        {0x42, 101, 0, 1, false, "0101101"},  // the three-digit year of two-digit orders
        {0x43, 99, 11, 31, false, "12311999"}, {0x17, 105, 0, 5, false, "20050105"},
        {0x16, 5, 0, 5, false, "050105"},      {0x15, 99, 11, 31, false, "31121999"},
        {0x43, -1850, 0, 1, false, "0101050"},  // one "0" in front, not two
        {0x42, 5, 11, 0, false, "000000"},     {0x43, 5, 11, 0, false, "00000000"}, {0x43, 5, 11, 0, true, ""},
        {0x42, 2147483647, 2147483647, -2147483647 - 1, false, "2147483648-21474836482147483647"},
    };
    for (const auto& c : cases) {
        struct tm d{};
        d.tm_year = c.year, d.tm_mon = c.month, d.tm_mday = c.day;
        char out[80];
        const int32_t n = FormatDateText(out, sizeof out, &d, c.style, c.blank);
        EXPECT_STREQ(out, c.text);
        EXPECT_EQ(n, static_cast<int32_t>(strlen(c.text)));
    }
}

TEST(DateText, LeavingTheFieldCompletesTheCentury) {
    const std::pair<uint32_t, std::pair<const char*, const char*>> cases[] = {
        {0x43, {"123195", "12311995"}},
        {0x43, {"120095", "120095"}},  // day 00: left as typed
        {0x42, {"12311995", "123195"}},
        {0x15, {"311299", "31121999"}},
        {0x17, {"99991231", "80991231"}},  // 9999 is stored 8099, which is taken once more
    };
    for (const auto& [style, texts] : cases) {
        char out[kDateRawMax + 1];
        NormaliseDateText(out, sizeof out, texts.first, style, false);
        EXPECT_STREQ(out, texts.second) << texts.first;
    }
}

}  // namespace
