// gxString32: the text entry field. It keeps its text as the window text,
// edits it through the editing core, filters every typed character by its
// style, its method string and an optional input mask, and notifies its
// parent like an edit control.

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <dde.h>

#include "fields/edit_core.h"
#include "fields/field_words.h"
#include "fields/mask.h"
#include "fields/string_field.h"
#include "frame/buffers.h"
#include "frame/gdi.h"
#include "frame/method.h"
#include "frame/method_window.h"
#include "include/fldkit.h"
#include "links/control_links.h"
#include "strings/lstr.h"

namespace fk {

namespace {

using W = StringWords;
const MethodSlot kMethod{W::Method::kOffset};

constexpr WORD kFlagMask = 0x0100;      // a mask is in force
constexpr WORD kFlagAutoFill = 0x0200;  // "@AUTOFILL": no empty template
constexpr int kTextMax = kFieldText - 1;
// Characters a paste takes at most without a (smaller) limit.
constexpr int kPasteMax = 256;

// ---------------------------------------------------------------------
// Small helpers

using Text = FieldText;
using Range = FieldRange;
using Measure = FieldMeasure;

Text ReadText(HWND h) { return ReadFieldText(h); }
void WriteText(HWND h, const char* text) { WriteFieldText(h, text); }
MethodText ReadMethod(HWND h) { return CopyMethod(W::Method::get(h)); }
bool MethodHas(HWND h, const char* keyword) { return fk::MethodHas(W::Method::get(h), keyword); }

const char* Mask(HWND h) {
    return (W::Flags::get(h) & kFlagMask) != 0 ? W::Mask::get(h) : nullptr;
}

Range Selection(HWND h) { return FieldSelection(h); }
void ClearSelection(HWND h) { ClearFieldSelection(h); }

// Screen text of a masked field, and the screen index of an application
// index.
struct Screen {
    char s[kFieldText + kMethodMax + 2];
    int caret;
};

Screen ToScreen(HWND h, const char* app, int appPos) {
    Screen sc{};
    const char* mask = Mask(h);
    char cut[kMethodMax + 1];
    lstrcpynA(cut, mask ? mask : "", sizeof cut);
    const bool noFill = (W::Flags::get(h) & kFlagAutoFill) != 0;
    sc.caret = twAppToScrMask(sc.s, app, cut, appPos, noFill ? 1 : 0);
    return sc;
}

// Draws the field; a masked field draws its screen text with the caret
// temporarily at the screen index. blanks: how many blanks overwrite the
// pixels of removed characters.
void Draw(HWND h, UINT flags, int blanks = 0) {
    Text t = ReadText(h);
    char shown[sizeof(Screen::s) + 8];
    if (Mask(h) == nullptr) {
        lstrcpynA(shown, t.s, sizeof shown);
        lstrcatA(shown, &"     "[5 - std::clamp(blanks, 0, 5)]);
        twDrawField(h, shown, flags, 0);
        return;
    }
    const int caret = W::Caret::get(h);
    Screen sc = ToScreen(h, t.s, std::clamp(caret, 0, t.length()));
    lstrcpynA(shown, sc.s, sizeof shown);
    lstrcatA(shown, &"     "[5 - std::clamp(blanks, 0, 5)]);
    W::Caret::set(h, std::max(sc.caret, 0));
    twDrawField(h, shown, flags, 0);
    W::Caret::set(h, caret);
}

void DrawFocused(HWND h, int blanks = 0) { Draw(h, GetFocus() == h ? GXDF_ANY : (GXDF_ANY | GXDF_NOCARET), blanks); }

void Changed(HWND h, const char* text) { FieldChanged<W::Modified>(h, text); }

// Removes the selected characters (screen positions) and returns the new
// caret (an application index). The text is not yet written back.
int DeleteSelection(HWND h, Text& t, Range sel) {
    if (const char* mask = Mask(h)) {
        Screen sc = ToScreen(h, t.s, t.length());
        char cut[kMethodMax + 1];
        lstrcpynA(cut, mask, sizeof cut);
        char app[sizeof(Screen::s)];
        const int caret = ScrToAppMask(app, sc.s, cut, sel.start, sel.end);
        lstrcpynA(t.s, app, sizeof t.s);
        return caret;
    }
    const int len = t.length();
    const int start = std::min(sel.start, len);
    const int end = std::min(sel.end, len);
    std::memmove(t.s + start, t.s + end, static_cast<size_t>(len - end) + 1);
    return start;
}

// The placeholder that takes the character typed at application index pos.
char PlaceholderAt(const char* mask, int pos) {
    for (const char* m = mask; *m; ++m)
        if (IsMaskPlaceholder(*m) && pos-- == 0) return *m;
    return 0;
}

bool PlaceholderAccepts(char placeholder, char c) {
    const auto uc = static_cast<unsigned char>(c);
    switch (placeholder) {
    case '#': return std::isdigit(uc) != 0;
    case '@': return IsCharAlphaA(c) || c == ' ';
    case '?': return IsCharAlphaA(c) || std::isdigit(uc) || c == ' ';
    case '*': return true;
    default: return false;
    }
}

// Case conversion of a typed character by style.
char ConvertCase(HWND h, char c, int insertAt) {
    const LONG style = GetWindowLongA(h, GWL_STYLE);
    auto* p = reinterpret_cast<char*>(static_cast<UINT_PTR>(static_cast<unsigned char>(c)));
    if ((style & STR_UPPER) || ((style & STR_FIRSTCHARUPPER) && insertAt == 0))
        return static_cast<char>(reinterpret_cast<UINT_PTR>(CharUpperA(p)));
    if (style & STR_LOWER) return static_cast<char>(reinterpret_cast<UINT_PTR>(CharLowerA(p)));
    return c;
}

bool StyleAccepts(HWND h, char c) {
    const LONG style = GetWindowLongA(h, GWL_STYLE);
    const bool digit = std::isdigit(static_cast<unsigned char>(c)) != 0;
    const bool letter = IsCharAlphaA(c) != FALSE;
    if ((style & STR_NUMERIC) && !digit) return false;
    if ((style & STR_ALPHA) && !(letter || c == ' ')) return false;
    if ((style & STR_ALPHANUM) && !(letter || digit || c == ' ')) return false;
    return true;
}

// ---------------------------------------------------------------------
// Method string

void DeriveFromMethod(HWND h, const char* text) {
    char* block = MethodReplace(h, kMethod, text);
    if (block == nullptr) return;
    g_methodWork[0] = 0;
    lstrcpynA(g_methodWork, block, kMethodMax + 1);
    char arg[kMethodMax + 1];
    W::Limit::set(h, twGetMethodParam(g_methodWork, "@LIMIT", arg) ? static_cast<WORD>(std::atoi(arg)) : 0);
    if (lstristr(g_methodWork, "@DROPTARG")) SetPropA(h, "@WANTDROP", reinterpret_cast<HANDLE>(5));
    WORD flags = W::Flags::get(h);
    if (twGetMethodParam(g_methodWork, "@MASK", arg)) {
        if (MethodReplace(h, MethodSlot{W::Mask::kOffset}, arg) != nullptr) flags |= kFlagMask;
    }
    // Bits are only ever added here.
    LONG style = GetWindowLongA(h, GWL_STYLE);
    if (lstristr(g_methodWork, "@NUM")) style |= STR_NUMERIC;
    if (lstristr(g_methodWork, "@ALPHA")) style |= STR_ALPHA;
    if (lstristr(g_methodWork, "@UP")) style |= STR_UPPER;
    if (lstristr(g_methodWork, "@AUTOFILL")) flags |= kFlagAutoFill;
    SetWindowLongA(h, GWL_STYLE, style);
    W::Flags::set(h, flags);
}

LRESULT OnSetMethod(HWND h, const char* text) {
    DeriveFromMethod(h, text);
    OpenControlLinks(h, W::Method::get(h));
    return 0;
}

// GXM_EXCLUDE, GXM_INCLUDE, GXM_AUTOTAB (set): the item is edited into a copy
// of the method string, which the field keeps as it is.
void EditMethodItem(HWND h, const char* keyword, const char* argument, bool bare) {
    char work[kMethodMax + 1 + 2] = "";
    if (const char* method = W::Method::get(h)) lstrncpy(work, method, kMethodCopy);
    work[kMethodCopy] = 0;
    if (argument != nullptr && (bare || *argument != 0)) {
        char item[kMethodMax + 1];
        if (bare)
            lstrcpynA(item, keyword, sizeof item);
        else
            std::snprintf(item, sizeof item, "%s(%.*s)", keyword, kMethodMax - kMethodCopy - 16, argument);
        twAddMethodParam(work, item);
    } else {
        char item[32];
        std::snprintf(item, sizeof item, bare ? "%s" : "%s()", keyword);
        twRemoveMethodParam(work, item);
    }
    MethodReplace(h, kMethod, work);
}

LRESULT OnCharSet(HWND h, WPARAM wp, LPARAM lp, const char* keyword) {
    auto* text = reinterpret_cast<char*>(lp);
    if (wp == 0) {
        if (text == nullptr) return 0;
        MethodText m = ReadMethod(h);
        char arg[sizeof m.s];
        twGetMethodParam(m.s, keyword, arg);
        lstrcpynA(text, arg, kMethodCopy + 1);
        return 0;
    }
    EditMethodItem(h, keyword, text, false);
    return 0;
}

LRESULT OnAutoTab(HWND h, WPARAM wp, LPARAM lp) {
    if (wp == 0) return MethodHas(h, "@AUTOTAB") ? 1 : 0;
    EditMethodItem(h, "@AUTOTAB", lp ? "" : nullptr, true);
    return 0;
}

LRESULT OnAutoFill(HWND h, WPARAM wp, LPARAM lp) {
    const WORD flags = W::Flags::get(h);
    if (wp == 0) return (flags & kFlagAutoFill) ? 1 : 0;
    W::Flags::set(h, lp ? (flags | kFlagAutoFill) : (flags & ~kFlagAutoFill));
    InvalidateRect(h, nullptr, TRUE);
    return 0;
}

LRESULT OnMask(HWND h, WPARAM wp, LPARAM lp) {
    auto* text = reinterpret_cast<char*>(lp);
    if (wp == 0 && text != nullptr) {
        const char* mask = Mask(h);
        lstrcpynA(text, mask ? mask : "", kMethodCopy + 1);
        return 0;
    }
    MethodSlot maskSlot{W::Mask::kOffset};
    WORD flags = W::Flags::get(h);
    if (text != nullptr && MethodReplace(h, maskSlot, text) != nullptr) {
        flags |= kFlagMask;
    } else {
        MethodFree(h, maskSlot);
        flags &= ~kFlagMask;
    }
    W::Flags::set(h, flags);
    W::Caret::set(h, 0);
    ClearSelection(h);
    InvalidateRect(h, nullptr, TRUE);
    return 0;
}

// ---------------------------------------------------------------------
// Values and validation

LRESULT OnSetValue(HWND h, LPARAM lp) {
    if (HasProp(h, "CLIENT")) {
        twRequestDDEData(h);  // the link owns the value
        return 0;
    }
    if (lp == 0) return 0;
    char text[kFieldText];
    lstrcpynA(text, reinterpret_cast<const char*>(lp), sizeof text);  // at most 159 characters
    WriteText(h, text);
    const int len = static_cast<int>(std::strlen(text));
    Range sel = Selection(h);
    FieldWords::setSelection(h, std::min(sel.start, len), std::min(sel.end, len));
    if (W::Caret::get(h) > len) W::Caret::set(h, len);
    InvalidateRect(h, nullptr, TRUE);
    if (HasProp(h, "SERVER")) twProcessDDEData(h, text);
    return 0;
}

LRESULT OnGetValue(HWND h, LPARAM lp) {
    auto* buffer = reinterpret_cast<char*>(lp);
    if (buffer == nullptr) return 0;
    const int limit = W::Limit::get(h);
    DefWindowProcA(h, WM_GETTEXT, limit ? limit + 1 : 80, lp);
    return 0;
}

LRESULT OnValidate(HWND h) {
    Text t = ReadText(h);
    MethodText m = ReadMethod(h);
    return twValidate(h, GXT_TEXT, t.s, m.s, t.s) ? 0 : -1;
}

LRESULT OnGetType(HWND h, LPARAM lp) {
    if (auto* size = reinterpret_cast<LONG*>(lp)) {
        const int limit = W::Limit::get(h);
        *size = limit ? limit : 80;
    }
    return GXT_TEXT;
}

// ---------------------------------------------------------------------
// Typing

bool FitsWidth(HWND h, const Measure& m, const char* screenText, char c) {
    return m.text(screenText) < ClientWidth(h) - m.ch(c) - 2;
}

LRESULT OnChar(HWND h, WPARAM wp) {
    if (MouseGestureActive(h)) return 0;
    const char typed = static_cast<char>(wp);
    if (static_cast<unsigned char>(typed) < 0x20) return 0;  // control keys come as WM_KEYDOWN

    Text t = ReadText(h);
    const Range sel = Selection(h);
    const bool hasSel = !sel.empty();
    const int limit = W::Limit::get(h);
    int caret = std::clamp(static_cast<int>(W::Caret::get(h)), 0, t.length());
    const char c = ConvertCase(h, typed, hasSel ? sel.start : caret);

    // The checks, in this order; each refusal leaves everything as it was.
    if (limit && !hasSel && t.length() >= limit) return Refuse(), 0;
    MethodText m = ReadMethod(h);
    char arg[sizeof m.s];
    if (twGetMethodParam(m.s, "@EXCLUDE", arg) && *arg && std::strchr(arg, c)) return Refuse(), 0;
    if (twGetMethodParam(m.s, "@INCLUDE", arg) && *arg && !std::strchr(arg, c)) return Refuse(), 0;
    if (!StyleAccepts(h, c)) return Refuse(), 0;

    Text edited = t;
    if (hasSel) caret = DeleteSelection(h, edited, sel);
    if (edited.length() >= kTextMax) return Refuse(), 0;

    Measure measure(h);
    bool full;
    if (const char* mask = Mask(h)) {
        const int capacity = MaskCapacity(mask);
        Screen before = ToScreen(h, edited.s, caret);
        if (edited.length() >= capacity || !PlaceholderAccepts(PlaceholderAt(mask, caret), c) ||
            !FitsWidth(h, measure, before.s, c))
            return Refuse(), 0;
        lstrinsc(edited.s, c, caret);
        full = edited.length() >= capacity;
    } else {
        if (!FitsWidth(h, measure, edited.s, c)) return Refuse(), 0;
        lstrinsc(edited.s, c, caret);
        const int width = measure.text(edited.s);
        full = (limit && edited.length() >= limit) || ClientWidth(h) - width - 2 <= measure.ch(c);
    }
    WriteText(h, edited.s);
    W::Caret::set(h, caret + 1);
    ClearSelection(h);
    DrawFocused(h, 2);
    Changed(h, edited.s);
    if (full && MethodHas(h, "@AUTOTAB")) twAutoTab(h);
    return 0;
}

// ---------------------------------------------------------------------
// Keys

// Copies the selection and the character behind it (count = length + 1);
// applications have come to rely on that extra character.
void CopySelection(HWND h, const Text& t, Range sel) {
    if (sel.empty()) return;
    const char* shown = t.s;
    Screen sc;
    if (Mask(h)) {
        sc = ToScreen(h, t.s, 0);
        shown = sc.s;
    }
    const int len = static_cast<int>(std::strlen(shown));
    if (sel.start >= len) return;
    twClipboardCopyText(h, shown + sel.start, sel.end - sel.start + 1);
}

void Paste(HWND h) {
    const int limit = W::Limit::get(h);
    const int max = (limit == 0 || limit >= kPasteMax) ? kPasteMax : limit;
    char buffer[kPasteMax + 1] = "";
    if (!twClipboardPasteText(h, buffer, max)) return;
    buffer[max] = 0;
    buffer[kTextMax] = 0;  // the field edits at most 159 characters
    WriteText(h, buffer);
    const int len = static_cast<int>(std::strlen(buffer));
    W::Caret::set(h, len);
    FieldWords::setSelection(h, 0, Mask(h) ? static_cast<int>(std::strlen(ToScreen(h, buffer, 0).s)) : len);
    DrawFocused(h, 5);
    if (HasProp(h, "SERVER")) twProcessDDEData(h, buffer);
}

// Caret movement; with Shift the selection runs from the old caret (or the
// existing anchor) to the new one, in displayed positions.
void MoveCaret(HWND h, const Text& t, int to) {
    const int from = W::Caret::get(h);
    W::Caret::set(h, to);
    if (!KeyPressed(VK_SHIFT)) {
        ClearSelection(h);
        return;
    }
    auto shown = [&](int appPos) { return Mask(h) ? ToScreen(h, t.s, appPos).caret : appPos; };
    const Range sel = Selection(h);
    const int anchor = sel.empty() ? shown(from) : FieldWords::anchor(h);
    FieldWords::setSelection(h, anchor, shown(to));
}

void DeleteKey(HWND h, Text& t) {
    const Range sel = Selection(h);
    int caret = std::clamp(static_cast<int>(W::Caret::get(h)), 0, t.length());
    if (!sel.empty())
        caret = DeleteSelection(h, t, sel);
    else
        lstrdelc(t.s, caret);
    WriteText(h, t.s);
    W::Caret::set(h, caret);
    ClearSelection(h);
    DrawFocused(h, 5);
    Changed(h, t.s);
}

void Backspace(HWND h, Text& t) {
    const Range sel = Selection(h);
    int caret = std::clamp(static_cast<int>(W::Caret::get(h)), 0, t.length());
    if (!sel.empty()) {
        caret = DeleteSelection(h, t, sel);
    } else if (caret > 0) {
        lstrdelc(t.s, caret - 1);
        --caret;
    }
    WriteText(h, t.s);
    W::Caret::set(h, caret);
    ClearSelection(h);
    DrawFocused(h, 5);
    Changed(h, t.s);
}

LRESULT OnKeyDown(HWND h, WPARAM key) {
    if (MouseGestureActive(h)) return 0;
    Text t = ReadText(h);
    const int len = t.length();
    const int caret = std::clamp(static_cast<int>(W::Caret::get(h)), 0, len);
    const bool ctrl = KeyPressed(VK_CONTROL);
    switch (key) {
    case VK_BACK: Backspace(h, t); return 0;
    case VK_DELETE: DeleteKey(h, t); return 0;
    case VK_HOME: MoveCaret(h, t, 0); break;
    case VK_END: MoveCaret(h, t, len); break;
    case VK_LEFT:
        if (caret > 0) MoveCaret(h, t, caret - 1);
        break;
    case VK_RIGHT: {
        Measure m(h);
        if (caret < len && m.text(t.s, caret) < ClientWidth(h) - 1) MoveCaret(h, t, caret + 1);
        break;
    }
    case VK_TAB: MoveFieldFocus(h); return 0;
    case VK_F1: {
        MethodText m = ReadMethod(h);
        twProcessHelp(h, m.s);
        return 0;
    }
    case 'C':
        if (!ctrl) return 0;
        CopySelection(h, t, Selection(h));
        return 0;
    case 'X':
        if (!ctrl) return 0;
        CopySelection(h, t, Selection(h));
        DeleteKey(h, t);
        return 0;
    case 'V':
        if (ctrl) Paste(h);
        return 0;
    default: return 0;
    }
    DrawFocused(h, 5);
    return 0;
}

// ---------------------------------------------------------------------
// Mouse

LRESULT OnLButtonDown(HWND h, WPARAM wp, LPARAM lp) {
    twProcessDragDrop(h, WM_LBUTTONDOWN, wp, lp);
    if (GetFocus() != h) SetFocus(h);
    Text t = ReadText(h);
    char mask[kMethodMax + 1] = "";
    if (const char* m = Mask(h)) lstrcpynA(mask, m, sizeof mask);
    const UINT flags = (W::Flags::get(h) & kFlagAutoFill) ? 0x100 : 0;
    MouseButtonDown(h, static_cast<short>(LOWORD(lp)), t.s, *mask ? mask : nullptr, 0, flags);
    return 0;
}

LRESULT OnMouseMove(HWND h, WPARAM wp, LPARAM lp) {
    if (twProcessDragDrop(h, WM_MOUSEMOVE, wp, lp)) {
        ClearSelection(h);
        EndMouseGesture(h);
        return 0;
    }
    if (!g_edit.selecting || GetCapture() != h) return 0;
    Text t = ReadText(h);
    if (t.length() == 0) return 0;
    if (Mask(h)) {
        Screen sc = ToScreen(h, t.s, 0);
        MouseMove(h, static_cast<short>(LOWORD(lp)), sc.s, 0);
    } else {
        MouseMove(h, static_cast<short>(LOWORD(lp)), t.s, 0);
    }
    return 0;
}

LRESULT OnLButtonUp(HWND h, WPARAM wp, LPARAM lp) {
    if (twProcessDragDrop(h, WM_LBUTTONUP, wp, lp)) {
        ClearSelection(h);
        EndMouseGesture(h);
        return 0;
    }
    const Range sel = Selection(h);
    if (sel.empty())
        ClearSelection(h);
    else
        FieldWords::setSelection(h, sel.start, sel.end);
    EndMouseGesture(h);
    return 0;
}

// Double click selects the whole text, as users of edit controls expect.
LRESULT OnLButtonDblClk(HWND h) {
    Text t = ReadText(h);
    const int end = Mask(h) ? static_cast<int>(std::strlen(ToScreen(h, t.s, 0).s)) : t.length();
    FieldWords::setSelection(h, 0, end);
    W::Caret::set(h, t.length());
    DrawFocused(h);
    return 0;
}

// ---------------------------------------------------------------------
// Window life

LRESULT OnCreate(HWND h) {
    MeasureFieldFont(h);
    W::Caret::set(h, 0);
    return 0;
}

LRESULT OnDestroy(HWND h) {
    MethodFree(h, kMethod);
    MethodFree(h, MethodSlot{W::Mask::kOffset});
    FieldReleaseLinks(h);
    return 0;
}

LRESULT OnSetFocus(HWND h) {
    NotifyParent(h, EN_SETFOCUS);
    Text t = ReadText(h);
    if (W::Caret::get(h) > t.length()) W::Caret::set(h, t.length());
    Draw(h, GXDF_ANY);
    return 0;
}

LRESULT OnKillFocus(HWND h) {
    NotifyParent(h, EN_KILLFOCUS);
    EndMouseGesture(h);
    DestroyCaret();
    Draw(h, GXDF_ANY | GXDF_NOCARET);
    return 0;
}

LRESULT OnPaint(HWND h) {
    Text t = ReadText(h);
    if (Mask(h) == nullptr) return twDrawField(h, t.s, GXDF_PAINT, 0);
    const int caret = W::Caret::get(h);
    Screen sc = ToScreen(h, t.s, std::clamp(caret, 0, t.length()));
    W::Caret::set(h, std::max(sc.caret, 0));
    twDrawField(h, sc.s, GXDF_PAINT, 0);
    W::Caret::set(h, caret);
    return 0;
}

LRESULT OnSetText(HWND h, WPARAM wp, LPARAM lp) {
    LRESULT r = DefWindowProcA(h, WM_SETTEXT, wp, lp);
    Text t = ReadText(h);
    if (W::Caret::get(h) > t.length()) W::Caret::set(h, t.length());
    if (HasProp(h, "SERVER")) twProcessDDEData(h, t.s);
    InvalidateRect(h, nullptr, TRUE);
    UpdateWindow(h);
    return r;
}

// Edit-control messages an application or the drag-and-drop service sends.
LRESULT OnSetSel(HWND h, WPARAM wp, LPARAM lp) {
    Text t = ReadText(h);
    const int len = Mask(h) ? static_cast<int>(std::strlen(ToScreen(h, t.s, 0).s)) : t.length();
    const int start = std::clamp(static_cast<int>(wp), 0, len);
    const int end = std::clamp(static_cast<int>(lp), 0, len);
    FieldWords::setSelection(h, start, end);
    W::Caret::set(h, Mask(h) ? t.length() : end);
    DrawFocused(h);
    return 0;
}

LRESULT OnReplaceSel(HWND h, LPARAM lp) {
    Text t = ReadText(h);
    const Range sel = Selection(h);
    int caret = sel.empty() ? std::clamp(static_cast<int>(W::Caret::get(h)), 0, t.length()) : DeleteSelection(h, t, sel);
    const char* insert = lp ? reinterpret_cast<const char*>(lp) : "";
    char out[kFieldText];
    std::snprintf(out, sizeof out, "%.*s%s%s", caret, t.s, insert, t.s + caret);
    WriteText(h, out);
    caret = std::min(caret + static_cast<int>(std::strlen(insert)), static_cast<int>(std::strlen(out)));
    W::Caret::set(h, caret);
    ClearSelection(h);
    InvalidateRect(h, nullptr, TRUE);
    Changed(h, out);
    return 0;
}

LRESULT OnSetLimit(HWND h, WPARAM wp, LPARAM lp) {
    W::Limit::set(h, wp ? static_cast<WORD>(lp) : 0);
    return 0;
}

LRESULT OnSetDropTarget(HWND h, WPARAM wp) {
    if (wp)
        SetPropA(h, "@WANTDROP", reinterpret_cast<HANDLE>(5));
    else
        RemovePropA(h, "@WANTDROP");
    return 0;
}

}  // namespace
}  // namespace fk

