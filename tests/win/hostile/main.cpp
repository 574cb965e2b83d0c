// The hostile suite's own main: warms up what the library and the system make once per process, so that
// each group's figures see only what the group leaves behind, and names the input tried when it faults.
#include <cstdio>

#include "tests/support/msgbox_watch.h"
#include "tests/win/hostile/hostile.h"
#include "tests/win/tables/popup_driver.h"

namespace fktest {

bool g_parentHandlesErrors = true;
const char* const kAllClasses[15] = {FK_CLASS_STRING,   FK_CLASS_NUMERIC, FK_CLASS_REAL,    FK_CLASS_BITMAP,
                                     FK_CLASS_ICON,     FK_CLASS_DATE,    FK_CLASS_COLOR,   FK_CLASS_TABLE,
                                     FK_CLASS_CBTABLE,  FK_CLASS_TICKER,  FK_CLASS_CURRENCY, FK_CLASS_BUTTON,
                                     FK_CLASS_LINE,     FK_CLASS_TEXT3D,  FK_CLASS_FRAME3D};
const char* const kEntryClasses[5] = {FK_CLASS_STRING, FK_CLASS_NUMERIC, FK_CLASS_REAL, FK_CLASS_CURRENCY,
                                      FK_CLASS_DATE};

std::string HighBytes() {
    std::string high;
    for (int c = 0x80; c <= 0xFF; ++c) high.push_back(static_cast<char>(c));
    return high;
}

const std::vector<HostileText>& HostileMethods() {
    static const std::vector<HostileText> texts = [] {
        const std::string high = HighBytes(), deep(10000, '('), undeep(10000, ')');
        std::string longest = "@MND@RNG(5,6)@CHC(7)@MSG(";
        longest += std::string(65536 - longest.size() - 2, 'A') + ")";
        return std::vector<HostileText>{
            {"empty", ""},
            {"lone @", "@"},
            {"lone @@", "@@"},
            {"unbalanced open", "@MND@RNG((1,5@CHC(a,(b@MSG((x"},
            {"unbalanced close", "@MND@RNG(1,5))))@CHC)a,b)@MSG)))("},
            {"deep parentheses", "@MND@RNG" + deep + "1,2" + undeep + "@CHC" + deep + undeep + "@MSG" + deep + "x"},
            {"deep only", deep},
            {"64 KB", longest},
            {"64 KB item", "@MBOX(" + std::string(65530, 'B') + ")"},
            {"high bytes", "@MND" + high + "@RNG(" + high + "," + high + ")@CHC(" + high + ")@MSG(" + high + ")"},
            {"high keyword", "@" + high},
            {"printf in message", "@MND@RNG(5,6)@CHC(9)@MSG(%s%n%s%n%p%x%99999999d)"},
            {"printf in box", "@MND@RNG(5,6)@MBOX(%s%n:%n%s%s%s)"},
            {"printf in status", "@MND@RNG(5,6)@STAT(%n%n%n%n)@WARN@BEEP"},
            {"keyword at end", "@RNG(5,6)@MSG"},
            {"open argument at end", "@MND@RNG(5,6)@MBOX("},
            {"semicolon cut", "@RNG(1,2);@MSG(x);@MBOX(a:b)"},
            {"empty groups", "@RNG()()()(,)@CHC()@MSG()@MBOX(:)@DLM()@KEY()@POS(,,,)"},
            {"bound of 200", "@RNG(" + std::string(200, '9') + "," + std::string(200, '-') + ")@CHC(" +
                                 std::string(200, 'z') + ")"},
            {"missing table", "@TBL(" + high + ")@KEY(-5)@DLM(" + high + ")@DISPLAY(99999,-1)@POS(" + high + ")"},
            {"long table name", "@MND@TBL(" + std::string(600, 'T') + ")"},
        };
    }();
    return texts;
}

void FillRandom(char* p, size_t n, uint32_t seed) {
    uint32_t x = seed * 2654435761u + 1;
    for (size_t i = 0; i < n; ++i) x ^= x << 13, x ^= x >> 17, x ^= x << 5, p[i] = static_cast<char>(x >> 24);
}

namespace {

char g_trying[512] = "nothing yet";

LONG WINAPI ReportFault(EXCEPTION_POINTERS* info) {
    std::fprintf(stderr, "\nFAULT 0x%08lX at %p while trying: %s\n", info->ExceptionRecord->ExceptionCode,
                 info->ExceptionRecord->ExceptionAddress, g_trying);
    return EXCEPTION_EXECUTE_HANDLER;
}

LRESULT CALLBACK ParentProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == GXN_ERROR && g_parentHandlesErrors) return GXR_HANDLED;
    return DefWindowProcA(h, msg, wp, lp);
}

