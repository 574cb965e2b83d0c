// String utilities: the quirks and null rules the fuzz targets' models leave out.
#include <gtest/gtest.h>

#include <stdint.h>
#include <string.h>

#include <string>

#include "strings/lstr.h"
#include "strings/workbuf.h"

namespace {

// A writable copy with plenty of room behind the text.
struct Buf {
    char b[256] = {};
    explicit Buf(const char* s) { strcpy(b, s); }
    std::string str() const { return b; }
};

TEST(Lstr, NullArgumentsAreHarmless) {
    EXPECT_EQ(lstrncpy(nullptr, "a", 1), nullptr);
    EXPECT_EQ(lstrncmp(nullptr, "a", 1), 0);
    EXPECT_EQ(lstricmp("a", nullptr), 0);
    EXPECT_EQ(lstrchr(nullptr, 'a'), nullptr);
    EXPECT_EQ(lstristr(nullptr, "a"), nullptr);
    EXPECT_EQ(lstristr("a", nullptr), nullptr);
    EXPECT_EQ(lstrclip(nullptr), nullptr);
    EXPECT_EQ(lstrpreclip(nullptr), nullptr);
    EXPECT_EQ(lstrcount(nullptr, 'a'), 0);
    EXPECT_EQ(lstrdigits(nullptr), 0);
    lstrminus(nullptr);
    EXPECT_EQ(fk::lstrputc(nullptr, 'a', 0), 0);
    EXPECT_EQ(fk::lstrdelc(nullptr, 0), 0);
    EXPECT_EQ(fk::lstrinsc(nullptr, 'a', 0), nullptr);
    char dst[4] = "xxx";
    EXPECT_EQ(lstrncpy(dst, "abc", 2), dst);
    EXPECT_STREQ(dst, "abx") << "the limit reached: no terminator";
}

TEST(Lstrcomma, GroupsIntegerPartOnly) {
    struct { const char* in; char sep, dp; const char* out; } cases[] = {
        {"-1234567.891", ',', '.', "-1,234,567.891"}, {"0.12345", ',', '.', "0.12345"},
        {"  1234", ',', '.', "1,234"},
        {"12,34567", ',', '.', "1,234,567"},                   // old separators regrouped
        {"1234567,5", '.', ',', "1.234.567,5"},
        {"123456789012", ',', '.', "123,456,789,012"},         // twelve digits fit
        {"1234567890123", ',', '.', ",234,567,890,123"},       // thirteen: lead digit lost
        {"1,234,567,890,123", ',', '.', "1,234,567,890,123"},  // room from old ones
        {"", ',', '.', ""},
    };
    for (const auto& c : cases) {
        Buf b(c.in);
        EXPECT_EQ(lstrcomma(b.b, c.sep, c.dp), b.b);
        EXPECT_EQ(b.str(), c.out) << c.in;
    }
}

TEST(Lstrdecp, MovesPointKeepsWidth) {
    struct { const char* in; int32_t places; char dp; const char* out; } cases[] = {
        {"12.5", 2, '.', "1.25"},     // digits stay, the point moves
        {"-5", 1, '.', "-.5"},        // the sign takes the units zero
        {"5", 2, '.', " 5"},          // too short: only aligned
        {"-1234", 2, '.', "-12.34"},
        {"00123", 2, '.', "  1.23"},  // leading zeros become blanks
        {"100005", 2, '.', "1000.05"},  // zeros behind the first digit stay
        {"-0012", 2, '.', " -0.12"},
        {"15", 1, ',', "1,5"},
        {"7", 0, '.', "7."},
        {"123", -1, '.', " 123"},     // negative places: only aligned
        // Extreme counts neither overflow nor move the point.
        {"123", INT32_MIN, '.', " 123"},
        {"123", -2147483647, '.', " 123"},
        {"12.5", INT32_MAX, '.', " 125"},
    };
    for (const auto& c : cases) {
        Buf b(c.in);
        EXPECT_EQ(lstrdecp(b.b, c.places, c.dp), b.b);
        EXPECT_EQ(b.str(), c.out) << "'" << c.in << "' " << c.places;
    }
}

TEST(Lstrminus, TogglesSignOfRightAlignedNumber) {
    struct { const char* in; const char* out; } cases[] = {
        {"  12", " -12"}, {" -12", "  12"}, {"-12", " 12"},
        {"12", "-2"},    // no leading blank: the first character goes
        {"0.5", "-.5"},
        {" ", "-"},      // the terminator counts as non-blank
        {"", ""},
    };
    for (const auto& c : cases) {
        Buf b(c.in);
        lstrminus(b.b);
        EXPECT_EQ(b.str(), c.out) << "'" << c.in << "'";
    }
}

}  // namespace
