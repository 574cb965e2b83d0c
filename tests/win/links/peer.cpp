// The DDE partner nobody here wrote: the system's DDE management library in
// a second process (this test program started again with a mode argument).

#include "links.h"

#include <ddeml.h>
#include <gtest/gtest.h>

#include <cstring>

namespace linktest {
namespace {

DWORD g_inst;
HSZ g_topic, g_item;
int g_pushes;

HDDEDATA CALLBACK Callback(UINT type, UINT format, HCONV, HSZ topic, HSZ item, HDDEDATA, ULONG_PTR, ULONG_PTR) {
    std::string text = type == XTYP_REQUEST ? "on request" : "pushed " + std::to_string(g_pushes);
    switch (type) {
    case XTYP_CONNECT: return reinterpret_cast<HDDEDATA>(DdeCmpStringHandles(topic, g_topic) == 0);
    case XTYP_ADVSTART:
        return reinterpret_cast<HDDEDATA>(format == CF_TEXT && DdeCmpStringHandles(item, g_item) == 0);
    case XTYP_ADVREQ:
    case XTYP_REQUEST:
        return DdeCreateDataHandle(g_inst, reinterpret_cast<LPBYTE>(text.data()), text.size() + 1, 0, item, CF_TEXT, 0);
    }
    return nullptr;
}

HSZ Name(const char* s) { return DdeCreateStringHandleA(g_inst, s, CP_WINANSI); }

// Serves kPeerItem; each "push" event posts an advise, "quit" ends it.
int Server(const std::string& p) {
    auto open = [&](const char* what) { return OpenEventA(EVENT_ALL_ACCESS, FALSE, (p + what).c_str()); };
    HANDLE ready = open("ready"), events[2] = {open("push"), open("quit")};
    if (!ready || !events[0] || !events[1]) return 2;
    if (DdeInitializeA(&g_inst, Callback, APPCLASS_STANDARD | CBF_SKIP_REGISTRATIONS | CBF_SKIP_UNREGISTRATIONS, 0))
        return 3;
    g_topic = Name(kPeerTopic);
    g_item = Name(kPeerItem);
    if (!DdeNameService(g_inst, Name(kPeerService), nullptr, DNS_REGISTER)) return 4;
    SetEvent(ready);
    DWORD set = WAIT_TIMEOUT;
    while (PumpUntil([&] { return (set = WaitForMultipleObjects(2, events, FALSE, 0)) != WAIT_TIMEOUT; }, 30000) &&
           set == WAIT_OBJECT_0) {
        ++g_pushes;
        DdePostAdvise(g_inst, g_topic, g_item);
    }
    DdeUninitialize(g_inst);
    return 0;
}

// Requests kPeerItem from the library's server: 0 when it is the expected
// text, 5 no connection, 6 no answer, 7 another text.
int Client(const char* expected) {
    if (DdeInitializeA(&g_inst, Callback, APPCMD_CLIENTONLY, 0)) return 3;
    HCONV conv = nullptr;
    for (int i = 0; i < 20 && (conv = DdeConnect(g_inst, Name(kLibService), Name(kLibTopic), nullptr)) == nullptr; ++i)
        Sleep(100);
    if (conv == nullptr) return 5;
    DWORD status = 0;
    HDDEDATA data = DdeClientTransaction(nullptr, 0, conv, Name(kPeerItem), CF_TEXT, XTYP_REQUEST, 5000, &status);
    char text[256] = {};
    if (data == nullptr) return 6;
    DdeGetData(data, reinterpret_cast<LPBYTE>(text), sizeof text - 1, 0);
    // No disconnect: the library acknowledges a terminate, which DDEML would wait for in vain.
    return std::strcmp(text, expected) == 0 ? 0 : 7;
}

}  // namespace

HANDLE StartPeer(const std::string& arguments) {
    char exe[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, exe, MAX_PATH);
    std::string command = std::string("\"") + exe + "\" " + arguments;
    STARTUPINFOA si{sizeof si};
    PROCESS_INFORMATION pi{};
    if (!CreateProcessA(exe, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &si, &pi)) return nullptr;
    CloseHandle(pi.hThread);
    return pi.hProcess;
}

DWORD EndPeer(HANDLE process, DWORD ms) {
    DWORD code = 98;
    if (!PumpUntil([&] { return WaitForSingleObject(process, 0) == WAIT_OBJECT_0; }, ms)) TerminateProcess(process, 99);
    WaitForSingleObject(process, 5000);
    GetExitCodeProcess(process, &code);
    CloseHandle(process);
    return code;
}

}  // namespace linktest

int main(int argc, char** argv) {
    if (argc >= 3 && std::strcmp(argv[1], "--ddeml-server") == 0) return linktest::Server(argv[2]);
    if (argc >= 3 && std::strcmp(argv[1], "--ddeml-client") == 0) return linktest::Client(argv[2]);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
