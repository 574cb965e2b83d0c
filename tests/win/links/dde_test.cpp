// DDE links of the string field with other fields, and the blocks of the DDE messages as another application sends
// and receives them.
#include <windows.h>
#include <gtest/gtest.h>

#include <cstring>

#include "include/fldkit.h"
#include "frame/alloc.h"
#include "links/hooks.h"
#include "tests/support/msgbox_watch.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"
#include "tests/support/window.h"

using namespace fktest;
using Words = std::vector<UINT_PTR>;

namespace {

// A top-level string field: a DDE initiate reaches top-level windows only.
UniqueWindow Field(const std::string& method, int y = 0) {
    UniqueWindow f(CreateWindowExA(0, "gxString32", "", WS_POPUP | WS_VISIBLE | WS_BORDER, 200, y, 150, 24, nullptr,
                                   nullptr, GetModuleHandleA(nullptr), nullptr));
    SendMessageA(f, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(method.c_str()));
    return f;
}

HWND Prop(HWND h, const std::string& name) { return static_cast<HWND>(GetPropA(h, name.c_str())); }
void Send(HWND h, UINT msg, HWND partner, HGLOBAL block, ATOM item) {
    SendMessageA(h, msg, reinterpret_cast<WPARAM>(partner), PackDDElParam(msg, reinterpret_cast<UINT_PTR>(block), item));
}

// A DDEDATA block: flags, CF_TEXT, then the bytes as given.
HGLOBAL Block(WORD flags, const std::string& bytes) {
    std::string all = std::string(reinterpret_cast<const char*>(&flags), 2) + std::string("\1\0", 2) + bytes;
    HGLOBAL h = GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE, all.size());
    std::memcpy(GlobalLock(h), all.data(), all.size());
    GlobalUnlock(h);
    return h;
}

// The first WM_DDE_ACK the partner is sent (waited for): its sender and packed words, freed; the record is cleared.
Words Ack(RecordingParent& partner) {
    UINT_PTR lo = 0, hi = 0;
    if (!PumpUntil([&] { return !partner.Of(WM_DDE_ACK).empty(); })) return {};
    const Msg ack = partner.Of(WM_DDE_ACK)[0];
    UnpackDDElParam(WM_DDE_ACK, ack.lp, &lo, &hi);
    FreeDDElParam(WM_DDE_ACK, ack.lp);
    partner.clear();
    return {ack.wp, lo, hi};
}

