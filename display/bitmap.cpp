// gxBitmap32: the bitmap control.

#include "frame/method_window.h"
#include "include/fldkit.h"

namespace {
const fk::MethodSlot kMethod{12};
}

LRESULT WINAPI gxBitmapWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    return fk::MethodWindowProc(h, msg, wp, lp, kMethod, nullptr);
}
