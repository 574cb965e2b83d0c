// gxNumeric32 as a dialog drives it: typing, keys, spin, values and what
// the parent receives.

#include <climits>

#include "tests/support/msgbox_watch.h"
#include "tests/win/fields/number_test.h"

namespace {

using namespace numtest;

class NumericField : public NumberField {
protected:
    NumericField() : NumberField("gxNumeric32") {}
    int32_t Integer(WPARAM type = 1) {
        int32_t v = 12345;
        SendMessageA(field_, GXM_GETVALUE, type, reinterpret_cast<LPARAM>(&v));
        return v;
    }
};

TEST_F(NumericField, TypingTakesDigitsAndMinusAnywhere) {
    Type(field_, "1-2a-3. +");
    EXPECT_EQ(Text(field_), "1-2-3");
    EXPECT_EQ(Codes(), std::vector<WORD>(5, EN_CHANGE));
    EXPECT_EQ(Integer(), 1) << "only a leading number counts";
    EXPECT_EQ(SendMessageA(field_, EM_GETMODIFY, 0, 0), 1);
}

struct Setting {
    const char* method;
    int32_t value;
    const char* shown;
};

TEST_F(NumericField, IntegersAreSetAsDecimalTextWithoutChangeNotices) {
    const Setting cases[] = {
        {"", 0, "0"}, {"@BLNK", 0, ""}, {"@blnk", 0, ""}, {"@BLNK", -42, "-42"}, {"", INT_MIN, "-2147483648"},
    };
    Make(NUM_LONG);
    for (const Setting& c : cases) {
        SetMethod(c.method);
        for (WPARAM type : {0u, 1u, 2u}) {
            SendMessageA(field_, GXM_SETVALUE, type, reinterpret_cast<LPARAM>(&c.value));
            EXPECT_EQ(Text(field_), c.shown) << c.method << " type " << type;
            EXPECT_EQ(Integer(type), c.value);
        }
    }
    EXPECT_TRUE(Codes().empty());
    SendMessageA(field_, GXM_SETVALUE, 4, reinterpret_cast<LPARAM>("12abc"));
    EXPECT_EQ(Text(field_), "12abc") << "text is not checked";
    SendMessageA(field_, GXM_SETVALUE, 7, reinterpret_cast<LPARAM>("9"));
    EXPECT_EQ(Text(field_), "") << "an unknown type empties the field";
    SendMessageA(field_, GXM_SETVALUE, 4, reinterpret_cast<LPARAM>("4294967298"));
    EXPECT_EQ(Integer(), 2) << "overflow wraps silently";
}

TEST_F(NumericField, LimitRefusesAndAutoTabMovesOn) {
    SetMethod("@LIMIT(3)@AUTOTAB");
    EXPECT_EQ(SendMessageA(field_, GXM_GETLIMIT, 0, 0), 3);
    Type(field_, "12");
    EXPECT_EQ(GetFocus(), field_);
    Type(field_, "3");
    EXPECT_EQ(GetFocus(), other_) << "the third digit fills the field";
    EXPECT_EQ(Codes(), (std::vector<WORD>{EN_CHANGE, EN_CHANGE, EN_CHANGE, EN_KILLFOCUS}));
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

struct Backspacing {
    WPARAM start;
    LPARAM end;
    const char* result;
};

// With a selection Backspace takes one more character: the one before the
// caret's old place in the shortened text.
TEST_F(NumericField, BackspaceWithASelectionRemovesOneMore) {
    const Backspacing cases[] = {{3, 1, "45"}, {1, 3, "14"}, {0, 5, ""}, {4, 4, "1235"}};
    for (const Backspacing& c : cases) {
        SendMessageA(field_, GXM_SETVALUE, 4, reinterpret_cast<LPARAM>("12345"));
        SendMessageA(field_, EM_SETSEL, c.start, c.end);
        parent_.clear();
        Key(field_, VK_BACK);
        EXPECT_EQ(Text(field_), c.result) << c.start << "," << c.end;
        EXPECT_EQ(Codes(), std::vector<WORD>{EN_CHANGE});
        EXPECT_EQ(Sel(field_), std::make_pair(0, 0));
    }
}

TEST_F(NumericField, ClipboardKeys) {
    Type(field_, "1234");
    SendMessageA(field_, EM_SETSEL, 1, 3);
    {
        Held ctrl({VK_CONTROL});
        Key(field_, VK_INSERT);
    }
    EXPECT_EQ(fktest::ClipboardText(), "234") << "the character after the selection comes along";
    twClipboardCopyText(field_, "abc", 10);
    parent_.clear();
    {
        Held shift({VK_SHIFT});
        Key(field_, VK_INSERT);
    }
    EXPECT_EQ(Text(field_), "abc") << "a paste is not filtered";
    EXPECT_TRUE(Codes().empty());
    SendMessageA(field_, EM_SETSEL, 0, 1);
    {
        Held shift({VK_SHIFT});
        Key(field_, VK_DELETE);
    }
    EXPECT_EQ(fktest::ClipboardText(), "ab");
    EXPECT_EQ(Text(field_), "bc");
    // Right-justified: Insert only drops the selection.
    Make(NUM_RIGHTJUST);
    Type(field_, "56");
    SendMessageA(field_, EM_SETSEL, 0, 2);
    {
        Held ctrl({VK_CONTROL});
        Key(field_, VK_INSERT);
    }
    EXPECT_EQ(fktest::ClipboardText(), "ab");
    EXPECT_EQ(Sel(field_), std::make_pair(0, 0));
}

struct Typing {
    DWORD style;
    WPARAM asked;
    LRESULT answer;
};

TEST_F(NumericField, TypeAnswersPutTextFirst) {
    const Typing cases[] = {
        {NUM_CHAR | NUM_INTEGER, 0, 4}, {NUM_INTEGER, 0, 1}, {NUM_LONG, 0, 2}, {0, 0, 2},
        {NUM_LONG, 4, 4},              {NUM_LONG, 1, 1},    {0, 9, 2},
    };
    for (const Typing& c : cases) {
        Make(c.style);
        LONG size = 0;
        EXPECT_EQ(SendMessageA(field_, GXM_GETTYPE, c.asked, reinterpret_cast<LPARAM>(&size)), c.answer)
            << c.style << " / " << c.asked;
        if (c.answer == 4) EXPECT_EQ(size, 80);
    }
    // Set and get put the integer first.
    Make(NUM_CHAR | NUM_INTEGER, "@LIMIT(6)");
    LONG size = 0;
    SendMessageA(field_, GXM_GETTYPE, 0, reinterpret_cast<LPARAM>(&size));
    EXPECT_EQ(size, 6);
    const int32_t seven = 7;
    SendMessageA(field_, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(&seven));
    EXPECT_EQ(Text(field_), "7");
    EXPECT_EQ(Integer(0), 7);
}

TEST_F(NumericField, SpinWrapsAndRunsTheFocusSteps) {
    const int32_t top = INT_MAX;
    SendMessageA(field_, GXM_SETVALUE, 1, reinterpret_cast<LPARAM>(&top));
    SendMessageA(field_, WM_VSCROLL, SB_LINEUP, 0);
    EXPECT_EQ(Text(field_), "-2147483648");
    EXPECT_EQ(Codes(), (std::vector<WORD>{EN_CHANGE, EN_SETFOCUS}));
    SendMessageA(field_, WM_VSCROLL, SB_LINEDOWN, 0);
    EXPECT_EQ(Text(field_), "2147483647");
    parent_.clear();
    SendMessageA(field_, WM_VSCROLL, SB_ENDSCROLL, 0);
    EXPECT_EQ(Text(field_), "2147483647");
    EXPECT_EQ(Codes(), (std::vector<WORD>{EN_CHANGE, EN_SETFOCUS})) << "every scroll code notifies";
    SetMethod("@BLNK@LIMIT(1)");
    SendMessageA(field_, GXM_SETVALUE, 4, reinterpret_cast<LPARAM>("1"));
    SendMessageA(field_, WM_VSCROLL, SB_LINEDOWN, 0);
    EXPECT_EQ(Text(field_), "0") << "spinning ignores @BLNK";
    SendMessageA(field_, WM_VSCROLL, SB_LINEDOWN, 0);
    EXPECT_EQ(Text(field_), "-1") << "and the limit";
}

struct Validating {
    DWORD style;
    WPARAM type;
    const char* text;
    LRESULT answer;
};

TEST_F(NumericField, ValidationByStyleOrType) {
    fktest::MessageBoxWatcher boxes;
    const Validating cases[] = {
        {0, 0, "50", 0},  // no type: nothing is checked
        {NUM_INTEGER, 0, "50", -1}, {NUM_LONG, 0, "5", 0}, {0, 1, "50", -1}, {0, 2, "7x", 0},
    };
    for (const Validating& c : cases) {
        Make(c.style, "@RNG(1,9)");
        SendMessageA(field_, GXM_SETVALUE, 4, reinterpret_cast<LPARAM>(c.text));
        EXPECT_EQ(SendMessageA(field_, GXM_VALIDATE, c.type, 0), c.answer) << c.style << " / " << c.type;
    }
    EXPECT_EQ(boxes.boxes().size(), 2u);
}

TEST_F(NumericField, FocusAndSelectionMessages) {
    Type(field_, "123");
    SendMessageA(field_, EM_SETSEL, 1, static_cast<LPARAM>(-1));
    EXPECT_EQ(Sel(field_), std::make_pair(1, 3));
    parent_.clear();
    Leave();
    EXPECT_EQ(Codes(), std::vector<WORD>{EN_KILLFOCUS});
    EXPECT_EQ(Sel(field_), std::make_pair(0, 0)) << "leaving drops the selection";
    SendMessageA(field_, WM_LBUTTONDBLCLK, 0, MAKELPARAM(5, 5));
    EXPECT_EQ(Sel(field_), std::make_pair(0, 3));
    EXPECT_EQ(SendMessageA(field_, WM_GETDLGCODE, 0, 0), 0x8089);
}

// A click takes the focus and a drag selects, counted from the right edge
// in a right-justified field; keys wait while the button is held.
TEST_F(NumericField, MouseSelectsInBothAlignments) {
    for (DWORD style : {0ul, static_cast<unsigned long>(NUM_RIGHTJUST)}) {
        Make(style);
        Type(field_, "12345");
        Leave();
        HDC dc = GetDC(field_);
        SIZE one{}, four{}, all{};
        GetTextExtentPoint32A(dc, "12345", 1, &one);
        GetTextExtentPoint32A(dc, "12345", 4, &four);
        GetTextExtentPoint32A(dc, "12345", 5, &all);
        ReleaseDC(field_, dc);
        RECT r;
        GetClientRect(field_, &r);
        const int shift = style ? r.right - all.cx - 2 : 0;
        SendMessageA(field_, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(shift + one.cx, 5));
        EXPECT_EQ(GetFocus(), field_);
        SendMessageA(field_, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(shift + four.cx, 5));
        Type(field_, "9");
        EXPECT_EQ(Text(field_), "12345") << "typing waits for the button";
        SendMessageA(field_, WM_LBUTTONUP, 0, MAKELPARAM(shift + four.cx, 5));
        EXPECT_EQ(GetCapture(), nullptr);
        EXPECT_EQ(Sel(field_), std::make_pair(1, 4)) << "style " << style;
        Type(field_, "9");
        EXPECT_EQ(Text(field_), "195") << "style " << style;
    }
}

TEST_F(NumericField, HostileInputIsCut) {
    const std::string longText(1000, '7');
    SendMessageA(field_, GXM_SETVALUE, 4, reinterpret_cast<LPARAM>(longText.c_str()));
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
