// Soak: many create / configure / reconfigure / use / destroy cycles per
// class, with the process's figures (windows, global atoms, GDI objects,
// heap blocks) taken before and after each class. Every figure must end
// where it started: a control that leaks one brush, one atom or one local
// block per life shows here as a growth of one per cycle. Reconfiguring a
// live control (method strings in turn, the setting messages, a style bit)
// must give back what it held before.
//
//   soak_tests.exe [--cycles N]     (200 without arguments, as CTest runs it)
//
// The exit code is 1 when a figure grew, a heap failed validation or a
// link's item atom outlived its controls.

#include <windows.h>

#include <dde.h>
#include <oleacc.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <tuple>
#include <vector>

#include "access/accessible.h"
#include "include/fldkit.h"
#include "tests/support/files.h"
#include "tests/support/resources.h"
#include "tests/support/window.h"
#include "tests/win/display/picture_files.h"

namespace {

using namespace fktest;

// A setting message: lParam as text, or as a number when text is null.
using Setting = std::tuple<UINT, WPARAM, const char*, LPARAM>;

// How a class is configured (methods[0]) and reconfigured (the methods in
// turn, the last one twice, then the settings and a style bit flipped).
struct ClassPlan {
    const char* cls;
    DWORD style, styleFlip;
    std::vector<std::string> methods;
    std::vector<Setting> settings;
};

struct Cycle {
    const ClassPlan& plan;
    HWND control = nullptr;
    int n = 0;
};

std::string g_table;
const char kAgainItem[] = "FkSoakAgainItem";  // the item of the server link sent twice
const char kReconfItem[] = "FkSoakReconfItem";

void SetMethod(HWND h, const std::string& method) {
    SendMessageA(h, GXM_SETMETHOD, 0, method.empty() ? 0 : reinterpret_cast<LPARAM>(method.c_str()));
}

// A window that hands initiates to its children as a dialog does; errors are taken here, so no box comes up.
LRESULT CALLBACK ParentProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == GXN_ERROR) return GXR_HANDLED;
    if (msg != WM_DDE_INITIATE) return DefWindowProcA(h, msg, wp, lp);
    for (HWND child = GetWindow(h, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) SendMessageA(child, msg, wp, lp);
    return 0;
}

HWND MakeWindow(const char* cls, const char* text, DWORD style, HWND parent, int y = 10) {
    return CreateWindowExA(0, cls, text, style, 10, y, 160, 26, parent, parent ? reinterpret_cast<HMENU>(101) : nullptr,
                           GetModuleHandleA(nullptr), nullptr);
}

// Partners that live for the whole soak (made before the warm-up): a DDE server field in a window of its own and
// a drop target.
HWND g_parent, g_serverWindow, g_server, g_target;

// ---------------------------------------------------------------------------
// The steps of one cycle.

