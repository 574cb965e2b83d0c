// gxDate32: the date entry field.

#include "frame/method_window.h"
#include "include/fldkit.h"

namespace {
const fk::MethodSlot kMethod{24};
}

LRESULT WINAPI gxDateWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    return fk::MethodWindowProc(h, msg, wp, lp, kMethod, nullptr);
}
