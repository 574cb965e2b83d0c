// Hostile input through the message set: every class gets hostile method
// strings, every number of the private set with null and garbage lParams,
// a megabyte of window text, and the editing core hostile texts and masks.

#include <string>
#include <vector>

#include "tests/win/hostile/hostile.h"

namespace {

using fktest::AllClasses;
using fktest::GuardedBuffer;
using fktest::HostileGroup;
using fktest::HostileMethods;
using fktest::NowTrying;

HWND Create(HWND parent, const char* cls, DWORD style = 0) {
    return CreateWindowExA(0, cls, "", WS_CHILD | WS_VISIBLE | style, 10, 10, 150, 24, parent,
                           reinterpret_cast<HMENU>(77), nullptr, nullptr);
}

void Paint(HWND h) { RedrawWindow(h, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_UPDATENOW); }

// Messages whose lParam is a number, never dereferenced: these also get a
// wild pointer. The others read or write through lParam as their contract
// says and get only null and a real buffer.
bool LParamIsANumber(UINT msg, WPARAM wp) {
    switch (msg) {
        case GXM_VALIDATE:
        case GXM_GETLIMIT:
        case GXN_ERRORSHOWN:
        case GXM_DRAGEND:
        case GXM_SETLIMIT:
        case GXM_SETDROPTARGET: return true;
        case GXM_AUTOTAB:
        case GXM_AUTOFILL: return wp != 0;  // set: a flag
        case GXM_SETMETHOD:
        case GXM_SETVALUE:
        case GXM_GETVALUE:
        case GXM_GETMETHOD:
        case GXM_GETTYPE:
        case GXN_ERROR:
        case GXN_DRAGNOTIFY:
        case GXM_DROPDATA:
        case GXM_DRAGQUERY:
        case GXM_MASK:
        case GXM_EXCLUDE:
        case GXM_INCLUDE:
        case GXM_SETTABLE:
        case GXM_SETDISPLAY:
        case GXM_SETDELIMITER:
        case GXM_SETTABSTOPS:
        case GXM_SETCOLWIDTHS: return false;
        default: return true;  // numbers of the set without a meaning
    }
}

class HostileMessages : public HostileGroup {};

TEST_F(HostileMessages, MethodStringsOnEveryClass) {
    GuardedBuffer copy(257);
    for (const char* cls : AllClasses()) {
        HWND h = Create(parent(), cls);
        ASSERT_NE(h, nullptr) << cls;
        for (const auto& m : HostileMethods()) {
            NowTrying(cls, m.name);
            GuardedBuffer text = GuardedBuffer::Text(m.text);
            SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(text.data()));
            std::memset(copy.data(), 0, copy.size());
            SendMessageA(h, GXM_GETMETHOD, 256, reinterpret_cast<LPARAM>(copy.data()));
            // At most 256 characters come back, and what comes back is the
            // start of what was given.
            EXPECT_EQ(copy.data()[256], 0) << cls << " " << m.name;
            EXPECT_EQ(m.text.compare(0, strlen(copy.data()), copy.data()), 0) << cls << " " << m.name;
            const LRESULT verdict = SendMessageA(h, GXM_VALIDATE, 0, 0);
            EXPECT_TRUE(verdict == 0 || verdict == -1) << cls << " " << m.name;
            Paint(h);
            count(4);
        }
        SendMessageA(h, GXM_SETMETHOD, 0, 0);
        std::memset(copy.data(), 'x', copy.size());
        SendMessageA(h, GXM_GETMETHOD, 256, reinterpret_cast<LPARAM>(copy.data()));
        EXPECT_STREQ(copy.data(), "") << cls;
        count(2);
        DestroyWindow(h);
    }
}

