// The entry fields' text rules: currency, dates, masks and numbers.

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include <string>
#include <vector>

#include "fields/text/currency_text.h"
#include "fields/text/date_text.h"
#include "fields/text/mask.h"
#include "fields/text/number_text.h"

namespace {

// Currency text: formatting by country, the text of a set value, reading
// values back, and the "@CF_" keywords.

using fk::CurrencyFormat;

const int32_t kGermany = 11, kUnitedStates = 25, kSpain = 20;

// A row of the table with an explicit negative format.
CurrencyFormat Row(int32_t index, int32_t negative = 2) {
    CurrencyFormat row = fk::g_currencyFormats[index];
    row.negative = negative;
    return row;
}

std::string Format(const CurrencyFormat& row, const char* text, uint32_t style = 0) {
    char out[200];
    fk::FormatCurrency(text, row, style, out, sizeof out);
    return out;
}

TEST(CurrencyText, FormatsByRowAndStyle) {
    const uint32_t R = fk::kCurrRightJust, S = fk::kCurrSuppress;
    const struct { int32_t row; uint32_t style; const char *text, *shown; } cases[] = {
        {kGermany, 0, "  1234,5", "DM1.234,50"}, {kGermany, R, "1234", "DM1.234"},  // right-justified: no decimals
        {kGermany, S, "1234", "DM1.234"},        {kGermany, 0, "1234,597", "DM1.234,59"},  // cut, not rounded
        {kUnitedStates, 0, ".50", "$.50"},       {2, 0, "12,5", "12,50BF"},  // placements 1, 2, 3
        {13, 0, "1234,5", "L. 1.234,50"},        {10, 0, "1234,5", "1.234,50 F"},
        {21, 0, "12.5", "1'250 Fr."},  // the symbol's "." goes with it
        {kGermany, 0, "1234", "DM1.234,00"},     {kSpain, 0, "1234", "Pts 1.234"},  // Spain has no decimals
    };
    for (const auto& c : cases)
        EXPECT_EQ(Format(Row(c.row), c.text, c.style), c.shown) << c.row << " " << c.text << " " << c.style;
}

TEST(CurrencyText, NegativeFormatsAndTheirOwnTextFormatAgain) {
    const char* const shown[] = {
        "($1,234.50)", "-$1,234.50", "$-1,234.50", "$1,234.50-", "(1,234.50$)",  "-1,234.50$",
        "1,234.50-$",  "1,234.50$-", "-1,234.50 $", "-$ 1,234.50", "1,234.50 $-", "($1,234.50)",  // above 10 is 0
    };
    for (int32_t negative = 0; negative <= 11; ++negative) {
        const CurrencyFormat row = Row(kUnitedStates, negative);
        const std::string once = Format(row, "-1234.5");
        EXPECT_EQ(once, shown[negative]) << negative;
        EXPECT_EQ(Format(row, once.c_str()), once) << negative;
    }
}

TEST(CurrencyText, SetValuesBuildTheirText) {
    // No "0" before the separator; a true half rounds away from zero, 2.675 lies just below a half in binary.
    const struct { int32_t row; double value; const char* text; } doubles[] = {
        {kGermany, -1234.5, "-1234,50"}, {kUnitedStates, 0.5, ".50"},      {kUnitedStates, 0.05, "0.05"},
        {kUnitedStates, 0.125, ".13"},   {kUnitedStates, 2.675, "2.67"},    {kUnitedStates, 999.999, "1000.00"},
        {kUnitedStates, -0.0, "0"},      {kSpain, 1234.4, "1234,"},  // no decimals: the separator ends it
    };
    char out[64];
    for (const auto& c : doubles) {
        EXPECT_TRUE(fk::CurrencyDoubleText(c.value, Row(c.row), false, out, sizeof out));
        EXPECT_STREQ(out, c.text) << c.value;
    }
    EXPECT_FALSE(fk::CurrencyDoubleText(NAN, Row(kGermany), false, out, sizeof out));
    const std::pair<int32_t, const char*> longs[] = {
        {123456, "1,234.56"}, {123, "1.23"}, {5, ".5"},  // shorter than three: "." in front
        {-123456, "-1,234.56"}, {0, "0.00"}, {INT32_MIN, "-21,474,836.48"},
    };
    for (auto [value, text] : longs) {
        fk::CurrencyLongText(value, false, out, sizeof out);
        EXPECT_STREQ(out, text) << value;
    }
    char blank[8], zero[8], suppressed[16];
    fk::CurrencyLongText(0, true, blank, sizeof blank);
    fk::CurrencyZeroText(Row(kGermany), false, zero, sizeof zero);
    fk::CurrencyValueText("12,75", Row(kGermany), fk::kCurrSuppress, suppressed, sizeof suppressed);
    EXPECT_EQ((std::vector<std::string>{blank, zero, suppressed}), (std::vector<std::string>{"", "0,00", "DM12"}));
}

TEST(CurrencyText, ShownAmountsReadBack) {
    EXPECT_DOUBLE_EQ(fk::CurrencyToDouble("DM-1.234,50", Row(kGermany)), -1234.5);
    EXPECT_DOUBLE_EQ(fk::CurrencyToDouble("($1,234.56)", Row(kUnitedStates)), -1234.56);
    EXPECT_DOUBLE_EQ(fk::CurrencyToDouble("$1.50-", Row(kUnitedStates)), 1.5);  // a trailing sign is not read
    const std::pair<const char*, int32_t> hundredths[] = {
        {"$.50", 50}, {"$1.", 100}, {"$1.5", 150}, {"1.567", 156}, {"($2.00)", -200}, {"12", 1200},
        {"DM1.234,50", 0},  // only "$" is removed: another symbol stops the number
    };
    for (auto [text, value] : hundredths) EXPECT_EQ(fk::CurrencyToHundredths(text), value) << text;
}

// The date field's text rules: style resolution, masks, parsing, formatting, leaving the field.

using namespace fk;

TEST(DateStyle, ResolvesOrderSeparatorAndToday) {
    const struct { uint32_t style; const char *method, *pattern; char lastSeparator; uint32_t expected;
                   char separatorAfter; } cases[] = {
        // The order from the system pattern is ORed into the default.
        {0, "", "MM/dd/yy", 0, 0x0043, '/'},    {1, "", "dd.MM.yy", 0, 0x0015, '.'},
        {1, "", "yyyy-MM-dd", 0, 0x0027, '-'},  {1, "", "dd MMM yy", '/', 0x0021, 0},  // no order, no separator: dash
        // "@FORMAT" is ORed, not substituted; the pattern is not read then.
        {1, "@FORMAT(MMDDYY)", "dd.MM.yy", '/', 0x0043, '/'}, {1, "@format(yyyymmdd)", "dd.MM.yy", '.', 0x0017, '.'},
        // A single separator bit stays; otherwise dash, slash, dot in turn, then the separator read last.
        {0x0012, "@DASH", "", 0, 0x0012, 0},   {0x0032, "@SLASH@DASH", "", 0, 0x0022, 0},
        {0x0002, "@DOT@SLASH", "", 0, 0x0042, 0}, {0x0002, "", "", '.', 0x0012, '.'},
        {0x2302, "@DATE", "", '/', 0xA342, '/'},  // "@DATE", border and value bits stay
        {0x0002, nullptr, nullptr, '.', 0x0012, '.'},
    };
    for (const auto& c : cases) {
        g_shortDateSeparator = c.lastSeparator;
        const uint32_t resolved = ResolveDateStyle(c.style, c.method, c.pattern);
        EXPECT_EQ(std::pair(resolved, g_shortDateSeparator), std::pair(c.expected, c.separatorAfter)) << c.style;
    }
    char separator = 'x';
    EXPECT_EQ(DateOrderOfPattern((std::string(30, ' ') + "/dd/MM/yy").c_str(), &separator) + separator, 0u)
        << "the pattern is read at most thirty characters";
}

TEST(DateText, ParsesThroughTheMaskWithTheFieldsCenturyRule) {
    const struct { uint32_t style; const char* raw; int day, month, year; } cases[] = {
        {0x43, "12311999", 31, 11, 99}, {0x43, "123195", 31, 11, 95},   {0x43, "12310095", 31, 11, 95},
        {0x43, "12312005", 31, 11, 105}, {0x43, "12310150", 31, 11, 150},  // 2050
        {0x43, "12001995", 0, 11, 1995},  // no day: the year stays as typed
        {0x42, "0101101", 1, 0, 101},   {0x42, "010105", 1, 0, 5},  // 1905: two-digit orders have no window
        {0x15, "31121999", 31, 11, 99}, {0x17, "19991231", 31, 11, 99}, {0x16, "991231", 31, 11, 99},
        {0x11, "311299", 31, 11, 99},  // unresolved default: day first
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

// Raw text from a date (NormaliseDateText's rows are left as typed), and the text a left field completes.
TEST(DateText, FormatsRawTextAndCompletesTheCentury) {
    const struct { uint32_t style; int year, month, day; bool blank; const char *text, *normalised; } cases[] = {
        {0x42, 101, 0, 1, false, "0101101"},  // the three-digit year of two-digit orders
        {0x43, 99, 11, 31, false, "12311999"}, {0x17, 105, 0, 5, false, "20050105"},
        {0x43, -1850, 0, 1, false, "0101050"},  // one "0" in front, not two
        {0x42, 5, 11, 0, false, "000000"},     {0x43, 5, 11, 0, true, ""},
        {0x42, 2147483647, 2147483647, -2147483647 - 1, false, "2147483648-21474836482147483647"},
        {0x43, 0, 0, 0, false, "123195", "12311995"},  {0x43, 0, 0, 0, false, "120095", "120095"},  // day 00: as typed
        {0x42, 0, 0, 0, false, "12311995", "123195"},  {0x15, 0, 0, 0, false, "311299", "31121999"},
        {0x17, 0, 0, 0, false, "99991231", "80991231"},  // 9999 is stored 8099, which is taken once more
    };
    for (const auto& c : cases) {
        struct tm d{};
        d.tm_year = c.year, d.tm_mon = c.month, d.tm_mday = c.day;
        char out[80];
        if (c.normalised != nullptr) {
            NormaliseDateText(out, kDateRawMax + 1, c.text, c.style, c.blank);
            EXPECT_STREQ(out, c.normalised) << c.text;
            continue;
        }
        EXPECT_EQ(FormatDateText(out, sizeof out, &d, c.style, c.blank), static_cast<int32_t>(strlen(c.text)));
        EXPECT_STREQ(out, c.text);
    }
}

// Masks: application text <-> screen text and caret positions.

const char* const kPhone = "(###) ###-####";

TEST(AppToScrMask, MergesTheTextAndMapsPositions) {
    const struct { const char* app; int32_t appPos, noFill; const char* screen; int32_t index; } cases[] = {
        {"", 0, 0, "(   )    -    ", 1}, {"12", 3, 0, "(12 )    -    ", 6}, {"123456", 6, 1, "(123) 456", 10},
        {"", 10, 0, "(   )    -    ", 14}, {"", 12, 0, "(   )    -    ", 13}, {"", -1, 0, "(   )    -    ", -1},
        {"12345678901x", 0, 0, "(123) 456-78901x", 1},  // beyond the mask the text goes on
    };
    for (const auto& c : cases) {
        char screen[64];
        EXPECT_EQ(twAppToScrMask(screen, c.app, kPhone, c.appPos, c.noFill), c.index) << c.app << " " << c.appPos;
        EXPECT_STREQ(screen, c.screen);
    }
    char screen[8] = "zz";
    EXPECT_EQ(twAppToScrMask(screen, nullptr, nullptr, 0, 0) + twAppToScrMask(nullptr, "12", kPhone, 2, 0), 3);
    EXPECT_STREQ(screen, "");
    EXPECT_EQ(fk::MaskCapacity(nullptr), 0);
}

TEST(ScrToAppMask, RebuildsTheApplicationTextWhileDeletingARange) {
    const struct { const char* screen; int32_t selStart, selEnd; const char* app; int32_t result; } cases[] = {
        // Deletes the 2, or 123) 456-; blanks before the range count, behind it they are empty positions.
        {"(123) 456-7890", 2, 3, "134567890", 1},     {"(123) 456-7890", 1, 10, "7890", 0},
        {"(12 )    -    ", 14, 14, "12        ", 10}, {"(12 )    -    ", 0, 0, "12", 0},
        {"(123) 456-7890", 6, 99, "123", 3},  // the range runs off the mask
    };
    for (const auto& c : cases) {
        char app[64];
        EXPECT_EQ(fk::ScrToAppMask(app, c.screen, kPhone, c.selStart, c.selEnd), c.result) << c.screen;
        EXPECT_STREQ(app, c.app) << c.screen << " " << c.selStart << ".." << c.selEnd;
    }
}

// Number text: whole numbers wrap silently, real ones are only plain decimals; the set-value text, the quirks of the leaving walk, the buffer bounds.

TEST(NumberText, ReadsALeadingNumber) {
    const std::pair<const char*, int32_t> wholes[] = {
        {"1-2-3", 1},         {"  \t-42x", -42}, {"-", 0}, {"- 5", 0}, {"2147483648", INT32_MIN},
        {"4294967297", 1}, {nullptr, 0},
    };
    for (auto [text, value] : wholes) EXPECT_EQ(fk::NumberTextToInt32(text), value) << (text ? text : "null");
    const std::pair<const char*, double> reals[] = {
        {".5", 0.5}, {".", 0.0},   {"e5", 0.0},        {"1e+", 1.0},         {"1.2.3", 1.2},
        {"1,5", 1.0}, {"0x10", 0.0}, {"inf", 0.0},     {"-1e999", -INFINITY}, {"1e-999", 0.0}, {nullptr, 0.0},
    };
    for (auto [text, value] : reals) EXPECT_EQ(fk::NumberTextToDouble(text), value) << (text ? text : "null");
}

// Fixed notation with the places asked for; zero is blank or all zeros; without places no point is left.
TEST(RealValueText, FixedNotationZeroAndWholeNumbers) {
    const struct { double value; int32_t places; bool blank; const char* text; } cases[] = {
        {-12.25, 2, 0, "-12.25"}, {0.5, 3, 0, "0.500"}, {0.0, 2, 0, "0.00"},     {0.0, 2, 1, ""}, {0.0, 0, 0, "0"},
        {1200.0, 0, 0, "1200"},   {7.0, 1, 0, "7.0"},   {-0.004, 2, 0, "-0.00"}, {INFINITY, 2, 0, "INF"},
    };
    for (const auto& c : cases) {
        char out[64];
        fk::RealValueText(c.value, c.places, c.blank, out, sizeof out);
        EXPECT_STREQ(out, c.text) << c.value << " " << c.places;
    }
}

TEST(RealLeavingText, RoundsPadsAndCuts) {
    const struct { std::string text; int32_t places; std::string result; } cases[] = {
        {"3.14159", 2, "3.14"}, {"2.675", 2, "2.68"},   {"7", 2, "7.00"},     {".5", 2, "0.50"},
        {"3.99", 0, "3"},       {".5", -1, "0.5"},      {"1.995", 2, "2.00"}, {"9.96", 1, "10.0"},
        {"-9.96", 1, "-10.0"},  {".96", 1, "1.0"},      {"1-9.96", 1, "1.0.0"},  // a "-" inside is just a character
        {"", 2, ".00"},         {"3.1-4", 2, "3.1-"},
        {"." + std::string(158, '5'), -1, "0.5" + std::string(156, '5')},  // cut at the buffer's end
        {"9." + std::string(157, '9'), 3, "10.000"},
    };
    for (const auto& c : cases) {
        char text[160];
        std::strcpy(text, c.text.c_str());
        fk::RealLeavingText(text, sizeof text, c.places);
        EXPECT_EQ(text, c.result) << c.text << " / " << c.places;
    }
    char unterminated[4] = {'1', '.', '2', '6'};
    fk::RealLeavingText(unterminated, sizeof unterminated, 1);
    EXPECT_STREQ(unterminated, "1.2");
}

}  // namespace
