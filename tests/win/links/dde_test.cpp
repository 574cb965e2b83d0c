// DDE links of the string field: with other fields of this process, with
// the system's DDE management library in a second process, and what the
// handler does with whatever a partner posts.

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "include/fldkit.h"
#include "links.h"
#include "tests/support/msgbox_watch.h"
#include "tests/support/recorder.h"
#include "tests/support/window.h"

using namespace linktest;
using fktest::UniqueWindow;

namespace {

// A top-level string field: a DDE initiate reaches top-level windows only.
UniqueWindow Field(const std::string& method, int x = 0, int y = 0) {
    UniqueWindow f(CreateWindowExA(0, "gxString32", "", WS_POPUP | WS_VISIBLE | WS_BORDER, x, y, 150, 24, nullptr,
                                   nullptr, GetModuleHandleA(nullptr), nullptr));
    SendMessageA(f, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(method.c_str()));
    return f;
}

HWND Prop(HWND h, const std::string& name) { return static_cast<HWND>(GetPropA(h, name.c_str())); }

// Sends a DDE message with a packed (block, atom) pair from partner to h.
void Post(HWND h, UINT msg, HWND partner, HGLOBAL block, ATOM item) {
    SendMessageA(h, msg, reinterpret_cast<WPARAM>(partner), PackDDElParam(msg, reinterpret_cast<UINT_PTR>(block), item));
}

// A DDEDATA block: flags, CF_TEXT, then the bytes as given.
HGLOBAL DataBlock(WORD flags, const std::string& bytes) {
    HGLOBAL h = GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE, 4 + bytes.size());
    auto* p = static_cast<BYTE*>(GlobalLock(h));
    WORD head[2] = {flags, CF_TEXT};
    std::memcpy(p, head, 4);
    std::memcpy(p + 4, bytes.data(), bytes.size());
    GlobalUnlock(h);
    return h;
}

TEST(DdeLink, FieldsLinkPushToFiveSlotsRefreshAndUnlink) {
    auto server = Field("@SERVER(FkApp,FkTopic,Value)");
    std::vector<UniqueWindow> clients;
    for (int i = 0; i < 6; ++i) clients.push_back(Field("@CLIENT(FkApp,FkTopic,Value)NOAUTOSTART", 200, 30 * i));
    for (int i = 0; i < 6; ++i) EXPECT_EQ(Prop(clients[i], "CLIENT"), server.get());
    for (int i = 0; i < 6; ++i) EXPECT_EQ(Prop(server, "SERVER" + std::to_string(i + 1)), clients[i].get());
    Pump(100);  // the advises and their acknowledgements
    SetWindowTextA(server, "42   ");  // pushed trimmed, to slots 1-5 only
    EXPECT_TRUE(PumpUntil([&] { return Text(clients[4]) == "42"; }));
    for (int i = 0; i < 5; ++i) EXPECT_EQ(Text(clients[i]), "42");
    EXPECT_EQ(Text(clients[5]), "");
    for (int i = 0; i < 3; ++i) {  // a refresh asks the server; the item atom survives it
        SetWindowTextA(clients[0], "stale");
        SendMessageA(clients[0], GXM_SETVALUE, 0, 0);
        EXPECT_TRUE(PumpUntil([&] { return Text(clients[0]) == "42   "; }));
    }
    char name[50] = {};
    GlobalGetAtomNameA(static_cast<ATOM>(reinterpret_cast<UINT_PTR>(GetPropA(clients[0], "ITEM"))), name, 50);
    EXPECT_STREQ(name, "Value");
    clients[0].reset();  // its unadvise frees the slot
    EXPECT_TRUE(PumpUntil([&] { return GetPropA(server, "SERVER1") == nullptr; }));
    HWND gone = server.get();
    server.reset();  // a client ignores the terminate and keeps its mark
    Pump(100);
    EXPECT_EQ(Prop(clients[1], "CLIENT"), gone);
}

