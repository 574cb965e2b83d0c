// DDE against a raw partner in a second process that misbehaves on purpose; it hands each atom over once.
#include <dde.h>

#include <string_view>

#include "tests/support/self_process.h"
#include "tests/win/hostile/hostile.h"

namespace fktest {
namespace {

using namespace std::literals;
constexpr char kClass[] = "FkDdePartner", kHanded[] = "FkHandedItem";
constexpr char kServerMethod[] = "@SERVER(FkHostileApp,Topic,Item)";
constexpr char kClientMethod[] = "@CLIENT(FkPartnerApp,Topic,Item)NOAUTOSTART";
constexpr UINT kPost = WM_APP, kInitiate = WM_APP + 1;  // sent to the partner, which first handles what came posted
enum InitMode { kAnswer, kTwoAnswers, kTerminateFirst, kDieBeforeAnswer, kDieAfterAnswer };  // its answer to an initiate
// How a row's block travels: a block of its bytes packed with the item atom (an execute's alone), words (a request's
// and an unadvise's: the format named by the bytes), sent instead of posted, or a null, never allocated or freed
// handle. No terminator is added to the bytes.
enum How { kPacked, kWords, kSent, kNull, kForeign, kFreed };
const struct Row {
    UINT msg;
    How how;
    std::string_view bytes = {};
    const char* shown = nullptr;  // what a data row leaves on the control; null: not looked at
} kRows[] = {
    {WM_DDE_DATA, kNull}, {WM_DDE_DATA, kForeign}, {WM_DDE_DATA, kFreed, "dead"}, {WM_DDE_DATA, kPacked, "\xFF"},
    {WM_DDE_DATA, kPacked, "\xFF\xFF\xFF"}, {WM_DDE_DATA, kPacked, "\0\x20\1\0" "abcdefgh"sv, "abcdefgh"},
    {WM_DDE_DATA, kPacked, "\0\x20\2\0" "bits\0"sv, "bits"}, {WM_DDE_DATA, kPacked, "\0\x80\1\0" "kept\0"sv, "kept"},
    {WM_DDE_DATA, kSent, "\0\x20\1\0" "sent\0"sv}, {WM_DDE_POKE, kNull}, {WM_DDE_POKE, kForeign},
    {WM_DDE_POKE, kPacked, "\xFF"}, {WM_DDE_POKE, kPacked, "\0\x20\1\0" "abcdefgh"sv},
    {WM_DDE_POKE, kPacked, "\0\x80\1\0" "text\0"sv}, {WM_DDE_ADVISE, kNull}, {WM_DDE_ADVISE, kForeign},
    {WM_DDE_ADVISE, kFreed, "dead"}, {WM_DDE_ADVISE, kPacked, "\xFF"}, {WM_DDE_ADVISE, kPacked, "\xFF\xFF\xFF"},
    {WM_DDE_ADVISE, kPacked, "\0\x80\2\0"sv}, {WM_DDE_EXECUTE, kNull}, {WM_DDE_EXECUTE, kForeign},
    {WM_DDE_EXECUTE, kFreed, "dead"}, {WM_DDE_EXECUTE, kPacked, "[open("}, {WM_DDE_EXECUTE, kPacked, "[open()]\0"sv},
    {WM_DDE_REQUEST, kWords, "text"}, {WM_DDE_REQUEST, kWords, "bitmap"}, {WM_DDE_ACK, kPacked}, {WM_DDE_ACK, kForeign},
    {WM_DDE_ACK, kSent}, {WM_DDE_DATA, kPacked, "\0\xA0\1\0" "acked\r\n\0"sv, "acked"},
    // Posted only as the last words of a partner about to die, to the server: an unadvise that a live partner posts
    // to a control without its advise loop leaves the handed item atom in the table today.
    {WM_DDE_UNADVISE, kWords, "none"}, {WM_DDE_UNADVISE, kWords, "text"}};
constexpr int kStrayAck = 29, kLastWords = 30;
std::string Title(DWORD partnerPid) { return "partner " + std::to_string(partnerPid); }

// ---- the partner process

HWND g_main;
InitMode g_mode;

// Posts (or sends) one hostile row. Its blocks are left to the partner's end; its atom is deleted unless handed over.
LRESULT Post(HWND lib, const Row& r) {
    const UINT msg = r.msg;
    ATOM item = GlobalAddAtomA(kHanded);
    HGLOBAL block = r.how == kForeign ? kForeignHandle : nullptr;
    if (r.how != kForeign && r.how != kNull && msg != WM_DDE_ACK) {
        block = GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE, r.bytes.size());
        std::memcpy(GlobalLock(block), r.bytes.data(), r.bytes.size());
        GlobalUnlock(block);
        if (r.how == kFreed) GlobalFree(block);
    }
    const bool words = r.how == kWords, packed = !words && msg != WM_DDE_EXECUTE && !(msg == WM_DDE_ACK && r.how == kSent);
    const UINT_PTR lo = msg == WM_DDE_ACK ? 0x8000 : UINT_PTR(block);
    const UINT_PTR hi = r.how == kForeign && msg == WM_DDE_ACK ? 0xC0FFEE : item;
    const WORD format = r.bytes == "bitmap" ? CF_BITMAP : r.bytes == "none" ? 0 : CF_TEXT;
    const LPARAM lp = words ? MAKELPARAM(format, item)
                      : msg == WM_DDE_EXECUTE ? LPARAM(block) : packed ? PackDDElParam(msg, lo, hi) : MAKELPARAM(lo, hi);
    const WPARAM me = reinterpret_cast<WPARAM>(g_main);  // a sent handle means nothing over there
    const LRESULT posted = r.how == kSent ? (SendMessageA(lib, msg, me, lp), 0) : PostMessageA(lib, msg, me, lp);
    if (!posted || msg == WM_DDE_EXECUTE || hi != item) GlobalDeleteAtom(item);
    return posted;
}

void SendNames(HWND to, UINT msg, HWND from, const char* appName) {  // app and topic atoms stay the sender's
    ATOM app = GlobalAddAtomA(appName), topic = GlobalAddAtomA("Topic");
    SendMessageA(to, msg, reinterpret_cast<WPARAM>(from), MAKELPARAM(app, topic));
    GlobalDeleteAtom(app), GlobalDeleteAtom(topic);
}

void OnPosted(const MSG& m) {  // the atom the library hands over is deleted; blocks are left to the partner's end
    UINT_PTR lo = 0, hi = 0;
    UnpackDDElParam(m.message, m.lParam, &lo, &hi);
    if (hi >= 0xC000 && hi <= 0xFFFF) GlobalDeleteAtom(static_cast<ATOM>(hi));
}

LRESULT CALLBACK PartnerProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    const HWND lib = reinterpret_cast<HWND>(wp);
    char app[64] = "";
    for (MSG m; (msg == kPost || msg == kInitiate) && PeekMessageA(&m, nullptr, WM_DDE_FIRST, WM_DDE_LAST, PM_REMOVE);)
        OnPosted(m);
    if (msg == kPost) return lp < 0 ? 0 : Post(lib, kRows[lp]);  // lParam < 0: handles what came, no more
    if (msg == kInitiate)  // to the server and as a server; lParam 1: naming HWND_BROADCAST as the initiator
        for (const char* name : {"FkPartnerApp", "FkHostileApp"})
            SendNames(lib, WM_DDE_INITIATE, lp ? HWND_BROADCAST : g_main, name);
    if (msg == WM_DDE_ACK) return 1;  // sent: the answer to our initiate
    if (msg != WM_DDE_INITIATE || lib == h) return DefWindowProcA(h, msg, wp, lp);
    GlobalGetAtomNameA(LOWORD(lp), app, sizeof app);  // an initiate: answered by mode
    if (lstrcmpiA(app, "FkPartnerApp") != 0) return 0;
    if (g_mode == kDieBeforeAnswer) ExitProcess(3);
    if (g_mode == kTerminateFirst) PostMessageA(lib, WM_DDE_TERMINATE, reinterpret_cast<WPARAM>(g_main), 0);
    for (int answers = g_mode == kTwoAnswers ? 2 : 1; answers > 0; --answers)
        SendNames(lib, WM_DDE_ACK, g_main, "FkPartnerApp");
    if (g_mode == kDieAfterAnswer) ExitProcess(4);
    return 0;
}

