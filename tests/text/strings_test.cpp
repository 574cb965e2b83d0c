// String utilities and method strings: exact results for the rows that matter; the fuzz targets add the bounds.
#include <gtest/gtest.h>

#include <stdint.h>
#include <string.h>

#include <string>
#include <vector>

#include "frame/method.h"
#include "strings/lstr.h"

namespace {

TEST(Lstr, NullArgumentsAreHarmless) {
    lstrminus(nullptr);
    EXPECT_EQ((std::vector<const void*>{lstrncpy(nullptr, "a", 1), lstrchr(nullptr, 'a'), lstristr(nullptr, "a"),
                                        lstristr("a", nullptr), lstrclip(nullptr), lstrpreclip(nullptr),
                                        fk::lstrinsc(nullptr, 'a', 0)}),
              std::vector<const void*>(7, nullptr));
    EXPECT_EQ((std::vector<int32_t>{lstrncmp(nullptr, "a", 1), lstricmp("a", nullptr), lstrcount(nullptr, 'a'),
                                    lstrdigits(nullptr), fk::lstrputc(nullptr, 'a', 0), fk::lstrdelc(nullptr, 0)}),
              std::vector<int32_t>(6, 0));
    char dst[4] = "xxx";
    EXPECT_STREQ(lstrncpy(dst, "abc", 2), "abx") << "the limit reached: no terminator";
}

// lstrncmp, lstrnicmp and lstricmp: signed bytes, the shorter text first, case folded by the last two.
TEST(Lstr, ComparesAsSignedBytes) {
    struct { const char *a, *b; int32_t n; std::vector<int32_t> results; } cases[] = {
        {"a", "b", 1, {-1, -1, -1}}, {"ab", "a", 2, {1, 1, 1}}, {"abc", "abd", 2, {0, 0, -1}},
        {"a", "A", 1, {1, 0, 0}},    {"\x80", "a", 1, {-1, -1, -1}}, {"a", "b", 0, {0, 0, -1}},
    };
    for (const auto& c : cases)
        EXPECT_EQ((std::vector<int32_t>{lstrncmp(c.a, c.b, c.n), lstrnicmp(c.a, c.b, c.n), lstricmp(c.a, c.b)}),
                  c.results) << c.a << " " << c.b << " " << c.n;
}

// The numeric routines, each row run through one of them on a roomy buffer.
TEST(Lstr, NumericTexts) {
    // c: old separators regrouped; thirteen digits lose the lead digit. d: digits stay and the point moves, the
    // sign takes the units zero, leading zeros become blanks but zeros behind the first digit stay, extreme counts
    // only align. m: without a leading blank the first character goes; the terminator counts as non-blank.
    struct { char op; const char* in; int32_t n; char sep, dp; const char* out; } cases[] = {
        {'c', "-1234567.891", 0, ',', '.', "-1,234,567.891"}, {'c', "  1234", 0, ',', '.', "1,234"},
        {'c', "12,34567", 0, ',', '.', "1,234,567"},          {'c', "1234567,5", 0, '.', ',', "1.234.567,5"},
        {'c', "1234567890123", 0, ',', '.', ",234,567,890,123"},
        {'d', "12.5", 2, 0, '.', "1.25"},        {'d', "-5", 1, 0, '.', "-.5"},  {'d', "00123", 2, 0, '.', "  1.23"},
        {'d', "100005", 2, 0, '.', "1000.05"},   {'d', "-0012", 2, 0, '.', " -0.12"},
        {'d', "123", INT32_MIN, 0, '.', " 123"}, {'d', "12.5", INT32_MAX, 0, '.', " 125"}, {'m', " ", 0, 0, 0, "-"},
        {'m', "  12", 0, 0, 0, " -12"},          {'m', " -12", 0, 0, 0, "  12"},         {'m', "12", 0, 0, 0, "-2"},
    };
    for (const auto& c : cases) {
        char b[64] = {};
        strcpy(b, c.in);
        if (c.op == 'c') EXPECT_EQ(lstrcomma(b, c.sep, c.dp), b);
        if (c.op == 'd') EXPECT_EQ(lstrdecp(b, c.n, c.dp), b);
        if (c.op == 'm') lstrminus(b);
        EXPECT_STREQ(b, c.out) << c.op << " '" << c.in << "' " << c.n;
    }
}

TEST(GetMethodParam, ArgumentsAndFlags) {
    // Prefix matches and any case; nested parentheses; unclosed: to the end. Only the text up to the first ");"
    // is searched. The copy starts one behind the keyword: a blank before "(" drags the "(" in; two blanks
    // make a flag.
    struct { const char* method; const char* keyword; int32_t result; const char* argument; } cases[] = {
        {"@NUM@LIMIT(12)@AUTOTAB", "@AUTOTAB", 1, ""}, {"@NUM@LIMIT(12)", "@MSG", 0, ""},
        {"@limit(3)", "@LIMIT", 1, "3"},                {"@MSG(a (b) c)@NUM", "@MSG", 1, "a (b) c"},
        {"@MSG(a(b)", "@MSG", 1, "a(b)"},
        {"@LIMIT(5)@X);@LIMIT(9)", "@LIMIT", 1, "5"},   {"@X(1);@LIMIT(9)", "@LIMIT", 0, ""},
        {"@X(1);@LIMIT(9)", "@X(1)", 1, ""},            {"@KEY (a)b)c", "@KEY", 1, "(a)b"},
        {"@KEY  (arg)", "@KEY", 1, " (arg)"},           {"@KEY   (arg)", "@KEY", 1, ""}, {nullptr, "@KEY", 0, ""},
    };
    for (const auto& c : cases) {
        char m[64] = {}, arg[64];
        memset(arg, 'z', sizeof arg);
        if (c.method != nullptr) strcpy(m, c.method);
        EXPECT_EQ(twGetMethodParam(c.method ? m : nullptr, c.keyword, arg), c.result) << c.method << " " << c.keyword;
        EXPECT_STREQ(arg, c.argument) << c.method << " " << c.keyword;
        EXPECT_STREQ(m, c.method ? c.method : "") << "method not restored";
    }
    // Two spare bytes behind the text are zeroed when the keyword ends it; no argument buffer is fine.
    char m[] = "@AUTOTAB\0XYZ";
    EXPECT_EQ(twGetMethodParam(m, "@AUTOTAB", nullptr) + twGetMethodParam(m, nullptr, nullptr), 1);
    EXPECT_EQ(std::string(m + 9, 3), std::string("\0\0Z", 3));
}

// Items are string literals: the routines must not write into them.
TEST(MethodParam, RemoveAndAdd) {
    // Only the first match goes, with the text up to the next "@" or, unclosed, to the end; replaced items move
    // to the end.
    struct { bool add; const char* method; const char* item; int32_t result; const char* after; } cases[] = {
        {0, "@MSG(a(b))@NUM", "@MSG(x)", 1, "@NUM"}, {0, "@NUM@limit(5)@AUTOTAB", "@LIMIT(8)", 1, "@NUM@AUTOTAB"},
        {0, "@A(1)@B@A(2)", "@A", 1, "@B@A(2)"},     {0, "@KEY junk@NUM", "@KEY", 1, "@NUM"},
        {0, "@NUM@MSG(a(b", "@MSG", 1, "@NUM"},      {0, "@NUM", "", 0, "@NUM"},
        {1, "@LIMIT(5)@NUM", "@LIMIT(8)", 1, "@NUM@LIMIT(8)"}, {1, "@NUM", "", 0, "@NUM"},
    };
    for (const auto& c : cases) {
        char m[64] = {};
        strcpy(m, c.method);
        EXPECT_EQ(c.add ? twAddMethodParam(m, c.item) : twRemoveMethodParam(m, c.item), c.result) << c.method;
        EXPECT_STREQ(m, c.after) << c.method << " " << c.item;
    }
    EXPECT_EQ(twRemoveMethodParam(nullptr, "@NUM") + twAddMethodParam(nullptr, "@NUM"), 0);
}

}  // namespace
