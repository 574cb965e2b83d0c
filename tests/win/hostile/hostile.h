// Hostile texts and numbers, guarded buffers, the classes, and a fixture that checks resources are flat after each
// group.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>

#include "include/fldkit.h"
#include "tests/support/msgbox_watch.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"
#include "tests/support/resources.h"
#include "tests/support/window.h"

namespace fktest {

struct GuardedBuffer {  // len bytes that end right before a no-access page; text given: it and its terminator
    explicit GuardedBuffer(size_t len) : len(len), end((len + 4095) / 4096 * 4096) {
        base = static_cast<char*>(VirtualAlloc(nullptr, end + 4096, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
        VirtualProtect(base + end, 4096, PAGE_NOACCESS, &old);
    }
    explicit GuardedBuffer(const std::string& text) : GuardedBuffer(text.size() + 1) { text.copy(data(), len); }
    GuardedBuffer(const GuardedBuffer&) = delete;
    ~GuardedBuffer() { VirtualFree(base, 0, MEM_RELEASE); }
    char* data() const { return base + end - len; }
    const size_t len, end;
    char* base;
    DWORD old = 0;
};

// The fields of the editing core come first.
inline const char* const kAllClasses[] = {
    FK_CLASS_STRING, FK_CLASS_NUMERIC, FK_CLASS_REAL,   FK_CLASS_CURRENCY, FK_CLASS_DATE,   FK_CLASS_BITMAP,
    FK_CLASS_ICON,   FK_CLASS_COLOR,   FK_CLASS_TABLE,  FK_CLASS_CBTABLE,  FK_CLASS_TICKER, FK_CLASS_BUTTON,
    FK_CLASS_LINE,   FK_CLASS_TEXT3D,  FK_CLASS_FRAME3D};
constexpr int kEntryClasses = 5;

inline std::string Random(size_t n, uint32_t seed) {  // xorshift bytes; seed 0: 0x80-0xFF
    std::string s(n, 0);
    for (uint32_t i = 0, x = seed * 2654435761u + 1; i < n; ++i) {
        x ^= x << 13, x ^= x >> 17, x ^= x << 5;
        s[i] = static_cast<char>(seed == 0 ? 0x80 + i : x >> 24);
    }
    return s;
}
inline const std::string kHigh = Random(128, 0);

// A handle no allocation answers to. In the 64-bit build it lies above 4 GiB,
// where a handle squeezed through 32 bits would turn into another one.
inline const HGLOBAL kForeignHandle = HGLOBAL(sizeof(void*) == 8 ? UINT_PTR(0x7FF700C0FFEEull) : 0xC0FFEEu);
// Junk for wParam and lParam; in the 64-bit build also values whose low 32
// bits look harmless (4, a null pointer) and whose high ones do not.
inline const std::vector<UINT_PTR> kJunk{0u, 1u, 2u, 4u, 12u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu, ~UINT_PTR(0),
                                         UINT_PTR(sizeof(void*) == 8 ? 0x100000004ull : 3),
                                         UINT_PTR(sizeof(void*) == 8 ? 0x7FF700000000ull : 5)};

inline const std::vector<std::string>& HostileMethods() {
    static const std::vector<std::string> texts = [] {
        const std::string high = kHigh, deep(10000, '('), undeep(10000, ')'), z200(200, 'z');  // parser edge cases
        std::string longest = "@MND@RNG(5,6)@CHC(7)@MSG(";
        longest += std::string(65536 - longest.size() - 2, 'A') + ")";
        return std::vector<std::string>{
            "", "@", "@@", deep, "@" + high, "@MND@RNG((1,5@CHC(a,(b@MSG((x", "@MND@RNG(1,5))))@CHC)a,b)@MSG)))(",
            "@MND@RNG" + deep + "1,2" + undeep + "@CHC" + deep + undeep + "@MSG" + deep + "x", longest,
            "@MBOX(" + std::string(65530, 'B') + ")",
            "@MND" + high + "@RNG(" + high + "," + high + ")@CHC(" + high + ")@MSG(" + high + ")",
            "@MND@RNG(5,6)@CHC(9)@MSG(%s%n%s%n%p%x%99999999d)", "@MND@RNG(5,6)@MBOX(%s%n:%n%s%s%s)",
            "@MND@RNG(5,6)@STAT(%n%n%n%n)@WARN@BEEP", "@RNG(5,6)@MSG", "@MND@RNG(5,6)@MBOX(",
            "@RNG(1,2);@MSG(x);@MBOX(a:b)", "@RNG()()()(,)@CHC()@MSG()@MBOX(:)@DLM()@KEY()@POS(,,,)",
            "@RNG(" + std::string(200, '9') + "," + std::string(200, '-') + ")@CHC(" + z200 + ")",
            "@TBL(" + high + ")@KEY(-5)@DLM(" + high + ")@DISPLAY(99999,-1)@POS(" + high + ")",
            "@MND@TBL(" + std::string(600, 'T') + ")"};
    }();
    return texts;
}

inline char g_trying[512] = "nothing yet";  // named in the crash report
inline long g_tried = 0;                     // hostile calls of the running group, printed when it ends
template <typename R> R Tried(R result) { return ++g_tried, result; }  // counts one hostile call
// Names what is tried (shown should it crash) and counts it.
inline void NowTrying(const char* group, const std::string& what) {
    std::snprintf(g_trying, 512, "%s: %.400s", group, what.c_str());
}
inline LRESULT CALLBACK HostileParentProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {  // errors handled by the parent
    return msg == GXN_ERROR ? GXR_HANDLED : DefWindowProcA(h, msg, wp, lp);
}

// Every group runs inside one check: no crash (main's filter names what was tried), no window, atom or GDI object
// left behind, the heaps valid.
class HostileGroup : public ::testing::Test {
protected:
    void SetUp() override {
        parent = MakeParent(HostileParentProc);
        before = TakeResourceFigures();
        g_tried = 0;
    }
    void TearDown() override {  // figures taken with a parent open, as in SetUp: it holds the input-method window
        parent = MakeParent(HostileParentProc);
        PumpMessages();
        const ResourceFigures after = TakeResourceFigures();
        EXPECT_TRUE(after.allHeapsValid && after.windows <= before.windows && after.atoms <= before.atoms &&
                    after.gdiObjects <= before.gdiObjects) << DescribeGrowth(before, after, false);
        const char* name = testing::UnitTest::GetInstance()->current_test_info()->name();
        std::printf("%s: %ld hostile calls survived\n", name, g_tried);
    }
    ResourceFigures before;
    UniqueWindow parent;
};

}  // namespace fktest
