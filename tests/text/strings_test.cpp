// String utilities and method strings: the quirks and null rules the fuzz targets' models leave out.
#include <gtest/gtest.h>

#include <stdint.h>
#include <string.h>

#include <string>

#include "frame/method.h"
#include "strings/lstr.h"
#include "strings/workbuf.h"

namespace {

// A writable copy with plenty of room behind the text, the way the controls keep their texts.
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

TEST(GetMethodParam, ArgumentsAndFlags) {
    struct { const char* method; const char* keyword; int32_t result; const char* argument; } cases[] = {
        {"@NUM@LIMIT(12)@AUTOTAB", "@AUTOTAB", 1, ""},
        {"@NUM@LIMIT(12)", "@MSG", 0, ""},
        {"@limit(3)", "@LIMIT", 1, "3"},
        {"@NUMBER", "@NUM", 1, ""},                   // prefix match, flag
        {"@MSG(a (b) c)@NUM", "@MSG", 1, "a (b) c"},  // nested parentheses
        {"@MSG(a(b)", "@MSG", 1, "a(b)"},             // unclosed: to the end
        // Only the text up to the first ");" is searched.
        {"@LIMIT(5)@X);@LIMIT(9)", "@LIMIT", 1, "5"},
        {"@X(1);@LIMIT(9)", "@LIMIT", 0, ""},
        {"@X(1);@LIMIT(9)", "@X(1)", 1, ""},          // keyword ending at the cut
        // The copy starts one behind the keyword: a blank before "(" drags
        // the "(" in and runs on to the next unmatched ")".
        {"@KEY (arg)@X", "@KEY", 1, "(arg)@X"},
        {"@KEY (a)b)c", "@KEY", 1, "(a)b"},
        {"@KEY  (arg)", "@KEY", 1, " (arg)"},
        {"@KEY   (arg)", "@KEY", 1, ""},              // "(" too far: a flag
        {"@KEYx", "@KEY", 1, ""},                     // look-ahead stops at the end
    };
    for (const auto& c : cases) {
        Buf m(c.method);
        char arg[256];
        memset(arg, 'z', sizeof arg);
        EXPECT_EQ(twGetMethodParam(m.b, c.keyword, arg), c.result) << c.method << " " << c.keyword;
        EXPECT_STREQ(arg, c.argument) << c.method << " " << c.keyword;
        EXPECT_EQ(m.str(), c.method) << "method not restored";
    }
}

TEST(GetMethodParam, SpareBytesAndNulls) {
    char m[12];
    memcpy(m, "@AUTOTAB\0XYZ", 12);
    char arg[8] = "old";
    EXPECT_EQ(twGetMethodParam(m, "@AUTOTAB", arg), 1);
    EXPECT_STREQ(arg, "");
    EXPECT_EQ(std::string(m + 9, 3), std::string("\0\0Z", 3)) << "two spare bytes zeroed behind a keyword at the end";
    Buf n("@AUTOTAB@LIMIT(4)");
    EXPECT_EQ(twGetMethodParam(n.b, "@AUTOTAB", nullptr), 1);
    EXPECT_EQ(twGetMethodParam(n.b, "@LIMIT", nullptr), 1);
    strcpy(arg, "old");
    EXPECT_EQ(twGetMethodParam(nullptr, "@LIMIT", arg), 0);
    EXPECT_STREQ(arg, "");
    EXPECT_EQ(twGetMethodParam(n.b, nullptr, nullptr), 0);
}

// Items are string literals: the routines must not write into them.
TEST(MethodParam, RemoveAndAdd) {
    struct { bool add; const char* method; const char* item; int32_t result; const char* after; } cases[] = {
        {0, "@MSG(a(b))@NUM", "@MSG(x)", 1, "@NUM"},
        {0, "@NUM@limit(5)@AUTOTAB", "@LIMIT(8)", 1, "@NUM@AUTOTAB"},
        {0, "@A(1)@B@A(2)", "@A", 1, "@B@A(2)"},  // only the first
        {0, "@KEY junk@NUM", "@KEY", 1, "@NUM"},  // text up to the next "@" goes too
        {0, "@LIMIT (5)@NUM", "@LIMIT", 1, "@NUM"},
        {0, "@NUM@MSG(a(b", "@MSG", 1, "@NUM"},   // unclosed: to the end
        {0, "@NUM", "", 0, "@NUM"},
        {1, "@LIMIT(5)@NUM", "@LIMIT(8)", 1, "@NUM@LIMIT(8)"},  // replaced items move to the end
        {1, "", "@EXCLUDE(abc)", 1, "@EXCLUDE(abc)"},
        {1, "@NUM", "", 0, "@NUM"},
    };
    for (const auto& c : cases) {
        Buf m(c.method);
        EXPECT_EQ(c.add ? twAddMethodParam(m.b, c.item) : twRemoveMethodParam(m.b, c.item), c.result) << c.method;
        EXPECT_EQ(m.str(), c.after) << c.method << " " << c.item;
    }
    Buf m("@NUM");
    EXPECT_EQ(twRemoveMethodParam(nullptr, "@NUM") + twRemoveMethodParam(m.b, nullptr), 0);
    EXPECT_EQ(twAddMethodParam(nullptr, "@NUM"), 0);
}

}  // namespace
