// DDE links against a partner in a second process that misbehaves: bad blocks, acknowledgements out of
// turn, and a partner that dies while linked. Afterwards the library windows still work and every atom
// the partner handed over is gone (the partner gives each exactly one reference).
#include <dde.h>

#include "tests/support/recorder.h"
#include "tests/win/hostile/dde_partner.h"
#include "tests/win/hostile/hostile.h"

using namespace fktest;
using namespace fkpartner;

namespace {

template <typename F>
bool PumpUntil(F done, DWORD ms) {
    for (DWORD start = GetTickCount();; MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT)) {
        for (MSG m; PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE);) DispatchMessageA(&m);
        if (done()) return true;
        if (GetTickCount() - start > ms) return false;
    }
}
void Pump(DWORD ms) { PumpUntil([] { return false; }, ms); }

std::string Text(HWND h) {
    char buffer[256] = {};
    return GetWindowTextA(h, buffer, sizeof buffer), buffer;
}
HWND Prop(HWND h, const char* name) { return static_cast<HWND>(GetPropA(h, name)); }

// The partner process; killed when the test is done with it, or fails.
class Partner {
public:
    Partner() {
        char exe[MAX_PATH] = {};
        GetModuleFileNameA(nullptr, exe, MAX_PATH);
        std::string command = std::string("\"") + exe + "\" --dde-partner " + std::to_string(GetCurrentProcessId());
        STARTUPINFOA si{sizeof si};
        if (!CreateProcessA(exe, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &si, &pi_)) return;
        auto find = [](bool second) { return FindWindowA(kClass, WindowTitle(GetCurrentProcessId(), second).c_str()); };
        PumpUntil([&] { return (main = find(false)) != nullptr && (second = find(true)) != nullptr; }, 20000);
    }
    ~Partner() { Kill(); }
    bool ok() const { return main != nullptr && second != nullptr; }
    LRESULT Ask(Command c, WPARAM wp = 0, LPARAM lp = 0) const {
        DWORD_PTR r = 0;
        SendMessageTimeoutA(main, c, wp, lp, SMTO_NORMAL, 5000, &r);
        return static_cast<LRESULT>(r);
    }
    bool Exited(DWORD ms) const {
        return PumpUntil([&] { return WaitForSingleObject(pi_.hProcess, 0) == WAIT_OBJECT_0; }, ms);
    }
    void Kill() {
        if (pi_.hProcess == nullptr) return;
        TerminateProcess(pi_.hProcess, 99);
        WaitForSingleObject(pi_.hProcess, 5000);
        for (HANDLE h : {pi_.hProcess, pi_.hThread}) CloseHandle(h);
        pi_ = {};
    }
    // Both sides handle what is waiting for them, twice over: answers provoke answers.
    void Settle() const {
        for (int i = 0; i < 2; ++i) Pump(30), Ask(kFlush);
        Pump(30);
    }
    HWND main = nullptr, second = nullptr;

private:
    PROCESS_INFORMATION pi_{};
};

// A top-level field: initiates reach top-level windows only.
UniqueWindow Field(const char* method) {
    UniqueWindow f(CreateWindowExA(0, FK_CLASS_STRING, "", WS_POPUP | WS_VISIBLE, 0, 0, 150, 24, nullptr, nullptr,
                                   nullptr, nullptr));
    SendMessageA(f, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(method));
    return f;
}
constexpr char kServerMethod[] = "@SERVER(FkHostileApp,Topic,Item)";
constexpr char kClientMethod[] = "@CLIENT(FkPartnerApp,Topic,Item)NOAUTOSTART";

