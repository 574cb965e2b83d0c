// gxFrame3D32: the group frame with a caption. Purely decorative: it lets
// mouse input through to whatever lies beneath it.

#include <initializer_list>

#include "access/classes.h"
#include "display/paint_util.h"
#include "display/static_words.h"
#include "frame/gdi.h"
#include "include/fldkit.h"

namespace {

namespace words = fk::static_words;
using fk::Pen;
using fk::SelectObj;

constexpr LRESULT kDlgCode = 0x8100;
constexpr UINT kSetSetting = 0x00C5;
constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kDarkGrey = RGB(128, 128, 128);

void Line(HDC dc, COLORREF colour, std::initializer_list<POINT> points) {
    Pen pen(CreatePen(PS_SOLID, 1, colour));
    SelectObj selected(dc, pen);
    const POINT* p = points.begin();
    MoveToEx(dc, p->x, p->y, nullptr);
    for (++p; p != points.end(); ++p) LineTo(dc, p->x, p->y);
}

void WhiteOutline(HDC dc, int l, int t, int r, int b) {
    Pen pen(CreatePen(PS_SOLID, 1, kWhite));
    SelectObj selected(dc, pen);
    Rectangle(dc, l, t, r, b);
}

// The etched rectangle; the caption sits on its top line.
void PaintFrameLines(HDC dc, const RECT& rc, LONG style) {
    const LONG L = rc.left, T = rc.top, R = rc.right, B = rc.bottom;
    const COLORREF frame = (style & FRAME3D_BLACK) ? RGB(0, 0, 0) : kDarkGrey;
    if (style & FRAME3D_INSET) {
        WhiteOutline(dc, L + 1, T + 5, R, B);
        Line(dc, frame, {{L, B}, {L, T + 4}, {R, T + 4}});
        Line(dc, frame, {{L + 2, B - 2}, {R - 2, B - 2}, {R - 2, T + 5}});
    } else {
        WhiteOutline(dc, L, T + 4, R - 1, B - 1);
        Line(dc, frame, {{L, B - 1}, {R - 1, B - 1}, {R - 1, T + 3}});
        Line(dc, frame, {{L + 1, B - 3}, {L + 1, T + 5}, {R - 2, T + 5}});
    }
}

int CaptionX(LONG style, int right, int width) {
    if (style & FRAME3D_LEFT) return 8;
    if (style & FRAME3D_RIGHT) return right - width - 8;
    return (right - width) / 2;
}

// The caption's gap: the parent's static brush (or a new shadow brush) is
// selected, but the fill uses the brush it replaced, the hollow brush chosen
// for the outlines, so nothing is painted here. The frame line behind the
// caption is hidden only by the opaque background of the lettering. Callers
// have long relied on this look; keep it.
void CaptionGap(HWND h, HDC dc, int x, SIZE size) {
    HBRUSH brush = fk::ParentColours(h, dc, WM_CTLCOLORSTATIC);
    fk::Brush created;
    if (brush == nullptr) {
        created.reset(CreateSolidBrush(GetSysColor(COLOR_BTNSHADOW)));
        brush = created;
    }
    SelectObj selected(dc, brush);
    RECT gap{x - 3, 0, x + size.cx + 3, size.cy};
    FillRect(dc, &gap, static_cast<HBRUSH>(selected.previous()));
}

void Lettering(HWND h, HDC dc, LONG style, int x, const char* text, int len) {
    if (style & TEXT3D_FLAT) {
        fk::ParentColours(h, dc, WM_CTLCOLORSTATIC);
        TextOutA(dc, x, 0, text, len);
        return;
    }
    const bool raised = (style & (TEXT3D_LIGHTRAISED | TEXT3D_HEAVYRAISED)) != 0;
    const bool heavy = (style & (TEXT3D_HEAVYRAISED | TEXT3D_HEAVYINSET)) != 0;
    const int d = raised ? 0 : 2;
    const int e = raised ? 2 : 0;
    SetTextColor(dc, kWhite);
    TextOutA(dc, x + d, d, text, len);  // opaque, in the current background colour
    const int oldMode = SetBkMode(dc, TRANSPARENT);
    if (heavy) {
        SetTextColor(dc, GetSysColor(COLOR_BTNSHADOW));
        TextOutA(dc, x + e, e, text, len);
    }
    fk::ParentColours(h, dc, WM_CTLCOLORSTATIC);
    TextOutA(dc, x + 1, 1, text, len);
    SetBkMode(dc, oldMode);
}

LRESULT OnCreate(HWND h) {
    SetWindowLongA(h, GWL_STYLE, GetWindowLongA(h, GWL_STYLE) | WS_CLIPSIBLINGS);
    return 0;
}

LRESULT OnPaint(HWND h) {
    char text[160];
    const int len = fk::ReadWindowText(h, text);
    fk::PaintDC dc(h);
    if (dc.get() == nullptr) return 0;
    SelectObj font(dc, words::Font::get(h));
    SelectObj hollow(dc, GetStockObject(NULL_BRUSH));
    RECT rc;
    GetClientRect(h, &rc);
    const LONG style = GetWindowLongA(h, GWL_STYLE);
    PaintFrameLines(dc, rc, style);
    if (len == 0) return 0;
    SIZE size{};
    GetTextExtentPoint32A(dc, text, len, &size);
    const int x = CaptionX(style, rc.right, size.cx);
    CaptionGap(h, dc, x, size);
    Lettering(h, dc, style, x, text, len);
    return 0;
}

LRESULT OnSetFont(HWND h, WPARAM wp, LPARAM lp) {
    auto font = reinterpret_cast<HFONT>(wp);
    words::Font::set(h, font);
    const fk::FontMetrics m = fk::ReadFontMetrics(h, font);
    words::CharWidth::set(h, m.avgWidth);
    words::CharHeight::set(h, m.height);
    if (lp) InvalidateRect(h, nullptr, TRUE);
    return 0;
}

}  // namespace

LRESULT WINAPI gxFrame3DWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case WM_CREATE:
        return OnCreate(h);
    case WM_DESTROY:
        fk::ForgetAccessible(h);
        fk::MethodFree(h, words::kMethod);
        return 0;
    case WM_GETOBJECT:
        return fk::AnswerGetObject(h, wp, lp, fk::kFrame3DAccess);
    case WM_ENABLE:
        InvalidateRect(h, nullptr, TRUE);
        return 0;
    case WM_SETTEXT:
        return fk::SetTextAndRepaint(h, wp, lp);
    case WM_PAINT:
        return OnPaint(h);
    case WM_ERASEBKGND:
        return 0;
    case WM_SETFONT:
        return OnSetFont(h, wp, lp);
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(words::Font::get(h));
    case WM_NCHITTEST:
        return HTTRANSPARENT;
    case WM_GETDLGCODE:
        return kDlgCode;
    case kSetSetting:
        words::Setting::set(h, static_cast<WORD>(wp));
        return static_cast<WORD>(wp);
    case GXM_SETMETHOD:
        fk::MethodReplace(h, words::kMethod, reinterpret_cast<const char*>(lp));
        return 0;
    case GXM_GETMETHOD:
        fk::MethodCopyOut(h, words::kMethod, reinterpret_cast<char*>(lp));
        return 0;
    case GXM_GETLIMIT:
        return words::Setting::get(h);
    case GXM_GETTYPE:
        return 1;
    default:
        return DefWindowProcA(h, msg, wp, lp);
    }
}