TEST(DdeLink, NewServerAnnouncesItselfToWaitingClients) {
    auto client = Field("@CLIENT(FkAnn,Topic,Item)NOAUTOSTART");
    ASSERT_EQ(GetPropA(client, "CLIENT"), nullptr);
    auto server = Field("@SERVER(FkAnn,Topic,Item)", 200);
    EXPECT_EQ(Prop(server, "SERVER1"), client.get());
    EXPECT_EQ(Prop(client, "CLIENT"), server.get());
}

// On Yes, "application topic" is started and the initiate sent again.
UniqueWindow g_started;
UINT WINAPI StartServer(LPCSTR command, UINT) {
    EXPECT_STREQ(command, "FkLate LateTopic");
    g_started = Field("@SERVER(FkLate,LateTopic,V)");
    PostMessageA(nullptr, WM_NULL, 0, 0);  // ends the library's WaitMessage
    return 33;
}

TEST(DdeLink, MissingServerAsksToStartItUnlessNoAutostart) {
    fktest::MessageBoxWatcher no(IDNO);
    for (const char* method : {"@CLIENT(FkLate,LateTopic,V)NOAUTOSTART", "@CLIENT(FkLate,LateTopic,V)noautostart"}) {
        auto client = Field(method);
        char copy[300];
        std::strcpy(copy, method);
        EXPECT_EQ(twInitiateDDE(client, copy), 0);
        EXPECT_EQ(GetPropA(client, "CLIENT"), nullptr);
    }
    EXPECT_TRUE(no.boxes().empty());
    auto refused = Field("@CLIENT(FkLate,LateTopic,V)");
    EXPECT_EQ(GetPropA(refused, "CLIENT"), nullptr);
    ASSERT_EQ(no.boxes().size(), 1u);
    EXPECT_EQ(no.boxes()[0].text, "Data links not available. Start remote Application?");
    EXPECT_EQ(no.boxes()[0].caption, "Quintaval");
    EXPECT_EQ(no.boxes()[0].owner, refused.get());

    FkLinkHooks table{};
    table.winExec = StartServer;
    Hooks hooks(&table);
    fktest::MessageBoxWatcher yes(IDYES);
    auto client = Field("@CLIENT(FkLate,LateTopic,V)");
    ASSERT_NE(g_started.get(), nullptr);
    EXPECT_EQ(Prop(client, "CLIENT"), g_started.get());
    g_started.reset();
}

TEST(DdeData, TextLosesItsLineEndAndBlocksAreFreedOrAcknowledged) {
    fktest::RecordingParent partner;
    auto client = Field("");
    const std::pair<std::string, std::string> cases[] = {
        {{"abc\r\n", 6}, "abc"}, {{"abc\n", 5}, "abc"},     {{"a\r\nb", 5}, "a\r\nb"}, {{"x\ry", 4}, "x"},
        {{"plain", 6}, "plain"}, {"noend", "noend"} /* the block ends the text */,  {"", ""},
    };
    for (const auto& [bytes, shown] : cases) {
        HGLOBAL block = DataBlock(0x2000, bytes);  // fRelease: the client frees it
        Post(client, WM_DDE_DATA, partner, block, GlobalAddAtomA("FkDataItem"));
        EXPECT_EQ(Text(client), shown);
        EXPECT_EQ(GlobalSize(block), 0u) << "released block is freed";
    }
    EXPECT_EQ(GlobalFindAtomA("FkDataItem"), 0) << "unacknowledged item atoms are deleted";

    HGLOBAL block = DataBlock(0x8000, {"kept", 5});  // fAckReq; the block stays the sender's
    ATOM item = GlobalAddAtomA("FkAckItem");
    Post(client, WM_DDE_DATA, partner, block, item);
    EXPECT_EQ(Text(client), "kept");
    EXPECT_GT(GlobalSize(block), 0u);
    GlobalFree(block);
    ASSERT_TRUE(PumpUntil([&] { return !partner.Of(WM_DDE_ACK).empty(); }));
    UINT_PTR lo = 0, hi = 0;
    UnpackDDElParam(WM_DDE_ACK, partner.Of(WM_DDE_ACK)[0].lp, &lo, &hi);
    FreeDDElParam(WM_DDE_ACK, partner.Of(WM_DDE_ACK)[0].lp);
    EXPECT_EQ(lo, 0x8000u);
    EXPECT_EQ(hi, item);
    GlobalDeleteAtom(item);

    HGLOBAL options = GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE, 4);
    Post(client, WM_DDE_ADVISE, partner, options, 0);
    EXPECT_EQ(GlobalSize(options), 0u) << "an advise block is freed";
}

