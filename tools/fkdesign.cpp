// The design host: loads FLDKIT32.dll (FLDKIT64.dll when 64-bit) as a dialog editor does (ListClasses,
// then each class's Info), shows the toolbox of the fifteen classes with
// their pictures and descriptions, places one control of each class on a
// sheet at its default size and style, opens a control's style dialog on a
// double click and prints the resource-script CONTROL line of everything on
// the sheet.
//
//   fkdesign.exe              for a user
//   fkdesign.exe --auto DIR   the scripted run of scripts/design.sh: writes
//                             the toolbox, the sheet and one style dialog as
//                             BMP files into DIR, sets a date field's style
//                             through its dialog and prints the lines
//
// It links nothing of the library: everything comes through the DLL's
// class list, as in an editor.

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "include/fldkit.h"
#include "resources/design_ids.h"

namespace {

using ListClassesFn = HGLOBAL(WINAPI*)(LPSTR, UINT, FARPROC, FARPROC);
using InfoFn = HGLOBAL(WINAPI*)();
using StyleFn = BOOL(WINAPI*)(HWND, HGLOBAL, LPFNSTRTOID, LPFNIDTOSTR);
using FlagsFn = UINT(WINAPI*)(DWORD, LPSTR, UINT);

struct ToolClass {
    CTLINFO info;  // with the toolbox pictures, deleted at the end
    StyleFn style;
    FlagsFn flags;
};

struct Placed {  // a control on the sheet, in dialog units
    int tool;
    HWND window;
    UINT id;
    DWORD style;
    std::string text;
    int x, y, cx, cy;
};

std::vector<ToolClass> g_tools;
std::vector<Placed> g_sheet;
HWND g_main, g_toolbox, g_sheetWindow;
HFONT g_font;
int g_baseX = 6, g_baseY = 13;  // dialog base units of g_font
constexpr int kRow = 30, kToolboxWidth = 470;

// The class list holds its entries untyped.
template <typename F>
F Typed(FARPROC entry) {
    return reinterpret_cast<F>(reinterpret_cast<void (*)()>(entry));
}

bool LoadClasses(HMODULE dll) {
    auto list = Typed<ListClassesFn>(GetProcAddress(dll, "ListClasses"));
    HGLOBAL block = list ? list(const_cast<LPSTR>("fkdesign"), 1, nullptr, nullptr) : nullptr;
    if (block == nullptr) return false;
    const auto* classes = static_cast<const CTLCLASSLIST*>(GlobalLock(block));
    for (LONG i = 0; i < classes->nClasses; ++i) {
        const CTLCLASS& c = classes->Classes[i];
        HGLOBAL infoBlock = Typed<InfoFn>(c.lpfnInfo)();
        if (infoBlock == nullptr) continue;
        ToolClass tool{*static_cast<const CTLINFO*>(GlobalLock(infoBlock)), Typed<StyleFn>(c.lpfnStyle),
                       Typed<FlagsFn>(c.lpfnFlags)};
        GlobalUnlock(infoBlock);
        GlobalFree(infoBlock);
        g_tools.push_back(tool);
    }
    GlobalUnlock(block);
    GlobalFree(block);
    return g_tools.size() == 15;
}

// ---- identifiers: the host's names for the controls' numbers ----------

std::string IdName(UINT id) { return id >= 100 && id < 100 + g_tools.size() ? "IDC_" + std::to_string(id) : ""; }

UINT WINAPI IdToStr(UINT id, LPSTR buffer, UINT size) {
    const std::string name = IdName(id);
    if (size == 0 || name.empty()) return 0;
    lstrcpynA(buffer, name.c_str(), size);
    return lstrlenA(buffer);
}

DWORD WINAPI StrToId(LPSTR text) {
    for (const Placed& p : g_sheet)
        if (IdName(p.id) == text) return MAKELONG(1, p.id);
    return 0;
}

// ---- the CONTROL lines ------------------------------------------------

std::string StyleText(const Placed& p) {
    static const struct {
        DWORD bit;
        const char* name;
    } kWindowStyles[] = {{WS_VISIBLE, "WS_VISIBLE"}, {WS_DISABLED, "WS_DISABLED"}, {WS_BORDER, "WS_BORDER"},
                         {WS_VSCROLL, "WS_VSCROLL"}, {WS_HSCROLL, "WS_HSCROLL"},   {WS_GROUP, "WS_GROUP"},
                         {WS_TABSTOP, "WS_TABSTOP"}};
    std::string text = "WS_CHILD";
    for (const auto& s : kWindowStyles)
        if (p.style & s.bit) text += std::string(" | ") + s.name;
    char names[512];
    g_tools[p.tool].flags(p.style, names, sizeof names);
    return text + names;
}

void PrintSheet(const char* heading) {
    std::printf("// %s\n", heading);
    for (const Placed& p : g_sheet)
        std::printf("CONTROL \"%s\", %s, \"%s\", %s, %d, %d, %d, %d\n", p.text.c_str(), IdName(p.id).c_str(),
                    g_tools[p.tool].info.szClass, StyleText(p).c_str(), p.x, p.y, p.cx, p.cy);
    std::fflush(stdout);
}

// ---- the sheet --------------------------------------------------------

void Create(Placed& p) {
    p.window = CreateWindowExA(0, g_tools[p.tool].info.szClass, p.text.c_str(), WS_CHILD | p.style,
                               p.x * g_baseX / 4, p.y * g_baseY / 8, p.cx * g_baseX / 4, p.cy * g_baseY / 8,
                               g_sheetWindow, reinterpret_cast<HMENU>(static_cast<UINT_PTR>(p.id)),
                               GetModuleHandleA(nullptr), nullptr);
    SendMessageA(p.window, WM_SETFONT, reinterpret_cast<WPARAM>(g_font), TRUE);
}

// One control of each class, type 0, in rows of three.
void PlaceEveryClass() {
    for (size_t i = 0; i < g_tools.size(); ++i) {
        const CTLTYPE& type = g_tools[i].info.Type[0];
        Placed p{static_cast<int>(i), nullptr, static_cast<UINT>(100 + i), type.dwStyle, g_tools[i].info.szTitle,
                 8 + static_cast<int>(i % 3) * 112, 8 + static_cast<int>(i / 3) * 68, static_cast<int>(type.wWidth),
                 static_cast<int>(type.wHeight)};
        g_sheet.push_back(p);
        Create(g_sheet.back());
    }
}

// The class's style dialog on the control's record; a changed control is
// made afresh.
void EditStyle(Placed& p) {
    HGLOBAL block = GlobalAlloc(GHND, sizeof(CTLSTYLE));
    auto* r = static_cast<CTLSTYLE*>(GlobalLock(block));
    *r = CTLSTYLE{static_cast<UINT>(p.x), static_cast<UINT>(p.y), static_cast<UINT>(p.cx), static_cast<UINT>(p.cy),
                  p.id, p.style, {}, {}, 0, {}};
    lstrcpynA(r->szClass, g_tools[p.tool].info.szClass, sizeof r->szClass);
    lstrcpynA(r->szTitle, p.text.c_str(), sizeof r->szTitle);
    GlobalUnlock(block);
    if (g_tools[p.tool].style(g_main, block, StrToId, IdToStr)) {
        r = static_cast<CTLSTYLE*>(GlobalLock(block));
        p.style = r->dwStyle, p.id = r->wId, p.text = r->szTitle;
        GlobalUnlock(block);
        DestroyWindow(p.window);
        Create(p);
        PrintSheet("after the style dialog");
    }
    GlobalFree(block);
}

Placed* PlacedAt(HWND window) {
    for (; window != nullptr && GetParent(window) != g_sheetWindow; window = GetParent(window)) {
    }
    for (Placed& p : g_sheet)
        if (p.window == window && window != nullptr) return &p;
    return nullptr;
}

// Controls see double clicks differently (some have no CS_DBLCLKS, some let
// clicks through to the sheet): the host tells them apart by the time.
bool IsDoubleClick(const MSG& m, Placed* p) {
    static Placed* last = nullptr;
    static DWORD lastTime = 0;
    const bool twice = m.message == WM_LBUTTONDBLCLK ||
                       (p == last && m.time - lastTime <= GetDoubleClickTime());
    last = twice ? nullptr : p, lastTime = m.time;
    return twice;
}

LRESULT CALLBACK SheetProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_LBUTTONDBLCLK) {  // on a control that lets clicks through
        POINT pt{LOWORD(lp), HIWORD(lp)};
        if (Placed* p = PlacedAt(ChildWindowFromPointEx(h, pt, CWP_SKIPINVISIBLE))) EditStyle(*p);
        return 0;
    }
    return DefWindowProcA(h, msg, wp, lp);
}

