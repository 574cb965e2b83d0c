// DDE data links: controls exchange their window text with other
// applications, and with controls of other dialogs, over the message-based
// DDE protocol. All state lives in window properties of the controls and in
// the process-wide values below; there is no per-link record.
//
// lParam of posted messages. Messages that carry only two 16-bit values
// (initiate, the sent acknowledgement of an initiate, request, unadvise,
// terminate) carry them as the low and high words. A posted WM_DDE_ACK,
// WM_DDE_ADVISE or WM_DDE_DATA carries a 32-bit memory handle or must cross
// into another process: there the two values travel in a small shareable
// pair block (two 32-bit values, low then high) whose handle is lParam, the
// form the system expects of these messages (a received poke comes so too).
// The system copies the pair and the data block when the partner lives in
// another process and hands the receiver a pair of its own; the receiver
// frees the pair it gets.
// WM_DDE_EXECUTE carries its command block as the whole lParam.

#include <windows.h>
#include <dde.h>

#include <cstring>
#include <string>

#include "frame/alloc.h"
#include "frame/gdi.h"
#include "include/fldkit.h"
#include "links/links.h"
#include "strings/lstr.h"

namespace fk {
namespace {

constexpr int kNameSize = 50;
constexpr WORD kAckPositive = 0x8000;
constexpr WORD kAckFailedRequest = 0xFFFF;
constexpr UINT kGlobalDde = GMEM_MOVEABLE | GMEM_DDESHARE;
constexpr WORD kAckReq = 0x8000, kDeferUpd = 0x4000, kRelease = 0x2000, kResponse = 0x1000;

enum Phase { kIdle = 0, kAnnouncing = 1, kAnswering = 2, kAdvised = 3, kClosed = 4, kRequested = 5, kPushed = 6 };

// Process-wide link state, shared by every control of the process.
struct LinkState {
    char app[kNameSize];
    char topic[kNameSize];
    char item[kNameSize];
    char gotApp[kNameSize];    // names received with the last initiate
    char gotTopic[kNameSize];
    HWND server;               // found by the last initiate
    HWND ackClient;            // last client that acknowledged an announcement
    bool ownBroadcast;         // a client control's initiate is under way
    int phase;
};
LinkState g_link;

const char kClientProp[] = "CLIENT";
const char kServerProp[] = "SERVER";
const char kItemProp[] = "ITEM";
constexpr int kPushSlots = 5;

std::string SlotName(int n) { return "SERVER" + std::to_string(n); }

bool OtherProcess(HWND h) {
    DWORD pid = 0;
    GetWindowThreadProcessId(h, &pid);
    return pid != 0 && pid != GetCurrentProcessId();
}

// A poke is never posted by us, but comes in the same form as data.
// A block that came with a message from another process is the system's copy
// for us, whatever its flags say; one from this process stays its sender's
// unless the protocol hands it over.
bool CopiedForUs(HWND partner) { return OtherProcess(partner); }

bool Packed(UINT msg) { return msg == WM_DDE_ACK || msg == WM_DDE_ADVISE || msg == WM_DDE_DATA || msg == WM_DDE_POKE; }

// Wine hands every posted acknowledgement, advise and data message, also
// between windows of one process, through its DDE copying: the receiver
// gets a new pair and new copies of the blocks, and the sender's own pair
// and the blocks it gave away are left to the sender. Windows copies only
// between processes.
bool SystemCopiesPosts(HWND to) {
    static const bool wine = GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") != nullptr;
    return wine || OtherProcess(to);
}

// Posts a DDE message with the values lo and hi (see the top of the file).
bool PostDde(HWND to, UINT msg, HWND from, UINT_PTR lo, UINT_PTR hi) {
    if (!Packed(msg)) {
        return PostMessageA(to, msg, reinterpret_cast<WPARAM>(from), MAKELPARAM(lo, hi)) != FALSE;
    }
    GlobalBlock pair(fk::GlobalAllocate(kGlobalDde, 2 * sizeof(UINT_PTR)));
    if (!pair) return false;
    {
        GlobalLocked<UINT_PTR> p(pair.get());
        if (!p) return false;
        p.get()[0] = lo;
        p.get()[1] = hi;
    }
    if (!PostMessageA(to, msg, reinterpret_cast<WPARAM>(from), reinterpret_cast<LPARAM>(pair.get()))) return false;
    // Handed over, unless the system copied it for the partner (and has not
    // freed ours already).
    if (!SystemCopiesPosts(to) || GlobalSize(pair.get()) == 0) pair.release();
    return true;
}

// Posts a message that hands a memory block to the partner. The receiver
// owns the block when owned is set; when the system has copied it for the
// receiver (see SystemCopiesPosts), our own copy is freed here (unless the
// system has already done so).
bool PostBlock(HWND to, UINT msg, HWND from, HGLOBAL block, ATOM atom, bool owned) {
    const bool copied = SystemCopiesPosts(to);
    if (!PostDde(to, msg, from, reinterpret_cast<UINT_PTR>(block), atom)) return false;
    if (copied && owned && GlobalSize(block) != 0) GlobalFree(block);
    return true;
}

// The two values of a received message. A pair block is read and freed;
// anything else is read as two words (the acknowledgement of an initiate,
// which is sent, and whatever a caller hands us directly).
struct Values {
    UINT_PTR lo = 0;
    UINT_PTR hi = 0;
    bool pair = false;
};

Values Unpack(UINT msg, LPARAM lp) {
    Values v;
    if (msg == WM_DDE_EXECUTE) {
        v.hi = static_cast<UINT_PTR>(lp);
        return v;
    }
    if (Packed(msg) && lp != 0 && !InSendMessage()) {
        HGLOBAL h = reinterpret_cast<HGLOBAL>(lp);
        if (GlobalSize(h) >= 2 * sizeof(UINT_PTR)) {
            bool read = false;
            {
                GlobalLocked<UINT_PTR> p(h);
                if (p) {
                    v.lo = p.get()[0];
                    v.hi = p.get()[1];
                    read = true;
                }
            }
            if (read) {
                GlobalFree(h);
                v.pair = true;
                return v;
            }
        }
    }
    v.lo = LOWORD(lp);
    v.hi = HIWORD(lp);
    return v;
}

ATOM AtomOf(UINT_PTR v) { return static_cast<ATOM>(v); }
bool IsAtomValue(UINT_PTR v) { return v >= 0xC000 && v <= 0xFFFF; }

// A partner that named itself but is no longer a window (its process may
// have died after posting): an atom it handed over can no longer go back
// with an acknowledgement, so the receiver deletes it. A null partner is a
// direct call, whose values are not ours to delete.
bool PartnerGone(HWND partner) { return partner != nullptr && !IsWindow(partner); }
void DropHandedAtom(UINT_PTR atom) {
    if (IsAtomValue(atom)) GlobalDeleteAtom(AtomOf(atom));
}

void AtomName(ATOM atom, char* buffer) {
    buffer[0] = 0;
    if (atom == 0 || GlobalGetAtomNameA(atom, buffer, kNameSize) == 0) buffer[0] = 0;
}

// The control owns one reference of its item atom. A link opened again (its
// method string sent anew) takes a new reference, then gives back the one
// the property held: the atom never leaves the table while the control
// holds it, and no reference is left behind.
void KeepItemAtom(HWND control, const char* item) {
    if (item[0] == 0) return;
    const ATOM held = AtomOf(reinterpret_cast<UINT_PTR>(GetPropA(control, kItemProp)));
    const ATOM fresh = GlobalAddAtomA(item);
    SetPropA(control, kItemProp, reinterpret_cast<HANDLE>(static_cast<UINT_PTR>(fresh)));
    if (held != 0) GlobalDeleteAtom(held);
}

// The first n from 1 whose "SERVER"n property is free (no upper bound).
void RegisterClient(HWND control, HWND client) {
    int n = 1;
    while (GetPropA(control, SlotName(n).c_str()) != nullptr) ++n;
    SetPropA(control, kServerProp, reinterpret_cast<HANDLE>(5));
    SetPropA(control, SlotName(n).c_str(), client);
}

// Application, topic (and item) named by a "@CLIENT" or "@SERVER" argument.
struct LinkNames {
    std::string app, topic, item;
};

LinkNames NamesOf(const char* argument) {
    LinkNames n;
    auto t = SplitTokens(argument, 3);
    if (t.size() > 0) n.app = t[0];
    if (t.size() > 1) n.topic = t[1];
    if (t.size() > 2) n.item = t[2];
    return n;
}

bool SameName(const std::string& ours, const char* received) {
    char cut[kNameSize];
    CopyCut(cut, sizeof cut, ours);
    return lstricmp(cut, received) == 0;
}

// A data block (DDEDATA layout) holding text; the flags word keeps its
// other bits as allocated.
HGLOBAL MakeData(const char* text, WORD set, WORD clear) {
    size_t length = std::strlen(text);
    GlobalBlock block(fk::GlobalAllocate(kGlobalDde, length + 8));
    if (!block) return nullptr;
    GlobalLocked<BYTE> p(block.get());
    if (!p) return nullptr;
    WORD flags;
    std::memcpy(&flags, p.get(), 2);
    flags = static_cast<WORD>((flags & ~clear) | set);
    WORD format = CF_TEXT;
    std::memcpy(p.get(), &flags, 2);
    std::memcpy(p.get() + 2, &format, 2);
    std::memcpy(p.get() + 4, text, length + 1);
    return block.release();
}

// ---- client side of twInitiateDDE ----

void BroadcastInitiate(HWND control, ATOM app, ATOM topic) {
    SendMessageA(HWND_BROADCAST, WM_DDE_INITIATE, reinterpret_cast<WPARAM>(control), MAKELPARAM(app, topic));
}

int InitiateClient(HWND control, MethodFull& method, const char* argument) {
    auto tokens = SplitTokens(argument, 3);
    char* buffers[3] = {g_link.app, g_link.topic, g_link.item};
    for (size_t i = 0; i < tokens.size(); ++i) CopyCut(buffers[i], kNameSize, tokens[i]);

    GlobalAtom app(GlobalAddAtomA(g_link.app));
    GlobalAtom topic(GlobalAddAtomA(g_link.topic));
    g_link.server = nullptr;
    g_link.ownBroadcast = true;
    g_link.phase = kAnswering;
    BroadcastInitiate(control, app.get(), topic.get());

    if (g_link.server == nullptr && !method.has("NOAUTOSTART")) {
        int answer = MessageBoxA(control, "Data links not available. Start remote Application?", "Quintaval",
                                 MB_YESNO | MB_ICONQUESTION);
        if (answer == IDYES) {
            std::string command = std::string(g_link.app) + " " + g_link.topic;
            g_linkCalls.winExec(command.c_str(), SW_SHOWNORMAL);
            WaitMessage();
            BroadcastInitiate(control, app.get(), topic.get());
        }
    }
    g_link.ownBroadcast = false;
    app.reset();
    topic.reset();

    HWND server = g_link.server;
    if (server == nullptr) return 0;
    SetPropA(control, kClientProp, server);

    GlobalBlock options(fk::GlobalAllocate(kGlobalDde, 4));
    if (!options) return 0;
    KeepItemAtom(control, g_link.item);
    GlobalAtom item(GlobalAddAtomA(g_link.item));
    {
        GlobalLocked<WORD> p(options.get());
        if (!p) return 0;
        p.get()[0] = static_cast<WORD>((p.get()[0] | kAckReq) & ~kDeferUpd);  // a hot link
        p.get()[1] = CF_TEXT;
    }
    if (IsWindow(g_link.server)) {
        g_link.phase = kAdvised;
        if (PostBlock(g_link.server, WM_DDE_ADVISE, control, options.get(), item.get(), true)) {
            options.release();
            item.release();
        }
    }
    return 1;
}

// ---- server side of twInitiateDDE: the announcement ----

int InitiateServer(HWND control, const char* argument) {
    g_link.app[0] = g_link.topic[0] = g_link.item[0] = 0;
    auto tokens = SplitTokens(argument, 3);
    char* buffers[3] = {g_link.app, g_link.topic, g_link.item};
    for (size_t i = 0; i < tokens.size(); ++i) CopyCut(buffers[i], kNameSize, tokens[i]);

    GlobalAtom app(GlobalAddAtomA(g_link.app));
    GlobalAtom topic(GlobalAddAtomA(g_link.topic));
    KeepItemAtom(control, g_link.item);
    g_link.ackClient = nullptr;
    g_link.phase = kAnnouncing;
    // All bits set, not HWND_BROADCAST: both reach every top-level window.
    SendMessageA(reinterpret_cast<HWND>(-1), WM_DDE_INITIATE, reinterpret_cast<WPARAM>(control),
                 MAKELPARAM(app.get(), topic.get()));
    // Its answers came within the send. When nobody answered, the phase must
    // not stay at "announcing": any window could then send an acknowledgement
    // later and have a control register it as a client and push it values.
    if (g_link.phase == kAnnouncing) g_link.phase = kIdle;
    return g_link.ackClient != nullptr ? 1 : 0;
}

// ---- message handlers of twProcessDDE ----

void ItemName(HWND control, char* buffer) {
    AtomName(static_cast<ATOM>(reinterpret_cast<UINT_PTR>(GetPropA(control, kItemProp))), buffer);
}

LRESULT OnInitiate(HWND control, HWND partner, LPARAM lp, MethodFull& method) {
    AtomName(LOWORD(lp), g_link.gotApp);
    AtomName(HIWORD(lp), g_link.gotTopic);
    // The answer is sent to the partner: a handle that is not a window
    // (HWND_BROADCAST among them) would have it sent to every top-level
    // window, and linked or registered as if it were one.
    if (!IsWindow(partner)) return 0;
    char itemName[kNameSize];

    const char* serverArg = method.param("@SERVER");
    if (method.found()) {
        if (partner == control) return 0;
        LinkNames names = NamesOf(serverArg);
        g_link.phase = kAnswering;
        if (SameName(names.app, g_link.gotApp) && SameName(names.topic, g_link.gotTopic)) {
            ItemName(control, itemName);
            GlobalAtom app(GlobalAddAtomA(g_link.gotApp));
            GlobalAtom topic(GlobalAddAtomA(g_link.gotTopic));
            LRESULT r = SendMessageA(partner, WM_DDE_ACK, reinterpret_cast<WPARAM>(control),
                                     MAKELPARAM(app.get(), topic.get()));
            if (r != 0 && (LOWORD(lp) & 0x8000) != 0) {
                RegisterClient(control, partner);
                // While a client control of this process is looking for its
                // server, the server handle is that client's answer: the
                // partner is not written over it.
                if (!g_link.ownBroadcast) g_link.server = partner;
            }
        }
        g_link.phase = kIdle;
        return 0;
    }

    // A client answers a server's announcement. The "@CLIENT" test is made
    // on the shared field-text buffer, which the entry fields fill.
    MethodFull field(g_fieldText);
    const char* clientArg = field.param("@CLIENT");
    if (!field.found()) return 0;
    if (partner == control || g_link.ownBroadcast) return 0;
    LinkNames names = NamesOf(clientArg);
    if (SameName(names.app, g_link.gotApp) && SameName(names.topic, g_link.gotTopic)) {
        ItemName(control, itemName);
        GlobalAtom app(GlobalAddAtomA(g_link.gotApp));
        GlobalAtom topic(GlobalAddAtomA(g_link.gotTopic));
        g_link.phase = kAnnouncing;
        LRESULT r =
            SendMessageA(partner, WM_DDE_ACK, reinterpret_cast<WPARAM>(control), MAKELPARAM(kAckPositive, topic.get()));
        app.reset();
        topic.reset();
        if (r != 0) SetPropA(control, kClientProp, partner);
    }
    g_link.phase = kIdle;
    return 0;
}

// WM_DDE_TERMINATE and WM_DDE_UNADVISE.
LRESULT CloseLink(HWND control, HWND partner, LPARAM lp) {
    WORD hi = HIWORD(lp);
    if (LOWORD(lp) == 0) {
        if (GetPropA(control, kServerProp) == nullptr) return 0;  // a client keeps its link
        for (int n = 1; n <= kPushSlots; ++n) {
            std::string slot = SlotName(n);
            if (GetPropA(control, slot.c_str()) == partner) {
                g_link.phase = kClosed;
                if (IsWindow(partner)) PostDde(partner, WM_DDE_ACK, control, kAckPositive, hi);
                RemovePropA(control, slot.c_str());
                return 0;
            }
        }
        if (IsWindow(partner)) {
            g_link.phase = kClosed;
            PostDde(partner, WM_DDE_ACK, control, 0, hi);
        }
        return 0;
    }
    HWND server = static_cast<HWND>(GetPropA(control, kClientProp));
    if (server == nullptr) return 0;
    g_link.server = server;
    g_link.phase = kClosed;
    if (server == partner) {
        RemovePropA(control, kClientProp);
        if (IsWindow(partner)) PostDde(partner, WM_DDE_ACK, control, kAckPositive, hi);
    } else if (IsWindow(partner)) {
        PostDde(partner, WM_DDE_ACK, control, 0, hi);
    }
    return 0;
}

// Nothing is acknowledged to a partner that is gone; the item atom it handed
// over is deleted here.
LRESULT OnTerminate(HWND control, HWND partner, LPARAM lp) {
    CloseLink(control, partner, lp);
    if (PartnerGone(partner)) DropHandedAtom(HIWORD(lp));
    return 0;
}

LRESULT OnAdvise(HWND control, HWND partner, const Values& v) {
    g_link.phase = kAdvised;
    bool acked = IsWindow(partner) && PostDde(partner, WM_DDE_ACK, control, kAckPositive, v.hi);
    if (!acked && (v.pair || PartnerGone(partner))) DropHandedAtom(v.hi);
    if (v.pair && v.lo != 0) GlobalFree(reinterpret_cast<HGLOBAL>(v.lo));
    return 0;
}

LRESULT OnAck(HWND control, HWND partner, LPARAM lp, const Values& v) {
    if (g_link.phase == kAnnouncing && !v.pair && (lp & 0x8000) != 0) {
        RegisterClient(control, partner);
        g_link.ackClient = partner;
    }
    // A posted acknowledgement hands its item atom to us.
    if (v.pair && IsAtomValue(v.hi)) GlobalDeleteAtom(AtomOf(v.hi));
    g_link.server = partner;
    g_link.phase = kIdle;
    return 1;
}

LRESULT OnData(HWND control, HWND partner, const Values& v) {
    HGLOBAL block = v.pair ? reinterpret_cast<HGLOBAL>(v.lo) : nullptr;
    ATOM item = AtomOf(v.hi);
    WORD flags = 0;
    std::string text;
    {
        GlobalLocked<BYTE> p(block);
        if (!p) {
            // No data (a null or dead handle): the item atom was still handed over.
            if (v.pair) DropHandedAtom(item);
            return 0;
        }
        SIZE_T size = p.size();
        if (size >= 2) std::memcpy(&flags, p.get(), 2);
        if (size > 4) {
            const char* start = reinterpret_cast<const char*>(p.get() + 4);
            text.assign(start, strnlen(start, size - 4));  // no terminator: the block's end
        }
    }
    size_t n = text.size();
    if (n >= 2 && text[n - 2] == '\r') {
        text.resize(n - 2);
    } else if (n >= 1 && text[n - 1] == '\n') {
        text.resize(n - 1);
    }
    SetWindowTextA(control, text.c_str());
    bool acked = false;
    if ((flags & kAckReq) != 0 && IsWindow(partner)) acked = PostDde(partner, WM_DDE_ACK, control, kAckPositive, item);
    if (!acked && IsAtomValue(item)) GlobalDeleteAtom(item);
    if ((flags & kRelease) != 0) {
        GlobalFree(block);
    } else if (CopiedForUs(partner) && GlobalSize(block) != 0) {  // unless the system took it back already
        GlobalFree(block);
    }
    InvalidateRect(control, nullptr, TRUE);
    UpdateWindow(control);
    return 0;
}

LRESULT OnRequest(HWND control, HWND partner, LPARAM lp) {
    ATOM item = HIWORD(lp);
    char text[159] = {};
    GetWindowTextA(control, text, sizeof text);
    g_link.phase = kRequested;
    GlobalBlock block(MakeData(text, kRelease | kResponse, kAckReq));
    if (!block) {
        if (IsWindow(partner)) {
            PostDde(partner, WM_DDE_ACK, control, kAckFailedRequest, item);
        } else if (PartnerGone(partner)) {
            DropHandedAtom(item);
        }
        return 0;
    }
    if (IsWindow(partner) && PostBlock(partner, WM_DDE_DATA, control, block.get(), item, true)) {
        block.release();
        return 0;
    }
    block.reset();
    if (PartnerGone(partner)) DropHandedAtom(item);
    return 0;
}

// A poke is refused by silence. What it handed over is still ours to release:
// the item atom, and the data block when it is a copy for us.
LRESULT OnPoke(HWND partner, const Values& v) {
    if (!v.pair) return 0;
    DropHandedAtom(v.hi);
    HGLOBAL block = reinterpret_cast<HGLOBAL>(v.lo);
    if (block != nullptr && CopiedForUs(partner) && GlobalSize(block) != 0) GlobalFree(block);
    return 0;
}

LRESULT OnExecute(HWND control, HWND partner, const Values& v) {
    HGLOBAL command = reinterpret_cast<HGLOBAL>(v.hi);
    {
        GlobalLocked<void> p(command);
        if (!p) return 0;
    }
    // The acknowledgement names a copy for us by its handle only (the sender
    // gets its own block back); the copy is freed here.
    const bool copy = CopiedForUs(partner);
    if (IsWindow(partner)) PostDde(partner, WM_DDE_ACK, control, kAckPositive, v.hi);
    if (copy && GlobalSize(command) != 0) GlobalFree(command);
    return 0;
}

}  // namespace
}  // namespace fk