// The library windows still work after it all: a value set is pushed to or asked of the partner (when it
// lives), and they are destroyed without leaving anything behind.
void StillWorks(UniqueWindow& server, UniqueWindow& client, const Partner* alive) {
    const LRESULT data = alive ? alive->Ask(kCount, WM_DDE_DATA) : 0;
    const LRESULT requests = alive ? alive->Ask(kCount, WM_DDE_REQUEST) : 0;
    SetWindowTextA(server, "after");
    SendMessageA(client, GXM_SETVALUE, 0, 0);
    SetWindowTextA(client, "typed");
    if (alive) {
        alive->Settle();
        EXPECT_GT(alive->Ask(kCount, WM_DDE_DATA), data) << "a push reaches the partner";
        EXPECT_GT(alive->Ask(kCount, WM_DDE_REQUEST), requests) << "a refresh asks the partner";
    }
    EXPECT_EQ(Text(server) + Text(client), "aftertyped");
    server.reset();
    client.reset();
    Pump(30);
}

}  // namespace

class HostileDde : public HostileGroup {};

// Every bad block and stray acknowledgement, posted to a server and to a client window that are both
// linked to the partner. What the system refuses to post never arrives; the rest must be survived. An
// acknowledgement sent after a server's announcement found nobody registers nobody; an initiate that
// names HWND_BROADCAST as its sender is not answered (to every top-level window).
TEST_F(HostileDde, PartnerPostsBadBlocksAndStrayAcknowledgements) {
    MessageBoxWatcher boxes(IDNO);
    Partner partner;
    ASSERT_TRUE(partner.ok());
    UniqueWindow server = Field(kServerMethod);  // its announcement finds nobody
    const LPARAM strayAck = std::find_if(std::begin(kPostCases), std::end(kPostCases), [](const PostCase& c) {
        return c.msg == WM_DDE_ACK && c.block == kSent;
    }) - std::begin(kPostCases);
    partner.Ask(kPost, reinterpret_cast<WPARAM>(server.get()), strayAck);
    EXPECT_EQ(Prop(server, "SERVER1"), nullptr) << "a stray acknowledgement registered its sender";
    UniqueWindow client = Field(kClientMethod);
    ASSERT_EQ(Prop(client, "CLIENT"), partner.main);
    RecordingParent bystander;
    for (HWND lib : {server.get(), client.get()}) partner.Ask(kInitiate, reinterpret_cast<WPARAM>(lib), 1);
    EXPECT_TRUE(bystander.Of(WM_DDE_ACK).empty()) << "an initiate naming HWND_BROADCAST was answered to everyone";
    EXPECT_EQ(Prop(client, "CLIENT"), partner.main);
    EXPECT_EQ(Prop(server, "SERVER1"), nullptr);
    partner.Ask(kInitiate, reinterpret_cast<WPARAM>(server.get()));
    ASSERT_EQ(Prop(server, "SERVER1"), partner.main);
    partner.Settle();
    int posted = 0;
    for (size_t i = 0; i < std::size(kPostCases); ++i) {
        const PostCase& c = kPostCases[i];
        for (HWND lib : {server.get(), client.get()}) {
            const char* side = lib == server ? " to the server" : " to the client";
            NowTrying("dde partner", c.name);
            SetWindowTextA(lib, "before");
            posted += partner.Ask(kPost, reinterpret_cast<WPARAM>(lib), static_cast<LPARAM>(i)) != 0;
            partner.Settle();
            EXPECT_EQ(GlobalFindAtomA(kHanded), 0) << c.name << side << ": a handed-over atom is kept";
            if (c.shown) EXPECT_EQ(Text(lib), c.shown) << c.name << side;
            ASSERT_TRUE(IsWindow(lib)) << c.name << side;
        }
    }
    EXPECT_GE(posted, 20) << "most hostile posts reach the library";
    // The copies the system makes for the library are not left on its heap: ten more rounds of it all.
    const long heapBefore = MeasureHeap(GetProcessHeap()).blocks;
    for (int round = 0; round < 10; ++round) {
        for (size_t i = 0; i < std::size(kPostCases); ++i)
            for (HWND lib : {server.get(), client.get()}) partner.Ask(kPost, reinterpret_cast<WPARAM>(lib), LPARAM(i));
        partner.Settle();
    }
    EXPECT_LT(MeasureHeap(GetProcessHeap()).blocks - heapBefore, 10) << "a block left behind by some message";
    EXPECT_EQ(GlobalFindAtomA(kHanded), 0);
    for (const PostCase& c : kPostCases) {  // within the process nothing checks the blocks on the way
        if (c.msg != WM_DDE_DATA && c.msg != WM_DDE_POKE && c.msg != WM_DDE_ADVISE) continue;
        NowTrying("dde blocks sent within the process", c.name);
        for (HWND lib : {server.get(), client.get()}) {
            HGLOBAL block = MakeBlock(c.msg, c.block);
            SendMessageA(lib, c.msg, 0, PackDDElParam(c.msg, reinterpret_cast<UINT_PTR>(block), 0));
            const bool unreleased = c.block == kTiny1 || c.block == kTextKept;  // data without the release bit
            const bool kept = c.msg == WM_DDE_POKE || (c.msg == WM_DDE_DATA && unreleased);
            if (kept && c.block != kForeign && c.block != kFreed && block != nullptr) GlobalFree(block);
        }
    }
    StillWorks(server, client, &partner);
}

