// The five entry fields typed into as a dialog does: what each class takes, what the parent hears, the editing and
// clipboard keys, the limit and auto-tab; where a click puts the caret and how a drag selects.
#include "tests/support/drag.h"
#include "tests/win/fields/field_test.h"

namespace {

using namespace fieldtest;

// Beeps: the library's import of MessageBeep is pointed at a counter.
int g_beeps = 0;
BOOL WINAPI CountBeep(UINT) { return ++g_beeps, TRUE; }

class Typing : public Field {
protected:
    static void SetUpTestSuite() {
        auto* base = reinterpret_cast<BYTE*>(GetModuleHandleA(FK_DLL_NAME));
        const auto real = reinterpret_cast<DWORD_PTR>(GetProcAddress(GetModuleHandleA("user32.dll"), "MessageBeep"));
        auto* nt = reinterpret_cast<IMAGE_NT_HEADERS*>(base + reinterpret_cast<IMAGE_DOS_HEADER*>(base)->e_lfanew);
        const DWORD_PTR beep = reinterpret_cast<DWORD_PTR>(&CountBeep);  // written where the page does not allow it
        const IMAGE_DATA_DIRECTORY dir = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
        for (auto* imp = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + dir.VirtualAddress); imp->Name; ++imp)
            for (auto* t = reinterpret_cast<IMAGE_THUNK_DATA*>(base + imp->FirstThunk); t->u1.Function; ++t)
                if (t->u1.Function == real)
                    WriteProcessMemory(GetCurrentProcess(), &t->u1.Function, &beep, sizeof beep, nullptr);
    }
    int Extent(const char* text, int n) {
        HDC dc = GetDC(field_);
        SIZE s{};
        GetTextExtentPoint32A(dc, text, n, &s);
        ReleaseDC(field_, dc);
        return s.cx;
    }
    Span Words() const { return {LOWORD(GetWindowLongA(field_, 12)), HIWORD(GetWindowLongA(field_, 12))}; }
};
using Mouse = Typing;
constexpr int kWidth = 240;  // the fields' client width

