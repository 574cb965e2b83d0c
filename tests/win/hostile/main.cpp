// The hostile suite's own main: warms up what the library and the system
// make once per process (fonts, caches, the thread's input-method window),
// so that each group's figures see only what the group leaves behind, and
// names the input that was being tried when the process faults.

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <string>

#include "include/fldkit.h"
#include "tests/support/msgbox_watch.h"
#include "tests/win/hostile/hostile.h"
#include "tests/win/tables/popup_driver.h"

namespace fktest {

bool g_parentHandlesErrors = true;
int g_errorsSeen = 0;

namespace {

char g_trying[512] = "nothing yet";

LONG WINAPI ReportFault(EXCEPTION_POINTERS* info) {
    std::fprintf(stderr, "\nFAULT 0x%08lX at %p while trying: %s\n", info->ExceptionRecord->ExceptionCode,
                 info->ExceptionRecord->ExceptionAddress, g_trying);
    std::fflush(stderr);
    return EXCEPTION_EXECUTE_HANDLER;
}

LRESULT CALLBACK ParentProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == GXN_ERROR) {
        ++g_errorsSeen;
        if (g_parentHandlesErrors) return GXR_HANDLED;
    }
    return DefWindowProcA(h, msg, wp, lp);
}

BOOL CALLBACK CancelPopup(HWND h, LPARAM counter) {
    char cls[16] = "";
    GetClassNameA(h, cls, sizeof cls);
    if (lstrcmpiA(cls, "ListBox") == 0 && (GetWindowLongA(h, GWL_STYLE) & WS_POPUP) != 0 && IsWindowVisible(h)) {
        DestroyWindow(h);
        ++*reinterpret_cast<int*>(counter);
    }
    return TRUE;
}

int g_cancelled = 0;
int g_ticks = 0;

void CALLBACK CancelTick(HWND, UINT, UINT_PTR, DWORD) {
    // Give a popup a few ticks to appear fully, then close it.
    if (++g_ticks % 3 == 0) EnumThreadWindows(GetCurrentThreadId(), CancelPopup, reinterpret_cast<LPARAM>(&g_cancelled));
}

// One pass over what makes lasting objects the first time: every class
// created and painted, a message box, the clipboard, a table popup.
void WarmUp() {
    HWND parent = MakeHostileParent();
    for (const char* cls : AllClasses()) {
        HWND h = CreateWindowExA(0, cls, "warm", WS_CHILD | WS_VISIBLE, 5, 5, 100, 24, parent, nullptr, nullptr, nullptr);
        RedrawWindow(h, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_FRAME);
        DestroyWindow(h);
    }
    {
        MessageBoxWatcher watcher;
        twShowError(nullptr, const_cast<char*>("@MSG(warm)"), GXT_TEXT, GXE_RANGE);
    }
    // Common device contexts are cached: fill the cache as deep as a
    // painted box over a painting control goes.
    {
        HDC dcs[8];
        for (HDC& dc : dcs) dc = GetDC(parent);
        for (HDC dc : dcs) ReleaseDC(parent, dc);
    }
    twClipboardCopyText(parent, "warm", 4);
    char pasted[8] = "";
    twClipboardPasteText(parent, pasted, sizeof pasted - 1);
    // Every byte drawn once: high bytes bring the fonts that hold them.
    std::string bytes;
    for (int c = 1; c <= 0xFF; ++c)
        if (c != '\r' && c != '\n' && c != 0x1A) bytes.push_back(static_cast<char>(c));
    // Enough lines for the list's scroll bar.
    std::string table = bytes + "\r\n\t\t,x\r\n";
    for (int i = 0; i < 100; ++i) table += "A,1\r\n";
    const std::string path = WriteTable("fk_hostile_warm.tbl", table);
    {
        PopupCanceller canceller;
        HGLOBAL line = twShowTable(parent, path.c_str(), 0, 0, 0, 50, 50, ',', 256, 0, 0, 0, nullptr, 0);
        if (line) GlobalFree(line);
    }
    twFreeTable(nullptr);
    DeleteFileA(path.c_str());
    DestroyWindow(parent);
    MSG m;
    while (PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&m);
}

}  // namespace

HWND MakeHostileParent() {
    WNDCLASSA wc{};
    if (!GetClassInfoA(GetModuleHandleA(nullptr), "FkHostileParent", &wc)) {
        wc.lpfnWndProc = ParentProc;
        wc.hInstance = GetModuleHandleA(nullptr);
        wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
        wc.lpszClassName = "FkHostileParent";
        RegisterClassA(&wc);
    }
    return CreateWindowExA(0, "FkHostileParent", "hostile", WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN, 10,
                           10, 400, 300, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
}

void NowTrying(const char* group, const char* what) {
    std::snprintf(g_trying, sizeof g_trying, "%s: %s", group, what);
}

PopupCanceller::PopupCanceller() : timer_(SetTimer(nullptr, 0, 20, CancelTick)) {}
PopupCanceller::~PopupCanceller() { KillTimer(nullptr, timer_); }
int PopupCanceller::cancelled() { return g_cancelled; }

void HostileGroup::SetUp() {
    g_parentHandlesErrors = true;
    parent_ = MakeHostileParent();
    before_ = TakeResourceFigures();
    ASSERT_TRUE(before_.allHeapsValid);
}

void HostileGroup::TearDown() {
    if (IsWindow(parent_)) DestroyWindow(parent_);
    parent_ = nullptr;
    // Hold the thread's input-method window as the figures were taken with
    // a parent open.
    HWND holder = MakeHostileParent();
    MSG m;
    while (PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&m);
    const ResourceFigures after = TakeResourceFigures();
    DestroyWindow(holder);
    EXPECT_TRUE(after.allHeapsValid);
    EXPECT_LE(after.windows, before_.windows) << DescribeGrowth(before_, after, false);
    EXPECT_LE(after.atoms, before_.atoms) << DescribeGrowth(before_, after, false);
    EXPECT_LE(after.gdiObjects, before_.gdiObjects) << DescribeGrowth(before_, after, false);
    const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
    std::printf("[hostile] %s.%s: %ld hostile inputs survived (process heap blocks %+ld, CRT heap blocks %+ld)\n",
                test->test_suite_name(), test->name(), inputs_, after.processHeap.blocks - before_.processHeap.blocks,
                after.crtHeap.blocks - before_.crtHeap.blocks);
    RecordProperty("inputs", static_cast<int>(inputs_));
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
