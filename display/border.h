// WM_NCPAINT of the library's controls: the border that the control's style
// picks (display/text/border_rule.h), drawn with twDraw3D.
#pragma once

#include <windows.h>

#include "display/text/border_rule.h"

namespace fk {

// Lets the system (base, or DefWindowProcA when null) paint the non-client
// area when the rule says so, then draws the chosen level. Returns 0.
LRESULT PaintBorder(HWND h, WPARAM wp, LPARAM lp, const BorderRule& rule, WNDPROC base = nullptr);

}  // namespace fk