// Every character taken is one EN_CHANGE with the field's id, after the colours were asked for; a refused one beeps.
// Over a selection the limit and the class's one-of checks are lifted; a refused key changes nothing. Auto-tab moves
// on ("\t" after the text) from a full field only when the value passes.
TEST_F(Typing, EachClassFiltersWhatIsTypedAndAutoTabs) {
    const struct {
        const char *cls, *method, *start; int from, to; const char *typed, *text; int beeps; DWORD style = 0;
    } cases[] = {
        {str, "@INCLUDE(xyz)", "", 0, 0, "axbyczd", "xyz", 4}, {str, "@NUM@UP", "", 0, 0, "a1b2 3", "123", 3},
        {str, "@ALPHA@UP", "", 0, 0, "a1 bC", "A BC", 1}, {str, "@MASK(###-##)", "", 0, 0, "1a2b345678", "12345", 5},
        {str, "@MASK(@@?)", "", 0, 0, "a1b2", "ab2", 1},
        {num, "", "", 0, 0, "1-2a-3. +", "1-2-3", 1}, {real, "", "", 0, 0, "-1.2.-3a", "-1.23", 3},
        {cur, "@CF_GERMANY", "", 0, 0, "-1.234,5", "-1.234,5", 0}, {cur, "@CF_UNITEDSTATES", "", 0, 0, "1a*2", "12", 1},
        {cur, "@CF_UNITEDSTATES", "", 0, 0, "12.345", "12.34", 1}, {date, "", "", 0, 0, "1a2/3", "123", 1},
        {str, "@NUM@LIMIT(4)@EXCLUDE(5)", "1234", 1, 1, "9x5", "1234", 3},
        {str, "@NUM@LIMIT(4)@EXCLUDE(5)", "1234", 1, 3, "9", "194", 0}, {num, "@LIMIT(3)", "123", 3, 3, "4", "123", 1},
        {num, "@LIMIT(3)", "123", 0, 1, "9", "923", 0}, {cur, "@CF_UNITEDSTATES", "1234", 2, 9, "5", "$15", 0},
        {num, "@LIMIT(3)@AUTOTAB", "", 0, 0, "123", "123\t", 0}, {num, "@LIMIT(3)@AUTOTAB", "", 0, 0, "1", "1", 0},
        {str, "@MASK(###-##)@AUTOTAB", "", 0, 0, "12345", "12345\t", 0},
        {str, "@LIMIT(2)@AUTOTAB@RNG(10,20)", "", 0, 0, "05", "05", 0},
        {date, "@AUTOTAB", "", 0, 0, "12311999", "12311999\t", 0}, {str, "@LIMIT(3)@AUTOTAB", "", 0, 0, "12", "12", 0},
        {str, "", "", 0, 0, "aBC", "Abc", 0, STR_FIRSTCHARUPPER | STR_LOWER},
        {str, "", "", 0, 0, "a1 -b2.", "a1 b2", 2, STR_ALPHANUM},
        {cur, "@CF_UNITEDSTATES", "", 0, 0, "12.345", "12.345", 0, CURR_RIGHTJUST}};
    for (const auto& c : cases) {
        Make(c.cls, c.cls == date ? DATE_MMDDYYYY : c.style, c.method);
        SetWindowTextA(field_, c.start);
        Send(EM_SETSEL, c.from, reinterpret_cast<void*>(c.to));
        g_beeps = 0;
        parent_.clear();
        Type(field_, c.typed);
        SCOPED_TRACE(std::string(c.cls) + " " + c.method + " " + c.start + " typed " + c.typed);
        const bool left = GetFocus() == other_;
        EXPECT_EQ(Text(field_) + (left ? "\t" : "") + " beeps " + std::to_string(g_beeps),
                  c.text + (" beeps " + std::to_string(c.beeps)));
        const size_t taken = *c.start ? (Text(field_) != c.start) : Text(field_).size();
        Notices codes(taken, EN_CHANGE);
        codes.resize(taken + left, EN_KILLFOCUS);  // auto-tab's leaving
        EXPECT_EQ(Codes(), codes);
        for (const auto& m : parent_.Of(WM_COMMAND)) EXPECT_EQ(LOWORD(m.wp), HWND(m.lp) == field_ ? 42 : 0);
        EXPECT_TRUE(taken ? parent_.messages().at(0).msg == WM_CTLCOLOREDIT : Sel(field_) == Span(c.from, c.to));
    }
}

// VK_SHIFT and VK_CONTROL hold down the keys after them; the clipboard holds the row's text first. What is seen:
// "text [selection] ^caret #changes =clipboard".
TEST_F(Typing, KeysEditAroundTheCaretAndUseTheClipboard) {
    const struct { const char *cls, *start; int from, to; Keys keys; const char *paste, *typed, *seen; DWORD how = 0; }
    cases[] = {
        {str, "abcd", 4, 4, {VK_LEFT, VK_BACK, VK_HOME, VK_DELETE, VK_END}, "", "x", "bdx [0,0] ^3 #3 ="},
        {str, "bdx", 3, 3, {VK_END, VK_SHIFT, VK_LEFT, VK_LEFT}, "", "", "bdx [1,3] ^1 #0 ="},
        {str, "abcd", 1, 3, {VK_CONTROL, 'C'}, "", "", "abcd [1,3] ^3 #0 =bcd"},  // one more along: keep it
        {str, "abcd", 2, 4, {VK_CONTROL, 'X'}, "", "", "ab [0,0] ^2 #1 =cd"},
        {str, "ab", 0, 0, {VK_CONTROL, 'V'}, "pasted text", "", "pasted text [0,11] ^11 #0 =pasted text"},
        {num, "12345", 3, 1, {VK_BACK}, "", "", "45 [0,0] ^0 #1 ="},  // Backspace takes one more
        {num, "1234", 1, 3, {VK_CONTROL, VK_INSERT}, "", "", "1234 [1,3] ^3 #0 =234"},
        {num, "abc", 0, 1, {VK_SHIFT, VK_DELETE}, "", "", "bc [0,0] ^0 #1 =ab"},
        {num, "12", 0, 0, {VK_SHIFT, VK_INSERT}, "abc", "", "abc [0,0] ^3 #0 =abc"},  // a paste is not filtered
        {date, "12311999", 0, 0, {VK_END, VK_BACK}, "", "", "12311990 [0,0] ^7 #1 ="},  // zeroed
        {date, "12311999", 0, 0, {VK_HOME, VK_DELETE, VK_DELETE}, "", "", "00311999 [0,0] ^2 #2 ="},
        {date, "12311999", 0, 0, {VK_HOME, VK_SHIFT, VK_RIGHT, VK_RIGHT, VK_RIGHT}, "", "5", "50011999 [0,0] ^1 #1 ="},
        {date, "12311999", 0, 0, {VK_END}, "", "5", "12311999 [0,0] ^8 #0 ="},  // full
        {num, "56", 0, 2, {VK_CONTROL, VK_INSERT}, "", "", "56 [0,0] ^2 #0 =", NUM_RIGHTJUST}};  // drops the selection
    for (const auto& c : cases) {
        Make(c.cls, c.cls == date ? DATE_MMDDYYYY : c.how);
        SetWindowTextA(field_, c.start);
        Send(EM_SETSEL, c.from, reinterpret_cast<void*>(c.to));
        twClipboardCopyText(field_, const_cast<char*>(c.paste), 100);
        parent_.clear();
        Press(field_, c.keys);
        Type(field_, c.typed);
        const Span sel = Sel(field_);
        EXPECT_EQ(Text(field_) + " [" + std::to_string(sel.first) + "," + std::to_string(sel.second) + "] ^" +
                      std::to_string(Caret()) + " #" + std::to_string(Codes().size()) + " =" + fktest::ClipboardText(),
                  c.seen)
            << c.cls << " " << c.start << " key " << c.keys.back();
    }
}