TEST(DdeLink, FieldsLinkBothWaysPushToFiveSlotsRefreshAndUnlink) {
    MessageBoxWatcher boxes(IDNO);  // a waiting client must not hang the test
    UniqueWindow server;
    std::vector<UniqueWindow> clients;
    for (int i = 0; i < 6; ++i) {
        clients.push_back(Field("@CLIENT(FkApp,FkTopic,Value)NOAUTOSTART", 30 * i));
        if (i == 0) server = Field("@SERVER(FkApp,FkTopic,Value)");  // announces itself to the waiting client
        EXPECT_EQ(Prop(clients[i], "CLIENT"), server.get());
        EXPECT_EQ(Prop(server, "SERVER" + std::to_string(i + 1)), clients[i].get());
    }
    PumpIdle();  // the advises and their acknowledgements
    SetWindowTextA(server, "42   ");  // pushed trimmed, to slots 1-5 only
    EXPECT_TRUE(PumpUntil([&] { return WindowText(clients[4]) == "42"; }));
    for (int i = 0; i < 6; ++i) EXPECT_EQ(WindowText(clients[i]), i < 5 ? "42" : "");
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

// Without a server a client asks to start "application topic" (unless NOAUTOSTART); on Yes, the initiate is sent
// again.
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
    EXPECT_EQ(no.boxes()[0].text + "/" + no.boxes()[0].caption,
              "Data links not available. Start remote Application?/Quintaval");
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

// A client asks its server for a hot link of CF_TEXT and requests CF_TEXT on a refresh. Data lose their line end
// and released blocks are freed; a data block that asks for it, an execute (the last
// message of the DDE set) and an unadvise from the client's own server are acknowledged; an advise block is
// freed. A request is answered with at most 158 characters, in a block the partner releases; one the server cannot
// allocate an answer for is refused with 0xFFFF, not the usual negative ack.
TEST(DdeData, TextLosesItsLineEndAndBlocksAreFreedOrAcknowledged) {
    RecordingParent partner;  // answers the client's initiate as another application's server would
    partner.reply = [&](UINT msg, WPARAM wp, LPARAM lp) -> std::optional<LRESULT> {
        if (msg != WM_DDE_INITIATE || LOWORD(lp) != GlobalFindAtomA("FkRaw")) return std::nullopt;
        SendMessageA(reinterpret_cast<HWND>(wp), WM_DDE_ACK, reinterpret_cast<WPARAM>(partner.hwnd()),
                     MAKELPARAM(GlobalAddAtomA("FkRaw"), GlobalAddAtomA("RawTopic")));
        return 0;
    };
    // The client: its advise asks for a hot link of CF_TEXT, a refresh requests CF_TEXT.
    auto client = Field("@CLIENT(FkRaw,RawTopic,Value)NOAUTOSTART");
    EXPECT_EQ(Prop(client, "CLIENT"), partner.hwnd());
    ASSERT_TRUE(PumpUntil([&] { return !partner.Of(WM_DDE_ADVISE).empty(); }));
    UINT_PTR options = 0, atom = 0;
    UnpackDDElParam(WM_DDE_ADVISE, partner.Of(WM_DDE_ADVISE)[0].lp, &options, &atom);
    FreeDDElParam(WM_DDE_ADVISE, partner.Of(WM_DDE_ADVISE)[0].lp);
    const auto* words = static_cast<const WORD*>(GlobalLock(reinterpret_cast<HGLOBAL>(options)));
    EXPECT_EQ(std::make_pair(words[0] & 0xC000, words[1]), std::make_pair(0x8000, WORD{CF_TEXT})) << "a hot link";
    GlobalUnlock(reinterpret_cast<HGLOBAL>(options)), GlobalFree(reinterpret_cast<HGLOBAL>(options));
    SendMessageA(client, GXM_SETVALUE, 0, 0);  // a refresh requests the text
    ASSERT_TRUE(PumpUntil([&] { return !partner.Of(WM_DDE_REQUEST).empty(); }));
    EXPECT_EQ(LOWORD(partner.Of(WM_DDE_REQUEST)[0].lp), CF_TEXT);
    partner.clear();
    // Data blocks: the text shown, the block freed when released.
    const std::pair<std::string, std::string> cases[] = {
        {{"abc\r\n", 6}, "abc"}, {{"abc\n", 5}, "abc"},     {{"a\r\nb", 5}, "a\r\nb"}, {{"x\ry", 4}, "x"},
        {{"plain", 6}, "plain"}, {"noend", "noend"} /* the block ends the text */,  {"", ""},
    };
    for (const auto& [bytes, shown] : cases) {
        HGLOBAL block = Block(0x2000, bytes);  // fRelease: the client frees it
        Send(client, WM_DDE_DATA, partner, block, GlobalAddAtomA("FkDataItem"));
        EXPECT_EQ(WindowText(client), shown);
        EXPECT_EQ(GlobalSize(block), 0u) << "released block is freed";
    }
    EXPECT_EQ(GlobalFindAtomA("FkDataItem"), 0) << "unacknowledged item atoms are deleted";
    // What is acknowledged: data that asks for it, an execute, an unadvise from the client's own server.
    HGLOBAL block = Block(0x8000, {"kept", 5});  // fAckReq; the block stays the sender's
    ATOM item = GlobalAddAtomA("FkAckItem");
    Send(client, WM_DDE_DATA, partner, block, item);
    EXPECT_EQ(WindowText(client), "kept");
    EXPECT_GT(GlobalSize(block), 0u);
    GlobalFree(block);
    EXPECT_EQ(Ack(partner), (Words{reinterpret_cast<UINT_PTR>(client.get()), 0x8000, item}));
    HGLOBAL command = GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE, 8);
    std::memcpy(GlobalLock(command), "[run()]", 8), GlobalUnlock(command);
    SendMessageA(client, WM_DDE_EXECUTE, reinterpret_cast<WPARAM>(partner.hwnd()), reinterpret_cast<LPARAM>(command));
    EXPECT_EQ(Ack(partner).at(0), reinterpret_cast<UINT_PTR>(client.get()));
    GlobalFree(command);
    item = GlobalAddAtomA("FkUnadvised");
    SendMessageA(client, WM_DDE_UNADVISE, reinterpret_cast<WPARAM>(partner.hwnd()), MAKELPARAM(CF_TEXT, item));
    EXPECT_EQ(GetPropA(client, "CLIENT"), nullptr);
    EXPECT_EQ(Ack(partner), (Words{reinterpret_cast<UINT_PTR>(client.get()), 0x8000, item}));
    HGLOBAL advise = GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE, 4);
    Send(client, WM_DDE_ADVISE, partner, advise, 0);
    EXPECT_EQ(GlobalSize(advise), 0u) << "an advise block is freed";
    // The server: an initiate answered with the names asked for, a request with at most 158 characters, a request
    // it cannot allocate an answer for with 0xFFFF.
    auto server = Field("@SERVER(FkApp,FkTopic,Value)");
    const LPARAM names = MAKELPARAM(GlobalAddAtomA("FkApp"), GlobalAddAtomA("FkTopic"));
    SendMessageA(server, WM_DDE_INITIATE, reinterpret_cast<WPARAM>(partner.hwnd()), names);
    ASSERT_EQ(partner.Of(WM_DDE_ACK).size(), 1u);
    EXPECT_EQ(std::make_pair(partner.Of(WM_DDE_ACK)[0].wp, partner.Of(WM_DDE_ACK)[0].lp),
              std::make_pair(reinterpret_cast<WPARAM>(server.get()), names));
    partner.clear();
    SetWindowTextA(server, std::string(300, 'x').c_str());
    item = GlobalAddAtomA("Value");
    SendMessageA(server, WM_DDE_REQUEST, reinterpret_cast<WPARAM>(partner.hwnd()), MAKELPARAM(CF_TEXT, item));
    ASSERT_TRUE(PumpUntil([&] { return !partner.Of(WM_DDE_DATA).empty(); }));
    UINT_PTR data = 0;
    UnpackDDElParam(WM_DDE_DATA, partner.Of(WM_DDE_DATA)[0].lp, &data, &atom);
    FreeDDElParam(WM_DDE_DATA, partner.Of(WM_DDE_DATA)[0].lp);
    const auto* answer = static_cast<const BYTE*>(GlobalLock(reinterpret_cast<HGLOBAL>(data)));
    EXPECT_EQ(std::make_pair(answer[1] & 0xB0, answer[2]), std::make_pair(0x30, BYTE{CF_TEXT})) << "flags";
    EXPECT_EQ(reinterpret_cast<const char*>(answer + 4), std::string(158, 'x')) << "at most 158 characters";
    GlobalUnlock(reinterpret_cast<HGLOBAL>(data)), GlobalFree(reinterpret_cast<HGLOBAL>(data));
    EXPECT_EQ(atom, item);
    partner.clear();
    fkFailAllocation(1);
    twProcessDDE(server, WM_DDE_REQUEST, reinterpret_cast<WPARAM>(partner.hwnd()), MAKELPARAM(CF_TEXT, item), nullptr);
    fkFailAllocation(0);
    EXPECT_EQ(Ack(partner), (Words{reinterpret_cast<UINT_PTR>(server.get()), 0xFFFF, item}));
    EXPECT_TRUE(partner.Of(WM_DDE_DATA).empty());
    for (ATOM a : {item, GlobalFindAtomA("FkAckItem"), GlobalFindAtomA("FkUnadvised")}) GlobalDeleteAtom(a);
}

}  // namespace

