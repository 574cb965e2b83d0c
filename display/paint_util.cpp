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