// ---- the tests

// Killed when the test is done with it, or fails. Its window carries its own process id: the partner of an earlier
// case, whose window may outlive its process handle by a little, is never taken for this one, and is waited out.
struct Partner : SelfProcess {
    explicit Partner(InitMode mode = kAnswer) : SelfProcess("--dde-partner " + std::to_string(mode)) {
        if (pi.hProcess) PumpUntil([&] { return (main = FindWindowA(kClass, Title(pi.dwProcessId).c_str())); }, 20000);
    }
    ~Partner() {
        Kill();
        PumpUntil([&] { return !IsWindow(main); }, 20000);
    }
    LRESULT Ask(UINT command, HWND lib, LPARAM lp) const {
        DWORD_PTR r = 0;
        SendMessageTimeoutA(main, command, reinterpret_cast<WPARAM>(lib), lp, SMTO_NORMAL, 5000, &r);
        return static_cast<LRESULT>(r);
    }
    void Settle() const {  // both sides, twice over (answers provoke answers)
        for (int i = 0; i < 3; ++i) PumpIdle(), Ask(kPost, nullptr, -1);
    }
    HWND main = nullptr;
};

UniqueWindow Field(const char* method) {  // top-level: initiates reach top-level windows only
    UniqueWindow f(CreateWindowExA(0, FK_CLASS_STRING, "", WS_POPUP | WS_VISIBLE, 0, 0, 150, 24, nullptr, nullptr,
                                   nullptr, nullptr));
    SendMessageA(f, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(method));
    return f;
}
HWND Prop(HWND h, const char* name) { return static_cast<HWND>(GetPropA(h, name)); }

}  // namespace