void StepCreate(Cycle& c) {
    c.control = MakeWindow(c.plan.cls, "soak", WS_CHILD | WS_VISIBLE | WS_TABSTOP | c.plan.style, g_parent);
    SetMethod(c.control, c.plan.methods.front());
    SendMessageA(c.control, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
}

// A value of the form each class takes (by its style, a whole number, a real one or a date), then read back;
// a text copied to the clipboard and pasted back through the editing core.
void StepSetGetValue(Cycle& c) {
    const std::string text = std::to_string(c.n % 1000), cls = c.plan.cls, copied = "soak " + text;
    LONG whole = c.n % 1000;
    double real = c.n / 7.0;
    using Value = std::pair<WPARAM, const void*>;
    const auto [type, value] = cls == FK_CLASS_NUMERIC                             ? Value(GXT_LONG, &whole)
                               : cls == FK_CLASS_REAL || cls == FK_CLASS_CURRENCY ? Value(GXT_DOUBLE, &real)
                               : cls == FK_CLASS_DATE ? Value(GXT_TEXT, "02032004") : Value(0, text.c_str());
    SetWindowTextA(c.control, text.c_str());
    SendMessageA(c.control, GXM_SETVALUE, type, reinterpret_cast<LPARAM>(value));
    char buffer[1024] = "";
    SendMessageA(c.control, GXM_GETVALUE, type, reinterpret_cast<LPARAM>(buffer));
    LONG size = 0;
    SendMessageA(c.control, GXM_GETTYPE, GXT_TEXT, reinterpret_cast<LPARAM>(&size));
    GetWindowTextA(c.control, buffer, sizeof buffer);
    twClipboardCopyText(c.control, copied.c_str(), 39);
    twClipboardPasteText(c.control, buffer, 159);
}

// The control's own validation, then the engine with a failing value, a table miss and a table hit.
void StepValidate(Cycle& c) {
    SendMessageA(c.control, GXM_VALIDATE, 0, 0);
    std::string method = c.plan.methods.front();
    LONG outside = 5000;
    twValidate(c.control, GXT_LONG, &outside, method.data(), nullptr);
    std::string table = "@TBL(" + g_table + ")@KEY(1)@MSG(Not in the table)";
    for (std::string key : {"NOT-THERE", "ROM"}) twValidate(c.control, GXT_TEXT, key.data(), table.data(), nullptr);
}

// Keys and characters as a user types them; the number fields spin on
// their scroll bar; leaving a field reformats it.
void StepTyping(Cycle& c) {
    SetFocus(c.control);
    for (char ch : {'1', '2', 'a', '7'}) SendMessageA(c.control, WM_CHAR, static_cast<unsigned char>(ch), 1);
    for (UINT vk : {VK_LEFT, VK_BACK, VK_END, VK_HOME, VK_DELETE}) SendMessageA(c.control, WM_KEYDOWN, vk, 1);
    for (WPARAM code : {SB_LINEUP, SB_LINEDOWN, SB_THUMBPOSITION}) SendMessageA(c.control, WM_VSCROLL, code, 0);
    SetFocus(g_parent);
}

// Reconfigured while it lives, as applications do.
void StepReconfigure(Cycle& c) {
    const std::string again = std::string("@SERVER(FkSoakAgain,Sheet,") + kAgainItem + ")";
    for (const std::string& method : {again, again}) SetMethod(c.control, method);
    // Each link costs a broadcast: the methods in turn every eighth cycle, 25 times a class in the CTest run.
    for (const std::string& method : c.plan.methods)
        if (c.n % 8 == 0) SetMethod(c.control, method);
    SetMethod(c.control, c.plan.methods.back());
    for (const auto& [msg, wp, text, number] : c.plan.settings)
        SendMessageA(c.control, msg, wp, text ? reinterpret_cast<LPARAM>(text) : number);
    const LONG_PTR style = GetWindowLongPtrA(c.control, GWL_STYLE);
    SetWindowLongPtrA(c.control, GWL_STYLE, style ^ c.plan.styleFlip);
    SetWindowPos(c.control, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_FRAMECHANGED);
    SetMethod(c.control, c.plan.methods.front());
    SetWindowLongPtrA(c.control, GWL_STYLE, style);
    SendMessageA(c.control, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(ANSI_VAR_FONT)), TRUE);
}

// The control becomes a client of the server field, which pushes it a
// value; the client refreshes; the link ends when the control is destroyed.
void StepDdeLink(Cycle& c) {
    SetMethod(c.control, "@CLIENT(FkSoak,Prices,Item)NOAUTOSTART");
    SendMessageA(g_server, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(std::to_string(c.n).c_str()));
    SendMessageA(c.control, GXM_SETVALUE, 0, 0);
    PumpMessages();
}

// A drag onto the drop target: the move and the release are queued, then the drag starts and its loop takes them.
void StepDrag(Cycle& c) {
    SetMethod(c.control, "@DRAGSRC(0)");
    POINT at{5, 5};
    MapWindowPoints(g_target, c.control, &at, 1);
    twProcessDragDrop(c.control, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 2));
    PostMessageA(c.control, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(at.x, at.y));
    PostMessageA(c.control, WM_LBUTTONUP, 0, MAKELPARAM(at.x, at.y));
    twProcessDragDrop(c.control, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(4, 4));
    for (MSG m; PeekMessageA(&m, nullptr, WM_MOUSEFIRST, WM_MOUSELAST, PM_REMOVE);) {
    }
    ReleaseCapture();
}

