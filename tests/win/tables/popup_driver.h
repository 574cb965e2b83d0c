// Drives a table popup from a timer while twShowTable runs its loop: finds the list by its window name (the
// table), notes what it shows, then posts the script: virtual keys, or -n-1 to double-click item n. After 5 s
// the popup is destroyed, which cancels it: no wait is unbounded.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "tests/support/files.h"

namespace fktest {

struct PopupDriver {
    PopupDriver(const std::string& name, std::vector<int> script) : name(name), script(std::move(script)) {
        current = this, timer = SetTimer(nullptr, 0, 20, Tick);
    }
    ~PopupDriver() { KillTimer(nullptr, timer), current = nullptr; }

    std::string name;
    std::vector<int> script;
    UINT_PTR timer;
    int ticks = 0, selected = -1;
    HWND popup = nullptr, owner = nullptr;
    RECT rect{};
    std::vector<std::string> items;

    static inline PopupDriver* current = nullptr;
    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
        PopupDriver* d = current;
        HWND list = d ? FindWindowA("ListBox", d->name.c_str()) : nullptr;
        if (list == nullptr || !IsWindowVisible(list)) return;
        if (++d->ticks > 250) DestroyWindow(list);
        else if (list != d->popup) d->Drive(list);
    }
    void Drive(HWND list) {
        popup = list, owner = GetWindow(list, GW_OWNER);
        GetWindowRect(list, &rect);
        selected = static_cast<int>(SendMessageA(list, LB_GETCURSEL, 0, 0));
        for (int i = 0, n = static_cast<int>(SendMessageA(list, LB_GETCOUNT, 0, 0)); i < n; ++i) {
            char text[512] = "";
            if (SendMessageA(list, LB_GETTEXTLEN, i, 0) < 512) SendMessageA(list, LB_GETTEXT, i, (LPARAM)text);
            items.push_back(text);
        }
        for (int key : script) {
            RECT r{};
            if (key >= 0) PostMessageA(list, WM_KEYDOWN, key, 1);
            else if (SendMessageA(list, LB_GETITEMRECT, -key - 1, (LPARAM)&r) != LB_ERR)
                PostMessageA(list, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(r.left + 2, r.top + 2));
        }
    }
};

// The text of a line handle, which it frees; "<none>" for no handle.
inline std::string TakeLine(HGLOBAL g) {
    if (g == nullptr) return "<none>";
    std::string s = static_cast<const char*>(GlobalLock(g));
    GlobalUnlock(g), GlobalFree(g);
    return s;
}

}  // namespace fktest
