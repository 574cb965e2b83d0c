// gxString32 as a dialog drives it: what the parent receives for typing, keys, paste and validation.
#include <algorithm>

#include "tests/support/msgbox_watch.h"
#include "tests/win/fields/number_test.h"

namespace {

using namespace numtest;

class StringField : public NumberField {
protected:
    StringField() : NumberField("gxString32") {}
    void Press(int modifier, UINT vk) {
        Held held({modifier});
        Key(field_, vk);
    }
    std::string Get(UINT msg, WPARAM wp = 0) {  // a text the field copies out
        char buffer[300] = "";
        SendMessageA(field_, msg, wp, reinterpret_cast<LPARAM>(buffer));
        return buffer;
    }
};

// Like an edit control: colours asked for first, then EN_CHANGE with the id; focus changes are notified.
TEST_F(StringField, TypingAndFocusNotifyTheParentLikeAnEditControl) {
    Type(field_, "1-2-3");
    EXPECT_EQ(Text(field_), "1-2-3");
    EXPECT_EQ(Codes(), std::vector<WORD>(5, EN_CHANGE));
    for (const auto& m : parent_.Of(WM_COMMAND)) EXPECT_EQ(LOWORD(m.wp), 42);
    EXPECT_EQ(SendMessageA(field_, EM_GETMODIFY, 0, 0), 1);
    const auto& all = parent_.messages();
    auto first = [&](UINT msg) { return std::find_if(all.begin(), all.end(), [=](auto& m) { return m.msg == msg; }); };
    EXPECT_LT(first(WM_CTLCOLOREDIT), first(WM_COMMAND));
    parent_.clear();
    Leave();
    SetFocus(field_);
    EXPECT_EQ(Codes(), (std::vector<WORD>{EN_KILLFOCUS, EN_SETFOCUS}));
}

TEST_F(StringField, TypedCharactersAreFilteredOrRefused) {
    const struct { const char* method; DWORD style; const char* typed; const char* result; } cases[] = {
        {"@INCLUDE(xyz)", 0, "axbyczd", "xyz"}, {"@EXCLUDE(xyz)", 0, "axbyczd", "abcd"}, {"@NUM", 0, "a1b2 3", "123"},
        {"", STR_NUMERIC, "a1b2", "12"}, {"", STR_ALPHA, "a1 b2", "a b"}, {"@UP", 0, "abC", "ABC"},
        {"", STR_ALPHANUM, "a1 -b2.", "a1 b2"}, {"@LIMIT(3)", 0, "abcdef", "abc"}, {"", STR_UPPER, "ab", "AB"},
        {"", STR_LOWER, "AbC", "abc"}, {"", STR_FIRSTCHARUPPER, "abc", "Abc"},
        {"@MASK(###-##)", 0, "1a2b345678", "12345"}, {"@MASK(@@?)", 0, "a1b2", "ab2"}};
    for (const auto& c : cases) {
        Make(c.style, c.method);
        Type(field_, c.typed);
        EXPECT_EQ(Text(field_), c.result) << c.method << " / style " << c.style << " / typed " << c.typed;
    }
    Make(0, "@NUM");  // a refused key changes nothing and tells the parent nothing; @NUM stays on once set
    SetMethod("@LIMIT(4)@EXCLUDE(5)");
    EXPECT_TRUE(GetWindowLongA(field_, GWL_STYLE) & STR_NUMERIC);
    Type(field_, "1234");
    SendMessageA(field_, EM_SETSEL, 1, 1);
    parent_.clear();
    Type(field_, "9x5");
    EXPECT_EQ(Text(field_), "1234");
    EXPECT_EQ(Sel(field_), std::make_pair(1, 1));
    EXPECT_TRUE(Codes().empty());
    SendMessageA(field_, EM_SETSEL, 1, 3);
    Type(field_, "9");
    EXPECT_EQ(Text(field_), "194") << "a selection is replaced whatever the limit";
}

TEST_F(StringField, KeysEditAroundTheCaretAndUseTheClipboard) {
    Type(field_, "abcd");
    for (UINT vk : {VK_LEFT, VK_BACK, VK_HOME, VK_DELETE, VK_END}) Key(field_, vk);
    Type(field_, "x");
    EXPECT_EQ(Text(field_), "bdx");
    {
        Held shift({VK_SHIFT});
        Key(field_, VK_LEFT);
        Key(field_, VK_LEFT);
    }
    EXPECT_EQ(Sel(field_), std::make_pair(1, 3));
    Key(field_, VK_BACK);
    EXPECT_EQ(Text(field_), "b");
    EXPECT_EQ(Codes(), (std::vector<WORD>(8, EN_CHANGE)));
    // Copying takes the character after the selection along: keep it. Paste replaces the whole text quietly.
    Key(field_, VK_BACK);
    Type(field_, "abcd");
    SendMessageA(field_, EM_SETSEL, 1, 3);
    Press(VK_CONTROL, 'C');
    EXPECT_EQ(fktest::ClipboardText(), "bcd");
    SendMessageA(field_, EM_SETSEL, 2, 4);
    Press(VK_CONTROL, 'X');
    EXPECT_EQ(fktest::ClipboardText(), "cd");
    EXPECT_EQ(Text(field_), "ab");
    twClipboardCopyText(field_, "pasted text", 100);
    parent_.clear();
    Press(VK_CONTROL, 'V');
    EXPECT_EQ(Text(field_), "pasted text");
    EXPECT_EQ(Sel(field_), std::make_pair(0, 11));
    EXPECT_TRUE(Codes().empty()) << "paste sends no EN_CHANGE";
    SetMethod("@LIMIT(4)");
    Press(VK_CONTROL, 'V');
    EXPECT_EQ(Text(field_), "past");
}

// Values go in and out without change notices, at most limit + 1 bytes; the limit is the size of the text type.
TEST_F(StringField, ValuesLimitsAndSettingMessages) {
    SendMessageA(field_, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>("hello"));
    EXPECT_EQ(Text(field_), "hello");
    EXPECT_TRUE(Codes().empty());
    EXPECT_EQ(Get(GXM_GETVALUE), "hello");
    LONG size = 0;
    EXPECT_EQ(SendMessageA(field_, GXM_GETTYPE, GXT_TEXT, reinterpret_cast<LPARAM>(&size)), GXT_TEXT);
    EXPECT_EQ(size, 80);
    SendMessageA(field_, GXM_SETLIMIT, 1, 3);
    EXPECT_EQ(SendMessageA(field_, GXM_GETLIMIT, 0, 0), 3);
    EXPECT_EQ(SendMessageA(field_, GXM_GETTYPE, 0, reinterpret_cast<LPARAM>(&size)), GXT_TEXT);
    EXPECT_EQ(size, 3);
    char out[100];
    std::memset(out, '#', sizeof out);
    SendMessageA(field_, GXM_GETVALUE, 0, reinterpret_cast<LPARAM>(out));
    EXPECT_STREQ(out, "hel");
    EXPECT_EQ(out[4], '#');
    SendMessageA(field_, GXM_SETLIMIT, 0, 99);
    EXPECT_EQ(SendMessageA(field_, GXM_GETLIMIT, 0, 0), 0);
    // The setting messages edit the method string, which is read again at each keystroke.
    SetWindowTextA(field_, "");
    SetMethod("@NUM@INCLUDE(abc)@LIMIT(5)");
    EXPECT_EQ(Get(GXM_INCLUDE), "abc");
    SendMessageA(field_, GXM_INCLUDE, 1, reinterpret_cast<LPARAM>(""));
    EXPECT_EQ(Get(GXM_GETMETHOD, 256), "@NUM@LIMIT(5)");
    SendMessageA(field_, GXM_EXCLUDE, 1, reinterpret_cast<LPARAM>("9"));
    EXPECT_EQ(SendMessageA(field_, GXM_AUTOTAB, 0, 0), 0);
    SendMessageA(field_, GXM_AUTOTAB, 1, 1);
    EXPECT_EQ(SendMessageA(field_, GXM_AUTOTAB, 0, 0), 1);
    EXPECT_EQ(Get(GXM_GETMETHOD, 256), "@NUM@LIMIT(5)@EXCLUDE(9)@AUTOTAB");
    SendMessageA(field_, GXM_AUTOTAB, 1, 0);
    EXPECT_EQ(Get(GXM_GETMETHOD, 256), "@NUM@LIMIT(5)@EXCLUDE(9)");
    Type(field_, "19");
    EXPECT_EQ(Text(field_), "1");
    SendMessageA(field_, GXM_MASK, 1, reinterpret_cast<LPARAM>("##/##"));
    EXPECT_EQ(Get(GXM_MASK), "##/##");
    SendMessageA(field_, GXM_MASK, 1, 0);
    EXPECT_EQ(Get(GXM_MASK), "");
    SendMessageA(field_, GXM_SETDROPTARGET, 1, 0);
    EXPECT_EQ(GetPropA(field_, "@WANTDROP"), reinterpret_cast<HANDLE>(5));
    SendMessageA(field_, GXM_SETDROPTARGET, 0, 0);
    EXPECT_EQ(GetPropA(field_, "@WANTDROP"), nullptr);
}

// Validation answers 0 or -1 and shows the message; auto-tab moves on from a full mask only when the value passes.
TEST_F(StringField, ValidationAndAutoTab) {
    {
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
    parent_.reply = [](UINT msg, WPARAM, LPARAM) -> std::optional<LRESULT> {  // no message box to move the focus
        return msg == GXN_ERROR ? std::optional<LRESULT>(GXR_HANDLED) : std::nullopt;
    };
    Make(0, "@MASK(###-##)@AUTOTAB");
    Type(field_, "1234");
    EXPECT_EQ(GetFocus(), field_);
    Type(field_, "5");
    EXPECT_EQ(GetFocus(), other_);
    SetFocus(field_);
    Key(field_, VK_TAB);
    EXPECT_EQ(GetFocus(), other_);
    Make(0, "@LIMIT(2)@AUTOTAB@RNG(10,20)");
    Type(field_, "05");
    EXPECT_EQ(GetFocus(), field_);
    EXPECT_EQ(parent_.Of(GXN_ERROR).size(), 1u);
}

TEST_F(StringField, HostileInputIsCutNotOverrun) {
    SendMessageA(field_, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(std::string(1000, 'q').c_str()));
    EXPECT_EQ(Text(field_).size(), 159u);
    SetMethod(("@LIMIT(2)" + std::string(5000, 'm') + "@MASK(" + std::string(3000, '#') + ")").c_str());
    SendMessageA(field_, GXM_MASK, 1, reinterpret_cast<LPARAM>(std::string(4000, '*').c_str()));
    SendMessageA(field_, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(""));
    Type(field_, "abc");
    Key(field_, VK_END);
    Key(field_, VK_BACK);
    UpdateWindow(field_);
}

}  // namespace