class HostileDde : public HostileGroup {};

// Initiates answered twice, after a terminate, or by a partner that dies before or after answering (the client links
// to the partner that answered, dead or alive, and shows no box); then stray acks and broadcast initiates, every bad
// block both ways, copies freed, and the partner killed mid-talk.
TEST_F(HostileDde, PartnerAnswersOutOfTurnPostsBadBlocksAndStrayAcknowledgementsAndIsKilled) {
    MessageBoxWatcher boxes(IDNO);
    for (InitMode mode : {kTwoAnswers, kTerminateFirst, kDieBeforeAnswer, kDieAfterAnswer}) {
        Partner rogue(mode);
        UniqueWindow client = Field(kClientMethod);
        if (mode >= kDieBeforeAnswer) EXPECT_TRUE(rogue.Exited(20000)) << "mode " << mode;
        rogue.Settle();
        EXPECT_EQ(Tried(Prop(client, "CLIENT")) == rogue.main && rogue.main, mode != kDieBeforeAnswer) << "mode " << mode;
    }
    EXPECT_TRUE(boxes.boxes().empty());
    Partner partner;
    ASSERT_NE(partner.main, nullptr);
    UniqueWindow server = Field(kServerMethod);  // its announcement finds nobody
    partner.Ask(kPost, server, kStrayAck);
    UniqueWindow client = Field(kClientMethod);
    RecordingParent bystander;
    for (HWND lib : {server.get(), client.get()}) partner.Ask(kInitiate, lib, 1);
    EXPECT_TRUE(bystander.Of(WM_DDE_ACK).empty()) << "an initiate naming HWND_BROADCAST was answered to everyone";
    partner.Ask(kInitiate, server, 0);
    const std::vector<HWND> links{Prop(client, "CLIENT"), Prop(server, "SERVER1"), Prop(server, "SERVER2")};
    ASSERT_EQ(links, (std::vector<HWND>{partner.main, partner.main, nullptr})) << "a stray ack or broadcast took a slot";
    partner.Settle();
    long heapBefore = 0;
    for (int round = 0; round <= 14; ++round) {
        if (round == 1) heapBefore = MeasureHeap(GetProcessHeap()).blocks;
        for (int i = 0; i <= kLastWords; ++i)
            for (HWND lib : {server.get(), client.get()}) {
                NowTrying("dde partner", "row " + std::to_string(i) + (lib == server ? ", server" : ", client"));
                if (round == 0) SetWindowTextA(lib, "before");
                Tried(partner.Ask(kPost, lib, i));
                if (round > 0) continue;
                partner.Settle();
                EXPECT_EQ(GlobalFindAtomA(kHanded), 0) << g_trying << ": a handed-over atom is kept";
                if (kRows[i].shown) EXPECT_EQ(WindowText(lib), kRows[i].shown) << g_trying;
            }
        partner.Settle();
    }
    EXPECT_LT(MeasureHeap(GetProcessHeap()).blocks - heapBefore, 10) << "a block left behind by some message";
    NowTrying("dde partner killed", "last words");
    for (int i = kLastWords; i < int(std::size(kRows)); ++i) partner.Ask(kPost, i == kLastWords ? client : server, i);
    partner.Kill();
    PumpIdle();  // what it posted before it died
    EXPECT_EQ(WindowText(client) + (Prop(server, "SERVER1") ? " still registered" : ""), "acked") << "unadvised";
    EXPECT_EQ(GlobalFindAtomA(kHanded), 0) << "atoms the dead partner handed over";
}

int RunDdePartner(const char* mode) {
    g_mode = static_cast<InitMode>(std::atoi(mode));
    g_main = CreateTopLevel(kClass, PartnerProc, 10, 10);
    SetWindowTextA(g_main, Title(GetCurrentProcessId()).c_str());
    SetTimer(nullptr, 0, 120000, nullptr);  // a partner whose test is gone does not stay
    for (MSG m; GetMessageA(&m, nullptr, 0, 0) > 0 && m.message != WM_TIMER;)
        m.message >= WM_DDE_FIRST && m.message <= WM_DDE_LAST ? OnPosted(m) : void(DispatchMessageA(&m));
    return 0;
}

}  // namespace fktest
