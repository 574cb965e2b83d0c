// A 32-bit and a 64-bit application linked over DDE, both ways: the test process (one bitness) is server of the
// partner's "@CLIENT" field and client of the partner's "@SERVER" field, the partner being this program built with
// the other bitness (FK_PEER_EXE), which hands each value it is pushed back through its server, and is refused the
// test's DLL. Exit code 77: no partner to run.
#include <windows.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "include/fldkit.h"
#include "tests/support/self_process.h"
#include "tests/support/window.h"

using namespace fktest;

namespace {

const std::string kBits = sizeof(void*) == 8 ? "64-bit" : "32-bit", kOther = sizeof(void*) == 8 ? "32-bit" : "64-bit";

// A top-level string field: a DDE initiate reaches top-level windows only.
UniqueWindow Field(const std::string& method) {
    UniqueWindow f(CreateWindowExA(0, FK_CLASS_STRING, "", WS_POPUP | WS_VISIBLE | WS_BORDER, 0, 0, 200, 24, nullptr,
                                   nullptr, GetModuleHandleA(nullptr), nullptr));
    SendMessageA(f, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(method.c_str()));
    return f;
}

// "--partner <the test's DLL>": refused the test's DLL (8 when it loads, 9 on another error than
// ERROR_BAD_EXE_FORMAT), it serves each value its client field is pushed with " via <bitness>" added, and exits with
// 0 when pushed "quit" (5: nothing new for a minute, 7: its client has no link).
int Partner(const char* testDll) {
    if (HMODULE dll = LoadLibraryA(testDll)) return FreeLibrary(dll), 8;
    if (GetLastError() != ERROR_BAD_EXE_FORMAT) return 9;
    auto server = Field("@SERVER(FkCrossServer,CrossTopic,Value)");
    auto client = Field("@CLIENT(FkCrossClient,CrossTopic,Value)NOAUTOSTART");
    if (GetPropA(client, "CLIENT") == nullptr) return 7;
    for (std::string seen;;) {
        if (!PumpUntil([&] { return WindowText(client) != seen; }, 60000)) return 5;
        seen = WindowText(client);
        if (seen == "quit") return 0;
        SetWindowTextA(server, (seen + " via " + kBits).c_str());
    }
}

TEST(CrossBitness, FieldsLinkBothWaysAndThePartnerIsRefusedOurDll) {
    char own[MAX_PATH] = "";
    GetModuleFileNameA(GetModuleHandleA(FK_DLL_NAME), own, MAX_PATH);
    auto server = Field("@SERVER(FkCrossClient,CrossTopic,Value)");
    SelfProcess partner("--partner \"" + std::string(own) + "\"", std::getenv("FK_PEER_EXE"));
    ASSERT_NE(partner.pi.hProcess, nullptr);
    EXPECT_TRUE(PumpUntil([&] { return GetPropA(server, "SERVER1") != nullptr; }, 30000)) << "the partner's client";
    auto client = Field("@CLIENT(FkCrossServer,CrossTopic,Value)NOAUTOSTART");
    PumpIdle();  // the advises and their acknowledgements
    for (int n = 1; n <= 3; ++n) {  // hot updates, over and back
        SetWindowTextA(server, (std::to_string(n) + " from " + kBits).c_str());
        const std::string back = std::to_string(n) + " from " + kBits + " via " + kOther;
        EXPECT_TRUE(PumpUntil([&] { return WindowText(client) == back; }, 10000)) << WindowText(client);
    }
    SetWindowTextA(client, "stale");  // a refresh asks the server
    SendMessageA(client, GXM_SETVALUE, 0, 0);
    EXPECT_TRUE(PumpUntil([&] { return WindowText(client) == "3 from " + kBits + " via " + kOther; }, 10000));
    client.reset();  // unadvise
    SetWindowTextA(server, "quit");
    EXPECT_EQ(partner.ExitCode(20000), 0u) << "5: nothing new, 7: no link, 8: our DLL loaded there, 9: another error, "
                                               "99: still running, ended by force";
}

}  // namespace

int main(int argc, char** argv) {
    // Nothing here calls into the DLL, so nothing imports it: loading it registers the classes.
    if (LoadLibraryA(FK_DLL_NAME) == nullptr) return 3;
    if (argc >= 3 && std::strcmp(argv[1], "--partner") == 0) return Partner(argv[2]);
    const char* peer = std::getenv("FK_PEER_EXE");
    if (peer == nullptr || GetFileAttributesA(peer) == INVALID_FILE_ATTRIBUTES) {
        std::printf("no partner of the other bitness (FK_PEER_EXE: %s): build the other tree first\n",
                    peer ? peer : "unset");
        return 77;
    }
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
