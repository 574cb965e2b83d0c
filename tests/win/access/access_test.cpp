// An assistive client: reads the classes through oleacc as a screen reader
// does, listens to the WinEvents the controls raise with an out-of-context
// hook, and pokes the objects with bad child ids and after their windows are gone.
// What each class announces on a whole form is pinned by the demo's transcript
// (docs/accessibility.md); here are the shortcuts, help, states, events and actions.

#include <gtest/gtest.h>
#include <windows.h>
#include <dde.h>
#include <oleacc.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "access/accessible.h"
#include "include/fldkit.h"
#include "links/hooks.h"
#include "tests/support/pump.h"
#include "tests/support/window.h"

namespace {

using namespace fktest;

using Acc = std::unique_ptr<IAccessible, decltype([](IAccessible* p) { p->Release(); })>;

Acc ObjectOf(HWND h) {
    IAccessible* p = nullptr;
    AccessibleObjectFromWindow(h, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible), reinterpret_cast<void**>(&p));
    return Acc(p);
}

VARIANT Child(LONG id, VARTYPE type = VT_I4) {
    VARIANT v{};
    v.vt = type;
    v.lVal = id;
    return v;
}

std::string Narrow(BSTR s) {
    const std::string out(s, s + SysStringLen(s));
    SysFreeString(s);
    return out;
}

// What a reader hears of an object or one of its children, field by field: name|value|description|default action|
// shortcut|help|states (s selected, f focused, c checked, p pressed, u unavailable, F focusable, r read-only), and of
// the object itself its number of children and the selected one.
std::string Hear(IAccessible* a, LONG child = CHILDID_SELF) {
    std::string out;
    for (auto read : {&IAccessible::get_accName, &IAccessible::get_accValue, &IAccessible::get_accDescription,
                      &IAccessible::get_accDefaultAction, &IAccessible::get_accKeyboardShortcut, &IAccessible::get_accHelp}) {
        BSTR s = nullptr;
        out += ((a->*read)(Child(child), &s) == S_OK ? Narrow(s) : "") + "|";
    }
    VARIANT v{};
    const LONG state = SUCCEEDED(a->get_accState(Child(child), &v)) ? v.lVal : 0;
    const LONG bits[] = {STATE_SYSTEM_SELECTED,    STATE_SYSTEM_FOCUSED,   STATE_SYSTEM_CHECKED, STATE_SYSTEM_PRESSED,
                         STATE_SYSTEM_UNAVAILABLE, STATE_SYSTEM_FOCUSABLE, STATE_SYSTEM_READONLY};
    for (int i = 0; i < 7; ++i)
        if (state & bits[i]) out += "sfcpuFr"[i];
    LONG count = 0;
    if (child == CHILDID_SELF && a->get_accChildCount(&count) == S_OK && count > 0) out += "|" + std::to_string(count);
    if (child == CHILDID_SELF && a->get_accSelection(&v) == S_OK) out += ">" + std::to_string(v.lVal);
    return out;
}

// WinEvents of this process for client objects, as an out-of-context client receives them, and programs started
// (no window's).
std::vector<std::pair<HWND, std::string>> g_events;

void CALLBACK OnEvent(HWINEVENTHOOK, DWORD event, HWND h, LONG object, LONG child, DWORD, DWORD) {
    const char* name = event == EVENT_OBJECT_VALUECHANGE ? "value"
                       : event == EVENT_OBJECT_SELECTION ? "select"
                       : event == EVENT_OBJECT_FOCUS     ? "focus"
                       : event == EVENT_OBJECT_STATECHANGE ? "state"
                                                           : "other";
    if (object == OBJID_CLIENT) g_events.emplace_back(h, child ? name + (":" + std::to_string(child)) : name);
}

UINT WINAPI FakeExec(LPCSTR command, UINT) { return g_events.emplace_back(nullptr, "run:" + std::string(command)), 33; }

// What the script saw of a step: the events h raised, the programs started and the call's answer when it is not 0.
// The events are taken: a step that only reads finds those its control raised since.
std::string Observed(HWND h, LRESULT answer) {
    PumpIdle();
    std::string out;
    for (auto& [window, event] : g_events)
        if (window == h || window == nullptr) out += (out.empty() ? "" : " ") + std::exchange(event, "");
    char hex[16];
    std::snprintf(hex, sizeof hex, "=0x%x", static_cast<unsigned>(answer));
    return answer == 0 ? out : out + (out.empty() ? "" : " ") + hex;
}

