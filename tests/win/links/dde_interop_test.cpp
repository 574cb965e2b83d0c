// The library's links with the system's DDE management library running in
// a second process.

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "include/fldkit.h"
#include "link_control.h"
#include "peer.h"

using linktest::MakeDialog;
using linktest::MakeLinkControl;
using linktest::PumpUntil;
using linktest::Text;

namespace {

struct Event {
    explicit Event(const std::string& name) : h(CreateEventA(nullptr, FALSE, FALSE, name.c_str())) {}
    ~Event() { CloseHandle(h); }
    HANDLE h;
};

double Milliseconds(LARGE_INTEGER from, LARGE_INTEGER to) {
    LARGE_INTEGER f;
    QueryPerformanceFrequency(&f);
    return 1000.0 * static_cast<double>(to.QuadPart - from.QuadPart) / static_cast<double>(f.QuadPart);
}

TEST(DdeInterop, LibraryClientOfAPeerServerGetsHotUpdatesAndRefreshes) {
    std::string prefix = linktest::EventName("");
    Event ready(prefix + "ready"), push(prefix + "push"), quit(prefix + "quit");
    linktest::PeerProcess peer("--ddeml-server " + prefix);
    ASSERT_TRUE(peer.started());
    ASSERT_TRUE(PumpUntil([&] { return WaitForSingleObject(ready.h, 0) == WAIT_OBJECT_0; }, 20000));

    auto dialog = MakeDialog(0, 0);
    std::string method = std::string("@CLIENT(") + linktest::kPeerService + "," + linktest::kPeerTopic + "," +
                         linktest::kPeerItem + ")NOAUTOSTART";
    HWND client = MakeLinkControl(dialog, method.c_str());
    HWND server = linktest::PropWindow(client, "CLIENT");
    ASSERT_NE(server, nullptr);
    DWORD pid = 0;
    GetWindowThreadProcessId(server, &pid);
    EXPECT_NE(pid, GetCurrentProcessId());
    PumpUntil([] { return false; }, 300);  // the advise reaches the peer and is acknowledged

    for (int i = 1; i <= 3; ++i) {
        LARGE_INTEGER t0, t1;
        QueryPerformanceCounter(&t0);
        SetEvent(push.h);
        std::string want = "pushed " + std::to_string(i);
        EXPECT_TRUE(PumpUntil([&] { return Text(client) == want; }, 5000)) << Text(client);
        QueryPerformanceCounter(&t1);
        std::printf("[ figure ] hot update from another process reached the control in %.1f ms\n", Milliseconds(t0, t1));
    }

    SendMessageA(client, GXM_SETVALUE, 0, 0);  // a refresh asks the server
    EXPECT_TRUE(PumpUntil([&] { return Text(client) == "on request"; }, 5000)) << Text(client);

    dialog.reset();  // unadvise
    SetEvent(quit.h);
    EXPECT_TRUE(peer.Wait(10000));
    EXPECT_EQ(peer.exitCode(), 0u);
}

TEST(DdeInterop, LibraryServerAnswersAPeerClientsRequest) {
    auto dialog = MakeDialog(0, 0);
    std::string method = std::string("@SERVER(") + linktest::kLibService + "," + linktest::kLibTopic + "," +
                         linktest::kPeerItem + ")";
    HWND server = MakeLinkControl(dialog, method.c_str());
    SetWindowTextA(server, "from the library");

    char temp[MAX_PATH], file[MAX_PATH];
    GetTempPathA(MAX_PATH, temp);
    GetTempFileNameA(temp, "fkd", 0, file);
    linktest::PeerProcess peer(std::string("--ddeml-client \"") + file + "\"");
    ASSERT_TRUE(peer.started());
    EXPECT_TRUE(peer.Wait(20000));
    std::ifstream in(file, std::ios::binary);
    std::stringstream got;
    got << in.rdbuf();
    in.close();
    DeleteFileA(file);
    EXPECT_EQ(got.str(), "data:from the library");
}

}  // namespace
