// A drag with the mouse as a control's own handlers see it: the press on the source, then the move that starts
// the drag, whose loop takes the move and the release over the target queued before it.
#pragma once

#include <windows.h>

namespace fktest {

// from: the source's client point pressed; at: the target's client point released over.
inline void DragOnto(HWND source, POINT from, HWND target, POINT at = {5, 5}) {
    MapWindowPoints(target, source, &at, 1);
    SendMessageA(source, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(from.x, from.y));
    PostMessageA(source, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(at.x, at.y));
    PostMessageA(source, WM_LBUTTONUP, 0, MAKELPARAM(at.x, at.y));
    SendMessageA(source, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(from.x + 2, from.y + 2));
}

}  // namespace fktest
