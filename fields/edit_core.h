// The editing core shared by the entry fields: drawing, caret, mouse
// selection. The exported routines are declared in include/fldkit.h.
#pragma once

#include <windows.h>

namespace fk {

// Library-wide state of one mouse gesture in one field: only one field is
// under the mouse at a time.
struct EditState {
    int anchor = 0;         // where the selection began
    int movingEnd = 0;      // where it ends now
    int drawnStart = 0;     // range drawn last
    int drawnEnd = 0;
    bool selecting = false;  // a mouse selection is in progress
    bool changed = false;    // the selection changed since it was drawn
    bool masked = false;     // the field being handled has a mask
};
extern EditState g_edit;

// Places the caret of a left-aligned field without painting.
void FieldPlaceCaret(HWND field, const char* text, bool recreate);

// Pixel width of the first n characters of text in the field's font.
int TextExtent(HDC dc, const char* text, int n);

}  // namespace fk
