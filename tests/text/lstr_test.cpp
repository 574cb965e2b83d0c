// Tests of the string utilities.
#include <gtest/gtest.h>

#include <stdint.h>
#include <string.h>

#include <string>

#include "strings/lstr.h"
#include "strings/workbuf.h"

namespace {

// A writable copy with plenty of room behind the text.
struct Buf {
    char b[256];
    explicit Buf(const char* s) {
        memset(b, 0, sizeof b);
        strcpy(b, s);
    }
    std::string str() const { return b; }
};

TEST(Lstrncpy, StopsAtLimitWithoutTerminator) {
    struct Case {
        const char* src;
        int32_t n;
        const char* bytes;  // first six bytes of dst, which starts as "xxxxxx"
    } cases[] = {
        {"abcdef", 3, "abcxxx"},   // limit reached: no terminator
        {"abc", 3, "abcxxx"},      // exactly n characters: still none
        {"ab", 5, "ab\0xxx"},      // ended first: terminated
        {"", 2, "\0xxxxx"},        // empty source gives empty text
        {"abc", 0, "xxxxxx"},      // nothing copied at all
    };
    for (const Case& c : cases) {
        char dst[7] = "xxxxxx";
        EXPECT_EQ(lstrncpy(dst, c.src, c.n), dst);
        EXPECT_EQ(memcmp(dst, c.bytes, 6), 0) << c.src << " n=" << c.n;
    }
    EXPECT_EQ(lstrncpy(nullptr, "a", 1), nullptr);
}

TEST(Lstrcmp, LimitsCaseAndSignedBytes) {
    enum Fn { N, NI, I };
    struct Case {
        Fn fn;
        const char* s1;
        const char* s2;
        int32_t n;
        int32_t expected;
    } cases[] = {
        {N, "abc", "abd", 3, -1},
        {N, "abd", "abc", 3, 1},
        {N, "abc", "abd", 2, 0},     // n characters matched
        {N, "abc", "abc", 9, 0},     // ended together
        {N, "abc", "abcd", 9, -1},   // s1 ended first
        {N, "abcd", "abc", 9, 1},    // s2 ended first
        {N, "ABC", "abc", 3, -1},    // case counts
        {N, "\x80", "a", 1, -1},     // high bytes order below ASCII
        {N, "a", "\xff", 1, 1},
        {N, "abc", "xyz", 0, 0},
        {NI, "ABC", "abc", 3, 0},
        {NI, "abc", "ABD", 3, -1},
        {NI, "Abc", "aBcD", 9, -1},
        {NI, "\xe4", "\xc4", 1, 1},  // no folding outside a-z
        {I, "Hello", "hELLO", 0, 0},
        {I, "hello!", "HELLO", 0, 1},
        {I, "", "", 0, 0},
        {I, "a", "B", 0, -1},
    };
    for (const Case& c : cases) {
        int32_t got = c.fn == N    ? lstrncmp(c.s1, c.s2, c.n)
                      : c.fn == NI ? lstrnicmp(c.s1, c.s2, c.n)
                                   : lstricmp(c.s1, c.s2);
        EXPECT_EQ(got, c.expected) << c.fn << " '" << c.s1 << "' '" << c.s2 << "' " << c.n;
    }
    EXPECT_EQ(lstrncmp(nullptr, "a", 1), 0);
    EXPECT_EQ(lstricmp("a", nullptr), 0);
}

TEST(Lstrchr, FindsFirstButNeverTheTerminator) {
    const char* t = "abcb";
    EXPECT_EQ(lstrchr(t, 'b'), t + 1);
    EXPECT_EQ(lstrchr(t, 'z'), nullptr);
    EXPECT_EQ(lstrchr(t, 0), nullptr);
    EXPECT_EQ(lstrchr(nullptr, 'a'), nullptr);
}

TEST(Lstristr, CaseInsensitiveWithEmptyRules) {
    struct Case {
        const char* text;
        const char* pattern;
        int offset;  // -1: not found
    } cases[] = {
        {"Hello World", "WORLD", 6},
        {"aab", "AB", 1},
        {"@NUMBER", "@num", 0},
        {"abc", "abcd", -1},
        {"abc", "", 0},   // empty pattern matches at the start
        {"", "", -1},     // an empty text never matches
        {"", "a", -1},
        {"\xe4x", "\xc4", -1},
    };
    for (const Case& c : cases) {
        char* got = lstristr(c.text, c.pattern);
        if (c.offset < 0) {
            EXPECT_EQ(got, nullptr) << c.text << " / " << c.pattern;
        } else {
            EXPECT_EQ(got, c.text + c.offset) << c.text << " / " << c.pattern;
        }
    }
    EXPECT_EQ(lstristr(nullptr, "a"), nullptr);
    EXPECT_EQ(lstristr("a", nullptr), nullptr);
}

TEST(LstrBlanks, PadClipPreclipRight) {
    Buf a("ab");
    lstrpad(a.b, 5);
    EXPECT_EQ(a.str(), "ab   ");
    Buf b("abcdef");
    lstrpad(b.b, 3);
    EXPECT_EQ(b.str(), "abcdef");

    Buf c(" a b  ");
    EXPECT_EQ(lstrclip(c.b), c.b);
    EXPECT_EQ(c.str(), " a b");
    Buf d("   ");
    EXPECT_EQ(lstrclip(d.b), d.b);
    EXPECT_EQ(d.str(), "");
    Buf e("  a b ");
    EXPECT_EQ(lstrpreclip(e.b), e.b);
    EXPECT_EQ(e.str(), "a b ");
    Buf f("   ");
    EXPECT_EQ(lstrpreclip(f.b), f.b);
    EXPECT_EQ(f.str(), "");
    EXPECT_EQ(lstrclip(nullptr), nullptr);
    EXPECT_EQ(lstrpreclip(nullptr), nullptr);

    struct Case {
        const char* in;
        int32_t width;
        const char* out;
    } right[] = {
        {"ab  ", 5, "   ab"},
        {"abc", 2, "abc"},
        {"abc  ", 3, "abc"},
        {"", 2, "  "},
    };
    for (const Case& r : right) {
        Buf g(r.in);
        EXPECT_EQ(lstrright(g.b, r.width), g.b);
        EXPECT_EQ(g.str(), r.out) << "'" << r.in << "' " << r.width;
    }
}

TEST(LstrCounts, CountAndDigits) {
    EXPECT_EQ(lstrcount("a,b,,c", ','), 3);
    EXPECT_EQ(lstrcount("abc", 0), 0);
    EXPECT_EQ(lstrdigits("-1,234.5a"), 5);
    EXPECT_EQ(lstrdigits(""), 0);
    EXPECT_EQ(lstrcount(nullptr, 'a'), 0);
    EXPECT_EQ(lstrdigits(nullptr), 0);
}

TEST(LstrRemove, SetAndPattern) {
    Buf a("$1,234.00");
    EXPECT_EQ(lstrremove(a.b, "$,"), a.b);
    EXPECT_EQ(a.str(), "1234.00");

    Buf b("abcABCabc");
    EXPECT_EQ(lstrremovestr(b.b, "BCa"), b.b);
    EXPECT_EQ(b.str(), "aBCabc");
    Buf c("abc");
    EXPECT_EQ(lstrremovestr(c.b, "x"), nullptr);
    EXPECT_EQ(c.str(), "abc");
}

TEST(LstrWidthKeeping, NocommaAndNodecp) {
    Buf a("1,234");
    lstrnocomma(a.b, ',');
    EXPECT_EQ(a.str(), " 1234");
    Buf b("1,234,567");
    lstrnocomma(b.b, ',');
    EXPECT_EQ(b.str(), "  1234567");
    Buf c("12.5");
    lstrnodecp(c.b, '.');
    EXPECT_EQ(c.str(), " 125");
}

TEST(Lstrcomma, GroupsIntegerPartOnly) {
    struct Case {
        const char* in;
        char sep, dp;
        const char* out;
    } cases[] = {
        {"1234567", ',', '.', "1,234,567"},
        {"1,234", ',', '.', "1,234"},
        {"0.12345", ',', '.', "0.12345"},
        {"-1234567.891", ',', '.', "-1,234,567.891"},
        {"123", ',', '.', "123"},
        {"  1234", ',', '.', "1,234"},
        {"12,34567", ',', '.', "1,234,567"},          // old separators regrouped
        {"1234567,5", '.', ',', "1.234.567,5"},
        {"123456789012", ',', '.', "123,456,789,012"},  // twelve digits fit
        {"1234567890123", ',', '.', ",234,567,890,123"},  // thirteen: lead digit lost
        {"1,234,567,890,123", ',', '.', "1,234,567,890,123"},  // room from old ones
        {"", ',', '.', ""},
    };
    for (const Case& c : cases) {
        Buf b(c.in);
        EXPECT_EQ(lstrcomma(b.b, c.sep, c.dp), b.b);
        EXPECT_EQ(b.str(), c.out) << c.in;
    }
}

TEST(Lstrdecp, MovesPointKeepsWidth) {
    struct Case {
        const char* in;
        int32_t places;
        char dp;
        const char* out;
    } cases[] = {
        {"1234", 2, '.', "12.34"},
        {"12.5", 2, '.', "1.25"},     // digits stay, the point moves
        {"-5", 1, '.', "-.5"},        // the sign takes the units zero
        {"5", 2, '.', " 5"},          // too short: only aligned
        {"123456", 2, '.', "1234.56"},
        {"-1234", 2, '.', "-12.34"},
        {"100", 2, '.', "1.00"},
        {"00123", 2, '.', "  1.23"},  // leading zeros become blanks
        {"-0012", 2, '.', " -0.12"},
        {"  0.05", 2, '.', "  0.05"},
        {"15", 1, ',', "1,5"},
        {"7", 0, '.', "7."},
        {"123", -1, '.', " 123"},     // negative places: only aligned
        // Extreme counts neither overflow nor move the point.
        {"123", INT32_MIN, '.', " 123"},
        {"123", -2147483647, '.', " 123"},
        {"12.5", INT32_MAX, '.', " 125"},
    };
    for (const Case& c : cases) {
        Buf b(c.in);
        EXPECT_EQ(lstrdecp(b.b, c.places, c.dp), b.b);
        EXPECT_EQ(b.str(), c.out) << "'" << c.in << "' " << c.places;
    }
}

TEST(Lstrminus, TogglesSignOfRightAlignedNumber) {
    struct Case {
        const char* in;
        const char* out;
    } cases[] = {
        {"  12", " -12"},
        {" -12", "  12"},
        {"-12", " 12"},
        {"12", "-2"},     // no leading blank: the first character goes
        {"0.5", "-.5"},
        {" ", "-"},       // the terminator counts as non-blank
        {"", ""},
    };
    for (const Case& c : cases) {
        Buf b(c.in);
        lstrminus(b.b);
        EXPECT_EQ(b.str(), c.out) << "'" << c.in << "'";
    }
    lstrminus(nullptr);
}

TEST(LstrEditing, PutDeleteInsert) {
    Buf a("abc");
    EXPECT_EQ(fk::lstrputc(a.b, 'X', 1), 'b');
    EXPECT_EQ(a.str(), "aXc");
    EXPECT_EQ(fk::lstrputc(a.b, 'd', 3), 0);  // appends
    EXPECT_EQ(a.str(), "aXcd");
    EXPECT_EQ(fk::lstrputc(a.b, 'e', 5), 0);  // beyond: nothing
    EXPECT_EQ(a.str(), "aXcd");

    Buf b("abc");
    EXPECT_EQ(fk::lstrdelc(b.b, 0), 'a');
    EXPECT_EQ(b.str(), "bc");
    EXPECT_EQ(fk::lstrdelc(b.b, 2), 0);
    EXPECT_EQ(fk::lstrdelc(b.b, -1), 0);
    EXPECT_EQ(b.str(), "bc");

    struct Case {
        const char* in;
        int32_t index;
        const char* out;
    } ins[] = {
        {"abc", 0, "Zabc"},
        {"abc", 2, "abZc"},
        {"abc", 3, "abcZ"},
        {"abc", 4, "abc"},
        {"", 0, "Z"},
    };
    for (const Case& c : ins) {
        Buf d(c.in);
        EXPECT_EQ(fk::lstrinsc(d.b, 'Z', c.index), d.b);
        EXPECT_EQ(d.str(), c.out) << c.in << " @" << c.index;
    }
    EXPECT_EQ(fk::lstrputc(nullptr, 'a', 0), 0);
    EXPECT_EQ(fk::lstrdelc(nullptr, 0), 0);
    EXPECT_EQ(fk::lstrinsc(nullptr, 'a', 0), nullptr);
}

// Texts beyond the work buffer are cut to 159 characters instead of overrunning
// it (the sanitizers watch the buffer).
TEST(LstrWorkBuffer, LongTextsAreCut) {
    const std::string digits(200, '1');
    Buf a(digits.c_str());
    lstrcomma(a.b, ',', '.');
    EXPECT_LE(strlen(a.b), 159u);

    Buf b(std::string(200, '5').c_str());
    lstrdecp(b.b, 2, '.');
    EXPECT_EQ(strlen(b.b), 159u);
    EXPECT_EQ(b.b[156], '.');

    Buf c(std::string(200, 'a').c_str());
    lstrright(c.b, 220);
    EXPECT_EQ(c.str(), std::string(159, 'a'));

    Buf d(std::string(159, 'a').c_str());
    fk::lstrinsc(d.b, 'Z', 0);
    EXPECT_EQ(d.str(), "Z" + std::string(158, 'a'));
    Buf e(std::string(159, 'a').c_str());
    fk::lstrinsc(e.b, 'Z', 159);
    EXPECT_EQ(e.str(), std::string(159, 'a'));

    Buf f(std::string(150, '1').c_str());
    lstrright(f.b, 300);
    EXPECT_EQ(strlen(f.b), 159u);
}

}  // namespace
