// Soak: many create / configure / use / destroy cycles per class, with the
// process's figures (windows, global atoms, GDI objects, heap blocks and
// bytes) taken before and after and printed as a table. Every figure must
// end where it started: a control that leaks one brush, one atom or one
// local block per life shows here as a growth of one per cycle.
//
//   soak_tests.exe [--cycles N] [--class gxName32] [--skip step,step]
//
// Without arguments (the CTest run) it does 200 cycles per class. The exit
// code is 1 when a figure grew or a heap failed validation.
//
// Each cycle runs the steps of kSteps in order, one function per step. To
// add a step when a service lands (DDE link, drag and drop, clipboard
// transfer through the controls), write a function taking the Cycle and put
// it in kSteps; the figures take it into account at once.

#include <windows.h>

#include <dde.h>
#include <oleacc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <vector>

#include "access/accessible.h"
#include "include/fldkit.h"
#include "tests/support/resources.h"

namespace {

// What one cycle works on.
struct Cycle {
    HWND parent;
    const char* cls;
    DWORD style;          // the class's style bits
    const char* method;   // the method string it is configured with
    HWND control = nullptr;
    int n = 0;            // cycle number
};

// The table the table classes and "@TBL" read.
std::string g_table;

// ---------------------------------------------------------------------------
// The steps of one cycle.

void StepCreate(Cycle& c) {
    c.control = CreateWindowExA(0, c.cls, "soak", WS_CHILD | WS_VISIBLE | WS_TABSTOP | c.style, 10, 10, 160, 26,
                                c.parent, reinterpret_cast<HMENU>(101), GetModuleHandleA(nullptr), nullptr);
}

void StepConfigure(Cycle& c) {
    SendMessageA(c.control, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(c.method));
    SendMessageA(c.control, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
    char copy[257] = "";
    SendMessageA(c.control, GXM_GETMETHOD, 256, reinterpret_cast<LPARAM>(copy));
}

// A value of the form each class takes, then read back.
void StepSetGetValue(Cycle& c) {
    char text[32];
    std::snprintf(text, sizeof text, "%d", c.n % 1000);
    SetWindowTextA(c.control, text);
    LONG whole = c.n % 1000;
    double real = c.n / 7.0;
    char buffer[1024] = "";
    const std::string cls = c.cls;
    if (cls == FK_CLASS_NUMERIC) {
        SendMessageA(c.control, GXM_SETVALUE, GXT_LONG, reinterpret_cast<LPARAM>(&whole));
        SendMessageA(c.control, GXM_GETVALUE, GXT_LONG, reinterpret_cast<LPARAM>(buffer));
    } else if (cls == FK_CLASS_REAL || cls == FK_CLASS_CURRENCY) {
        SendMessageA(c.control, GXM_SETVALUE, GXT_DOUBLE, reinterpret_cast<LPARAM>(&real));
        SendMessageA(c.control, GXM_GETVALUE, GXT_DOUBLE, reinterpret_cast<LPARAM>(buffer));
    } else if (cls == FK_CLASS_DATE) {
        SendMessageA(c.control, GXM_SETVALUE, GXT_TEXT, reinterpret_cast<LPARAM>("02032004"));
        SendMessageA(c.control, GXM_GETVALUE, GXT_TEXT, reinterpret_cast<LPARAM>(buffer));
    } else {
        SendMessageA(c.control, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(text));
        SendMessageA(c.control, GXM_GETVALUE, 0, reinterpret_cast<LPARAM>(buffer));
    }
    LONG size = 0;
    SendMessageA(c.control, GXM_GETTYPE, GXT_TEXT, reinterpret_cast<LPARAM>(&size));
    GetWindowTextA(c.control, buffer, sizeof buffer);
}

// The control's own validation, then the engine with a failing value (the
// parent takes the error, so no box comes up) and a table miss.
void StepValidate(Cycle& c) {
    SendMessageA(c.control, GXM_VALIDATE, 0, 0);
    char method[1100];
    lstrcpynA(method, c.method, sizeof method);
    LONG outside = 5000;
    twValidate(c.control, GXT_LONG, &outside, method, nullptr);
    char key[] = "NOT-THERE";
    char tableMethod[400];
    std::snprintf(tableMethod, sizeof tableMethod, "@TBL(%s)@KEY(1)@MSG(Not in the table)", g_table.c_str());
    twValidate(c.control, GXT_TEXT, key, tableMethod, nullptr);
    char found[] = "ROM";
    twValidate(c.control, GXT_TEXT, found, tableMethod, nullptr);
}

// Copy to the clipboard and paste back through the editing core.
void StepClipboard(Cycle& c) {
    char text[40];
    std::snprintf(text, sizeof text, "soak %d", c.n);
    twClipboardCopyText(c.control, text, 39);
    char pasted[160] = "";
    twClipboardPasteText(c.control, pasted, sizeof pasted - 1);
}

// Partners that live for the whole soak (made during the warm-up, before
// the first figures): a DDE server field in a window of its own, which hands
// initiates to its children as a dialog does, and a drop target.
struct Partners {
    HWND serverWindow = nullptr;
    HWND server = nullptr;
    HWND target = nullptr;
};

LRESULT CALLBACK ServerWindowProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_DDE_INITIATE) {
        for (HWND child = GetWindow(h, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
            SendMessageA(child, msg, wp, lp);
        return 0;
    }
    return DefWindowProcA(h, msg, wp, lp);
}

Partners& ThePartners(HWND parent) {
    static Partners p;
    if (p.server != nullptr) return p;
    WNDCLASSA wc{};
    wc.lpfnWndProc = ServerWindowProc;
    wc.hInstance = GetModuleHandleA(nullptr);
    wc.lpszClassName = "FkSoakServer";
    RegisterClassA(&wc);
    p.serverWindow = CreateWindowExA(0, "FkSoakServer", "server", WS_OVERLAPPED, 0, 0, 200, 60, nullptr, nullptr,
                                     GetModuleHandleA(nullptr), nullptr);
    p.server = CreateWindowExA(0, FK_CLASS_STRING, "", WS_CHILD, 0, 0, 150, 24, p.serverWindow, nullptr,
                               GetModuleHandleA(nullptr), nullptr);
    SendMessageA(p.server, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@SERVER(FkSoak,Prices,Item)"));
    p.target = CreateWindowExA(0, FK_CLASS_STRING, "", WS_CHILD | WS_VISIBLE, 10, 60, 150, 24, parent, nullptr,
                               GetModuleHandleA(nullptr), nullptr);
    SendMessageA(p.target, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@DROPTARG"));
    return p;
}

void Pump();

// Keys and characters as a user types them.
void StepTyping(Cycle& c) {
    SetFocus(c.control);
    for (char ch : {'1', '2', 'a', '7'}) SendMessageA(c.control, WM_CHAR, static_cast<unsigned char>(ch), 1);
    for (UINT vk : {VK_LEFT, VK_BACK, VK_END, VK_HOME, VK_DELETE}) SendMessageA(c.control, WM_KEYDOWN, vk, 1);
    // The number fields spin on their scroll bar; leaving a field reformats it.
    for (WPARAM code : {SB_LINEUP, SB_LINEDOWN, SB_THUMBPOSITION}) SendMessageA(c.control, WM_VSCROLL, code, 0);
    SetFocus(c.parent);
}

// The item of the server link the reconfigure step sends: a reference of
// it left behind keeps the atom in the table after the soak.
#define kAgainItem "FkSoakAgainItem"

// Reconfigured while it lives, as applications do: a server link sent
// twice, the setting messages of the fields and tables, a style bit
// switched and switched back, then the control's own method string again.
void StepReconfigure(Cycle& c) {
    const char* server = "@SERVER(FkSoakAgain,Sheet," kAgainItem ")";
    SendMessageA(c.control, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(server));
    SendMessageA(c.control, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(server));
    SendMessageA(c.control, GXM_SETLIMIT, 1, 8);
    SendMessageA(c.control, GXM_SETDROPTARGET, 1, 0);
    if (std::string(c.cls) == FK_CLASS_STRING) {
        SendMessageA(c.control, GXM_MASK, 1, reinterpret_cast<LPARAM>("##-##"));
        SendMessageA(c.control, GXM_EXCLUDE, 1, reinterpret_cast<LPARAM>("xyz"));
        SendMessageA(c.control, GXM_AUTOTAB, 1, 0);
    }
    const char* display = (c.n % 2) ? "2,1" : "1,2";
    SendMessageA(c.control, GXM_SETDISPLAY, 0, reinterpret_cast<LPARAM>(display));
    SendMessageA(c.control, GXM_SETCOLWIDTHS, 0, reinterpret_cast<LPARAM>("20,30"));
    const LONG_PTR style = GetWindowLongPtrA(c.control, GWL_STYLE);
    SetWindowLongPtrA(c.control, GWL_STYLE, style ^ WS_BORDER);
    SetWindowPos(c.control, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_FRAMECHANGED);
    SetWindowLongPtrA(c.control, GWL_STYLE, style);
    SendMessageA(c.control, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(c.method));
}

// The control becomes a client of the server field, which then pushes it
// a value; the link ends when the control is destroyed.
void StepDdeLink(Cycle& c) {
    Partners& p = ThePartners(c.parent);
    SendMessageA(c.control, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@CLIENT(FkSoak,Prices,Item)NOAUTOSTART"));
    char value[16];
    std::snprintf(value, sizeof value, "%d", c.n);
    SendMessageA(p.server, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(value));
    SendMessageA(c.control, GXM_SETVALUE, 0, 0);  // a client refreshes
    Pump();
}

// A drag from the control onto the drop target: the move and the release
// are queued, then the drag starts and its loop takes them.
void StepDrag(Cycle& c) {
    Partners& p = ThePartners(c.parent);
    SendMessageA(c.control, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@DRAGSRC(0)"));
    POINT at{5, 5};
    MapWindowPoints(p.target, c.control, &at, 1);
    twProcessDragDrop(c.control, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 2));
    PostMessageA(c.control, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(at.x, at.y));
    PostMessageA(c.control, WM_LBUTTONUP, 0, MAKELPARAM(at.x, at.y));
    twProcessDragDrop(c.control, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(4, 4));
    for (MSG m; PeekMessageA(&m, nullptr, WM_MOUSEFIRST, WM_MOUSELAST, PM_REMOVE);) {
    }
    ReleaseCapture();
}

// A screen reader asks for the control's object and reads it (its first
// children too), then lets it go; the control's destroy ends the object.
void StepScreenReader(Cycle& c) {
    IAccessible* acc = nullptr;
    if (FAILED(AccessibleObjectFromWindow(c.control, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                          reinterpret_cast<void**>(&acc))) ||
        acc == nullptr)
        return;
    long children = 0;
    acc->get_accChildCount(&children);
    for (long id = 0; id <= std::min(children, 3L); ++id) {
        VARIANT child;
        VariantInit(&child);
        child.vt = VT_I4;
        child.lVal = id;
        VARIANT role, state;
        VariantInit(&role);
        VariantInit(&state);
        acc->get_accRole(child, &role);
        acc->get_accState(child, &state);
        for (auto read : {&IAccessible::get_accName, &IAccessible::get_accValue, &IAccessible::get_accDescription}) {
            BSTR text = nullptr;
            if (SUCCEEDED((acc->*read)(child, &text))) SysFreeString(text);
        }
        VariantClear(&role);
        VariantClear(&state);
    }
    acc->Release();
}

void StepPaint(Cycle& c) {
    InvalidateRect(c.control, nullptr, TRUE);
    UpdateWindow(c.control);
    RedrawWindow(c.control, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_UPDATENOW | RDW_ALLCHILDREN);
}

// The editing core's drawing and mouse selection on the entry fields.
void StepEditingCore(Cycle& c) {
    const std::string cls = c.cls;
    if (cls != FK_CLASS_STRING && cls != FK_CLASS_NUMERIC && cls != FK_CLASS_REAL && cls != FK_CLASS_CURRENCY &&
        cls != FK_CLASS_DATE)
        return;
    SetFocus(c.control);
    char text[] = "12345678";
    char mask[] = "##-##-##";
    twDrawField(c.control, text, GXDF_ANY, 0);
    MouseButtonDown(c.control, 20, text, mask, 0, 0);
    MouseMove(c.control, 60, text, 0);
    ReleaseCapture();
    DestroyCaret();
}

void StepDestroy(Cycle& c) {
    DestroyWindow(c.control);
    c.control = nullptr;
}

struct Step {
    const char* name;
    void (*run)(Cycle&);
};

// The cycle; further steps slot in before StepDestroy.
const Step kSteps[] = {
    {"create", StepCreate},
    {"configure", StepConfigure},
    {"set/get value", StepSetGetValue},
    {"validate", StepValidate},
    {"clipboard", StepClipboard},
    {"typing", StepTyping},
    {"reconfigure", StepReconfigure},
    {"dde link", StepDdeLink},
    {"drag", StepDrag},
    {"screen reader", StepScreenReader},
    {"paint", StepPaint},
    {"editing core", StepEditingCore},
    {"destroy", StepDestroy},
};

// ---------------------------------------------------------------------------

struct ClassPlan {
    const char* cls;
    DWORD style;
    std::string method;
};

std::vector<ClassPlan> Plans() {
    const std::string entry = "@MND@RNG(1,100)@MSG(Out of range)@AUTOTAB@LIMIT(10)";
    const std::string table = "@TBL(" + g_table + ")@DISPLAY(1,2)@DLM(,)@KEY(1)";
    return {
        {FK_CLASS_STRING, 0, entry + "@INCLUDE(0123456789)"},
        {FK_CLASS_NUMERIC, NUM_LONG, entry},
        {FK_CLASS_REAL, REAL_DOUBLE, entry + "@DECP(2)"},
        {FK_CLASS_BITMAP, 0, "@MSG(bitmap)"},
        {FK_CLASS_ICON, 0, "@MSG(icon)"},
        {FK_CLASS_DATE, DATE_MMDDYYYY | DATE_SLASH | DATE_CHAR, "@MND@RNG(01/01/1990,12/31/2030)"},
        {FK_CLASS_COLOR, 0, "@MSG(colour)"},
        {FK_CLASS_TABLE, 0, table},
        {FK_CLASS_CBTABLE, 0x0003 /* CBS_DROPDOWNLIST */, table},
        {FK_CLASS_TICKER, 0, "@MSG(ticker)"},
        {FK_CLASS_CURRENCY, CURR_DOUBLE, entry},
        {FK_CLASS_BUTTON, 0, "@MSG(button)"},
        {FK_CLASS_LINE, GXLINE_HORIZONTAL, "@MSG(line)"},
        {FK_CLASS_TEXT3D, TEXT3D_LIGHTRAISED | TEXT3D_CENTER, "@MSG(text)"},
        {FK_CLASS_FRAME3D, FRAME3D_INSET, "@MSG(frame)"},
    };
}

LRESULT CALLBACK ParentProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    // Errors are taken here: a soak shows no boxes.
    if (msg == GXN_ERROR) return GXR_HANDLED;
    return DefWindowProcA(h, msg, wp, lp);
}

HWND MakeParent() {
    WNDCLASSA wc{};
    wc.lpfnWndProc = ParentProc;
    wc.hInstance = GetModuleHandleA(nullptr);
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    wc.lpszClassName = "FkSoakParent";
    RegisterClassA(&wc);
    return CreateWindowExA(0, "FkSoakParent", "soak", WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, 400,
                           200, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
}

void Pump() {
    MSG m;
    while (PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&m);
        DispatchMessageA(&m);
    }
}

// Steps left out (--skip), to find which one a growth comes from.
std::string g_skip;

bool Skipped(const Step& step) {
    if (step.run == StepCreate || step.run == StepDestroy) return false;
    return ("," + g_skip + ",").find("," + std::string(step.name) + ",") != std::string::npos;
}

void RunCycles(HWND parent, const ClassPlan& plan, int cycles) {
    Cycle c{parent, plan.cls, plan.style, plan.method.c_str()};
    for (int i = 0; i < cycles; ++i) {
        c.n = i;
        for (const Step& step : kSteps)
            if (!Skipped(step)) step.run(c);
        if (i % 16 == 15) Pump();
    }
    Pump();
}

// What the system itself keeps per GetClipboardData call, measured with
// the bare API before the soak: Wine 8 keeps one 1 KB block of the process
// heap per call (Windows none). The soak allows exactly that per paste.
struct PasteCost {
    double blocks = 0;
    double bytes = 0;
};
PasteCost g_pasteCost;

PasteCost MeasurePasteCost(HWND owner) {
    const int kCalls = 64;
    if (OpenClipboard(owner)) {
        EmptyClipboard();
        HGLOBAL g = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, 16);
        lstrcpyA(static_cast<char*>(GlobalLock(g)), "calibration");
        GlobalUnlock(g);
        if (!SetClipboardData(CF_TEXT, g)) GlobalFree(g);
        CloseClipboard();
    }
    const fktest::HeapFigures before = fktest::MeasureHeap(GetProcessHeap());
    for (int i = 0; i < kCalls; ++i) {
        if (!OpenClipboard(owner)) continue;
        if (HANDLE data = GetClipboardData(CF_TEXT)) {
            GlobalLock(data);
            GlobalUnlock(data);
        }
        CloseClipboard();
    }
    const fktest::HeapFigures after = fktest::MeasureHeap(GetProcessHeap());
    PasteCost cost;
    cost.blocks = static_cast<double>(after.blocks - before.blocks) / kCalls;
    cost.bytes = static_cast<double>(after.bytes - before.bytes) / kCalls;
    if (cost.blocks < 0) cost.blocks = 0;
    if (cost.bytes < 0) cost.bytes = 0;
    return cost;
}

// The process-heap blocks the system keeps for pastes of so many cycles.
long Allowed(long cycles) {
    bool pasting = true;
    for (const Step& s : kSteps)
        if (s.run == StepClipboard && Skipped(s)) pasting = false;
    return pasting ? static_cast<long>(g_pasteCost.blocks * static_cast<double>(cycles) + 0.5) : 0;
}

bool Grew(const fktest::ResourceFigures& a, const fktest::ResourceFigures& b, long allowedBlocks) {
    return b.windows > a.windows || b.atoms > a.atoms || b.gdiObjects > a.gdiObjects ||
           b.processHeap.blocks > a.processHeap.blocks + allowedBlocks || b.crtHeap.blocks > a.crtHeap.blocks ||
           !b.allHeapsValid;
}

bool PrintRow(const char* name, const fktest::ResourceFigures& a, const fktest::ResourceFigures& b, double seconds,
              long allowedBlocks) {
    const bool grew = Grew(a, b, allowedBlocks);
    std::printf(
        "%-14s %5ld %5ld | %5ld %5ld | %5ld %5ld | %7ld %7ld %6ld %9ld %9ld | %7ld %7ld %9ld %9ld | %-3s | %7.1f %s\n",
        name, a.windows, b.windows, a.atoms, b.atoms, a.gdiObjects, b.gdiObjects, a.processHeap.blocks,
        b.processHeap.blocks, allowedBlocks, a.processHeap.bytes, b.processHeap.bytes, a.crtHeap.blocks,
        b.crtHeap.blocks, a.crtHeap.bytes, b.crtHeap.bytes, b.allHeapsValid ? "yes" : "NO", seconds,
        grew ? "GREW" : "flat");
    return grew;
}

double Now() { return static_cast<double>(GetTickCount()) / 1000.0; }

}  // namespace

int main(int argc, char** argv) {
    int cycles = 200;
    const char* only = nullptr;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--cycles") == 0 && i + 1 < argc) cycles = std::atoi(argv[++i]);
        else if (std::strcmp(argv[i], "--class") == 0 && i + 1 < argc) only = argv[++i];
        else if (std::strcmp(argv[i], "--skip") == 0 && i + 1 < argc) g_skip = argv[++i];
    }
    if (cycles < 1) cycles = 1;
    setvbuf(stdout, nullptr, _IONBF, 0);
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);  // as a reader's host would