TEST_F(HostileMessages, EveryNumberOfTheSetWithNullAndGarbage) {
    // Garbage: random bytes, a terminator at 63 so that text readers stop
    // there, 1024 bytes for the readers' buffers (the largest buffer any
    // message is documented to fill).
    GuardedBuffer garbage(1024);
    std::vector<UINT> numbers{GXM_SETMETHOD};
    for (UINT msg = GXM_FIRST; msg <= GXM_LAST; ++msg) numbers.push_back(msg);
    const WPARAM wparams[] = {0, 1, 4, 12, 0xFFFFFFFFu};
    char what[96];
    for (const char* cls : AllClasses()) {
        HWND h = Create(parent(), cls);
        ASSERT_NE(h, nullptr) << cls;
        uint32_t seed = 1;
        for (UINT msg : numbers) {
            for (WPARAM wp : wparams) {
                std::snprintf(what, sizeof what, "message 0x%04X wParam 0x%lX", msg, static_cast<unsigned long>(wp));
                NowTrying(cls, what);
                SendMessageA(h, msg, wp, 0);
                fktest::FillRandom(garbage.data(), garbage.size(), seed++);
                garbage.data()[63] = 0;
                SendMessageA(h, msg, wp, reinterpret_cast<LPARAM>(garbage.data()));
                count(2);
                if (LParamIsANumber(msg, wp)) {
                    SendMessageA(h, msg, wp, 1);
                    SendMessageA(h, msg, wp, static_cast<LPARAM>(0xDEADBEEF));
                    count(2);
                }
            }
        }
        NowTrying(cls, "paint after the message set");
        Paint(h);
        DestroyWindow(h);
    }
}

TEST_F(HostileMessages, MegabyteOfWindowText) {
    const std::string huge(1 << 20, 'W');
    GuardedBuffer text = GuardedBuffer::Text(huge);
    GuardedBuffer out(1024);
    for (const char* cls : AllClasses()) {
        NowTrying(cls, "1 MB of WM_SETTEXT");
        HWND h = Create(parent(), cls);
        ASSERT_NE(h, nullptr) << cls;
        SendMessageA(h, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.data()));
        Paint(h);
        // Whatever the control kept, reading it back stays inside the buffer.
        std::memset(out.data(), 0, out.size());
        SendMessageA(h, WM_GETTEXT, out.size(), reinterpret_cast<LPARAM>(out.data()));
        EXPECT_LT(strnlen(out.data(), out.size()), out.size()) << cls;
        SendMessageA(h, WM_GETTEXTLENGTH, 0, 0);
        for (WPARAM type : {0u, 1u, 3u, 4u, 5u}) {
            std::memset(out.data(), 0, out.size());
            SendMessageA(h, GXM_GETVALUE, type, reinterpret_cast<LPARAM>(out.data()));
        }
        SendMessageA(h, GXM_VALIDATE, 0, 0);
        SendMessageA(h, WM_SETTEXT, 0, 0);  // null text: empty
        Paint(h);
        count(10);
        DestroyWindow(h);
    }
}

// The editing core on the entry fields: hostile texts and masks, positions
// far outside the field, and window words that no field would hold.
TEST_F(HostileMessages, EditingCoreWithHostileTextsAndMasks) {
    const int positions[] = {INT_MIN, -1, 0, 3, 40, 149, 5000, INT_MAX};
    const LONG selections[] = {0, MAKELONG(3, 1), MAKELONG(0xFFFF, 0), static_cast<LONG>(0xFFFFFFFF)};
    const LONG carets[] = {0, -7, 100000};
    for (const char* cls : fktest::EntryClasses()) {
        HWND h = Create(parent(), cls);
        ASSERT_NE(h, nullptr) << cls;
        SetFocus(h);
        for (const auto& t : HostileMethods()) {
            NowTrying(cls, t.name);
            // Writable copies: the routines take char*.
            GuardedBuffer text = GuardedBuffer::Text(t.text);
            GuardedBuffer mask = GuardedBuffer::Text(t.text);
            for (size_t i = 0; i < 4; ++i) {
                SetWindowLongA(h, 12, selections[i]);
                SetWindowLongA(h, 16, carets[i % 3]);
                twDrawField(h, text.data(), GXDF_ANY, 0);
                twDrawField(h, text.data(), GXDF_ANY | GXDF_RIGHT, 0);
                twDrawField(h, text.data(), GXDF_PAINT | GXDF_NOCARET, 0);
                count(3);
            }
            for (int x : positions) {
                MouseButtonDown(h, x, text.data(), nullptr, 0, 0);
                MouseMove(h, x / 2, text.data(), 0);
                MouseButtonDown(h, x, text.data(), mask.data(), 1, 0x100);
                MouseMove(h, x, text.data(), 1);
                MouseButtonDown(h, x, text.data(), const_cast<char*>("##-##"), 0, 0);
                ReleaseCapture();
                count(5);
            }
            // A mask as hostile as the text, through the public mask routine:
            // the screen text holds both lengths and a terminator.
            GuardedBuffer screen(2 * t.text.size() + 1);
            for (int pos : {-3, 0, 5, 70000}) {
                twAppToScrMask(screen.data(), text.data(), mask.data(), pos, 0);
                twAppToScrMask(screen.data(), text.data(), mask.data(), pos, 1);
                count(2);
            }
        }
        MouseButtonDown(h, 5, nullptr, nullptr, 0, 0);
        MouseMove(h, 5, nullptr, 0);
        twDrawField(h, nullptr, 0, 0);
        twDrawField(nullptr, "x", 0, 0);
        MouseButtonDown(nullptr, 5, nullptr, nullptr, 0, 0);
        MouseMove(reinterpret_cast<HWND>(0x1234), 5, nullptr, 0);
        ReleaseCapture();
        count(6);
        DestroyCaret();
        DestroyWindow(h);
    }
}

}  // namespace

