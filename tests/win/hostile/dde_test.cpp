// DDE links against a raw partner in a second process (this program started with --dde-partner) that
// misbehaves on purpose: bad blocks, acknowledgements out of turn, dying while linked. The partner hands
// every atom over with one reference of its own and deletes what comes back: afterwards none may be left.
#include <dde.h>

#include <map>

#include "tests/support/pump.h"
#include "tests/support/recorder.h"
#include "tests/win/hostile/hostile.h"

namespace fktest {
namespace {

constexpr char kClass[] = "FkDdePartner", kHanded[] = "FkHandedItem", kPartnerApp[] = "FkPartnerApp";
constexpr char kServerMethod[] = "@SERVER(FkHostileApp,Topic,Item)";
constexpr char kClientMethod[] = "@CLIENT(FkPartnerApp,Topic,Item)NOAUTOSTART";
enum Command : UINT { kPost = WM_APP, kInitiate, kFlush };  // sent to the partner's main window
enum InitMode { kAnswer, kTwoAnswers, kTerminateFirst, kDieBeforeAnswer, kDieAfterAnswer };  // its answer to an initiate
enum Block { kAsWords, kNull, kForeign, kFreed, kTiny1, kTiny3, kUnterminated, kBitmap, kText, kAckReq, kKept, kSent };
const char* const kBlockNames[] = {"as words", "null block", "foreign number", "freed block", "1 byte", "3 bytes",
    "unterminated", "bitmap format", "text", "acknowledgement asked", "not released", "sent not posted"};
const char* const kMessageNames[] = {"initiate", "terminate", "advise", "unadvise", "ack", "data", "request", "poke", "execute"};
const char* const kShownAsData[] = {nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, "abcdefgh", "bits", nullptr,
                                    "acked", "kept", nullptr};
// What the partner posts (a request's and an unadvise's block name its format); acknowledgements of nothing.
const std::pair<UINT, std::vector<Block>> kPosts[] = {
    {WM_DDE_DATA, {kNull, kForeign, kFreed, kTiny1, kTiny3, kUnterminated, kBitmap, kAckReq, kKept, kSent}},
    {WM_DDE_POKE, {kNull, kForeign, kTiny1, kUnterminated, kText}},
    {WM_DDE_ADVISE, {kNull, kForeign, kFreed, kTiny1, kTiny3, kBitmap}},
    {WM_DDE_EXECUTE, {kNull, kForeign, kFreed, kUnterminated, kText}},
    {WM_DDE_REQUEST, {kAsWords, kBitmap}},
    {WM_DDE_ACK, {kAsWords, kForeign, kSent}},
};
std::string Title(DWORD testPid, bool second) { return (second ? "second " : "main ") + std::to_string(testPid); }

// ---- the partner process

HWND g_main, g_second;
InitMode g_mode;
std::map<UINT, LRESULT> g_counts;
std::set<HGLOBAL> g_executes;  // command blocks that come back with their acknowledgement
constexpr UINT kShare = GMEM_MOVEABLE | GMEM_DDESHARE;

HGLOBAL Bytes(const void* data, size_t n) {
    HGLOBAL h = GlobalAlloc(kShare, n);
    std::memcpy(GlobalLock(h), data, n);
    GlobalUnlock(h);
    return h;
}
HGLOBAL Record(WORD flags, WORD format, const char* bytes, size_t n) {  // no terminator added
    char all[64];
    std::memcpy(all, &flags, 2), std::memcpy(all + 2, &format, 2), std::memcpy(all + 4, bytes, n);
    return Bytes(all, n + 4);
}
HGLOBAL MakeBlock(UINT msg, Block b) {  // foreign and freed handles are dead ones
    const bool execute = msg == WM_DDE_EXECUTE;
    switch (b) {
    case kForeign: return reinterpret_cast<HGLOBAL>(0x00C0FFEE);
    case kFreed: {
        HGLOBAL h = GlobalAlloc(kShare, 16);
        return GlobalFree(h), h;
    }
    case kTiny1: return Bytes("\xFF", 1);
    case kTiny3: return Bytes("\xFF\xFF\xFF", 3);
    case kUnterminated: return execute ? Bytes("[open(", 6) : Record(0x2000, CF_TEXT, "abcdefgh", 8);
    case kBitmap: return msg == WM_DDE_ADVISE ? Record(0x8000, CF_BITMAP, "", 0) : Record(0x2000, CF_BITMAP, "bits", 5);
    case kText: return execute ? Bytes("[open()]", 9) : Record(0x8000, CF_TEXT, "text", 5);
    case kAckReq: return Record(0xA000, CF_TEXT, "acked\r\n", 8);
    case kKept: return Record(0x8000, CF_TEXT, "kept", 5);
    case kSent: return Record(0x2000, CF_TEXT, "sent", 5);
    default: return nullptr;
    }
}
bool Real(UINT_PTR h) { return h != 0 && GlobalSize(reinterpret_cast<HGLOBAL>(h)) != 0; }

// Posts (or sends) one hostile message; whatever the system refused or copied is cleaned up here.
LRESULT Post(HWND lib, UINT msg, Block b) {
    ATOM item = GlobalAddAtomA(kHanded);
    HGLOBAL block = MakeBlock(msg, b);
    const bool owned = b != kForeign && b != kFreed && block != nullptr;
    const bool words = msg == WM_DDE_REQUEST || msg == WM_DDE_UNADVISE;
    const bool packed = !words && msg != WM_DDE_EXECUTE && !(msg == WM_DDE_ACK && b == kSent);
    const UINT_PTR lo = msg == WM_DDE_ACK ? 0x8000 : UINT_PTR(block), hi = msg == WM_DDE_ACK && b == kForeign ? 0xC0FFEE : item;
    const LPARAM lp = words ? MAKELPARAM(b == kBitmap ? CF_BITMAP : b == kNull ? 0 : CF_TEXT, item)
                      : msg == WM_DDE_EXECUTE ? LPARAM(block) : packed ? PackDDElParam(msg, lo, hi) : MAKELPARAM(lo, hi);
    const WPARAM me = reinterpret_cast<WPARAM>(g_main);  // a sent handle means nothing over there
    const LRESULT posted = b == kSent ? (SendMessageA(lib, msg, me, lp), 0) : PostMessageA(lib, msg, me, lp);
    if (packed && (!posted || Real(lp))) FreeDDElParam(msg, lp);  // the receiver got copies
    if (posted && owned && msg == WM_DDE_EXECUTE) {
        g_executes.insert(block);
    } else if (owned && Real(UINT_PTR(block))) {
        GlobalFree(block);
    }
    if (!posted || msg == WM_DDE_EXECUTE || hi != item) GlobalDeleteAtom(item);  // not handed over
    return posted;
}

void SendNames(HWND to, UINT msg, HWND from, const char* appName) {  // app and topic atoms stay the sender's
    ATOM app = GlobalAddAtomA(appName), topic = GlobalAddAtomA("Topic");
    SendMessageA(to, msg, reinterpret_cast<WPARAM>(from), MAKELPARAM(app, topic));
    GlobalDeleteAtom(app), GlobalDeleteAtom(topic);
}

void OnInitiate(HWND lib, LPARAM lp) {
    char app[64] = "", topic[64] = "";
    GlobalGetAtomNameA(LOWORD(lp), app, sizeof app);
    GlobalGetAtomNameA(HIWORD(lp), topic, sizeof topic);
    if (lstrcmpiA(app, kPartnerApp) != 0 || lstrcmpiA(topic, "Topic") != 0) return;
    if (g_mode == kDieBeforeAnswer) ExitProcess(3);
    if (g_mode == kTerminateFirst) PostMessageA(lib, WM_DDE_TERMINATE, reinterpret_cast<WPARAM>(g_main), 0);
    SendNames(lib, WM_DDE_ACK, g_main, kPartnerApp);
    if (g_mode == kTwoAnswers) SendNames(lib, WM_DDE_ACK, g_second, kPartnerApp);
    if (g_mode == kDieAfterAnswer) ExitProcess(4);
}

void OnPosted(const MSG& m) {  // what the library hands over is deleted or freed here
    ++g_counts[m.message];
    if (m.message == WM_DDE_REQUEST || m.message == WM_DDE_UNADVISE) GlobalDeleteAtom(HIWORD(m.lParam));
    if (m.message != WM_DDE_ACK && m.message != WM_DDE_DATA && m.message != WM_DDE_ADVISE) return;
    UINT_PTR lo = 0, hi = 0;
    UnpackDDElParam(m.message, m.lParam, &lo, &hi);
    FreeDDElParam(m.message, m.lParam);
    if (m.message != WM_DDE_ACK && lo) GlobalFree(reinterpret_cast<HGLOBAL>(lo));
    if (g_executes.erase(reinterpret_cast<HGLOBAL>(hi))) {
        GlobalFree(reinterpret_cast<HGLOBAL>(hi));
    } else if (hi >= 0xC000 && hi <= 0xFFFF) {
        GlobalDeleteAtom(static_cast<ATOM>(hi));
    }
}

LRESULT CALLBACK PartnerProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    const HWND lib = reinterpret_cast<HWND>(wp);
    switch (msg) {
    case WM_DDE_INITIATE:
        if (h == g_main && lib != g_main && lib != g_second) OnInitiate(lib, lp);
        return 0;
    case WM_DDE_ACK: return 1;  // sent: the answer to our initiate
    case kPost: return Post(lib, LOWORD(lp), static_cast<Block>(HIWORD(lp)));
    case kInitiate:  // lParam 1: names HWND_BROADCAST as the initiator, to the server and as a server
        for (const char* app : {"FkHostileApp", kPartnerApp}) {
            SendNames(lib, WM_DDE_INITIATE, lp ? HWND_BROADCAST : g_main, app);
            if (!lp) break;
        }
        return 1;
    case kFlush:  // handles the posted messages waiting; how many of message wParam came in
        for (MSG m; PeekMessageA(&m, nullptr, WM_DDE_FIRST, WM_DDE_LAST, PM_REMOVE);) OnPosted(m);
        return g_counts[static_cast<UINT>(wp)];
    }
    return DefWindowProcA(h, msg, wp, lp);
}

}  // namespace

