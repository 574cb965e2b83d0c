#include "display/paint_util.h"

#include "frame/gdi.h"

namespace fk {

FontMetrics ReadFontMetrics(HWND h, HFONT font) {
    WindowDC dc(h);
    TEXTMETRICA tm{};
    if (dc.get() != nullptr) {
        SelectObj selected(dc, font);
        GetTextMetricsA(dc, &tm);
    }
    return {tm.tmAveCharWidth, tm.tmHeight};
}

HBRUSH ParentColours(HWND h, HDC dc, UINT ctlColorMsg) {
    HWND parent = GetParent(h);
    if (parent == nullptr) return nullptr;
    return reinterpret_cast<HBRUSH>(
        SendMessageA(parent, ctlColorMsg, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(h)));
}

LRESULT EraseWithParentBrush(HWND h, WPARAM wp, LPARAM lp, UINT ctlColorMsg) {
    HDC dc = reinterpret_cast<HDC>(wp);
    HBRUSH brush = ParentColours(h, dc, ctlColorMsg);
    if (brush == nullptr) return DefWindowProcA(h, WM_ERASEBKGND, wp, lp);
    RECT r;
    GetClientRect(h, &r);
    FillRect(dc, &r, brush);
    return 1;
}

int ReadWindowText(HWND h, char (&text)[160]) {
    text[0] = '\0';
    int n = GetWindowTextA(h, text, sizeof text);
    if (n < 0) n = 0;
    text[n] = '\0';
    return n;
}

LRESULT SetTextAndRepaint(HWND h, WPARAM wp, LPARAM lp) {
    LRESULT r = DefWindowProcA(h, WM_SETTEXT, wp, lp);
    InvalidateRect(h, nullptr, TRUE);
    UpdateWindow(h);
    return r;
}

}  // namespace fk
