// gxColor32: the colour picker with three channel scroll bars.

#include "frame/library.h"
#include "frame/method_window.h"
#include "frame/registry.h"
#include "include/fldkit.h"

namespace {
const fk::MethodSlot kMethod{36};
}

namespace fk {
// The channel brushes live until WEP.
void CreateColorBrushes() {
    hbrColorRed = CreateSolidBrush(RGB(255, 0, 0));
    hbrColorGreen = CreateSolidBrush(RGB(0, 255, 0));
    hbrColorBlue = CreateSolidBrush(RGB(0, 0, 255));
}
}  // namespace fk

LRESULT WINAPI gxColorWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    return fk::MethodWindowProc(h, msg, wp, lp, kMethod, nullptr);
}