using namespace fk;

int WINAPI twInitiateDDE(HWND hWnd, char* lpMethod) {
    if (GetPropA(hWnd, kClientProp) != nullptr) return 1;
    MethodFull method(lpMethod);
    const char* client = method.param("@CLIENT");
    if (method.found()) {
        std::string argument = client;
        return InitiateClient(hWnd, method, argument.c_str());
    }
    const char* server = method.param("@SERVER");
    if (method.found()) {
        std::string argument = server;
        return InitiateServer(hWnd, argument.c_str());
    }
    return 1;
}

LRESULT WINAPI twProcessDDE(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam, char* lpMethod) {
    if (msg < WM_DDE_FIRST || msg > WM_DDE_LAST) return 0;
    HWND partner = reinterpret_cast<HWND>(wParam);
    switch (msg) {
    case WM_DDE_INITIATE: {
        MethodFull method(lpMethod);
        return OnInitiate(hWnd, partner, lParam, method);
    }
    case WM_DDE_TERMINATE:
    case WM_DDE_UNADVISE:
        return OnTerminate(hWnd, partner, lParam);
    case WM_DDE_ADVISE:
        return OnAdvise(hWnd, partner, Unpack(msg, lParam));
    case WM_DDE_ACK:
        return OnAck(hWnd, partner, lParam, Unpack(msg, lParam));
    case WM_DDE_DATA:
        return OnData(hWnd, partner, Unpack(msg, lParam));
    case WM_DDE_REQUEST:
        return OnRequest(hWnd, partner, lParam);
    case WM_DDE_POKE:
        return OnPoke(partner, Unpack(msg, lParam));
    case WM_DDE_EXECUTE:
        return OnExecute(hWnd, partner, Unpack(msg, lParam));
    }
    return 0;
}

