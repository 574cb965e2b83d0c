// DDE against a raw partner in a second process that misbehaves on purpose; it hands each atom over once.
#include <dde.h>

#include <map>
#include <string_view>

#include "tests/support/self_process.h"
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

HGLOBAL MakeBlock(UINT msg, Block b) {  // foreign and freed handles are dead ones; no terminator added
    using namespace std::literals;
    const bool execute = msg == WM_DDE_EXECUTE;
    const std::string_view bytes[] = {{}, {}, {}, "dead"sv, "\xFF"sv, "\xFF\xFF\xFF"sv,
        execute ? "[open("sv : "\0\x20\1\0" "abcdefgh"sv,
        msg == WM_DDE_ADVISE ? "\0\x80\2\0"sv : "\0\x20\2\0" "bits\0"sv,  // flags, format, bytes
        execute ? "[open()]\0"sv : "\0\x80\1\0" "text\0"sv, "\0\xA0\1\0" "acked\r\n\0"sv, "\0\x80\1\0" "kept\0"sv,
        "\0\x20\1\0" "sent\0"sv};
    if (b == kForeign) return ForeignHandle();
    if (bytes[b].empty()) return nullptr;
    HGLOBAL h = GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE, bytes[b].size());
    std::memcpy(GlobalLock(h), bytes[b].data(), bytes[b].size());
    GlobalUnlock(h);
    return b == kFreed ? (GlobalFree(h), h) : h;
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
    if (owned && !(posted && msg == WM_DDE_EXECUTE) && Real(UINT_PTR(block))) GlobalFree(block);  // else comes back
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
    if (hi >= 0xC000 && hi <= 0xFFFF) {
        GlobalDeleteAtom(static_cast<ATOM>(hi));
    } else if (Real(hi)) {
        GlobalFree(reinterpret_cast<HGLOBAL>(hi));  // a command block, acknowledged
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

// ---- the tests

struct Partner : SelfProcess {  // killed when the test is done with it, or fails
    explicit Partner(InitMode mode = kAnswer)
        : SelfProcess("--dde-partner " + std::to_string(GetCurrentProcessId()) + " " + std::to_string(mode)) {
        auto find = [&](bool second) { return FindWindowA(kClass, Title(GetCurrentProcessId(), second).c_str()); };
        if (pi.hProcess) PumpUntil([&] { return (main = find(false)) != nullptr && (second = find(true)) != nullptr; }, 20000);
    }
    LRESULT Ask(Command c, WPARAM wp = 0, LPARAM lp = 0) const {
        DWORD_PTR r = 0;
        SendMessageTimeoutA(main, c, wp, lp, SMTO_NORMAL, 5000, &r);
        return static_cast<LRESULT>(r);
    }
    LRESULT Post(HWND lib, UINT msg, Block b) const { return Ask(kPost, WPARAM(lib), MAKELPARAM(msg, b)); }
    LRESULT Settle(UINT counted = 0) const {  // both sides, twice over (answers provoke answers); a count
        for (int i = 0; i < 2; ++i) PumpIdle(), Ask(kFlush);
        PumpIdle();
        return Ask(kFlush, counted);
    }
    HWND main = nullptr, second = nullptr;
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

// Stray acks and broadcast initiates, every bad block both ways, copies freed, then the partner killed mid-talk.
TEST_F(HostileDde, PartnerPostsBadBlocksAndStrayAcknowledgementsAndIsKilled) {
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
                    const std::string name = "WM_DDE_FIRST+" + std::to_string(msg - WM_DDE_FIRST) + ", " +
                                             kBlockNames[b] + (lib == server ? " to the server" : " to the client");
                    NowTrying("dde partner", name.c_str());
                    if (round == 0) SetWindowTextA(lib, "before");
                    posted += Tried(partner.Post(lib, msg, b)) != 0;
                    if (round > 0) continue;
                    partner.Settle();
                    EXPECT_EQ(GlobalFindAtomA(kHanded), 0) << name << ": a handed-over atom is kept";
                    if (msg == WM_DDE_DATA && kShownAsData[b]) EXPECT_EQ(WindowText(lib), kShownAsData[b]) << name;
                    ASSERT_TRUE(IsWindow(lib)) << name;
                    if (msg != WM_DDE_DATA && msg != WM_DDE_POKE && msg != WM_DDE_ADVISE) continue;
                    HGLOBAL block = MakeBlock(msg, b);  // within the process the blocks come unchecked
                    Tried(SendMessageA(lib, msg, 0, PackDDElParam(msg, reinterpret_cast<UINT_PTR>(block), 0)));
                    const bool kept = msg == WM_DDE_POKE || (msg == WM_DDE_DATA && (b == kTiny1 || b == kKept));
                    if (kept && b != kForeign && b != kFreed && block != nullptr) GlobalFree(block);  // not released
                }
        partner.Settle();
    }
    EXPECT_GE(posted, 220) << "most hostile posts reach the library";
    EXPECT_LT(MeasureHeap(GetProcessHeap()).blocks - heapBefore, 10) << "a block left behind by some message";
    const LRESULT data = partner.Settle(WM_DDE_DATA), asked = partner.Settle(WM_DDE_REQUEST);
    SetWindowTextA(server, "after");
    SendMessageA(client, GXM_SETVALUE, 0, 0);
    EXPECT_GT(partner.Settle(WM_DDE_DATA), data) << "a push reaches the partner";
    EXPECT_GT(partner.Settle(WM_DDE_REQUEST), asked) << "a refresh asks the partner";
    NowTrying("dde partner killed", "last words");
    partner.Post(client, WM_DDE_DATA, kAckReq);
    for (auto [msg, b] : {std::pair{WM_DDE_REQUEST, kAsWords}, {WM_DDE_ADVISE, kText}, {WM_DDE_UNADVISE, kNull},
                          {WM_DDE_UNADVISE, kText}})
        partner.Post(server, msg, b);
    partner.Kill();
    PumpIdle();  // what it posted before it died
    EXPECT_EQ(WindowText(client), "acked");
    EXPECT_EQ(Prop(server, "SERVER1"), nullptr) << "the unadvise freed the slot";
    EXPECT_EQ(GlobalFindAtomA(kHanded), 0) << "atoms the dead partner handed over";
    char empty[4] = "";  // direct calls with junk; messages outside the range are not ours
    NowTrying("dde direct calls", "junk");
    for (UINT msg = WM_DDE_FIRST; msg <= WM_DDE_LAST; ++msg) {
        for (LPARAM lp : {LPARAM(0), LPARAM(1), LPARAM(0x12345678), LPARAM(-1), MAKELPARAM(0x8000, 0xC123),
                          reinterpret_cast<LPARAM>(ForeignHandle())}) {
            Tried(twProcessDDE(server, msg, 0, lp, nullptr));
            Tried(twProcessDDE(server, msg, reinterpret_cast<WPARAM>(server.get()), lp, empty));
            Tried(twProcessDDE(nullptr, msg, 0, lp, nullptr));
        }
        twProcessDDE(server, msg, 0, PackDDElParam(WM_DDE_DATA, 0x1234, 0), nullptr);  // not a block
    }
    EXPECT_EQ(twProcessDDE(server, WM_USER, 0, 0, nullptr), 0);
    EXPECT_EQ(twProcessDDE(server, WM_DDE_ACK, 0, 0, nullptr), 1);
    EXPECT_EQ(twProcessDDEData(nullptr, nullptr) | twRequestDDEData(nullptr), 0);
    twUnadviseDDE(nullptr);
    EXPECT_EQ(twInitiateDDE(server, nullptr), 1);
}

