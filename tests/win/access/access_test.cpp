// An assistive client: reads every class through oleacc as a screen reader
// does (role, name, value, states, children), listens to the WinEvents the
// controls raise with an out-of-context hook, and pokes the objects with
// bad child ids and after their windows are gone.

#include <gtest/gtest.h>
#include <windows.h>
#include <dde.h>
#include <oleacc.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "access/accessible.h"
#include "include/fldkit.h"
#include "links/hooks.h"
#include "tests/support/pump.h"
#include "tests/support/window.h"

namespace {

using namespace fktest;

struct Releaser {
    void operator()(IUnknown* p) const { p->Release(); }
};
using Acc = std::unique_ptr<IAccessible, Releaser>;

// COM for the client side of this thread.
class Apartment : public ::testing::Environment {
public:
    void SetUp() override {
        LoadLibraryA("FLDKIT32.dll");  // the classes are only named here, nothing is imported
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    }
    void TearDown() override {
        PumpIdle();
        EXPECT_EQ(twCountAccessibleObjects(), 0) << "an object outlived its window and its readers";
        CoUninitialize();
    }
};
const auto* const kApartment = ::testing::AddGlobalTestEnvironment(new Apartment);

Acc ObjectOf(HWND h) {
    IAccessible* p = nullptr;
    if (FAILED(AccessibleObjectFromWindow(h, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible), reinterpret_cast<void**>(&p))))
        return nullptr;
    return Acc(p);
}

VARIANT Child(LONG id) {
    VARIANT v;
    VariantInit(&v);
    v.vt = VT_I4;
    v.lVal = id;
    return v;
}

std::string Narrow(BSTR s) {
    std::string out;
    if (s == nullptr) return out;
    for (UINT i = 0; i < SysStringLen(s); ++i) out += static_cast<char>(s[i]);
    SysFreeString(s);
    return out;
}

// What a reader hears of one object (or child).
struct Heard {
    LONG role = -1;
    std::string name, value, description, action;
    LONG state = 0;
};

Heard Hear(IAccessible* a, LONG child = CHILDID_SELF) {
    Heard h;
    VARIANT v;
    VariantInit(&v);
    if (SUCCEEDED(a->get_accRole(Child(child), &v)) && v.vt == VT_I4) h.role = v.lVal;
    VariantInit(&v);
    if (SUCCEEDED(a->get_accState(Child(child), &v)) && v.vt == VT_I4) h.state = v.lVal;
    BSTR s = nullptr;
    if (a->get_accName(Child(child), &s) == S_OK) h.name = Narrow(s);
    s = nullptr;
    if (a->get_accValue(Child(child), &s) == S_OK) h.value = Narrow(s);
    s = nullptr;
    if (a->get_accDescription(Child(child), &s) == S_OK) h.description = Narrow(s);
    s = nullptr;
    if (a->get_accDefaultAction(Child(child), &s) == S_OK) h.action = Narrow(s);
    return h;
}

Heard HearWindow(HWND h, LONG child = CHILDID_SELF) {
    Acc a = ObjectOf(h);
    return a ? Hear(a.get(), child) : Heard{};
}

// A form as a dialog lays it out: each control after its label.
class Form {
public:
    explicit Form(WNDPROC proc = nullptr) : parent_(MakeParent(proc, 600, 500)) {}
    HWND add(const char* cls, DWORD style, const char* text, const char* label = "&Quantity:") {
        const int y = 10 + 30 * static_cast<int>(windows_.size());
        if (label) windows_.emplace_back(CreateWindowExA(0, "static", label, WS_CHILD | WS_VISIBLE, 10, y, 80, 20, parent_,
                                                          nullptr, nullptr, nullptr));
        HWND h = CreateWindowExA(0, cls, text, WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, 100, y, 200, 24, parent_,
                                 reinterpret_cast<HMENU>(static_cast<INT_PTR>(100 + windows_.size())), nullptr, nullptr);
        windows_.emplace_back(h);
        return h;
    }
    HWND parent() const { return parent_; }

private:
    UniqueWindow parent_;
    std::vector<UniqueWindow> windows_;
};

// WinEvents of this process, as an out-of-context client receives them.
struct Event {
    DWORD event;
    HWND h;
    LONG object, child;
};
std::vector<Event> g_events;