BOOL CALLBACK CancelPopup(HWND h, LPARAM) {
    char cls[16] = "";
    GetClassNameA(h, cls, sizeof cls);
    if (lstrcmpiA(cls, "ListBox") == 0 && (GetWindowLongA(h, GWL_STYLE) & WS_POPUP) != 0 && IsWindowVisible(h))
        DestroyWindow(h);
    return TRUE;
}

void Pump() {
    MSG m;
    while (PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&m);
}

// Once over what makes lasting objects the first time: every class painted, a box, a deep cache of
// common DCs, the clipboard, a scrolled table popup with every byte drawn (high bytes bring their fonts).
void WarmUp() {
    HWND parent = MakeHostileParent();
    for (const char* cls : kAllClasses) {
        HWND h = CreateWindowExA(0, cls, "warm", WS_CHILD | WS_VISIBLE, 5, 5, 100, 24, parent, nullptr, nullptr, nullptr);
        RedrawWindow(h, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_FRAME);
        DestroyWindow(h);
    }
    {
        MessageBoxWatcher watcher;
        twShowError(nullptr, const_cast<char*>("@MSG(warm)"), GXT_TEXT, GXE_RANGE);
    }
    HDC dcs[8];
    for (HDC& dc : dcs) dc = GetDC(parent);
    for (HDC dc : dcs) ReleaseDC(parent, dc);
    twClipboardCopyText(parent, "warm", 4);
    char pasted[8] = "";
    twClipboardPasteText(parent, pasted, sizeof pasted - 1);
    std::string table;
    for (int c = 1; c <= 0xFF; ++c)
        if (c != '\r' && c != '\n' && c != 0x1A) table.push_back(static_cast<char>(c));
    table += "\r\n\t\t,x\r\n";
    for (int i = 0; i < 100; ++i) table += "A,1\r\n";
    const std::string path = WriteTable("fk_hostile_warm.tbl", table);
    {
        PopupCanceller canceller;
        if (HGLOBAL line = twShowTable(parent, path.c_str(), 0, 0, 0, 50, 50, ',', 256, 0, 0, 0, nullptr, 0))
            GlobalFree(line);
    }
    twFreeTable(nullptr);
    DeleteFileA(path.c_str());
    DestroyWindow(parent);
    Pump();
}

}  // namespace

void CALLBACK PopupCanceller::Tick(HWND, UINT, UINT_PTR, DWORD) {
    static int ticks = 0;  // a popup gets a few ticks to appear fully
    if (++ticks % 3 == 0) EnumThreadWindows(GetCurrentThreadId(), CancelPopup, 0);
}

HWND MakeHostileParent() {
    WNDCLASSA wc{};
    wc.lpfnWndProc = ParentProc;
    wc.hInstance = GetModuleHandleA(nullptr);
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    wc.lpszClassName = "FkHostileParent";
    RegisterClassA(&wc);  // fails harmlessly once registered
    return CreateWindowExA(0, "FkHostileParent", "hostile", WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN, 10,
                           10, 400, 300, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
}

void NowTrying(const char* group, const char* what) {
    std::snprintf(g_trying, sizeof g_trying, "%s: %s", group, what);
}

void HostileGroup::SetUp() {
    g_parentHandlesErrors = true;
    parent_ = MakeHostileParent();
    before_ = TakeResourceFigures();
    ASSERT_TRUE(before_.allHeapsValid);
}

// The figures are taken with a parent open, as in SetUp: it holds the thread's input-method window.
void HostileGroup::TearDown() {
    DestroyWindow(parent_);
    HWND holder = MakeHostileParent();
    Pump();
    const ResourceFigures after = TakeResourceFigures();
    DestroyWindow(holder);
    EXPECT_TRUE(after.allHeapsValid);
    EXPECT_LE(after.windows, before_.windows) << DescribeGrowth(before_, after, false);
    EXPECT_LE(after.atoms, before_.atoms) << DescribeGrowth(before_, after, false);
    EXPECT_LE(after.gdiObjects, before_.gdiObjects) << DescribeGrowth(before_, after, false);
    NowTrying("between groups", "");
}

}  // namespace fktest

int main(int argc, char** argv) {
    SetUnhandledExceptionFilter(fktest::ReportFault);
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    ::testing::InitGoogleTest(&argc, argv);
    fktest::WarmUp();
    return RUN_ALL_TESTS();
}