// Initiates answered twice, after a terminate, or by a partner that dies before or after answering.
TEST_F(HostileDde, PartnerAnswersInitiatesOutOfTurnOrDies) {
    MessageBoxWatcher boxes(IDNO);
    const struct {
        InitMode mode;
        const char* name;
        bool dies;
        int linkedTo;  // none, the main window, the second
    } cases[] = {{kTwoAnswers, "two answers", false, 2}, {kTerminateFirst, "terminate before the acknowledgement", false, 1},
                 {kDieBeforeAnswer, "dies before answering", true, 0}, {kDieAfterAnswer, "dies after answering", true, 1}};
    for (const auto& c : cases) {
        NowTrying("dde initiate", c.name);
        Partner partner(c.mode);
        ++g_tried;
        ASSERT_NE(partner.second, nullptr) << c.name;
        UniqueWindow server = Field(kServerMethod), client = Field(kClientMethod);
        if (c.dies) EXPECT_TRUE(partner.Exited(5000)) << c.name;
        if (!c.dies) partner.Settle();
        PumpIdle();
        const HWND linked[] = {nullptr, partner.main, partner.second};
        EXPECT_EQ(Prop(client, "CLIENT"), linked[c.linkedTo]) << c.name;
        EXPECT_TRUE(boxes.boxes().empty()) << c.name;
        SetWindowTextA(server, "after");
        SendMessageA(client, GXM_SETVALUE, 0, 0);
        SetWindowTextA(client, "typed");
        EXPECT_EQ(WindowText(server) + WindowText(client), "aftertyped") << c.name;
        server.reset(), client.reset();
        PumpIdle();
    }
}

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

}  // namespace fktest
