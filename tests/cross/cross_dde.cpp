// A 32-bit and a 64-bit application linked over DDE, both ways: the test
// process (one bitness) is client of a partner's "@SERVER" field and server
// of a partner's "@CLIENT" field, the partner being this program built with
// the other bitness (FK_PEER_EXE). Each is also refused the other's DLL.
// Exit code 77: no partner to run.
#include <windows.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "include/fldkit.h"
#include "tests/support/msgbox_watch.h"
#include "tests/support/pump.h"
#include "tests/support/window.h"

using namespace fktest;

namespace {

constexpr const char* kBits = sizeof(void*) == 8 ? "64-bit" : "32-bit";

// A top-level string field: a DDE initiate reaches top-level windows only.
UniqueWindow Field(const std::string& method) {
    UniqueWindow f(CreateWindowExA(0, FK_CLASS_STRING, "", WS_POPUP | WS_VISIBLE | WS_BORDER, 0, 0, 200, 24, nullptr,
                                   nullptr, GetModuleHandleA(nullptr), nullptr));
    SendMessageA(f, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(method.c_str()));
    return f;
}

std::string Text(HWND h) {
    char t[200] = "";
    GetWindowTextA(h, t, sizeof t);
    return t;
}

HANDLE Event(const std::string& prefix, const char* what) {
    return CreateEventA(nullptr, FALSE, FALSE, (prefix + what).c_str());
}
bool Signalled(HANDLE e) { return WaitForSingleObject(e, 0) == WAIT_OBJECT_0; }

// ---- the partner ---------------------------------------------------------

// "--serve <prefix>": a server field, pushing a new value at each "push"
// event until "quit".
int Serve(const std::string& prefix) {
    HANDLE ready = Event(prefix, "ready"), push = Event(prefix, "push"), quit = Event(prefix, "quit");
    auto server = Field("@SERVER(FkCrossServer,CrossTopic,Value)");
    SetWindowTextA(server, (std::string("hello from ") + kBits).c_str());
    SetEvent(ready);
    for (int n = 1;; ++n) {
        bool pushed = false;
        if (!PumpUntil([&] { return Signalled(quit) || (pushed = Signalled(push)); }, 60000)) return 5;
        if (!pushed) return 0;
        SetWindowTextA(server, (std::to_string(n) + " pushed from " + kBits).c_str());
    }
}

// "--client <prefix> <expected>": a client field of the test's server; 0 once
// it shows the expected text, 6 when it never does, 7 without a link.
int Client(const std::string& prefix, const std::string& expected) {
    HANDLE linked = Event(prefix, "linked");
    auto client = Field("@CLIENT(FkCrossClient,CrossTopic,Value)NOAUTOSTART");
    if (GetPropA(client, "CLIENT") == nullptr) return 7;
    SetEvent(linked);
    return PumpUntil([&] { return Text(client) == expected; }, 30000) ? 0 : 6;
}

// "--load <path>": the DLL of the other bitness is refused by the system:
// 0 when LoadLibraryA fails with ERROR_BAD_EXE_FORMAT, 8 when it loads, 9
// on another error.
int Load(const char* path) {
    HMODULE dll = LoadLibraryA(path);
    if (dll != nullptr) return FreeLibrary(dll), 8;
    return GetLastError() == ERROR_BAD_EXE_FORMAT ? 0 : 9;
}

// ---- the test ------------------------------------------------------------

struct Peer {
    Peer(const std::string& exe, const std::string& arguments) {
        std::string command = "\"" + exe + "\" " + arguments;
        STARTUPINFOA si{sizeof si};
        if (!CreateProcessA(exe.c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &si, &pi))
            pi = {};
    }
    ~Peer() {
        if (pi.hProcess == nullptr) return;
        TerminateProcess(pi.hProcess, 99);
        WaitForSingleObject(pi.hProcess, 5000);
        CloseHandle(pi.hProcess), CloseHandle(pi.hThread);
    }
    DWORD ExitCode(DWORD ms) {  // 99: still running after ms
        DWORD code = 99;
        if (PumpUntil([&] { return WaitForSingleObject(pi.hProcess, 0) == WAIT_OBJECT_0; }, ms))
            GetExitCodeProcess(pi.hProcess, &code);
        return code;
    }
    bool Started() const { return pi.hProcess != nullptr; }
    PROCESS_INFORMATION pi{};
};

const char* PeerExe() { return std::getenv("FK_PEER_EXE"); }

BOOL IsOtherBitness(HANDLE process) {
    BOOL wow = FALSE;
    IsWow64Process(process, &wow);
    BOOL self = FALSE;
    IsWow64Process(GetCurrentProcess(), &self);
    return wow != self;
}

TEST(CrossBitness, ClientOfTheOtherBitnesssServer) {
    MessageBoxWatcher boxes(IDNO);
    const std::string prefix = "FkCrossA" + std::to_string(GetCurrentProcessId());
    HANDLE ready = Event(prefix, "ready"), push = Event(prefix, "push"), quit = Event(prefix, "quit");
    Peer peer(PeerExe(), "--serve " + prefix);
    ASSERT_TRUE(peer.Started());
    EXPECT_TRUE(IsOtherBitness(peer.pi.hProcess)) << "the partner runs with the other bitness";
    ASSERT_TRUE(PumpUntil([&] { return Signalled(ready); }, 30000));
    auto client = Field("@CLIENT(FkCrossServer,CrossTopic,Value)NOAUTOSTART");
    HWND server = static_cast<HWND>(GetPropA(client, "CLIENT"));
    ASSERT_NE(server, nullptr) << "no link to the partner's server";
    DWORD pid = 0;
    GetWindowThreadProcessId(server, &pid);
    EXPECT_EQ(pid, peer.pi.dwProcessId);
    PumpIdle();  // the advise and its acknowledgement
    const std::string other = sizeof(void*) == 8 ? "32-bit" : "64-bit";
    for (int n = 1; n <= 3; ++n) {  // hot updates
        SetEvent(push);
        const std::string want = std::to_string(n) + " pushed from " + other;
        EXPECT_TRUE(PumpUntil([&] { return Text(client) == want; }, 10000)) << Text(client);
    }
    SetWindowTextA(client, "stale");  // a refresh asks the server
    SendMessageA(client, GXM_SETVALUE, 0, 0);
    EXPECT_TRUE(PumpUntil([&] { return Text(client) == "3 pushed from " + other; }, 10000)) << Text(client);
    client.reset();  // unadvise
    SetEvent(quit);
    EXPECT_EQ(peer.ExitCode(20000), 0u);
    EXPECT_TRUE(boxes.boxes().empty());
    for (HANDLE h : {ready, push, quit}) CloseHandle(h);
}

TEST(CrossBitness, ServerOfTheOtherBitnesssClient) {
    MessageBoxWatcher boxes(IDNO);
    const std::string prefix = "FkCrossB" + std::to_string(GetCurrentProcessId());
    HANDLE linked = Event(prefix, "linked");
    auto server = Field("@SERVER(FkCrossClient,CrossTopic,Value)");
    SetWindowTextA(server, "waiting");
    const std::string value = std::string("42 from ") + kBits;
    Peer peer(PeerExe(), "--client " + prefix + " \"" + value + "\"");
    ASSERT_TRUE(peer.Started());
    ASSERT_TRUE(PumpUntil([&] { return Signalled(linked) || WaitForSingleObject(peer.pi.hProcess, 0) == 0; }, 30000));
    EXPECT_NE(GetPropA(server, "SERVER1"), nullptr) << "the partner's client holds the first slot";
    PumpIdle();  // its advise
    SetWindowTextA(server, value.c_str());  // pushed over to the other process
    EXPECT_EQ(peer.ExitCode(30000), 0u) << "6: never showed the value, 7: no link";
    CloseHandle(linked);
}

// Each process is refused the other's DLL, and goes on: the system's answer,
// never a crash.
TEST(CrossBitness, EachBitnessIsRefusedTheOthersDll) {
    std::string here = PeerExe();
    here = here.substr(0, here.find_last_of("/\\") + 1);
    const std::string other = here + (sizeof(void*) == 8 ? "FLDKIT32.dll" : "FLDKIT64.dll");
    char own[MAX_PATH] = "";
    GetModuleFileNameA(GetModuleHandleA(FK_DLL_NAME), own, MAX_PATH);
    ASSERT_NE(GetFileAttributesA(other.c_str()), INVALID_FILE_ATTRIBUTES) << other;
    EXPECT_EQ(Load(other.c_str()), 0) << other;
    EXPECT_NE(GetModuleHandleA(FK_DLL_NAME), nullptr) << "our own DLL stays";
    Peer peer(PeerExe(), std::string("--load \"") + own + "\"");
    ASSERT_TRUE(peer.Started());
    EXPECT_EQ(peer.ExitCode(20000), 0u) << own << ": 8 loaded, 9 another error";
}

}  // namespace

int main(int argc, char** argv) {
    // Nothing here calls into the DLL, so nothing imports it: loading it
    // registers the classes.
    if (LoadLibraryA(FK_DLL_NAME) == nullptr) return 3;
    if (argc >= 3 && std::strcmp(argv[1], "--serve") == 0) return Serve(argv[2]);
    if (argc >= 4 && std::strcmp(argv[1], "--client") == 0) return Client(argv[2], argv[3]);
    if (argc >= 3 && std::strcmp(argv[1], "--load") == 0) return Load(argv[2]);
    const char* peer = PeerExe();
    if (peer == nullptr || GetFileAttributesA(peer) == INVALID_FILE_ATTRIBUTES) {
        std::printf("no partner of the other bitness (FK_PEER_EXE: %s): build the other tree first\n",
                    peer ? peer : "unset");
        return 77;
    }
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
