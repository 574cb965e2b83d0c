#include "frame/control.h"

namespace fk {

HBRUSH ParentColours(HWND h, HDC dc, UINT ctlColorMsg) {
    HWND parent = GetParent(h);
    if (parent == nullptr) return nullptr;
    return reinterpret_cast<HBRUSH>(
        SendMessageA(parent, ctlColorMsg, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(h)));
}

LRESULT EraseWithParentBrush(HWND h, WPARAM wp, LPARAM lp, UINT ctlColorMsg, LRESULT erased) {
    HDC dc = reinterpret_cast<HDC>(wp);
    HBRUSH brush = ParentColours(h, dc, ctlColorMsg);
    if (brush == nullptr) return DefWindowProcA(h, WM_ERASEBKGND, wp, lp);
    RECT r;
    GetClientRect(h, &r);
    FillRect(dc, &r, brush);
    return erased;
}

void NotifyParent(HWND h, WORD code) {
    if (HWND parent = GetParent(h))
        SendMessageA(parent, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(h), code), reinterpret_cast<LPARAM>(h));
}

void RefreshBorder(HWND control) {
    HWND parent = GetParent(control);
    if (parent == nullptr) return;
    RECT r;
    GetClientRect(control, &r);
    MapWindowPoints(control, parent, reinterpret_cast<POINT*>(&r), 2);
    InflateRect(&r, 6, 6);
    InvalidateRect(parent, &r, TRUE);
}

LRESULT ShowWindowWipingBorder(HWND h, WPARAM wp, LPARAM lp, LONG borderBits) {
    if (wp == 0 && (GetWindowLongA(h, GWL_STYLE) & borderBits)) RefreshBorder(h);
    return DefWindowProcA(h, WM_SHOWWINDOW, wp, lp);
}

}  // namespace fk
