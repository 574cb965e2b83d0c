// A 32-bit and a 64-bit application linked over DDE, both ways: the test process (one bitness) is client of a
// partner's "@SERVER" field and server of the partner's "@CLIENT" field, the partner being this program built with
// the other bitness (FK_PEER_EXE). Each is also refused the other's DLL. Exit code 77: no partner to run.
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

const std::string kBits = sizeof(void*) == 8 ? "64-bit" : "32-bit", kOther = sizeof(void*) == 8 ? "32-bit" : "64-bit";

// A top-level string field: a DDE initiate reaches top-level windows only.
UniqueWindow Field(const std::string& method, const std::string& text = "") {
    UniqueWindow f(CreateWindowExA(0, FK_CLASS_STRING, text.c_str(), WS_POPUP | WS_VISIBLE | WS_BORDER, 0, 0, 200, 24,
                                   nullptr, nullptr, GetModuleHandleA(nullptr), nullptr));
    SendMessageA(f, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(method.c_str()));
    return f;
}
HANDLE Event(const std::string& name) { return CreateEventA(nullptr, FALSE, FALSE, name.c_str()); }
bool Signalled(HANDLE e) { return WaitForSingleObject(e, 0) == WAIT_OBJECT_0; }

// "--partner <prefix> <the test's DLL>": refused the test's DLL (8 when it loads, 9 on another error than
// ERROR_BAD_EXE_FORMAT), serves a new value at each "push" event, sets "seen" once its client field of the test's
// server shows the test's value, and exits with 0 at "quit" (5: never told, 7: its client has no link).
int Partner(const std::string& prefix, const char* testDll) {
    if (HMODULE dll = LoadLibraryA(testDll)) return FreeLibrary(dll), 8;
    if (GetLastError() != ERROR_BAD_EXE_FORMAT) return 9;
    HANDLE ready = Event(prefix + "ready"), push = Event(prefix + "push"), seen = Event(prefix + "seen");
    HANDLE quit = Event(prefix + "quit");
    auto server = Field("@SERVER(FkCrossServer,CrossTopic,Value)");
    auto client = Field("@CLIENT(FkCrossClient,CrossTopic,Value)NOAUTOSTART");
    if (GetPropA(client, "CLIENT") == nullptr) return 7;
    SetEvent(ready);
    for (int n = 1;; ++n) {
        bool pushed = false;
        if (!PumpUntil(
                [&] {
                    if (WindowText(client) == "42 from " + kOther) SetEvent(seen);
                    return Signalled(quit) || (pushed = Signalled(push));
                },
                60000))
            return 5;
        if (!pushed) return 0;
        SetWindowTextA(server, (std::to_string(n) + " pushed from " + kBits).c_str());
    }
}

const char* PeerExe() { return std::getenv("FK_PEER_EXE"); }

TEST(CrossBitness, FieldsLinkBothWaysAndEachBitnessIsRefusedTheOthersDll) {
    MessageBoxWatcher boxes(IDNO);
    std::string dir = PeerExe(), prefix = "FkCross" + std::to_string(GetCurrentProcessId());
    dir = dir.substr(0, dir.find_last_of("/\\") + 1);
    EXPECT_EQ(LoadLibraryA((dir + (sizeof(void*) == 8 ? "FLDKIT32.dll" : "FLDKIT64.dll")).c_str()), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_BAD_EXE_FORMAT));
    char own[MAX_PATH] = "";
    GetModuleFileNameA(GetModuleHandleA(FK_DLL_NAME), own, MAX_PATH);
    HANDLE ready = Event(prefix + "ready"), push = Event(prefix + "push"), seen = Event(prefix + "seen");
    HANDLE quit = Event(prefix + "quit");
    auto server = Field("@SERVER(FkCrossClient,CrossTopic,Value)", "waiting");
    std::string command = "\"" + std::string(PeerExe()) + "\" --partner " + prefix + " \"" + own + "\"";
    STARTUPINFOA si{sizeof si};
    PROCESS_INFORMATION peer{};
    ASSERT_TRUE(CreateProcessA(PeerExe(), command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &si, &peer));
    BOOL wow = FALSE, ownWow = FALSE;
    IsWow64Process(peer.hProcess, &wow), IsWow64Process(GetCurrentProcess(), &ownWow);
    EXPECT_NE(wow, ownWow) << "the partner runs with the other bitness";
    EXPECT_TRUE(PumpUntil([&] { return Signalled(ready) || WaitForSingleObject(peer.hProcess, 0) == 0; }, 30000));
    EXPECT_NE(GetPropA(server, "SERVER1"), nullptr) << "the partner's client holds the first slot";
    auto client = Field("@CLIENT(FkCrossServer,CrossTopic,Value)NOAUTOSTART");
    DWORD pid = 0;
    GetWindowThreadProcessId(static_cast<HWND>(GetPropA(client, "CLIENT")), &pid);
    EXPECT_EQ(pid, peer.dwProcessId) << "a link to the partner's server";
    PumpIdle();  // the advises and their acknowledgements
    SetWindowTextA(server, ("42 from " + kBits).c_str());  // pushed over to the other process
    EXPECT_TRUE(PumpUntil([&] { return Signalled(seen); }, 10000));
    for (int n = 1; n <= 3; ++n) {  // hot updates
        SetEvent(push);
        const std::string want = std::to_string(n) + " pushed from " + kOther;
        EXPECT_TRUE(PumpUntil([&] { return WindowText(client) == want; }, 10000)) << WindowText(client);
    }
    SetWindowTextA(client, "stale");  // a refresh asks the server
    SendMessageA(client, GXM_SETVALUE, 0, 0);
    EXPECT_TRUE(PumpUntil([&] { return WindowText(client) == "3 pushed from " + kOther; }, 10000));
    client.reset();  // unadvise
    SetEvent(quit);
    DWORD code = 99;  // 99: still running, ended by force
    if (PumpUntil([&] { return WaitForSingleObject(peer.hProcess, 0) == WAIT_OBJECT_0; }, 20000))
        GetExitCodeProcess(peer.hProcess, &code);
    TerminateProcess(peer.hProcess, 99), CloseHandle(peer.hProcess), CloseHandle(peer.hThread);
    EXPECT_EQ(code, 0u) << "5: never told, 7: no link, 8: our DLL loaded there, 9: another error";
    EXPECT_TRUE(boxes.boxes().empty());
    for (HANDLE h : {ready, push, seen, quit}) CloseHandle(h);
}

}  // namespace

int main(int argc, char** argv) {
    // Nothing here calls into the DLL, so nothing imports it: loading it registers the classes.
    if (LoadLibraryA(FK_DLL_NAME) == nullptr) return 3;
    if (argc >= 4 && std::strcmp(argv[1], "--partner") == 0) return Partner(argv[2], argv[3]);
    const char* peer = PeerExe();
    if (peer == nullptr || GetFileAttributesA(peer) == INVALID_FILE_ATTRIBUTES) {
        std::printf("no partner of the other bitness (FK_PEER_EXE: %s): build the other tree first\n",
                    peer ? peer : "unset");
        return 77;
    }
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
