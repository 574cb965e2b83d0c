// gxCurrency32: the currency entry field.

#include "frame/method_window.h"
#include "include/fldkit.h"

namespace {
// Field words up to the limit and modified words, the 16-bit country index
// at 24, the method-string pointer last.
const fk::MethodSlot kMethod{26};
}

LRESULT WINAPI gxCurrencyWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    return fk::MethodWindowProc(h, msg, wp, lp, kMethod, nullptr);
}