void CALLBACK OnEvent(HWINEVENTHOOK, DWORD event, HWND h, LONG object, LONG child, DWORD, DWORD) {
    g_events.push_back({event, h, object, child});
}

class Listener {
public:
    Listener() {
        g_events.clear();
        hook_ = SetWinEventHook(EVENT_MIN, EVENT_MAX, nullptr, OnEvent, GetCurrentProcessId(), 0, WINEVENT_OUTOFCONTEXT);
    }
    ~Listener() { UnhookWinEvent(hook_); }
    bool active() const { return hook_ != nullptr; }
    // Events of kind `event` for h's client object and child, once the queue is drained.
    static int Count(DWORD event, HWND h, LONG child = CHILDID_SELF) {
        PumpIdle();
        int n = 0;
        for (const Event& e : g_events) n += e.event == event && e.h == h && e.object == OBJID_CLIENT && e.child == child;
        return n;
    }
    static void Clear() {
        PumpIdle();
        g_events.clear();
    }

private:
    HWINEVENTHOOK hook_ = nullptr;
};

// ---- what each class tells ----

// Every class as a reader finds it, and its object once the window is gone:
// it answers nothing, and it goes with the reader's last reference.
TEST(Access, EveryClassTellsRoleNameValueAndDescription) {
    Listener listener;
    const struct {
        const char* cls;
        DWORD style;
        const char* text;
        const char* method;
        LONG role;
        const char* name;
        const char* value;        // null: not compared
        const char* description;  // null: not compared
    } cases[] = {
        {"edit", 0, "12", "", ROLE_SYSTEM_TEXT, "Quantity:", "12", nullptr},  // the system's own, for comparison
        {"gxString32", 0, "12", "", ROLE_SYSTEM_TEXT, "Quantity:", "12", nullptr},
        {"gxNumeric32", NUM_LONG, "12", "", ROLE_SYSTEM_TEXT, "Quantity:", "12", "whole number"},
        {"gxNumeric32", NUM_LONG, "", "@MND@RNG(1,99)@LIMIT(2)@MSG(1 to 99, please.)", ROLE_SYSTEM_TEXT, "Quantity:", "",
         "whole number, required, 1 to 99, at most 2 characters"},
        {"gxReal32", REAL_DOUBLE, "1.5", "", ROLE_SYSTEM_TEXT, "Quantity:", "1.5", nullptr},
        {"gxCurrency32", CURR_DOUBLE, "12", "", ROLE_SYSTEM_TEXT, "Quantity:", nullptr, nullptr},
        {"gxDate32", DATE_DDMMYYYY | DATE_DOT | DATE_CHAR, "", "", ROLE_SYSTEM_TEXT, "Quantity:", "", "date DD.MM.YYYY"},
        {"gxTable32", 0, "", "", ROLE_SYSTEM_LIST, "Quantity:", "", nullptr},
        {"gxCBTable32", CBS_DROPDOWN, "", "", ROLE_SYSTEM_COMBOBOX, "Quantity:", "", nullptr},
        {"gxButton32", BTN_TEXT, "&Save", "", ROLE_SYSTEM_PUSHBUTTON, "Save", "", nullptr},
        {"gxButton32", BTN_TOOLBAR, "TBCLEAR", "@ACCNAME(Clear the form)", ROLE_SYSTEM_PUSHBUTTON, "Clear the form", "", nullptr},
        {"gxBitmap32", 0, "", "", ROLE_SYSTEM_GRAPHIC, "Quantity:", "", nullptr},
        {"gxIcon32", 0, "", "", ROLE_SYSTEM_GRAPHIC, "Quantity:", "", nullptr},
        {"gxText3D32", 0, "&Total", "", ROLE_SYSTEM_STATICTEXT, "Total", "", nullptr},
        {"gxFrame3D32", 0, "Address", "", ROLE_SYSTEM_GROUPING, "Address", "", nullptr},
        {"gxLine32", 0, "", "", ROLE_SYSTEM_SEPARATOR, "", "", nullptr},
        {"gxTicker32", 0, "Prices rise at noon", "", ROLE_SYSTEM_STATICTEXT, "Prices rise at noon", "", nullptr},
        {"gxColor32", 0, "", "", ROLE_SYSTEM_GROUPING, "Quantity:", "red 0, green 0, blue 0", nullptr},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.cls) + " " + c.method);
        Acc a;
        {
            Form form;
            HWND h = form.add(c.cls, c.style, "");
            ASSERT_NE(h, nullptr);
            if (*c.text) SendMessageA(h, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(c.text));  // events while it lives
            if (*c.method) SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(c.method));
            a = ObjectOf(h);
            ASSERT_TRUE(a);
            const Heard heard = Hear(a.get());
            EXPECT_EQ(heard.role, c.role);
            EXPECT_EQ(heard.name, c.name);
            if (c.value) EXPECT_EQ(heard.value, c.value);
            if (c.description) EXPECT_EQ(heard.description, c.description);
        }
        if (std::string(c.cls) == "edit") continue;
        EXPECT_EQ(twCountAccessibleObjects(), 1);  // the reader's, no longer the window's
        BSTR s = nullptr;
        const HRESULT gone = a->get_accName(Child(CHILDID_SELF), &s);
        EXPECT_TRUE(gone == RPC_E_DISCONNECTED || gone == E_FAIL) << std::hex << gone;
        VARIANT v;
        EXPECT_TRUE(FAILED(a->get_accState(Child(CHILDID_SELF), &v)));
        LONG count = 0;
        EXPECT_TRUE(FAILED(a->get_accChildCount(&count)));
        EXPECT_TRUE(FAILED(a->accDoDefaultAction(Child(CHILDID_SELF))));
        a.reset();
        PumpIdle();
        EXPECT_EQ(twCountAccessibleObjects(), 0);
    }
}

