// Range and choice tests: gathering of bounds and items by type.
#include <gtest/gtest.h>

#include <string.h>
#include <time.h>

#include <string>

#include "validate/dates.h"
#include "validate/range_parse.h"

namespace {

int32_t Exact(const char* a, const char* b) {
    return strcmp(a, b);
}
int32_t NoCase(const char* a, const char* b) {
    return strcasecmp(a, b);
}

int32_t RangeLong(int32_t v, const char* text, int32_t type = 1) {
    return fk::RangeTest(type, &v, text, Exact);
}
int32_t RangeDouble(double v, const char* text, int32_t type = 3) {
    return fk::RangeTest(type, &v, text, Exact);
}
int32_t ChoiceLong(int32_t v, const char* text, int32_t type = 1) {
    return fk::ChoiceTest(type, &v, text, Exact);
}
int32_t ChoiceDouble(double v, const char* text, int32_t type) {
    return fk::ChoiceTest(type, &v, text, Exact);
}

struct tm Date(int year, int month, int day) {
    struct tm d;
    memset(&d, 0, sizeof d);
    d.tm_year = year;
    d.tm_mon = month;
    d.tm_mday = day;
    return d;
}

TEST(Range, WholeNumbers) {
    struct Case {
        int32_t value;
        const char* text;
        int32_t want;
    } cases[] = {
        {5, "@RNG(1,10)", 1},
        {1, "@RNG(1,10)", 1},
        {10, "@RNG(1,10)", 1},
        {11, "@RNG(1,10)", 0},
        {25, "@RNG(1,10)(20,30)", 1},
        {15, "@RNG(1,10)(20,30)", 0},
        {25, "@RNG(1,10) (20,30)", 0},   // the next group must follow ")" directly
        {99999, "@RNG(1,10)(20,30)(40,)", 1},
        {-5, "@RNG(,100)", 1},
        {101, "@RNG(,100)", 0},
        {4, "@RNG(5,)", 0},
        {-2147483647, "@RNG(,)", 1},
        {1500, "@RNG( 1,000 , +2,000 )", 1},  // blanks, "+" and separators skipped
        {-3, "@RNG(-5,-1)", 1},
        {5, "@RNG", 0},                  // no group
        {5, "@RNG(1,10", 0},             // the text ends inside a group
        {5, "@RNG(1", 0},
        {5, "", 0},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(RangeLong(c.value, c.text), c.want) << c.value << " " << c.text;
        EXPECT_EQ(RangeLong(c.value, c.text, 2), c.want) << c.value << " " << c.text;
    }
}

TEST(Range, Reals) {
    EXPECT_EQ(RangeDouble(1.5, "@RNG(1.25,1.75)"), 1);
    EXPECT_EQ(RangeDouble(1.8, "@RNG(1.25,1.75)"), 0);
    EXPECT_EQ(RangeDouble(-0.5, "@RNG(-1,0)", 12), 1);
    EXPECT_EQ(RangeDouble(1000.5, "@RNG(1 000.25, 1e3)"), 0);  // "e" skipped: high is 13
}

TEST(Range, TextKeepsEveryCharacter) {
    auto range = [](const char* v, const char* text, fk::TextCompare cmp = Exact) {
        return fk::RangeTest(4, v, text, cmp);
    };
    EXPECT_EQ(range("b", "@RNG(a,m)"), 1);
    EXPECT_EQ(range("Apple", "@RNG(a,m)"), 0);  // byte order here; locale order on Windows
    EXPECT_EQ(range("Apple", "@RNGI(a,m)", NoCase), 1);
    EXPECT_EQ(range("b", "@RNG( a,m)"), 1);
    EXPECT_EQ(range(" b", "@RNG(a,m)"), 0);  // blanks are not trimmed
    EXPECT_EQ(range("", "@RNG(,)"), 1);
}

TEST(Range, Dates) {
    struct tm d = Date(95, 5, 15);  // 15 June 1995
    EXPECT_EQ(fk::RangeTest(13, &d, "@RNG(01/01/90,12/31/99)", Exact), 1);
    EXPECT_EQ(fk::RangeTest(13, &d, "@RNG(01/01/96,)", Exact), 0);
    EXPECT_EQ(fk::RangeTest(14, &d, "@RNG(06/15/1995,06/15/1995)", Exact), 1);
    EXPECT_EQ(fk::RangeTest(16, &d, "@RNG(16.06.1995,)", Exact), 0);
    EXPECT_EQ(fk::RangeTest(18, &d, "@RNG(1995-01-01,1995-12-31)", Exact), 1);
    EXPECT_EQ(fk::RangeTest(5, &d, "@RNG(,12/31/99)", Exact), 1);
    // Any other character in a date bound makes the test fail whatever the value.
    EXPECT_EQ(fk::RangeTest(13, &d, "@RNG(Jan 1 1990,)", Exact), 0);
    EXPECT_EQ(fk::RangeTest(13, &d, "@RNG(01/01/90, 12/31/99)", Exact), 0);
}

TEST(Range, EightyCharacterBounds) {
    // 80 characters gathered: the next character ends the bound, whatever
    // it is, so "x" takes the place of the ",".
    const std::string low(80, 'a');
    std::string text = "@RNG(" + low + "xzzz)";
    EXPECT_EQ(fk::RangeTest(4, "b", text.c_str(), Exact), 1);  // low = 80 a's, high = "zzz"
    EXPECT_EQ(fk::RangeTest(4, "a", text.c_str(), Exact), 0);
    // Skipped characters do not count toward the 80.
    std::string digits = "@RNG(" + std::string(100, ' ') + "5,9)";
    EXPECT_EQ(RangeLong(7, digits.c_str()), 1);
    // A long high bound ends at its 81st character; the ")" after it is then
    // not followed by "(".
    std::string high = "@RNG(0," + std::string(85, '0') + ")(5,9)";
    EXPECT_EQ(RangeLong(5, high.c_str()), 0);
    EXPECT_EQ(RangeLong(0, high.c_str()), 1);
}

TEST(Range, UnknownTypeOrNullValueFails) {
    int32_t v = 5;
    EXPECT_EQ(fk::RangeTest(7, &v, "@RNG(,)", Exact), 0);
    EXPECT_EQ(fk::RangeTest(1, nullptr, "@RNG(,)", Exact), 0);
    EXPECT_EQ(fk::RangeTest(1, &v, nullptr, Exact), 0);
}

TEST(Choice, Numbers) {
    struct Case {
        int32_t value;
        const char* text;
        int32_t want;
    } cases[] = {
        {2, "@CHC(1,2,3)", 1},
        {3, "@CHC(1,2,3)", 1},
        {4, "@CHC(1,2,3)", 0},
        {2, "@CHC(1,,2)", 1},      // empty items are skipped
        {0, "@CHC(1,)", 0},        // an empty last item fails
        {-7, "@CHC( -7 ,8)", 1},
        {1000, "@CHC(1,000)", 0},  // "," separates items
        {5, "@CHC(1,2)(5)", 0},    // only the first group is read
        {5, "@CHC(5", 0},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(ChoiceLong(c.value, c.text), c.want) << c.value << " " << c.text;
    }
}

TEST(Choice, RealsDropThePointForLongDouble) {
    EXPECT_EQ(ChoiceDouble(1.5, "@CHC(1.5,2)", 3), 1);
    EXPECT_EQ(ChoiceDouble(1.5, "@CHC(1.5,2)", 12), 0);
    EXPECT_EQ(ChoiceDouble(15.0, "@CHC(1.5)", 12), 1);  // "1.5" is the number 15
}

TEST(Choice, TextItemsAreClippedValueIsNot) {
    auto choice = [](const char* v, const char* text, fk::TextCompare eq = Exact) {
        return fk::ChoiceTest(4, v, text, eq);
    };
    EXPECT_EQ(choice("Red", "@CHC(Red, Green , Blue)"), 1);
    EXPECT_EQ(choice("Green", "@CHC(Red, Green , Blue)"), 1);
    EXPECT_EQ(choice("Blue", "@CHC(Red, Green , Blue)"), 1);
    EXPECT_EQ(choice(" Red", "@CHC(Red,Green)"), 0);
    EXPECT_EQ(choice("red", "@CHC(Red,Green)"), 0);
    EXPECT_EQ(choice("red", "@CHCI(Red,Green)", NoCase), 1);
    EXPECT_EQ(choice("", "@CHC( ,x)"), 1);  // a blank item is not skipped: it clips to ""
    EXPECT_EQ(choice("", "@CHC(,x)"), 0);
}

TEST(Choice, Dates) {
    struct tm d = Date(99, 11, 31);
    EXPECT_EQ(fk::ChoiceTest(13, &d, "@CHC(01/01/99,12/31/99)", Exact), 1);
    EXPECT_EQ(fk::ChoiceTest(16, &d, "@CHC(31.12.1999)", Exact), 1);
    EXPECT_EQ(fk::ChoiceTest(16, &d, "@CHC(30.12.1999)", Exact), 0);
}

TEST(Choice, EightyCharacterItems) {
    const std::string item(80, 'q');
    // The 81st character ends the item: "r" is lost, "s" is the next item.
    std::string text = "@CHC(" + item + "rs)";
    EXPECT_EQ(fk::ChoiceTest(4, item.c_str(), text.c_str(), Exact), 1);
    EXPECT_EQ(fk::ChoiceTest(4, "s", text.c_str(), Exact), 1);
    EXPECT_EQ(fk::ChoiceTest(4, "rs", text.c_str(), Exact), 0);
}

}  // namespace