// ---- the toolbox ------------------------------------------------------

void PaintToolbox(HWND h) {
    PAINTSTRUCT ps;
    HDC dc = BeginPaint(h, &ps);
    HDC pictures = CreateCompatibleDC(dc);
    HGDIOBJ oldFont = SelectObject(dc, g_font);
    SetBkMode(dc, TRANSPARENT);
    for (size_t i = 0; i < g_tools.size(); ++i) {
        const CTLINFO& info = g_tools[i].info;
        const int y = static_cast<int>(i) * kRow;
        HGDIOBJ old = SelectObject(pictures, info.Type[0].hToolBit);
        BitBlt(dc, 4, y + 3, 24, 24, pictures, 0, 0, SRCCOPY);
        SelectObject(pictures, old);
        std::string types;
        for (UINT t = 0; t < info.wCtlTypes; ++t) types += (t ? ", " : "") + std::string(info.Type[t].szDescr);
        TextOutA(dc, 34, y + 2, info.szClass, lstrlenA(info.szClass));
        TextOutA(dc, 34, y + 15, types.c_str(), static_cast<int>(types.size()));
    }
    SelectObject(dc, oldFont);
    DeleteDC(pictures);
    EndPaint(h, &ps);
}

LRESULT CALLBACK ToolboxProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_PAINT) return PaintToolbox(h), 0;
    return DefWindowProcA(h, msg, wp, lp);
}

