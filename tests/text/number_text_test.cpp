// Number text: decimal integers with their silent wrap, the fixed-point
// conversion and the real field's texts, text to double without the locale.

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <string>

#include "fields/number_text.h"

namespace {

using fk::NumberTextToDouble;
using fk::NumberTextToInt32;

TEST(NumberTextToInt32, ReadsALeadingNumberAndWrapsSilently) {
    const std::pair<const char*, int32_t> cases[] = {
        {"1-2-3", 1},          {"  \t-42x", -42},   {"+7", 7},          {"", 0},
        {"-", 0},              {"abc", 0},          {"- 5", 0},         {"2147483647", 2147483647},
        {"2147483648", INT32_MIN}, {"-2147483648", INT32_MIN}, {"4294967297", 1}, {"99999999999999999999", 1661992959},
    };
    for (auto [text, value] : cases) EXPECT_EQ(NumberTextToInt32(text), value) << text;
    EXPECT_EQ(NumberTextToInt32(nullptr), 0);
}

TEST(WriteInt32, WritesSignedDecimalAndCutsToTheBuffer) {
    char out[16];
    for (int32_t v : {0, 7, -1, 2147483647, INT32_MIN}) {
        fk::WriteInt32(out, sizeof out, v);
        EXPECT_EQ(std::string(out), std::to_string(v));
    }
    char small[4] = "zzz";
    EXPECT_EQ(fk::WriteInt32(small, sizeof small, -12345), 3u);
    EXPECT_STREQ(small, "-12");
}

struct Fixed {
    double value;
    int32_t places;
    const char* digits;
    int32_t point;
};

TEST(FixedPoint, GivesDigitsPointAndSign) {
    const Fixed cases[] = {
        {3.14159, 2, "314", 1}, {0.5, 2, "50", 0},    {0.05, 2, "5", -1},   {12.345, 0, "12", 2},
        {100.0, 0, "100", 3},   {0.001, 2, "", -2},   {0.3, 0, "", 0},      {9.996, 2, "1000", 2},
        {1e20, 1, "1000000000000000000000", 21},
    };
    fk::FixedDigits fd;
    for (const Fixed& c : cases) {
        fk::FixedPoint(c.value, c.places, &fd);
        EXPECT_STREQ(fd.digits, c.digits) << c.value;
        EXPECT_EQ(fd.point, c.point) << c.value;
        EXPECT_FALSE(fd.negative);
    }
    fk::FixedPoint(-0.001, 2, &fd);
    EXPECT_TRUE(fd.negative);
    fk::FixedPoint(INFINITY, 2, &fd);
    EXPECT_FALSE(fd.finite);
}

struct ValueText {
    double value;
    int32_t places;
    bool blank;
    const char* text;
};

TEST(RealValueText, BuildsTheShownText) {
    const ValueText cases[] = {
        {3.99, 0, false, "4"},      {12.345, 0, false, "12"},   {100.0, 0, false, "100"},
        {0.3, 0, false, "0"},       {-0.3, 0, false, "-0"},     {0.0, 3, false, "0.000"},
        {0.0, 0, false, "0"},       {-0.0, 2, true, ""},        {0.5, 2, false, "0.50"},
        {0.05, 2, false, "0.05"},   {-2.5, 1, false, "-2.5"},   {1234.5, 2, false, "1234.50"},
        {0.001, 2, false, "0.00"},  {2.4, -3, false, "2"},      {INFINITY, 2, false, "INF"},
        {-INFINITY, 0, false, "-INF"}, {NAN, 0, false, "NAN"},
    };
    for (const ValueText& c : cases) {
        char out[160];
        fk::RealValueText(c.value, c.places, c.blank, out, sizeof out);
        EXPECT_STREQ(out, c.text) << c.value << " / " << c.places;
    }
}

TEST(RealValueText, StaysInsideItsBuffer) {
    char out[160];
    fk::RealValueText(1e308, 5, false, out, sizeof out);
    EXPECT_EQ(std::strlen(out), 159u);
    fk::RealValueText(0.0, 100000, false, out, sizeof out);
    EXPECT_EQ(std::strlen(out), 159u);
    char tiny[3];
    fk::RealValueText(-12.5, 1, false, tiny, sizeof tiny);
    EXPECT_STREQ(tiny, "-1");
}

struct Leaving {
    const char* text;
    int32_t places;
    const char* result;
};

TEST(RealLeavingText, RoundsPadsAndCuts) {
    const Leaving cases[] = {
        {"3.14159", 2, "3.14"},  {"2.675", 2, "2.68"},  {"7", 2, "7.00"},    {".5", 2, "0.50"},
        {"3.99", 0, "3"},        {"1.2", 3, "1.200"},   {".5", -1, "0.5"},   {"12.345", -1, "12.345"},
        {"1.995", 2, "2.00"},    {"9.96", 1, "10.0"},   {"-9.96", 1, "-10.0"}, {".96", 1, "1.0"},
        {"-1.96", 1, "-2.0"},    {"1-9.96", 1, "1.0.0"}, {"", 2, ".00"},     {"5.", 2, "5.00"},
        {"3.1-4", 2, "3.1-"},    {"9", 0, "9"},
    };
    for (const Leaving& c : cases) {
        char text[160];
        std::strcpy(text, c.text);
        fk::RealLeavingText(text, sizeof text, c.places);
        EXPECT_STREQ(text, c.result) << c.text << " / " << c.places;
    }
}

TEST(RealLeavingText, StaysInsideItsBuffer) {
    std::string full = "." + std::string(158, '5');
    char text[160];
    std::strcpy(text, full.c_str());
    fk::RealLeavingText(text, sizeof text, -1);
    EXPECT_EQ(std::string(text), "0" + full.substr(0, 158));
    std::strcpy(text, std::string(159, '9').c_str());
    fk::RealLeavingText(text, sizeof text, 2);
    EXPECT_EQ(std::strlen(text), 159u);
    // Nines up to the cut with the text at its longest.
    std::strcpy(text, ("9." + std::string(157, '9')).c_str());
    fk::RealLeavingText(text, sizeof text, 3);
    EXPECT_STREQ(text, "10.000");
    char unterminated[4] = {'1', '.', '2', '6'};
    fk::RealLeavingText(unterminated, sizeof unterminated, 1);
    EXPECT_STREQ(unterminated, "1.2");
}

TEST(NumberTextToDouble, ReadsTheLeadingNumber) {
    const std::pair<const char*, double> cases[] = {
        {"3.14", 3.14},   {"  -2.5e1x", -25.0}, {".5", 0.5},     {"5.", 5.0},   {"", 0.0},
        {"-", 0.0},       {".", 0.0},           {"e5", 0.0},     {"1e", 1.0},   {"1e+", 1.0},
        {"1.2.3", 1.2},   {"+4E-2", 0.04},      {"0x10", 0.0},   {"inf", 0.0},  {"1,5", 1.0},
        {"1e999", INFINITY}, {"-1e999", -INFINITY}, {"1e-999", 0.0}, {"0.0000e999", 0.0},
    };
    for (auto [text, value] : cases) EXPECT_EQ(NumberTextToDouble(text), value) << text;
    const char* end = nullptr;
    const char text[] = " 12.5e3abc";
    NumberTextToDouble(text, &end);
    EXPECT_EQ(end, text + 7);
    NumberTextToDouble("-x", &end);
}

TEST(NarrowToFloat, SaturatesLikeTheFpu) {
    EXPECT_EQ(fk::NarrowToFloat(1e300), INFINITY);
    EXPECT_EQ(fk::NarrowToFloat(-1e300), -INFINITY);
    EXPECT_EQ(fk::NarrowToFloat(3.4028235e38), std::numeric_limits<float>::max());
    EXPECT_EQ(fk::NarrowToFloat(2.5), 2.5f);
    EXPECT_TRUE(std::isnan(fk::NarrowToFloat(NAN)));
}

}  // namespace