// A screen reader reads the control's object and its first children, then lets it go.
void StepScreenReader(Cycle& c) {
    IAccessible* acc = nullptr;
    if (FAILED(AccessibleObjectFromWindow(c.control, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                          reinterpret_cast<void**>(&acc))))
        return;
    long children = 0;
    acc->get_accChildCount(&children);
    for (long id = 0; id <= std::min(children, 3L); ++id) {
        VARIANT child{}, role{}, state{};
        child.vt = VT_I4;
        child.lVal = id;
        acc->get_accRole(child, &role);
        acc->get_accState(child, &state);
        for (auto read : {&IAccessible::get_accName, &IAccessible::get_accValue, &IAccessible::get_accDescription}) {
            BSTR text = nullptr;
            if (SUCCEEDED((acc->*read)(child, &text))) SysFreeString(text);
        }
    }
    acc->Release();
}

// Painted; then, on the entry fields (the classes with the I-beam), the editing core's drawing and mouse selection.
void StepPaintAndEditingCore(Cycle& c) {
    RedrawWindow(c.control, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_UPDATENOW | RDW_ALLCHILDREN);
    if (GetClassLongPtrA(c.control, GCLP_HCURSOR) != reinterpret_cast<LONG_PTR>(LoadCursorA(nullptr, IDC_IBEAM))) return;
    SetFocus(c.control);
    char text[] = "12345678", mask[] = "##-##-##";
    twDrawField(c.control, text, GXDF_ANY, 0);
    MouseButtonDown(c.control, 20, text, mask, 0, 0);
    MouseMove(c.control, 60, text, 0);
    ReleaseCapture();
    DestroyCaret();
}

void StepDestroy(Cycle& c) { DestroyWindow(c.control); }

void (*const kSteps[])(Cycle&) = {StepCreate,  StepSetGetValue, StepValidate,     StepTyping,
                                  StepReconfigure, StepDdeLink, StepDrag, StepScreenReader,
                                  StepPaintAndEditingCore, StepDestroy};

// ---------------------------------------------------------------------------