using namespace fk;

LRESULT WINAPI gxStringWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case WM_CREATE: return OnCreate(h);
    case WM_DESTROY: return OnDestroy(h);
    case WM_SETFOCUS: return OnSetFocus(h);
    case WM_KILLFOCUS: return OnKillFocus(h);
    case WM_ENABLE: InvalidateRect(h, nullptr, TRUE); return 0;
    case WM_PAINT: return OnPaint(h);
    case WM_ERASEBKGND: return FieldEraseBkgnd(h, wp, lp);
    case WM_NCPAINT: return PaintFieldBorder(h, wp, lp, kFieldBorder);
    case WM_SHOWWINDOW: return FieldShowWindow(h, wp, lp, 0x7C00);
    case WM_SETTEXT: return OnSetText(h, wp, lp);
    case WM_SETFONT: return FieldSetFont(h, wp, lp);
    case WM_GETFONT: return W::Font::get(h);
    case WM_GETDLGCODE: return 0x8089;
    case WM_CHAR: return OnChar(h, wp);
    case WM_KEYDOWN: return OnKeyDown(h, wp);
    case WM_LBUTTONDOWN: return OnLButtonDown(h, wp, lp);
    case WM_MOUSEMOVE: return OnMouseMove(h, wp, lp);
    case WM_LBUTTONUP: return OnLButtonUp(h, wp, lp);
    case WM_LBUTTONDBLCLK: return OnLButtonDblClk(h);
    case EM_GETSEL: return FieldGetSel(h, wp, lp);
    case EM_SETSEL: return OnSetSel(h, wp, lp);
    case EM_REPLACESEL: return OnReplaceSel(h, lp);
    case EM_GETMODIFY: return W::Modified::get(h);
    case EM_SETMODIFY: W::Modified::set(h, static_cast<WORD>(wp)); return 0;
    case EM_LIMITTEXT: W::Limit::set(h, static_cast<WORD>(wp)); return 0;
    case GXM_SETMETHOD: return OnSetMethod(h, reinterpret_cast<const char*>(lp));
    case GXM_GETMETHOD: MethodCopyOut(h, kMethod, reinterpret_cast<char*>(lp)); return 0;
    case GXM_SETVALUE: return OnSetValue(h, lp);
    case GXM_GETVALUE: return OnGetValue(h, lp);
    case GXM_VALIDATE: return OnValidate(h);
    case GXM_GETLIMIT: return W::Limit::get(h);
    case GXM_GETTYPE: return OnGetType(h, lp);
    case GXM_DROPDATA:
    case GXM_DRAGQUERY:
    case GXM_DRAGEND: return twProcessDragDrop(h, msg, wp, lp);
    case GXM_SETLIMIT: return OnSetLimit(h, wp, lp);
    case GXM_SETDROPTARGET: return OnSetDropTarget(h, wp);
    case GXM_MASK: return OnMask(h, wp, lp);
    case GXM_EXCLUDE: return OnCharSet(h, wp, lp, "@EXCLUDE");
    case GXM_INCLUDE: return OnCharSet(h, wp, lp, "@INCLUDE");
    case GXM_AUTOTAB: return OnAutoTab(h, wp, lp);
    case GXM_AUTOFILL: return OnAutoFill(h, wp, lp);
    }
    if (IsDdeMessage(msg)) return RouteControlDde(h, msg, wp, lp, W::Method::get(h));
    return DefWindowProcA(h, msg, wp, lp);
}
