// Shared by the link tests: message pumping, window text, the library's
// test hooks and the DDE partner in a second process.
#pragma once

#include <windows.h>

#include <string>

#include "links/hooks.h"

namespace linktest {

// Pumps messages until done() holds or ms pass; true when done.
template <typename F>
bool PumpUntil(F done, DWORD ms = 3000) {
    DWORD start = GetTickCount();
    for (MSG m;;) {
        while (PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&m);
        if (done()) return true;
        if (GetTickCount() - start > ms) return false;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
}
inline void Pump(DWORD ms) { PumpUntil([] { return false; }, ms); }

inline std::string Text(HWND h) {
    char buffer[512] = {};
    return GetWindowTextA(h, buffer, sizeof buffer), buffer;
}

// Installs the library's test hooks for its lifetime.
struct Hooks {
    explicit Hooks(const FkLinkHooks* hooks) : table(*fkSetLinkHooks(hooks)) {}
    ~Hooks() { fkSetLinkHooks(nullptr); }
    const FkLinkHooks& table;
};

// The system's DDE management library as partner: this program started again
// with "--ddeml-server <event prefix>" or "--ddeml-client <expected text>".
inline constexpr char kPeerService[] = "FkPeer", kPeerTopic[] = "PeerTopic", kPeerItem[] = "Value";
inline constexpr char kLibService[] = "FkLibApp", kLibTopic[] = "LibTopic";
HANDLE StartPeer(const std::string& arguments);
// Waits at most ms, pumping messages, and returns the exit code (99: ended by force).
DWORD EndPeer(HANDLE process, DWORD ms);

}  // namespace linktest
