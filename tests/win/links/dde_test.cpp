// DDE links of the string field with other fields, with the system's DDE library in a second process, and blocks.
#include <windows.h>
#include <ddeml.h>
#include <gtest/gtest.h>

#include <cstring>
#include <functional>

#include "include/fldkit.h"
#include "frame/alloc.h"
#include "links/hooks.h"
#include "tests/support/msgbox_watch.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"
#include "tests/support/self_process.h"
#include "tests/support/window.h"

using namespace fktest;

namespace {

// ---- the partner: "--ddeml-server <event prefix>" or "--ddeml-client <expected text>"

constexpr char kPeerService[] = "FkPeer", kPeerTopic[] = "PeerTopic", kPeerItem[] = "Value";
constexpr char kLibService[] = "FkLibApp", kLibTopic[] = "LibTopic";
DWORD g_inst, g_pushes;
HANDLE g_advised;  // set when a client's advise has reached the server
HSZ g_topic, g_item;

HDDEDATA CALLBACK Callback(UINT type, UINT format, HCONV, HSZ topic, HSZ item, HDDEDATA, ULONG_PTR, ULONG_PTR) {
    std::string text = type == XTYP_REQUEST ? "on request" : "pushed " + std::to_string(g_pushes);
    switch (type) {
    case XTYP_CONNECT: return reinterpret_cast<HDDEDATA>(DdeCmpStringHandles(topic, g_topic) == 0);
    case XTYP_ADVSTART: return SetEvent(g_advised), reinterpret_cast<HDDEDATA>(format == CF_TEXT);
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
    g_advised = open("advised");
    if (DdeInitializeA(&g_inst, Callback, APPCLASS_STANDARD | CBF_SKIP_REGISTRATIONS | CBF_SKIP_UNREGISTRATIONS, 0))
        return 3;
    g_topic = Name(kPeerTopic), g_item = Name(kPeerItem);
    if (!DdeNameService(g_inst, Name(kPeerService), nullptr, DNS_REGISTER)) return 4;
    SetEvent(ready);
    DWORD set = WAIT_TIMEOUT;
    while (PumpUntil([&] { return (set = WaitForMultipleObjects(2, events, FALSE, 0)) != WAIT_TIMEOUT; }, 30000) &&
           set == WAIT_OBJECT_0)
        ++g_pushes, DdePostAdvise(g_inst, g_topic, g_item);
    return 0;
}

// Requests kPeerItem from the library's server: 0 the expected text, 5 no link, 6 no answer, 7 another text.
int Client(const char* expected) {
    if (DdeInitializeA(&g_inst, Callback, APPCMD_CLIENTONLY, 0)) return 3;
    HCONV conv = DdeConnect(g_inst, Name(kLibService), Name(kLibTopic), nullptr);
    if (conv == nullptr) return 5;
    DWORD status = 0;
    HDDEDATA data = DdeClientTransaction(nullptr, 0, conv, Name(kPeerItem), CF_TEXT, XTYP_REQUEST, 5000, &status);
    if (data == nullptr) return 6;
    char text[256] = {};
    DdeGetData(data, reinterpret_cast<LPBYTE>(text), sizeof text - 1, 0);
    // No disconnect: the library acknowledges a terminate, which DDEML would wait for in vain.
    return std::strcmp(text, expected) == 0 ? 0 : 7;
}

// Runs this program again with the arguments around body; its exit code (99: ended by force, 98: not started).
DWORD WithPeer(const std::string& arguments, const std::function<void()>& body) {
    SelfProcess peer(arguments);
    if (peer.pi.hProcess == nullptr) return 98;
    return body(), peer.ExitCode(20000);
}

// A top-level string field: a DDE initiate reaches top-level windows only.
UniqueWindow Field(const std::string& method, int x = 0, int y = 0) {
    UniqueWindow f(CreateWindowExA(0, "gxString32", "", WS_POPUP | WS_VISIBLE | WS_BORDER, x, y, 150, 24, nullptr,
                                   nullptr, GetModuleHandleA(nullptr), nullptr));
    SendMessageA(f, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(method.c_str()));
    return f;
}

HWND Prop(HWND h, const std::string& name) { return static_cast<HWND>(GetPropA(h, name.c_str())); }
void Send(HWND h, UINT msg, HWND partner, HGLOBAL block, ATOM item) {
    SendMessageA(h, msg, reinterpret_cast<WPARAM>(partner), PackDDElParam(msg, reinterpret_cast<UINT_PTR>(block), item));
}

// A DDEDATA block: flags, CF_TEXT, then the bytes as given.
HGLOBAL DataBlock(WORD flags, const std::string& bytes) {
    std::string all = std::string(reinterpret_cast<const char*>(&flags), 2) + std::string("\1\0", 2) + bytes;
    HGLOBAL h = GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE, all.size());
    std::memcpy(GlobalLock(h), all.data(), all.size());
    GlobalUnlock(h);
    return h;
}

TEST(DdeLink, FieldsLinkBothWaysPushToFiveSlotsRefreshAndUnlink) {
    MessageBoxWatcher boxes(IDNO);  // a waiting client must not hang the test
    UniqueWindow server;
    std::vector<UniqueWindow> clients;
    for (int i = 0; i < 6; ++i) {
        clients.push_back(Field("@CLIENT(FkApp,FkTopic,Value)NOAUTOSTART", 200, 30 * i));
        if (i == 0) server = Field("@SERVER(FkApp,FkTopic,Value)");  // announces itself to the waiting client
        EXPECT_EQ(Prop(clients[i], "CLIENT"), server.get());
        EXPECT_EQ(Prop(server, "SERVER" + std::to_string(i + 1)), clients[i].get());
    }
    PumpIdle();  // the advises and their acknowledgements
    SetWindowTextA(server, "42   ");  // pushed trimmed, to slots 1-5 only
    EXPECT_TRUE(PumpUntil([&] { return WindowText(clients[4]) == "42"; }));
    for (int i = 0; i < 5; ++i) EXPECT_EQ(WindowText(clients[i]), "42");
    EXPECT_EQ(WindowText(clients[5]), "");
    for (int i = 0; i < 3; ++i) {  // a refresh asks the server; the item atom survives it
        SetWindowTextA(clients[1], "stale");
        SendMessageA(clients[1], GXM_SETVALUE, 0, 0);
        EXPECT_TRUE(PumpUntil([&] { return WindowText(clients[1]) == "42   "; }));
    }
    clients[1].reset();  // its unadvise frees the slot
    EXPECT_TRUE(PumpUntil([&] { return GetPropA(server, "SERVER2") == nullptr; }));
    HWND gone = server.get();
    server.reset();  // a client ignores the terminate and keeps its mark
    PumpIdle();
    EXPECT_EQ(Prop(clients[2], "CLIENT"), gone);
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
    MessageBoxWatcher no(IDNO);
    for (const char* method : {"@CLIENT(FkLate,LateTopic,V)NOAUTOSTART", "@CLIENT(FkLate,LateTopic,V)noautostart"})
        EXPECT_EQ(GetPropA(Field(method), "CLIENT"), nullptr);
    EXPECT_TRUE(no.boxes().empty());
    auto refused = Field("@CLIENT(FkLate,LateTopic,V)");
    EXPECT_EQ(GetPropA(refused, "CLIENT"), nullptr);
    ASSERT_EQ(no.boxes().size(), 1u);
    EXPECT_EQ(no.boxes()[0].text, "Data links not available. Start remote Application?");
    EXPECT_EQ(no.boxes()[0].caption, "Quintaval");
    EXPECT_EQ(no.boxes()[0].owner, refused.get());
    const FkLinkHooks table{.winExec = StartServer};
    fkSetLinkHooks(&table);
    MessageBoxWatcher yes(IDYES);
    auto client = Field("@CLIENT(FkLate,LateTopic,V)");
    fkSetLinkHooks(nullptr);
    ASSERT_NE(g_started.get(), nullptr);
    EXPECT_EQ(Prop(client, "CLIENT"), g_started.get());
    g_started.reset();
}

TEST(DdeData, TextLosesItsLineEndAndBlocksAreFreedOrAcknowledged) {
    RecordingParent partner;
    auto client = Field("");
    const std::pair<std::string, std::string> cases[] = {
        {{"abc\r\n", 6}, "abc"}, {{"abc\n", 5}, "abc"},     {{"a\r\nb", 5}, "a\r\nb"}, {{"x\ry", 4}, "x"},
        {{"plain", 6}, "plain"}, {"noend", "noend"} /* the block ends the text */,  {"", ""},
    };
    for (const auto& [bytes, shown] : cases) {
        HGLOBAL block = DataBlock(0x2000, bytes);  // fRelease: the client frees it
        Send(client, WM_DDE_DATA, partner, block, GlobalAddAtomA("FkDataItem"));
        EXPECT_EQ(WindowText(client), shown);
        EXPECT_EQ(GlobalSize(block), 0u) << "released block is freed";
    }
    EXPECT_EQ(GlobalFindAtomA("FkDataItem"), 0) << "unacknowledged item atoms are deleted";
    HGLOBAL block = DataBlock(0x8000, {"kept", 5});  // fAckReq; the block stays the sender's
    ATOM item = GlobalAddAtomA("FkAckItem");
    Send(client, WM_DDE_DATA, partner, block, item);
    EXPECT_EQ(WindowText(client), "kept");
    EXPECT_GT(GlobalSize(block), 0u);
    GlobalFree(block);
    ASSERT_TRUE(PumpUntil([&] { return !partner.Of(WM_DDE_ACK).empty(); }));
    UINT_PTR lo = 0, hi = 0;
    UnpackDDElParam(WM_DDE_ACK, partner.Of(WM_DDE_ACK)[0].lp, &lo, &hi);
    FreeDDElParam(WM_DDE_ACK, partner.Of(WM_DDE_ACK)[0].lp);
    EXPECT_EQ(std::make_pair(lo, hi), std::make_pair(UINT_PTR{0x8000}, UINT_PTR{item}));
    GlobalDeleteAtom(item);
    partner.clear();  // an execute, the last message of the DDE set, is acknowledged
    HGLOBAL command = GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE, 8);
    std::memcpy(GlobalLock(command), "[run()]", 8), GlobalUnlock(command);
    SendMessageA(client, WM_DDE_EXECUTE, reinterpret_cast<WPARAM>(partner.hwnd()), reinterpret_cast<LPARAM>(command));
    ASSERT_TRUE(PumpUntil([&] { return !partner.Of(WM_DDE_ACK).empty(); }));
    EXPECT_EQ(partner.Of(WM_DDE_ACK)[0].wp, reinterpret_cast<WPARAM>(client.get()));
    GlobalFree(command);
    partner.clear();  // an unadvise from the client's own server ends the link, acknowledged
    SetPropA(client, "CLIENT", partner.hwnd());
    item = GlobalAddAtomA("FkUnadvised");
    SendMessageA(client, WM_DDE_UNADVISE, reinterpret_cast<WPARAM>(partner.hwnd()), MAKELPARAM(CF_TEXT, item));
    EXPECT_EQ(GetPropA(client, "CLIENT"), nullptr);
    ASSERT_TRUE(PumpUntil([&] { return !partner.Of(WM_DDE_ACK).empty(); }));
    UnpackDDElParam(WM_DDE_ACK, partner.Of(WM_DDE_ACK)[0].lp, &lo, &hi);
    FreeDDElParam(WM_DDE_ACK, partner.Of(WM_DDE_ACK)[0].lp);
    EXPECT_EQ(std::make_pair(lo, hi), std::make_pair(UINT_PTR{0x8000}, UINT_PTR{item}));
    GlobalDeleteAtom(item);
    HGLOBAL options = GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE, 4);
    Send(client, WM_DDE_ADVISE, partner, options, 0);
    EXPECT_EQ(GlobalSize(options), 0u) << "an advise block is freed";
}