    char dir[MAX_PATH];
    GetTempPathA(MAX_PATH, dir);
    g_table = std::string(dir) + "fk_soak.tbl";
    if (HANDLE f = CreateFileA(g_table.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        f != INVALID_HANDLE_VALUE) {
        const char text[] = "PAR,Paris,FR\r\nROM,Rome,IT\r\nOSL,Oslo,NO\r\n";
        DWORD written;
        WriteFile(f, text, sizeof text - 1, &written, nullptr);
        CloseHandle(f);
    }

    HWND parent = MakeParent();
    const std::vector<ClassPlan> plans = Plans();
    // A few cycles of every class first: what the system makes once
    // (caches, fonts, the clipboard's own windows) is not a leak.
    for (const ClassPlan& plan : plans) RunCycles(parent, plan, 8);

    g_pasteCost = MeasurePasteCost(parent);

    std::printf("soak: %d cycles per class; steps:", cycles);
    for (const Step& s : kSteps)
        if (!Skipped(s)) std::printf(" %s,", s.name);
    std::printf("\nthe system keeps %.2f process-heap blocks (%.0f bytes) per clipboard paste; allowed for below\n",
                g_pasteCost.blocks, g_pasteCost.bytes);
    std::printf("\n%-14s %11s | %11s | %11s | %42s | %35s | %-3s | %7s\n", "", "windows", "atoms", "GDI",
                "process heap: blocks, allowed, bytes", "CRT heap: blocks, bytes", "ok", "seconds");
    std::printf("%-14s %5s %5s | %5s %5s | %5s %5s | %7s %7s %6s %9s %9s | %7s %7s %9s %9s |\n", "class", "befor",
                "after", "befor", "after", "befor", "after", "before", "after", "+", "before", "after", "before",
                "after", "before", "after");

    const fktest::ResourceFigures first = fktest::TakeResourceFigures();
    const double start = Now();
    bool grew = false;
    long done = 0;
    // One snapshot between two classes serves as the after of the one and
    // the before of the next (a snapshot scans all atoms: it is not cheap).
    fktest::ResourceFigures before = first;
    for (const ClassPlan& plan : plans) {
        if (only != nullptr && lstrcmpiA(only, plan.cls) != 0) continue;
        const double t = Now();
        RunCycles(parent, plan, cycles);
        const double seconds = Now() - t;
        const fktest::ResourceFigures after = fktest::TakeResourceFigures();
        grew = PrintRow(plan.cls, before, after, seconds, Allowed(cycles)) || grew;
        before = after;
        done += cycles;
    }
    const fktest::ResourceFigures last = before;
    grew = PrintRow("all classes", first, last, Now() - start, Allowed(done)) || grew;

    DestroyWindow(ThePartners(parent).serverWindow);
    DestroyWindow(parent);
    twFreeTable(nullptr);
    DeleteFileA(g_table.c_str());
    if (const int objects = twCountAccessibleObjects(); objects != 0) {
        std::printf("\n%d accessible object(s) outlived their windows\n", objects);
        grew = true;
    }
    if (GlobalFindAtomA(kAgainItem) != 0) {
        std::printf("\nthe item atom of a reconfigured server is still in the table\n");
        grew = true;
    }
    std::printf("\n%s\n", grew ? "FAILED: a figure grew over the soak" : "flat: every figure ended where it started");
    return grew ? 1 : 0;
}
