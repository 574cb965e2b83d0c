// DDE data links between controls of two dialogs of this process, and the
// handler's treatment of what a partner may post.

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "include/fldkit.h"
#include "link_control.h"
#include "tests/support/msgbox_watch.h"

using linktest::MakeDialog;
using linktest::MakeLinkControl;
using linktest::PropWindow;
using linktest::PumpUntil;
using linktest::Text;

namespace {

const char kServer[] = "@SERVER(FkApp,FkTopic,Value)";
const char kClient[] = "@CLIENT(FkApp,FkTopic,Value)NOAUTOSTART";

// A pair block as a posted DDE message carries it.
LPARAM Pair(UINT_PTR lo, UINT_PTR hi) {
    HGLOBAL h = GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE, 2 * sizeof(UINT_PTR));
    auto* p = static_cast<UINT_PTR*>(GlobalLock(h));
    p[0] = lo;
    p[1] = hi;
    GlobalUnlock(h);
    return reinterpret_cast<LPARAM>(h);
}

// A DDEDATA block of raw bytes (flags, format 1, then text as given).
HGLOBAL DataBlock(WORD flags, const std::string& bytes) {
    HGLOBAL h = GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE, 4 + bytes.size());
    auto* p = static_cast<BYTE*>(GlobalLock(h));
    std::memcpy(p, &flags, 2);
    WORD format = CF_TEXT;
    std::memcpy(p + 2, &format, 2);
    std::memcpy(p + 4, bytes.data(), bytes.size());
    GlobalUnlock(h);
    return h;
}