// How the partner answers a client window's initiate: twice from two windows (the last answer links),
// with a terminate posted before its acknowledgement (a client ignores it), or not at all because it dies
// on the spot, or by dying right after answering (linked to a window that is gone).
TEST_F(HostileDde, PartnerAnswersInitiatesOutOfTurnOrDies) {
    MessageBoxWatcher boxes(IDNO);
    const struct {
        InitMode mode;
        const char* name;
        bool linked, toSecond, dies;
    } cases[] = {
        {kTwoAnswers, "two answers", true, true, false},
        {kTerminateFirst, "terminate before the acknowledgement", true, false, false},
        {kDieBeforeAnswer, "dies before answering", false, false, true},
        {kDieAfterAnswer, "dies after answering", true, false, true},
    };
    for (const auto& c : cases) {
        NowTrying("dde initiate", c.name);
        Partner partner;
        ASSERT_TRUE(partner.ok()) << c.name;
        partner.Ask(kInitMode, c.mode);
        UniqueWindow server = Field(kServerMethod), client = Field(kClientMethod);
        if (c.dies) EXPECT_TRUE(partner.Exited(5000)) << c.name;
        if (!c.dies) partner.Settle();
        Pump(50);
        HWND want = !c.linked ? nullptr : c.toSecond ? partner.second : partner.main;
        EXPECT_EQ(Prop(client, "CLIENT"), want) << c.name;
        EXPECT_TRUE(boxes.boxes().empty()) << c.name;
        StillWorks(server, client, nullptr);
        EXPECT_EQ(GlobalFindAtomA(kHanded), 0) << c.name;
    }
}

// The partner posts its last words (data asking for an acknowledgement, a request, an advise, unadvises)
// and is killed before the library reads them: the library answers nobody and deletes the atoms itself.
TEST_F(HostileDde, PartnerKilledWhileLinked) {
    MessageBoxWatcher boxes(IDNO);
    Partner partner;
    ASSERT_TRUE(partner.ok());
    UniqueWindow server = Field(kServerMethod), client = Field(kClientMethod);
    partner.Ask(kInitiate, reinterpret_cast<WPARAM>(server.get()));
    partner.Settle();
    ASSERT_EQ(Prop(client, "CLIENT"), partner.main);
    ASSERT_EQ(Prop(server, "SERVER1"), partner.main);
    NowTrying("dde partner killed", "last words");
    partner.Ask(kLastWords, reinterpret_cast<WPARAM>(client.get()), reinterpret_cast<LPARAM>(server.get()));
    partner.Kill();
    Pump(100);
    EXPECT_EQ(Text(client), "acked");
    EXPECT_EQ(Prop(server, "SERVER1"), nullptr) << "the unadvise freed the slot";
    EXPECT_EQ(GlobalFindAtomA(kHanded), 0) << "atoms the dead partner handed over";
    StillWorks(server, client, nullptr);
}