LRESULT Send(HWND h, UINT msg, WPARAM wp, const void* lp = nullptr) {
    return SendMessageA(h, msg, wp, reinterpret_cast<LPARAM>(lp));
}

LRESULT SetNumber(HWND h, DWORD value) { return Send(h, GXM_SETVALUE, 0, &value); }

LRESULT Type(HWND h, const char* text) {
    SetFocus(h);
    for (const char* c = text; *c; ++c) SendMessageA(h, WM_CHAR, static_cast<unsigned char>(*c), 1);
    return 0;
}

LRESULT Put(IAccessible* a, LONG child, const wchar_t* value) {
    BSTR b = SysAllocString(value);
    const HRESULT hr = a->put_accValue(Child(child), b);
    SysFreeString(b);
    return hr;
}

// A reader presses the object (or a child), or chooses the child under the middle of another one's place.
LRESULT Press(IAccessible* a, LONG child = CHILDID_SELF) { return a->accDoDefaultAction(Child(child)); }

LRESULT ChooseAtMiddle(IAccessible* a, LONG child) {
    LONG x = 0, y = 0, cx = 0, cy = 0;
    VARIANT hit{};
    a->accLocation(&x, &y, &cx, &cy, Child(child));
    a->accHitTest(x + cx / 2, y + cy / 2, &hit);
    return a->accSelect(SELFLAG_TAKESELECTION, hit);
}

LRESULT WantsEnter(HWND h) {
    MSG enter{h, WM_KEYDOWN, VK_RETURN, 0, 0, {}};
    return Send(h, WM_GETDLGCODE, VK_RETURN, &enter);
}

// A dialog hands the initiate broadcast to its children.
LRESULT CALLBACK ForwardInitiates(HWND self, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg != WM_DDE_INITIATE) return DefWindowProcA(self, msg, wp, lp);
    for (HWND c = GetWindow(self, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) SendMessageA(c, msg, wp, lp);
    return 0;
}

enum Control { kName, kLine, kAfterLine, kNumeric, kSave, kMasked, kTable, kToggle, kColour, kCombo, kServer, kClient,
               kTicker, kPicture, kIcon, kToolbar, kControls };
HWND g_at[kControls];

struct Target { HWND h; IAccessible* a; };