int RunDdePartner(const char* testPid, const char* mode) {
    g_mode = static_cast<InitMode>(std::atoi(mode));
    WNDCLASSA wc{};
    wc.lpfnWndProc = PartnerProc, wc.hInstance = GetModuleHandleA(nullptr), wc.lpszClassName = kClass;
    RegisterClassA(&wc);
    for (HWND* w : {&g_second, &g_main})
        *w = CreateWindowExA(0, kClass, Title(std::strtoul(testPid, nullptr, 10), w == &g_second).c_str(), WS_POPUP, 0,
                             0, 10, 10, nullptr, nullptr, wc.hInstance, nullptr);
    SetTimer(nullptr, 0, 120000, nullptr);  // a partner whose test is gone does not stay
    for (MSG m; GetMessageA(&m, nullptr, 0, 0) > 0 && m.message != WM_TIMER;)
        m.message >= WM_DDE_FIRST && m.message <= WM_DDE_LAST ? OnPosted(m) : void(DispatchMessageA(&m));
    return 0;
}

// ---- the tests

namespace {

class Partner {  // killed when the test is done with it, or fails
public:
    explicit Partner(InitMode mode = kAnswer) {
        char exe[MAX_PATH] = {};
        GetModuleFileNameA(nullptr, exe, MAX_PATH);
        const std::string pid = std::to_string(GetCurrentProcessId());
        std::string command = "\"" + std::string(exe) + "\" --dde-partner " + pid + " " + std::to_string(mode);
        STARTUPINFOA si{sizeof si};
        if (!CreateProcessA(exe, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &si, &pi_)) return;
        auto find = [&](bool second) { return FindWindowA(kClass, Title(GetCurrentProcessId(), second).c_str()); };
        PumpUntil([&] { return (main = find(false)) != nullptr && (second = find(true)) != nullptr; }, 20000);
    }
    ~Partner() { Kill(); }
    LRESULT Ask(Command c, WPARAM wp = 0, LPARAM lp = 0) const {
        DWORD_PTR r = 0;
        SendMessageTimeoutA(main, c, wp, lp, SMTO_NORMAL, 5000, &r);
        return static_cast<LRESULT>(r);
    }
    LRESULT Post(HWND lib, UINT msg, Block b) const { return Ask(kPost, WPARAM(lib), MAKELPARAM(msg, b)); }
    bool Exited() const { return PumpUntil([&] { return WaitForSingleObject(pi_.hProcess, 0) == WAIT_OBJECT_0; }, 5000); }
    void Kill() {
        if (pi_.hProcess == nullptr) return;
        TerminateProcess(pi_.hProcess, 99);
        WaitForSingleObject(pi_.hProcess, 5000);
        CloseHandle(pi_.hProcess), CloseHandle(pi_.hThread), pi_ = {};
    }
    LRESULT Settle(UINT counted = 0) const {  // both sides, twice over (answers provoke answers); a count
        for (int i = 0; i < 2; ++i) PumpFor(30), Ask(kFlush);
        PumpFor(30);
        return Ask(kFlush, counted);
    }
    HWND main = nullptr, second = nullptr;

private:
    PROCESS_INFORMATION pi_{};
};

UniqueWindow Field(const char* method) {  // top-level: initiates reach top-level windows only
    UniqueWindow f(CreateWindowExA(0, FK_CLASS_STRING, "", WS_POPUP | WS_VISIBLE, 0, 0, 150, 24, nullptr, nullptr,
                                   nullptr, nullptr));
    SendMessageA(f, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(method));
    return f;
}
HWND Prop(HWND h, const char* name) { return static_cast<HWND>(GetPropA(h, name)); }

// The library windows still work after it all: a value set is pushed to or asked of the partner (when it
// lives), and they go without leaving anything behind.
void StillWorks(UniqueWindow& server, UniqueWindow& client, const Partner* alive) {
    const LRESULT data = alive ? alive->Settle(WM_DDE_DATA) : 0, asked = alive ? alive->Settle(WM_DDE_REQUEST) : 0;
    SetWindowTextA(server, "after");
    SendMessageA(client, GXM_SETVALUE, 0, 0);
    SetWindowTextA(client, "typed");
    if (alive) {
        EXPECT_GT(alive->Settle(WM_DDE_DATA), data) << "a push reaches the partner";
        EXPECT_GT(alive->Settle(WM_DDE_REQUEST), asked) << "a refresh asks the partner";
    }
    EXPECT_EQ(WindowText(server) + WindowText(client), "aftertyped");
    server.reset(), client.reset();
    PumpFor(30);
}

}  // namespace

