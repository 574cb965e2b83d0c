// Border refresh: controls call it when their 3D border, drawn on the
// parent outside the control, must be wiped or redrawn.
#pragma once

#include <windows.h>

namespace fk {
// Invalidates (with erasing) the parent's area under the control grown by
// 6 pixels on every side.
void RefreshBorder(HWND control);
}