// A form is used as a user and a reader use it: each step does one thing to one control (null: nothing, only read)
// and is heard as the events the control raised, and then what a reader hears of it or of one of its children (the
// fields the step names, if any). Labels: the nearest visible static text before the control; frames and lines
// between are passed over, another control is not. Once the windows are gone, an object a reader still holds
// answers nothing, and goes with the reader's last reference.
TEST(Access, AFormIsHeardAndEachChangeAnnounced) {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const FkLinkHooks fakes{nullptr, FakeExec, nullptr, nullptr, nullptr, nullptr};
    fkSetLinkHooks(&fakes);
    const HWINEVENTHOOK hook =
        SetWinEventHook(EVENT_MIN, EVENT_MAX, nullptr, OnEvent, GetCurrentProcessId(), 0, WINEVENT_OUTOFCONTEXT);
    UniqueWindow form = MakeParent(ForwardInitiates, 900, 1000);
    const char *const q = "&Quantity:", *const client = "@CLIENT(FkAcc,Prices,Item)NOAUTOSTART";
    const struct { const char *cls; DWORD style; const char *label, *text, *method; int height = 24; }
        layout[kControls] = {
        {"gxString32", 0, "Na&me:", "", ""}, {"gxLine32", 0, nullptr, "", ""}, {"gxString32", 0, nullptr, "", ""},
        {"gxNumeric32", NUM_LONG, nullptr, "", "@MSG(1 to 99, please.)"},
        {"gxButton32", BTN_TEXT, nullptr, "&Save", ""},
        {"gxString32", 0, q, "", "@MASK((###) ###)"}, {"gxTable32", WS_BORDER | WS_VSCROLL, "Fruit:", "", "", 100},
        {"gxButton32", BTN_TEXT | BTN_TOGGLE, nullptr, "Lock", ""}, {"gxColor32", 0, "Tint:", "", "", 120},
        {"gxCBTable32", CBS_DROPDOWN | WS_VSCROLL, "Customer:", "", ""},
        {"gxString32", 0, nullptr, "", "@SERVER(FkAcc,Prices,Item)"}, {"gxString32", 0, q, "", client},
        {"gxTicker32", 0, nullptr, "", client}, {"gxBitmap32", 0, "Help:", "", "@PROG(notepad.exe)@CMDLINE(a.txt)"},
        {"gxIcon32", 0, "Logo:", "", ""}, {"gxButton32", BTN_TOOLBAR, q, "TBCLEAR", "@ACCNAME(Clear the form)"}};
    for (int i = 0, y = 10; i < kControls; ++i) {  // as a dialog lays them out: after its label, under the one before
        const auto& c = layout[i];
        if (c.label) CreateWindowExA(0, "static", c.label, WS_CHILD | WS_VISIBLE, 10, y, 80, 20, form, 0, 0, nullptr);
        g_at[i] = CreateWindowExA(0, c.cls, c.text, WS_CHILD | WS_VISIBLE | WS_TABSTOP | c.style, 100, y, 200, c.height,
                                  form, reinterpret_cast<HMENU>(static_cast<INT_PTR>(y)), nullptr, nullptr);
        if (*c.method) Send(g_at[i], GXM_SETMETHOD, 0, c.method);
        y += c.height + 6;
    }
    for (const char* row : {"Apple", "Banana", "Cherry"}) Send(g_at[kTable], LB_ADDSTRING, 0, row);
    Send(g_at[kCombo], CB_ADDSTRING, 0, "BLUE");
    const struct { const char* what; Control control; LRESULT (*act)(Target t); const char* observed; LONG child;
                   const char* heard; } steps[] = {
        {"a picture button named by its application", kToolbar, nullptr, "", 0, "Clear the form|||Press|Alt+Q||F"},
        {"a label with a shortcut", kName, nullptr, "", 0, "Name:||||Alt+m||F"},
        {"a line passed over to no label", kAfterLine, nullptr, "", 0, "||||||F"},
        {"a field focused", kNumeric, [](Target t) { return Type(t.h, ""); }, "focus", 0,
         "||whole number|||1 to 99, please.|fF"},
        {"two digits typed", kNumeric, [](Target t) { return Type(t.h, "73"); }, "value value", 0, "|73"},
        {"backspace", kNumeric, [](Target t) { return Send(t.h, WM_KEYDOWN, VK_BACK); }, "value", 0, "|7"},
        {"text set", kNumeric, [](Target t) { return Send(t.h, WM_SETTEXT, 0, "42"); }, "value =0x1", 0, "|42"},
        {"value set", kNumeric, [](Target t) { return SetNumber(t.h, 55); }, "value", 0, "|55"},
        {"disabled", kName, [](Target t) { return LRESULT{EnableWindow(t.h, FALSE)}; }, "", 0, "Name:||||Alt+m||u"},
        {"a button's own shortcut", kSave, nullptr, "", 0, "Save|||Press|Alt+S||F"},
        {"typed through the mask", kMasked, [](Target t) { return Type(t.h, "12345"); },
         "focus value value value value value", 0, "Quantity:|(123) 45|pattern (###) ###||Alt+Q||fF"},
        {"key set", kTable, [](Target t) { return Send(t.h, GXM_SETVALUE, 0, "Banana"); }, "select:2", 0, "Fruit:||||||F|3>2"},
        {"focused", kTable, [](Target t) { return Type(t.h, ""); }, "focus focus:2", 2, "Banana||||||sfF"},
        {"down", kTable, [](Target t) { return Send(t.h, WM_KEYDOWN, VK_DOWN); }, "select:3 focus:3", 3, "Cherry||||||sfF"},
        {"type-ahead", kTable, [](Target t) { return Type(t.h, "a"); }, "select:1 focus:1", 1, "Apple||||||sfF"},
        {"a reader's choice", kTable, [](Target t) { return LRESULT{t.a->accSelect(SELFLAG_TAKESELECTION, Child(2))}; },
         "select:2 focus:2", 0, "Fruit:||||||fF|3>2"},
        {"the row under a point", kTable, [](Target t) { return ChooseAtMiddle(t.a, 3); }, "select:3 focus:3", 0,
         "Fruit:||||||fF|3>3"},
        {"a row beyond the last", kTable, nullptr, "", 4, "||||||"},
        {"a negative row", kTable, nullptr, "", -1, "||||||"},
        {"no place for the answer", kTable, [](Target t) { return LRESULT{t.a->get_accName(Child(0), nullptr)}; },
         "=0x80004003", 0, ""},
        {"a child that is no number", kTable,
         [](Target t) { return LRESULT{t.a->accDoDefaultAction(Child(1, VT_BSTR))}; }, "=0x80070057", 0, ""},
        {"the window's object is not ours", kTable,
         [](Target t) { return SendMessageA(t.h, WM_GETOBJECT, 0, OBJID_WINDOW); }, "", 0, ""},
        {"pressed by a reader", kToggle, [](Target t) { return Press(t.a); }, "state", 0, "Lock|||Press|||cpF"},
        {"unchecked", kToggle, [](Target t) { return Send(t.h, BM_SETCHECK, BST_UNCHECKED); }, "state", 0, "Lock|||Press|||F"},
        {"a colour component", kColour, nullptr, "", 1, "Red|0|||||F"},
        {"one set by a reader", kColour, [](Target t) { return Put(t.a, 2, L"200"); }, "value:2 value", 2, "Green|200|||||F"},
        {"256", kColour, [](Target t) { return Put(t.a, 1, L"256"); }, "=0x80070057", 1, "Red|0"},
        {"-1", kColour, [](Target t) { return Put(t.a, 1, L"-1"); }, "=0x80070057", 1, "Red|0"},
        {"the colour set", kColour, [](Target t) { return SetNumber(t.h, RGB(1, 2, 3)); }, "value:1 value:2 value:3 value",
         0, "Tint:|red 1, green 2, blue 3"},
        {"the combo's button", kCombo, nullptr, "", 2, "Open|||Open|||"},
        {"key set", kCombo, [](Target t) { return Send(t.h, GXM_SETVALUE, 0, "BLUE"); }, "value", 0, "Customer:|BLUE|||||F|3"},
        {"edit part emptied", kCombo, [](Target t) { return Send(GetWindow(t.h, GW_CHILD), WM_SETTEXT, 0, ""); },
         "value =0x1", 0, "Customer:|"},
        {"'b' completes to the key", kCombo, [](Target t) { return Type(GetWindow(t.h, GW_CHILD), "b"); }, "value", 0,
         "Customer:|BLUE"},
        {"a server typed to", kClient, [](Target) { return Type(g_at[kServer], "42"); }, "value value", 0, "Quantity:|42"},
        {"the ticker of the same link", kTicker, nullptr, "value value", 0, "42"},
        {"Enter, space and A on a picture with a program", kPicture,
         [](Target t) {
             for (WPARAM key : {WPARAM{VK_RETURN}, WPARAM{VK_SPACE}, WPARAM{'A'}}) Send(t.h, WM_KEYDOWN, key);
             return WantsEnter(t.h);
         },
         "run:notepad.exe a.txt run:notepad.exe a.txt =0x4", 0, "Help:|||Open|||Fr"},
        {"opened by a reader", kPicture, [](Target t) { return Press(t.a); }, "run:notepad.exe a.txt", 0, ""},
        {"one without leaves Enter to the dialog and has no action", kIcon,
         [](Target t) { return WantsEnter(t.h) | Press(t.a); }, "=0x80020003", 0, "Logo:||||||Fr"},
    };
    for (const auto& s : steps) {
        SCOPED_TRACE(s.what);
        Acc a = ObjectOf(g_at[s.control]);
        if (s.act) {
            PumpIdle();
            g_events.clear();
        }
        const LRESULT answer = s.act ? s.act({g_at[s.control], a.get()}) : 0;
        EXPECT_EQ(Observed(g_at[s.control], answer), s.observed);
        const std::string heard = *s.heard ? Hear(a.get(), s.child) : "";  // compared as far as the step names
        EXPECT_EQ(heard.substr(0, heard.find('|', std::strlen(s.heard))), s.heard);
    }
    UnhookWinEvent(hook);
    fkSetLinkHooks(nullptr);
    Acc kept = ObjectOf(g_at[kTable]);
    form.reset();
    EXPECT_EQ(std::to_string(twCountAccessibleObjects()) + Hear(kept.get()), "1||||||");  // the reader's, silent
    kept.reset();
    PumpIdle();
    EXPECT_EQ(twCountAccessibleObjects(), 0);
    CoUninitialize();
}

}  // namespace
