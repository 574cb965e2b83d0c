// What every control of the library does alike, whatever its family: the
// background from the parent's brush, WM_COMMAND notices to the parent and
// the border wiped when the control is hidden. The method-string messages
// are frame/method_window.h's.
#pragma once

#include <windows.h>

namespace fk {

// Asks the parent for its colours (WM_CTLCOLORSTATIC, WM_CTLCOLOREDIT ...)
// on dc; returns the brush it hands back, or null.
HBRUSH ParentColours(HWND h, HDC dc, UINT ctlColorMsg);

// WM_ERASEBKGND with the parent's brush, answering `erased` once the client
// area is filled; default handling when the parent returns none.
LRESULT EraseWithParentBrush(HWND h, WPARAM wp, LPARAM lp, UINT ctlColorMsg, LRESULT erased = 1);

// WM_COMMAND to the parent: identifier and code in wParam, control in lParam.
void NotifyParent(HWND h, WORD code);

// Invalidates (with erasing) the parent's area under the control grown by
// 6 pixels on every side: the 3D border drawn there goes or is drawn again.
void RefreshBorder(HWND control);

// WM_SHOWWINDOW: hiding a control with one of the 3D border bits of
// borderBits in its style wipes the border drawn around it.
LRESULT ShowWindowWipingBorder(HWND h, WPARAM wp, LPARAM lp, LONG borderBits);

}  // namespace fk
