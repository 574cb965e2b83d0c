// gxNumeric32 as a dialog drives it: typing, keys, spin, values and what the parent receives.
#include <climits>

#include "tests/support/msgbox_watch.h"
#include "tests/win/fields/number_test.h"

namespace {

using namespace numtest;
using Notices = std::vector<WORD>;

class NumericField : public NumberField {
protected:
    NumericField() : NumberField("gxNumeric32") {}
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

TEST_F(NumericField, TypingTakesDigitsAndMinusAnywhere) {
    Type(field_, "1-2a-3. +");
    EXPECT_EQ(Text(field_), "1-2-3");
    EXPECT_EQ(Codes(), Notices(5, EN_CHANGE));
    EXPECT_EQ(Integer(), 1) << "only a leading number counts";
    EXPECT_EQ(SendMessageA(field_, EM_GETMODIFY, 0, 0), 1);
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
    SetText("4294967298");
    EXPECT_EQ(Integer(), 2) << "overflow wraps silently";
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

// With a selection Backspace takes one more character: the one before the caret's old place in the shortened text.
TEST_F(NumericField, BackspaceWithASelectionRemovesOneMore) {
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
}

TEST_F(NumericField, ClipboardKeys) {
    Type(field_, "1234");
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
    const char *num = FK_CLASS_NUMERIC, *real = FK_CLASS_REAL;
    const struct { const char* cls; DWORD style; WPARAM asked; LRESULT answer; } cases[] = {
        {num, NUM_CHAR | NUM_INTEGER, 0, 4}, {num, NUM_INTEGER, 0, 1}, {num, NUM_LONG, 0, 2}, {num, 0, 0, 2},
        {num, NUM_LONG, 4, 4}, {num, NUM_LONG, 1, 1}, {num, 0, 9, 2}, {real, REAL_CHAR | REAL_FLOAT, 0, 4},
        {real, REAL_FLOAT | REAL_DOUBLE, 0, 9}, {real, REAL_DOUBLE | REAL_LONGDOUBLE, 0, 3},
        {real, REAL_LONGDOUBLE, 0, 12}, {real, 0, 0, 3}, {real, REAL_DOUBLE, 9, 9}};
    LONG size = 0;
    for (const auto& c : cases) {
        cls_ = c.cls;
        Make(c.style);
        EXPECT_EQ(SendMessageA(field_, GXM_GETTYPE, c.asked, reinterpret_cast<LPARAM>(&size)), c.answer)
            << c.cls << " " << c.style << " / " << c.asked;
        if (c.answer == 4 && c.cls == num) EXPECT_EQ(size, 80);
    }
    EXPECT_EQ(SendMessageA(field_, EM_LIMITTEXT, 5, 0), 5) << "the real field answers the limit it takes";
    Type(field_, "1234567");
    EXPECT_EQ(Text(field_), "12345");
    cls_ = num;
    Make(NUM_CHAR | NUM_INTEGER, "@LIMIT(6)");  // set and get put the integer first
    SendMessageA(field_, GXM_GETTYPE, 0, reinterpret_cast<LPARAM>(&size));
    EXPECT_EQ(size, 6);
    const int32_t seven = 7;
    SendMessageA(field_, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(&seven));
    EXPECT_EQ(Text(field_), "7");
    EXPECT_EQ(Integer(0), 7);
}

// Both number classes: every scroll code notifies and then runs the focus steps; spinning wraps at the 32-bit
// limits, ignores @BLNK and the limit, and drops a fraction.
TEST_F(NumericField, SpinWrapsAndRunsTheFocusSteps) {
    const char *num = FK_CLASS_NUMERIC, *real = FK_CLASS_REAL;
    const struct { const char *cls, *method, *start; int code; const char* after; } cases[] = {
        {num, "", "2147483647", SB_LINEUP, "-2147483648"}, {num, "", "-2147483648", SB_LINEDOWN, "2147483647"},
        {num, "", "5", SB_ENDSCROLL, "5"},                 {num, "@BLNK@LIMIT(1)", "1", SB_LINEDOWN, "0"},
        {num, "@BLNK@LIMIT(1)", "0", SB_LINEDOWN, "-1"},   {real, "", "2.5", SB_LINEUP, "3"}};
    for (const auto& c : cases) {
        cls_ = c.cls;
        Make(0, c.method);
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
    const char *num = FK_CLASS_NUMERIC, *real = FK_CLASS_REAL;
    const struct { const char* cls; DWORD style; WPARAM type; const char* text; LRESULT answer; } cases[] = {
        {num, 0, 0, "50", 0},       {num, NUM_INTEGER, 0, "50", -1},   {num, NUM_LONG, 0, "5", 0},
        {num, 0, 1, "50", -1},      {num, 0, 2, "7x", 0},              {real, 0, 0, "50", 0},
        {real, 0, 12, "9.01", -1},  {real, REAL_FLOAT, 0, "12.5", -1}, {real, REAL_DOUBLE, 0, "1.5", 0}};
    for (const auto& c : cases) {
        cls_ = c.cls;
        Make(c.style, "@RNG(1,9)");
        SetWindowTextA(field_, c.text);
        EXPECT_EQ(SendMessageA(field_, GXM_VALIDATE, c.type, 0), c.answer) << c.cls << " " << c.style << " " << c.type;
    }
    EXPECT_EQ(boxes.boxes().size(), 4u);
}

TEST_F(NumericField, FocusAndSelectionMessages) {
    Type(field_, "123");
    SendMessageA(field_, EM_SETSEL, 1, static_cast<LPARAM>(-1));
    EXPECT_EQ(Sel(field_), std::make_pair(1, 3));
    parent_.clear();
    Leave();
    EXPECT_EQ(Codes(), Notices{EN_KILLFOCUS});
    EXPECT_EQ(Sel(field_), std::make_pair(0, 0)) << "leaving drops the selection";
    SendMessageA(field_, WM_LBUTTONDBLCLK, 0, MAKELPARAM(5, 5));
    EXPECT_EQ(Sel(field_), std::make_pair(0, 3));
    EXPECT_EQ(SendMessageA(field_, WM_GETDLGCODE, 0, 0), 0x8089);
}

// A click takes the focus and a drag selects, counted from the right edge in a right-justified field; keys wait
// while the button is held.
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
}

}  // namespace
