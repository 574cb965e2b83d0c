// The accessible descriptions of the fifteen classes, and the few events
// the classes raise at the places where what they show changes.
#pragma once

#include <windows.h>

#include <string>

#include "access/accessible.h"

namespace fk {

// The five entry fields; owner is the field's FieldClass.
extern const AccessClass kEntryFieldAccess;
// The text an entry field shows (its mask's template left out when nothing
// is typed, trailing blanks cut).
std::string FieldShownText(HWND h, const void* owner);
// The messages after which an entry field may show another text.
bool MayChangeFieldText(UINT msg);

extern const AccessClass kTableAccess;
extern const AccessClass kCBTableAccess;
// The messages to the combo table, or to its edit part, after which it may
// show another key (an edit part's EN_CHANGE tells of a change already
// made: RaiseValueChangeUnlessWatched).
bool MayChangeComboText(UINT msg, WPARAM wp);
extern const AccessClass kButtonAccess;
// gxBitmap32 and gxIcon32.
extern const AccessClass kPictureAccess;
extern const AccessClass kText3DAccess;
extern const AccessClass kFrame3DAccess;
extern const AccessClass kLineAccess;
extern const AccessClass kTickerAccess;
bool MayChangeTickerText(UINT msg);
extern const AccessClass kColorAccess;

// The table list's selection moved to index (-1: none): the row is
// announced as selected, and as focused while the list has the focus.
void RaiseRowSelected(HWND h, LRESULT index);
// The list took the focus: its selected row is announced.
void RaiseRowFocused(HWND h);
// A colour component (0-2) changed: the component, then the colour.
void RaiseColourChanged(HWND h, int component);
// GXM_SETVALUE: each component that changed, then the colour once.
void RaiseColoursChanged(HWND h, const bool changed[3]);

// A name the application gives any control in its method string,
// "@ACCNAME(text)": it comes before every other rule (a picture button has
// no text of its own to be named by). Empty when there is none.
std::string GivenName(HWND h);

}  // namespace fk