LRESULT CALLBACK MainProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_DESTROY) PostQuitMessage(0);
    if (msg == WM_CTLCOLORSTATIC) return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_BTNFACE));
    return DefWindowProcA(h, msg, wp, lp);
}

void MakeWindows() {
    const struct {
        const char* name;
        WNDPROC proc;
        int colour;
    } classes[] = {{"FkDesignMain", MainProc, COLOR_BTNFACE},
                   {"FkDesignToolbox", ToolboxProc, COLOR_BTNFACE},
                   {"FkDesignSheet", SheetProc, COLOR_BTNFACE}};
    for (const auto& c : classes) {
        WNDCLASSA wc{};
        wc.style = CS_DBLCLKS;
        wc.lpfnWndProc = c.proc;
        wc.hInstance = GetModuleHandleA(nullptr);
        wc.hCursor = LoadCursorA(nullptr, IDC_ARROW);
        wc.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(c.colour + 1));
        wc.lpszClassName = c.name;
        RegisterClassA(&wc);
    }
    // The sheet holds five rows of three (PlaceEveryClass).
    const int sheetWidth = 344 * g_baseX / 4;
    const int height = std::max(static_cast<int>(g_tools.size()) * kRow, 344 * g_baseY / 8) + 8;
    RECT r{0, 0, kToolboxWidth + sheetWidth + 8, height};
    AdjustWindowRect(&r, WS_OVERLAPPEDWINDOW, FALSE);
    g_main = CreateWindowExA(0, "FkDesignMain", "FieldKit design", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_VISIBLE,
                             0, 0, r.right - r.left, r.bottom - r.top, nullptr, nullptr, GetModuleHandleA(nullptr),
                             nullptr);
    g_toolbox = CreateWindowExA(WS_EX_CLIENTEDGE, "FkDesignToolbox", "", WS_CHILD | WS_VISIBLE, 4, 4, kToolboxWidth - 8,
                                height - 8, g_main, nullptr, GetModuleHandleA(nullptr), nullptr);
    g_sheetWindow = CreateWindowExA(WS_EX_CLIENTEDGE, "FkDesignSheet", "", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN,
                                    kToolboxWidth, 4, sheetWidth, height - 8, g_main, nullptr,
                                    GetModuleHandleA(nullptr), nullptr);
}

void MeasureFont() {
    g_font = CreateFontA(-11, 0, 0, 0, FW_NORMAL, 0, 0, 0, ANSI_CHARSET, 0, 0, 0, 0, "MS Shell Dlg");
    HDC dc = GetDC(nullptr);
    HGDIOBJ old = SelectObject(dc, g_font);
    TEXTMETRICA tm;
    SIZE size;
    GetTextMetricsA(dc, &tm);
    GetTextExtentPoint32A(dc, "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz", 52, &size);
    g_baseX = (size.cx / 26 + 1) / 2, g_baseY = tm.tmHeight;
    SelectObject(dc, old);
    ReleaseDC(nullptr, dc);
}

// ---- the scripted run -------------------------------------------------

std::string g_out;

void Pump() {
    for (MSG m; PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE);) DispatchMessageA(&m);
}

