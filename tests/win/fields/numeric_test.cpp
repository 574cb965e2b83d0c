// gxNumeric32 and gxReal32 as a dialog drives them: typing, keys, spin, values, decimal places, notices.
#include <climits>
#include <cmath>

#include "tests/support/msgbox_watch.h"
#include "tests/win/fields/number_test.h"

namespace {

using namespace numtest;
using Notices = std::vector<WORD>;
const char *const num = FK_CLASS_NUMERIC, *const real = FK_CLASS_REAL;

class NumericField : public NumberField {
protected:
    NumericField() : NumberField(num) {}
    void MakeOf(const char* cls, DWORD style, const char* method = nullptr) {
        cls_ = cls;
        Make(style, method);
    }
    int32_t Integer(WPARAM type = 1) {
        int32_t v = 12345;
        SendMessageA(field_, GXM_GETVALUE, type, reinterpret_cast<LPARAM>(&v));
        return v;
    }
    void SetText(const char* text) { SendMessageA(field_, GXM_SETVALUE, 4, reinterpret_cast<LPARAM>(text)); }
    void Press(int modifier, UINT vk) {
        Held held({modifier});
        Key(field_, vk);
    }
};

// Numeric takes digits and "-" anywhere, real one point and one sign; a selection lifts the checks.
TEST_F(NumericField, TypingIsFilteredByClass) {
    Type(field_, "1-2a-3. +");
    EXPECT_EQ(Text(field_), "1-2-3");
    EXPECT_EQ(Codes(), Notices(5, EN_CHANGE));
    EXPECT_EQ(Integer(), 1) << "only a leading number counts";
    EXPECT_EQ(SendMessageA(field_, EM_GETMODIFY, 0, 0), 1);
    MakeOf(real, 0);
    Type(field_, "-1.2.-3a");
    EXPECT_EQ(Text(field_), "-1.23");
    SendMessageA(field_, EM_SETSEL, 0, 2);
    Type(field_, ".");
    EXPECT_EQ(Text(field_), "..23");
    SendMessageA(field_, EM_SETSEL, 0, 4);
    Type(field_, "--");
    EXPECT_EQ(Text(field_), "-");
}

TEST_F(NumericField, ValuesAreSetAsDecimalTextWithoutChangeNotices) {
    const struct { const char* method; int32_t value; const char* shown; } cases[] = {
        {"", 0, "0"}, {"@BLNK", 0, ""}, {"@blnk", 0, ""}, {"@BLNK", -42, "-42"}, {"", INT_MIN, "-2147483648"}};
    Make(NUM_LONG);
    for (const auto& c : cases) {
        SetMethod(c.method);
        for (WPARAM type : {0u, 1u, 2u}) {
            SendMessageA(field_, GXM_SETVALUE, type, reinterpret_cast<LPARAM>(&c.value));
            EXPECT_EQ(Text(field_), c.shown) << c.method << " type " << type;
            EXPECT_EQ(Integer(type), c.value);
        }
    }
    EXPECT_TRUE(Codes().empty());
    SetText("12abc");
    EXPECT_EQ(Text(field_), "12abc") << "text is not checked";
    SendMessageA(field_, GXM_SETVALUE, 7, reinterpret_cast<LPARAM>("9"));
    EXPECT_EQ(Text(field_), "") << "an unknown type empties the field";
}

TEST_F(NumericField, LimitRefusesAndAutoTabMovesOn) {
    SetMethod("@LIMIT(3)@AUTOTAB");
    EXPECT_EQ(SendMessageA(field_, GXM_GETLIMIT, 0, 0), 3);
    Type(field_, "12");
    EXPECT_EQ(GetFocus(), field_);
    Type(field_, "3");
    EXPECT_EQ(GetFocus(), other_) << "the third digit fills the field";
    EXPECT_EQ(Codes(), (Notices{EN_CHANGE, EN_CHANGE, EN_CHANGE, EN_KILLFOCUS}));
    SetFocus(field_);
    Key(field_, VK_END);
    Type(field_, "4");
    EXPECT_EQ(Text(field_), "123");
    SendMessageA(field_, EM_SETSEL, 0, 1);
    Type(field_, "9");
    EXPECT_EQ(Text(field_), "923") << "a selection lifts the limit";
    SetMethod("@AUTOTAB");
    EXPECT_EQ(SendMessageA(field_, GXM_GETLIMIT, 0, 0), 0) << "no @LIMIT: no limit";
    EXPECT_EQ(SendMessageA(field_, EM_LIMITTEXT, 7, 0), 0);
    EXPECT_EQ(SendMessageA(field_, GXM_GETLIMIT, 0, 0), 7);
}

// Backspace with a selection takes one more; Ctrl+Insert copies one past the selection; a paste is not filtered.
TEST_F(NumericField, BackspaceAndClipboardKeys) {
    const struct { WPARAM start; LPARAM end; const char* result; } cases[] = {
        {3, 1, "45"}, {1, 3, "14"}, {0, 5, ""}, {4, 4, "1235"}};
    for (const auto& c : cases) {
        SetText("12345");
        SendMessageA(field_, EM_SETSEL, c.start, c.end);
        parent_.clear();
        Key(field_, VK_BACK);
        EXPECT_EQ(Text(field_), c.result) << c.start << "," << c.end;
        EXPECT_EQ(Codes(), Notices{EN_CHANGE});
        EXPECT_EQ(Sel(field_), std::make_pair(0, 0));
    }
    SetText("1234");
    SendMessageA(field_, EM_SETSEL, 1, 3);
    Press(VK_CONTROL, VK_INSERT);
    EXPECT_EQ(fktest::ClipboardText(), "234") << "the character after the selection comes along";
    twClipboardCopyText(field_, "abc", 10);
    parent_.clear();
    Press(VK_SHIFT, VK_INSERT);
    EXPECT_EQ(Text(field_), "abc") << "a paste is not filtered";
    EXPECT_TRUE(Codes().empty());
    SendMessageA(field_, EM_SETSEL, 0, 1);
    Press(VK_SHIFT, VK_DELETE);
    EXPECT_EQ(fktest::ClipboardText(), "ab");
    EXPECT_EQ(Text(field_), "bc");
    Make(NUM_RIGHTJUST);  // right-justified: Insert only drops the selection
    Type(field_, "56");
    SendMessageA(field_, EM_SETSEL, 0, 2);
    Press(VK_CONTROL, VK_INSERT);
    EXPECT_EQ(fktest::ClipboardText(), "ab");
    EXPECT_EQ(Sel(field_), std::make_pair(0, 0));
}

// Both number classes: the value kind from the style, text first, unless the caller asks for one.
TEST_F(NumericField, ValueKindsAndLimits) {
    const struct { const char* cls; DWORD style; WPARAM asked; LRESULT answer; } cases[] = {
        {num, NUM_CHAR | NUM_INTEGER, 0, 4}, {num, NUM_INTEGER, 0, 1}, {num, NUM_LONG, 0, 2}, {num, 0, 0, 2},
        {num, NUM_LONG, 4, 4}, {num, NUM_LONG, 1, 1}, {num, 0, 9, 2}, {real, 0, 0, 3}, {real, REAL_DOUBLE, 9, 9},
        {real, REAL_CHAR | REAL_FLOAT, 0, 4}, {real, REAL_FLOAT | REAL_DOUBLE, 0, 9}, {real, REAL_LONGDOUBLE, 0, 12},
        {real, REAL_DOUBLE | REAL_LONGDOUBLE, 0, 3}};
    LONG size = 0;
    for (const auto& c : cases) {
        MakeOf(c.cls, c.style);
        EXPECT_EQ(SendMessageA(field_, GXM_GETTYPE, c.asked, reinterpret_cast<LPARAM>(&size)), c.answer)
            << c.cls << " " << c.style << " / " << c.asked;
        if (c.answer == 4 && c.cls == num) EXPECT_EQ(size, 80);
    }
    EXPECT_EQ(SendMessageA(field_, EM_LIMITTEXT, 5, 0), 5) << "the real field answers the limit it takes";
    Type(field_, "1234567");
    EXPECT_EQ(Text(field_), "12345");
    MakeOf(num, NUM_CHAR | NUM_INTEGER, "@LIMIT(6)");  // set and get put the integer first
    SendMessageA(field_, GXM_GETTYPE, 0, reinterpret_cast<LPARAM>(&size));
    EXPECT_EQ(size, 6);
    const int32_t seven = 7;
    SendMessageA(field_, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(&seven));
    EXPECT_EQ(Text(field_), "7");
    EXPECT_EQ(Integer(0), 7);
}

// Every scroll code notifies, then runs the focus steps; spinning wraps, ignores @BLNK and limit, drops fractions.
TEST_F(NumericField, SpinWrapsAndRunsTheFocusSteps) {
    const struct { const char *cls, *method, *start; int code; const char* after; } cases[] = {
        {num, "", "2147483647", SB_LINEUP, "-2147483648"}, {num, "", "-2147483648", SB_LINEDOWN, "2147483647"},
        {num, "", "5", SB_ENDSCROLL, "5"},                 {num, "@BLNK@LIMIT(1)", "1", SB_LINEDOWN, "0"},
        {num, "@BLNK@LIMIT(1)", "0", SB_LINEDOWN, "-1"},   {real, "", "2.5", SB_LINEUP, "3"}};
    for (const auto& c : cases) {
        MakeOf(c.cls, 0, c.method);
        SetWindowTextA(field_, c.start);
        parent_.clear();
        SendMessageA(field_, WM_VSCROLL, c.code, 0);
        EXPECT_EQ(Text(field_), c.after) << c.cls << " " << c.start << " " << c.code;
        EXPECT_EQ(Codes(), (Notices{EN_CHANGE, EN_SETFOCUS}));
    }
}

// Both number classes validate as the style's type or the one asked for; with no type nothing is checked.
TEST_F(NumericField, ValidationByStyleOrType) {
    fktest::MessageBoxWatcher boxes;
    const struct { const char* cls; DWORD style; WPARAM type; const char* text; LRESULT answer; } cases[] = {
        {num, 0, 0, "50", 0},       {num, NUM_INTEGER, 0, "50", -1},   {num, NUM_LONG, 0, "5", 0},
        {num, 0, 1, "50", -1},      {num, 0, 2, "7x", 0},              {real, 0, 0, "50", 0},
        {real, 0, 12, "9.01", -1},  {real, REAL_FLOAT, 0, "12.5", -1}, {real, REAL_DOUBLE, 0, "1.5", 0}};
    for (const auto& c : cases) {
        MakeOf(c.cls, c.style, "@RNG(1,9)");
        SetWindowTextA(field_, c.text);
        EXPECT_EQ(SendMessageA(field_, GXM_VALIDATE, c.type, 0), c.answer) << c.cls << " " << c.style << " " << c.type;
    }
    EXPECT_EQ(boxes.boxes().size(), 4u);
}

// Leaving drops the selection in the numeric field and keeps it in the real one.
TEST_F(NumericField, FocusAndSelectionMessages) {
    for (const char* cls : {num, real}) {
        MakeOf(cls, 0);
        Type(field_, "123");
        SendMessageA(field_, EM_SETSEL, 1, static_cast<LPARAM>(-1));
        EXPECT_EQ(Sel(field_), std::make_pair(1, 3));
        parent_.clear();
        Leave();
        EXPECT_EQ(Codes(), Notices{EN_KILLFOCUS});
        EXPECT_EQ(Sel(field_), cls == num ? std::make_pair(0, 0) : std::make_pair(1, 3)) << cls;
        SendMessageA(field_, WM_LBUTTONDBLCLK, 0, MAKELPARAM(5, 5));
        EXPECT_EQ(Sel(field_), std::make_pair(0, 3)) << "a double click selects all";
        EXPECT_EQ(SendMessageA(field_, WM_GETDLGCODE, 0, 0), 0x8089);
    }
}

// A click takes the focus, a drag selects (from the right edge when right-justified); keys wait for the button.
TEST_F(NumericField, MouseSelectsInBothAlignments) {
    for (DWORD style : {0ul, static_cast<unsigned long>(NUM_RIGHTJUST)}) {
        Make(style);
        Type(field_, "12345");
        Leave();
        HDC dc = GetDC(field_);
        auto x = [dc](int n) { SIZE s{}; GetTextExtentPoint32A(dc, "12345", n, &s); return static_cast<int>(s.cx); };
        RECT r;
        GetClientRect(field_, &r);
        const int shift = style ? r.right - x(5) - 2 : 0, from = shift + x(1), to = shift + x(4);
        ReleaseDC(field_, dc);
        SendMessageA(field_, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(from, 5));
        EXPECT_EQ(GetFocus(), field_);
        SendMessageA(field_, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(to, 5));
        Type(field_, "9");
        EXPECT_EQ(Text(field_), "12345") << "typing waits for the button";
        SendMessageA(field_, WM_LBUTTONUP, 0, MAKELPARAM(to, 5));
        EXPECT_EQ(GetCapture(), nullptr);
        EXPECT_EQ(Sel(field_), std::make_pair(1, 4)) << "style " << style;
        Type(field_, "9");
        EXPECT_EQ(Text(field_), "195") << "style " << style;
    }
}

// Real text is brought to its decimal places on leaving (no EN_CHANGE) and on setting; long double goes in as a
// double and comes out as a float (4 bytes).
TEST_F(NumericField, RealDecimalPlacesAndValueTypes) {
    const struct { const char* method; const char* typed; const char* left; } cases[] = {
        {"@DECP(2)", "3.14159", "3.14"}, {"@DECP(2)", "2.675", "2.68"}, {"@DECP(2)", "7", "7.00"},
        {"@DECP(2)", ".5", "0.50"},      {"@DECP(0)", "3.99", "3"},     {"", "12.345", "12.345"}};
    for (const auto& c : cases) {
        MakeOf(real, 0, c.method);
        Type(field_, c.typed);
        parent_.clear();
        Leave();
        EXPECT_EQ(Text(field_), c.left) << c.method << " " << c.typed;
        EXPECT_EQ(Codes(), std::vector<WORD>{EN_KILLFOCUS});
    }
    const struct { const char* method; double value; const char* shown; } set[] = {
        {"@DECP(0)", 3.99, "4"}, {"", 12.345, "12"}, {"@DECP(3)", 0.0, "0.000"}, {"@DECP(3)@BLNK", 0.0, ""},
        {"@BLNK", -0.0, ""}, {"@DECP(2)", 0.5, "0.50"}, {"@DECP(2)", -1234.5, "-1234.50"}, {"", 0.0, "0"}};
    for (const auto& c : set) {
        MakeOf(real, REAL_DOUBLE, c.method);
        SendMessageA(field_, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(&c.value));
        EXPECT_EQ(Text(field_), c.shown) << c.method << " " << c.value;
        EXPECT_TRUE(Codes().empty());
    }
    const float quarter = 2.25f;
    SendMessageA(field_, GXM_SETVALUE, 9, reinterpret_cast<LPARAM>(&quarter));
    EXPECT_EQ(Text(field_), "2");
    SendMessageA(field_, GXM_SETVALUE, 4, reinterpret_cast<LPARAM>("5.5"));
    EXPECT_EQ(Text(field_), "2") << "a text value is not shown";
    SetMethod("@BLNK");
    SendMessageA(field_, GXM_SETVALUE, 3, 0);
    EXPECT_EQ(Text(field_), "") << "a null value with @BLNK empties the field";
    SetWindowTextA(field_, "  -2.5e1x");
    union { double d; float f; unsigned char bytes[8]; } out;
    for (WPARAM type : {3u, 9u, 12u}) {
        std::memset(&out, 0xAA, sizeof out);
        SendMessageA(field_, GXM_GETVALUE, type, reinterpret_cast<LPARAM>(&out));
        EXPECT_EQ(type == 3 ? out.d : out.f, -25.0) << type;
        if (type != 3) EXPECT_TRUE(out.bytes[4] == 0xAA && out.bytes[7] == 0xAA) << "four bytes only for " << type;
    }
    SetWindowTextA(field_, "1e300");
    SendMessageA(field_, GXM_GETVALUE, 9, reinterpret_cast<LPARAM>(&out));
    EXPECT_TRUE(std::isinf(out.f));
    char text[160];
    SendMessageA(field_, GXM_GETVALUE, 4, reinterpret_cast<LPARAM>(text));
    EXPECT_STREQ(text, "1e300");
}

TEST_F(NumericField, HostileInputIsCut) {
    SetText(std::string(1000, '7').c_str());
    EXPECT_EQ(Text(field_).size(), 159u);
    SetWindowLongA(field_, 12, MAKELONG(0xFFFF, 500));  // a selection far past the text
    SetWindowLongA(field_, 16, -9);
    Type(field_, "1");
    Key(field_, VK_BACK);
    Key(field_, VK_DELETE);
    EXPECT_EQ(Text(field_).size(), 158u) << "a selection past the text counts as none; the caret is clamped";
    SetMethod(("@LIMIT(2)" + std::string(3000, 'm')).c_str());
    EXPECT_EQ(SendMessageA(field_, GXM_GETLIMIT, 0, 0), 2);
    MakeOf(real, 0, "@DECP(100000)");
    SetWindowTextA(field_, std::string(300, '9').c_str());
    Leave();
    EXPECT_EQ(Text(field_).size(), 159u);
    double value = 1e308;
    SendMessageA(field_, GXM_SETVALUE, 3, reinterpret_cast<LPARAM>(&value));
    EXPECT_EQ(Text(field_).size(), 159u);
    SetMethod("@DECP(-5)");
    value = -7.25;
    SendMessageA(field_, GXM_SETVALUE, 3, reinterpret_cast<LPARAM>(&value));
    EXPECT_EQ(Text(field_), "-7") << "negative places count as none";
}

}  // namespace
