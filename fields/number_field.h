// The number fields (numeric, real, currency) share everything but their
// values: focus, painting, the 3D border, keys, the spin, the mouse, the
// selection messages, the method string with "@LIMIT", "@DROPTARG",
// "@CLIENT" and "@SERVER", drag and drop, DDE and help. A class describes
// what it does differently in a NumberClass and its window procedure
// names its value handlers there; the entry-field procedure
// (fields/entry_field.h) runs them on the number fields' handlers.
//
// Text and positions: the window text is the value. A class may show it
// differently (NumberClass::shown, the currency field's formatting): the
// shown text is what focus, paint and kill focus draw, and the selection
// counts in it: EM_SETSEL clamps to it, the mouse selects in it, and a
// typed character, Backspace, Delete and the copy keys cut or copy the
// selection out of it (the result becomes the window text). The caret is an
// index into the window text.
#pragma once

#include <windows.h>

#include <initializer_list>

#include "fields/entry_field.h"
#include "frame/extra_bytes.h"
#include "frame/method_window.h"
#include "include/fldkit.h"

namespace fk {

// The words of the number fields behind the ones every entry field keeps.
// The method-string pointer follows them, at a position of each class's own
// (FieldClass::method): 24 for numeric and real, 26 for currency, whose
// country index sits at 24.
struct NumberWords : FieldWords {
    using Limit = ShortWord<20>;     // character limit; 0 = none
    using Modified = ShortWord<22>;  // set to 1 when the user changes the text
};

// The numeric and real fields: the method-string pointer right behind.
struct NumericWords : NumberWords {
    using Method = PtrWord<char, 24, 28>;
};
static_assert(EndsAt<NumericWords::Method, NumericWords::Method>(kNumericExtra.bits32, kNumericExtra.bits64) &&
              EndsAt<NumericWords::Method, NumericWords::Method>(kRealExtra.bits32, kRealExtra.bits64));

// Style bit all number classes share (NUM_, REAL_, CURR_ alike).
inline constexpr LONG kNumberRightJust = 0x0010;

// Draw codes: focused (1, right-justified 5), at rest after the focus left
// (2 / 6), inside WM_PAINT (16 / 20). twDrawField gives bit 2 no meaning;
// the resting look comes from the field lacking the focus.
inline constexpr UINT kDrawFocused = 0x01;
inline constexpr UINT kDrawResting = 0x02;
inline constexpr UINT kDrawPaint = GXDF_PAINT;

// What a class makes of a typed character (WM_CHAR), before the limit.
enum class Typed {
    Take,    // goes on through the limit and width checks into the text
    Ignore,  // dropped without a sound
    Refuse,  // MessageBeep(0), nothing changes
    Done,    // the class handled it itself (drawing included)
};

// How the number fields handle the messages whose handling differs from
// the string field's.
extern const FieldHandlers kNumberHandlers;

// The entry-field description of a number class: its value handlers and
// where its method-string pointer lives.
constexpr FieldClass NumberFieldClass(FieldValues values, MethodSlot method, bool limitTextAnswersLimit = false) {
    return FieldClass{
        .on = kNumberHandlers,
        .values = values,
        .method = method,
        .modified = NumberWords::Modified::kOffset,
        .limit = NumberWords::Limit::kOffset,
        .border3DBits = kField3DBits,
        .border = kFieldBorder,
        .erased = 0,
        .limitTextAnswersLimit = limitTextAnswersLimit,
    };
}

struct NumberClass : FieldClass {
    // The class's character rules (null: every character is taken). text:
    // the window text; selection: a non-empty selection exists (it will be
    // replaced).
    Typed (*filter)(HWND field, char c, const FieldText& text, bool selection);
    // The shown text of a window text (null: the window text itself). At
    // most 159 characters.
    void (*shown)(HWND field, const char* text, FieldText& out) = nullptr;
    // WM_KILLFOCUS, after the common steps and before the resting look is
    // drawn (null: nothing).
    void (*leaving)(HWND field) = nullptr;
    // GXM_SETMETHOD, after "@LIMIT" and "@DROPTARG" were read and before
    // the links open; method is the kept copy, null when there is none.
    void (*methodSet)(HWND field, const char* method) = nullptr;
    // WM_KILLFOCUS keeps the selection word (the real field).
    bool keepsSelectionOnLeaving = false;
};

// Pieces for the classes' own handlers.

// Value types: a class lists its type codes, each with the style bit that
// asks for it, in the order it tries them.
struct ValueTypeRow {
    LONG styleBit;
    int code;
};
using ValueTypes = std::initializer_list<ValueTypeRow>;
// Setting and getting: wParam alone when given (0 when it is none of the
// codes), else the first row whose bit is in the style; 0: none.
int ExchangeType(HWND h, WPARAM wp, ValueTypes rows);
// Validating and GXM_GETTYPE: the first row whose bit is in the style or
// whose code is wParam; 0: none.
int ChooseType(HWND h, WPARAM wp, ValueTypes rows);
// GXM_GETTYPE: ChooseType's answer; for text the size goes to *lp as well
// (WriteTextSize).
int AnswerType(HWND h, WPARAM wp, LPARAM lp, ValueTypes rows);

bool IsRightJustified(HWND h);
// A draw code for this field: the right-justified form when it is.
UINT NumberDrawCode(HWND h, UINT code);
// Draws text with a draw code; left-justified fields get blanks (at most 5)
// behind it to overwrite the pixels of removed characters.
void DrawNumberText(HWND h, const char* text, UINT code, int blanks = 0);
// The shown text of the field's current window text.
FieldText ShownNumberText(HWND h, const NumberClass& cls);

// Copy of the method string, at most 256 characters (validation).
MethodShort NumberMethod(HWND h, const NumberClass& cls);
bool NumberMethodHas(HWND h, const NumberClass& cls, const char* keyword);
// The argument of keyword converted as a decimal integer, or absent when
// the method string lacks the keyword (the whole string is searched).
int32_t NumberMethodInt(HWND h, const NumberClass& cls, const char* keyword, int32_t absent);

// A value set by the application: the window text through the default
// procedure (no EN_CHANGE), a repaint asked for, and the text handed to
// linked clients of a server.
void SetNumberValue(HWND h, const char* text);
// GXM_GETTYPE's size: the limit, or 80 without one, into *lp when lp is not
// null.
void WriteTextSize(HWND h, LPARAM lp);
// twValidate with the field's method string (256 characters) and text:
// 0 when the value passes, -1 when it fails.
LRESULT ValidateNumber(HWND h, const NumberClass& cls, int type, void* value, const FieldText& text);

}  // namespace fk