// Whatever a foreign partner or a careless caller hands over: no crash, and
// messages outside the DDE range are not ours.
TEST(DdeHandler, SurvivesNullAndForeignValues) {
    auto control = Field("@SERVER(FkApp,FkTopic,Value)");
    char empty[4] = "";
    for (UINT msg = WM_DDE_FIRST; msg <= WM_DDE_LAST; ++msg) {
        for (LPARAM lp : {LPARAM(0), LPARAM(1), LPARAM(0x12345678), LPARAM(-1), MAKELPARAM(0x8000, 0xC123)}) {
            twProcessDDE(control, msg, 0, lp, nullptr);
            twProcessDDE(control, msg, reinterpret_cast<WPARAM>(control.get()), lp, empty);
            twProcessDDE(nullptr, msg, 0x1234, lp, nullptr);
        }
        twProcessDDE(control, msg, 0, PackDDElParam(WM_DDE_DATA, 0x1234, 0), nullptr);  // not a block
    }
    EXPECT_EQ(twProcessDDE(control, WM_USER, 0, 0, nullptr), 0);
    EXPECT_EQ(twProcessDDE(control, WM_DDE_ACK, 0, 0, nullptr), 1);
    EXPECT_EQ(twProcessDDEData(nullptr, nullptr), 0);
    EXPECT_EQ(twRequestDDEData(nullptr), 0);
    twUnadviseDDE(nullptr);
    EXPECT_EQ(twInitiateDDE(control, nullptr), 1);
}

TEST(DdeInterop, FieldIsClientOfAPeerServerWithHotUpdatesAndRefresh) {
    std::string prefix = "FkLinkPeer" + std::to_string(GetCurrentProcessId());
    auto event = [&](const char* what) { return CreateEventA(nullptr, FALSE, FALSE, (prefix + what).c_str()); };
    HANDLE ready = event("ready"), push = event("push"), quit = event("quit");
    HANDLE peer = StartPeer("--ddeml-server " + prefix);
    ASSERT_TRUE(PumpUntil([&] { return WaitForSingleObject(ready, 0) == WAIT_OBJECT_0; }, 20000));

    auto client = Field(std::string("@CLIENT(") + kPeerService + "," + kPeerTopic + "," + kPeerItem + ")NOAUTOSTART");
    DWORD pid = 0;
    ASSERT_TRUE(GetWindowThreadProcessId(Prop(client, "CLIENT"), &pid));
    EXPECT_NE(pid, GetCurrentProcessId());
    Pump(300);  // the advise reaches the peer and is acknowledged
    for (int i = 1; i <= 3; ++i) {
        SetEvent(push);
        std::string want = "pushed " + std::to_string(i);
        EXPECT_TRUE(PumpUntil([&] { return Text(client) == want; }, 5000)) << Text(client);
    }
    SendMessageA(client, GXM_SETVALUE, 0, 0);
    EXPECT_TRUE(PumpUntil([&] { return Text(client) == "on request"; }, 5000)) << Text(client);
    client.reset();  // unadvise
    SetEvent(quit);
    EXPECT_EQ(EndPeer(peer, 10000), 0u);
    for (HANDLE h : {ready, push, quit}) CloseHandle(h);
}

// The answer holds at most 158 characters of the field's text.
TEST(DdeInterop, FieldServerAnswersAPeerClientsRequest) {
    auto server = Field(std::string("@SERVER(") + kLibService + "," + kLibTopic + "," + kPeerItem + ")");
    SetWindowTextA(server, std::string(300, 'x').c_str());
    HANDLE peer = StartPeer("--ddeml-client " + std::string(158, 'x'));
    EXPECT_EQ(EndPeer(peer, 20000), 0u) << "5: no connection, 6: request failed, 7: other text";
}

}  // namespace