// The string field's setting messages edit its method string, which is read again at each keystroke; what is typed
// is pushed to the field's clients. What is seen: "method|auto-tab|mask|drop target".
TEST_F(Typing, SettingMessagesEditTheMethodAndTypedTextGoesToClients) {
    Make(str, 0, "@NUM@INCLUDE(abc)@LIMIT(5)");
    char text[300] = "", mask[300] = "";
    const std::string kept = "@NUM@LIMIT(5)@EXCLUDE(9)";  // the mask and the drop target are kept apart
    const struct { UINT msg; WPARAM wp; const char* lp; std::string seen; } cases[] = {
        {GXM_INCLUDE, 1, "", "@NUM@LIMIT(5)|0||0"}, {GXM_EXCLUDE, 1, "9", kept + "|0||0"},
        {GXM_AUTOTAB, 1, reinterpret_cast<const char*>(1), kept + "@AUTOTAB|1||0"},
        {GXM_AUTOTAB, 1, nullptr, kept + "|0||0"},
        {GXM_MASK, 1, "##/##", kept + "|0|##/##|0"}, {GXM_SETDROPTARGET, 1, nullptr, kept + "|0|##/##|5"},
        {GXM_MASK, 1, nullptr, kept + "|0||5"}, {GXM_SETDROPTARGET, 0, nullptr, kept + "|0||0"}};
    for (const auto& c : cases) {
        Send(c.msg, c.wp, c.lp);
        Send(GXM_GETMETHOD, 256, text);
        Send(GXM_MASK, 0, mask);
        const auto drop = reinterpret_cast<UINT_PTR>(GetPropA(field_, "@WANTDROP"));
        EXPECT_EQ(std::string(text) + "|" + std::to_string(Send(GXM_AUTOTAB)) + "|" + mask + "|" + std::to_string(drop),
                  c.seen);
    }
    SetPropA(field_, "SERVER", parent_.hwnd());  // linked: the parent is its first client
    SetPropA(field_, "SERVER1", parent_.hwnd());
    Type(field_, "19");
    fktest::PumpIdle();
    EXPECT_EQ(Text(field_) + " pushed " + std::to_string(parent_.Of(WM_DDE_DATA).size()), "1 pushed 1");
}

