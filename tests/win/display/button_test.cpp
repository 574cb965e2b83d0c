// gxButton32 gives a parent exactly what a system push button gives, draws
// each state from its image, toggles, and behaves in a dialog.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "include/fldkit.h"
#include "tests/support/msgbox_watch.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"
#include "tests/win/display/picture_files.h"
#include "tests/win/display/pixels.h"

namespace {

using namespace fktest;

struct Input { UINT msg; WPARAM wp; int x, y; };
const Input kDown{WM_LBUTTONDOWN, MK_LBUTTON, 5, 5}, kUp{WM_LBUTTONUP, 0, 5, 5};
const Input kOut{WM_MOUSEMOVE, MK_LBUTTON, 300, 300}, kBack{WM_MOUSEMOVE, MK_LBUTTON, 6, 6};
const Input kUpOutside{WM_LBUTTONUP, 0, 300, 300};
const Input kSpaceDown{WM_KEYDOWN, VK_SPACE, 0, 0}, kSpaceUp{WM_KEYUP, VK_SPACE, 0, 0};

// What the parent hears (wParam of each WM_COMMAND, and whether lParam is the button).
std::vector<std::pair<WPARAM, bool>> Commands(const char* cls, DWORD style, const std::vector<Input>& inputs) {
    RecordingParent parent(300, 200);
    auto button = MakeChild(parent, cls, style, 42, 60, 24, "Go");
    for (const Input& in : inputs) SendMessageA(button, in.msg, in.wp, MAKELPARAM(in.x, in.y));
    std::vector<std::pair<WPARAM, bool>> out;
    for (const Msg& m : parent.Of(WM_COMMAND)) out.push_back({m.wp, reinterpret_cast<HWND>(m.lp) == button.get()});
    return out;
}

TEST(Button, GivesThePushButtonsCommandSequence) {
    const struct { const char* name; std::vector<Input> inputs; } cases[] = {
        {"click", {kDown, kUp}},
        {"out and back", {kDown, kOut, kBack, kUp}},
        {"out and released", {kDown, kOut, kUpOutside}},
        {"fast second click", {kDown, kUp, kDown, kUp}},
        {"space", {kSpaceDown, kSpaceUp}},
        {"space held, repeats", {kSpaceDown, {WM_KEYDOWN, VK_SPACE, 0, 0}, kSpaceUp}},
        {"up without down", {kUp, kSpaceUp}},
    };
    for (const auto& c : cases) {
        const auto system = Commands("button", BS_PUSHBUTTON, c.inputs);
        EXPECT_EQ(Commands("gxButton32", BTN_PUSH, c.inputs), system) << c.name;
        EXPECT_EQ(Commands("gxButton32", BTN_TEXT | BTN_TOGGLE, c.inputs), system) << c.name;
    }
    EXPECT_EQ(Commands("gxButton32", BTN_PUSH, {kDown, kUp}), (std::vector<std::pair<WPARAM, bool>>{{MAKEWPARAM(42, BN_CLICKED), true}}));
}

TEST(Button, TogglesKeepTheirCheckAndReportTheirState) {
    RecordingParent parent(300, 200);
    auto toggle = MakeChild(parent, "gxButton32", BTN_TOOLBAR | BTN_TOGGLE, 7, 40, 24);
    auto push = MakeChild(parent, "gxButton32", BTN_PUSH, 8, 40, 24);
    const struct { HWND h; UINT msg; WPARAM wp; LRESULT check; LRESULT state; } steps[] = {
        {toggle, WM_LBUTTONDOWN, MK_LBUTTON, 0, BST_PUSHED},
        {toggle, WM_LBUTTONUP, 0, 1, BST_CHECKED},
        {toggle, BM_CLICK, 0, 0, 0},
        {toggle, BM_SETCHECK, BST_CHECKED, 1, BST_CHECKED},
        {toggle, BM_SETSTATE, TRUE, 1, BST_CHECKED | BST_PUSHED},
        {push, WM_LBUTTONDOWN, MK_LBUTTON, 0, BST_PUSHED | BST_FOCUS},
        {push, WM_LBUTTONUP, 0, 0, BST_FOCUS},
        {push, BM_SETCHECK, BST_CHECKED, 0, BST_FOCUS},
    };
    for (const auto& s : steps) {
        SendMessageA(s.h, s.msg, s.wp, MAKELPARAM(3, 3));
        EXPECT_EQ(SendMessageA(s.h, BM_GETCHECK, 0, 0), s.check) << std::hex << s.msg;
        EXPECT_EQ(SendMessageA(s.h, BM_GETSTATE, 0, 0), s.state) << std::hex << s.msg;
    }
    EXPECT_NE(GetFocus(), toggle.get()) << "a toolbar button takes no focus";
    MessageBoxWatcher boxes;  // F1 shows the button's help
    SendMessageA(push, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@HELPMSG1(Starts the run)"));
    SendMessageA(push, WM_KEYDOWN, VK_F1, 0);
    ASSERT_EQ(boxes.boxes().size(), 1u);
    EXPECT_EQ(boxes.boxes()[0].text, "Starts the run");
}

// A strip of four 8 x 8 images: up red, down green, focused blue, disabled yellow.
Bytes Strip() {
    const uint32_t colours[] = {0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00};
    return Bmp(32, 8, 24, 0, {}, Rows(32, 8, 24, false, [&](int x, int) { return colours[x / 8]; }));
}

TEST(Button, DrawsEachStateFromItsImage) {
    TempFile strip("strip.bmp", Strip());
    // Two images (up red, down green); and a picture whose width is no multiple of its height: the up image alone.
    TempFile two("two.bmp", Bmp(16, 8, 24, 0, {}, Rows(16, 8, 24, false, [](int x, int) { return x < 8 ? 0xFF0000u : 0x00FF00u; })));
    TempFile odd("odd.bmp", Bmp(20, 8, 24, 0, {}, Rows(20, 8, 24, false, [](int x, int) { return x < 12 ? 0xFF0000u : 0x00FF00u; })));
    TempFile single("single.bmp", Bmp(8, 8, 24, 0, {}, Rows(8, 8, 24, false, [](int, int) { return 0xFF0000u; })));
    auto parent = MakeParent(nullptr, 200, 120);
    const COLORREF face = GetSysColor(COLOR_BTNFACE), red = RGB(255, 0, 0);
    enum Act { kNone, kPush, kFocus, kDisable, kCheck };
    const struct { const char* file; DWORD style; Act act; POINT at; COLORREF want; } cases[] = {
        {strip.path(), BTN_PUSH, kNone, {4, 4}, red},
        {strip.path(), BTN_PUSH, kPush, {4, 4}, RGB(0, 255, 0)},
        {strip.path(), BTN_PUSH, kFocus, {4, 4}, RGB(0, 0, 255)},
        {strip.path(), BTN_PUSH, kDisable, {4, 4}, RGB(255, 255, 0)},
        {strip.path(), BTN_PUSH | BTN_TOGGLE, kCheck, {4, 4}, RGB(0, 255, 0)},
        {strip.path(), BTN_TOOLBAR, kFocus, {4, 4}, red},
        // Made from the up image: pressed it moves one pixel; disabled it is no longer red.
        {single.path(), BTN_PUSH, kPush, {0, 0}, face},
        {single.path(), BTN_PUSH, kPush, {7, 7}, red},
        {single.path(), BTN_PUSH, kNone, {0, 0}, red},
        {two.path(), BTN_PUSH, kPush, {4, 4}, RGB(0, 255, 0)},
        {odd.path(), BTN_PUSH, kPush, {4, 4}, red},
    };
    for (const auto& c : cases) {
        auto button = MakeChild(parent, "gxButton32", c.style, 7, 8, 8);
        SendMessageA(button, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>((std::string("@BITMAP(") + c.file + ")").c_str()));
        if (c.act == kPush) SendMessageA(button, BM_SETSTATE, TRUE, 0);
        if (c.act == kFocus) SetFocus(button);
        if (c.act == kDisable) EnableWindow(button, FALSE);
        if (c.act == kCheck) SendMessageA(button, BM_SETCHECK, BST_CHECKED, 0);
        PaintNow(parent);
        EXPECT_EQ(Capture(button).at(c.at.x, c.at.y), c.want) << c.file << " style " << c.style << " act " << c.act;
    }
    auto disabled = MakeChild(parent, "gxButton32", WS_DISABLED, 7, 8, 8);
    SendMessageA(disabled, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>((std::string("@BITMAP(") + single.path() + ")").c_str()));
    PaintNow(parent);
    int red_pixels = 0;
    Capture pixels(disabled);
    for (int i = 0; i < 64; ++i) red_pixels += pixels.at(i % 8, i / 8) == red;
    EXPECT_EQ(red_pixels, 0) << "the drawn disabled image";
}

// ---- in a dialog from a template ----

// A template of one dialog holding the given buttons (class, style, id).
struct Item { const wchar_t* cls; DWORD style; WORD id; };
std::vector<WORD> Template(const std::vector<Item>& items) {
    std::vector<WORD> t;
    auto dword = [&](DWORD v) { t.push_back(LOWORD(v)), t.push_back(HIWORD(v)); };
    auto text = [&](const wchar_t* s) { do t.push_back(*s); while (*s++); };
    dword(WS_POPUP | WS_VISIBLE | DS_SETFONT), dword(0);
    t.push_back(static_cast<WORD>(items.size()));
    for (short v : {0, 0, 200, 60}) t.push_back(v);
    t.push_back(0), t.push_back(0), t.push_back(0);  // no menu, the dialog class, no title
    t.push_back(8), text(L"MS Shell Dlg");
    short x = 5;
    for (const Item& i : items) {
        if (t.size() % 2) t.push_back(0);
        dword(WS_CHILD | WS_VISIBLE | WS_TABSTOP | i.style), dword(0);
        for (short v : {x, short(5), short(50), short(14)}) t.push_back(v);
        t.push_back(i.id), text(i.cls), text(L"Go"), t.push_back(0);
        x += 60;
    }
    return t;
}

std::vector<WPARAM> g_dialogCommands;
INT_PTR CALLBACK RecordingDialog(HWND, UINT msg, WPARAM wp, LPARAM) {
    if (msg == WM_COMMAND) g_dialogCommands.push_back(wp);
    return msg == WM_INITDIALOG;
}

// Enter on the focused default button, read by the dialog's own keyboard handling.
std::vector<WPARAM> EnterInDialog(const wchar_t* cls, DWORD style) {
    g_dialogCommands.clear();
    const std::vector<WORD> t = Template({{cls, style, 100}});
    UniqueWindow dialog(CreateDialogIndirectParamA(GetModuleHandleA(nullptr), reinterpret_cast<const DLGTEMPLATE*>(t.data()),
                                                   nullptr, RecordingDialog, 0));
    SetFocus(GetDlgItem(dialog, 100));
    PostMessageA(GetDlgItem(dialog, 100), WM_KEYDOWN, VK_RETURN, 1);
    PostMessageA(GetDlgItem(dialog, 100), WM_KEYUP, VK_RETURN, 0xC0000001);
    for (DWORD start = GetTickCount(); g_dialogCommands.empty() && GetTickCount() - start < 5000;) {
        MSG m;
        if (!PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE)) {
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        } else if (!IsDialogMessageA(dialog, &m)) {
            TranslateMessage(&m), DispatchMessageA(&m);
        }
    }
    return g_dialogCommands;
}

TEST(Button, EnterAndTheDefaultInADialog) {
    EXPECT_EQ(EnterInDialog(L"gxButton32", BTN_DEFPUSH), EnterInDialog(L"button", BS_DEFPUSHBUTTON));
    EXPECT_EQ(g_dialogCommands, std::vector<WPARAM>{MAKEWPARAM(100, BN_CLICKED)});

    // The default moves with the focus, as between system push buttons.
    const std::vector<WORD> t = Template({{L"gxButton32", BTN_DEFPUSH, 100}, {L"gxButton32", BTN_PUSH, 101}});
    UniqueWindow dialog(CreateDialogIndirectParamA(GetModuleHandleA(nullptr), reinterpret_cast<const DLGTEMPLATE*>(t.data()),
                                                   nullptr, RecordingDialog, 0));
    HWND first = GetDlgItem(dialog, 100), second = GetDlgItem(dialog, 101);
    ASSERT_TRUE(first && second);
    SendMessageA(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(second), TRUE);
    EXPECT_EQ(GetWindowLongA(second, GWL_STYLE) & BTN_KINDMASK, BTN_DEFPUSH);
    EXPECT_EQ(GetWindowLongA(first, GWL_STYLE) & BTN_KINDMASK, BTN_PUSH);
    EXPECT_EQ(SendMessageA(second, WM_GETDLGCODE, 0, 0), DLGC_BUTTON | DLGC_DEFPUSHBUTTON);
}

}  // namespace
