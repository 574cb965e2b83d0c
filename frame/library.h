// Library-wide state, written once at process attach (and by WEP) and only
// read afterwards.
#pragma once

#include <windows.h>

namespace fk {

extern HINSTANCE hInstLib;          // the library's own instance
extern BYTE bNewLook;               // Windows 4 or later: system 3D edges
extern WNDPROC lpfnListBoxProc;     // saved "listbox" procedure (gxTable32)
extern WNDPROC lpfnComboBoxProc;    // saved "combobox" procedure (gxCBTable32)
// The base class's window-extra count, written by both superclass
// registrations; the combo box's count wins because it registers last, and
// both superclasses keep their own word at this position.
extern int nBaseWndExtra;

extern HBRUSH hbrColorRed;
extern HBRUSH hbrColorGreen;
extern HBRUSH hbrColorBlue;

// Bitmap slots of the display modules; nothing stores into them yet, WEP
// deletes whatever is there.
inline constexpr int kBitmapSlots = 6;
extern HBITMAP hbmSlots[kBitmapSlots];

}  // namespace fk
