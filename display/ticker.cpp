// gxTicker32: the scrolling ticker.

#include "frame/method_window.h"
#include "include/fldkit.h"

namespace {
const fk::MethodSlot kMethod{16};
}

LRESULT WINAPI gxTickerWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    return fk::MethodWindowProc(h, msg, wp, lp, kMethod, nullptr);
}
