// The method string a control owns: a zero-initialised local-heap block of
// length + 1 bytes whose pointer lives in the control's extra bytes.
#pragma once

#include <windows.h>

#include <string>

namespace fk {

struct MethodSlot {
    int offset;  // position of the pointer-wide word in the window's extra bytes

    char* get(HWND h) const { return reinterpret_cast<char*>(GetWindowLongPtrA(h, offset)); }
    // False when the window has no such word (the pointer was not stored).
    bool set(HWND h, char* block) const;
};

// Frees the old block and keeps a copy of at most kMethodMax characters of
// text (none when text is null). Returns the new block, or null.
char* MethodReplace(HWND h, MethodSlot slot, const char* text);
// Frees the block and clears the word (WM_DESTROY).
void MethodFree(HWND h, MethodSlot slot);
// GXM_GETMETHOD: at most kMethodCopy characters, unterminated when that many.
void MethodCopyOut(HWND h, MethodSlot slot, char* buffer);

// The argument of keyword in the control's method string ("" when the
// keyword is absent or the control has no method string), read through the
// shared method work buffer.
std::string MethodArgument(HWND h, MethodSlot slot, const char* keyword);

// Window procedure of a control that, for now, only keeps its method
// string: it answers GXM_SETMETHOD and GXM_GETMETHOD, frees the block in
// WM_DESTROY and passes everything else to base (DefWindowProcA when null).
LRESULT MethodWindowProc(HWND h, UINT msg, WPARAM wp, LPARAM lp, MethodSlot slot, WNDPROC base);

}  // namespace fk
