// Hostile input through the message set and the editing core.
#include <dde.h>

#include <set>

#include "tests/support/bitness.h"
#include "tests/win/hostile/hostile.h"

using namespace fktest;

namespace {

HWND Create(HWND parent, const char* cls) {
    return CreateWindowExA(0, cls, "", WS_CHILD | WS_VISIBLE, 10, 10, 150, 24, parent, HMENU(77), nullptr, nullptr);
}
void Paint(HWND h) { RedrawWindow(h, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW); }
std::string GetMethod(HWND h, GuardedBuffer& copy) {  // at most 256 characters come back, into 257 bytes
    std::memset(copy.data(), 'x', 256);
    copy.data()[256] = 0;
    Tried(SendMessageA(h, GXM_GETMETHOD, 256, reinterpret_cast<LPARAM>(copy.data())));
    return copy.data();
}

// Ours, the single classes' own (from WM_USER) and DDE's. Those whose lParam is a number, never dereferenced, also
// get wild pointers (sets of a flag take it in lParam).
std::vector<UINT> Messages() {
    std::vector<UINT> all{GXM_SETMETHOD};
    for (auto [first, last] : {std::pair{GXM_FIRST, GXM_LAST}, {WM_USER + 1, WM_USER + 10}, {WM_DDE_FIRST, WM_DDE_LAST}})
        for (UINT msg = first; msg <= UINT(last); ++msg) all.push_back(msg);
    return all;
}
bool LParamIsANumber(UINT msg, WPARAM wp) {
    static const std::set<UINT> pointers{GXM_SETMETHOD, GXM_SETVALUE, GXM_GETVALUE, GXM_GETMETHOD, GXM_GETTYPE,
        GXN_ERROR, GXN_DRAGNOTIFY, GXM_DROPDATA, GXM_DRAGQUERY, GXM_MASK, GXM_EXCLUDE, GXM_INCLUDE, GXM_SETTABLE,
        GXM_SETDISPLAY, GXM_SETDELIMITER, GXM_SETTABSTOPS, GXM_SETCOLWIDTHS};
    return msg == GXM_AUTOTAB || msg == GXM_AUTOFILL ? wp != 0 : pointers.count(msg) == 0;
}

// The editing core on one text: drawn under hostile selection and caret words (a field's own), pressed and moved
// with the mouse at hostile positions, and masked into a screen buffer of exactly both lengths and a terminator.
void DriveEditingCore(HWND h, const std::string& t, bool field) {
    GuardedBuffer text(t), mask(t), screen(2 * t.size() + 1);
    if (field) SetFocus(h);
    for (auto [selection, caret] : {std::pair<LONG, LONG>{0, 0}, {MAKELONG(3, 1), -7}, {MAKELONG(0xFFFF, 0), 100000},
                                    {LONG(0xFFFFFFFF), 3}}) {
        if (field) SetWindowLongA(h, 12, selection), SetWindowLongA(h, 16, caret);
        for (UINT how : {GXDF_ANY, GXDF_ANY | GXDF_RIGHT, GXDF_PAINT | GXDF_NOCARET})
            Tried(twDrawField(h, text.data(), how, 0));
    }
    for (int x : {INT_MIN, -1, 0, 3, 40, 75, 149, 5000, INT_MAX}) {
        for (char* m : {static_cast<char*>(nullptr), mask.data(), const_cast<char*>("##-##")})
            MouseButtonDown(h, x, text.data(), m, m == mask.data(), m == mask.data() ? 0x100 : 0);
        MouseMove(h, x / 2, text.data(), 0);
        MouseMove(h, x, text.data(), 1);
        ReleaseCapture();
        g_tried += 5;
    }
    for (int pos : {-3, 0, 5, 70000})
        for (int noFill : {0, 1}) Tried(twAppToScrMask(screen.data(), text.data(), mask.data(), pos, noFill));
    MouseButtonDown(h, 5, nullptr, nullptr, 0, 0);
    MouseMove(h, 5, nullptr, 0);
    Tried(twDrawField(h, nullptr, 0, 0));
    DestroyCaret();
}

class HostileMessages : public HostileGroup {};

}  // namespace