class HostileDde : public HostileGroup {};

// Before linking: an acknowledgement after a server's announcement found nobody registers nobody; an initiate
// naming HWND_BROADCAST as its sender is not answered (to every window). Then every bad block and stray
// acknowledgement, to a linked server and client: the copies the system makes are freed (eleven rounds),
// no handed-over atom is kept. Within the process, blocks are handed over unchecked; direct calls with junk.
TEST_F(HostileDde, PartnerPostsBadBlocksAndStrayAcknowledgements) {
    MessageBoxWatcher boxes(IDNO);
    Partner partner;
    ASSERT_NE(partner.second, nullptr);
    UniqueWindow server = Field(kServerMethod);  // its announcement finds nobody
    partner.Post(server, WM_DDE_ACK, kSent);
    EXPECT_EQ(Prop(server, "SERVER1"), nullptr) << "a stray acknowledgement registered its sender";
    UniqueWindow client = Field(kClientMethod);
    ASSERT_EQ(Prop(client, "CLIENT"), partner.main);
    RecordingParent bystander;
    for (HWND lib : {server.get(), client.get()}) partner.Ask(kInitiate, WPARAM(lib), 1);
    EXPECT_TRUE(bystander.Of(WM_DDE_ACK).empty()) << "an initiate naming HWND_BROADCAST was answered to everyone";
    EXPECT_EQ(Prop(client, "CLIENT"), partner.main);
    EXPECT_EQ(Prop(server, "SERVER1"), nullptr);
    partner.Ask(kInitiate, WPARAM(server.get()));
    ASSERT_EQ(Prop(server, "SERVER1"), partner.main);
    partner.Settle();
    int posted = 0;
    long heapBefore = 0;
    for (int round = 0; round <= 10; ++round) {
        if (round == 1) heapBefore = MeasureHeap(GetProcessHeap()).blocks;
        for (const auto& [msg, blocks] : kPosts)
            for (Block b : blocks)
                for (HWND lib : {server.get(), client.get()}) {
                    const std::string name = std::string(kMessageNames[msg - WM_DDE_FIRST]) + ", " + kBlockNames[b] +
                                             (lib == server ? " to the server" : " to the client");
                    NowTrying("dde partner", name.c_str());
                    if (round == 0) SetWindowTextA(lib, "before");
                    posted += partner.Post(lib, msg, b) != 0;
                    if (round > 0) continue;
                    partner.Settle();
                    EXPECT_EQ(GlobalFindAtomA(kHanded), 0) << name << ": a handed-over atom is kept";
                    if (msg == WM_DDE_DATA && kShownAsData[b]) EXPECT_EQ(WindowText(lib), kShownAsData[b]) << name;
                    ASSERT_TRUE(IsWindow(lib)) << name;
                }
        partner.Settle();
    }
    EXPECT_GE(posted, 220) << "most hostile posts reach the library";
    EXPECT_LT(MeasureHeap(GetProcessHeap()).blocks - heapBefore, 10) << "a block left behind by some message";
    EXPECT_EQ(GlobalFindAtomA(kHanded), 0);
    for (const auto& [msg, blocks] : kPosts)
        for (Block b : blocks)
            for (HWND lib : {server.get(), client.get()}) {
                if (msg != WM_DDE_DATA && msg != WM_DDE_POKE && msg != WM_DDE_ADVISE) continue;
                NowTrying("dde blocks sent within the process", kBlockNames[b]);
                HGLOBAL block = MakeBlock(msg, b);
                SendMessageA(lib, msg, 0, PackDDElParam(msg, reinterpret_cast<UINT_PTR>(block), 0));
                const bool kept = msg == WM_DDE_POKE || (msg == WM_DDE_DATA && (b == kTiny1 || b == kKept));  // not released
                if (kept && b != kForeign && b != kFreed && block != nullptr) GlobalFree(block);
            }
    StillWorks(server, client, &partner);
    UniqueWindow control = Field(kServerMethod);  // direct calls with junk; messages outside the range are not ours
    char empty[4] = "";
    NowTrying("dde direct calls", "junk");
    for (UINT msg = WM_DDE_FIRST; msg <= WM_DDE_LAST; ++msg) {
        for (LPARAM lp : {LPARAM(0), LPARAM(1), LPARAM(0x12345678), LPARAM(-1), MAKELPARAM(0x8000, 0xC123)}) {
            twProcessDDE(control, msg, 0, lp, nullptr);
            twProcessDDE(control, msg, reinterpret_cast<WPARAM>(control.get()), lp, empty);
            twProcessDDE(nullptr, msg, 0, lp, nullptr);
        }
        twProcessDDE(control, msg, 0, PackDDElParam(WM_DDE_DATA, 0x1234, 0), nullptr);  // not a block
    }
    EXPECT_EQ(twProcessDDE(control, WM_USER, 0, 0, nullptr), 0);
    EXPECT_EQ(twProcessDDE(control, WM_DDE_ACK, 0, 0, nullptr), 1);
    EXPECT_EQ(twProcessDDEData(nullptr, nullptr) | twRequestDDEData(nullptr), 0);
    twUnadviseDDE(nullptr);
    EXPECT_EQ(twInitiateDDE(control, nullptr), 1);
}

