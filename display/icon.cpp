// gxIcon32: the icon control.

#include "frame/method_window.h"
#include "include/fldkit.h"

namespace {
const fk::MethodSlot kMethod{10};
}

LRESULT WINAPI gxIconWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    return fk::MethodWindowProc(h, msg, wp, lp, kMethod, nullptr);
}