int WINAPI twProcessDDEData(HWND hWnd, char* lpText) {
    std::string text = lpText != nullptr ? lpText : "";
    std::vector<char> work(text.begin(), text.end());
    work.push_back(0);
    lstrclip(work.data());
    for (int n = 1; n <= kPushSlots; ++n) {
        HWND client = static_cast<HWND>(GetPropA(hWnd, SlotName(n).c_str()));
        if (client == nullptr) continue;
        GlobalBlock block(MakeData(work.data(), kRelease, kAckReq | kResponse));
        if (!block) return 0;
        GlobalAtom item(GlobalAddAtomA("Item"));
        g_link.phase = kPushed;
        if (IsWindow(client) && PostBlock(client, WM_DDE_DATA, hWnd, block.get(), item.get(), true)) {
            block.release();
            item.release();
        }
    }
    return 0;
}

int WINAPI twRequestDDEData(HWND hWnd) {
    HWND server = static_cast<HWND>(GetPropA(hWnd, kClientProp));
    ATOM item = static_cast<ATOM>(reinterpret_cast<UINT_PTR>(GetPropA(hWnd, kItemProp)));
    if (server == nullptr || item == 0 || !IsWindow(server)) return 0;
    g_link.phase = kRequested;
    // The server hands the atom back with its answer and we delete it then:
    // give it a reference of its own so that the control keeps its item.
    char name[kNameSize];
    AtomName(item, name);
    if (name[0] != 0) GlobalAddAtomA(name);
    if (!PostDde(server, WM_DDE_REQUEST, hWnd, CF_TEXT, item) && name[0] != 0) GlobalDeleteAtom(item);
    return 0;
}

