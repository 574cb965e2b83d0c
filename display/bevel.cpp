#include "display/bevel.h"

#include <initializer_list>

#include "display/text/border_rule.h"
#include "frame/gdi.h"

namespace fk {

namespace {

constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kLightGrey = RGB(192, 192, 192);

struct Palette {
    COLORREF shadow;
    COLORREF highlight;
    COLORREF grey;
};

Palette PaletteFor(bool colour) {
    if (!colour) return {kBlack, kBlack, kBlack};
    return {GetSysColor(COLOR_BTNSHADOW), kWhite, kLightGrey};
}

// One polyline with a pen made for it.
void Stroke(HDC dc, COLORREF colour, int width, std::initializer_list<POINT> points) {
    Pen pen(CreatePen(PS_SOLID, width, colour));
    SelectObj selected(dc, pen);
    const POINT* p = points.begin();
    MoveToEx(dc, p->x, p->y, nullptr);
    for (++p; p != points.end(); ++p) LineTo(dc, p->x, p->y);
}

// Left and top in one colour, then the right edge at R-1 and the bottom in
// the other.
void Band(HDC dc, const RECT& r, COLORREF leftTop, COLORREF rightBottom) {
    Stroke(dc, leftTop, 1, {{r.left, r.bottom}, {r.left, r.top}, {r.right, r.top}});
    Stroke(dc, rightBottom, 1, {{r.right - 1, r.top}, {r.right - 1, r.bottom}, {r.left, r.bottom}});
}

void TwoBands(HDC dc, RECT r, COLORREF outerLT, COLORREF outerRB, COLORREF innerLT, COLORREF innerRB) {
    InflateRect(&r, 1, 1);
    Band(dc, r, outerLT, outerRB);
    InflateRect(&r, -1, -1);
    Band(dc, r, innerLT, innerRB);
}

void LightIndent(HDC dc, RECT r, const Palette& p, bool newLook) {
    if (newLook) {
        InflateRect(&r, 1, 1);
        DrawEdge(dc, &r, EDGE_SUNKEN, BF_RECT);
        return;
    }
    const LONG L = r.left, T = r.top, R = r.right, B = r.bottom;
    Stroke(dc, p.shadow, 1, {{L, B}, {L, T}, {R, T}});
    Stroke(dc, kBlack, 1, {{L + 1, B - 1}, {L + 1, T + 1}, {R - 1, T + 1}});
    Stroke(dc, p.highlight, 1, {{R, T}, {R, B}, {L, B}});
    Stroke(dc, p.grey, 1, {{R - 1, T + 1}, {R - 1, B - 1}, {L + 1, B - 1}});
}

// A black outline on the window's own outermost pixels and a four-pixel
// shadow to the right and below, always in the shadow colour.
void Shadow(HDC dc, const RECT& window) {
    const LONG L = window.left, T = window.top, R = window.right - 1, B = window.bottom - 1;
    Stroke(dc, kBlack, 1, {{L, B}, {L, T}, {R, T}, {R, B}, {L, B}});
    Stroke(dc, GetSysColor(COLOR_BTNSHADOW), 4, {{R + 3, T + 4}, {R + 3, B + 3}, {L + 4, B + 3}});
}

}  // namespace

void DrawBevel(HDC dc, const RECT& window, WORD level, bool colour, bool newLook) {
    const Palette p = PaletteFor(colour);
    // Levels 1, 4, 8 and 16 start one pixel up, left and right of the
    // window; the bottom stays on the window's bottom edge.
    RECT r{window.left - 1, window.top - 1, window.right + 1, window.bottom};
    switch (level) {
    case kLevelHeavyIndent:
        TwoBands(dc, r, p.shadow, p.highlight, p.shadow, p.highlight);
        break;
    case kLevelShadow:
        Shadow(dc, window);
        break;
    case kLevelOutdent:
        TwoBands(dc, r, p.highlight, p.shadow, p.highlight, p.shadow);
        break;
    case kLevelIndentFrame:
        TwoBands(dc, r, p.shadow, p.highlight, p.highlight, p.shadow);
        break;
    case kLevelLightIndent:
        LightIndent(dc, r, p, newLook);
        break;
    default:
        break;
    }
}

}  // namespace fk
