// Hostile input through the message set and the editing core.
#include "tests/win/hostile/hostile.h"
#include "tests/support/bitness.h"

using namespace fktest;

static HWND Create(HWND parent, const char* cls) {
    return CreateWindowExA(0, cls, "", WS_CHILD | WS_VISIBLE, 10, 10, 150, 24, parent, HMENU(77), nullptr, nullptr);
}
static void Paint(HWND h) { RedrawWindow(h, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW); }
static std::string GetMethod(HWND h, GuardedBuffer& copy) {  // at most 256 characters come back
    std::memset(copy.data(), 'x', 256), copy.data()[256] = 0;
    SendMessageA(h, GXM_GETMETHOD, 256, reinterpret_cast<LPARAM>(copy.data()));
    EXPECT_EQ(copy.data()[256], 0);
    return copy.data();
}

// Messages whose lParam is a number, never dereferenced, also get wild pointers (sets of a flag take it in lParam).
static bool LParamIsANumber(UINT msg, WPARAM wp) {
    static const std::set<UINT> pointers{GXM_SETMETHOD, GXM_SETVALUE, GXM_GETVALUE, GXM_GETMETHOD, GXM_GETTYPE,
        GXN_ERROR, GXN_DRAGNOTIFY, GXM_DROPDATA, GXM_DRAGQUERY, GXM_MASK, GXM_EXCLUDE, GXM_INCLUDE, GXM_SETTABLE,
        GXM_SETDISPLAY, GXM_SETDELIMITER, GXM_SETTABSTOPS, GXM_SETCOLWIDTHS};
    return msg == GXM_AUTOTAB || msg == GXM_AUTOFILL ? wp != 0 : pointers.count(msg) == 0;
}

class HostileMessages : public HostileGroup {};

// Every class: hostile methods, every private message with lParam 0, garbage or wild, 1 MB text, WM_DESTROY twice.
TEST_F(HostileMessages, EveryClass) {
    GuardedBuffer copy(257), out(1024), garbage(1024), huge(std::string(1 << 20, 'W'));
    std::vector<UINT> numbers{GXM_SETMETHOD};
    for (UINT msg = GXM_FIRST; msg <= GXM_LAST; ++msg) numbers.push_back(msg);
    char what[64];
    for (const char* cls : kAllClasses) {
        HWND h = Create(parent, cls);
        ASSERT_NE(h, nullptr) << cls;
        for (const auto& m : HostileMethods()) {
            NowTrying(cls, m.name);
            GuardedBuffer text(m.text);
            SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(text.data()));
            EXPECT_TRUE(m.text.starts_with(GetMethod(h, copy))) << cls << " " << m.name;
            EXPECT_LE(unsigned(SendMessageA(h, GXM_VALIDATE, 0, 0) + 1), 1u) << cls << " " << m.name;  // 0 or -1
            Paint(h);
        }
        SendMessageA(h, GXM_SETMETHOD, 0, 0);
        EXPECT_EQ(GetMethod(h, copy), "") << cls;
        uint32_t seed = 1;
        for (UINT msg : numbers) {
            for (WPARAM wp : JunkNumbers()) {
                std::snprintf(what, sizeof what, "message 0x%04X wParam 0x%llX", msg, static_cast<unsigned long long>(wp));
                NowTrying(cls, what);
                SendMessageA(h, msg, wp, 0);
                FillRandom(garbage.data(), garbage.size(), seed++);
                garbage.data()[63] = 0;
                SendMessageA(h, msg, wp, reinterpret_cast<LPARAM>(garbage.data()));
                if (LParamIsANumber(msg, wp))
                    for (UINT_PTR lp : {UINT_PTR(1), UINT_PTR(0xDEADBEEF), JunkNumbers().back()}) SendMessageA(h, msg, wp, LPARAM(lp));
            }
        }
        Paint(h);
        NowTrying(cls, "1 MB of WM_SETTEXT");
        SendMessageA(h, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(huge.data())), Paint(h);
        std::memset(out.data(), 0, out.size());
        SendMessageA(h, WM_GETTEXT, out.size(), reinterpret_cast<LPARAM>(out.data()));
        EXPECT_LT(strnlen(out.data(), out.size()), out.size()) << cls;
        for (WPARAM type : {0u, 1u, 3u, 4u, 5u}) SendMessageA(h, GXM_GETVALUE, type, (LPARAM)out.data());
        SendMessageA(h, WM_GETTEXTLENGTH, 0, 0), SendMessageA(h, GXM_VALIDATE, 0, 0), SendMessageA(h, WM_SETTEXT, 0, 0);
        Paint(h);
        NowTrying(cls, "WM_DESTROY sent by hand");
        SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@MSG(first)"));
        SendMessageA(h, WM_DESTROY, 0, 0), SendMessageA(h, WM_DESTROY, 0, 0);
        EXPECT_EQ(GetMethod(h, copy), "") << cls;
        SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@MSG(second)"));
        DestroyWindow(h);
        EXPECT_TRUE(HeapValidate(GetProcessHeap(), 0, nullptr)) << cls;
    }
    // A caller handing a control its own method block back (from the window words) gets the same string.
    HWND h = Create(parent, FK_CLASS_STRING);
    for (const char* text : {"@MSG(hello)@RNG(1,2)", "@A", "", "@MBOX(a longer text for a block of its own):x"}) {
        SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(text));
        ASSERT_NE(fktest::TextWord(h, 26, 34), nullptr);
        SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(fktest::TextWord(h, 26, 34)));
        EXPECT_EQ(GetMethod(h, copy), text);
    }
    DestroyWindow(h);
}

