// Test stand-ins for the controls that take part in links: a small window
// class that does for DDE exactly what a library control does, a modeless
// dialog whose procedure hands WM_DDE_INITIATE to its children, and system
// "edit"/"listbox" controls subclassed for drag and drop.
#pragma once

#include <windows.h>

#include <string>

#include "links/hooks.h"
#include "tests/support/window.h"

namespace linktest {

// Class "FkLinkTest": the method string is given at creation; the control
// calls twInitiateDDE for "@CLIENT" and again for "@SERVER", routes the DDE
// messages, pushes its text on WM_SETTEXT when it is a server, refreshes on
// GXM_SETVALUE when it is a client, and closes its links in WM_DESTROY.
HWND MakeLinkControl(HWND dialog, const char* method, int id = 100);

// A visible modeless dialog (no template controls) at the given position.
fktest::UniqueWindow MakeDialog(int x = 0, int y = 0, int width = 300, int height = 200);

// An "edit" or "listbox" child subclassed to route the mouse messages and
// 0x0D12-0x0D14 to twProcessDragDrop and to answer 0x0D04 with method.
// "@WANTDROP" is set when the method holds "@DROPTARG".
HWND MakeDragControl(HWND parent, const char* cls, const char* method, DWORD style, int x, int y, int w, int h,
                     int id);

// Pumps messages until done() holds or the time runs out; true when done.
template <typename F>
bool PumpUntil(F done, DWORD ms = 3000) {
    DWORD start = GetTickCount();
    MSG m;
    for (;;) {
        while (PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&m);
            DispatchMessageA(&m);
        }
        if (done()) return true;
        if (GetTickCount() - start > ms) return false;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
}

std::string Text(HWND h);
HWND PropWindow(HWND h, const char* name);

// The library's test hooks: installs the given table for the life of the
// object and restores the system calls afterwards.
class Hooks {
public:
    explicit Hooks(const FkLinkHooks& table) { current_ = fkSetLinkHooks(&table); }
    Hooks() { current_ = fkSetLinkHooks(nullptr); }
    ~Hooks() { fkSetLinkHooks(nullptr); }
    const FkLinkHooks& table() const { return *current_; }

private:
    const FkLinkHooks* current_;
};

}  // namespace linktest
