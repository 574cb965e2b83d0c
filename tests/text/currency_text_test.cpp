// Currency text: formatting by country, the text of a set value, reading
// values back, and the "@CF_" keywords.

#include <gtest/gtest.h>

#include <math.h>

#include <string>

#include "fields/text/currency_text.h"

namespace {

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

TEST(CurrencyText, KeywordsPickRowsByFirstOccurrence) {
    const std::pair<const char*, int32_t> cases[] = {
        {"@LIMIT(9)@cf_germany", kGermany},  // any case
        {"@CF_GERMANYX", kGermany},          // compared over the keyword's length
        {"@CF_GERM", 0},
        {"@CF_XX@CF_GERMANY", 0},            // only the first "@CF_" counts
        {"@CF_BELGIUM_FRENCH", 4},
        {"@CF_UNITEDSTATES", kUnitedStates},
        {nullptr, 0},
    };
    for (auto [method, row] : cases) EXPECT_EQ(fk::CurrencyRowIndex(method), row) << (method ? method : "null");
    EXPECT_STREQ(fk::g_currencyFormats[fk::CurrencyRowIndex("@CF_AUSTRIA")].symbol, "BF");  // rows keep their numbers
}

TEST(CurrencyText, FormatsByRowAndStyle) {
    const uint32_t R = fk::kCurrRightJust, S = fk::kCurrSuppress;
    const struct {
        int32_t row;
        uint32_t style;
        const char* text;
        const char* shown;
    } cases[] = {
        {kGermany, 0, "  1234,5", "DM1.234,50"},
        {kGermany, 0, "1234", "DM1.234,00"},
        {kGermany, R, "1234", "DM1.234"},           // right-justified: no decimals added
        {kGermany, S, "1234", "DM1.234"},
        {kGermany, 0, "1234,567", "DM1.234,56"},    // cut, not rounded
        {kUnitedStates, 0, ".50", "$.50"},
        {2, 0, "12,5", "12,50BF"},                  // placements 1, 2, 3
        {13, 0, "1234,5", "L. 1.234,50"},
        {10, 0, "1234,5", "1.234,50 F"},
        {21, 0, "12.5", "1'250 Fr."},               // the symbol's "." goes with it
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
    const struct {
        int32_t row;
        double value;
        const char* text;  // before formatting
    } doubles[] = {
        {kGermany, -1234.5, "-1234,50"},
        {kUnitedStates, 0.5, ".50"},     // no "0" before the separator
        {kUnitedStates, 0.05, "0.05"},
        {kUnitedStates, 0.125, ".13"},   // a true half rounds away from zero
        {kUnitedStates, 2.675, "2.67"},  // just below a half in binary
        {kUnitedStates, 999.999, "1000.00"},
        {kUnitedStates, -0.0, "0"},
        {kSpain, 1234.4, "1234,"},       // no decimals: the separator ends it
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
    fk::CurrencyLongText(0, true, out, sizeof out);
    EXPECT_STREQ(out, "");
    fk::CurrencyZeroText(Row(kGermany), false, out, sizeof out);
    EXPECT_STREQ(out, "0,00");
    fk::CurrencyValueText("12,75", Row(kGermany), fk::kCurrSuppress, out, sizeof out);
    EXPECT_STREQ(out, "DM12");
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
    for (int32_t value : {123456, 100, -123456, INT32_MAX}) {
        char built[32], shown[64];
        fk::CurrencyLongText(value, false, built, sizeof built);
        fk::CurrencyValueText(built, Row(kUnitedStates), 0, shown, sizeof shown);
        EXPECT_EQ(fk::CurrencyToHundredths(shown), value) << shown;
    }
}

}  // namespace
