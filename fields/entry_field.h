// The one window procedure of the five entry fields. The string field is
// the model; every other field is described by what it does differently: a
// FieldClass names its window words, its border, its handlers of the
// messages whose handling differs (the text model: raw text, text as shown,
// screen text through a mask; the character filter; the keys; the mouse),
// and its value types. Everything all fields do alike (life cycle, fonts,
// the dialog code, the modified flag, the limit, the method string, drag
// and drop, DDE) is answered here.
//
// A class's own window procedure dispatches the messages only it knows
// (GXM_MASK, the date format query, ...) and hands everything else to
// EntryFieldProc.
#pragma once

#include <windows.h>

#include "display/text/border_rule.h"
#include "fields/field_common.h"
#include "frame/method_window.h"
#include "include/fldkit.h"

namespace fk {

// WM_GETDLGCODE of every entry field: arrows (DLGC_WANTARROWS), characters
// (DLGC_WANTCHARS), EM_SETSEL (DLGC_HASSETSEL), and 0x8000 as it always was.
// Not Tab: the dialog moves the focus on Tab.
inline constexpr LRESULT kFieldDialogCode = DLGC_WANTARROWS | DLGC_WANTCHARS | DLGC_HASSETSEL | 0x8000;
static_assert(kFieldDialogCode == 0x8089);

// The 3D border bits of the string and number fields' styles (STR_3D1 to
// STR_3D5, alike in NUM_, REAL_ and CURR_) and of the date field's (DATE_3D1
// to DATE_3D5, whose third is the first two together).
inline constexpr LONG kField3DBits = STR_3D1 | STR_3D2 | STR_3D3 | STR_3D4 | STR_3D5;
inline constexpr LONG kDate3DBits = DATE_3D1 | DATE_3D2 | DATE_3D3 | DATE_3D4 | DATE_3D5;
static_assert(kField3DBits == 0x7C00 && kDate3DBits == 0x0F00);

struct FieldClass;

// A message the class handles its own way; null: DefWindowProcA.
using FieldHandler = LRESULT (*)(HWND h, WPARAM wp, LPARAM lp, const FieldClass& cls);
// A value message (GXM_SETVALUE, GXM_GETVALUE, GXM_VALIDATE, GXM_GETTYPE).
using ValueHandler = LRESULT (*)(HWND h, WPARAM wp, LPARAM lp);

// Handlers of the masked text model (the string and date fields), through
// FieldClass::view.
LRESULT MaskedPaint(HWND h, WPARAM wp, LPARAM lp, const FieldClass& cls);
LRESULT MaskedLButtonDown(HWND h, WPARAM wp, LPARAM lp, const FieldClass& cls);
LRESULT MaskedMouseMove(HWND h, WPARAM wp, LPARAM lp, const FieldClass& cls);
LRESULT MaskedLButtonUp(HWND h, WPARAM wp, LPARAM lp, const FieldClass& cls);
// A double click selects the whole text, as users of edit controls expect.
LRESULT MaskedDoubleClick(HWND h, WPARAM wp, LPARAM lp, const FieldClass& cls);

// The handlers of the messages whose handling differs. Painting and the
// mouse default to the string field's: the masked text model.
struct FieldHandlers {
    FieldHandler setMethod;  // GXM_SETMETHOD
    FieldHandler setFocus;
    FieldHandler killFocus;
    FieldHandler setText;
    FieldHandler character;   // WM_CHAR
    FieldHandler keyDown;
    FieldHandler setSel;      // EM_SETSEL
    FieldHandler replaceSel;  // EM_REPLACESEL
    FieldHandler paint = MaskedPaint;
    FieldHandler lButtonDown = MaskedLButtonDown;
    FieldHandler mouseMove = MaskedMouseMove;
    FieldHandler lButtonUp = MaskedLButtonUp;
    FieldHandler doubleClick = MaskedDoubleClick;
    FieldHandler vScroll = nullptr;  // the spin
};

struct FieldValues {
    ValueHandler set, get, validate, type;
};

// The masked text model of the string and date fields: the raw text, the
// mask it is shown through (null: none) and whether the empty template is
// left out.
struct FieldView {
    FieldText text;
    const char* mask;
    bool noFill;
    int screenLength() const { return FieldScreenLength(text.s, mask, noFill); }
};

struct FieldClass {
    const FieldHandlers& on;
    FieldValues values;
    MethodSlot method;
    int modified;       // position of the modified flag (16 bits)
    int limit;          // position of the character limit (16 bits); -1: none
    LONG border3DBits;  // hiding the field with one of them wipes its border
    const BorderRule& border;
    // WM_ERASEBKGND's answer once the parent's brush filled the field.
    LRESULT erased = 1;
    // EM_LIMITTEXT answers the new limit (else 0).
    bool limitTextAnswersLimit = false;
    // The masked text model (string, date); null for the number fields.
    FieldView (*view)(HWND h) = nullptr;
    // Extra steps of WM_CREATE and WM_DESTROY (null: none).
    void (*created)(HWND h) = nullptr;
    void (*destroyed)(HWND h) = nullptr;
};

// GXM_SETMETHOD's items every field with a limit reads alike: "@LIMIT" into
// the limit word (0 without it) and "@DROPTARG".
void ReadLimitAndDropTarget(HWND h, MethodFull& method, const FieldClass& cls);

LRESULT EntryFieldProc(HWND h, UINT msg, WPARAM wp, LPARAM lp, const FieldClass& cls);

// Draws a view of the field; blanks (0-5) overwrite the pixels of removed
// characters.
void DrawView(HWND h, const FieldView& v, UINT flags, int blanks = 0);
// The same with the caret only when the field has the focus.
void DrawViewFocused(HWND h, const FieldView& v, int blanks = 0);

// EM_SETSEL's ends clamped to the screen text of a masked field, stored as
// the selection; the caller places the caret.
FieldRange SetScreenSelection(HWND h, WPARAM wp, LPARAM lp, int screenLength);

}  // namespace fk
