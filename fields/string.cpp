// gxString32: the text entry field.

#include "frame/method_window.h"
#include "include/fldkit.h"

namespace {
const fk::MethodSlot kMethod{26};
}

LRESULT WINAPI gxStringWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    return fk::MethodWindowProc(h, msg, wp, lp, kMethod, nullptr);
}