// Records the DDE messages a partner window receives.
struct Partner {
    static std::vector<MSG>& Seen() {
        static std::vector<MSG> seen;
        return seen;
    }
    static LRESULT CALLBACK Proc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
        if (msg >= WM_DDE_FIRST && msg <= WM_DDE_LAST) {
            MSG m{};
            m.hwnd = h;
            m.message = msg;
            m.wParam = wp;
            m.lParam = lp;
            Seen().push_back(m);
            return 0;
        }
        return DefWindowProcA(h, msg, wp, lp);
    }
    Partner() {
        WNDCLASSA wc{};
        wc.lpfnWndProc = Proc;
        wc.hInstance = GetModuleHandleA(nullptr);
        wc.lpszClassName = "FkDdePartner";
        RegisterClassA(&wc);
        window = fktest::UniqueWindow(CreateWindowExA(0, "FkDdePartner", "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                                      GetModuleHandleA(nullptr), nullptr));
        Seen().clear();
    }
    fktest::UniqueWindow window;
};

TEST(DdeLink, ClientInOneDialogLinksToServerInAnotherAndReceivesPushes) {
    auto serverDialog = MakeDialog(0, 0);
    HWND server = MakeLinkControl(serverDialog, kServer, 101);
    auto clientDialog = MakeDialog(320, 0);
    HWND client = MakeLinkControl(clientDialog, kClient, 102);

    EXPECT_EQ(PropWindow(client, "CLIENT"), server);
    EXPECT_EQ(PropWindow(server, "SERVER1"), client);
    EXPECT_NE(GetPropA(client, "ITEM"), nullptr);
    PumpUntil([] { return false; }, 100);  // the advise and its acknowledgement

    SetWindowTextA(server, "42   ");  // pushes, trimmed at the end
    EXPECT_TRUE(PumpUntil([&] { return Text(client) == "42"; }));

    // A client refreshes on request: the server answers with its text.
    SetWindowTextA(client, "stale");
    SendMessageA(client, GXM_SETVALUE, 0, 0);
    EXPECT_TRUE(PumpUntil([&] { return Text(client) == "42   "; }));
    // The item atom survives repeated requests.
    for (int i = 0; i < 3; ++i) {
        SetWindowTextA(client, "stale");
        SendMessageA(client, GXM_SETVALUE, 0, 0);
        EXPECT_TRUE(PumpUntil([&] { return Text(client) == "42   "; }));
    }
    char name[50] = {};
    EXPECT_GT(GlobalGetAtomNameA(static_cast<ATOM>(reinterpret_cast<UINT_PTR>(GetPropA(client, "ITEM"))), name, 50), 0u);
    EXPECT_STREQ(name, "Value");

    // Closing the client frees its slot at the server.
    DestroyWindow(client);
    EXPECT_TRUE(PumpUntil([&] { return GetPropA(server, "SERVER1") == nullptr; }));
}

TEST(DdeLink, ServerClosingLeavesTheClientsLinkMark) {
    auto serverDialog = MakeDialog(0, 0);
    HWND server = MakeLinkControl(serverDialog, kServer, 101);
    auto clientDialog = MakeDialog(320, 0);
    HWND client = MakeLinkControl(clientDialog, kClient, 102);
    ASSERT_EQ(PropWindow(client, "CLIENT"), server);
    serverDialog.reset();
    PumpUntil([] { return false; }, 100);
    EXPECT_EQ(PropWindow(client, "CLIENT"), server);  // a client ignores the terminate
}

TEST(DdeLink, SixthClientIsRegisteredButPushesReachOnlyFiveSlots) {
    auto serverDialog = MakeDialog(0, 0);
    HWND server = MakeLinkControl(serverDialog, kServer, 101);
    auto clientDialog = MakeDialog(320, 0, 300, 400);
    std::vector<HWND> clients;
    for (int i = 0; i < 6; ++i) clients.push_back(MakeLinkControl(clientDialog, kClient, 110 + i));
    for (int i = 0; i < 6; ++i) EXPECT_EQ(PropWindow(server, ("SERVER" + std::to_string(i + 1)).c_str()), clients[i]);
    PumpUntil([] { return false; }, 100);
    SetWindowTextA(server, "pushed");
    EXPECT_TRUE(PumpUntil([&] { return Text(clients[4]) == "pushed"; }));
    for (int i = 0; i < 5; ++i) EXPECT_EQ(Text(clients[i]), "pushed");
    EXPECT_EQ(Text(clients[5]), "");
}

TEST(DdeLink, MissingServerWithNoAutostartAsksNothing) {
    fktest::MessageBoxWatcher boxes(IDNO);
    auto dialog = MakeDialog();
    for (const char* method : {"@CLIENT(FkNobody,T,I)NOAUTOSTART", "@CLIENT(FkNobody,T,I)noautostart"}) {
        HWND client = MakeLinkControl(dialog, method);
        char copy[300];
        std::strcpy(copy, method);
        EXPECT_EQ(twInitiateDDE(client, copy), 0);
        EXPECT_EQ(GetPropA(client, "CLIENT"), nullptr);
    }
    EXPECT_TRUE(boxes.boxes().empty());
}

// The start question; on Yes the application name and topic are started
// as a command line and the initiate is sent a second time.
fktest::UniqueWindow g_startedDialog;
UINT WINAPI StartServer(LPCSTR command, UINT) {
    static std::string last;
    last = command;
    EXPECT_STREQ(command, "FkLate LateTopic");
    g_startedDialog = MakeDialog(0, 0);
    MakeLinkControl(g_startedDialog, "@SERVER(FkLate,LateTopic,V)");
    PostMessageA(nullptr, WM_NULL, 0, 0);  // ends the library's WaitMessage
    return 33;
}

TEST(DdeLink, MissingServerAsksToStartItAndLinksAfterwards) {
    {
        fktest::MessageBoxWatcher boxes(IDNO);
        auto dialog = MakeDialog();
        HWND client = MakeLinkControl(dialog, "@CLIENT(FkLate,LateTopic,V)");
        EXPECT_EQ(GetPropA(client, "CLIENT"), nullptr);
        ASSERT_EQ(boxes.boxes().size(), 1u);
        EXPECT_EQ(boxes.boxes()[0].text, "Data links not available. Start remote Application?");
        EXPECT_EQ(boxes.boxes()[0].caption, "Quintaval");
        EXPECT_EQ(boxes.boxes()[0].owner, GetAncestor(client, GA_ROOT));
    }
    FkLinkHooks table{};
    table.winExec = StartServer;
    linktest::Hooks hooks(table);
    fktest::MessageBoxWatcher boxes(IDYES);
    auto dialog = MakeDialog(320, 0);
    HWND client = MakeLinkControl(dialog, "@CLIENT(FkLate,LateTopic,V)");
    ASSERT_NE(g_startedDialog.get(), nullptr);
    EXPECT_EQ(PropWindow(client, "CLIENT"), GetWindow(g_startedDialog, GW_CHILD));
    g_startedDialog.reset();
}

TEST(DdeLink, ServerAnnouncementReachesClientsWhoseFieldTextNamesIt) {
    linktest::Hooks hooks;
    char* fieldText = hooks.table().fieldText;
    ASSERT_NE(fieldText, nullptr);

    auto clientDialog = MakeDialog(320, 0);
    HWND client = MakeLinkControl(clientDialog, "@CLIENT(FkAnn,Topic,Item)NOAUTOSTART");
    ASSERT_EQ(GetPropA(client, "CLIENT"), nullptr);

    // The field buffer does not name the link: nobody answers.
    std::strcpy(fieldText, "@NUM");
    auto serverDialog = MakeDialog(0, 0);
    HWND server = MakeLinkControl(serverDialog, "@SERVER(FkAnn,Topic,Item)", 101);
    EXPECT_EQ(GetPropA(server, "SERVER1"), nullptr);
    EXPECT_EQ(GetPropA(client, "CLIENT"), nullptr);

    std::strcpy(fieldText, "@CLIENT(FkAnn,Topic)");
    char method[] = "@SERVER(FkAnn,Topic,Item)\0\0";
    EXPECT_EQ(twInitiateDDE(server, method), 1);
    EXPECT_EQ(PropWindow(server, "SERVER1"), client);
    EXPECT_EQ(PropWindow(client, "CLIENT"), server);
    fieldText[0] = 0;
}

struct DataCase {
    std::string bytes;
    std::string shown;
};

TEST(DdeData, TextIsShownWithoutItsLineEnd) {
    Partner partner;
    auto dialog = MakeDialog();
    HWND client = MakeLinkControl(dialog, "");
    const DataCase cases[] = {
        {std::string("abc\r\n", 6), "abc"},
        {std::string("abc\n", 5), "abc"},
        {std::string("a\r\nb", 5), "a\r\nb"},
        {std::string("x\ry", 4), "x"},  // a carriage return two places before the end cuts there
        {std::string("plain", 6), "plain"},
        {std::string("noend"), "noend"},  // no terminator: the block ends the text
        {std::string(), ""},
    };
    for (const auto& c : cases) {
        HGLOBAL block = DataBlock(0x2000, c.bytes);  // fRelease: the client frees it
        ATOM item = GlobalAddAtomA("FkDataItem");
        twProcessDDE(client, WM_DDE_DATA, reinterpret_cast<WPARAM>(partner.window.get()), Pair(reinterpret_cast<UINT_PTR>(block), item),
                     nullptr);
        EXPECT_EQ(Text(client), c.shown);
        EXPECT_EQ(GlobalSize(block), 0u) << "released block is freed";
    }
    EXPECT_EQ(GlobalFindAtomA("FkDataItem"), 0) << "unacknowledged item atoms are deleted";
}

TEST(DdeData, AcknowledgesWhenAskedAndKeepsBlocksItDoesNotOwn) {
    Partner partner;
    auto dialog = MakeDialog();
    HWND client = MakeLinkControl(dialog, "");
    HGLOBAL block = DataBlock(0x8000, std::string("kept", 5));
    ATOM item = GlobalAddAtomA("FkAckItem");
    twProcessDDE(client, WM_DDE_DATA, reinterpret_cast<WPARAM>(partner.window.get()), Pair(reinterpret_cast<UINT_PTR>(block), item), nullptr);
    EXPECT_EQ(Text(client), "kept");
    EXPECT_GT(GlobalSize(block), 0u);
    GlobalFree(block);
    ASSERT_TRUE(PumpUntil([] { return !Partner::Seen().empty(); }));
    MSG ack = Partner::Seen()[0];
    EXPECT_EQ(ack.message, static_cast<UINT>(WM_DDE_ACK));
    UINT_PTR lo = 0, hi = 0;
    ASSERT_TRUE(UnpackDDElParam(WM_DDE_ACK, ack.lParam, &lo, &hi));
    EXPECT_EQ(lo, 0x8000u);
    EXPECT_EQ(hi, item);
    FreeDDElParam(WM_DDE_ACK, ack.lParam);
    GlobalDeleteAtom(item);
}

TEST(DdeServer, RequestIsAnsweredWithTheTextAndAdviseBlocksAreFreed) {
    Partner partner;
    auto dialog = MakeDialog();
    HWND server = MakeLinkControl(dialog, "");
    SetWindowTextA(server, std::string(300, 'x').c_str());
    ATOM item = GlobalAddAtomA("FkReqItem");
    twProcessDDE(server, WM_DDE_REQUEST, reinterpret_cast<WPARAM>(partner.window.get()), MAKELPARAM(CF_TEXT, item), nullptr);
    ASSERT_TRUE(PumpUntil([] { return !Partner::Seen().empty(); }));
    MSG data = Partner::Seen()[0];
    ASSERT_EQ(data.message, static_cast<UINT>(WM_DDE_DATA));
    UINT_PTR lo = 0, hi = 0;
    ASSERT_TRUE(UnpackDDElParam(WM_DDE_DATA, data.lParam, &lo, &hi));
    FreeDDElParam(WM_DDE_DATA, data.lParam);
    EXPECT_EQ(hi, item);
    auto* p = static_cast<BYTE*>(GlobalLock(reinterpret_cast<HGLOBAL>(lo)));
    ASSERT_NE(p, nullptr);
    WORD flags, format;
    std::memcpy(&flags, p, 2);
    std::memcpy(&format, p + 2, 2);
    EXPECT_EQ(flags & 0xB000, 0x3000) << "fRelease and fResponse, no fAckReq";
    EXPECT_EQ(format, CF_TEXT);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(p + 4)), std::string(158, 'x'));
    GlobalUnlock(reinterpret_cast<HGLOBAL>(lo));
    GlobalFree(reinterpret_cast<HGLOBAL>(lo));
    GlobalDeleteAtom(item);

    HGLOBAL options = GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE, 4);
    twProcessDDE(server, WM_DDE_ADVISE, reinterpret_cast<WPARAM>(partner.window.get()), Pair(reinterpret_cast<UINT_PTR>(options), 0),
                 nullptr);
    EXPECT_EQ(GlobalSize(options), 0u);
}

