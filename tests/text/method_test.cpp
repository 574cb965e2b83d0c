// Tests of reading and editing method strings.
#include <gtest/gtest.h>

#include <string.h>

#include <string>

#include "frame/method.h"

namespace {

// A writable method string with room behind it, the way the controls keep them.
struct Method {
    char b[256];
    explicit Method(const char* s) {
        memset(b, 0, sizeof b);
        strcpy(b, s);
    }
    std::string str() const { return b; }
};

TEST(GetMethodParam, ArgumentsAndFlags) {
    struct Case {
        const char* method;
        const char* keyword;
        int32_t result;
        const char* argument;
    } cases[] = {
        {"@NUM@LIMIT(12)@AUTOTAB", "@LIMIT", 1, "12"},
        {"@NUM@LIMIT(12)@AUTOTAB", "@AUTOTAB", 1, ""},
        {"@NUM@LIMIT(12)", "@MSG", 0, ""},
        {"@limit(3)", "@LIMIT", 1, "3"},
        {"@NUMBER", "@NUM", 1, ""},                  // prefix match, flag
        {"@MSG(a (b) c)@NUM", "@MSG", 1, "a (b) c"},  // nested parentheses
        {"@MSG(a(b)", "@MSG", 1, "a(b)"},             // unclosed: to the end
        {"@LIMIT()", "@LIMIT", 1, ""},
        // Only the text up to the first ");" is searched.
        {"@LIMIT(5)@X);@LIMIT(9)", "@LIMIT", 1, "5"},
        {"@X(1);@LIMIT(9)", "@LIMIT", 0, ""},
        // The copy starts one behind the keyword: a blank before "(" drags
        // the "(" in and runs on to the next unmatched ")".
        {"@KEY (arg)@X", "@KEY", 1, "(arg)@X"},
        {"@KEY (a)b)c", "@KEY", 1, "(a)b"},
        {"@KEY  (arg)", "@KEY", 1, " (arg)"},
        {"@KEY   (arg)", "@KEY", 1, ""},              // "(" too far: a flag
        {"@KEYx", "@KEY", 1, ""},                     // look-ahead stops at the end
    };
    for (const Case& c : cases) {
        Method m(c.method);
        char arg[256];
        memset(arg, 'z', sizeof arg);
        EXPECT_EQ(twGetMethodParam(m.b, c.keyword, arg), c.result) << c.method << " " << c.keyword;
        EXPECT_STREQ(arg, c.argument) << c.method << " " << c.keyword;
        EXPECT_EQ(m.str(), c.method) << "method not restored";
    }
}

TEST(GetMethodParam, ZeroesTwoSpareBytesWhenKeywordEndsText) {
    char m[12];
    memcpy(m, "@AUTOTAB\0XYZ", 12);
    char arg[8] = "old";
    EXPECT_EQ(twGetMethodParam(m, "@AUTOTAB", arg), 1);
    EXPECT_STREQ(arg, "");
    EXPECT_EQ(m[9], 0);
    EXPECT_EQ(m[10], 0);
    EXPECT_EQ(m[11], 'Z');
}

TEST(GetMethodParam, KeywordEndingAtTheCutLeavesTheRestAlone) {
    Method m("@X(1);@LIMIT(9)");
    char arg[32];
    EXPECT_EQ(twGetMethodParam(m.b, "@X(1)", arg), 1);
    EXPECT_STREQ(arg, "");
    EXPECT_EQ(m.str(), "@X(1);@LIMIT(9)");
}

TEST(GetMethodParam, NullHandling) {
    Method m("@AUTOTAB@LIMIT(4)");
    EXPECT_EQ(twGetMethodParam(m.b, "@AUTOTAB", nullptr), 1);
    EXPECT_EQ(twGetMethodParam(m.b, "@LIMIT", nullptr), 1);
    char arg[8] = "old";
    EXPECT_EQ(twGetMethodParam(nullptr, "@LIMIT", arg), 0);
    EXPECT_STREQ(arg, "");
    EXPECT_EQ(twGetMethodParam(m.b, nullptr, nullptr), 0);
}

// Items are passed as string literals: the routines must not write into them.
TEST(RemoveMethodParam, RemovesFirstMatchingItem) {
    struct Case {
        const char* method;
        const char* item;
        int32_t result;
        const char* after;
    } cases[] = {
        {"@AUTOTAB@NUM", "@AUTOTAB", 1, "@NUM"},
        {"@MSG(a(b))@NUM", "@MSG(x)", 1, "@NUM"},
        {"@NUM@limit(5)@AUTOTAB", "@LIMIT(8)", 1, "@NUM@AUTOTAB"},
        {"@A(1)@B@A(2)", "@A", 1, "@B@A(2)"},         // only the first
        {"@KEY junk@NUM", "@KEY", 1, "@NUM"},          // text up to the next "@" goes too
        {"@LIMIT (5)@NUM", "@LIMIT", 1, "@NUM"},
        {"@NUM@MSG(a(b", "@MSG", 1, "@NUM"},           // unclosed: to the end
        {"@NUM", "@LIMIT", 0, "@NUM"},
        {"@NUM", "", 0, "@NUM"},
        {"", "@NUM", 0, ""},
    };
    for (const Case& c : cases) {
        Method m(c.method);
        EXPECT_EQ(twRemoveMethodParam(m.b, c.item), c.result) << c.method << " " << c.item;
        EXPECT_EQ(m.str(), c.after) << c.method << " " << c.item;
    }
    EXPECT_EQ(twRemoveMethodParam(nullptr, "@NUM"), 0);
    Method m("@NUM");
    EXPECT_EQ(twRemoveMethodParam(m.b, nullptr), 0);
}

TEST(AddMethodParam, ReplacesAndAppends) {
    struct Case {
        const char* method;
        const char* item;
        int32_t result;
        const char* after;
    } cases[] = {
        {"@NUM@LIMIT(5)", "@LIMIT(8)", 1, "@NUM@LIMIT(8)"},
        {"@LIMIT(5)@NUM", "@LIMIT(8)", 1, "@NUM@LIMIT(8)"},
        {"@NUM", "@AUTOTAB", 1, "@NUM@AUTOTAB"},
        {"", "@EXCLUDE(abc)", 1, "@EXCLUDE(abc)"},
        {"@NUM", "", 0, "@NUM"},
    };
    for (const Case& c : cases) {
        Method m(c.method);
        EXPECT_EQ(twAddMethodParam(m.b, c.item), c.result) << c.method << " " << c.item;
        EXPECT_EQ(m.str(), c.after) << c.method << " " << c.item;
    }
    EXPECT_EQ(twAddMethodParam(nullptr, "@NUM"), 0);
}

}  // namespace
