// Hostile input through the message set, the editing core, validation and error reports (buffers end at a guard
// page).
#include <dde.h>

#include <set>

#include "tests/win/hostile/hostile.h"

using namespace fktest;

namespace {

void Paint(HWND h) { RedrawWindow(h, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW); }
std::string GetMethod(HWND h, GuardedBuffer& copy) {  // at most 256 characters come back, into 257 bytes
    std::memset(copy.data(), 'x', 256);
    copy.data()[256] = 0;
    Tried(SendMessageA(h, GXM_GETMETHOD, 256, reinterpret_cast<LPARAM>(copy.data())));
    return copy.data();
}

// Messages whose lParam is a number, never dereferenced, also get wild pointers (sets of a flag take it in lParam).
bool LParamIsANumber(UINT msg, WPARAM wp) {
    static const std::set<UINT> pointers{GXM_SETMETHOD, GXM_SETVALUE, GXM_GETVALUE, GXM_GETMETHOD, GXM_GETTYPE,
        GXN_ERROR, GXN_DRAGNOTIFY, GXM_DROPDATA, GXM_DRAGQUERY, GXM_MASK, GXM_EXCLUDE, GXM_INCLUDE, GXM_SETTABLE,
        GXM_SETDISPLAY, GXM_SETDELIMITER, GXM_SETTABSTOPS, GXM_SETCOLWIDTHS};
    return msg == GXM_AUTOTAB || msg == GXM_AUTOFILL ? wp != 0 : pointers.count(msg) == 0;
}

// The editing core on one text: drawn under hostile selection and caret words, pressed and moved
// with the mouse at hostile positions, and masked into a screen buffer of exactly both lengths and a terminator.
void DriveEditingCore(HWND h, const std::string& t) {
    GuardedBuffer text(t), mask(t), screen(2 * t.size() + 1);
    SetFocus(h);
    for (auto [selection, caret] : {std::pair<LONG, LONG>{0, 0}, {MAKELONG(3, 1), -7}, {MAKELONG(0xFFFF, 0), 100000},
                                    {LONG(0xFFFFFFFF), 3}}) {
        SetWindowLongA(h, 12, selection), SetWindowLongA(h, 16, caret);
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

// Every class: hostile methods (the fields' editing core on each, the services with the first); every message with
// lParam 0, garbage or wild; 1 MB of text read back into 1024 bytes; WM_DESTROY twice. Then auto-tab and error
// reports on handles that are not windows (HWND_BROADCAST among them): quiet no-ops.
TEST_F(HostileMessages, EveryClassTheEditingCoreAndTheServicesSurviveHostileInput) {
    MessageBoxWatcher boxes;
    GuardedBuffer copy(257), out(1024), garbage(1024), huge(std::string(1 << 20, 'W'));
    for (int i = 0; i < int(std::size(kAllClasses)); ++i) {
        const char* const cls = kAllClasses[i];
        UniqueWindow h = MakeChild(parent, cls, 0, 77, 150);
        ASSERT_NE(h.get(), nullptr) << cls;
        for (const auto& m : HostileMethods()) {
            NowTrying(cls, m.substr(0, 60));
            GuardedBuffer text(m);
            Tried(SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(text.data())));
            EXPECT_TRUE(m.starts_with(GetMethod(h, copy))) << g_trying;
            EXPECT_LE(unsigned(Tried(SendMessageA(h, GXM_VALIDATE, 0, 0)) + 1), 1u) << g_trying;  // 0 or -1
            Paint(h);
            if (i < kEntryClasses) DriveEditingCore(h, m);
            if (i == 0) Tried(twValidate(nullptr, GXT_LONG, garbage.data(), text.data(), nullptr));  // shown in a box
        }
        Tried(SendMessageA(h, GXM_SETMETHOD, 0, 0));
        EXPECT_EQ(GetMethod(h, copy), "") << cls;
        uint32_t seed = 1;  // ours, the single classes' own (from WM_USER) and DDE's
        for (auto [first, last] : {std::pair{GXM_SETMETHOD, GXM_SETMETHOD}, {GXM_FIRST, GXM_LAST},
                                   {WM_USER + 1, WM_USER + 10}, {WM_DDE_FIRST, WM_DDE_LAST}})
            for (UINT msg = first; msg <= UINT(last); ++msg)
                for (WPARAM wp : kJunk) {
                    NowTrying(cls, "message " + std::to_string(msg) + " wParam " + std::to_string(wp));
                    std::memcpy(garbage.data(), Random(63, seed++).c_str(), 64);
                    std::vector<UINT_PTR> lps{0, reinterpret_cast<UINT_PTR>(garbage.data())};
                    if (LParamIsANumber(msg, wp)) lps.insert(lps.end(), {1, 0xDEADBEEF, kJunk.back()});
                    for (UINT_PTR lp : lps) Tried(SendMessageA(h, msg, wp, LPARAM(lp)));
                }
        Paint(h);
        NowTrying(cls, "1 MB of WM_SETTEXT, then a text into 1024 bytes");
        Tried(SendMessageA(h, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(huge.data())));
        Paint(h);
        for (UINT msg : {UINT(WM_GETTEXT), UINT(GXM_GETVALUE), UINT(WM_GETTEXTLENGTH), UINT(GXM_VALIDATE)})
            for (WPARAM type : {0u, 1u, 3u, 4u, 5u, 1024u}) Tried(SendMessageA(h, msg, type, LPARAM(out.data())));
        NowTrying(cls, "WM_DESTROY sent by hand");
        SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@MSG(first)"));
        Tried(SendMessageA(h, WM_DESTROY, 0, 0)), Tried(SendMessageA(h, WM_DESTROY, 0, 0));
        EXPECT_EQ(GetMethod(h, copy), "") << cls;
        Tried(SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@MSG(second)")));
    }
    char arg[8] = "x";
    EXPECT_EQ(Tried(twGetMethodParam(nullptr, "@A", arg) | twGetMethodParam(arg, nullptr, arg)) + arg[0], 0);
    EXPECT_EQ(Tried(twAddMethodParam(nullptr, "@A") | twRemoveMethodParam(nullptr, "@A")), 0);
    std::string shown;  // the boxes keep their bounds and show "%s%n" as it is
    for (const auto& box : boxes.boxes()) shown += box.text.size() <= 255 && box.caption.size() <= 99 ? box.text : "!!";
    EXPECT_TRUE(shown.find("%s%n") != std::string::npos && shown.find("!!") == std::string::npos) << shown;
    RecordingParent bystander;
    boxes.clear();
    for (HWND h : {HWND_BROADCAST, reinterpret_cast<HWND>(0x4321), reinterpret_cast<HWND>(-1), HWND(0x5678)})
        EXPECT_EQ(Tried(twAutoTab(h)) + Tried(twShowError(h, arg, GXT_TEXT, GXE_RANGE)), 0) << h;
    PumpMessages();
    EXPECT_EQ(bystander.Of(GXM_VALIDATE).size() + bystander.Of(EM_SETSEL).size() + boxes.boxes().size(), 0u)
        << "a handle that is not a window was sent to, or shown a box";
}