// A click lands on the nearer character boundary, the middle counting as the right; right-aligned clicks count from
// the right edge, anything left of the text is the start; a masked caret is stored as the count of "*" (only) before
// it. A drag extends from the anchor, counting from two pixels in when right-aligned.
TEST_F(Mouse, ClicksPickTheNearestCharacterBoundaryAndDragsSelect) {
    Make(str);
    char text[] = "WiMx.9", digits[] = "1231", stars[] = "**/**/****", hashes[] = "##/##/####";
    const int edge = kWidth - Extent(text, 6), middle = Extent(text, 2) + (Extent(text, 3) - Extent(text, 2) + 1) / 2;
    const struct { int x; char* mask; int right, caret; } rows[] = {
        {230, nullptr, 0, 6},   {kWidth - 1, nullptr, 1, 6}, {edge + Extent(text, 1), nullptr, 1, 1},
        {edge - 1, nullptr, 1, 0}, {230, stars, 0, 4},    {230, hashes, 0, 0}, {middle - 1, nullptr, 0, 2},
        {middle, nullptr, 0, 3}};
    for (const auto& r : rows) {
        SetWindowLongA(field_, 12, MAKELONG(3, 3));
        MouseButtonDown(field_, r.x, r.mask ? digits : text, r.mask, r.right, 0);
        const int end = r.mask ? 10 : r.caret;  // a masked field selects in its screen text
        EXPECT_EQ(std::vector<int>({Caret(), Words().first, Words().second, GetCapture() == field_}),
                  std::vector<int>({r.caret, end, end, 1}))
            << r.x << (r.right ? " right-aligned" : "");
        ReleaseCapture();
    }
    MouseButtonDown(field_, 0, text, nullptr, 0, 0);
    MouseMove(field_, Extent(text, 4), text, 0);
    EXPECT_EQ(std::vector<int>({Caret(), Words().first, Words().second}), std::vector<int>({4, 0, 4}));
    MouseMove(field_, 500, text, 0);
    EXPECT_EQ(Words(), Span(0, 6));
    MouseButtonDown(field_, kWidth - 1, text, nullptr, 1, 0);
    MouseMove(field_, kWidth - 2 - Extent(text, 6) + (Extent(text, 1) + Extent(text, 2)) / 2, text, 1);
    EXPECT_EQ(Words(), Span(6, 2)) << "the middle of a character counts as its right";
    ReleaseCapture();
    SetWindowLongA(field_, 16, 40);
    twDrawField(field_, "abc", GXDF_ANY, 0);
    EXPECT_EQ(Caret(), 3) << "drawing clamps the caret";
}

// Through the window: a click takes the focus, a drag selects (from the right edge when right-justified), keys wait
// for the button and the release ends the capture. Text dragged from one string field onto another moves there.
TEST_F(Mouse, FieldsSelectAndDragTextOntoEachOther) {
    const struct { const char* cls; DWORD style; const char* after; } cases[] = {
        {num, 0, "195"}, {num, NUM_RIGHTJUST, "195"}, {str, 0, "195"}};
    for (const auto& c : cases) {
        Make(c.cls, c.style);
        Type(field_, "12345");
        SetFocus(other_);
        const int shift = c.style ? kWidth - Extent("12345", 5) - 2 : 0, to = shift + Extent("12345", 4);
        SendMessageA(field_, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(shift + Extent("12345", 1), 5));
        EXPECT_EQ(GetFocus(), field_);
        SendMessageA(field_, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(to, 5));
        Type(field_, "9");
        SendMessageA(field_, WM_LBUTTONUP, 0, MAKELPARAM(to, 5));
        EXPECT_EQ(Sel(field_), Span(1, 4)) << c.cls << " style " << c.style;
        Type(field_, "9");
        EXPECT_EQ(Text(field_) + (GetCapture() ? " captured" : ""), c.after) << c.cls;  // typing waited for the button
    }
    Make(str, 0, "@DRAGSRC(1)");  // a string field routes the button and move messages to the drag service itself
    auto target = fktest::MakeChild(parent_, str, 0, 43, 200, 24);
    SetWindowPos(target, nullptr, 10, 100, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    SendMessageA(target, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@DROPTARG"));
    Send(GXM_SETVALUE, 0, "dragged");
    fktest::DragOnto(field_, {2, 2}, target);
    fktest::PumpIdle();
    EXPECT_EQ(Text(field_) + "|" + Text(target) + (GetCapture() ? " captured" : ""), "|dragged");
}

}  // namespace