// A window as shown (frame included) into DIR\name as a 24-bit BMP.
void SaveWindow(HWND h, const char* name) {
    RedrawWindow(h, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    RECT rc;
    GetWindowRect(h, &rc);
    const int w = rc.right - rc.left, ht = rc.bottom - rc.top;
    HDC screen = GetDC(nullptr);
    HDC mem = CreateCompatibleDC(screen);
    HBITMAP picture = CreateCompatibleBitmap(screen, w, ht);
    HGDIOBJ old = SelectObject(mem, picture);
    BitBlt(mem, 0, 0, w, ht, screen, rc.left, rc.top, SRCCOPY);
    SelectObject(mem, old);
    BITMAPINFOHEADER bi{sizeof bi, w, ht, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
    std::vector<char> bits(((w * 3 + 3) & ~3) * ht);
    GetDIBits(mem, picture, 0, ht, bits.data(), reinterpret_cast<BITMAPINFO*>(&bi), DIB_RGB_COLORS);
    BITMAPFILEHEADER fh{0x4D42, static_cast<DWORD>(sizeof fh + sizeof bi + bits.size()), 0, 0, sizeof fh + sizeof bi};
    const std::string path = g_out + "\\" + name;
    if (FILE* f = std::fopen(path.c_str(), "wb")) {
        std::fwrite(&fh, sizeof fh, 1, f), std::fwrite(&bi, sizeof bi, 1, f);
        std::fwrite(bits.data(), bits.size(), 1, f), std::fclose(f);
        std::printf("// wrote %s\n", path.c_str());
    }
    DeleteObject(picture), DeleteDC(mem), ReleaseDC(nullptr, screen);
}

void Press(HWND dialog, int id) {
    CheckDlgButton(dialog, id, BST_CHECKED);
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
}

// In the date field's dialog: day-month-year with dots, a heavy indent, a
// name for the identifier; the picture, then OK.
void CALLBACK ScriptDateDialog(HWND dialog, UINT, UINT_PTR timer, DWORD) {
    KillTimer(dialog, timer);
    Press(dialog, IDC_FK_STYLE + 4);
    Press(dialog, IDC_FK_STYLE + 7);
    SendDlgItemMessageA(dialog, IDC_FK_BORDER, CB_SETCURSEL, 1, 0);
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDC_FK_BORDER, CBN_SELCHANGE), 0);
    SaveWindow(dialog, "design-style-dialog.bmp");
    PostMessageA(dialog, WM_COMMAND, IDOK, 0);
}

LRESULT CALLBACK DialogHook(int code, WPARAM wp, LPARAM lp) {
    const auto* m = reinterpret_cast<const CWPRETSTRUCT*>(lp);
    if (code == HC_ACTION && m->message == WM_INITDIALOG) SetTimer(m->hwnd, 1, 200, ScriptDateDialog);
    return CallNextHookEx(nullptr, code, wp, lp);
}

void ScriptedRun() {
    Pump();
    SaveWindow(g_main, "design-sheet.bmp");  // the whole window first: it is on the screen by then
    SaveWindow(g_toolbox, "design-toolbox.bmp");
    HHOOK hook = SetWindowsHookExA(WH_CALLWNDPROCRET, DialogHook, nullptr, GetCurrentThreadId());
    for (Placed& p : g_sheet)
        if (lstrcmpA(g_tools[p.tool].info.szClass, "gxDate32") == 0) EditStyle(p);
    UnhookWindowsHookEx(hook);
}

}  // namespace

int main(int argc, char** argv) {
    const bool scripted = argc > 2 && std::string(argv[1]) == "--auto";
    if (scripted) g_out = argv[2];
    HMODULE dll = LoadLibraryA(FK_DLL_NAME);
    if (dll == nullptr || !LoadClasses(dll)) {
        std::printf("%s gave no class list\n", FK_DLL_NAME);
        return 1;
    }
    MeasureFont();
    MakeWindows();
    PlaceEveryClass();
    PrintSheet("one control of each class at its default size and style");
    if (scripted) {
        ScriptedRun();
    } else {
        for (MSG m; GetMessageA(&m, nullptr, 0, 0) > 0;) {
            const bool click = m.message == WM_LBUTTONDOWN || m.message == WM_LBUTTONDBLCLK;
            Placed* p = click ? PlacedAt(m.hwnd) : nullptr;
            if (p != nullptr && IsDoubleClick(m, p)) {
                EditStyle(*p);
                continue;
            }
            TranslateMessage(&m);
            DispatchMessageA(&m);
        }
    }
    DestroyWindow(g_main);
    for (ToolClass& t : g_tools)
        for (UINT i = 0; i < t.info.wCtlTypes; ++i) DeleteObject(t.info.Type[i].hToolBit);
    DeleteObject(g_font);
    return 0;
}
