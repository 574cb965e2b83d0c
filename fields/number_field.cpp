// What the numeric, real and currency fields do alike: everything but the
// value. Each class's window procedure hands its other messages here.

#include "fields/number_field.h"

#include <algorithm>
#include <cstring>

#include "fields/edit_core.h"
#include "fields/text/number_text.h"
#include "frame/buffers.h"
#include "frame/gdi.h"
#include "frame/method.h"
#include "links/control_links.h"
#include "strings/lstr.h"

namespace fk {

namespace {

using W = NumberWords;

constexpr int kTextMax = kFieldText - 1;
// Characters a paste takes at most without a (smaller) limit.
constexpr int kPasteMax = 256;

FieldText Shown(HWND h, const NumberClass& cls, const FieldText& text) {
    if (cls.shown == nullptr) return text;
    FieldText out{};
    cls.shown(h, text.s, out);
    out.s[kTextMax] = 0;
    return out;
}

// The selection word clamped to a text of length len, ends in order.
FieldRange SelectionIn(HWND h, int len) {
    FieldRange sel = FieldSelection(h);
    sel.start = std::clamp(sel.start, 0, len);
    sel.end = std::clamp(sel.end, 0, len);
    return sel;
}

const NumberClass& Number(const FieldClass& cls) { return static_cast<const NumberClass&>(cls); }

int CaretIn(HWND h, int len) { return std::clamp(static_cast<int>(W::Caret::get(h)), 0, len); }

// Cuts the selection out of the shown text; the result is the new window
// text. Returns where the selection began.
int CutSelection(HWND h, const NumberClass& cls, FieldText& text, FieldRange sel) {
    FieldText shown = Shown(h, cls, text);
    const int len = shown.length();
    sel.start = std::min(sel.start, len);
    sel.end = std::min(sel.end, len);
    std::memmove(shown.s + sel.start, shown.s + sel.end, static_cast<size_t>(len - sel.end) + 1);
    text = shown;
    return sel.start;
}

void EraseBackground(HWND h) {
    WindowDC dc(h);
    SendMessageA(h, WM_ERASEBKGND, reinterpret_cast<WPARAM>(static_cast<HDC>(dc)), 0);
}

// ---------------------------------------------------------------------
// Focus and painting

LRESULT Focused(HWND h, const NumberClass& cls) {
    NotifyParent(h, EN_SETFOCUS);
    const FieldText t = ReadFieldText(h);
    if (W::Caret::get(h) > t.length()) W::Caret::set(h, t.length());
    EraseBackground(h);
    twDrawField(h, Shown(h, cls, t).s, NumberDrawCode(h, kDrawFocused), 0);
    g_edit.selecting = false;
    return 0;
}

LRESULT OnSetFocus(HWND h, WPARAM, LPARAM, const FieldClass& cls) { return Focused(h, Number(cls)); }

LRESULT OnKillFocus(HWND h, WPARAM, LPARAM, const FieldClass& field) {
    const NumberClass& cls = Number(field);
    NotifyParent(h, EN_KILLFOCUS);
    EndMouseGesture(h);
    if (!cls.keepsSelectionOnLeaving) ClearFieldSelection(h);
    DestroyCaret();
    EraseBackground(h);
    if (cls.leaving) cls.leaving(h);
    twDrawField(h, ShownNumberText(h, cls).s, NumberDrawCode(h, kDrawResting), 0);
    return 0;
}

LRESULT OnPaint(HWND h, WPARAM wp, LPARAM, const FieldClass& cls) {
    return twDrawField(h, ShownNumberText(h, Number(cls)).s, NumberDrawCode(h, kDrawPaint), static_cast<int>(wp));
}

LRESULT OnSetText(HWND h, WPARAM wp, LPARAM lp, const FieldClass&) {
    const LRESULT r = DefWindowProcA(h, WM_SETTEXT, wp, lp);
    PushToClients(h, ReadFieldText(h).s);
    InvalidateRect(h, nullptr, TRUE);
    UpdateWindow(h);
    return r;
}

// ---------------------------------------------------------------------
// Method string

LRESULT OnSetMethod(HWND h, WPARAM, LPARAM lp, const FieldClass& field) {
    const NumberClass& cls = Number(field);
    const char* block = MethodReplace(h, cls.method, reinterpret_cast<const char*>(lp));
    if (block != nullptr) {
        MethodFull m(block);
        ReadLimitAndDropTarget(h, m, cls);
    }
    if (cls.methodSet) cls.methodSet(h, block);
    OpenControlLinks(h, block);
    return 0;
}

// ---------------------------------------------------------------------
// Selection messages

LRESULT OnSetSel(HWND h, WPARAM wp, LPARAM lp, const FieldClass& field) {
    const NumberClass& cls = Number(field);
    const int len = ShownNumberText(h, cls).length();
    // Positions past the end (-1 among them) mean the end.
    const int start = static_cast<int>(std::min<WPARAM>(wp, static_cast<WPARAM>(len)));
    const int end = static_cast<int>(std::min<UINT_PTR>(static_cast<UINT_PTR>(lp), static_cast<UINT_PTR>(len)));
    FieldWords::setSelection(h, start, end);
    W::Caret::set(h, end);
    if (GetFocus() == h) DrawNumberText(h, ShownNumberText(h, cls).s, kDrawFocused);
    return 0;
}

// ---------------------------------------------------------------------
// Typing

LRESULT OnChar(HWND h, WPARAM wp, LPARAM, const FieldClass& field) {
    const NumberClass& cls = Number(field);
    if (MouseGestureActive(h)) return 0;
    const char c = static_cast<char>(wp);
    FieldText text = ReadFieldText(h);
    const FieldRange sel = SelectionIn(h, Shown(h, cls, text).length());
    const bool hasSel = !sel.empty();

    switch (cls.filter ? cls.filter(h, c, text, hasSel) : Typed::Take) {
    case Typed::Take: break;
    case Typed::Refuse: Refuse(); return 0;
    case Typed::Ignore:
    case Typed::Done: return 0;
    }
    const int limit = W::Limit::get(h);
    if (!hasSel && ((limit && text.length() >= limit) || text.length() >= kTextMax)) return Refuse(), 0;

    FieldMeasure measure(h);
    const int width = measure.text(text.s);
    const int charWidth = measure.ch(c);
    const int client = ClientWidth(h);
    int caret;
    if (hasSel) {
        caret = CutSelection(h, cls, text, sel);
        ClearFieldSelection(h);
    } else {
        if (client - charWidth - 2 <= width) return Refuse(), 0;  // would not fit
        caret = CaretIn(h, text.length());
    }
    lstrinsc(text.s, c, caret);
    WriteFieldText(h, text.s);
    // Near the right edge the caret stays where it is.
    const int average = FieldWords::AveWidth::get(h);
    if (hasSel || client - average > width) ++caret;
    W::Caret::set(h, caret);
    DrawNumberText(h, text.s, kDrawFocused, 2);
    FieldChanged<W::Modified>(h, text.s);

    const bool full = client - average - 2 <= width + charWidth || (limit && text.length() == limit);
    if (full && NumberMethodHas(h, cls, "@AUTOTAB")) twAutoTab(h);
    return 0;
}

// ---------------------------------------------------------------------
// Keys

// The selection and the character behind it (count = length + 1), as
// applications have come to expect.
void CopySelection(HWND h, const NumberClass& cls, const FieldText& text) {
    const FieldText shown = Shown(h, cls, text);
    const FieldRange sel = SelectionIn(h, shown.length());
    if (sel.empty()) return;
    twClipboardCopyText(h, shown.s + sel.start, sel.end - sel.start + 1);
}

// The whole text becomes the clipboard's, unfiltered; no EN_CHANGE.
void Paste(HWND h, FieldText& text) {
    const int limit = W::Limit::get(h);
    const int max = (limit == 0 || limit > 255) ? kPasteMax : limit;
    char buffer[kPasteMax + 1] = "";
    if (!twClipboardPasteText(h, buffer, max)) return;
    buffer[max] = 0;
    buffer[kTextMax] = 0;
    WriteFieldText(h, buffer);
    lstrcpynA(text.s, buffer, sizeof text.s);
    W::Caret::set(h, text.length());
    ClearFieldSelection(h);
}

// The caret moves to `to`; with Shift the selection runs from the caret's
// old place (or the anchor of a selection being extended) to the new one.
void MoveCaret(HWND h, int from, int to) {
    W::Caret::set(h, to);
    if (!KeyPressed(VK_SHIFT)) {
        ClearFieldSelection(h);
        return;
    }
    const FieldRange sel = FieldSelection(h);
    FieldWords::setSelection(h, sel.empty() ? from : FieldWords::anchor(h), to);
}

// Backspace: a selection goes, and then, when the caret was not at 0, the
// character before the caret's old place in the shortened text goes too.
// So with a selection one more character is removed; keep it.
void Backspace(HWND h, const NumberClass& cls, FieldText& text) {
    const int old = CaretIn(h, text.length());
    const FieldRange sel = SelectionIn(h, Shown(h, cls, text).length());
    int caret = old;
    if (!sel.empty()) caret = CutSelection(h, cls, text, sel);
    if (text.length() > 0 && old > 0) {
        lstrdelc(text.s, old - 1);
        caret = std::min(old - 1, text.length());
    }
    ClearFieldSelection(h);
    WriteFieldText(h, text.s);
    W::Caret::set(h, caret);
}

void DeleteKey(HWND h, const NumberClass& cls, FieldText& text) {
    if (KeyPressed(VK_SHIFT)) CopySelection(h, cls, text);
    const FieldRange sel = SelectionIn(h, Shown(h, cls, text).length());
    int caret = CaretIn(h, text.length());
    if (!sel.empty())
        caret = CutSelection(h, cls, text, sel);
    else
        lstrdelc(text.s, caret);
    ClearFieldSelection(h);
    WriteFieldText(h, text.s);
    W::Caret::set(h, caret);
}

void InsertKey(HWND h, const NumberClass& cls, FieldText& text) {
    if (IsRightJustified(h)) {
        ClearFieldSelection(h);
    } else if (KeyPressed(VK_CONTROL)) {
        CopySelection(h, cls, text);
    } else if (KeyPressed(VK_SHIFT)) {
        Paste(h, text);
    } else {
        FieldPlaceCaret(h, text.s, true);
        ShowCaret(h);
    }
}

LRESULT OnKeyDown(HWND h, WPARAM key, LPARAM, const FieldClass& field) {
    const NumberClass& cls = Number(field);
    if (MouseGestureActive(h)) return 0;
    FieldText text = ReadFieldText(h);
    const int len = text.length();
    const int caret = CaretIn(h, len);
    int blanks = 0;
    switch (key) {
    case VK_BACK:
    case VK_DELETE:
        if (key == VK_BACK)
            Backspace(h, cls, text);
        else
            DeleteKey(h, cls, text);
        DrawNumberText(h, text.s, kDrawFocused, 5);
        FieldChanged<W::Modified>(h, text.s);
        return 0;
    case VK_HOME: MoveCaret(h, caret, 0); break;
    case VK_END: MoveCaret(h, caret, len); break;
    case VK_LEFT:
        MoveCaret(h, caret, caret > 0 ? caret - 1 : caret);
        blanks = 5;
        break;
    case VK_RIGHT: {
        const bool room = caret < len && FieldMeasure(h).text(text.s, caret) < ClientWidth(h) - 1;
        MoveCaret(h, caret, room ? caret + 1 : caret);
        break;
    }
    case VK_INSERT: InsertKey(h, cls, text); break;
    case VK_TAB: MoveFieldFocus(h); return 0;
    case VK_F1: {
        MethodShort m = NumberMethod(h, cls);
        twProcessHelp(h, m.get());
        return 0;
    }
    default: return 0;
    }
    DrawNumberText(h, text.s, kDrawFocused, blanks);
    PushToClients(h, text.s);
    return 0;
}

// ---------------------------------------------------------------------
// Spin: whole numbers up and down, wrapping at the 32-bit limits; then, for
// every scroll code, EN_CHANGE and the focus-gained steps.

LRESULT OnVScroll(HWND h, WPARAM wp, LPARAM, const FieldClass& cls) {
    const WORD code = LOWORD(wp);
    if (code == SB_LINEUP || code == SB_LINEDOWN) {
        const auto value = static_cast<uint32_t>(NumberTextToInt32(ReadFieldText(h).s));
        char out[kInt32Text + 1];
        WriteInt32(out, sizeof out, static_cast<int32_t>(code == SB_LINEUP ? value + 1u : value - 1u));
        SetWindowTextA(h, out);
    }
    NotifyParent(h, EN_CHANGE);
    return Focused(h, Number(cls));
}

// ---------------------------------------------------------------------
// Mouse: drag and drop sees every message first.

LRESULT OnLButtonDown(HWND h, WPARAM wp, LPARAM lp, const FieldClass& cls) {
    twProcessDragDrop(h, WM_LBUTTONDOWN, wp, lp);
    if (GetFocus() != h) {
        SetFocus(h);
        g_edit.selecting = true;
        SetCapture(h);
    }
    FieldText shown = ShownNumberText(h, Number(cls));
    MouseButtonDown(h, static_cast<short>(LOWORD(lp)), shown.s, nullptr, IsRightJustified(h) ? 1 : 0, 0);
    return 0;
}

LRESULT OnMouseMove(HWND h, WPARAM wp, LPARAM lp, const FieldClass& cls) {
    if (twProcessDragDrop(h, WM_MOUSEMOVE, wp, lp)) {
        EndMouseGesture(h);
        return 0;
    }
    if (!MouseGestureActive(h)) return 0;
    FieldText shown = ShownNumberText(h, Number(cls));
    if (shown.length() > 0) MouseMove(h, static_cast<short>(LOWORD(lp)), shown.s, IsRightJustified(h) ? 1 : 0);
    return 0;
}

LRESULT OnLButtonUp(HWND h, WPARAM wp, LPARAM lp, const FieldClass&) {
    if (!twProcessDragDrop(h, WM_LBUTTONUP, wp, lp)) {
        const FieldRange sel = FieldSelection(h);
        if (!sel.empty()) FieldWords::setSelection(h, sel.start, sel.end);
    }
    EndMouseGesture(h);
    return 0;
}

// A double click selects the whole text, as in the string field.
LRESULT OnLButtonDblClk(HWND h, WPARAM, LPARAM, const FieldClass& field) {
    const NumberClass& cls = Number(field);
    FieldWords::setSelection(h, 0, ShownNumberText(h, cls).length());
    W::Caret::set(h, ReadFieldText(h).length());
    DrawNumberText(h, ShownNumberText(h, cls).s, kDrawFocused);
    return 0;
}

}  // namespace

// ---------------------------------------------------------------------
// Pieces for the classes

int ExchangeType(HWND h, WPARAM wp, ValueTypes rows) {
    const LONG style = GetWindowLongA(h, GWL_STYLE);
    for (const ValueTypeRow& row : rows) {
        if (wp != 0 ? static_cast<int>(wp) == row.code : (style & row.styleBit) != 0) return row.code;
    }
    return 0;
}

int ChooseType(HWND h, WPARAM wp, ValueTypes rows) {
    const LONG style = GetWindowLongA(h, GWL_STYLE);
    for (const ValueTypeRow& row : rows) {
        if ((style & row.styleBit) != 0 || wp == static_cast<WPARAM>(row.code)) return row.code;
    }
    return 0;
}

int AnswerType(HWND h, WPARAM wp, LPARAM lp, ValueTypes rows) {
    const int type = ChooseType(h, wp, rows);
    if (type == GXT_TEXT) WriteTextSize(h, lp);
    return type;
}

bool IsRightJustified(HWND h) { return (GetWindowLongA(h, GWL_STYLE) & kNumberRightJust) != 0; }

UINT NumberDrawCode(HWND h, UINT code) { return IsRightJustified(h) ? (code | GXDF_RIGHT) : code; }

void DrawNumberText(HWND h, const char* text, UINT code, int blanks) {
    if (IsRightJustified(h)) {
        twDrawField(h, text, code | GXDF_RIGHT, 0);
        return;
    }
    char padded[kFieldText + 8];
    lstrcpynA(padded, text ? text : "", kFieldText);
    lstrcatA(padded, &"     "[5 - std::clamp(blanks, 0, 5)]);
    twDrawField(h, padded, code, 0);
}

FieldText ShownNumberText(HWND h, const NumberClass& cls) { return Shown(h, cls, ReadFieldText(h)); }

MethodShort NumberMethod(HWND h, const NumberClass& cls) { return MethodShort(cls.method.get(h)); }

bool NumberMethodHas(HWND h, const NumberClass& cls, const char* keyword) {
    return MethodFull(cls.method.get(h)).has(keyword);
}

int32_t NumberMethodInt(HWND h, const NumberClass& cls, const char* keyword, int32_t absent) {
    return MethodFull(cls.method.get(h)).intParam(keyword, absent);
}

void SetNumberValue(HWND h, const char* text) {
    WriteFieldText(h, text);
    InvalidateRect(h, nullptr, TRUE);
    PushToClients(h, text);
}

void WriteTextSize(HWND h, LPARAM lp) {
    if (auto* size = reinterpret_cast<LONG*>(lp)) {
        const int limit = W::Limit::get(h);
        *size = limit ? limit : 80;
    }
}

LRESULT ValidateNumber(HWND h, const NumberClass& cls, int type, void* value, const FieldText& text) {
    MethodShort m = NumberMethod(h, cls);
    FieldText t = text;
    return twValidate(h, type, value, m.get(), t.s) ? 0 : -1;
}

constinit const FieldHandlers kNumberHandlers{
    .setMethod = OnSetMethod,
    .setFocus = OnSetFocus,
    .killFocus = OnKillFocus,
    .setText = OnSetText,
    .character = OnChar,
    .keyDown = OnKeyDown,
    .setSel = OnSetSel,
    .replaceSel = nullptr,
    .paint = OnPaint,
    .lButtonDown = OnLButtonDown,
    .mouseMove = OnMouseMove,
    .lButtonUp = OnLButtonUp,
    .doubleClick = OnLButtonDblClk,
    .vScroll = OnVScroll,
};

}  // namespace fk