std::vector<ClassPlan> Plans(const std::string& bitmap, const std::string& strip, const std::string& icon) {
    const std::string server = std::string("@SERVER(FkReconf,Sheet,") + kReconfItem + ")";
    const std::string client = std::string("@CLIENT(FkReconfNone,Sheet,") + kReconfItem + ")NOAUTOSTART";
    const std::string entry = "@MND@RNG(1,100)@MSG(Out of range)@AUTOTAB@LIMIT(10)@DRAGSRC@DROPTARG";
    const std::string table = "@TBL(" + g_table + ")@DISPLAY(1,2)@DLM(,)@KEY(1)";
    const std::vector<Setting> fields = {
        {GXM_SETLIMIT, 1, nullptr, 8}, {GXM_SETLIMIT, 0, nullptr, 0}, {GXM_SETDROPTARGET, 1, nullptr, 0},
        {GXM_SETDROPTARGET, 0, nullptr, 0}};
    const std::vector<Setting> strings = {
        {GXM_MASK, 1, "##-##-##", 0},  {GXM_MASK, 1, "@@??", 0},     {GXM_MASK, 1, nullptr, 0},
        {GXM_EXCLUDE, 1, "xyz", 0},    {GXM_EXCLUDE, 1, "", 0},      {GXM_INCLUDE, 1, "0123456789", 0},
        {GXM_AUTOTAB, 1, nullptr, 1},  {GXM_AUTOTAB, 1, nullptr, 0}, {GXM_AUTOFILL, 1, nullptr, 1},
        {GXM_SETLIMIT, 1, nullptr, 6}, {GXM_SETDROPTARGET, 1, nullptr, 0}};
    const std::vector<Setting> tables = {
        {GXM_SETTABLE, 0, g_table.c_str(), 0}, {GXM_SETDISPLAY, 0, "2,1", 0}, {GXM_SETDELIMITER, 0, ",", 0},
        {GXM_SETTABSTOPS, 0, "10,40", 0},      {GXM_SETCOLWIDTHS, 0, "20,30", 0}, {GXM_SETDISPLAY, 0, "1,2", 0}};
    const std::vector<Setting> tickers = {
        {GXM_TICKER_SETINTERVAL, 50, nullptr, 0}, {GXM_TICKER_STOP, 1, nullptr, 0}, {GXM_TICKER_STOP, 0, nullptr, 0}};
    auto links = [&](const std::string& own) { return std::vector<std::string>{own, own + server, own + client, own + client, own + server}; };
    return {
        {FK_CLASS_STRING, 0, STR_UPPER, links(entry + "@INCLUDE(0123456789)"), strings},
        {FK_CLASS_NUMERIC, NUM_LONG, WS_BORDER, links(entry), fields},
        {FK_CLASS_REAL, REAL_DOUBLE, WS_BORDER, links(entry + "@DECP(2)"), fields},
        {FK_CLASS_BITMAP, 0, BMP_STRETCH, {"@BITMAP(" + bitmap + ")", "@BITMAP(" + bitmap + ")@DROPTARG", "", "@MSG(b)@DRAGSRC"}, {}},
        {FK_CLASS_ICON, 0, WS_BORDER, {"@ICON(" + icon + ")", "@ICON(" + icon + ")@DROPTARG", "", "@ICON(" + icon + ")"}, {}},
        {FK_CLASS_DATE, DATE_MMDDYYYY | DATE_SLASH | DATE_CHAR, WS_BORDER, links("@MND@RNG(01/01/1990,12/31/2030)@DROPTARG"), fields},
        {FK_CLASS_COLOR, 0, WS_BORDER, {"@MSG(colour)", "@PRT", "", "@MSG(again)"}, {}},
        {FK_CLASS_TABLE, 0, WS_BORDER, links(table + "@DRAGSRC"), tables},
        {FK_CLASS_CBTABLE, 0x0003 /* CBS_DROPDOWNLIST */, WS_BORDER, links(table + "@DRAGSRC"), tables},
        {FK_CLASS_TICKER, 0, WS_BORDER, links("@LIMIT(20)"), tickers},
        {FK_CLASS_CURRENCY, CURR_DOUBLE, WS_BORDER, links(entry), fields},
        {FK_CLASS_BUTTON, 0, WS_BORDER, {"@BITMAP(" + strip + ")", "@BITMAP(" + strip + ")@DROPTARG", "@MSG(text only)", "@BITMAP(" + strip + ")"}, {}},
        {FK_CLASS_LINE, GXLINE_HORIZONTAL, WS_BORDER, {"@MSG(line)", "", "@MSG(line)"}, {}},
        {FK_CLASS_TEXT3D, TEXT3D_LIGHTRAISED, TEXT3D_CENTER, links("@DRAGSRC"), {}},
        {FK_CLASS_FRAME3D, FRAME3D_INSET, WS_BORDER, {"@MSG(frame)", "", "@MSG(frame)"}, {}},
    };
}

void RunCycles(const ClassPlan& plan, int cycles) {
    Cycle c{plan};
    for (c.n = 0; c.n < cycles; ++c.n) {
        for (auto step : kSteps) step(c);
        if (c.n % 16 == 15) PumpMessages();
    }
    PumpMessages();
}

// What the system itself keeps per GetClipboardData call, measured with the
// bare API before the soak: Wine 8 keeps one 1 KB block of the process heap
// per call (Windows none). The soak allows exactly that per paste.
double PasteCost(HWND owner) {
    const int kCalls = 64;
    twClipboardCopyText(owner, "calibration", 11);
    const HeapFigures before = MeasureHeap(GetProcessHeap());
    for (int i = 0; i < kCalls && OpenClipboard(owner); ++i) {
        if (HANDLE data = GetClipboardData(CF_TEXT)) GlobalLock(data), GlobalUnlock(data);
        CloseClipboard();
    }
    return std::max(0.0, static_cast<double>(MeasureHeap(GetProcessHeap()).blocks - before.blocks) / kCalls);
}

