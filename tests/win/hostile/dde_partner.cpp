// The raw DDE partner process (see dde_partner.h). It hands every atom over with one reference of its
// own and deletes what comes back, so that the test can tell what the library kept.
#include "tests/win/hostile/dde_partner.h"

#include <dde.h>

#include <cstdlib>
#include <cstring>
#include <iterator>
#include <map>
#include <set>

namespace fkpartner {
namespace {

HWND g_main, g_second;
InitMode g_initMode = kAnswer;
std::map<UINT, LRESULT> g_counts;
std::set<HGLOBAL> g_executes;  // command blocks that come back with their acknowledgement
constexpr UINT kShare = GMEM_MOVEABLE | GMEM_DDESHARE;

HGLOBAL Bytes(const void* data, size_t n) {
    HGLOBAL h = GlobalAlloc(kShare, n);
    std::memcpy(GlobalLock(h), data, n);
    GlobalUnlock(h);
    return h;
}

// A DDEDATA-style block: flags, format, then the bytes as given (no terminator added).
HGLOBAL Record(WORD flags, WORD format, const char* bytes, size_t n) {
    char all[64];
    std::memcpy(all, &flags, 2);
    std::memcpy(all + 2, &format, 2);
    std::memcpy(all + 4, bytes, n);
    return Bytes(all, n + 4);
}

}  // namespace

HGLOBAL MakeBlock(UINT msg, Block b) {
    const bool execute = msg == WM_DDE_EXECUTE;
    switch (b) {
    case kForeign: return reinterpret_cast<HGLOBAL>(0x00C0FFEE);
    case kFreed: {
        HGLOBAL h = GlobalAlloc(kShare, 16);
        GlobalFree(h);
        return h;
    }
    case kTiny1: return Bytes("\xFF", 1);
    case kTiny3: return Bytes("\xFF\xFF\xFF", 3);
    case kUnterminated: return execute ? Bytes("[open(", 6) : Record(0x2000, CF_TEXT, "abcdefgh", 8);
    case kBitmap: return msg == WM_DDE_ADVISE ? Record(0x8000, CF_BITMAP, "", 0) : Record(0x2000, CF_BITMAP, "bits", 5);
    case kText: return execute ? Bytes("[open()]", 9) : Record(0x2000, CF_TEXT, "text", 5);
    case kTextAckReq: return Record(0xA000, CF_TEXT, "acked\r\n", 8);
    case kTextKept: return Record(0x8000, CF_TEXT, "kept", 5);
    case kSent: return Record(0x2000, CF_TEXT, "sent", 5);
    default: return nullptr;
    }
}

namespace {

bool Real(HGLOBAL h) { return h != nullptr && GlobalSize(h) != 0; }

// Posts (or sends) one hostile message; whatever the system refused or copied is cleaned up here.
LRESULT Post(HWND lib, const PostCase& c) {
    const WPARAM me = reinterpret_cast<WPARAM>(g_main);
    ATOM item = GlobalAddAtomA(kHanded);
    HGLOBAL block = MakeBlock(c.msg, c.block);
    const bool owned = c.block != kForeign && c.block != kFreed && block != nullptr;
    LRESULT posted = 0;
    if (c.msg == WM_DDE_REQUEST) {
        posted = PostMessageA(lib, c.msg, me, MAKELPARAM(c.block == kBitmap ? CF_BITMAP : CF_TEXT, item));
    } else if (c.msg == WM_DDE_EXECUTE) {
        posted = PostMessageA(lib, c.msg, me, reinterpret_cast<LPARAM>(block));
        if (posted && owned) g_executes.insert(block);
    } else if (c.msg == WM_DDE_ACK && c.block == kSent) {
        SendMessageA(lib, c.msg, me, MAKELPARAM(0x8000, item));  // a sent message: the atom stays ours
    } else if (c.msg == WM_DDE_ACK) {
        UINT_PTR hi = c.block == kForeign ? 0x00C0FFEE : item;
        LPARAM pair = PackDDElParam(c.msg, 0x8000, hi);
        posted = PostMessageA(lib, c.msg, me, pair);
        if (!posted || Real(reinterpret_cast<HGLOBAL>(pair))) FreeDDElParam(c.msg, pair);
        if (posted && hi == item) item = 0;  // handed over
    } else {
        LPARAM pair = PackDDElParam(c.msg, reinterpret_cast<UINT_PTR>(block), item);
        if (c.block == kSent) {
            SendMessageA(lib, c.msg, me, pair);  // our handles mean nothing over there
        } else {
            posted = PostMessageA(lib, c.msg, me, pair);
        }
        if (!posted || Real(reinterpret_cast<HGLOBAL>(pair))) FreeDDElParam(c.msg, pair);
        if (posted) item = 0;  // handed over; the system gave the receiver copies of the blocks
    }
    if (c.msg == WM_DDE_REQUEST && posted) item = 0;
    if (item) GlobalDeleteAtom(item);
    if (owned && !g_executes.count(block) && Real(block)) GlobalFree(block);
    return posted;
}

void Answer(HWND lib, HWND as) {
    ATOM app = GlobalAddAtomA(kApp), topic = GlobalAddAtomA(kTopic);
    SendMessageA(lib, WM_DDE_ACK, reinterpret_cast<WPARAM>(as), MAKELPARAM(app, topic));
    GlobalDeleteAtom(app);
    GlobalDeleteAtom(topic);
}

void OnInitiate(HWND lib, LPARAM lp) {
    char app[64] = "", topic[64] = "";
    GlobalGetAtomNameA(LOWORD(lp), app, sizeof app);
    GlobalGetAtomNameA(HIWORD(lp), topic, sizeof topic);
    if (lstrcmpiA(app, kApp) != 0 || lstrcmpiA(topic, kTopic) != 0) return;
    switch (g_initMode) {
    case kDieBeforeAnswer: ExitProcess(3);
    case kTerminateFirst: PostMessageA(lib, WM_DDE_TERMINATE, reinterpret_cast<WPARAM>(g_main), 0); break;
    case kTwoAnswers: Answer(lib, g_main), Answer(lib, g_second); return;
    default: break;
    }
    Answer(lib, g_main);
    if (g_initMode == kDieAfterAnswer) ExitProcess(4);
}

// Posted messages from the library: what they hand over is deleted or freed here.
void OnPosted(const MSG& m) {
    ++g_counts[m.message];
    UINT_PTR lo = 0, hi = 0;
    switch (m.message) {
    case WM_DDE_ACK:
    case WM_DDE_DATA:
    case WM_DDE_ADVISE:
        UnpackDDElParam(m.message, m.lParam, &lo, &hi);
        FreeDDElParam(m.message, m.lParam);
        if (m.message != WM_DDE_ACK && lo) GlobalFree(reinterpret_cast<HGLOBAL>(lo));
        if (g_executes.erase(reinterpret_cast<HGLOBAL>(hi))) {
            GlobalFree(reinterpret_cast<HGLOBAL>(hi));
        } else if (hi >= 0xC000 && hi <= 0xFFFF) {
            GlobalDeleteAtom(static_cast<ATOM>(hi));
        }
        break;
    case WM_DDE_REQUEST:
    case WM_DDE_UNADVISE:
        GlobalDeleteAtom(HIWORD(m.lParam));
        break;
    }
}

void Flush() {
    for (MSG m; PeekMessageA(&m, nullptr, WM_DDE_FIRST, WM_DDE_LAST, PM_REMOVE);) OnPosted(m);
}

// Last words before the test kills us: data asking for an acknowledgement to the client; a request, an
// advise and two unadvises (of all formats, of text) to the server. Each hands over one atom.
void LastWords(HWND client, HWND server) {
    const WPARAM me = reinterpret_cast<WPARAM>(g_main);
    HGLOBAL data = MakeBlock(WM_DDE_DATA, kTextAckReq);
    PostMessageA(client, WM_DDE_DATA, me, PackDDElParam(WM_DDE_DATA, UINT_PTR(data), GlobalAddAtomA(kHanded)));
    PostMessageA(server, WM_DDE_REQUEST, me, MAKELPARAM(CF_TEXT, GlobalAddAtomA(kHanded)));
    WORD options[2] = {0x8000, CF_TEXT};
    PostMessageA(server, WM_DDE_ADVISE, me,
                 PackDDElParam(WM_DDE_ADVISE, UINT_PTR(Bytes(options, 4)), GlobalAddAtomA(kHanded)));
    for (WORD format : {0, CF_TEXT}) PostMessageA(server, WM_DDE_UNADVISE, me, MAKELPARAM(format, GlobalAddAtomA(kHanded)));
}

LRESULT CALLBACK Proc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    const HWND lib = reinterpret_cast<HWND>(wp);
    switch (msg) {
    case WM_DDE_INITIATE:
        if (h == g_main && lib != h && lib != g_second) OnInitiate(lib, lp);
        return 0;
    case WM_DDE_ACK: return 1;  // sent: the answer to our initiate; its atoms stay the sender's
    case kPost: return lp >= 0 && size_t(lp) < std::size(kPostCases) ? Post(lib, kPostCases[lp]) : 0;
    case kInitMode: g_initMode = static_cast<InitMode>(wp); return 1;
    case kInitiate:
        for (const char* name : {kLibApp, kApp}) {
            ATOM app = GlobalAddAtomA(name), topic = GlobalAddAtomA(kTopic);
            HWND from = lp ? HWND_BROADCAST : g_main;
            SendMessageA(lib, WM_DDE_INITIATE, reinterpret_cast<WPARAM>(from), MAKELPARAM(app, topic));
            GlobalDeleteAtom(app);
            GlobalDeleteAtom(topic);
            if (!lp) break;
        }
        return 1;
    case kCount: return g_counts[static_cast<UINT>(wp)];
    case kFlush: Flush(); return 1;
    case kLastWords: LastWords(lib, reinterpret_cast<HWND>(lp)); return 1;
    }
    return DefWindowProcA(h, msg, wp, lp);
}

}  // namespace

int RunPartner(const char* testPid) {
    WNDCLASSA wc{};
    wc.lpfnWndProc = Proc;
    wc.hInstance = GetModuleHandleA(nullptr);
    wc.lpszClassName = kClass;
    RegisterClassA(&wc);
    const DWORD pid = std::strtoul(testPid, nullptr, 10);
    g_second = CreateWindowExA(0, kClass, WindowTitle(pid, true).c_str(), WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                               wc.hInstance, nullptr);
    g_main = CreateWindowExA(0, kClass, WindowTitle(pid, false).c_str(), WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                             wc.hInstance, nullptr);
    SetTimer(nullptr, 0, 120000, nullptr);  // a partner whose test is gone does not stay
    for (MSG m; GetMessageA(&m, nullptr, 0, 0) > 0;) {
        if (m.message == WM_TIMER) break;
        if (m.message >= WM_DDE_FIRST && m.message <= WM_DDE_LAST) {
            OnPosted(m);
        } else {
            DispatchMessageA(&m);
        }
    }
    return 0;
}

}  // namespace fkpartner
