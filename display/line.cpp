// gxLine32: the etched separator line.

#include "display/line.h"

#include "frame/method_window.h"

namespace fk {

namespace {
const MethodSlot kMethod{0};
}

LRESULT WINAPI gxLineWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    return MethodWindowProc(h, msg, wp, lp, kMethod, nullptr);
}

}  // namespace fk
