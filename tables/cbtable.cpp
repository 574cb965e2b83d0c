// gxCBTable32: the combo table control, a "combobox" superclass.

#include "frame/library.h"
#include "frame/method_window.h"
#include "include/fldkit.h"

LRESULT WINAPI gxCBTableWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    return fk::MethodWindowProc(h, msg, wp, lp, fk::MethodSlot{fk::nBaseWndExtra}, fk::lpfnComboBoxProc);
}