namespace {

// Random method texts of the characters that matter to the gatherers: no
// type reads past the text or its 80-character buffers (the native build
// runs with the address sanitizer).
TEST(RangeChoice, RandomTextsStayInBounds) {
    const char alphabet[] = "(),-./0123456789 aZ@";
    uint32_t seed = 12345;
    auto next = [&seed] { return seed = seed * 1103515245u + 12345u, (seed >> 16) & 0x7FFF; };
    for (int round = 0; round < 3000; ++round) {
        std::string text = "@RNG";
        const int len = static_cast<int>(next() % 200);
        for (int i = 0; i < len; ++i) text.push_back(alphabet[next() % (sizeof alphabet - 1)]);
        const int32_t type = static_cast<int32_t>(next() % 20);
        int32_t whole = static_cast<int32_t>(next());
        double real = whole / 7.0;
        struct tm date = Date(static_cast<int>(next() % 200), static_cast<int>(next() % 12), 1);
        const void* value = type == 4 ? static_cast<const void*>("m")
                            : (type == 3 || type == 12) ? static_cast<const void*>(&real)
                            : type == 1 || type == 2 ? static_cast<const void*>(&whole)
                                                     : static_cast<const void*>(&date);
        const int32_t r = fk::RangeTest(type, value, text.c_str(), Exact);
        const int32_t c = fk::ChoiceTest(type, value, text.c_str(), Exact);
        EXPECT_TRUE(r == 0 || r == 1);
        EXPECT_TRUE(c == 0 || c == 1);
        struct tm parsed = date;
        twDateToTM(&parsed, text.c_str() + 4, 1 << (next() % 6));
    }
}

}  // namespace
