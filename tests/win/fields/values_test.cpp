// Values, types, limits, validation, leaving and the spin of the five entry fields, as an application asks for them.
#include <ctime>

#include "tests/support/self_process.h"
#include "tests/win/fields/field_test.h"

namespace {

using namespace fieldtest;
using Values = Field;

// What a value points at, by the row's kind: i int32, l a date's calendar seconds, d double, t struct tm
// (the value as yyyymmdd), s text, 0 a null pointer.
union Value {
    int32_t i;
    double d;
    struct tm t;
    char s[160];
};

Value ValueOf(char kind, double v, const char* text) {
    Value out;
    const int32_t whole = static_cast<int32_t>(v);  // local midnight of a date's day comes back as it went
    out.t = {0, 0, 0, whole % 100, whole / 100 % 100 - 1, whole / 10000 - 1900, 0, 0, kind == 'l' ? -1 : 0};
    if (kind == 'i' || kind == 'l') out.i = kind == 'l' ? static_cast<int32_t>(mktime(&out.t)) : whole;
    if (kind == 'd') out.d = v;
    if (kind == 's') lstrcpynA(out.s, text, sizeof out.s);
    return out;
}

std::string Read(char kind, const Value& v) {  // a value as text, to compare
    const auto n = [](int part) { return std::to_string(part); };
    if (kind == 'd') return std::to_string(v.d);
    if (kind == 't') return n(v.t.tm_year) + "/" + n(v.t.tm_mon) + "/" + n(v.t.tm_mday);
    return kind == 's' ? v.s : n(v.i);
}

// A value set is shown without EN_CHANGE (the field held "9" unless the row says otherwise); read back in the same
// type it gives the value again, or what the row says, and not a byte more than the type takes.
TEST_F(Values, SetShowsAndGetReadsBack) {
    const std::string longest(159, '7');  // the most a field holds
    const struct {
        const char* cls; DWORD style; const char* method; WPARAM type; char kind; double value;
        const char* shown; bool back = true; const char *text = "", *held = "9", *read = nullptr;
    } cases[] = {
        {num, NUM_LONG, "@BLNK", 1, 'i', 0, ""}, {num, NUM_LONG, "@BLNK", 0, 'i', -42, "-42"},
        {num, 0, "", 4, 's', 0, "12abc", true, "12abc"}, {num, 0, "", 7, 's', 0, "", false, "9"},  // unknown: emptied
        {real, REAL_DOUBLE, "@DECP(2)", 0, 'd', -1234.5, "-1234.50"},
        {real, REAL_DOUBLE, "", GXT_FLOAT, 'i', 1074790400, "2", false},  // the bits of the float 2.25
        {real, REAL_DOUBLE, "@BLNK", 3, 0, 0, "", false}, {real, REAL_DOUBLE, "", 4, 's', 0, "9", false, "5.5"},
        {cur, CURR_CHAR, "@CF_FRANCE", GXT_DOUBLE, 'd', 98765.4, "98.765,40 F"},  // wParam picks the type
        {cur, CURR_CHAR, "@CF_UNITEDSTATES", 0, 's', 0, "$1,234.50", true, "1234.5", "9", "$1,234.50"},
        {cur, 0, "@CF_UNITEDSTATES", 0, 'i', 5, "$0.00", false, "", ""},  // no type: an empty field gets a zero
        {cur, CURR_LONG, "@CF_UNITEDSTATES", 0, 'i', 123456, "$1,234.56"},  // hundredths
        {date, DATE_MMDDYYYY, "", GXT_TMSTRUCT, 't', 19991231, "12311999"},
        {date, DATE_DDMMYYYY | DATE_LONG, "", 0, 'l', 20040229, "29022004"},
        {date, DATE_MMDDYYYY, "", 0, 0, 0, "00000000", false, "", ""},  // the empty date
        {date, DATE_MMDDYYYY, "", GXT_TMSTRUCT, 't', 19000100, "00000000"},
        {str, 0, "", 0, 's', 0, longest.c_str(), true, longest.c_str(), "9", longest.c_str() + 80},  // read: 79
        {str, 0, "@LIMIT(3)", 0, 's', 0, "hello", true, "hello", "9", "hel"}};
    for (const auto& c : cases) {
        Make(c.cls, c.style, c.method);
        Value in = ValueOf(c.kind, c.value, c.text), out;
        SetWindowTextA(field_, c.held);  // what a value that is not shown leaves
        Send(GXM_SETVALUE, c.type, c.kind ? &in : nullptr);
        SCOPED_TRACE(std::string(c.cls) + " " + c.method + " " + std::to_string(c.value));
        EXPECT_EQ(Text(field_) + (Codes().empty() ? "" : " told"), c.shown);
        if (!c.back) continue;
        std::memset(&out, '#', sizeof out);
        Send(GXM_GETVALUE, c.type, &out);
        const size_t size = c.kind == 'd' ? 8 : c.kind == 't' ? sizeof out.t : c.kind == 's' ? strlen(out.s) + 1 : 4;
        EXPECT_EQ(Read(c.kind, out) + (reinterpret_cast<char*>(&out)[size] == '#' ? "" : " and more"),
                  c.read ? c.read : Read(c.kind, in));
    }
}

// The type a field reports: from its style, the text type first, unless the caller asks for one; a text's size.
// Every class validates as that type; the parent hears of each refusal.
TEST_F(Values, TypeFromStyleOrAskedAndValidationByIt) {
    const struct { const char* cls; DWORD style; const char *method, *text; WPARAM wp; LRESULT type; LONG size, valid; }
    cases[] = {
        {num, NUM_CHAR | NUM_INTEGER, "@LIMIT(6)", "", 0, 4, 6, 0}, {num, NUM_LONG, "@RNG(1,9)", "50", 0, 2, -1, -1},
        {num, NUM_LONG, "", "", 4, 4, 80, 0}, {num, NUM_INTEGER, "@RNG(1,9)", "50", 0, 1, -1, -1},
        {num, 0, "@RNG(1,9)", "50", 0, 2, -1, 0},
        {real, REAL_CHAR | REAL_FLOAT, "", "", 0, 4, 80, 0}, {real, REAL_DOUBLE, "@RNG(1,9)", "1.5", 9, 9, -1, 0},
        {real, REAL_FLOAT | REAL_DOUBLE, "@RNG(1,9)", "12.5", 0, 9, -1, -1},
        {real, 0, "@RNG(1,9)", "10", 12, 12, -1, -1}, {cur, 0, "@LIMIT(7)", "", 0, 4, 80, 0},
        {cur, CURR_DOUBLE | CURR_LONG, "@CF_UNITEDSTATES@RNG(1,2000)", "$2,000.50", 0, 3, -1, -1},
        {cur, 0, "@CF_UNITEDSTATES@RNG(1,2000)", "$2,000.50", 2, 2, -1, 0},
        {date, DATE_MMDDYYYY | DATE_CHAR, "", "", 0, 4, 20, 0}, {str, 0, "@MND", "Al", 0, GXT_TEXT, 80, 0},
        {date, DATE_MMDDYY | DATE_LONG, "@RNG(06/15/95,)", "061495", 0, 2, -1, -1},
        {date, DATE_DDMMYY, "@RNG(15/06/95,)", "140695", 0, GXT_TMSTRUCT, -1, -1},
        {date, DATE_YYYYMMDD, "@RNG(1995/06/15,)", "19950615", 0, GXT_TMSTRUCT, -1, 0},
        {str, 0, "@LIMIT(3)@MND", "", 0, GXT_TEXT, 3, -1}};
    for (const auto& c : cases) {
        Make(c.cls, c.style, c.method);
        SetWindowTextA(field_, c.text);
        LONG size = -1;
        const LRESULT type = Send(GXM_GETTYPE, c.wp, &size), valid = Send(GXM_VALIDATE, c.wp);
        EXPECT_EQ(std::vector<LONG>({LONG(type), size, LONG(valid), LONG(parent_.Of(GXN_ERROR).size())}),
                  std::vector<LONG>({LONG(c.type), c.size, c.valid, -c.valid}))
            << c.cls << " " << c.style << " " << c.method << " " << c.text << " / " << c.wp;
    }
}

// The limit messages and what typing then takes; the method string's @LIMIT sets the limit and its absence clears it.
// Every scroll code notifies, then runs the focus steps; spinning wraps, ignores @BLNK and limit, drops fractions.
// A method with "@DATE" makes a date field show today.
TEST_F(Values, LimitMessagesAndTheSpin) {
    char today[16];  // what "@DATE" puts in a date field of the default order
    GetDateFormatA(LOCALE_USER_DEFAULT, 0, nullptr, "MMddyyyy", today, sizeof today);
    const struct { const char *cls, *method, *start; UINT msg; WPARAM wp; LPARAM lp; LRESULT answer; const char* end; }
    cases[] = {
        {num, "@LIMIT(3)", "", GXM_GETLIMIT, 0, 0, 3, "123"}, {num, "", "", EM_LIMITTEXT, 7, 0, 0, "1234567"},
        {num, "@LIMIT(3)", "", GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@AUTOTAB"), 0, "1234567890"},
        {real, "", "", EM_LIMITTEXT, 5, 0, 5, "12345"}, {cur, "@LIMIT(7)", "", GXM_SETLIMIT, 0, 99, 7, "1234567"},
        {cur, "@LIMIT(7)", "", GXM_SETLIMIT, 1, 4, 0, "1234"}, {str, "@LIMIT(5)", "", GXM_SETLIMIT, 0, 9, 0, "1234567890"},
        {num, "", "2147483647", WM_VSCROLL, SB_LINEUP, 0, 0, "-2147483648"},
        {num, "", "5", WM_VSCROLL, SB_ENDSCROLL, 0, 0, "5"}, {real, "", "2.5", WM_VSCROLL, SB_LINEUP, 0, 0, "3"},
        {num, "@BLNK@LIMIT(1)", "0", WM_VSCROLL, SB_LINEDOWN, 0, 0, "-1"},
        {date, "", "x", GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@DATE"), 0, today}};
    for (const auto& c : cases) {
        Make(c.cls, 0, c.method);
        SetWindowTextA(field_, c.start);
        EXPECT_EQ(SendMessageA(field_, c.msg, c.wp, c.lp), c.answer) << c.cls << " " << c.method << " " << c.msg;
        if (c.msg == WM_VSCROLL) EXPECT_EQ(Codes(), (Notices{EN_CHANGE, EN_SETFOCUS}));
        Type(field_, *c.start ? "" : "1234567890");
        EXPECT_EQ(Text(field_), c.end) << c.cls << " " << c.method << " " << c.msg;
    }
}

// Leaving: the numeric field drops its selection, real text comes to its places, a four-digit year gets its century
// (not with day 00), all without EN_CHANGE; a double click selects all.
TEST_F(Values, LeavingTidiesTheText) {
    IntlKeys pattern{{"sShortDate", "dd.MM.yy"}};
    Make(date, DATE_DEFAULT);
    EXPECT_EQ(GetWindowLongA(field_, GWL_STYLE) & 0xFFFF, DATE_DDMMYYYY | DATE_DOT) << "the system's short date";
    EXPECT_EQ(Send(GXM_DATE_GETFORMAT), MAKELONG('.', 5));
    const struct { const char* cls; DWORD style; const char *method, *typed, *left; Span sel; int all; } cases[] = {
        {num, 0, "", "123", "123", {0, 0}, 3}, {real, 0, "", "123", "123", {1, 3}, 3},
        {real, 0, "@DECP(2)", ".5", "0.50", {1, 2}, 4}, {str, 0, "", "abc", "abc", {0, 1}, 3},
        {date, DATE_MMDDYYYY, "", "123195", "12311995", {0, 0}, 10},
        {date, DATE_MMDDYY, "", "123195", "123195", {0, 0}, 8},
        {date, DATE_MMDDYYYY, "", "120095", "120095", {0, 0}, 10},
        {date, DATE_DEFAULT, "", "311299", "31121999", {0, 0}, 10}};
    for (const auto& c : cases) {
        Make(c.cls, c.style, c.method);
        Type(field_, c.typed);
        Send(EM_SETSEL, 1, reinterpret_cast<void*>(-1));
        parent_.clear();
        SetFocus(other_);
        SetFocus(field_);
        const auto left = std::make_pair(Sel(field_), Codes());
        SendMessageA(field_, WM_LBUTTONDBLCLK, 0, MAKELPARAM(5, 5));  // selects all
        EXPECT_EQ(std::make_tuple(Text(field_), left.first, left.second, Sel(field_), Send(WM_GETDLGCODE)),
                  std::make_tuple(std::string(c.left), c.sel, Notices{EN_KILLFOCUS, EN_SETFOCUS}, Span(0, c.all), 0x8089))
            << c.cls << " " << c.method << " " << c.typed;
    }
}

// WIN.INI's row 0 and every row's negative format are read when the library starts: a child process of this
// program checks them after the parent wrote [intl] (no sDecimal: ","; iNegCurr 8).
TEST_F(Values, CurrencyDefaultsComeFromWinIniAtStartUp) {
    if (GetEnvironmentVariableA("FK_CURRENCY_INTL_CHILD", nullptr, 0) == 0) {
        IntlKeys keys{{"iCurrDigits", "3"}, {"iCurrency", "3"}, {"iNegCurr", "8"},
                      {"sCurrency", "kr"},  {"sThousand", "'"}, {"sDecimal", nullptr}};
        SetEnvironmentVariableA("FK_CURRENCY_INTL_CHILD", "1");
        fktest::SelfProcess child("--gtest_filter=Values.CurrencyDefaultsComeFromWinIniAtStartUp");
        SetEnvironmentVariableA("FK_CURRENCY_INTL_CHILD", nullptr);
        ASSERT_NE(child.pi.hProcess, nullptr);
        EXPECT_EQ(child.ExitCode(120000), 0u) << "the child's failures are printed above";
        return;
    }
    const double amount = -1234.5;
    for (auto [method, shown] : {std::pair{"@LIMIT(20)", "-1'234,500 kr"}, {"@CF_GERMANY", "-1.234,50 DM"}}) {
        Make(cur, CURR_DOUBLE, method);
        Send(GXM_SETVALUE, 0, &amount);
        EXPECT_EQ(Text(field_), shown);
    }
}

}  // namespace
