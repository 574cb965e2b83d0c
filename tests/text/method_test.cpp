// Reading and editing method strings: the quirks callers rely on, and null arguments.
#include <gtest/gtest.h>

#include <string.h>

#include <string>

#include "frame/method.h"

namespace {

// A writable method string with room behind it, the way the controls keep them.
struct Method {
    char b[256] = {};
    explicit Method(const char* s) { strcpy(b, s); }
    std::string str() const { return b; }
};

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
        Method m(c.method);
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
    Method n("@AUTOTAB@LIMIT(4)");
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
        Method m(c.method);
        EXPECT_EQ(c.add ? twAddMethodParam(m.b, c.item) : twRemoveMethodParam(m.b, c.item), c.result) << c.method;
        EXPECT_EQ(m.str(), c.after) << c.method << " " << c.item;
    }
    Method m("@NUM");
    EXPECT_EQ(twRemoveMethodParam(nullptr, "@NUM") + twRemoveMethodParam(m.b, nullptr), 0);
    EXPECT_EQ(twAddMethodParam(nullptr, "@NUM"), 0);
}

}  // namespace
