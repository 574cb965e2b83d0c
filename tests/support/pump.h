// Bounded waits: pumps this thread's messages until a condition holds or the time is up.
#pragma once

#include <windows.h>

#include <string>

namespace fktest {

template <typename F>
bool PumpUntil(F done, DWORD ms = 3000) {  // true when done() came to hold
    for (DWORD start = GetTickCount();; MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT)) {
        for (MSG m; PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE);) DispatchMessageA(&m);
        if (done()) return true;
        if (GetTickCount() - start > ms) return false;
    }
}
// Pumps until this thread's queue is empty: what this thread posted, and what a partner process posted before it
// answered a message sent to it, has been handled. No wall-clock guess, so it holds on slow machines too.
inline bool PumpIdle(DWORD ms = 20000) {
    for (DWORD start = GetTickCount(); GetTickCount() - start <= ms;) {
        MSG m;
        if (!PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE)) return true;
        DispatchMessageA(&m);
    }
    return false;
}

inline std::string WindowText(HWND h) {  // up to 511 characters
    char buffer[512] = {};
    return GetWindowTextA(h, buffer, sizeof buffer), buffer;
}

}  // namespace fktest