// A request the server cannot allocate an answer for is refused with 0xFFFF, not the usual negative ack.
TEST(DdeData, FailedRequestIsAcknowledgedWithFFFF) {
    RecordingParent partner;
    auto server = Field("@SERVER(FkApp,FkTopic,Value)");
    SetWindowTextA(server, "42");
    ATOM item = GlobalAddAtomA("Value");
    fkFailAllocation(1);
    twProcessDDE(server, WM_DDE_REQUEST, reinterpret_cast<WPARAM>(partner.hwnd()), MAKELPARAM(CF_TEXT, item), nullptr);
    fkFailAllocation(0);
    ASSERT_TRUE(PumpUntil([&] { return !partner.Of(WM_DDE_ACK).empty(); }));
    EXPECT_TRUE(partner.Of(WM_DDE_DATA).empty());
    UINT_PTR lo = 0, hi = 0;
    UnpackDDElParam(WM_DDE_ACK, partner.Of(WM_DDE_ACK)[0].lp, &lo, &hi);
    FreeDDElParam(WM_DDE_ACK, partner.Of(WM_DDE_ACK)[0].lp);
    EXPECT_EQ(std::make_pair(lo, hi), std::make_pair(UINT_PTR{0xFFFF}, UINT_PTR{item}));
    GlobalDeleteAtom(item);
}

