// Small painting helpers shared by the display controls.
#pragma once

#include <windows.h>

#include "frame/control.h"  // the parent's colours and brush

namespace fk {

struct FontMetrics {
    LONG avgWidth;
    LONG height;
};

// Average character width and height of font (null: the system font).
FontMetrics ReadFontMetrics(HWND h, HFONT font);

// WM_SETTEXT: default handling, then the control is repainted at once.
LRESULT SetTextAndRepaint(HWND h, WPARAM wp, LPARAM lp);

// Window text of at most 159 characters (the display controls' limit).
int ReadWindowText(HWND h, char (&text)[160]);

}  // namespace fk
