// Small painting helpers shared by the display controls.
#pragma once

#include <windows.h>

namespace fk {

struct FontMetrics {
    LONG avgWidth;
    LONG height;
};

// Average character width and height of font (null: the system font).
FontMetrics ReadFontMetrics(HWND h, HFONT font);

// Asks the parent for its colours (WM_CTLCOLORSTATIC, WM_CTLCOLOREDIT ...)
// on dc; returns the brush it hands back, or null.
HBRUSH ParentColours(HWND h, HDC dc, UINT ctlColorMsg);

// WM_ERASEBKGND with the parent's brush; default handling when the parent
// returns none.
LRESULT EraseWithParentBrush(HWND h, WPARAM wp, LPARAM lp, UINT ctlColorMsg);

// WM_SETTEXT: default handling, then the control is repainted at once.
LRESULT SetTextAndRepaint(HWND h, WPARAM wp, LPARAM lp);

// Window text of at most 159 characters (the display controls' limit).
int ReadWindowText(HWND h, char (&text)[160]);

}  // namespace fk
