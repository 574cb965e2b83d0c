// Number text: the cases the fuzz target's comparisons with the C runtime
// do not reach: the silent wrap, the zero and strip rules of the set-value
// text, the quirks of the leaving walk, the buffer bounds.

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>

#include "fields/text/number_text.h"

namespace {

TEST(NumberTextToInt32, ReadsALeadingNumberAndWrapsSilently) {
    const std::pair<const char*, int32_t> cases[] = {
        {"1-2-3", 1}, {"  \t-42x", -42}, {"-", 0}, {"- 5", 0}, {"2147483648", INT32_MIN}, {"4294967297", 1},
    };
    for (auto [text, value] : cases) EXPECT_EQ(fk::NumberTextToInt32(text), value) << text;
    EXPECT_EQ(fk::NumberTextToInt32(nullptr), 0);
}

struct ValueText {
    double value;
    int32_t places;
    bool blank;
    const char* text;
};

TEST(RealValueText, ZeroBlankAndStrippedWholeNumbers) {
    const ValueText cases[] = {
        {3.99, 0, false, "4"},  {100.0, 0, false, "100"}, {-0.3, 0, false, "-0"},     {0.0, 3, false, "0.000"},
        {-0.0, 2, true, ""},    {0.05, 2, false, "0.05"}, {0.001, 2, false, "0.00"},  {2.4, -3, false, "2"},
        {NAN, 0, false, "NAN"}, {-INFINITY, 1, false, "-INF"}, {-12.25, 2, false, "-12.25"},
    };
    for (const ValueText& c : cases) {
        char out[160];
        fk::RealValueText(c.value, c.places, c.blank, out, sizeof out);
        EXPECT_STREQ(out, c.text) << c.value << " / " << c.places;
    }
    char tiny[4];
    fk::RealValueText(100.0, 0, false, tiny, sizeof tiny);
    EXPECT_STREQ(tiny, "100") << "zeros are stripped before the cut";
}

struct Leaving {
    const char* text;
    int32_t places;
    const char* result;
};

TEST(RealLeavingText, RoundsPadsAndCuts) {
    const Leaving cases[] = {
        {"3.14159", 2, "3.14"}, {"2.675", 2, "2.68"},   {"7", 2, "7.00"},     {".5", 2, "0.50"},
        {"3.99", 0, "3"},       {".5", -1, "0.5"},      {"1.995", 2, "2.00"}, {"9.96", 1, "10.0"},
        {"-9.96", 1, "-10.0"},  {".96", 1, "1.0"},      {"1-9.96", 1, "1.0.0"},  // a "-" inside is just a character
        {"", 2, ".00"},         {"3.1-4", 2, "3.1-"},
    };
    for (const Leaving& c : cases) {
        char text[160];
        std::strcpy(text, c.text);
        fk::RealLeavingText(text, sizeof text, c.places);
        EXPECT_STREQ(text, c.result) << c.text << " / " << c.places;
    }
}

TEST(RealLeavingText, StaysInsideItsBuffer) {
    char text[160];
    std::strcpy(text, ("." + std::string(158, '5')).c_str());
    fk::RealLeavingText(text, sizeof text, -1);
    EXPECT_EQ(std::strlen(text), 159u);
    std::strcpy(text, ("9." + std::string(157, '9')).c_str());
    fk::RealLeavingText(text, sizeof text, 3);
    EXPECT_STREQ(text, "10.000");
    char unterminated[4] = {'1', '.', '2', '6'};
    fk::RealLeavingText(unterminated, sizeof unterminated, 1);
    EXPECT_STREQ(unterminated, "1.2");
}

TEST(NumberTextToDouble, ReadsOnlyPlainDecimalNumbers) {
    const std::pair<const char*, double> cases[] = {
        {".5", 0.5}, {".", 0.0},   {"e5", 0.0},        {"1e+", 1.0},         {"1.2.3", 1.2},
        {"1,5", 1.0}, {"0x10", 0.0}, {"inf", 0.0},     {"-1e999", -INFINITY}, {"1e-999", 0.0},
    };
    for (auto [text, value] : cases) EXPECT_EQ(fk::NumberTextToDouble(text), value) << text;
    EXPECT_EQ(fk::NumberTextToDouble(nullptr), 0.0);
}

}  // namespace
