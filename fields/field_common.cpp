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

bool HasProp(HWND h, const char* name) { return GetPropA(h, name) != nullptr; }

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

LRESULT FieldGetSel(HWND h, WPARAM wp, LPARAM lp) {
    const FieldRange sel = FieldSelection(h);
    if (auto* start = reinterpret_cast<DWORD*>(wp)) *start = sel.start;
    if (auto* end = reinterpret_cast<DWORD*>(lp)) *end = sel.end;
    return MAKELONG(sel.start, sel.end);
}

LRESULT FieldSetFont(HWND h, WPARAM wp, LPARAM lp) {
    FieldWords::Font::set(h, reinterpret_cast<HFONT>(wp));
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

// ---------------------------------------------------------------------
// Masked text


namespace fk {

FieldScreen FieldToScreen(const char* app, const char* mask, bool noFill, int appPos) {
    FieldScreen sc{};
    char text[kFieldText];
    lstrcpynA(text, app ? app : "", sizeof text);
    if (mask == nullptr) {
        lstrcpynA(sc.s, text, sizeof sc.s);
        sc.caret = appPos;
        return sc;
    }
    char cut[kMethodMax + 1];
    lstrcpynA(cut, mask, sizeof cut);
    sc.caret = twAppToScrMask(sc.s, text, cut, appPos, noFill ? 1 : 0);
    return sc;
}

int FieldScreenLength(const char* app, const char* mask, bool noFill) {
    return static_cast<int>(std::strlen(FieldToScreen(app, mask, noFill, 0).s));
}

int DrawMaskedField(HWND h, const char* text, const char* mask, bool noFill, UINT flags, int blanks) {
    const int caret = FieldWords::Caret::get(h);
    const int length = static_cast<int>(std::strlen(text ? text : ""));
    FieldScreen sc = FieldToScreen(text, mask, noFill, std::clamp(caret, 0, length));
    char shown[sizeof(FieldScreen::s) + 8];
    lstrcpynA(shown, sc.s, sizeof shown);
    lstrcatA(shown, &"     "[5 - std::clamp(blanks, 0, 5)]);
    if (mask == nullptr) return twDrawField(h, shown, flags, 0);
    FieldWords::Caret::set(h, std::max(sc.caret, 0));
    const int r = twDrawField(h, shown, flags, 0);
    FieldWords::Caret::set(h, caret);
    return r;
}

void MoveFieldCaret(HWND h, const char* text, const char* mask, bool noFill, int to) {
    const int from = FieldWords::Caret::get(h);
    FieldWords::Caret::set(h, to);
    if (!KeyPressed(VK_SHIFT)) {
        ClearFieldSelection(h);
        return;
    }
    auto shown = [&](int appPos) { return FieldToScreen(text, mask, noFill, appPos).caret; };
    const FieldRange sel = FieldSelection(h);
    const int anchor = sel.empty() ? shown(from) : FieldWords::anchor(h);
    FieldWords::setSelection(h, anchor, shown(to));
}

}  // namespace fk