TEST(DdeInterop, FieldIsClientOfAPeerServerWithHotUpdatesAndRefresh) {
    std::string prefix = "FkLinkPeer" + std::to_string(GetCurrentProcessId());
    auto event = [&](const char* what) { return CreateEventA(nullptr, FALSE, FALSE, (prefix + what).c_str()); };
    HANDLE ready = event("ready"), advised = event("advised"), push = event("push"), quit = event("quit");
    auto body = [&] {
        ASSERT_TRUE(PumpUntil([&] { return WaitForSingleObject(ready, 0) == WAIT_OBJECT_0; }, 20000));
        auto client = Field(std::string("@CLIENT(") + kPeerService + "," + kPeerTopic + "," + kPeerItem + ")NOAUTOSTART");
        DWORD pid = 0;
        ASSERT_TRUE(GetWindowThreadProcessId(Prop(client, "CLIENT"), &pid));
        EXPECT_NE(pid, GetCurrentProcessId());
        ASSERT_TRUE(PumpUntil([&] { return WaitForSingleObject(advised, 0) == WAIT_OBJECT_0; }, 20000));
        for (int i = 1; i <= 3; ++i) {
            SetEvent(push);
            std::string want = "pushed " + std::to_string(i);
            EXPECT_TRUE(PumpUntil([&] { return WindowText(client) == want; }, 5000)) << WindowText(client);
        }
        SendMessageA(client, GXM_SETVALUE, 0, 0);
        EXPECT_TRUE(PumpUntil([&] { return WindowText(client) == "on request"; }, 5000)) << WindowText(client);
        client.reset();  // unadvise
        SetEvent(quit);
    };
    EXPECT_EQ(WithPeer("--ddeml-server " + prefix, body), 0u);
    for (HANDLE h : {ready, advised, push, quit}) CloseHandle(h);
}

// The answer holds at most 158 characters of the field's text.
TEST(DdeInterop, FieldServerAnswersAPeerClientsRequest) {
    auto server = Field(std::string("@SERVER(") + kLibService + "," + kLibTopic + "," + kPeerItem + ")");
    SetWindowTextA(server, std::string(300, 'x').c_str());
    EXPECT_EQ(WithPeer("--ddeml-client " + std::string(158, 'x'), [] {}), 0u) << "5 no link, 6 no answer, 7 other text";
}

}  // namespace

int main(int argc, char** argv) {
    if (argc >= 3 && std::strcmp(argv[1], "--ddeml-server") == 0) return Server(argv[2]);
    if (argc >= 3 && std::strcmp(argv[1], "--ddeml-client") == 0) return Client(argv[2]);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