int WINAPI twUnadviseDDE(HWND hWnd) {
    int result = 0;
    if (GetPropA(hWnd, kClientProp) != nullptr) {
        HWND server = static_cast<HWND>(GetPropA(hWnd, kClientProp));
        if (IsWindow(server)) PostMessageA(server, WM_DDE_UNADVISE, reinterpret_cast<WPARAM>(hWnd), 0);
        result = RemovePropA(hWnd, kClientProp) != nullptr;
        ATOM item = static_cast<ATOM>(reinterpret_cast<UINT_PTR>(GetPropA(hWnd, kItemProp)));
        if (item != 0) {
            GlobalDeleteAtom(item);
            result = RemovePropA(hWnd, kItemProp) != nullptr;
        }
        return result;
    }
    if (GetPropA(hWnd, kServerProp) != nullptr) {
        result = RemovePropA(hWnd, kServerProp) != nullptr;
        ATOM item = static_cast<ATOM>(reinterpret_cast<UINT_PTR>(GetPropA(hWnd, kItemProp)));
        if (item != 0) {
            GlobalDeleteAtom(item);
            result = RemovePropA(hWnd, kItemProp) != nullptr;
        }
        for (int n = 1; n <= kPushSlots; ++n) {
            std::string slot = SlotName(n);
            HWND client = static_cast<HWND>(GetPropA(hWnd, slot.c_str()));
            if (client == nullptr) continue;
            if (IsWindow(client)) PostMessageA(client, WM_DDE_TERMINATE, reinterpret_cast<WPARAM>(hWnd), 0);
            result = RemovePropA(hWnd, slot.c_str()) != nullptr;
        }
    }
    return result;
}
