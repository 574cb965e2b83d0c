// Small pieces every entry field shares: its text, its method string, its
// selection, the parent notices and the window messages that do the same in
// every field. They rely only on the words all fields keep at the same
// positions (FieldWords); class words are passed in.
#pragma once

#include <windows.h>

#include "fields/field_words.h"
#include "frame/buffers.h"
#include "frame/control.h"
#include "frame/gdi.h"
#include "frame/method_text.h"

namespace fk {

// A field's text: at most 159 characters are ever read.
struct FieldText {
    char s[kFieldText];
    int length() const;
};

// The window text through the default procedure.
FieldText ReadFieldText(HWND h);
// Sets the window text through the default procedure (no EN_CHANGE).
void WriteFieldText(HWND h, const char* text);

bool HasProp(HWND h, const char* name);

// The field's text changed by the user's hand: EN_CHANGE, the modified
// flag (a class word) set to 1, and the text pushed to linked clients.
template <typename ModifiedWord>
void FieldChanged(HWND h, const char* text);
void PushToClients(HWND h, const char* text);

// The selection word with its ends in order.
struct FieldRange {
    int start, end;
    bool empty() const { return start == end; }
};
FieldRange FieldSelection(HWND h);
inline void ClearFieldSelection(HWND h) { FieldWords::Selection::set(h, 0); }

int ClientWidth(HWND h);
inline void Refuse() { MessageBeep(0); }
inline bool KeyPressed(int vk) { return (GetKeyState(vk) & 0x8000) != 0; }

// Pixel widths in the field's font.
class FieldMeasure {
public:
    explicit FieldMeasure(HWND h);
    int text(const char* s, int n) const;
    int text(const char* s) const;
    int ch(char c) const { return text(&c, 1); }

private:
    WindowDC dc_;
    SelectObj font_;
};

// Average width and height of the field's font (the system font when none).
void MeasureFieldFont(HWND h);
// The mouse gesture of this field ends: the library-wide flag is cleared and
// the capture released.
void EndMouseGesture(HWND h);
// True while this field holds the mouse for a selection: keys wait.
bool MouseGestureActive(HWND h);

LRESULT FieldGetSel(HWND h, WPARAM wp, LPARAM lp);
LRESULT FieldSetFont(HWND h, WPARAM wp, LPARAM lp);
// The tab key sent to a field (by twAutoTab, for instance): the focus moves
// to the next control (the previous one with Shift held).
void MoveFieldFocus(HWND h);
// Removes the properties links and drag and drop leave on a field.
void FieldReleaseLinks(HWND h);

template <typename ModifiedWord>
void FieldChanged(HWND h, const char* text) {
    NotifyParent(h, EN_CHANGE);
    ModifiedWord::set(h, 1);
    PushToClients(h, text);
}

}  // namespace fk

// ---------------------------------------------------------------------
// Masked text: the screen form, drawing, caret moves and the mouse of a
// field whose text is shown through an input mask (mask null: the text as
// it stands). noFill: no empty template behind the typed characters.
namespace fk {

struct FieldScreen {
    char s[kFieldText + kMethodMax + 2];
    int caret;  // screen index of the application index asked for
};
// At most kFieldText - 1 characters of app and kMethodMax of mask are used.
FieldScreen FieldToScreen(const char* app, const char* mask, bool noFill, int appPos);
int FieldScreenLength(const char* app, const char* mask, bool noFill);

// Draws the text through the mask with the caret (an application index)
// shown at its screen index; blanks (0-5) overwrite the pixels of removed
// characters. Returns twDrawField's result.
int DrawMaskedField(HWND h, const char* text, const char* mask, bool noFill, UINT flags, int blanks = 0);
// The caret goes to application index `to`; with Shift the selection runs
// from the old caret (or the existing anchor) to it, in screen positions.
void MoveFieldCaret(HWND h, const char* text, const char* mask, bool noFill, int to);

}  // namespace fk
