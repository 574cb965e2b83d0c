// gxTable32: the table list control, a "listbox" superclass.

#include "frame/library.h"
#include "frame/method_window.h"
#include "include/fldkit.h"

// The method-string word sits behind the base class's extra bytes, at the
// position both superclasses share (the combo box's count).
LRESULT WINAPI gxTableWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    return fk::MethodWindowProc(h, msg, wp, lp, fk::MethodSlot{fk::nBaseWndExtra}, fk::lpfnListBoxProc);
}
