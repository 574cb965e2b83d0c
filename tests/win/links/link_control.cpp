#include "link_control.h"

#include <cstring>

#include "include/fldkit.h"

namespace linktest {
namespace {

const char kMethodProp[] = "FkTestMethod";

std::string* MethodOf(HWND h) { return static_cast<std::string*>(GetPropA(h, kMethodProp)); }

void CopyMethod(HWND h, char* buffer, size_t size) {
    std::memset(buffer, 0, size);
    if (std::string* m = MethodOf(h)) std::strncpy(buffer, m->c_str(), size - 1);
}

LRESULT CALLBACK LinkProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg >= WM_DDE_FIRST && msg <= WM_DDE_LAST) {
        char method[257];
        CopyMethod(h, method, sizeof method);
        return twProcessDDE(h, msg, wp, lp, method);
    }
    switch (msg) {
    case WM_CREATE: {
        auto* cs = reinterpret_cast<CREATESTRUCTA*>(lp);
        auto* method = new std::string(cs->lpCreateParams ? static_cast<const char*>(cs->lpCreateParams) : "");
        SetPropA(h, kMethodProp, method);
        char copy[1100];
        std::strncpy(copy, method->c_str(), sizeof copy - 3);
        copy[sizeof copy - 3] = 0;
        if (method->find("@CLIENT") != std::string::npos) twInitiateDDE(h, copy);
        if (method->find("@SERVER") != std::string::npos) twInitiateDDE(h, copy);
        return 0;
    }
    case WM_SETTEXT: {
        LRESULT r = DefWindowProcA(h, msg, wp, lp);
        if (GetPropA(h, "SERVER") != nullptr) twProcessDDEData(h, reinterpret_cast<char*>(lp));
        return r;
    }
    case GXM_SETVALUE:
        if (GetPropA(h, "CLIENT") != nullptr) {
            twRequestDDEData(h);
        } else if (lp != 0) {
            SetWindowTextA(h, reinterpret_cast<const char*>(lp));
        }
        return 0;
    case GXM_GETMETHOD:
        if (lp != 0) CopyMethod(h, reinterpret_cast<char*>(lp), 257);
        return 0;
    case WM_DESTROY:
        if (GetPropA(h, "CLIENT") != nullptr || GetPropA(h, "SERVER") != nullptr) twUnadviseDDE(h);
        RemovePropA(h, "CLIENT");
        RemovePropA(h, "SERVER");
        delete MethodOf(h);
        RemovePropA(h, kMethodProp);
        return 0;
    }
    return DefWindowProcA(h, msg, wp, lp);
}

// The dialog hands a DDE initiate, which reaches only top-level windows, to
// each of its controls.
INT_PTR CALLBACK DialogProc(HWND dialog, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_DDE_INITIATE) {
        for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
            SendMessageA(child, WM_DDE_INITIATE, wp, lp);
        }
        return TRUE;
    }
    return FALSE;
}

LRESULT CALLBACK DragProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    auto base = reinterpret_cast<WNDPROC>(GetPropA(h, "FkTestBase"));
    switch (msg) {
    case GXM_GETMETHOD:
        if (lp != 0) CopyMethod(h, reinterpret_cast<char*>(lp), 257);
        return 0;
    case WM_LBUTTONDOWN:
        twProcessDragDrop(h, msg, wp, lp);
        break;
    case WM_MOUSEMOVE:
    case WM_LBUTTONUP:
        if (twProcessDragDrop(h, msg, wp, lp) != 0) return 0;
        break;
    case 0x0D12:
    case 0x0D13:
    case 0x0D14:
        return twProcessDragDrop(h, msg, wp, lp);
    case WM_NCDESTROY: {
        delete MethodOf(h);
        RemovePropA(h, kMethodProp);
        RemovePropA(h, "@DRAGSRC");
        RemovePropA(h, "@WANTDROP");
        RemovePropA(h, "FkTestBase");
        SetWindowLongPtrA(h, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(base));
        break;
    }
    }
    return CallWindowProcA(base, h, msg, wp, lp);
}

void RegisterOnce() {
    static bool done = false;
    if (done) return;
    WNDCLASSA wc{};
    wc.lpfnWndProc = LinkProc;
    wc.hInstance = GetModuleHandleA(nullptr);
    wc.lpszClassName = "FkLinkTest";
    wc.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    RegisterClassA(&wc);
    done = true;
}

}  // namespace

HWND MakeLinkControl(HWND dialog, const char* method, int id) {
    RegisterOnce();
    return CreateWindowExA(0, "FkLinkTest", "", WS_CHILD | WS_VISIBLE, 10, 10 + 30 * (id % 5), 120, 24, dialog,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleA(nullptr),
                           const_cast<char*>(method));
}

fktest::UniqueWindow MakeDialog(int x, int y, int width, int height) {
    // An empty template: a popup with a caption, positions set below.
    struct {
        DLGTEMPLATE t;
        WORD menu, cls, title;
    } tpl{};
    tpl.t.style = WS_POPUP | WS_CAPTION | WS_VISIBLE;
    tpl.t.cdit = 0;
    HWND dialog = CreateDialogIndirectParamA(GetModuleHandleA(nullptr), &tpl.t, nullptr, DialogProc, 0);
    if (dialog) SetWindowPos(dialog, HWND_TOP, x, y, width, height, SWP_SHOWWINDOW);
    return fktest::UniqueWindow(dialog);
}

HWND MakeDragControl(HWND parent, const char* cls, const char* method, DWORD style, int x, int y, int w, int h,
                     int id) {
    HWND c = CreateWindowExA(0, cls, "", WS_CHILD | WS_VISIBLE | style, x, y, w, h, parent,
                             reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleA(nullptr), nullptr);
    if (c == nullptr) return nullptr;
    SetPropA(c, kMethodProp, new std::string(method));
    if (std::strstr(method, "@DROPTARG") != nullptr) SetPropA(c, "@WANTDROP", reinterpret_cast<HANDLE>(5));
    SetPropA(c, "FkTestBase", reinterpret_cast<HANDLE>(GetWindowLongPtrA(c, GWLP_WNDPROC)));
    SetWindowLongPtrA(c, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(DragProc));
    return c;
}

std::string Text(HWND h) {
    char buffer[512] = {};
    GetWindowTextA(h, buffer, sizeof buffer);
    return buffer;
}

HWND PropWindow(HWND h, const char* name) { return static_cast<HWND>(GetPropA(h, name)); }

}  // namespace linktest
