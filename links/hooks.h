// The platform calls of the link services that reach outside the process
// (help viewer, program start, sound), gathered in one table so that a test
// program can watch what the library decides without a help viewer or a
// second program popping up.
//
// fkSetLinkHooks is exported but not part of the public header: it exists
// for the library's own tests. Passing null restores the system calls.
#pragma once

#include <windows.h>

struct FkLinkHooks {
    BOOL(WINAPI* winHelp)(HWND, LPCSTR, UINT, ULONG_PTR);
    UINT(WINAPI* winExec)(LPCSTR, UINT);
    BOOL(WINAPI* sndPlaySound)(LPCSTR, UINT);
    HINSTANCE(WINAPI* findExecutable)(LPCSTR, LPCSTR, LPSTR);
    // Handed out by the library, ignored on input: its shared field-text
    // buffer (the DDE initiate handler looks for "@CLIENT" in it) and its
    // style-dialog help (owner, class number).
    char* fieldText;
    int (*libraryHelp)(HWND, int);
};

#ifdef __cplusplus
extern "C" {
#endif
// Installs hooks (null members keep the system call) and returns the table
// in force afterwards; null restores the system calls.
const FkLinkHooks* WINAPI fkSetLinkHooks(const FkLinkHooks* hooks);
#ifdef __cplusplus
}
#endif
