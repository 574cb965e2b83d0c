// gxDate32: the date entry field. Its window text is the raw text, only the
// digits of the date in the order of its style ("12311999"); it is shown
// through a fixed mask that puts the separators in ("12/31/1999"). Digits
// are typed, zeroed and overwritten, never removed.

#include <algorithm>
#include <cctype>
#include <cstring>
#include <ctime>

#include "fields/text/date_text.h"
#include "fields/edit_core.h"
#include "fields/entry_field.h"
#include "fields/text/mask.h"
#include "frame/extra_bytes.h"
#include "frame/method_window.h"
#include "include/fldkit.h"
#include "links/control_links.h"
#include "strings/lstr.h"

namespace fk {

namespace {

struct DateWords : FieldWords {
    using Modified = ShortWord<20>;  // set to 1 by every edit
    using AutoFill = ShortWord<22>;  // 0x0100 with "@AUTOFILL"
    using Method = PtrWord<char, 24, 28>;
};
static_assert(EndsAt<DateWords::Method, DateWords::Method>(kDateExtra.bits32, kDateExtra.bits64));
using W = DateWords;
const MethodSlot kMethod{W::Method::kOffset};

constexpr WORD kAutoFillOn = 0x0100;
// Characters a paste takes from the clipboard at most.
constexpr int kPasteMax = 256;
// The short-date pattern of the system settings and its default.
constexpr char kIntl[] = "intl";
constexpr char kShortDateKey[] = "sShortDate";
constexpr char kShortDateDefault[] = "MM/dd/yy";
// The format query answers the order and the separator.
constexpr UINT kFormatQuery = GXM_DATE_GETFORMAT;

// ---------------------------------------------------------------------
// Small helpers

// The raw text: at most kDateRawMax characters are read.
struct Raw {
    char s[kDateRawMax + 1];
    int length() const { return static_cast<int>(std::strlen(s)); }
};

Raw ReadRaw(HWND h) {
    FieldText t = ReadFieldText(h);
    Raw r{};
    lstrcpynA(r.s, t.s, sizeof r.s);
    return r;
}

uint32_t Style(HWND h) { return static_cast<uint32_t>(GetWindowLongA(h, GWL_STYLE)) & 0xFFFF; }
void SetStyle(HWND h, uint32_t style) {
    const LONG old = GetWindowLongA(h, GWL_STYLE);
    const LONG now = static_cast<LONG>((static_cast<uint32_t>(old) & 0xFFFF0000u) | (style & 0xFFFF));
    if (now != old) SetWindowLongA(h, GWL_STYLE, now);
}

const char* Mask(HWND h) { return DateMask(Style(h)); }
bool NoFill(HWND h) { return (W::AutoFill::get(h) & kAutoFillOn) != 0; }
bool MethodHas(HWND h, const char* keyword) { return MethodFull(W::Method::get(h)).has(keyword); }

int Caret(HWND h, const Raw& r) { return std::clamp(static_cast<int>(W::Caret::get(h)), 0, r.length()); }

// Raw index of a screen index: the placeholders before it, and behind the
// mask one raw character per screen character.
int RawIndex(const char* mask, int screen) {
    const int maskLength = static_cast<int>(std::strlen(mask));
    if (screen > maskLength) return MaskCapacity(mask) + (screen - maskLength);
    int n = 0;
    for (int i = 0; i < screen; ++i)
        if (IsMaskPlaceholder(mask[i])) ++n;
    return n;
}

// The selected digits as a raw range (empty when only separators are
// selected or nothing is).
struct RawRange {
    int start, end;
    bool empty() const { return start >= end; }
};
RawRange SelectedDigits(HWND h, const Raw& r) {
    const FieldRange sel = FieldSelection(h);
    if (sel.empty()) return {0, 0};
    const char* mask = Mask(h);
    return {std::min(RawIndex(mask, sel.start), r.length()), std::min(RawIndex(mask, sel.end), r.length())};
}

// The text model: the raw text through the mask of the style.
FieldView View(HWND h) {
    FieldView v{{}, Mask(h), NoFill(h)};
    lstrcpynA(v.text.s, ReadRaw(h).s, kDateRawMax + 1);
    return v;
}
void Draw(HWND h, UINT flags, int blanks = 0) { DrawView(h, View(h), flags, blanks); }
void DrawFocused(HWND h, int blanks = 0) { DrawViewFocused(h, View(h), blanks); }

// An edit by the user's hand: the text, caret, no selection, the drawing and
// the notices.
void Edited(HWND h, const Raw& r, int caret) {
    WriteFieldText(h, r.s);
    W::Caret::set(h, caret);
    ClearFieldSelection(h);
    DrawFocused(h, 2);
    FieldChanged<W::Modified>(h, r.s);
}

// Sets the raw text as the field's value (through WM_SETTEXT: drawn, and
// pushed to linked clients).
void SetRaw(HWND h, const char* raw) { SendMessageA(h, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(raw)); }

// ---------------------------------------------------------------------
// Format and method string

// The short-date pattern of the system settings. Reading it costs more than
// creating the field around it, so it is kept and read again only after the
// settings key has changed (a dialog of many date fields reads it once). The
// watch is armed before each read, so that a change during the read is not
// missed; where the key cannot be watched, every call reads.
class ShortDatePattern {
public:
    const char* get() {
        if (read_ && changed_ != nullptr && WaitForSingleObject(changed_, 0) == WAIT_TIMEOUT) return pattern_;
        read_ = Watch();
        GetProfileStringA(kIntl, kShortDateKey, kShortDateDefault, pattern_, sizeof pattern_);
        return pattern_;
    }
    ~ShortDatePattern() {
        if (key_ != nullptr) RegCloseKey(key_);
        if (changed_ != nullptr) CloseHandle(changed_);
    }

private:
    bool Watch() {
        if (key_ == nullptr &&
            RegOpenKeyExA(HKEY_CURRENT_USER, "Control Panel\\International", 0, KEY_NOTIFY, &key_) != ERROR_SUCCESS) {
            key_ = nullptr;
            return false;
        }
        if (changed_ == nullptr) changed_ = CreateEventA(nullptr, FALSE, FALSE, nullptr);  // auto-reset
        return changed_ != nullptr &&
               RegNotifyChangeKeyValue(key_, FALSE, REG_NOTIFY_CHANGE_LAST_SET, changed_, TRUE) == ERROR_SUCCESS;
    }
    char pattern_[kShortDateMax + 1] = "";
    HKEY key_ = nullptr;
    HANDLE changed_ = nullptr;
    bool read_ = false;
};
ShortDatePattern g_shortDate;

void ResolveFormat(HWND h, const char* method) { SetStyle(h, ResolveDateStyle(Style(h), method, g_shortDate.get())); }

LRESULT OnSetMethod(HWND h, WPARAM, LPARAM lp, const FieldClass&) {
    MethodReplace(h, kMethod, reinterpret_cast<const char*>(lp));
    const char* method = W::Method::get(h);
    MethodShort m(method);
    if (MethodHas(h, "@DROPTARG")) SetPropA(h, "@WANTDROP", reinterpret_cast<HANDLE>(5));
    ResolveFormat(h, method);
    W::AutoFill::set(h, MethodHas(h, "@AUTOFILL") ? kAutoFillOn : 0);
    if (lstristr(m.param("@PRT"), "gray")) EnableWindow(h, FALSE);
    OpenControlLinks(h, method);
    if (MethodHas(h, "@DATE")) SendMessageA(h, GXM_SETVALUE, 0, 0);
    InvalidateRect(h, nullptr, TRUE);
    return 0;
}

LRESULT OnFormatQuery(HWND h) {
    const uint32_t style = Style(h);
    return MAKELONG(static_cast<unsigned char>(DateSeparator(style)), DateOrder(style));
}

// ---------------------------------------------------------------------
// Values and validation

// The kind of value a message exchanges: wParam, or the style when it is 0.
WPARAM ValueKind(HWND h, WPARAM wp) {
    if (wp != GXT_BYSTYLE) return wp;
    const uint32_t style = Style(h);
    if (style & DATE_CHAR) return GXT_TEXT;
    if (style & DATE_LONG) return GXT_INTEGER;
    return GXT_TMSTRUCT;
}

void FormatInto(Raw& r, const struct tm* date, uint32_t style, const char* method) {
    FormatDateText(r.s, sizeof r.s, date, style, DateBlankWanted(method));
}

LRESULT OnSetValue(HWND h, WPARAM wp, LPARAM lp) {
    if (HasProp(h, "CLIENT")) {
        twRequestDDEData(h);  // the link owns the value
        return 0;
    }
    const uint32_t style = Style(h);
    const char* method = W::Method::get(h);
    Raw r{};
    if (style & kDateToday) {
        const std::time_t now = std::time(nullptr);
        FormatInto(r, std::localtime(&now), style, method);
    } else if (lp != 0) {
        switch (ValueKind(h, wp)) {
        case GXT_INTEGER: {
            const std::time_t t = *reinterpret_cast<const LONG*>(lp);
            FormatInto(r, std::localtime(&t), style, method);
            break;
        }
        case GXT_TMSTRUCT: FormatInto(r, reinterpret_cast<const struct tm*>(lp), style, method); break;
        case GXT_TEXT: lstrcpynA(r.s, reinterpret_cast<const char*>(lp), sizeof r.s); break;
        default: return 0;
        }
    } else if (ReadRaw(h).length() == 0) {
        lstrcpynA(r.s, DateRawWidth(style) == 8 ? "00000000" : "000000", sizeof r.s);
    } else {
        return 0;
    }
    SetRaw(h, r.s);
    return 0;
}

LRESULT OnGetValue(HWND h, WPARAM wp, LPARAM lp) {
    if (lp == 0) return 0;
    Raw r = ReadRaw(h);
    switch (ValueKind(h, wp)) {
    case GXT_TMSTRUCT: {
        auto* date = reinterpret_cast<struct tm*>(lp);
        ParseDateText(r.s, Style(h), date);
        if (date->tm_mon == -1) date->tm_mon = 0;
        return 0;
    }
    case GXT_INTEGER: {
        struct tm work{};
        ParseDateText(r.s, Style(h), &work);
        work.tm_isdst = -1;  // the conversion decides whether summer time applies
        *reinterpret_cast<LONG*>(lp) = static_cast<LONG>(std::mktime(&work));
        return 0;
    }
    case GXT_TEXT: lstrcpynA(reinterpret_cast<char*>(lp), r.s, kDateRawMax + 1); return 0;
    default: return 0;
    }
}

LRESULT OnValidate(HWND h, WPARAM, LPARAM) {
    FieldText t = ReadFieldText(h);
    MethodShort m(W::Method::get(h));
    for (int n = t.length(); n > 0 && t.s[n - 1] == ' '; --n) t.s[n - 1] = 0;
    if (t.s[0] == 0 && !m.has("@MND")) return 0;
    const uint32_t order = DateOrder(Style(h));
    if (order < 2 || order > 7) return 0;
    struct tm date{};
    ParseDateText(t.s, Style(h), &date);
    return twValidate(h, static_cast<int>(GXT_DATE_MMDDYY + order - 2), &date, m.get(), t.s) ? 0 : -1;
}

LRESULT OnGetType(HWND h, WPARAM, LPARAM lp) {
    const uint32_t style = Style(h);
    if (style & DATE_CHAR) {
        if (auto* size = reinterpret_cast<LONG*>(lp)) *size = kDateRawMax;
        return GXT_TEXT;
    }
    return (style & DATE_LONG) ? GXT_INTEGER : GXT_TMSTRUCT;
}

// ---------------------------------------------------------------------
// Typing

// The typed digit fits behind the text: its width, one character and two
// pixels stay inside the client area.
bool FitsAtEnd(HWND h, const Raw& r, char c) {
    FieldMeasure m(h);
    FieldScreen sc = FieldToScreen(r.s, Mask(h), true, 0);
    return m.text(sc.s) + m.ch(c) + 2 < ClientWidth(h);
}

LRESULT OnChar(HWND h, WPARAM wp, LPARAM, const FieldClass&) {
    if (MouseGestureActive(h)) return 0;
    const char c = static_cast<char>(wp);
    if (IsCharAlphaA(c)) return Refuse(), 0;
    if (!std::isdigit(static_cast<unsigned char>(c))) return 0;

    Raw r = ReadRaw(h);
    const int length = r.length();
    const int capacity = MaskCapacity(Mask(h));
    int caret = Caret(h, r);
    const RawRange sel = SelectedDigits(h, r);
    if (!sel.empty()) {
        // The first selected digit is the one typed, the others are zeroed.
        r.s[sel.start] = c;
        for (int i = sel.start + 1; i < sel.end; ++i) r.s[i] = '0';
        caret = sel.start + 1;
    } else {
        if (length >= kDateRawMax) return Refuse(), 0;
        if (caret >= capacity && length >= capacity) return Refuse(), 0;
        if (caret == length && !FitsAtEnd(h, r, c)) return Refuse(), 0;
        lstrinsc(r.s, c, caret);
        ++caret;
    }
    Edited(h, r, caret);
    if (r.length() == capacity && caret == capacity && MethodHas(h, "@AUTOTAB")) twAutoTab(h);
    return 0;
}

// ---------------------------------------------------------------------
// Keys

// Zeroes the selected digits; the caret goes to the first of them.
bool ZeroSelection(HWND h, Raw& r, int* caret) {
    const RawRange sel = SelectedDigits(h, r);
    if (sel.empty()) return false;
    for (int i = sel.start; i < sel.end; ++i) r.s[i] = '0';
    *caret = sel.start;
    return true;
}

void Backspace(HWND h) {
    Raw r = ReadRaw(h);
    int caret = Caret(h, r);
    if (!ZeroSelection(h, r, &caret)) {
        if (caret == 0) return;
        r.s[--caret] = '0';
    }
    Edited(h, r, caret);
}

void DeleteKey(HWND h) {
    Raw r = ReadRaw(h);
    int caret = Caret(h, r);
    if (!ZeroSelection(h, r, &caret)) {
        if (caret >= r.length()) return Refuse();
        r.s[caret++] = '0';
    }
    Edited(h, r, caret);
}

// The selected characters as shown, separators included.
void CopySelection(HWND h) {
    const FieldRange sel = FieldSelection(h);
    if (sel.empty()) return;
    Raw r = ReadRaw(h);
    FieldScreen sc = FieldToScreen(r.s, Mask(h), NoFill(h), 0);
    const int length = static_cast<int>(std::strlen(sc.s));
    if (sel.start >= length) return;
    twClipboardCopyText(h, sc.s + sel.start, std::min(sel.end, length) - sel.start);
}

// The clipboard's digits replace the whole text.
void Paste(HWND h) {
    char buffer[kPasteMax + 1] = "";
    if (!twClipboardPasteText(h, buffer, kPasteMax)) return;
    buffer[kPasteMax] = 0;
    Raw r{};
    int n = 0;
    for (const char* p = buffer; *p != 0 && n < kDateRawMax; ++p)
        if (std::isdigit(static_cast<unsigned char>(*p))) r.s[n++] = *p;
    Edited(h, r, n);
}

// Insert alone puts the caret back where it belongs and shows it.
void PlaceCaretAgain(HWND h) {
    if (GetFocus() != h) return;
    Raw r = ReadRaw(h);
    const int caret = Caret(h, r);
    FieldScreen sc = FieldToScreen(r.s, Mask(h), NoFill(h), caret);
    W::Caret::set(h, std::max(sc.caret, 0));
    FieldPlaceCaret(h, sc.s, true);
    W::Caret::set(h, caret);
    ShowCaret(h);
}

LRESULT OnKeyDown(HWND h, WPARAM key, LPARAM, const FieldClass&) {
    if (MouseGestureActive(h)) return 0;
    Raw r = ReadRaw(h);
    const int length = r.length();
    const int caret = Caret(h, r);
    const bool ctrl = KeyPressed(VK_CONTROL);
    const bool shift = KeyPressed(VK_SHIFT);
    auto move = [&](int to) {
        MoveFieldCaret(h, r.s, Mask(h), NoFill(h), to);
        DrawFocused(h);
    };
    switch (key) {
    case VK_BACK: Backspace(h); return 0;
    case VK_DELETE:
        if (shift) CopySelection(h);
        DeleteKey(h);
        return 0;
    case VK_HOME: move(0); return 0;
    case VK_END: move(length); return 0;
    case VK_LEFT: move(std::max(caret - 1, 0)); return 0;
    case VK_RIGHT: move(std::min(caret + 1, length)); return 0;
    case VK_TAB: MoveFieldFocus(h); return 0;
    case VK_F1: {
        MethodShort m(W::Method::get(h));
        twProcessHelp(h, m.get());
        return 0;
    }
    case VK_INSERT:
        if (ctrl)
            CopySelection(h);
        else if (shift)
            Paste(h);
        else
            PlaceCaretAgain(h);
        return 0;
    // The keys users of edit controls expect as well.
    case 'C':
        if (ctrl) CopySelection(h);
        return 0;
    case 'X':
        if (ctrl) CopySelection(h), DeleteKey(h);
        return 0;
    case 'V':
        if (ctrl) Paste(h);
        return 0;
    default: return 0;
    }
}

// ---------------------------------------------------------------------
// Edit messages

// Selection positions count the separators, as the field shows them.
LRESULT OnSetSel(HWND h, WPARAM wp, LPARAM lp, const FieldClass&) {
    const FieldView v = View(h);
    const FieldRange sel = SetScreenSelection(h, wp, lp, v.screenLength());
    W::Caret::set(h, std::min(RawIndex(v.mask, std::max(sel.start, sel.end)), v.text.length()));
    DrawFocused(h);
    return 0;
}

// Replacing the selection (a drag that moves digits away) zeroes it.
LRESULT OnReplaceSel(HWND h, WPARAM, LPARAM, const FieldClass&) {
    Raw r = ReadRaw(h);
    int caret = Caret(h, r);
    if (ZeroSelection(h, r, &caret)) Edited(h, r, caret);
    return 0;
}

// ---------------------------------------------------------------------
// Window life

void Created(HWND h) {
    if (DateOrder(Style(h)) <= kDateDefault) ResolveFormat(h, "");
}

LRESULT OnSetFocus(HWND h, WPARAM, LPARAM, const FieldClass&) {
    NotifyParent(h, EN_SETFOCUS);
    Raw r = ReadRaw(h);
    W::Caret::set(h, Caret(h, r));
    Draw(h, GXDF_ANY);
    return 0;
}

LRESULT OnKillFocus(HWND h, WPARAM, LPARAM, const FieldClass&) {
    NotifyParent(h, EN_KILLFOCUS);
    EndMouseGesture(h);
    ClearFieldSelection(h);
    DestroyCaret();
    Raw r = ReadRaw(h);
    if (r.length() != 0) {
        Raw normal{};
        NormaliseDateText(normal.s, sizeof normal.s, r.s, Style(h), DateBlankWanted(W::Method::get(h)));
        if (std::strcmp(normal.s, r.s) != 0) SetRaw(h, normal.s);
        Draw(h, GXDF_ANY | GXDF_NOCARET);
    }
    return 0;
}

LRESULT OnSetText(HWND h, WPARAM wp, LPARAM lp, const FieldClass&) {
    Raw r{};
    if (lp != 0) lstrcpynA(r.s, reinterpret_cast<const char*>(lp), sizeof r.s);
    const LRESULT result = DefWindowProcA(h, WM_SETTEXT, wp, reinterpret_cast<LPARAM>(r.s));
    W::Caret::set(h, Caret(h, r));
    const FieldRange sel = FieldSelection(h);
    const int length = FieldScreenLength(r.s, Mask(h), NoFill(h));
    FieldWords::setSelection(h, std::min(sel.start, length), std::min(sel.end, length));
    PushToClients(h, r.s);
    InvalidateRect(h, nullptr, TRUE);
    UpdateWindow(h);
    return result;
}

constinit const FieldHandlers kDateHandlers{OnSetMethod, OnSetFocus, OnKillFocus, OnSetText,
                                        OnChar,      OnKeyDown,  OnSetSel,    OnReplaceSel};

const FieldClass kDate{
    .on = kDateHandlers,
    .values = {OnSetValue, OnGetValue, OnValidate, OnGetType},
    .method = kMethod,
    .modified = W::Modified::kOffset,
    .limit = -1,
    .border3DBits = kDate3DBits,
    .border = kDateBorder,
    .view = View,
    .created = Created,
};

}  // namespace
}  // namespace fk

using namespace fk;

LRESULT WINAPI gxDateWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == kFormatQuery) return OnFormatQuery(h);
    return EntryFieldProc(h, msg, wp, lp, kDate);
}
