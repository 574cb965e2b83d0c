// The suite's main: warms up, names the input tried on a fault, and is the DDE partner with --dde-partner.
#include "tests/win/hostile/hostile.h"

namespace fktest {

int RunDdePartner(const char* mode);

static LONG WINAPI ReportFault(EXCEPTION_POINTERS* info) {
    std::fprintf(stderr, "\nFAULT 0x%08lX at %p while trying: %s\n", info->ExceptionRecord->ExceptionCode,
                 info->ExceptionRecord->ExceptionAddress, g_trying);
    return EXCEPTION_EXECUTE_HANDLER;
}

// Once over what makes lasting objects the first time (classes painted, a box, DCs, clipboard, cursors).
static void WarmUp() {
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
    RecordingParent recorder;
    for (int cursor : {160, 161}) LoadCursorA(GetModuleHandleA(FK_DLL_NAME), MAKEINTRESOURCEA(cursor));
    parent.reset();
    PumpMessages();
}

}  // namespace fktest

int main(int argc, char** argv) {
    if (argc >= 3 && std::strcmp(argv[1], "--dde-partner") == 0) return fktest::RunDdePartner(argv[2]);
    SetUnhandledExceptionFilter(fktest::ReportFault);
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    ::testing::InitGoogleTest(&argc, argv);
    fktest::WarmUp();
    return RUN_ALL_TESTS();
}