// One row per class: what differs; true when a figure grew. allowed: the process heap blocks the pastes cost.
bool Report(const char* name, const ResourceFigures& a, const ResourceFigures& b, double allowed) {
    const bool grew = b.windows > a.windows || b.atoms > a.atoms || b.gdiObjects > a.gdiObjects ||
                      b.processHeap.blocks > a.processHeap.blocks + std::lround(allowed) ||
                      b.crtHeap.blocks > a.crtHeap.blocks || !b.allHeapsValid;
    std::printf("%-14s %s  %s (process heap blocks allowed: +%.0f)\n", name, grew ? "GREW" : "flat",
                DescribeGrowth(a, b, true).c_str(), allowed);
    return grew;
}

}  // namespace

int main(int argc, char** argv) {
    const int cycles = argc == 3 && std::string(argv[1]) == "--cycles" ? std::max(1, std::stoi(argv[2])) : 200;
    setvbuf(stdout, nullptr, _IONBF, 0);
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);  // as a reader's host would
    g_table = WriteTable("fk_soak.tbl", "PAR,Paris,FR\r\nROM,Rome,IT\r\nOSL,Oslo,NO\r\n");
    const TempFile bitmap("soak.bmp", Bmp(kQuadW, kQuadH, 4, 0, kQuadColours, Rows(kQuadW, kQuadH, 4, false, Quadrant)));
    const TempFile strip("soak_strip.bmp", Bmp(kQuadW * 4, kQuadH, 24, 0, {}, Rows(kQuadW * 4, kQuadH, 24, false, [](int x, int y) {
                                                  return kQuadColours[Quadrant(x % kQuadW, y)];
                                              })));
    const TempFile icon("soak.ico", Ico({{16, 0x00FF00}, {32, 0x0000FF}}));
    g_parent = CreateTopLevel("FkSoakParent", ParentProc, 400, 200, WS_CLIPCHILDREN);
    const std::vector<ClassPlan> plans = Plans(bitmap.path(), strip.path(), icon.path());
    g_serverWindow = MakeWindow("FkSoakParent", "server", WS_OVERLAPPED, nullptr);
    g_server = MakeWindow(FK_CLASS_STRING, "", WS_CHILD, g_serverWindow);
    SetMethod(g_server, "@SERVER(FkSoak,Prices,Item)");
    g_target = MakeWindow(FK_CLASS_STRING, "", WS_CHILD | WS_VISIBLE, g_parent, 60);
    SetMethod(g_target, "@DROPTARG");
    // A few cycles of every class first: what the system makes once (caches, fonts, the clipboard's windows) is no leak.
    for (const ClassPlan& plan : plans) RunCycles(plan, 16);
    const double pasteCost = PasteCost(g_parent);
    std::printf("soak: %d cycles per class; the system keeps %.2f process-heap blocks per paste\n", cycles, pasteCost);

    const ResourceFigures first = TakeResourceFigures();
    bool grew = false;
    ResourceFigures before = first;  // one snapshot is the after of a class and the before of the next
    for (const ClassPlan& plan : plans) {
        RunCycles(plan, cycles);
        const ResourceFigures after = TakeResourceFigures();
        grew = Report(plan.cls, before, after, pasteCost * cycles) || grew;
        before = after;
    }
    grew = Report("all classes", first, before, pasteCost * cycles * static_cast<double>(plans.size())) || grew;

    DestroyWindow(g_serverWindow);
    DestroyWindow(g_parent);
    PumpMessages();
    twFreeTable(nullptr);
    DeleteFileA(g_table.c_str());
    std::string outlived = twCountAccessibleObjects() != 0 ? " accessible objects" : "";
    for (const char* item : {kAgainItem, kReconfItem})
        if (GlobalFindAtomA(item) != 0) outlived += std::string(" the item atom ") + item;
    grew = grew || !outlived.empty();
    std::printf("outlived their windows and controls:%s\n\n%s\n", outlived.empty() ? " nothing" : outlived.c_str(),
                grew ? "FAILED: a figure grew over the soak" : "flat: every figure ended where it started");
    return grew ? 1 : 0;
}
