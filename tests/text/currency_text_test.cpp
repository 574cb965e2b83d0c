// Currency text: formatting by country, the text of a set value, reading
// values back, and the "@CF_" keywords.

#include <gtest/gtest.h>

#include <math.h>
#include <string.h>

#include <string>

#include "fields/currency_text.h"

namespace {

using fk::CurrencyFormat;

// Rows as the table holds them, with an explicit negative format.
CurrencyFormat Row(int32_t index, int32_t negative = 2) {
    CurrencyFormat row = fk::g_currencyFormats[index];
    row.negative = negative;
    return row;
}
const int32_t kGermany = 11, kUnitedStates = 25, kSpain = 20, kSweden = 21;

std::string Format(const CurrencyFormat& row, const char* text, uint32_t style = 0) {
    char out[200];
    fk::FormatCurrency(text, row, style, out, sizeof out);
    return out;
}

TEST(CurrencyText, KeywordsPickRowsByFirstOccurrence) {
    const std::pair<const char*, int32_t> cases[] = {
        {"@LIMIT(9)@CF_GERMANY", kGermany},
        {"@cf_germany", kGermany},                 // any case
        {"@CF_GERMANYX", kGermany},                // compared over the keyword's length
        {"@CF_GERM", 0},                           // too short for any keyword
        {"@CF_XX@CF_GERMANY", 0},                  // only the first "@CF_" counts
        {"@CF_BELGIUM_FRENCH", 4},
        {"@CF_UNITEDSTATES", kUnitedStates},
        {"@CF_DEFAULT", 0},
        {"@CFGERMANY", 0},
        {"", 0},
        {nullptr, 0},
    };
    for (auto [method, row] : cases) EXPECT_EQ(fk::CurrencyRowIndex(method), row) << (method ? method : "null");
    // The rows keep their numbers, neighbours' conventions included.
    EXPECT_STREQ(fk::g_currencyFormats[fk::CurrencyRowIndex("@CF_AUSTRIA")].symbol, "BF");
    EXPECT_STREQ(fk::g_currencyFormats[fk::CurrencyRowIndex("@CF_SWEDEN")].thousands, "'");
    EXPECT_EQ(fk::g_currencyFormats[fk::CurrencyRowIndex("@CF_SPAIN")].digits, 0);
}

struct FormatCase {
    int32_t row;
    uint32_t style;
    const char* text;
    const char* shown;
};

TEST(CurrencyText, FormatsByRowAndStyle) {
    const uint32_t R = fk::kCurrRightJust, S = fk::kCurrSuppress;
    const FormatCase cases[] = {
        {kGermany, 0, "1234,5", "DM1.234,50"},
        {kGermany, 0, "-1234,50", "DM-1.234,50"},
        {kGermany, 0, "  1234", "DM1.234,00"},       // blanks stripped, decimals added
        {kGermany, R, "1234", "DM1.234"},            // right-justified: none added
        {kGermany, S, "1234", "DM1.234"},
        {kGermany, 0, "1234,567", "DM1.234,56"},     // cut, not rounded
        {kGermany, 0, "DM1.234,50", "DM1.234,50"},   // symbol and separators come again
        {kUnitedStates, 0, ".50", "$.50"},
        {kUnitedStates, 0, "1234567", "$1,234,567.00"},
        {kUnitedStates, 0, "", "$.00"},
        {2, 0, "12,5", "12,50BF"},                   // placement 1
        {13, 0, "1234,5", "L. 1.234,50"},            // placement 2
        {10, 0, "1234,5", "1.234,50 F"},             // placement 3
        {kSpain, 0, "1234", "Pts 1.234"},            // no decimals at all
        {kSweden, 0, "12.5", "1'250 Fr."},           // the symbol's "." goes with it
        {18, 0, "5,5", "5,50"},                      // no symbol
    };
    for (const FormatCase& c : cases)
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
    EXPECT_EQ(Format(Row(kUnitedStates, -1), "(1.5)"), "($1.50)");
    // Positive placements are stable too.
    for (int32_t row : {1, 2, 8, 13, 10, kGermany}) {
        const std::string once = Format(Row(row), "98765,4");
        EXPECT_EQ(Format(Row(row), once.c_str()), once) << row;
    }
}

struct DoubleCase {
    int32_t row;
    double value;
    const char* text;  // as built, before formatting
};

TEST(CurrencyText, DoublesBecomeFixedPointText) {
    const DoubleCase cases[] = {
        {kGermany, 1234.5, "1234,50"},
        {kGermany, -1234.5, "-1234,50"},
        {kUnitedStates, 0.5, ".50"},          // no "0" before the separator
        {kUnitedStates, 0.05, "0.05"},
        {kUnitedStates, 0.001, "0.00"},
        {kUnitedStates, 0.125, ".13"},        // a true half rounds away from zero
        {kUnitedStates, 2.675, "2.67"},       // just below a half in binary
        {kUnitedStates, 999.999, "1000.00"},
        {kUnitedStates, -0.0, "0"},
        {kSpain, 1234.4, "1234,"},            // no decimals: the separator ends it
        {kUnitedStates, 1e20, "100000000000000000000.00"},
    };
    for (const DoubleCase& c : cases) {
        char out[64];
        EXPECT_TRUE(fk::CurrencyDoubleText(c.value, Row(c.row), false, out, sizeof out));
        EXPECT_STREQ(out, c.text) << c.value;
    }
    char out[8] = "x";
    EXPECT_TRUE(fk::CurrencyDoubleText(0.0, Row(kGermany), true, out, sizeof out));
    EXPECT_STREQ(out, "");
    EXPECT_FALSE(fk::CurrencyDoubleText(NAN, Row(kGermany), false, out, sizeof out));
    EXPECT_FALSE(fk::CurrencyDoubleText(-INFINITY, Row(kGermany), false, out, sizeof out));
}

TEST(CurrencyText, LongsAreHundredthsWithUsSeparators) {
    const std::pair<int32_t, const char*> cases[] = {
        {123456, "1,234.56"}, {123, "1.23"},    {50, ".50"},
        {5, ".5"},  // shorter than three: "." in front, as it always was
        {-123456, "-1,234.56"}, {0, "0.00"}, {INT32_MIN, "-21,474,836.48"},
    };
    for (auto [value, text] : cases) {
        char out[32];
        fk::CurrencyLongText(value, false, out, sizeof out);
        EXPECT_STREQ(out, text) << value;
    }
    char out[8] = "x";
    fk::CurrencyLongText(0, true, out, sizeof out);
    EXPECT_STREQ(out, "");
}

TEST(CurrencyText, SetValueTextIsFormattedOrCut) {
    struct Case {
        int32_t row;
        uint32_t style;
        const char* built;
        const char* shown;
    } cases[] = {
        {kUnitedStates, 0, ".50", "$.50"},
        {kGermany, fk::kCurrSuppress, "12,75", "DM12"},
        {kGermany, 0, "", ""},  // an empty text stays empty
        {kUnitedStates, 0, "1,234.56", "$1,234.56"},
    };
    for (const Case& c : cases) {
        char out[64];
        fk::CurrencyValueText(c.built, Row(c.row), c.style, out, sizeof out);
        EXPECT_STREQ(out, c.shown) << c.built;
    }
    char out[16];
    fk::CurrencyZeroText(Row(kGermany), false, out, sizeof out);
    EXPECT_STREQ(out, "0,00");
    fk::CurrencyZeroText(Row(kGermany), true, out, sizeof out);
    EXPECT_STREQ(out, "");
}

TEST(CurrencyText, ShownAmountsReadBackAsDoubles) {
    const struct {
        int32_t row;
        const char* text;
        double value;
    } cases[] = {
        {kGermany, "DM1.234,50", 1234.5},
        {kGermany, "DM-1.234,50", -1234.5},
        {kUnitedStates, "($1,234.56)", -1234.56},
        {10, "1.234,50 F", 1234.5},
        {kUnitedStates, "$1.50-", 1.5},  // a trailing sign is not read
        {kUnitedStates, "", 0},
    };
    for (const auto& c : cases) EXPECT_DOUBLE_EQ(fk::CurrencyToDouble(c.text, Row(c.row)), c.value) << c.text;

    char out[32];
    fk::CleanCurrency(" (DM1.234,50)", Row(kGermany), true, out, sizeof out);
    EXPECT_STREQ(out, "-1234.50");
}

TEST(CurrencyText, HundredthsReadOnlyDollarPointAndComma) {
    const std::pair<const char*, int32_t> cases[] = {
        {"$1,234.56", 123456}, {"$.50", 50},  {"$1.", 100},      {"$1.5", 150},
        {"1.567", 156},        {"($2.00)", -200}, {"12", 1200},  {"", 0},
        {"DM1.234,50", 0},  // only "$" is removed: another symbol stops the number
    };
    for (auto [text, value] : cases) EXPECT_EQ(fk::CurrencyToHundredths(text), value) << text;

    // Round trip through the shown text of the United States row.
    for (int32_t value : {123456, 100, 99999, -123456, INT32_MAX}) {
        char built[32], shown[64];
        fk::CurrencyLongText(value, false, built, sizeof built);
        fk::CurrencyValueText(built, Row(kUnitedStates), 0, shown, sizeof shown);
        EXPECT_EQ(fk::CurrencyToHundredths(shown), value) << shown;
    }
}

TEST(CurrencyText, WholeNumbersWrapAndStopAtTheFirstNonDigit) {
    const std::pair<const char*, int32_t> cases[] = {
        {" -12abc", -12}, {"4294967297", 1}, {"-", 0}, {"", 0}, {"1234.50", 1234}, {"+7", 7},
    };
    for (auto [text, value] : cases) EXPECT_EQ(fk::CurrencyWhole(text), value) << text;
}

// Every routine stays inside the buffer it is given, whatever the sizes.
TEST(CurrencyText, OutputIsCutToTheBuffer) {
    CurrencyFormat wide = Row(kUnitedStates);
    wide.digits = 100000;  // what a WIN.INI may say
    std::string longText(300, '9');
    for (size_t size = 0; size < 12; ++size) {
        char buf[16];
        memset(buf, 'Q', sizeof buf);
        fk::FormatCurrency(longText.c_str(), wide, 0, buf, size);
        fk::CurrencyDoubleText(-1e300, wide, false, buf, size);
        fk::CurrencyLongText(INT32_MIN, false, buf, size);
        fk::CurrencyZeroText(wide, false, buf, size);
        fk::CurrencyValueText(longText.c_str(), wide, 0, buf, size);
        fk::CleanCurrency(longText.c_str(), wide, false, buf, size);
        for (size_t i = size; i < sizeof buf; ++i) ASSERT_EQ(buf[i], 'Q') << size;
        if (size > 0) ASSERT_LT(strlen(buf), size);
    }
    char big[400];
    fk::FormatCurrency(longText.c_str(), wide, 0, big, sizeof big);
    EXPECT_LE(strlen(big), 159u + 2);  // the amount stays in 159 characters
}

}  // namespace
