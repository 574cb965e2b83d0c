// The hostile texts, and a main that warms up what is made once per process and names the input tried on a fault.
#include "tests/win/hostile/hostile.h"

namespace fktest {

const std::vector<HostileText>& HostileMethods() {
    static const std::vector<HostileText> texts = [] {
        const std::string high = HighBytes(), deep(10000, '('), undeep(10000, ')'), z200(200, 'z');
        std::string longest = "@MND@RNG(5,6)@CHC(7)@MSG(";
        longest += std::string(65536 - longest.size() - 2, 'A') + ")";
        return std::vector<HostileText>{
            {"empty", ""}, {"lone @", "@"}, {"lone @@", "@@"}, {"deep only", deep}, {"high keyword", "@" + high},
            {"unbalanced (", "@MND@RNG((1,5@CHC(a,(b@MSG((x"}, {"unbalanced )", "@MND@RNG(1,5))))@CHC)a,b)@MSG)))("},
            {"deep parentheses", "@MND@RNG" + deep + "1,2" + undeep + "@CHC" + deep + undeep + "@MSG" + deep + "x"},
            {"64 KB", longest}, {"64 KB item", "@MBOX(" + std::string(65530, 'B') + ")"},
            {"high bytes", "@MND" + high + "@RNG(" + high + "," + high + ")@CHC(" + high + ")@MSG(" + high + ")"},
            {"printf in message", "@MND@RNG(5,6)@CHC(9)@MSG(%s%n%s%n%p%x%99999999d)"},
            {"printf in box", "@MND@RNG(5,6)@MBOX(%s%n:%n%s%s%s)"},
            {"printf in status", "@MND@RNG(5,6)@STAT(%n%n%n%n)@WARN@BEEP"},
            {"keyword at end", "@RNG(5,6)@MSG"}, {"open argument at end", "@MND@RNG(5,6)@MBOX("},
            {"semicolon cut", "@RNG(1,2);@MSG(x);@MBOX(a:b)"},
            {"empty groups", "@RNG()()()(,)@CHC()@MSG()@MBOX(:)@DLM()@KEY()@POS(,,,)"},
            {"bound of 200", "@RNG(" + std::string(200, '9') + "," + std::string(200, '-') + ")@CHC(" + z200 + ")"},
            {"missing table", "@TBL(" + high + ")@KEY(-5)@DLM(" + high + ")@DISPLAY(99999,-1)@POS(" + high + ")"},
            {"long table name", "@MND@TBL(" + std::string(600, 'T') + ")"},
        };
    }();
    return texts;
}

namespace {

LONG WINAPI ReportFault(EXCEPTION_POINTERS* info) {
    std::fprintf(stderr, "\nFAULT 0x%08lX at %p while trying: %s\n", info->ExceptionRecord->ExceptionCode,
                 info->ExceptionRecord->ExceptionAddress, g_trying);
    return EXCEPTION_EXECUTE_HANDLER;
}

BOOL CALLBACK CancelPopup(HWND h, LPARAM) {
    char cls[16] = "";
    GetClassNameA(h, cls, sizeof cls);
    if (!lstrcmpiA(cls, "ListBox") && (GetWindowLongA(h, GWL_STYLE) & WS_POPUP) && IsWindowVisible(h)) DestroyWindow(h);
    return TRUE;
}

// Once over what makes lasting objects the first time: every class painted, a box, a deep cache of
// common DCs, the clipboard, a scrolled table popup with every byte drawn (high bytes bring their fonts).
void WarmUp() {
    UniqueWindow parent = MakeParent(HostileParentProc);
    for (const char* cls : kAllClasses) {
        HWND h = CreateWindowExA(0, cls, "warm", WS_CHILD | WS_VISIBLE, 5, 5, 99, 24, parent, 0, nullptr, nullptr);
        RedrawWindow(h, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_FRAME);
        DestroyWindow(h);
    }
    MessageBoxWatcher watcher;
    twShowError(nullptr, const_cast<char*>("@MSG(warm)"), GXT_TEXT, GXE_RANGE);
    HDC dcs[8];
    for (HDC& dc : dcs) dc = GetDC(parent);
    for (HDC dc : dcs) ReleaseDC(parent, dc);
    char pasted[8] = "";
    twClipboardCopyText(parent, "warm", 4);
    twClipboardPasteText(parent, pasted, sizeof pasted - 1);
    std::string table;
    for (int c = 1; c <= 0xFF; ++c) table += c == '\r' || c == '\n' || c == 0x1A ? ' ' : static_cast<char>(c);
    table += "\r\n\t\t,x\r\n";
    for (int i = 0; i < 100; ++i) table += "A,1\r\n";
    const std::string path = WriteTable("fk_hostile_warm.tbl", table);
    PopupCanceller canceller;
    if (HGLOBAL line = twShowTable(parent, path.c_str(), 0, 0, 0, 50, 50, ',', 256, 0, 0, 0, nullptr, 0))
        GlobalFree(line);
    twFreeTable(nullptr);
    DeleteFileA(path.c_str());
    parent.reset();
    PumpMessages();
}

}  // namespace

void CALLBACK PopupCanceller::Tick(HWND, UINT, UINT_PTR, DWORD) {
    static int ticks = 0;  // a popup gets a few ticks to appear fully
    if (++ticks % 3 == 0) EnumThreadWindows(GetCurrentThreadId(), CancelPopup, 0);
}

}  // namespace fktest

int main(int argc, char** argv) {
    SetUnhandledExceptionFilter(fktest::ReportFault);
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    ::testing::InitGoogleTest(&argc, argv);
    fktest::WarmUp();
    return RUN_ALL_TESTS();
}
