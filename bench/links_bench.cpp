// Prints how long the link services take on this machine: a value pushed by
// a server control until a linked client control in another dialog shows
// it, and a client's refresh request answered by its server. Figures only;
// nothing here passes or fails on speed.

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "include/fldkit.h"

namespace {

LRESULT CALLBACK ControlProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg >= WM_DDE_FIRST && msg <= WM_DDE_LAST) {
        char method[257] = {};
        lstrcpynA(method, static_cast<const char*>(GetPropA(h, "BenchMethod")), sizeof method);
        return twProcessDDE(h, msg, wp, lp, method);
    }
    switch (msg) {
    case WM_CREATE: {
        auto* cs = reinterpret_cast<CREATESTRUCTA*>(lp);
        SetPropA(h, "BenchMethod", cs->lpCreateParams);
        char copy[300] = {};
        lstrcpynA(copy, static_cast<const char*>(cs->lpCreateParams), 256);
        twInitiateDDE(h, copy);
        return 0;
    }
    case WM_SETTEXT: {
        LRESULT r = DefWindowProcA(h, msg, wp, lp);
        if (GetPropA(h, "SERVER")) twProcessDDEData(h, reinterpret_cast<char*>(lp));
        return r;
    }
    case GXM_SETVALUE:
        if (GetPropA(h, "CLIENT")) twRequestDDEData(h);
        return 0;
    case WM_DESTROY:
        if (GetPropA(h, "CLIENT") || GetPropA(h, "SERVER")) twUnadviseDDE(h);
        RemovePropA(h, "CLIENT");
        RemovePropA(h, "SERVER");
        RemovePropA(h, "BenchMethod");
        return 0;
    }
    return DefWindowProcA(h, msg, wp, lp);
}

// The host hands a DDE initiate to its controls.
LRESULT CALLBACK HostProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_DDE_INITIATE) {
        for (HWND c = GetWindow(h, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) SendMessageA(c, msg, wp, lp);
        return 0;
    }
    return DefWindowProcA(h, msg, wp, lp);
}

HWND Make(const char* cls, HWND parent, const char* method) {
    DWORD style = parent ? WS_CHILD | WS_VISIBLE : WS_POPUP | WS_VISIBLE;
    return CreateWindowExA(0, cls, "", style, 0, 0, 200, 100, parent, nullptr, GetModuleHandleA(nullptr),
                           const_cast<char*>(method));
}

double Now() {
    LARGE_INTEGER c, f;
    QueryPerformanceCounter(&c);
    QueryPerformanceFrequency(&f);
    return 1000.0 * static_cast<double>(c.QuadPart) / static_cast<double>(f.QuadPart);
}

// Pumps until the window shows text (at most 2 s); the time taken in ms, or -1.
double Until(HWND h, const std::string& text, double start) {
    MSG m;
    char got[64];
    while (Now() - start < 2000) {
        while (PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&m);
        GetWindowTextA(h, got, sizeof got);
        if (text == got) return Now() - start;
    }
    return -1;
}

// Pumps until every window shows text (at most 2 s); the time taken in ms, or -1.
double UntilAll(const std::vector<HWND>& windows, const std::string& text, double start) {
    MSG m;
    char got[64];
    while (Now() - start < 2000) {
        while (PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&m);
        bool all = true;
        for (HWND h : windows) all = all && GetWindowTextA(h, got, sizeof got) > 0 && text == got;
        if (all) return Now() - start;
    }
    return -1;
}

void Report(const char* what, std::vector<double> v) {
    std::sort(v.begin(), v.end());
    std::printf("%-44s median %.3f ms, best %.3f ms, worst %.3f ms (%zu runs)\n", what, v[v.size() / 2], v.front(),
                v.back(), v.size());
}

}  // namespace

int main() {
    WNDCLASSA wc{};
    wc.hInstance = GetModuleHandleA(nullptr);
    wc.lpfnWndProc = ControlProc;
    wc.lpszClassName = "BenchControl";
    RegisterClassA(&wc);
    wc.lpfnWndProc = HostProc;
    wc.lpszClassName = "BenchHost";
    RegisterClassA(&wc);

    HWND serverHost = Make("BenchHost", nullptr, "");
    HWND server = Make("BenchControl", serverHost, "@SERVER(BenchApp,BenchTopic,Value)");
    HWND clientHost = Make("BenchHost", nullptr, "");
    HWND client = Make("BenchControl", clientHost, "@CLIENT(BenchApp,BenchTopic,Value)NOAUTOSTART");
    if (GetPropA(client, "CLIENT") != server) {
        std::printf("the controls did not link\n");
        return 1;
    }

    std::vector<double> push, request;
    for (int i = 0; i < 200; ++i) {
        std::string value = "v" + std::to_string(i);
        double t = Now();
        SetWindowTextA(server, value.c_str());
        push.push_back(Until(client, value, t));
        DefWindowProcA(client, WM_SETTEXT, 0, reinterpret_cast<LPARAM>("stale"));
        t = Now();
        SendMessageA(client, GXM_SETVALUE, 0, 0);
        request.push_back(Until(client, value, t));
    }
    Report("push from server to linked client:", push);
    Report("client refresh request answered:", request);

    // Five clients, the most a server pushes to: the link service's own
    // share of a push (the controls here do not paint; an entry field adds
    // its repaint, which the fields benchmark shows).
    std::vector<HWND> clients{client};
    for (int i = 1; i < 5; ++i)
        clients.push_back(Make("BenchControl", clientHost, "@CLIENT(BenchApp,BenchTopic,Value)NOAUTOSTART"));
    std::vector<double> five;
    for (int i = 0; i < 200; ++i) {
        std::string value = "five " + std::to_string(i);
        double t = Now();
        SetWindowTextA(server, value.c_str());
        five.push_back(UntilAll(clients, value, t));
    }
    Report("push from server to five linked clients:", five);
    DestroyWindow(clientHost);
    DestroyWindow(serverHost);
    return 0;
}