// Every class: hostile methods (the fields' editing core on each); every message with lParam 0, garbage or wild;
// 1 MB of text; WM_DESTROY twice. Then the editing core on foreign, dead and no windows.
TEST_F(HostileMessages, EveryClassAndTheEditingCoreSurviveHostileInput) {
    GuardedBuffer copy(257), out(1024), garbage(1024), huge(std::string(1 << 20, 'W'));
    char what[64];
    for (int i = 0; i < int(std::size(kAllClasses)); ++i) {
        const char* const cls = kAllClasses[i];
        HWND h = Create(parent, cls);
        ASSERT_NE(h, nullptr) << cls;
        for (const auto& m : HostileMethods()) {
            NowTrying(cls, m.name);
            GuardedBuffer text(m.text);
            Tried(SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(text.data())));
            EXPECT_TRUE(m.text.starts_with(GetMethod(h, copy))) << cls << " " << m.name;
            EXPECT_LE(unsigned(Tried(SendMessageA(h, GXM_VALIDATE, 0, 0)) + 1), 1u) << cls << " " << m.name;  // 0, -1
            Paint(h);
            if (i < kEntryClasses) DriveEditingCore(h, m.text, true);
        }
        Tried(SendMessageA(h, GXM_SETMETHOD, 0, 0));
        EXPECT_EQ(GetMethod(h, copy), "") << cls;
        uint32_t seed = 1;
        for (UINT msg : Messages())
            for (WPARAM wp : JunkNumbers()) {
                std::snprintf(what, sizeof what, "message 0x%04X wParam 0x%llX", msg, static_cast<unsigned long long>(wp));
                NowTrying(cls, what);
                std::memcpy(garbage.data(), Random(63, seed++).c_str(), 64);
                std::vector<UINT_PTR> lps{0, reinterpret_cast<UINT_PTR>(garbage.data())};
                if (LParamIsANumber(msg, wp)) lps.insert(lps.end(), {1, 0xDEADBEEF, JunkNumbers().back()});
                for (UINT_PTR lp : lps) Tried(SendMessageA(h, msg, wp, LPARAM(lp)));
            }
        Paint(h);
        NowTrying(cls, "1 MB of WM_SETTEXT");
        Tried(SendMessageA(h, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(huge.data())));
        Paint(h);
        std::memset(out.data(), 0, out.len);
        Tried(SendMessageA(h, WM_GETTEXT, out.len, reinterpret_cast<LPARAM>(out.data())));
        EXPECT_LT(strnlen(out.data(), out.len), out.len) << cls;
        for (UINT msg : {GXM_GETVALUE, WM_GETTEXTLENGTH, GXM_VALIDATE, WM_SETTEXT})
            for (WPARAM type : {0u, 1u, 3u, 4u, 5u})
                Tried(SendMessageA(h, msg, type, msg == WM_SETTEXT ? 0 : reinterpret_cast<LPARAM>(out.data())));
        NowTrying(cls, "WM_DESTROY sent by hand");
        SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@MSG(first)"));
        Tried(SendMessageA(h, WM_DESTROY, 0, 0)), Tried(SendMessageA(h, WM_DESTROY, 0, 0));
        EXPECT_EQ(GetMethod(h, copy), "") << cls;
        Tried(SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@MSG(second)")));
        DestroyWindow(h);
    }
    // A caller handing a control its own method block back (from the window words) gets the same string.
    UniqueWindow field(Create(parent, FK_CLASS_STRING));
    for (const char* text : {"@MSG(hello)@RNG(1,2)", "@MBOX(a longer text for a block of its own):x"}) {
        SendMessageA(field, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(text));
        Tried(SendMessageA(field, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(TextWord(field, 26, 34))));
        EXPECT_EQ(GetMethod(field, copy), text);
    }
    HWND dead = Create(parent, "STATIC");
    DestroyWindow(dead);
    NowTrying("editing core", "foreign windows");
    for (HWND h : {Create(parent, "STATIC"), Create(parent, "BUTTON"), Create(parent, "LISTBOX"), parent.get(),
                   GetDesktopWindow(), dead, HWND{}, HWND(0x1234)})
        DriveEditingCore(h, "foreign text", false);
}
