#include "tests/support/window.h"

#include <cstring>

namespace fktest {

UniqueWindow MakeParent(WNDPROC proc, int width, int height) {
    static const char* kClass = "FkTestParent";
    WNDPROC want = proc ? proc : DefWindowProcA;
    const char* cls = kClass;
    char custom[64];
    if (want != DefWindowProcA) {
        wsprintfA(custom, "FkTestParent%p", reinterpret_cast<void*>(want));
        cls = custom;
    }
    WNDCLASSA wc{};
    if (!GetClassInfoA(GetModuleHandleA(nullptr), cls, &wc)) {
        wc.lpfnWndProc = want;
        wc.hInstance = GetModuleHandleA(nullptr);
        wc.hCursor = LoadCursorA(nullptr, IDC_ARROW);
        wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
        wc.lpszClassName = cls;
        RegisterClassA(&wc);
    }
    HWND h = CreateWindowExA(0, cls, "FieldKit test", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10, 10, width, height,
                             nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
    return UniqueWindow(h);
}

UniqueWindow MakeChild(HWND parent, const char* cls, DWORD style, int id, int width, int height, const char* text) {
    HWND h = CreateWindowExA(0, cls, text, WS_CHILD | WS_VISIBLE | style, 10, 10, width, height, parent,
                             reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleA(nullptr), nullptr);
    return UniqueWindow(h);
}

void PumpMessages() {
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
}

std::string ClipboardText() {
    std::string out;
    if (!OpenClipboard(nullptr)) return out;
    if (HANDLE h = GetClipboardData(CF_TEXT)) {
        if (const auto* p = static_cast<const char*>(GlobalLock(h))) out.assign(p, strnlen(p, GlobalSize(h)));
        GlobalUnlock(h);
    }
    CloseClipboard();
    return out;
}

}  // namespace fktest
