// gxLine32: the etched separator line. Purely decorative: clicks go through
// it to what lies beneath.

#include "display/line.h"

#include "access/classes.h"
#include "frame/extra_bytes.h"
#include "frame/gdi.h"
#include "frame/window_words.h"
#include "frame/method_window.h"
#include "include/fldkit.h"

namespace fk {

namespace {

// Window words: the method string, then spare bytes.
using Method = PtrWord<char, 0, 8>;
using Spare = SpareBytes<4, 4>;
static_assert(EndsAt<Spare, Method>(kLineExtra.bits32, kLineExtra.bits64));
const MethodSlot kMethod{Method::kOffset};

void Stroke(HDC dc, COLORREF colour, int x1, int y1, int x2, int y2) {
    Pen pen(CreatePen(PS_SOLID, 1, colour));
    SelectObj selected(dc, pen);
    MoveToEx(dc, x1, y1, nullptr);
    LineTo(dc, x2, y2);
}

// Horizontal with GXLINE_HORIZONTAL, vertical otherwise (also when neither
// bit is set). The shadow is always the system colour.
LRESULT OnPaint(HWND h) {
    PaintDC dc(h);
    if (dc.get() == nullptr) return 0;
    RECT rc;
    GetClientRect(h, &rc);
    const COLORREF shadow = GetSysColor(COLOR_BTNSHADOW);
    const COLORREF white = RGB(255, 255, 255);
    if (GetWindowLongA(h, GWL_STYLE) & GXLINE_HORIZONTAL) {
        Stroke(dc, shadow, 0, 2, rc.right, 2);
        Stroke(dc, white, 0, 3, rc.right, 3);
    } else {
        Stroke(dc, shadow, 2, 0, 2, rc.bottom);
        Stroke(dc, white, 3, 0, 3, rc.bottom);
    }
    return 0;
}

}  // namespace

LRESULT WINAPI gxLineWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case WM_CREATE:
    case WM_ERASEBKGND:
        return 0;
    case WM_DESTROY:
        ForgetAccessible(h);
        MethodFree(h, kMethod);
        return 0;
    case WM_GETOBJECT:
        return AnswerGetObject(h, wp, lp, kLineAccess);
    case WM_PAINT:
        return OnPaint(h);
    case WM_NCHITTEST:
        return HTTRANSPARENT;
    case WM_GETDLGCODE:
        return DLGC_STATIC;
    case GXM_SETMETHOD:
        MethodReplace(h, kMethod, reinterpret_cast<const char*>(lp));
        return 0;
    case GXM_GETMETHOD:
        MethodCopyOut(h, kMethod, reinterpret_cast<char*>(lp));
        return 0;
    default:
        return DefWindowProcA(h, msg, wp, lp);
    }
}

}  // namespace fk
