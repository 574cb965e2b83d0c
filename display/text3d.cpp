// gxText3D32: static text with embossed or engraved lettering; it can also
// show a value that a DDE link brings in.

#include <dde.h>

#include "access/classes.h"
#include "display/border.h"
#include "display/paint_util.h"
#include "display/static_words.h"
#include "frame/gdi.h"
#include "include/fldkit.h"
#include "links/control_links.h"

namespace {

namespace words = fk::static_words;
using fk::SelectObj;

constexpr UINT kSetSetting = 0x00C5;
constexpr COLORREF kWhite = RGB(255, 255, 255);

void RecordMetrics(HWND h, HFONT font) {
    const fk::FontMetrics m = fk::ReadFontMetrics(h, font);
    words::CharWidth::set(h, m.avgWidth);
    words::CharHeight::set(h, m.height);
}

int TextX(LONG style, int width, int textWidth) {
    if (style & TEXT3D_CENTER) return (width - textWidth) / 2;
    if (style & TEXT3D_RIGHT) return width - textWidth - 2;
    return 2;
}

LRESULT OnCreate(HWND h) {
    RecordMetrics(h, words::Font::get(h));
    return 0;
}

LRESULT OnPaint(HWND h) {
    char text[160];
    const int len = fk::ReadWindowText(h, text);
    fk::PaintDC dc(h);
    if (dc.get() == nullptr) return 0;
    SelectObj font(dc, words::Font::get(h));
    SIZE size{};
    GetTextExtentPoint32A(dc, text, len, &size);
    RECT rc;
    GetClientRect(h, &rc);
    const LONG style = GetWindowLongA(h, GWL_STYLE);
    const int y = rc.bottom > size.cy ? (rc.bottom - size.cy) / 2 : 0;
    const int x = TextX(style, rc.right, size.cx);
    SetBkMode(dc, TRANSPARENT);
    if (!(style & TEXT3D_FLAT)) {
        const bool raised = (style & (TEXT3D_LIGHTRAISED | TEXT3D_HEAVYRAISED)) != 0;
        const int d = raised ? 0 : 2;
        const int e = raised ? 2 : 0;
        SetTextColor(dc, kWhite);
        TextOutA(dc, x + d, y + d, text, len);
        if (style & (TEXT3D_HEAVYRAISED | TEXT3D_HEAVYINSET)) {
            SetTextColor(dc, GetSysColor(COLOR_BTNSHADOW));
            TextOutA(dc, x + e, y + e, text, len);
        }
    }
    fk::ParentColours(h, dc, WM_CTLCOLORSTATIC);
    if (IsWindowEnabled(h)) {
        TextOutA(dc, x + 1, y + 1, text, len);
    } else {
        GrayStringA(dc, nullptr, nullptr, reinterpret_cast<LPARAM>(text), len, x + 1, y + 1, 0, 0);
    }
    return 0;
}

LRESULT OnSetFont(HWND h, WPARAM wp, LPARAM lp) {
    words::Font::set(h, reinterpret_cast<HFONT>(wp));
    RecordMetrics(h, reinterpret_cast<HFONT>(wp));
    if (lp) InvalidateRect(h, nullptr, TRUE);
    return 0;
}

LRESULT OnSetMethod(HWND h, LPARAM lp) {
    fk::OpenControlLinks(h, fk::MethodReplace(h, words::kMethod, reinterpret_cast<const char*>(lp)));
    return 0;
}

LRESULT OnDestroy(HWND h) {
    fk::ForgetAccessible(h);
    fk::CloseControlLinks(h);
    fk::MethodFree(h, words::kMethod);
    return 0;
}

}  // namespace

LRESULT WINAPI gxText3DWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case WM_CREATE:
        return OnCreate(h);
    case WM_DESTROY:
        return OnDestroy(h);
    case WM_GETOBJECT:
        return fk::AnswerGetObject(h, wp, lp, fk::kText3DAccess);
    case WM_ENABLE:
        InvalidateRect(h, nullptr, TRUE);
        return 0;
    case WM_SETTEXT:
        return fk::SetTextAndRepaint(h, wp, lp);
    case WM_PAINT:
        return OnPaint(h);
    case WM_ERASEBKGND:
        return fk::EraseWithParentBrush(h, wp, lp, WM_CTLCOLORSTATIC);
    case WM_NCPAINT:
        return fk::PaintBorder(h, wp, lp, fk::kText3DBorder);
    case WM_SETFONT:
        return OnSetFont(h, wp, lp);
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(words::Font::get(h));
    case kSetSetting:
        words::Setting::set(h, static_cast<WORD>(wp));
        return static_cast<WORD>(wp);
    case GXM_SETMETHOD:
        return OnSetMethod(h, lp);
    case GXM_GETMETHOD:
        fk::MethodCopyOut(h, words::kMethod, reinterpret_cast<char*>(lp));
        return 0;
    case GXM_GETLIMIT:
        return words::Setting::get(h);
    case GXM_GETTYPE:
        return 0;
    case WM_DDE_INITIATE:
    case WM_DDE_ADVISE:
    case WM_DDE_UNADVISE:
    case WM_DDE_ACK:
    case WM_DDE_DATA:
    case WM_DDE_REQUEST:
        return fk::RouteControlDde(h, msg, wp, lp, words::kMethod.get(h));
    default:
        return DefWindowProcA(h, msg, wp, lp);
    }
}
