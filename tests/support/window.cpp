#include "tests/support/window.h"

#include <cstring>

namespace fktest {

HWND CreateTopLevel(const char* cls, WNDPROC proc, int width, int height, DWORD style, void* param) {
    WNDCLASSA wc{};
    if (!GetClassInfoA(GetModuleHandleA(nullptr), cls, &wc)) {
        wc.lpfnWndProc = proc;
        wc.hInstance = GetModuleHandleA(nullptr);
        wc.hCursor = LoadCursorA(nullptr, IDC_ARROW);
        wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
        wc.lpszClassName = cls;
        RegisterClassA(&wc);
    }
    return CreateWindowExA(0, cls, "FieldKit test", WS_OVERLAPPEDWINDOW | WS_VISIBLE | style, 10, 10, width, height,
                           nullptr, nullptr, GetModuleHandleA(nullptr), param);
}

UniqueWindow MakeParent(WNDPROC proc, int width, int height) {
    char cls[64] = "FkTestParent";
    if (proc && proc != DefWindowProcA) wsprintfA(cls, "FkTestParent%p", reinterpret_cast<void*>(proc));
    return UniqueWindow(CreateTopLevel(cls, proc ? proc : DefWindowProcA, width, height));
}

UniqueWindow MakeChild(HWND parent, const char* cls, DWORD style, int id, int width, int height, const char* text) {
    return UniqueWindow(CreateWindowExA(0, cls, text, WS_CHILD | WS_VISIBLE | style, 10, 10, width, height, parent,
                                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleA(nullptr),
                                        nullptr));
}

void PumpMessages() {
    for (MSG msg; PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE); DispatchMessageA(&msg)) TranslateMessage(&msg);
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
