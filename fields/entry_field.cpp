#include "fields/entry_field.h"

#include <algorithm>

#include "access/classes.h"
#include "display/border.h"
#include "fields/edit_core.h"
#include "frame/control.h"
#include "include/fldkit.h"
#include "links/control_links.h"

namespace fk {

namespace {

WORD ReadShort(HWND h, int offset) { return GetWindowWord(h, offset); }
void WriteShort(HWND h, int offset, WORD v) { SetWindowWord(h, offset, v); }

LRESULT OnCreate(HWND h, const FieldClass& cls) {
    MeasureFieldFont(h);
    FieldWords::Caret::set(h, 0);
    if (cls.created) cls.created(h);
    return 0;
}

LRESULT OnDestroy(HWND h, const FieldClass& cls) {
    ForgetAccessible(h);
    MethodFree(h, cls.method);
    if (cls.destroyed) cls.destroyed(h);
    FieldReleaseLinks(h);
    return 0;
}

// WM_NCPAINT: nothing while hidden; a field with a vertical scroll bar lets
// the system paint first; then the border its 3D style bit picks.
LRESULT OnNcPaint(HWND h, WPARAM wp, LPARAM lp, const FieldClass& cls) {
    if (!IsWindowVisible(h)) return 0;
    if (GetWindowLongA(h, GWL_STYLE) & WS_VSCROLL) DefWindowProcA(h, WM_NCPAINT, wp, lp);
    return PaintBorder(h, wp, lp, cls.border);
}

LRESULT OnLimitText(HWND h, WPARAM wp, const FieldClass& cls) {
    WriteShort(h, cls.limit, static_cast<WORD>(wp));
    return cls.limitTextAnswersLimit ? ReadShort(h, cls.limit) : 0;
}

LRESULT Call(FieldHandler handler, HWND h, UINT msg, WPARAM wp, LPARAM lp, const FieldClass& cls) {
    return handler ? handler(h, wp, lp, cls) : DefWindowProcA(h, msg, wp, lp);
}

LRESULT Call(ValueHandler handler, HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    return handler ? handler(h, wp, lp) : DefWindowProcA(h, msg, wp, lp);
}

LRESULT Dispatch(HWND h, UINT msg, WPARAM wp, LPARAM lp, const FieldClass& cls);

}  // namespace

void ReadLimitAndDropTarget(HWND h, MethodFull& method, const FieldClass& cls) {
    WriteShort(h, cls.limit, static_cast<WORD>(method.intParam("@LIMIT", 0)));
    if (method.has("@DROPTARG")) SetPropA(h, "@WANTDROP", reinterpret_cast<HANDLE>(5));
}

// A screen reader hears of every change of the text the field shows.
LRESULT EntryFieldProc(HWND h, UINT msg, WPARAM wp, LPARAM lp, const FieldClass& cls) {
    if (msg == WM_GETOBJECT) return AnswerGetObject(h, wp, lp, kEntryFieldAccess, &cls);
    const ValueWatch watch(h, MayChangeFieldText(msg), FieldShownText, &cls);
    return Dispatch(h, msg, wp, lp, cls);
}

namespace {

LRESULT Dispatch(HWND h, UINT msg, WPARAM wp, LPARAM lp, const FieldClass& cls) {
    const FieldHandlers& on = cls.on;
    const bool hasLimit = cls.limit >= 0;
    switch (msg) {
    case WM_CREATE: return OnCreate(h, cls);
    case WM_DESTROY: return OnDestroy(h, cls);
    case WM_SETFOCUS: return Call(on.setFocus, h, msg, wp, lp, cls);
    case WM_KILLFOCUS: return Call(on.killFocus, h, msg, wp, lp, cls);
    case WM_ENABLE: InvalidateRect(h, nullptr, TRUE); return 0;
    case WM_PAINT: return Call(on.paint, h, msg, wp, lp, cls);
    case WM_ERASEBKGND: return EraseWithParentBrush(h, wp, lp, WM_CTLCOLOREDIT, cls.erased);
    case WM_NCPAINT: return OnNcPaint(h, wp, lp, cls);
    case WM_SHOWWINDOW: return ShowWindowWipingBorder(h, wp, lp, cls.border3DBits);
    case WM_SETTEXT: return Call(on.setText, h, msg, wp, lp, cls);
    case WM_SETFONT: return FieldSetFont(h, wp, lp);
    case WM_GETFONT: return reinterpret_cast<LRESULT>(FieldWords::Font::get(h));
    case WM_GETDLGCODE: return kFieldDialogCode;
    case WM_CHAR: return Call(on.character, h, msg, wp, lp, cls);
    case WM_KEYDOWN: return Call(on.keyDown, h, msg, wp, lp, cls);
    case WM_VSCROLL: return Call(on.vScroll, h, msg, wp, lp, cls);
    case WM_LBUTTONDOWN: return Call(on.lButtonDown, h, msg, wp, lp, cls);
    case WM_MOUSEMOVE: return Call(on.mouseMove, h, msg, wp, lp, cls);
    case WM_LBUTTONUP: return Call(on.lButtonUp, h, msg, wp, lp, cls);
    case WM_LBUTTONDBLCLK: return Call(on.doubleClick, h, msg, wp, lp, cls);
    case EM_GETSEL: return FieldGetSel(h, wp, lp);
    case EM_SETSEL: return Call(on.setSel, h, msg, wp, lp, cls);
    case EM_REPLACESEL: return Call(on.replaceSel, h, msg, wp, lp, cls);
    case EM_GETMODIFY: return ReadShort(h, cls.modified);
    case EM_SETMODIFY: WriteShort(h, cls.modified, static_cast<WORD>(wp)); return 0;
    case EM_LIMITTEXT:
        if (hasLimit) return OnLimitText(h, wp, cls);
        break;
    case GXM_GETLIMIT:
        if (hasLimit) return ReadShort(h, cls.limit);
        break;
    case GXM_SETMETHOD: return Call(on.setMethod, h, msg, wp, lp, cls);
    case GXM_GETMETHOD: MethodCopyOut(h, cls.method, reinterpret_cast<char*>(lp)); return 0;
    case GXM_SETVALUE: return Call(cls.values.set, h, msg, wp, lp);
    case GXM_GETVALUE: return Call(cls.values.get, h, msg, wp, lp);
    case GXM_VALIDATE: return Call(cls.values.validate, h, msg, wp, lp);
    case GXM_GETTYPE: return Call(cls.values.type, h, msg, wp, lp);
    case GXM_DROPDATA:
    case GXM_DRAGQUERY:
    case GXM_DRAGEND: return twProcessDragDrop(h, msg, wp, lp);
    }
    if (IsDdeMessage(msg)) return RouteControlDde(h, msg, wp, lp, cls.method.get(h));
    return DefWindowProcA(h, msg, wp, lp);
}

}  // namespace

// ---------------------------------------------------------------------
// The masked text model

void DrawView(HWND h, const FieldView& v, UINT flags, int blanks) {
    DrawMaskedField(h, v.text.s, v.mask, v.noFill, flags, blanks);
}

void DrawViewFocused(HWND h, const FieldView& v, int blanks) {
    DrawView(h, v, GetFocus() == h ? GXDF_ANY : (GXDF_ANY | GXDF_NOCARET), blanks);
}

LRESULT MaskedPaint(HWND h, WPARAM, LPARAM, const FieldClass& cls) {
    const FieldView v = cls.view(h);
    return DrawMaskedField(h, v.text.s, v.mask, v.noFill, GXDF_PAINT);
}

// The mouse: drag and drop first, then the editing core's selection of the
// text as it was when the button went down.
LRESULT MaskedLButtonDown(HWND h, WPARAM wp, LPARAM lp, const FieldClass& cls) {
    FieldView v = cls.view(h);
    twProcessDragDrop(h, WM_LBUTTONDOWN, wp, lp);
    if (GetFocus() != h) SetFocus(h);
    char mask[kMethodMax + 1] = "";
    if (v.mask) lstrcpynA(mask, v.mask, sizeof mask);
    MouseButtonDown(h, static_cast<short>(LOWORD(lp)), v.text.s, *mask ? mask : nullptr, 0, v.noFill ? 0x100 : 0);
    return 0;
}

LRESULT MaskedMouseMove(HWND h, WPARAM wp, LPARAM lp, const FieldClass& cls) {
    const FieldView v = cls.view(h);
    if (twProcessDragDrop(h, WM_MOUSEMOVE, wp, lp)) {
        ClearFieldSelection(h);
        EndMouseGesture(h);
        return 0;
    }
    if (!MouseGestureActive(h) || v.text.s[0] == 0) return 0;
    FieldScreen sc = FieldToScreen(v.text.s, v.mask, v.noFill, 0);
    MouseMove(h, static_cast<short>(LOWORD(lp)), sc.s, 0);
    return 0;
}

LRESULT MaskedLButtonUp(HWND h, WPARAM wp, LPARAM lp, const FieldClass&) {
    if (twProcessDragDrop(h, WM_LBUTTONUP, wp, lp)) {
        ClearFieldSelection(h);
        EndMouseGesture(h);
        return 0;
    }
    const FieldRange sel = FieldSelection(h);
    if (sel.empty())
        ClearFieldSelection(h);
    else
        FieldWords::setSelection(h, sel.start, sel.end);
    EndMouseGesture(h);
    return 0;
}

LRESULT MaskedDoubleClick(HWND h, WPARAM, LPARAM, const FieldClass& cls) {
    const FieldView v = cls.view(h);
    FieldWords::setSelection(h, 0, v.screenLength());
    FieldWords::Caret::set(h, v.text.length());
    DrawViewFocused(h, v);
    return 0;
}

FieldRange SetScreenSelection(HWND h, WPARAM wp, LPARAM lp, int screenLength) {
    const int start = std::clamp(static_cast<int>(wp), 0, screenLength);
    const int end = std::clamp(static_cast<int>(lp), 0, screenLength);
    FieldWords::setSelection(h, start, end);
    return {start, end};
}

}  // namespace fk
