// gxString32 driven the way a dialog drives it: what the parent receives
// for typing, keys, paste and validation, and what the field holds after.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "include/fldkit.h"
#include "tests/support/msgbox_watch.h"
#include "tests/support/recorder.h"
#include "tests/support/window.h"

namespace {

std::string Text(HWND h) {
    char buffer[400] = "";
    GetWindowTextA(h, buffer, sizeof buffer);
    return buffer;
}

void Type(HWND h, const char* keys) {
    for (const char* k = keys; *k; ++k) SendMessageA(h, WM_CHAR, static_cast<unsigned char>(*k), 1);
}

void Key(HWND h, UINT vk) { SendMessageA(h, WM_KEYDOWN, vk, 1); }

// Holds modifier keys down in this thread's keyboard state.
class Modifiers {
public:
    explicit Modifiers(std::initializer_list<int> keys) {
        GetKeyboardState(saved_);
        BYTE state[256];
        std::memcpy(state, saved_, sizeof state);
        for (int k : keys) state[k] = 0x80;
        SetKeyboardState(state);
    }
    ~Modifiers() { SetKeyboardState(saved_); }

private:
    BYTE saved_[256];
};

std::pair<int, int> Sel(HWND h) {
    DWORD start = 0, end = 0;
    SendMessageA(h, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    return {static_cast<int>(start), static_cast<int>(end)};
}

class StringField : public ::testing::Test {
protected:
    void SetUp() override { Make(0); }
    void Make(DWORD style, const char* method = nullptr) {
        if (field_) DestroyWindow(field_);
        field_ = CreateWindowExA(0, "gxString32", "", WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, 10, 10, 240, 24,
                                 parent_, reinterpret_cast<HMENU>(42), GetModuleHandleA(nullptr), nullptr);
        ASSERT_NE(field_, nullptr);
        if (method) SetMethod(method);
        SetFocus(field_);
        parent_.clear();
    }
    void TearDown() override {
        if (field_) DestroyWindow(field_);
    }
    void SetMethod(const char* method) {
        SendMessageA(field_, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(method));
    }
    std::vector<WORD> Codes() const { return parent_.CommandCodes(); }

    fktest::RecordingParent parent_;
    HWND field_ = nullptr;
};

TEST_F(StringField, TypingNotifiesTheParentLikeAnEditControl) {
    Type(field_, "1-2-3");
    EXPECT_EQ(Text(field_), "1-2-3");
    EXPECT_EQ(Codes(), std::vector<WORD>(5, EN_CHANGE));
    for (const auto& m : parent_.Of(WM_COMMAND)) {
        EXPECT_EQ(LOWORD(m.wp), 42);
        EXPECT_EQ(reinterpret_cast<HWND>(m.lp), field_);
    }
    EXPECT_EQ(SendMessageA(field_, EM_GETMODIFY, 0, 0), 1);
    // Colours are asked for before the change is announced.
    const auto& all = parent_.messages();
    auto colour = std::find_if(all.begin(), all.end(), [](auto& m) { return m.msg == WM_CTLCOLOREDIT; });
    auto change = std::find_if(all.begin(), all.end(), [](auto& m) { return m.msg == WM_COMMAND; });
    EXPECT_LT(colour - all.begin(), change - all.begin());
}

TEST_F(StringField, FocusChangesAreNotified) {
    HWND other = CreateWindowExA(0, "edit", "", WS_CHILD | WS_VISIBLE, 10, 50, 80, 20, parent_, nullptr,
                                 GetModuleHandleA(nullptr), nullptr);
    SetFocus(other);
    SetFocus(field_);
    std::vector<WORD> ours;
    for (const auto& m : parent_.Of(WM_COMMAND))
        if (reinterpret_cast<HWND>(m.lp) == field_) ours.push_back(HIWORD(m.wp));
    EXPECT_EQ(ours, (std::vector<WORD>{EN_KILLFOCUS, EN_SETFOCUS}));
    DestroyWindow(other);
}

struct Filtering {
    const char* method;
    DWORD style;
    const char* typed;
    const char* result;
};

TEST_F(StringField, TypedCharactersAreFilteredByMethodAndStyle) {
    const Filtering cases[] = {
        {"@INCLUDE(xyz)", 0, "axbyczd", "xyz"},
        {"@EXCLUDE(xyz)", 0, "axbyczd", "abcd"},
        {"@NUM", 0, "a1b2 3", "123"},
        {"", STR_NUMERIC, "a1b2", "12"},
        {"", STR_ALPHA, "a1 b2", "a b"},
        {"", STR_ALPHANUM, "a1 -b2.", "a1 b2"},
        {"@LIMIT(3)", 0, "abcdef", "abc"},
        {"@UP", 0, "abC", "ABC"},
        {"", STR_UPPER, "ab", "AB"},
        {"", STR_LOWER, "AbC", "abc"},
        {"", STR_FIRSTCHARUPPER, "abc", "Abc"},
        {"@MASK(###-##)", 0, "1a2b345678", "12345"},
        {"@MASK(@@?)", 0, "a1b2", "ab2"},
    };
    for (const Filtering& c : cases) {
        Make(c.style, c.method);
        Type(field_, c.typed);
        EXPECT_EQ(Text(field_), c.result) << c.method << " / style " << c.style << " / typed " << c.typed;
    }
}

// A refused key leaves text, caret and selection as they were and tells
// the parent nothing.
TEST_F(StringField, RefusalsChangeNothing) {
    Make(STR_NUMERIC, "@LIMIT(4)@EXCLUDE(5)");
    Type(field_, "1234");
    SendMessageA(field_, EM_SETSEL, 1, 2);
    parent_.clear();
    const auto before = Sel(field_);
    SendMessageA(field_, EM_SETSEL, 1, 1);  // no selection: the limit holds
    for (char c : std::string("9x5")) {
        SendMessageA(field_, WM_CHAR, c, 1);
        EXPECT_EQ(Text(field_), "1234") << c;
    }
    EXPECT_TRUE(Codes().empty());
    (void)before;
    // With a selection the limit does not hold: the selection is replaced.
    SendMessageA(field_, EM_SETSEL, 1, 3);
    Type(field_, "9");
    EXPECT_EQ(Text(field_), "194");
}

TEST_F(StringField, NumStaysOnOnceSet) {
    SetMethod("@NUM");
    SetMethod("@LIMIT(5)");
    EXPECT_TRUE(GetWindowLongA(field_, GWL_STYLE) & STR_NUMERIC);
    Type(field_, "a7");
    EXPECT_EQ(Text(field_), "7");
}

TEST_F(StringField, KeysEditAroundTheCaret) {
    Type(field_, "abcd");
    Key(field_, VK_LEFT);
    Key(field_, VK_BACK);
    EXPECT_EQ(Text(field_), "abd");
    Key(field_, VK_HOME);
    Key(field_, VK_DELETE);
    EXPECT_EQ(Text(field_), "bd");
    Key(field_, VK_END);
    Type(field_, "x");
    EXPECT_EQ(Text(field_), "bdx");
    {
        Modifiers shift({VK_SHIFT});
        Key(field_, VK_LEFT);
        Key(field_, VK_LEFT);
    }
    EXPECT_EQ(Sel(field_), std::make_pair(1, 3));
    Key(field_, VK_BACK);
    EXPECT_EQ(Text(field_), "b");
    EXPECT_EQ(Codes(), (std::vector<WORD>(8, EN_CHANGE)));
}

// The copy takes the character after the selection along; keep it.
TEST_F(StringField, CopyTakesOneCharacterPastTheSelection) {
    Type(field_, "abcd");
    SendMessageA(field_, EM_SETSEL, 1, 3);
    {
        Modifiers ctrl({VK_CONTROL});
        Key(field_, 'C');
    }
    EXPECT_EQ(fktest::ClipboardText(), "bcd");
    SendMessageA(field_, EM_SETSEL, 2, 4);
    {
        Modifiers ctrl({VK_CONTROL});
        Key(field_, 'X');
    }
    EXPECT_EQ(fktest::ClipboardText(), "cd");
    EXPECT_EQ(Text(field_), "ab");
}

TEST_F(StringField, PasteReplacesTheWholeTextQuietly) {
    Type(field_, "old");
    twClipboardCopyText(field_, "pasted text", 100);
    parent_.clear();
    {
        Modifiers ctrl({VK_CONTROL});
        Key(field_, 'V');
    }
    EXPECT_EQ(Text(field_), "pasted text");
    EXPECT_EQ(Sel(field_), std::make_pair(0, 11));
    EXPECT_TRUE(Codes().empty()) << "paste sends no EN_CHANGE";
    SetMethod("@LIMIT(4)");
    {
        Modifiers ctrl({VK_CONTROL});
        Key(field_, 'V');
    }
    EXPECT_EQ(Text(field_), "past");
}

TEST_F(StringField, MouseSelectsBetweenCharacterBoundaries) {
    Type(field_, "abcdef");
    HDC dc = GetDC(field_);
    SIZE two{}, five{};
    GetTextExtentPoint32A(dc, "abcdef", 2, &two);
    GetTextExtentPoint32A(dc, "abcdef", 5, &five);
    ReleaseDC(field_, dc);
    SendMessageA(field_, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(two.cx, 5));
    SendMessageA(field_, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(five.cx, 5));
    SendMessageA(field_, WM_LBUTTONUP, 0, MAKELPARAM(five.cx, 5));
    EXPECT_EQ(Sel(field_), std::make_pair(2, 5));
    EXPECT_NE(GetCapture(), field_);
    Type(field_, "Z");
    EXPECT_EQ(Text(field_), "abZf");
}

TEST_F(StringField, ValuesGoInAndOutWithoutChangeNotices) {
    SendMessageA(field_, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>("hello"));
    EXPECT_EQ(Text(field_), "hello");
    EXPECT_TRUE(Codes().empty());
    char out[100];
    SendMessageA(field_, GXM_GETVALUE, 0, reinterpret_cast<LPARAM>(out));
    EXPECT_STREQ(out, "hello");
    SetMethod("@LIMIT(3)");
    std::memset(out, '#', sizeof out);
    SendMessageA(field_, GXM_GETVALUE, 0, reinterpret_cast<LPARAM>(out));
    EXPECT_STREQ(out, "hel") << "at most limit + 1 bytes";
    EXPECT_EQ(out[4], '#');
}

TEST_F(StringField, TypeAndLimitAnswers) {
    LONG size = 0;
    EXPECT_EQ(SendMessageA(field_, GXM_GETTYPE, GXT_TEXT, reinterpret_cast<LPARAM>(&size)), GXT_TEXT);
    EXPECT_EQ(size, 80);
    SendMessageA(field_, GXM_SETLIMIT, 1, 12);
    EXPECT_EQ(SendMessageA(field_, GXM_GETLIMIT, 0, 0), 12);
    EXPECT_EQ(SendMessageA(field_, GXM_GETTYPE, 0, reinterpret_cast<LPARAM>(&size)), GXT_TEXT);
    EXPECT_EQ(size, 12);
    SendMessageA(field_, GXM_SETLIMIT, 0, 99);
    EXPECT_EQ(SendMessageA(field_, GXM_GETLIMIT, 0, 0), 0);
    EXPECT_EQ(SendMessageA(field_, GXM_GETTYPE, 0, 0), GXT_TEXT);
}

TEST_F(StringField, MethodEditingMessages) {
    SetMethod("@NUM@INCLUDE(abc)@LIMIT(5)");
    char buffer[300];
    SendMessageA(field_, GXM_INCLUDE, 0, reinterpret_cast<LPARAM>(buffer));
    EXPECT_STREQ(buffer, "abc");
    SendMessageA(field_, GXM_INCLUDE, 1, reinterpret_cast<LPARAM>(""));
    SendMessageA(field_, GXM_GETMETHOD, 256, reinterpret_cast<LPARAM>(buffer));
    EXPECT_STREQ(buffer, "@NUM@LIMIT(5)");
    SendMessageA(field_, GXM_EXCLUDE, 1, reinterpret_cast<LPARAM>("9"));
    EXPECT_EQ(SendMessageA(field_, GXM_AUTOTAB, 0, 0), 0);
    SendMessageA(field_, GXM_AUTOTAB, 1, 1);
    EXPECT_EQ(SendMessageA(field_, GXM_AUTOTAB, 0, 0), 1);
    SendMessageA(field_, GXM_GETMETHOD, 256, reinterpret_cast<LPARAM>(buffer));
    EXPECT_STREQ(buffer, "@NUM@LIMIT(5)@EXCLUDE(9)@AUTOTAB");
    SendMessageA(field_, GXM_AUTOTAB, 1, 0);
    SendMessageA(field_, GXM_GETMETHOD, 256, reinterpret_cast<LPARAM>(buffer));
    EXPECT_STREQ(buffer, "@NUM@LIMIT(5)@EXCLUDE(9)");
    Type(field_, "19");
    EXPECT_EQ(Text(field_), "1") << "the edited method string is read at each keystroke";

    SendMessageA(field_, GXM_MASK, 1, reinterpret_cast<LPARAM>("##/##"));
    SendMessageA(field_, GXM_MASK, 0, reinterpret_cast<LPARAM>(buffer));
    EXPECT_STREQ(buffer, "##/##");
    SendMessageA(field_, GXM_MASK, 1, 0);
    SendMessageA(field_, GXM_MASK, 0, reinterpret_cast<LPARAM>(buffer));
    EXPECT_STREQ(buffer, "");

    SendMessageA(field_, GXM_SETDROPTARGET, 1, 0);
    EXPECT_EQ(GetPropA(field_, "@WANTDROP"), reinterpret_cast<HANDLE>(5));
    SendMessageA(field_, GXM_SETDROPTARGET, 0, 0);
    EXPECT_EQ(GetPropA(field_, "@WANTDROP"), nullptr);
}

TEST_F(StringField, ValidationAnswersZeroOrMinusOne) {
    fktest::MessageBoxWatcher boxes;
    EXPECT_EQ(SendMessageA(field_, GXM_VALIDATE, 0, 0), 0) << "no method string: never checked";
    SetMethod("@MND@MSG(Name please)");
    EXPECT_EQ(SendMessageA(field_, GXM_VALIDATE, 0, 0), -1);
    ASSERT_EQ(boxes.boxes().size(), 1u);
    EXPECT_EQ(boxes.boxes()[0].text, "Name please");
    EXPECT_EQ(parent_.Of(GXN_ERROR).size(), 1u);
    Type(field_, "Al");
    EXPECT_EQ(SendMessageA(field_, GXM_VALIDATE, 0, 0), 0);
}

TEST_F(StringField, HostileInputIsCutNotOverrun) {
    std::string longText(1000, 'q');
    SendMessageA(field_, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(longText.c_str()));
    EXPECT_EQ(Text(field_).size(), 159u);
    std::string longMethod = "@LIMIT(2)" + std::string(5000, 'm') + "@MASK(" + std::string(3000, '#') + ")";
    SetMethod(longMethod.c_str());
    SendMessageA(field_, GXM_MASK, 1, reinterpret_cast<LPARAM>(std::string(4000, '*').c_str()));
    SendMessageA(field_, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(""));
    Type(field_, "abc");
    Key(field_, VK_END);
    Key(field_, VK_BACK);
    for (UINT msg : {GXM_SETVALUE, GXM_GETVALUE, GXM_GETMETHOD, GXM_VALIDATE, GXM_GETTYPE, GXM_MASK, GXM_EXCLUDE,
                     GXM_INCLUDE, GXM_AUTOTAB, GXM_AUTOFILL, GXM_SETLIMIT, GXM_SETMETHOD})
        SendMessageA(field_, msg, 0, 0);
    UpdateWindow(field_);
}

// Fields in a real dialog: the focus really moves on auto-tab and Tab.
struct DialogTemplate {
    std::vector<WORD> words;
    void Align() {
        if (words.size() % 2) words.push_back(0);
    }
    void Text(const char* s) {
        for (; *s; ++s) words.push_back(static_cast<WORD>(*s));
        words.push_back(0);
    }
    void Item(DWORD style, short x, short y, short cx, short cy, WORD id, const char* cls) {
        Align();
        DLGITEMTEMPLATE item{style, 0, x, y, cx, cy, id};
        const WORD* p = reinterpret_cast<const WORD*>(&item);
        words.insert(words.end(), p, p + sizeof item / 2);
        Text(cls);
        words.push_back(0);  // no text
        words.push_back(0);  // no creation data
    }
};

INT_PTR CALLBACK PlainDialogProc(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

HWND MakeDialog() {
    DialogTemplate t;
    DLGTEMPLATE head{WS_POPUP | WS_VISIBLE | WS_CAPTION | DS_SETFONT, 0, 3, 10, 10, 200, 80};
    const WORD* p = reinterpret_cast<const WORD*>(&head);
    t.words.assign(p, p + sizeof head / 2);
    t.words.push_back(0);  // menu
    t.words.push_back(0);  // class
    t.Text("Form");
    t.words.push_back(8);
    t.Text("MS Shell Dlg");
    const DWORD child = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
    t.Item(child, 5, 5, 80, 12, 101, "gxString32");
    t.Item(child, 5, 25, 80, 12, 102, "gxString32");
    t.Item(child | WS_BORDER, 5, 45, 80, 12, 103, "edit");
    return CreateDialogIndirectParamA(GetModuleHandleA(nullptr), reinterpret_cast<DLGTEMPLATE*>(t.words.data()),
                                      nullptr, PlainDialogProc, 0);
}

TEST(StringFieldInDialog, AutoTabAndTabMoveTheFocus) {
    HWND dialog = MakeDialog();
    ASSERT_NE(dialog, nullptr);
    HWND first = GetDlgItem(dialog, 101);
    HWND second = GetDlgItem(dialog, 102);
    SendMessageA(first, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@MASK(###-##)@AUTOTAB"));
    SetFocus(first);
    Type(first, "1234");
    EXPECT_EQ(GetFocus(), first);
    Type(first, "5");
    EXPECT_EQ(GetFocus(), second) << "the fifth digit fills the mask";
    Key(second, VK_TAB);
    EXPECT_EQ(GetFocus(), GetDlgItem(dialog, 103));
    DestroyWindow(dialog);
}

TEST(StringFieldInDialog, AutoTabKeepsTheFocusWhenValidationFails) {
    fktest::MessageBoxWatcher boxes;
    HWND dialog = MakeDialog();
    HWND first = GetDlgItem(dialog, 101);
    SendMessageA(first, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@LIMIT(2)@AUTOTAB@RNG(10,20)"));
    SetFocus(first);
    Type(first, "05");
    EXPECT_EQ(GetFocus(), first);
    EXPECT_EQ(boxes.boxes().size(), 1u);
    DestroyWindow(dialog);
}

}  // namespace
