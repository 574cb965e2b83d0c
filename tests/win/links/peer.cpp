#include "peer.h"

#include <ddeml.h>

#include <cstdio>
#include <cstring>

namespace linktest {
namespace {

DWORD g_inst;
HSZ g_topic, g_item;
int g_pushes;

HDDEDATA TextData(const char* text, HSZ item) {
    return DdeCreateDataHandle(g_inst, reinterpret_cast<LPBYTE>(const_cast<char*>(text)),
                               static_cast<DWORD>(std::strlen(text) + 1), 0, item, CF_TEXT, 0);
}

HDDEDATA CALLBACK ServerCallback(UINT type, UINT format, HCONV, HSZ topic, HSZ item, HDDEDATA, ULONG_PTR, ULONG_PTR) {
    switch (type) {
    case XTYP_CONNECT:
        return reinterpret_cast<HDDEDATA>(DdeCmpStringHandles(topic, g_topic) == 0);
    case XTYP_ADVSTART:
        return reinterpret_cast<HDDEDATA>(format == CF_TEXT && DdeCmpStringHandles(item, g_item) == 0);
    case XTYP_ADVREQ: {
        char text[32];
        std::snprintf(text, sizeof text, "pushed %d", g_pushes);
        return TextData(text, item);
    }
    case XTYP_REQUEST:
        return TextData("on request", item);
    }
    return nullptr;
}

HDDEDATA CALLBACK ClientCallback(UINT, UINT, HCONV, HSZ, HSZ, HDDEDATA, ULONG_PTR, ULONG_PTR) { return nullptr; }

// Pumps messages until one of the events is set or ms pass; returns its
// index, or -1.
int PumpFor(HANDLE* events, DWORD count, DWORD ms) {
    DWORD start = GetTickCount();
    for (;;) {
        DWORD left = ms - (GetTickCount() - start);
        if (static_cast<int>(left) <= 0) return -1;
        DWORD r = MsgWaitForMultipleObjects(count, events, FALSE, left, QS_ALLINPUT);
        if (r < WAIT_OBJECT_0 + count) return static_cast<int>(r - WAIT_OBJECT_0);
        MSG m;
        while (PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&m);
            DispatchMessageA(&m);
        }
    }
}

int Server(const char* prefix) {
    std::string p = prefix;
    HANDLE ready = OpenEventA(EVENT_ALL_ACCESS, FALSE, (p + "ready").c_str());
    HANDLE events[2] = {OpenEventA(EVENT_ALL_ACCESS, FALSE, (p + "push").c_str()),
                        OpenEventA(EVENT_ALL_ACCESS, FALSE, (p + "quit").c_str())};
    if (!ready || !events[0] || !events[1]) return 2;
    if (DdeInitializeA(&g_inst, ServerCallback, APPCLASS_STANDARD | CBF_SKIP_REGISTRATIONS | CBF_SKIP_UNREGISTRATIONS, 0) !=
        DMLERR_NO_ERROR)
        return 3;
    HSZ service = DdeCreateStringHandleA(g_inst, kPeerService, CP_WINANSI);
    g_topic = DdeCreateStringHandleA(g_inst, kPeerTopic, CP_WINANSI);
    g_item = DdeCreateStringHandleA(g_inst, kPeerItem, CP_WINANSI);
    if (!DdeNameService(g_inst, service, nullptr, DNS_REGISTER)) return 4;
    SetEvent(ready);
    for (;;) {
        int e = PumpFor(events, 2, 30000);
        if (e != 0) break;  // quit, or the time is up
        ++g_pushes;
        DdePostAdvise(g_inst, g_topic, g_item);
    }
    DdeNameService(g_inst, service, nullptr, DNS_UNREGISTER);
    DdeUninitialize(g_inst);
    return 0;
}

int Client(const char* resultFile) {
    if (DdeInitializeA(&g_inst, ClientCallback, APPCMD_CLIENTONLY, 0) != DMLERR_NO_ERROR) return 3;
    HSZ service = DdeCreateStringHandleA(g_inst, kLibService, CP_WINANSI);
    HSZ topic = DdeCreateStringHandleA(g_inst, kLibTopic, CP_WINANSI);
    HSZ item = DdeCreateStringHandleA(g_inst, kPeerItem, CP_WINANSI);
    std::string result = "connect failed";
    HCONV conv = nullptr;
    for (int i = 0; i < 20 && conv == nullptr; ++i) {
        conv = DdeConnect(g_inst, service, topic, nullptr);
        if (conv == nullptr) Sleep(100);
    }
    if (conv != nullptr) {
        DWORD status = 0;
        HDDEDATA data = DdeClientTransaction(nullptr, 0, conv, item, CF_TEXT, XTYP_REQUEST, 5000, &status);
        if (data != nullptr) {
            char text[256] = {};
            DdeGetData(data, reinterpret_cast<LPBYTE>(text), sizeof text - 1, 0);
            result = std::string("data:") + text;
            DdeFreeDataHandle(data);
        } else {
            result = "request failed " + std::to_string(DdeGetLastError(g_inst));
        }
    }
    if (FILE* f = std::fopen(resultFile, "wb")) {
        std::fputs(result.c_str(), f);
        std::fclose(f);
    }
    // The conversation is left to end with the process: the library's
    // server answers a terminate with an acknowledgement, which the DDE
    // library would wait for in vain.
    return 0;
}

}  // namespace

bool RunPeer(int argc, char** argv, int* exitCode) {
    if (argc < 3) return false;
    if (std::strcmp(argv[1], "--ddeml-server") == 0) {
        *exitCode = Server(argv[2]);
        return true;
    }
    if (std::strcmp(argv[1], "--ddeml-client") == 0) {
        *exitCode = Client(argv[2]);
        return true;
    }
    return false;
}

PeerProcess::PeerProcess(const std::string& arguments) {
    char exe[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, exe, MAX_PATH);
    std::string command = std::string("\"") + exe + "\" " + arguments;
    STARTUPINFOA si{};
    si.cb = sizeof si;
    if (!CreateProcessA(exe, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &si, &pi_)) pi_ = {};
}

PeerProcess::~PeerProcess() {
    if (pi_.hProcess == nullptr) return;
    if (!Wait(5000)) TerminateProcess(pi_.hProcess, 99);
    CloseHandle(pi_.hProcess);
    CloseHandle(pi_.hThread);
}

bool PeerProcess::Wait(DWORD ms) {
    if (pi_.hProcess == nullptr) return true;
    return PumpFor(&pi_.hProcess, 1, ms) == 0;
}

DWORD PeerProcess::exitCode() const {
    DWORD code = 0;
    if (pi_.hProcess) GetExitCodeProcess(pi_.hProcess, &code);
    return code;
}

std::string EventName(const char* what) { return "FkLinkPeer" + std::to_string(GetCurrentProcessId()) + what; }

}  // namespace linktest