// Whatever a foreign partner or a careless caller hands over: no crash, no
// change, and messages outside the DDE range are not ours.
TEST(DdeHandler, SurvivesNullAndForeignValues) {
    auto dialog = MakeDialog();
    HWND control = MakeLinkControl(dialog, kServer);
    const LPARAM junk[] = {0, 1, 0x12345678, static_cast<LPARAM>(0xFFFFFFFF), MAKELPARAM(0x8000, 0xC123)};
    for (UINT msg = WM_DDE_FIRST; msg <= WM_DDE_LAST; ++msg) {
        for (LPARAM lp : junk) {
            twProcessDDE(control, msg, 0, lp, nullptr);
            twProcessDDE(control, msg, reinterpret_cast<WPARAM>(control), lp, const_cast<char*>(""));
            twProcessDDE(nullptr, msg, 0x1234, lp, nullptr);
        }
        // A pair whose handle is not a block.
        twProcessDDE(control, msg, 0, Pair(0x1234, 0), nullptr);
    }
    EXPECT_EQ(twProcessDDE(control, WM_USER, 0, 0, nullptr), 0);
    EXPECT_EQ(twProcessDDE(control, WM_DDE_ACK, 0, 0, nullptr), 1);
    EXPECT_EQ(twProcessDDEData(nullptr, nullptr), 0);
    EXPECT_EQ(twRequestDDEData(nullptr), 0);
    twUnadviseDDE(nullptr);
    EXPECT_EQ(twInitiateDDE(control, nullptr), 1);
}

}  // namespace