namespace {

// A caller that hands a control its own method block back (read from the
// window words) gets the same method string, not freed memory.
TEST_F(HostileMessages, OwnMethodBlockHandedBack) {
    HWND h = Create(parent(), FK_CLASS_STRING);
    for (const char* text : {"@MSG(hello)@RNG(1,2)", "@A", "", "@MBOX(a rather longer text for a block of its own):x"}) {
        NowTrying("own block handed back", text);
        SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(text));
        const LPARAM own = GetWindowLongA(h, 26);
        ASSERT_NE(own, 0);
        SendMessageA(h, GXM_SETMETHOD, 0, own);
        char copy[257] = "";
        SendMessageA(h, GXM_GETMETHOD, 256, reinterpret_cast<LPARAM>(copy));
        EXPECT_STREQ(copy, text);
        count();
    }
    DestroyWindow(h);
}

}  // namespace

namespace {

// WM_DESTROY sent by hand (twice, with a method set in between) before the
// real destruction: the method block is freed once, and not lost.
TEST_F(HostileMessages, DestroySentByHand) {
    for (const char* cls : AllClasses()) {
        NowTrying(cls, "WM_DESTROY sent by hand");
        HWND h = Create(parent(), cls);
        ASSERT_NE(h, nullptr) << cls;
        SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@MSG(first)"));
        SendMessageA(h, WM_DESTROY, 0, 0);
        SendMessageA(h, WM_DESTROY, 0, 0);
        char copy[257] = "x";
        SendMessageA(h, GXM_GETMETHOD, 256, reinterpret_cast<LPARAM>(copy));
        EXPECT_STREQ(copy, "") << cls;
        SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@MSG(second)"));
        DestroyWindow(h);
        EXPECT_TRUE(HeapValidate(GetProcessHeap(), 0, nullptr)) << cls;
        count(5);
    }
}

// The editing core handed windows that are not entry fields: other
// classes, the parent, the desktop, handles that name no window.
TEST_F(HostileMessages, EditingCoreOnForeignWindows) {
    HWND stat = Create(parent(), "STATIC");
    HWND button = Create(parent(), "BUTTON");
    HWND list = Create(parent(), "LISTBOX");
    char text[] = "foreign text";
    char mask[] = "##-##";
    for (HWND h : {stat, button, list, parent(), GetDesktopWindow(), static_cast<HWND>(nullptr),
                   reinterpret_cast<HWND>(0x1234), stat /* destroyed below, then tried again */}) {
        NowTrying("editing core", "foreign window");
        twDrawField(h, text, GXDF_ANY, 0);
        twDrawField(h, text, GXDF_PAINT | GXDF_RIGHT, 0);
        MouseButtonDown(h, 10, text, mask, 0, 0);
        MouseMove(h, 30, text, 1);
        ReleaseCapture();
        count(4);
    }
    DestroyWindow(stat);
    twDrawField(stat, text, GXDF_ANY, 0);
    MouseButtonDown(stat, 10, text, nullptr, 0, 0);
    count(2);
    DestroyCaret();
    DestroyWindow(button);
    DestroyWindow(list);
}

}  // namespace