// The editing core on hostile texts, masks, positions and window words; then on foreign and dead windows.
TEST_F(HostileMessages, EditingCore) {
    for (const char* cls : kEntryClasses) {
        HWND h = Create(parent, cls);
        ASSERT_NE(h, nullptr) << cls;
        SetFocus(h);
        for (const auto& t : HostileMethods()) {
            NowTrying(cls, t.name);
            GuardedBuffer text(t.text), mask(t.text);
            for (auto [selection, caret] : {std::pair<LONG, LONG>{0, 0}, {MAKELONG(3, 1), -7},
                                            {MAKELONG(0xFFFF, 0), 100000}, {LONG(0xFFFFFFFF), 3}}) {
                SetWindowLongA(h, 12, selection), SetWindowLongA(h, 16, caret);
                for (UINT how : {GXDF_ANY, GXDF_ANY | GXDF_RIGHT, GXDF_PAINT | GXDF_NOCARET}) twDrawField(h, text.data(), how, 0);
            }
            for (int x : {INT_MIN, -1, 0, 3, 40, 149, 5000, INT_MAX}) {
                MouseButtonDown(h, x, text.data(), nullptr, 0, 0);
                MouseMove(h, x / 2, text.data(), 0);
                MouseButtonDown(h, x, text.data(), mask.data(), 1, 0x100);
                MouseMove(h, x, text.data(), 1);
                MouseButtonDown(h, x, text.data(), const_cast<char*>("##-##"), 0, 0);
                ReleaseCapture();
            }
            GuardedBuffer screen(2 * t.text.size() + 1);  // holds both lengths and a terminator
            for (int pos : {-3, 0, 5, 70000})
                for (int noFill : {0, 1}) twAppToScrMask(screen.data(), text.data(), mask.data(), pos, noFill);
        }
        MouseButtonDown(h, 5, nullptr, nullptr, 0, 0), MouseMove(h, 5, nullptr, 0), twDrawField(h, nullptr, 0, 0);
        DestroyCaret(), DestroyWindow(h);
    }
    HWND stat = Create(parent, "STATIC"), button = Create(parent, "BUTTON"), list = Create(parent, "LISTBOX");
    HWND dead = Create(parent, "STATIC");
    DestroyWindow(dead);
    char text[] = "foreign text", mask[] = "##-##";
    for (HWND h : {stat, button, list, parent.get(), GetDesktopWindow(), dead, HWND{}, HWND(0x1234)}) {
        NowTrying("editing core", "foreign window");
        twDrawField(h, text, GXDF_ANY, 0), twDrawField(h, text, GXDF_PAINT | GXDF_RIGHT, 0);
        MouseButtonDown(h, 10, text, mask, 0, 0), MouseButtonDown(h, 10, text, nullptr, 0, 0), MouseMove(h, 30, text, 1);
        ReleaseCapture();
    }
    DestroyCaret();
}
