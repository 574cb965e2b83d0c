#include "fields/field_common.h"

#include <algorithm>
#include <cstring>

#include "fields/edit_core.h"
#include "include/fldkit.h"
#include "links/control_links.h"
#include "strings/lstr.h"

namespace fk {

int FieldText::length() const { return static_cast<int>(std::strlen(s)); }

FieldText ReadFieldText(HWND h) {
    FieldText t{};
    DefWindowProcA(h, WM_GETTEXT, kFieldText, reinterpret_cast<LPARAM>(t.s));
    return t;
}

void WriteFieldText(HWND h, const char* text) {
    DefWindowProcA(h, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
}

MethodText CopyMethod(const char* method) {
    MethodText m{};
    if (method) lstrncpy(m.s, method, kMethodCopy);
    return m;
}

bool MethodHas(const char* method, const char* keyword) {
    return method != nullptr && lstristr(method, keyword) != nullptr;
}

bool HasProp(HWND h, const char* name) { return GetPropA(h, name) != nullptr; }

void NotifyParent(HWND h, WORD code) {
    if (HWND parent = GetParent(h))
        SendMessageA(parent, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(h), code), reinterpret_cast<LPARAM>(h));
}

void PushToClients(HWND h, const char* text) {
    if (!HasProp(h, "SERVER")) return;
    char copy[kFieldText];
    lstrcpynA(copy, text, sizeof copy);
    twProcessDDEData(h, copy);
}

FieldRange FieldSelection(HWND h) {
    int a = FieldWords::anchor(h);
    int b = FieldWords::movingEnd(h);
    if (a > b) std::swap(a, b);
    return {a, b};
}

int ClientWidth(HWND h) {
    RECT r;
    GetClientRect(h, &r);
    return r.right - r.left;
}

FieldMeasure::FieldMeasure(HWND h) : dc_(h), font_(dc_, FieldWords::font(h)) {}
int FieldMeasure::text(const char* s, int n) const { return TextExtent(dc_, s, n); }
int FieldMeasure::text(const char* s) const { return text(s, static_cast<int>(std::strlen(s))); }

void MeasureFieldFont(HWND h) {
    WindowDC dc(h);
    SelectObj font(dc, FieldWords::font(h));
    TEXTMETRICA tm{};
    GetTextMetricsA(dc, &tm);
    FieldWords::AveWidth::set(h, tm.tmAveCharWidth);
    FieldWords::CharHeight::set(h, tm.tmHeight);
}

void EndMouseGesture(HWND h) {
    g_edit.selecting = false;
    if (GetCapture() == h) ReleaseCapture();
}

bool MouseGestureActive(HWND h) { return g_edit.selecting && GetCapture() == h; }

LRESULT FieldEraseBkgnd(HWND h, WPARAM wp, LPARAM lp) {
    HWND parent = GetParent(h);
    auto brush = parent ? reinterpret_cast<HBRUSH>(SendMessageA(parent, WM_CTLCOLOREDIT, wp, reinterpret_cast<LPARAM>(h)))
                        : nullptr;
    if (brush == nullptr) return DefWindowProcA(h, WM_ERASEBKGND, wp, lp);
    RECT r;
    GetClientRect(h, &r);
    FillRect(reinterpret_cast<HDC>(wp), &r, brush);
    return 1;
}

LRESULT FieldShowWindow(HWND h, WPARAM wp, LPARAM lp, LONG borderBits) {
    if (wp == 0 && (GetWindowLongA(h, GWL_STYLE) & borderBits)) RefreshFieldBorder(h);
    return DefWindowProcA(h, WM_SHOWWINDOW, wp, lp);
}

LRESULT FieldGetSel(HWND h, WPARAM wp, LPARAM lp) {
    const FieldRange sel = FieldSelection(h);
    if (auto* start = reinterpret_cast<DWORD*>(wp)) *start = sel.start;
    if (auto* end = reinterpret_cast<DWORD*>(lp)) *end = sel.end;
    return MAKELONG(sel.start, sel.end);
}

LRESULT FieldSetFont(HWND h, WPARAM wp, LPARAM lp) {
    FieldWords::Font::set(h, static_cast<LONG>(wp));
    MeasureFieldFont(h);
    if (lp) {
        InvalidateRect(h, nullptr, TRUE);
        UpdateWindow(h);
    }
    return 0;
}

void MoveFieldFocus(HWND h) {
    HWND parent = GetParent(h);
    if (parent == nullptr) return;
    const bool back = KeyPressed(VK_SHIFT);
    char cls[16] = "";
    GetClassNameA(parent, cls, sizeof cls);
    if (lstrcmpA(cls, "#32770") == 0) {
        SendMessageA(parent, WM_NEXTDLGCTL, back ? 1 : 0, 0);
    } else if (HWND next = GetNextDlgTabItem(parent, h, back)) {
        SetFocus(next);
    }
}

void FieldReleaseLinks(HWND h) {
    CloseControlLinks(h);
    RemovePropA(h, "@DRAGSRC");
    RemovePropA(h, "@WANTDROP");
}

}  // namespace fk