// The label rule: the nearest visible static text before the control; frames and lines between are passed over,
// another control is not. Shortcuts, help, focus and availability as a reader hears them.
TEST(Access, LabelsShortcutsHelpAndStates) {
    Form form;
    HWND first = form.add("gxString32", 0, "", "Na&me:");
    form.add("gxLine32", 0, "", nullptr);
    HWND afterLine = form.add("gxString32", 0, "", nullptr);
    HWND numeric = form.add("gxNumeric32", NUM_LONG, "", nullptr);
    HWND save = form.add("gxButton32", BTN_TEXT, "&Save", nullptr);
    EXPECT_EQ(HearWindow(first).name, "Name:");
    EXPECT_EQ(HearWindow(afterLine).name, "");
    EXPECT_EQ(HearWindow(numeric).name, "");
    SendMessageA(numeric, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@MSG(1 to 99, please.)"));
    const struct {
        HWND h;
        const char* shortcut;
    } shortcuts[] = {{first, "Alt+m"}, {save, "Alt+S"}};
    for (const auto& k : shortcuts) {
        Acc a = ObjectOf(k.h);
        ASSERT_TRUE(a);
        BSTR key = nullptr;
        ASSERT_EQ(a->get_accKeyboardShortcut(Child(CHILDID_SELF), &key), S_OK);
        EXPECT_EQ(Narrow(key), k.shortcut);
    }
    Acc n = ObjectOf(numeric);
    ASSERT_TRUE(n);
    BSTR help = nullptr;
    ASSERT_EQ(n->get_accHelp(Child(CHILDID_SELF), &help), S_OK);
    EXPECT_EQ(Narrow(help), "1 to 99, please.");
    SetFocus(numeric);
    EXPECT_EQ(HearWindow(numeric).state & (STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_FOCUSED),
              STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_FOCUSED);
    EXPECT_EQ(HearWindow(first).state & STATE_SYSTEM_FOCUSED, 0);
    EnableWindow(first, FALSE);
    EXPECT_EQ(HearWindow(first).state & (STATE_SYSTEM_UNAVAILABLE | STATE_SYSTEM_FOCUSABLE), STATE_SYSTEM_UNAVAILABLE);
}

// ---- events ----

TEST(Access, EntryFieldsRaiseOneValueChangePerChange) {
    Listener listener;
    ASSERT_TRUE(listener.active());
    Form form;
    HWND field = form.add("gxNumeric32", NUM_LONG, "");
    SetFocus(field);
    EXPECT_EQ(Listener::Count(EVENT_OBJECT_FOCUS, field), 1);  // the system's, not a second one of ours
    const struct {
        const char* what;
        bool selectAll;  // the whole text selected first
        BYTE held;       // a key held down (0: none)
        UINT msg;
        WPARAM wp;
        const char* text;
        int events;
        const char* after;
    } steps[] = {
        {"a digit typed", false, 0, WM_CHAR, '7', nullptr, 1, "7"},
        {"a letter refused", false, 0, WM_CHAR, 'x', nullptr, 0, "7"},
        {"another digit", false, 0, WM_CHAR, '3', nullptr, 1, "73"},
        {"backspace", false, 0, WM_KEYDOWN, VK_BACK, nullptr, 1, "7"},
        {"text set", false, 0, WM_SETTEXT, 0, "42", 1, "42"},
        {"the same text again", false, 0, WM_SETTEXT, 0, "42", 0, "42"},
        {"value set", false, 0, GXM_SETVALUE, 0, nullptr, 1, "55"},
        {"cut (Shift+Delete)", true, VK_SHIFT, WM_KEYDOWN, VK_DELETE, nullptr, 1, ""},
        {"pasted (Shift+Insert)", false, VK_SHIFT, WM_KEYDOWN, VK_INSERT, nullptr, 1, "55"},
        {"selection typed over", true, 0, WM_CHAR, '9', nullptr, 1, "9"},
    };
    for (const auto& s : steps) {
        SCOPED_TRACE(s.what);
        if (s.selectAll) SendMessageA(field, EM_SETSEL, 0, -1);
        BYTE keys[256] = {}, saved[256] = {};
        GetKeyboardState(saved);
        std::copy(saved, saved + 256, keys);
        if (s.held) keys[s.held] = 0x80;
        SetKeyboardState(keys);
        Listener::Clear();
        LONG number = 55;
        const LPARAM lp = s.msg == GXM_SETVALUE ? reinterpret_cast<LPARAM>(&number) : reinterpret_cast<LPARAM>(s.text);
        SendMessageA(field, s.msg, s.wp, lp);
        SetKeyboardState(saved);
        EXPECT_EQ(Listener::Count(EVENT_OBJECT_VALUECHANGE, field), s.events);
        if (s.after) {
            EXPECT_EQ(HearWindow(field).value, s.after);
        }
    }
}

// A dialog hands the initiate broadcast to its children.
LRESULT CALLBACK ForwardInitiates(HWND self, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg != WM_DDE_INITIATE) return DefWindowProcA(self, msg, wp, lp);
    for (HWND c = GetWindow(self, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) SendMessageA(c, msg, wp, lp);
    return 0;
}

// A linked client field shows what its server sends: each update is one
// change for a reader, in the client as in the ticker.
TEST(Access, DdeUpdatesAreValueChanges) {
    Listener listener;
    Form servers(ForwardInitiates), clients(ForwardInitiates);
    HWND server = servers.add("gxString32", 0, "");
    SendMessageA(server, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@SERVER(FkAcc,Prices,Item)"));
    HWND field = clients.add("gxString32", 0, "");
    HWND ticker = clients.add("gxTicker32", 0, "", nullptr);
    for (HWND c : {field, ticker})
        SendMessageA(c, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@CLIENT(FkAcc,Prices,Item)NOAUTOSTART"));
    PumpIdle();
    ASSERT_EQ(GetPropA(field, "CLIENT"), server);
    SetFocus(server);
    Listener::Clear();
    for (char c : std::string("42")) SendMessageA(server, WM_CHAR, static_cast<WPARAM>(c), 1);
    PumpIdle();
    EXPECT_EQ(Listener::Count(EVENT_OBJECT_VALUECHANGE, field), 2);
    EXPECT_EQ(Listener::Count(EVENT_OBJECT_VALUECHANGE, ticker), 2);
    EXPECT_EQ(HearWindow(field).value, "42");
    EXPECT_EQ(HearWindow(ticker).name, "42");
}

TEST(Access, StringFieldTypingAndMaskShowTheScreenText) {
    Listener listener;
    Form form;
    HWND field = form.add("gxString32", 0, "");
    SendMessageA(field, GXM_MASK, 1, reinterpret_cast<LPARAM>("(###) ###"));
    EXPECT_EQ(HearWindow(field).value, "");
    EXPECT_NE(HearWindow(field).description.find("pattern (###) ###"), std::string::npos);
    SetFocus(field);
    Listener::Clear();
    for (char c : std::string("12345")) SendMessageA(field, WM_CHAR, static_cast<WPARAM>(c), 1);
    EXPECT_EQ(Listener::Count(EVENT_OBJECT_VALUECHANGE, field), 5);
    EXPECT_EQ(HearWindow(field).value, "(123) 45");
}

// ---- the table list ----

TEST(Access, TableRowsAreChildrenAndSelectionIsAnnounced) {
    Listener listener;
    Form form;
    HWND table = form.add("gxTable32", WS_BORDER | WS_VSCROLL, "", "Fruit:");
    SetWindowPos(table, nullptr, 0, 0, 200, 120, SWP_NOMOVE | SWP_NOZORDER);
    for (const char* row : {"Apple", "Banana", "Cherry"}) SendMessageA(table, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(row));
    Acc a = ObjectOf(table);
    ASSERT_TRUE(a);
    LONG count = 0;
    ASSERT_EQ(a->get_accChildCount(&count), S_OK);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(Hear(a.get(), 2).role, ROLE_SYSTEM_LISTITEM);
    EXPECT_EQ(Hear(a.get(), 2).name, "Banana");

    SetFocus(table);
    const struct {
        const char* what;
        UINT msg;
        WPARAM wp;
        const char* key;
        LONG row;
    } steps[] = {
        {"value set", GXM_SETVALUE, 0, "Banana", 2},
        {"down arrow", WM_KEYDOWN, VK_DOWN, nullptr, 3},
        {"type-ahead", WM_CHAR, 'a', nullptr, 1},
    };
    for (const auto& s : steps) {
        SCOPED_TRACE(s.what);
        Listener::Clear();
        SendMessageA(table, s.msg, s.wp, reinterpret_cast<LPARAM>(s.key));
        EXPECT_EQ(Listener::Count(EVENT_OBJECT_SELECTION, table, s.row), 1);
        EXPECT_EQ(Listener::Count(EVENT_OBJECT_FOCUS, table, s.row), 1);
        const Heard row = Hear(a.get(), s.row);
        EXPECT_EQ(row.state & (STATE_SYSTEM_SELECTED | STATE_SYSTEM_FOCUSED), STATE_SYSTEM_SELECTED | STATE_SYSTEM_FOCUSED);
        VARIANT sel;
        VariantInit(&sel);
        ASSERT_EQ(a->get_accSelection(&sel), S_OK);
        EXPECT_EQ(sel.lVal, s.row);
    }

    // A reader chooses a row, and finds the row under a point of it.
    Listener::Clear();
    ASSERT_EQ(a->accSelect(SELFLAG_TAKESELECTION, Child(2)), S_OK);
    char key[64] = "";
    SendMessageA(table, GXM_GETVALUE, 0, reinterpret_cast<LPARAM>(key));
    EXPECT_STREQ(key, "Banana");
    EXPECT_EQ(Listener::Count(EVENT_OBJECT_SELECTION, table, 2), 1);
    LONG x = 0, y = 0, cx = 0, cy = 0;
    ASSERT_EQ(a->accLocation(&x, &y, &cx, &cy, Child(3)), S_OK);
    EXPECT_GT(cx, 0);
    VARIANT hit;
    VariantInit(&hit);
    ASSERT_EQ(a->accHitTest(x + cx / 2, y + cy / 2, &hit), S_OK);
    EXPECT_EQ(hit.vt, VT_I4);
    EXPECT_EQ(hit.lVal, 3);
}

// ---- button, colour, combo ----

TEST(Access, ToggleButtonPressedByItsDefaultAction) {
    Listener listener;
    Form form;
    HWND button = form.add("gxButton32", BTN_TEXT | BTN_TOGGLE, "Lock", nullptr);
    Acc a = ObjectOf(button);
    ASSERT_TRUE(a);
    EXPECT_EQ(Hear(a.get()).action, "Press");
    EXPECT_EQ(Hear(a.get()).state & STATE_SYSTEM_CHECKED, 0);
    Listener::Clear();
    ASSERT_EQ(a->accDoDefaultAction(Child(CHILDID_SELF)), S_OK);
    ASSERT_TRUE(PumpUntil([&] { return SendMessageA(button, BM_GETCHECK, 0, 0) == BST_CHECKED; }));
    EXPECT_EQ(Listener::Count(EVENT_OBJECT_STATECHANGE, button), 1);
    EXPECT_EQ(Hear(a.get()).state & (STATE_SYSTEM_CHECKED | STATE_SYSTEM_PRESSED), STATE_SYSTEM_CHECKED | STATE_SYSTEM_PRESSED);
    Listener::Clear();
    SendMessageA(button, BM_SETCHECK, BST_UNCHECKED, 0);
    EXPECT_EQ(Listener::Count(EVENT_OBJECT_STATECHANGE, button), 1);
}

std::vector<std::string> g_started;
UINT WINAPI FakeExec(LPCSTR command, UINT) { return g_started.push_back(command), 33; }

// A picture that starts a program does so from the keyboard and through
// its default action, as a double click does; one without a program has
// no action and leaves Enter to the dialog.
TEST(Access, PictureStartsItsProgramWithoutTheMouse) {
    const FkLinkHooks fakes{nullptr, FakeExec, nullptr, nullptr, nullptr, nullptr};
    fkSetLinkHooks(&fakes);
    Form form;
    HWND with = form.add("gxBitmap32", 0, "", "Help:");
    HWND without = form.add("gxIcon32", 0, "", "Logo:");
    SendMessageA(with, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@PROG(notepad.exe)@CMDLINE(a.txt)"));
    MSG enter{with, WM_KEYDOWN, VK_RETURN, 0, 0, {}};
    EXPECT_EQ(SendMessageA(with, WM_GETDLGCODE, VK_RETURN, reinterpret_cast<LPARAM>(&enter)), DLGC_WANTMESSAGE);
    enter.hwnd = without;
    EXPECT_EQ(SendMessageA(without, WM_GETDLGCODE, VK_RETURN, reinterpret_cast<LPARAM>(&enter)), 0);

    g_started.clear();
    for (WPARAM key : {WPARAM{VK_RETURN}, WPARAM{VK_SPACE}, WPARAM{'A'}}) SendMessageA(with, WM_KEYDOWN, key, 0);
    EXPECT_EQ(g_started, (std::vector<std::string>{"notepad.exe a.txt", "notepad.exe a.txt"}));

    g_started.clear();
    Acc a = ObjectOf(with);
    ASSERT_TRUE(a);
    EXPECT_EQ(Hear(a.get()).action, "Open");
    ASSERT_EQ(a->accDoDefaultAction(Child(CHILDID_SELF)), S_OK);
    EXPECT_TRUE(PumpUntil([] { return g_started.size() == 1; }));
    Acc b = ObjectOf(without);
    ASSERT_TRUE(b);
    EXPECT_EQ(Hear(b.get()).action, "");
    EXPECT_EQ(b->accDoDefaultAction(Child(CHILDID_SELF)), DISP_E_MEMBERNOTFOUND);
    fkSetLinkHooks(nullptr);
}

TEST(Access, ColourComponentsAreSlidersReadAndSet) {
    Listener listener;
    Form form;
    HWND colour = form.add("gxColor32", 0, "", "Tint:");
    SetWindowPos(colour, nullptr, 0, 0, 200, 120, SWP_NOMOVE | SWP_NOZORDER);
    Acc a = ObjectOf(colour);
    ASSERT_TRUE(a);
    const char* const names[] = {"Red", "Green", "Blue"};
    for (LONG i = 1; i <= 3; ++i) {
        EXPECT_EQ(Hear(a.get(), i).role, ROLE_SYSTEM_SLIDER);
        EXPECT_EQ(Hear(a.get(), i).name, names[i - 1]);
        EXPECT_EQ(Hear(a.get(), i).value, "0");
    }
    Listener::Clear();
    BSTR v = SysAllocString(L"200");
    EXPECT_EQ(a->put_accValue(Child(2), v), S_OK);
    SysFreeString(v);
    DWORD rgb = 0;
    SendMessageA(colour, GXM_GETVALUE, 0, reinterpret_cast<LPARAM>(&rgb));
    EXPECT_EQ(rgb, 200u << 8);
    EXPECT_EQ(Hear(a.get(), 2).value, "200");
    EXPECT_EQ(Hear(a.get()).value, "red 0, green 200, blue 0");
    EXPECT_EQ(Listener::Count(EVENT_OBJECT_VALUECHANGE, colour, 2), 1);
    EXPECT_EQ(Listener::Count(EVENT_OBJECT_VALUECHANGE, colour), 1);
    for (const wchar_t* bad : {L"256", L"-1", L"twelve", L""}) {
        BSTR b = SysAllocString(bad);
        EXPECT_EQ(a->put_accValue(Child(1), b), E_INVALIDARG);
        SysFreeString(b);
    }
    DWORD set = RGB(1, 2, 3);
    Listener::Clear();
    SendMessageA(colour, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(&set));
    EXPECT_EQ(Listener::Count(EVENT_OBJECT_VALUECHANGE, colour), 1);
    EXPECT_EQ(Hear(a.get()).value, "red 1, green 2, blue 3");
}

TEST(Access, ComboTableOffersItsItemButtonAndList) {
    Listener listener;
    Form form;
    HWND combo = form.add("gxCBTable32", CBS_DROPDOWN | WS_VSCROLL, "", "Customer:");
    SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>("BLUE"));
    Acc a = ObjectOf(combo);
    ASSERT_TRUE(a);
    LONG count = 0;
    ASSERT_EQ(a->get_accChildCount(&count), S_OK);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(Hear(a.get(), 2).role, ROLE_SYSTEM_PUSHBUTTON);
    EXPECT_EQ(Hear(a.get(), 2).name, "Open");
    for (LONG part : {1, 3}) {
        IDispatch* d = nullptr;
        EXPECT_EQ(a->get_accChild(Child(part), &d), S_OK) << part;
        if (d) d->Release();
    }
    Listener::Clear();
    SendMessageA(combo, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>("BLUE"));
    EXPECT_EQ(Hear(a.get()).value, "BLUE");
    EXPECT_EQ(Listener::Count(EVENT_OBJECT_VALUECHANGE, combo), 1);
    // Typing in the edit part: "b" completes to the key.
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    ASSERT_TRUE(GetComboBoxInfo(combo, &info));
    SetWindowTextA(info.hwndItem, "");
    SetFocus(info.hwndItem);
    Listener::Clear();
    SendMessageA(info.hwndItem, WM_CHAR, 'b', 1);
    EXPECT_EQ(Hear(a.get()).value, "BLUE");
    EXPECT_EQ(Listener::Count(EVENT_OBJECT_VALUECHANGE, combo), 1);
}

// ---- bad input ----

TEST(Access, UnknownObjectIdsAndChildIdsAreRefused) {
    Form form;
    HWND table = form.add("gxTable32", 0, "");
    SendMessageA(table, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>("One"));
    HWND field = form.add("gxString32", 0, "");
    for (HWND h : {table, field})
        for (LONG id : {OBJID_WINDOW, OBJID_VSCROLL, OBJID_CARET, 12345L, OBJID_QUERYCLASSNAMEIDX})
            EXPECT_EQ(SendMessageA(h, WM_GETOBJECT, 0, id), 0) << id;
    Acc a = ObjectOf(table);
    ASSERT_TRUE(a);
    for (LONG bad : {2L, -1L, 1000000L}) {
        BSTR s = nullptr;
        EXPECT_EQ(a->get_accName(Child(bad), &s), E_INVALIDARG) << bad;
        VARIANT role;
        EXPECT_EQ(a->get_accRole(Child(bad), &role), E_INVALIDARG) << bad;
        EXPECT_EQ(a->accDoDefaultAction(Child(bad)), E_INVALIDARG) << bad;
    }
    VARIANT text;
    VariantInit(&text);
    text.vt = VT_BSTR;
    text.bstrVal = SysAllocString(L"1");
    BSTR s = nullptr;
    EXPECT_EQ(a->get_accName(text, &s), E_INVALIDARG);
    VariantClear(&text);
    EXPECT_EQ(a->get_accName(Child(0), nullptr), E_POINTER);
}

}  // namespace
