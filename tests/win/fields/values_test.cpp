// Values, types, limits, validation, leaving and the spin of the five entry fields, as an application asks for them.
#include <climits>
#include <cmath>
#include <ctime>

#include "tests/support/msgbox_watch.h"
#include "tests/support/self_process.h"
#include "tests/win/fields/field_test.h"

namespace {

using namespace fieldtest;
using Values = Field;

// What a value points at, by the row's kind: i int32, l a date's calendar seconds, d double, f float, t struct tm
// (the value as yyyymmdd), s text, 0 a null pointer.
union Value {
    int32_t i;
    float f;
    double d;
    struct tm t;
    char s[160];
};

Value ValueOf(char kind, double v, const char* text) {
    Value out;
    std::memset(&out, 0, sizeof out);
    const int32_t whole = static_cast<int32_t>(v);
    out.t.tm_year = whole / 10000 - 1900, out.t.tm_mon = whole / 100 % 100 - 1, out.t.tm_mday = whole % 100;
    if (kind == 'l') out.t.tm_isdst = -1;  // local midnight of the day comes back as it went
    const int32_t seconds = kind == 'l' ? static_cast<int32_t>(mktime(&out.t)) : whole;
    if (kind == 'i' || kind == 'l') out.i = seconds;
    if (kind == 'd') out.d = v;
    if (kind == 'f') out.f = static_cast<float>(v);
    if (kind == 's') lstrcpynA(out.s, text, sizeof out.s);
    return out;
}

std::string Read(char kind, const Value& v) {  // a value as text, to compare
    if (kind == 'd') return std::to_string(v.d);
    if (kind == 'f') return std::to_string(v.f);
    const auto n = [](int part) { return std::to_string(part); };
    if (kind == 't') return n(v.t.tm_year) + "/" + n(v.t.tm_mon) + "/" + n(v.t.tm_mday);
    if (kind == 's') return v.s;
    return std::to_string(v.i);
}

size_t Size(char kind, const Value& v) {  // the bytes a value of the kind takes
    return kind == 'd' ? 8 : kind == 't' ? sizeof v.t : kind == 's' ? std::strlen(v.s) + 1 : 4;
}

// A value set is shown without EN_CHANGE (the field held "9" unless the row says otherwise); read back in the same
// type it gives the value again (when the row says so).
TEST_F(Values, SetShowsAndGetReadsBack) {
    const std::time_t now = std::time(nullptr);
    char today[16];
    std::strftime(today, sizeof today, "%m%d%Y", std::localtime(&now));
    const struct {
        const char* cls; DWORD style; const char* method; WPARAM type; char kind; double value;
        const char* shown; bool back = true; const char *text = "", *held = "9";
    } cases[] = {
        {num, NUM_LONG, "", 0, 'i', 0, "0"}, {num, NUM_LONG, "@BLNK", 1, 'i', 0, ""},
        {num, NUM_LONG, "@blnk", 2, 'i', 0, ""}, {num, NUM_LONG, "@BLNK", 0, 'i', -42, "-42"},
        {num, NUM_LONG, "", 1, 'i', INT_MIN, "-2147483648"}, {num, 0, "", 4, 's', 0, "12abc", true, "12abc"},
        {num, 0, "", 7, 's', 0, "", false, "9"},  // an unknown type empties the field
        {real, REAL_DOUBLE, "@DECP(0)", 0, 'd', 3.99, "4", false}, {real, REAL_DOUBLE, "", 0, 'd', 12.345, "12", false},
        {real, REAL_DOUBLE, "@DECP(3)", 0, 'd', 0, "0.000"}, {real, REAL_DOUBLE, "@DECP(3)@BLNK", 0, 'd', 0, ""},
        {real, REAL_DOUBLE, "@BLNK", 0, 'd', -0.0, "", false},
        {real, REAL_DOUBLE, "@DECP(2)", 0, 'd', -1234.5, "-1234.50"},
        {real, REAL_DOUBLE, "", 9, 'f', 2.25, "2", false}, {real, REAL_DOUBLE, "", 4, 's', 0, "9", false, "5.5"},
        {real, REAL_DOUBLE, "@BLNK", 3, 0, 0, "", false}, {real, REAL_DOUBLE, "@DECP(-5)", 3, 'd', -7.25, "-7", false},
        {cur, CURR_DOUBLE, "@CF_GERMANY", 0, 'd', 1234.5, "DM1.234,50"},
        {cur, CURR_LONGDOUBLE, "@LIMIT(20)@cf_unitedstates", 0, 'd', 0.5, "$.50"},
        {cur, CURR_DOUBLE | CURR_SUPPRESS, "@CF_GERMANY", 0, 'd', 12.75, "DM12", false},
        {cur, CURR_DOUBLE, "@CF_GERMANY@BLNK", 0, 'd', 0, ""},
        {cur, CURR_CHAR, "@CF_FRANCE", GXT_DOUBLE, 'd', 98765.4, "98.765,40 F"},  // wParam picks the type
        {cur, 0, "@CF_UNITEDSTATES", 0, 'i', 5, "$0.00", false, "", ""},  // no type: an empty field gets a zero
        {cur, CURR_LONG, "@CF_UNITEDSTATES", 0, 'i', 123456, "$1,234.56"},  // hundredths
        {date, DATE_MMDDYYYY, "", GXT_TMSTRUCT, 't', 19991231, "12311999"},
        {date, DATE_DDMMYYYY, "", GXT_TMSTRUCT, 't', 20040229, "29022004"},
        {date, DATE_MMDDYY, "", GXT_TMSTRUCT, 't', 20010101, "0101101"},  // the year 101 in a two-digit field
        {date, DATE_DDMMYYYY | DATE_LONG, "", 0, 'l', 20040229, "29022004"},
        {date, DATE_MMDDYYYY, "", 0, 0, 0, "00000000", false, "", ""},  // the empty date
        {date, DATE_MMDDYYYY, "@BLNK", GXT_TMSTRUCT, 't', 19000100, "", false},
        {date, DATE_MMDDYYYY | DATE_CHAR, "@DATE", 0, 's', 0, today, false, "01011990"},  // every value is today
        {str, 0, "", 0, 's', 0, "hello", true, "hello"}};
    for (const auto& c : cases) {
        Make(c.cls, c.style, c.method);
        Value in = ValueOf(c.kind, c.value, c.text), out;
        SetWindowTextA(field_, c.held);  // what a value that is not shown leaves
        parent_.clear();
        Send(GXM_SETVALUE, c.type, c.kind ? &in : nullptr);
        const std::string row = std::string(c.cls) + " " + c.method + " " + std::to_string(c.value);
        EXPECT_EQ(Text(field_), c.shown) << row;
        EXPECT_TRUE(Codes().empty()) << row;
        if (!c.back) continue;
        std::memset(&out, 0, sizeof out);
        out.t.tm_hour = 7;
        Send(GXM_GETVALUE, c.type, &out);
        EXPECT_EQ(Read(c.kind, out), Read(c.kind, in)) << row;
        if (c.kind == 't') EXPECT_EQ(out.t.tm_hour, 7) << "only the date is written";
    }
}

// A value read from the text shown, in the type asked for, and not a byte more than the type takes.
TEST_F(Values, GetReadsTheText) {
    const struct { const char *cls, *method, *text; DWORD style; WPARAM type; char kind; const char* read; } cases[] = {
        {cur, "@CF_UNITEDSTATES", "$1,234.56", CURR_LONG, GXT_TEXT, 's', "$1,234.56"},
        {cur, "@CF_UNITEDSTATES", "$1,234.56", CURR_LONG, GXT_DOUBLE, 'd', "1234.560000"},
        {cur, "@CF_UNITEDSTATES", "$1,234.56", CURR_LONG, 0, 'i', "123456"},
        {real, "", "  -2.5e1x", 0, 3, 'd', "-25.000000"}, {real, "", "  -2.5e1x", 0, 9, 'f', "-25.000000"},
        {real, "", "  -2.5e1x", 0, 12, 'f', "-25.000000"},  // a long double comes out as a float
        {real, "", "1e300", 0, 9, 'f', "inf"}, {real, "", "1e300", 0, 4, 's', "1e300"},
        {num, "", "1-2-3", 0, 1, 'i', "1"},  // only a leading number counts
        {date, "", "", DATE_MMDDYYYY, GXT_TMSTRUCT, 't', "0/0/0"},  // the empty date
        {date, "", "0102034455667788991122334455", DATE_MMDDYY | DATE_CHAR, 0, 's', "01020344556677889911"},
        {str, "@LIMIT(3)", "hello", 0, 0, 's', "hel"}};
    for (const auto& c : cases) {
        Make(c.cls, c.style, c.method);
        SetWindowTextA(field_, c.text);
        Value out;
        std::memset(&out, '#', sizeof out);
        Send(GXM_GETVALUE, c.type, &out);
        EXPECT_EQ(Read(c.kind, out), c.read) << c.cls << " " << c.text << " " << c.type;
        EXPECT_EQ(reinterpret_cast<char*>(&out)[Size(c.kind, out)], '#') << c.cls << " " << c.text << " " << c.type;
    }
}

// The type a field reports: from its style, the text type first, unless the caller asks for one; a text's size.
TEST_F(Values, TypeFromStyleOrAsked) {
    const struct { const char* cls; DWORD style; const char* method; WPARAM wp; LRESULT answer; LONG size; } cases[] = {
        {num, NUM_CHAR | NUM_INTEGER, "", 0, 4, 80}, {num, NUM_CHAR | NUM_INTEGER, "@LIMIT(6)", 0, 4, 6},
        {num, NUM_INTEGER, "", 0, 1, -1}, {num, NUM_LONG, "", 0, 2, -1}, {num, 0, "", 0, 2, -1},
        {num, NUM_LONG, "", 4, 4, 80}, {num, NUM_LONG, "", 1, 1, -1}, {num, 0, "", 9, 2, -1},
        {real, 0, "", 0, 3, -1}, {real, REAL_DOUBLE, "", 9, 9, -1}, {real, REAL_CHAR | REAL_FLOAT, "", 0, 4, 80},
        {real, REAL_FLOAT | REAL_DOUBLE, "", 0, 9, -1}, {real, REAL_LONGDOUBLE, "", 0, 12, -1},
        {real, REAL_DOUBLE | REAL_LONGDOUBLE, "", 0, 3, -1}, {cur, CURR_CHAR, "@LIMIT(7)", 0, GXT_TEXT, 7},
        {cur, CURR_DOUBLE, "@LIMIT(7)", 0, GXT_DOUBLE, -1}, {cur, CURR_LONG, "@LIMIT(7)", 0, 2, -1},
        {cur, CURR_LONGDOUBLE, "@LIMIT(7)", 0, GXT_LONGDOUBLE, -1}, {cur, 0, "@LIMIT(7)", 0, GXT_TEXT, 80},
        {date, DATE_MMDDYYYY | DATE_CHAR, "", 0, GXT_TEXT, 20}, {date, DATE_MMDDYY | DATE_LONG, "", 0, 2, -1},
        {str, 0, "", GXT_TEXT, GXT_TEXT, 80}, {str, 0, "@LIMIT(3)", 0, GXT_TEXT, 3},
        {date, DATE_MMDDYY, "@PRT(gray)", 0, GXT_TMSTRUCT, -1}};
    for (const auto& c : cases) {
        Make(c.cls, c.style, c.method);
        LONG size = -1;
        EXPECT_EQ(Send(GXM_GETTYPE, c.wp, &size), c.answer) << c.cls << " " << c.style << " / " << c.wp;
        EXPECT_EQ(size, c.size) << c.cls << " " << c.style << " / " << c.wp;
        EXPECT_EQ(Send(GXM_GETTYPE, c.wp), c.answer) << "a null lParam is left alone";
    }
    EXPECT_FALSE(IsWindowEnabled(field_)) << "@PRT disables";
}

// The limit messages and what typing then takes; the method string's @LIMIT sets the limit and its absence clears it.
TEST_F(Values, LimitMessages) {
    const struct { const char *cls, *method; UINT msg; WPARAM wp; LPARAM lp; LRESULT answer; int limit; } cases[] = {
        {num, "@LIMIT(3)", GXM_GETLIMIT, 0, 0, 3, 3}, {num, "", EM_LIMITTEXT, 7, 0, 0, 7},
        {num, "@LIMIT(3)", GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@AUTOTAB"), 0, 0},
        {real, "", EM_LIMITTEXT, 5, 0, 5, 5}, {cur, "@LIMIT(7)", GXM_SETLIMIT, 0, 99, 7, 7},  // wParam 0 asks
        {cur, "@LIMIT(7)", GXM_SETLIMIT, 1, 4, 0, 4}, {cur, "", EM_LIMITTEXT, 5, 0, 5, 5},
        {str, "@LIMIT(5)", GXM_SETLIMIT, 1, 3, 0, 3}, {str, "@LIMIT(5)", GXM_SETLIMIT, 0, 99, 0, 0},
        {str, "", GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@LIMIT(2)" "@MMMMMMMMMMMMMMMMMMMMMMMMMMMMM"), 0, 2}};
    for (const auto& c : cases) {
        Make(c.cls, 0, c.method);
        EXPECT_EQ(SendMessageA(field_, c.msg, c.wp, c.lp), c.answer) << c.cls << " " << c.method << " " << c.msg;
        EXPECT_EQ(Send(GXM_GETLIMIT), c.limit) << c.cls << " " << c.method << " " << c.msg;
        Type(field_, "1234567890");
        EXPECT_EQ(Text(field_).size(), c.limit ? c.limit : 10u) << c.cls << " " << c.method << " " << c.msg;
    }
}

// Every class validates as the style's type or the one asked for; the parent hears of each refusal.
TEST_F(Values, ValidationByStyleOrType) {
    AnswerErrors();
    const struct { const char* cls; DWORD style; const char *method, *text; WPARAM type; LRESULT answer; } cases[] = {
        {num, 0, "@RNG(1,9)", "50", 0, 0}, {num, NUM_INTEGER, "@RNG(1,9)", "50", 0, -1},
        {num, NUM_LONG, "@RNG(1,9)", "5", 0, 0}, {num, 0, "@RNG(1,9)", "50", 1, -1}, {num, 0, "@RNG(1,9)", "7x", 2, 0},
        {real, 0, "@RNG(1,9)", "50", 0, 0}, {real, 0, "@RNG(1,9)", "9.01", 12, -1},
        {real, REAL_FLOAT, "@RNG(1,9)", "12.5", 0, -1}, {real, REAL_DOUBLE, "@RNG(1,9)", "1.5", 0, 0},
        {cur, 0, "@CF_UNITEDSTATES@RNG(1,2000)", "$2,000.50", 2, 0},  // a long is its whole number
        {cur, 0, "@CF_UNITEDSTATES@RNG(1,2000)", "$2,000.50", GXT_DOUBLE, -1},
        {cur, 0, "@CF_UNITEDSTATES@RNG(1,2000)", "$2,000.50", 0, 0},  // no type passes
        {date, DATE_MMDDYY, "@RNG(06/15/95,)", "061495", 0, -1}, {date, DATE_MMDDYY, "@RNG(06/15/95,)", "061595", 0, 0},
        {date, DATE_DDMMYY, "@RNG(15/06/95,)", "140695", 0, -1},
        {date, DATE_YYMMDD, "@RNG(95/06/15,)", "950614", 0, -1},
        {date, DATE_MMDDYYYY, "@RNG(06/15/1995,)", "06141995", 0, -1},
        {date, DATE_DDMMYYYY, "@RNG(15/06/1995,)", "14061995", 0, -1},
        {date, DATE_YYYYMMDD, "@RNG(1995/06/15,)", "19950614", 0, -1},
        {date, DATE_YYYYMMDD, "@RNG(1995/06/15,)", "19950615", 0, 0},
        {date, DATE_MMDDYY, "@RNG(06/15/95,)", "", 0, 0}, {date, DATE_MMDDYYYY, "@MND", "", 0, -1},
        {str, 0, "", "", 0, 0}, {str, 0, "@MND", "", 0, -1}, {str, 0, "@MND", "Al", 0, 0}};
    for (const auto& c : cases) {
        Make(c.cls, c.style, c.method);
        SetWindowTextA(field_, c.text);
        EXPECT_EQ(Send(GXM_VALIDATE, c.type), c.answer) << c.cls << " " << c.method << " " << c.text << " " << c.type;
        EXPECT_EQ(parent_.Of(GXN_ERROR).size(), c.answer ? 1u : 0u) << c.cls << " " << c.method << " " << c.text;
    }
    parent_.reply = nullptr;
    fktest::MessageBoxWatcher boxes;
    Make(str, 0, "@MND@MSG(Name please)");
    EXPECT_EQ(Send(GXM_VALIDATE), -1);
    ASSERT_EQ(boxes.boxes().size(), 1u);
    EXPECT_EQ(boxes.boxes()[0].text, "Name please");
}

// Leaving: the numeric field drops its selection, real text comes to its places, a four-digit year gets its century
// (not with day 00), all without EN_CHANGE; a double click selects all.
TEST_F(Values, LeavingTidiesTheText) {
    IntlKeys pattern{{"sShortDate", "dd.MM.yy"}};
    Make(date, DATE_DEFAULT);
    EXPECT_EQ(GetWindowLongA(field_, GWL_STYLE) & 0xFFFF, DATE_DDMMYYYY | DATE_DOT) << "the system's short date";
    EXPECT_EQ(Send(GXM_DATE_GETFORMAT), MAKELONG('.', 5));
    Make(date, DATE_MMDDYY, "@FORMAT(DDMMYY)@DASH");
    EXPECT_EQ(GetWindowLongA(field_, GWL_STYLE) & 0xFFFF, 6 | DATE_DASH) << "@FORMAT is ORed in; @DASH wins";
    Make(date, DATE_MMDDYY);
    EXPECT_EQ(GetWindowLongA(field_, GWL_STYLE) & 0xFFFF, DATE_MMDDYY) << "a chosen order is kept at creation";
    const struct { const char* cls; DWORD style; const char *method, *typed, *left; Span sel; int all; } cases[] = {
        {num, 0, "", "123", "123", {0, 0}, 3}, {real, 0, "", "123", "123", {1, 3}, 3},
        {real, 0, "@DECP(2)", "2.675", "2.68", {1, 5}, 4}, {real, 0, "@DECP(2)", ".5", "0.50", {1, 2}, 4},
        {real, 0, "@DECP(0)", "3.99", "3", {1, 4}, 1}, {str, 0, "", "abc", "abc", {0, 1}, 3},
        {date, DATE_MMDDYYYY, "", "123195", "12311995", {0, 0}, 10},
        {date, DATE_MMDDYY, "", "123195", "123195", {0, 0}, 8},
        {date, DATE_MMDDYYYY, "", "120095", "120095", {0, 0}, 10},
        {date, DATE_DEFAULT, "", "311299", "31121999", {0, 0}, 10}};
    for (const auto& c : cases) {
        Make(c.cls, c.style, c.method);
        Type(field_, c.typed);
        Send(EM_SETSEL, 1, reinterpret_cast<void*>(-1));
        parent_.clear();
        Leave();
        SetFocus(field_);
        EXPECT_EQ(Text(field_), c.left) << c.cls << " " << c.method << " " << c.typed;
        EXPECT_EQ(Sel(field_), c.sel) << c.cls << " " << c.method << " " << c.typed;
        EXPECT_EQ(Codes(), (Notices{EN_KILLFOCUS, EN_SETFOCUS})) << c.cls << " " << c.method << " " << c.typed;
        SendMessageA(field_, WM_LBUTTONDBLCLK, 0, MAKELPARAM(5, 5));
        EXPECT_EQ(Sel(field_), Span(0, c.all)) << "a double click selects all";
        EXPECT_EQ(Send(WM_GETDLGCODE), 0x8089);
    }
}

// Every scroll code notifies, then runs the focus steps; spinning wraps, ignores @BLNK and limit, drops fractions.
TEST_F(Values, SpinWrapsAndRunsTheFocusSteps) {
    const struct { const char *cls, *method, *start; int code; const char* after; } cases[] = {
        {num, "", "2147483647", SB_LINEUP, "-2147483648"}, {num, "", "-2147483648", SB_LINEDOWN, "2147483647"},
        {num, "", "5", SB_ENDSCROLL, "5"},                 {num, "@BLNK@LIMIT(1)", "1", SB_LINEDOWN, "0"},
        {num, "@BLNK@LIMIT(1)", "0", SB_LINEDOWN, "-1"},   {real, "", "2.5", SB_LINEUP, "3"}};
    for (const auto& c : cases) {
        Make(c.cls, 0, c.method);
        SetWindowTextA(field_, c.start);
        parent_.clear();
        Send(WM_VSCROLL, c.code);
        EXPECT_EQ(Text(field_), c.after) << c.cls << " " << c.start << " " << c.code;
        EXPECT_EQ(Codes(), (Notices{EN_CHANGE, EN_SETFOCUS}));
    }
}

// Overlong values, methods, masks and places are cut, never overrun; a selection past the text counts as none.
TEST_F(Values, HostileInputIsCut) {
    const std::string many(1000, '7'), method = "@LIMIT(2)" + std::string(5000, 'm') + "@DECP(100000)";
    const struct { const char* cls; size_t cut, left, end; } cases[] = {
        {str, 159, 159, 158}, {num, 159, 158, 158}, {real, 0, 0, 158}, {cur, 159, 158, 158}, {date, 20, 20, 14}};
    for (const auto& c : cases) {
        Make(c.cls);
        Send(GXM_SETVALUE, 4, many.c_str());
        EXPECT_EQ(Text(field_).size(), c.cut) << c.cls;
        SetWindowLongA(field_, 12, MAKELONG(0xFFFF, 500));  // a selection far past the text
        SetWindowLongA(field_, 16, -9);
        Type(field_, "1");
        Press(field_, {VK_BACK, VK_DELETE});
        EXPECT_EQ(Text(field_).size(), c.left) << c.cls << ": a selection past the text counts as none";
        SetMethod(method.c_str());
        if (c.cls != date) EXPECT_EQ(Send(GXM_GETLIMIT), 2) << c.cls;
        Send(GXM_MASK, 1, std::string(4000, '*').c_str());
        SetWindowTextA(field_, std::string(300, '9').c_str());
        Type(field_, "abc");
        Press(field_, {VK_END, VK_BACK});
        Leave();
        UpdateWindow(field_);
        EXPECT_EQ(Text(field_).size(), c.end) << c.cls;
    }
    Make(real, 0, "@DECP(100000)");
    const double huge = 1e308;
    Send(GXM_SETVALUE, 3, &huge);
    EXPECT_EQ(Text(field_).size(), 159u);
}

// WIN.INI: row 0 and every row's negative format are read when the library starts, so a child process of this
// program checks them after the parent wrote [intl].
const char kChildVariable[] = "FK_CURRENCY_INTL_CHILD";

TEST_F(Values, CurrencyIntlChild) {
    if (GetEnvironmentVariableA(kChildVariable, nullptr, 0) == 0) GTEST_SKIP() << "runs as a child process";
    const double amounts[] = {1234.5, -1234.5, -1234.5};
    const char* methods[] = {"@LIMIT(20)", "@LIMIT(20)", "@CF_GERMANY"};
    const char* shown[] = {"1'234,500 kr", "-1'234,500 kr", "-1.234,50 DM"};  // no sDecimal: ","; iNegCurr 8
    for (int i = 0; i < 3; ++i) {
        Make(cur, CURR_DOUBLE, methods[i]);
        Send(GXM_SETVALUE, 0, &amounts[i]);
        EXPECT_EQ(Text(field_), shown[i]);
    }
}

TEST(CurrencyIntl, DefaultsComeFromWinIniAtStartUp) {
    IntlKeys keys{{"iCurrDigits", "3"}, {"iCurrency", "3"}, {"iNegCurr", "8"},
                  {"sCurrency", "kr"},  {"sThousand", "'"}, {"sDecimal", nullptr}};
    SetEnvironmentVariableA(kChildVariable, "1");
    fktest::SelfProcess child("--gtest_filter=Values.CurrencyIntlChild");
    SetEnvironmentVariableA(kChildVariable, nullptr);
    ASSERT_NE(child.pi.hProcess, nullptr);
    EXPECT_EQ(child.ExitCode(120000), 0u) << "the child's failures are printed above";
}

}  // namespace