// How the partner answers a client's initiate: twice from two windows (the last answer links), with a
// terminate posted before its acknowledgement (ignored), not at all as it dies on the spot, or by dying right
// after answering. Or it answers, posts its last words and is killed before the library reads them: data
// asking for an acknowledgement, a request, an advise, unadvises. The library answers nobody and deletes
// the atoms handed over itself.
TEST_F(HostileDde, PartnerAnswersOutOfTurnOrDies) {
    MessageBoxWatcher boxes(IDNO);
    const struct {
        InitMode mode;
        const char* name;
        bool linked, toSecond, dies, lastWords;
    } cases[] = {
        {kTwoAnswers, "two answers", true, true, false, false},
        {kTerminateFirst, "terminate before the acknowledgement", true, false, false, false},
        {kDieBeforeAnswer, "dies before answering", false, false, true, false},
        {kDieAfterAnswer, "dies after answering", true, false, true, false},
        {kAnswer, "killed after its last words", true, false, false, true},
    };
    for (const auto& c : cases) {
        NowTrying("dde initiate", c.name);
        Partner partner(c.mode);
        ASSERT_NE(partner.second, nullptr) << c.name;
        UniqueWindow server = Field(kServerMethod), client = Field(kClientMethod);
        if (c.dies) EXPECT_TRUE(partner.Exited()) << c.name;
        if (!c.dies) partner.Settle();
        PumpFor(50);
        EXPECT_EQ(Prop(client, "CLIENT"), !c.linked ? nullptr : c.toSecond ? partner.second : partner.main) << c.name;
        if (c.lastWords) {
            partner.Ask(kInitiate, WPARAM(server.get()));
            partner.Settle();
            ASSERT_EQ(Prop(server, "SERVER1"), partner.main);
            partner.Post(client, WM_DDE_DATA, kAckReq);
            for (auto [msg, b] : {std::pair{WM_DDE_REQUEST, kAsWords}, {WM_DDE_ADVISE, kText},
                                  {WM_DDE_UNADVISE, kNull}, {WM_DDE_UNADVISE, kText}})
                partner.Post(server, msg, b);
            partner.Kill();
            PumpFor(100);
            EXPECT_EQ(WindowText(client), "acked");
            EXPECT_EQ(Prop(server, "SERVER1"), nullptr) << "the unadvise freed the slot";
        }
        EXPECT_TRUE(boxes.boxes().empty()) << c.name;
        StillWorks(server, client, nullptr);
        EXPECT_EQ(GlobalFindAtomA(kHanded), 0) << c.name << ": atoms the partner handed over";
    }
}

}  // namespace fktest
