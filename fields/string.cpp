// gxString32: the text entry field. It keeps its text as the window text,
// edits it through the editing core, filters every typed character by its
// style, its method string and an optional input mask, and notifies its
// parent like an edit control.

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>

#include <dde.h>

#include "fields/edit_core.h"
#include "fields/entry_field.h"
#include "fields/field_words.h"
#include "fields/text/mask.h"
#include "frame/buffers.h"
#include "frame/extra_bytes.h"
#include "frame/gdi.h"
#include "frame/method.h"
#include "frame/method_window.h"
#include "include/fldkit.h"
#include "links/control_links.h"
#include "strings/lstr.h"

namespace fk {

namespace {

// The words behind the ones every entry field shares.
struct StringWords : FieldWords {
    using Limit = ShortWord<20>;     // character limit; 0 = none
    using Modified = ShortWord<22>;  // set to 1 when the user changes the text
    using Flags = ShortWord<24>;     // 0x0100 mask in force, 0x0200 "@AUTOFILL"
    using Method = PtrWord<char, 26, 34>;
    using Mask = PtrWord<char, 30, 42>;
};
static_assert(EndsAt<StringWords::Mask, StringWords::Mask>(kStringExtra.bits32, kStringExtra.bits64));
using W = StringWords;
const MethodSlot kMethod{W::Method::kOffset};

constexpr WORD kFlagMask = 0x0100;      // a mask is in force
constexpr WORD kFlagAutoFill = 0x0200;  // "@AUTOFILL": no empty template
constexpr int kTextMax = kFieldText - 1;
// Characters a paste takes at most without a (smaller) limit.
constexpr int kPasteMax = 256;

// ---------------------------------------------------------------------
// Small helpers

const char* Mask(HWND h) {
    return (W::Flags::get(h) & kFlagMask) != 0 ? W::Mask::get(h) : nullptr;
}

bool NoFill(HWND h) { return (W::Flags::get(h) & kFlagAutoFill) != 0; }

// Screen text of a masked field, and the screen index of an application
// index.
FieldScreen ToScreen(HWND h, const char* app, int appPos) { return FieldToScreen(app, Mask(h), NoFill(h), appPos); }

// The text model: the window text through the mask.
FieldView View(HWND h) { return {ReadFieldText(h), Mask(h), NoFill(h)}; }
void Draw(HWND h, UINT flags, int blanks = 0) { DrawView(h, View(h), flags, blanks); }
void DrawFocused(HWND h, int blanks = 0) { DrawViewFocused(h, View(h), blanks); }

void Changed(HWND h, const char* text) { FieldChanged<W::Modified>(h, text); }

// Removes the selected characters (screen positions) and returns the new
// caret (an application index). The text is not yet written back.
int DeleteSelection(HWND h, FieldText& t, FieldRange sel) {
    if (const char* mask = Mask(h)) {
        FieldScreen sc = ToScreen(h, t.s, t.length());
        char cut[kMethodMax + 1];
        lstrcpynA(cut, mask, sizeof cut);
        char app[sizeof(FieldScreen::s)];
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

void DeriveFromMethod(HWND h, const char* text, const FieldClass& cls) {
    char* block = MethodReplace(h, kMethod, text);
    if (block == nullptr) return;
    MethodFull m(block);
    ReadLimitAndDropTarget(h, m, cls);
    WORD flags = W::Flags::get(h);
    const char* mask = m.param("@MASK");
    if (m.found() && MethodReplace(h, MethodSlot{W::Mask::kOffset}, mask) != nullptr) flags |= kFlagMask;
    // Bits are only ever added here.
    const LONG old = GetWindowLongA(h, GWL_STYLE);
    LONG style = old;
    if (m.has("@NUM")) style |= STR_NUMERIC;
    if (m.has("@ALPHA")) style |= STR_ALPHA;
    if (m.has("@UP")) style |= STR_UPPER;
    if (m.has("@AUTOFILL")) flags |= kFlagAutoFill;
    if (style != old) SetWindowLongA(h, GWL_STYLE, style);
    W::Flags::set(h, flags);
}

LRESULT OnSetMethod(HWND h, WPARAM, LPARAM lp, const FieldClass& cls) {
    DeriveFromMethod(h, reinterpret_cast<const char*>(lp), cls);
    OpenControlLinks(h, W::Method::get(h));
    return 0;
}

// GXM_EXCLUDE, GXM_INCLUDE, GXM_AUTOTAB (set): the item is edited into a copy
// of the method string, which the field keeps as it is.
void EditMethodItem(HWND h, const char* keyword, const char* argument, bool bare) {
    MethodCopy<kMethodCopy, kMethodMax> work(W::Method::get(h));
    if (argument != nullptr && (bare || *argument != 0)) {
        char item[kMethodMax + 1];
        if (bare)
            lstrcpynA(item, keyword, sizeof item);
        else
            std::snprintf(item, sizeof item, "%s(%.*s)", keyword, kMethodMax - kMethodCopy - 16, argument);
        work.add(item);
    } else {
        char item[32];
        std::snprintf(item, sizeof item, bare ? "%s" : "%s()", keyword);
        work.remove(item);
    }
    MethodReplace(h, kMethod, work.get());
}

LRESULT OnCharSet(HWND h, WPARAM wp, LPARAM lp, const char* keyword) {
    auto* text = reinterpret_cast<char*>(lp);
    if (wp == 0) {
        if (text == nullptr) return 0;
        MethodShort m(W::Method::get(h));
        lstrcpynA(text, m.param(keyword), kMethodCopy + 1);
        return 0;
    }
    EditMethodItem(h, keyword, text, false);
    return 0;
}

LRESULT OnAutoTab(HWND h, WPARAM wp, LPARAM lp) {
    if (wp == 0) return MethodFull(W::Method::get(h)).has("@AUTOTAB") ? 1 : 0;
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
    ClearFieldSelection(h);
    InvalidateRect(h, nullptr, TRUE);
    return 0;
}

// ---------------------------------------------------------------------
// Values and validation

LRESULT OnSetValue(HWND h, WPARAM, LPARAM lp) {
    if (HasProp(h, "CLIENT")) {
        twRequestDDEData(h);  // the link owns the value
        return 0;
    }
    if (lp == 0) return 0;
    char text[kFieldText];
    lstrcpynA(text, reinterpret_cast<const char*>(lp), sizeof text);  // at most 159 characters
    WriteFieldText(h, text);
    const int len = static_cast<int>(std::strlen(text));
    FieldRange sel = FieldSelection(h);
    FieldWords::setSelection(h, std::min(sel.start, len), std::min(sel.end, len));
    if (W::Caret::get(h) > len) W::Caret::set(h, len);
    InvalidateRect(h, nullptr, TRUE);
    if (HasProp(h, "SERVER")) twProcessDDEData(h, text);
    return 0;
}

LRESULT OnGetValue(HWND h, WPARAM, LPARAM lp) {
    auto* buffer = reinterpret_cast<char*>(lp);
    if (buffer == nullptr) return 0;
    const int limit = W::Limit::get(h);
    DefWindowProcA(h, WM_GETTEXT, limit ? limit + 1 : 80, lp);
    return 0;
}

LRESULT OnValidate(HWND h, WPARAM, LPARAM) {
    FieldText t = ReadFieldText(h);
    MethodShort m(W::Method::get(h));
    return twValidate(h, GXT_TEXT, t.s, m.get(), t.s) ? 0 : -1;
}

LRESULT OnGetType(HWND h, WPARAM, LPARAM lp) {
    if (auto* size = reinterpret_cast<LONG*>(lp)) {
        const int limit = W::Limit::get(h);
        *size = limit ? limit : 80;
    }
    return GXT_TEXT;
}

// ---------------------------------------------------------------------
// Typing

bool FitsWidth(HWND h, const FieldMeasure& m, const char* screenText, char c) {
    return m.text(screenText) < ClientWidth(h) - m.ch(c) - 2;
}

LRESULT OnChar(HWND h, WPARAM wp, LPARAM, const FieldClass&) {
    if (MouseGestureActive(h)) return 0;
    const char typed = static_cast<char>(wp);
    if (static_cast<unsigned char>(typed) < 0x20) return 0;  // control keys come as WM_KEYDOWN

    FieldText t = ReadFieldText(h);
    const FieldRange sel = FieldSelection(h);
    const bool hasSel = !sel.empty();
    const int limit = W::Limit::get(h);
    int caret = std::clamp(static_cast<int>(W::Caret::get(h)), 0, t.length());
    const char c = ConvertCase(h, typed, hasSel ? sel.start : caret);

    // The checks, in this order; each refusal leaves everything as it was.
    if (limit && !hasSel && t.length() >= limit) return Refuse(), 0;
    MethodShort m(W::Method::get(h));
    const char* excluded = m.param("@EXCLUDE");
    if (*excluded && std::strchr(excluded, c)) return Refuse(), 0;
    const char* included = m.param("@INCLUDE");
    if (*included && !std::strchr(included, c)) return Refuse(), 0;
    if (!StyleAccepts(h, c)) return Refuse(), 0;

    FieldText edited = t;
    if (hasSel) caret = DeleteSelection(h, edited, sel);
    if (edited.length() >= kTextMax) return Refuse(), 0;

    FieldMeasure measure(h);
    bool full;
    if (const char* mask = Mask(h)) {
        const int capacity = MaskCapacity(mask);
        FieldScreen before = ToScreen(h, edited.s, caret);
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
    WriteFieldText(h, edited.s);
    W::Caret::set(h, caret + 1);
    ClearFieldSelection(h);
    DrawFocused(h, 2);
    Changed(h, edited.s);
    if (full && MethodFull(W::Method::get(h)).has("@AUTOTAB")) twAutoTab(h);
    return 0;
}

// ---------------------------------------------------------------------
// Keys

// Copies the selection and the character behind it (count = length + 1);
// applications have come to rely on that extra character.
void CopySelection(HWND h, const FieldText& t, FieldRange sel) {
    if (sel.empty()) return;
    const char* shown = t.s;
    FieldScreen sc;
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
    WriteFieldText(h, buffer);
    const int len = static_cast<int>(std::strlen(buffer));
    W::Caret::set(h, len);
    FieldWords::setSelection(h, 0, Mask(h) ? static_cast<int>(std::strlen(ToScreen(h, buffer, 0).s)) : len);
    DrawFocused(h, 5);
    if (HasProp(h, "SERVER")) twProcessDDEData(h, buffer);
}

void MoveCaret(HWND h, const FieldText& t, int to) { MoveFieldCaret(h, t.s, Mask(h), NoFill(h), to); }

void DeleteKey(HWND h, FieldText& t) {
    const FieldRange sel = FieldSelection(h);
    int caret = std::clamp(static_cast<int>(W::Caret::get(h)), 0, t.length());
    if (!sel.empty())
        caret = DeleteSelection(h, t, sel);
    else
        lstrdelc(t.s, caret);
    WriteFieldText(h, t.s);
    W::Caret::set(h, caret);
    ClearFieldSelection(h);
    DrawFocused(h, 5);
    Changed(h, t.s);
}

void Backspace(HWND h, FieldText& t) {
    const FieldRange sel = FieldSelection(h);
    int caret = std::clamp(static_cast<int>(W::Caret::get(h)), 0, t.length());
    if (!sel.empty()) {
        caret = DeleteSelection(h, t, sel);
    } else if (caret > 0) {
        lstrdelc(t.s, caret - 1);
        --caret;
    }
    WriteFieldText(h, t.s);
    W::Caret::set(h, caret);
    ClearFieldSelection(h);
    DrawFocused(h, 5);
    Changed(h, t.s);
}

LRESULT OnKeyDown(HWND h, WPARAM key, LPARAM, const FieldClass&) {
    if (MouseGestureActive(h)) return 0;
    FieldText t = ReadFieldText(h);
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
        FieldMeasure m(h);
        if (caret < len && m.text(t.s, caret) < ClientWidth(h) - 1) MoveCaret(h, t, caret + 1);
        break;
    }
    case VK_TAB: MoveFieldFocus(h); return 0;
    case VK_F1: {
        MethodShort m(W::Method::get(h));
        twProcessHelp(h, m.get());
        return 0;
    }
    case 'C':
        if (!ctrl) return 0;
        CopySelection(h, t, FieldSelection(h));
        return 0;
    case 'X':
        if (!ctrl) return 0;
        CopySelection(h, t, FieldSelection(h));
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
// Window life

void FreeMask(HWND h) { MethodFree(h, MethodSlot{W::Mask::kOffset}); }

LRESULT OnSetFocus(HWND h, WPARAM, LPARAM, const FieldClass&) {
    NotifyParent(h, EN_SETFOCUS);
    FieldText t = ReadFieldText(h);
    if (W::Caret::get(h) > t.length()) W::Caret::set(h, t.length());
    Draw(h, GXDF_ANY);
    return 0;
}

LRESULT OnKillFocus(HWND h, WPARAM, LPARAM, const FieldClass&) {
    NotifyParent(h, EN_KILLFOCUS);
    EndMouseGesture(h);
    DestroyCaret();
    Draw(h, GXDF_ANY | GXDF_NOCARET);
    return 0;
}

LRESULT OnSetText(HWND h, WPARAM wp, LPARAM lp, const FieldClass&) {
    LRESULT r = DefWindowProcA(h, WM_SETTEXT, wp, lp);
    FieldText t = ReadFieldText(h);
    if (W::Caret::get(h) > t.length()) W::Caret::set(h, t.length());
    if (HasProp(h, "SERVER")) twProcessDDEData(h, t.s);
    InvalidateRect(h, nullptr, TRUE);
    UpdateWindow(h);
    return r;
}

// Edit-control messages an application or the drag-and-drop service sends.
LRESULT OnSetSel(HWND h, WPARAM wp, LPARAM lp, const FieldClass&) {
    const FieldView v = View(h);
    const FieldRange sel = SetScreenSelection(h, wp, lp, v.screenLength());
    W::Caret::set(h, v.mask ? v.text.length() : sel.end);
    DrawFocused(h);
    return 0;
}

LRESULT OnReplaceSel(HWND h, WPARAM, LPARAM lp, const FieldClass&) {
    FieldText t = ReadFieldText(h);
    const FieldRange sel = FieldSelection(h);
    int caret = sel.empty() ? std::clamp(static_cast<int>(W::Caret::get(h)), 0, t.length()) : DeleteSelection(h, t, sel);
    const char* insert = lp ? reinterpret_cast<const char*>(lp) : "";
    char out[kFieldText];
    std::snprintf(out, sizeof out, "%.*s%s%s", caret, t.s, insert, t.s + caret);
    WriteFieldText(h, out);
    caret = std::min(caret + static_cast<int>(std::strlen(insert)), static_cast<int>(std::strlen(out)));
    W::Caret::set(h, caret);
    ClearFieldSelection(h);
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

constinit const FieldHandlers kStringHandlers{OnSetMethod, OnSetFocus, OnKillFocus, OnSetText,
                                        OnChar,      OnKeyDown,  OnSetSel,    OnReplaceSel};

const FieldClass kString{
    .on = kStringHandlers,
    .values = {OnSetValue, OnGetValue, OnValidate, OnGetType},
    .method = kMethod,
    .modified = W::Modified::kOffset,
    .limit = W::Limit::kOffset,
    .border3DBits = kField3DBits,
    .border = kFieldBorder,
    .view = View,
    .destroyed = FreeMask,
};

}  // namespace
}  // namespace fk

using namespace fk;

LRESULT WINAPI gxStringWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case GXM_SETLIMIT: return OnSetLimit(h, wp, lp);
    case GXM_SETDROPTARGET: return OnSetDropTarget(h, wp);
    case GXM_MASK: return OnMask(h, wp, lp);
    case GXM_EXCLUDE: return OnCharSet(h, wp, lp, "@EXCLUDE");
    case GXM_INCLUDE: return OnCharSet(h, wp, lp, "@INCLUDE");
    case GXM_AUTOTAB: return OnAutoTab(h, wp, lp);
    case GXM_AUTOFILL: return OnAutoFill(h, wp, lp);
    }
    return EntryFieldProc(h, msg, wp, lp, kString);
}
