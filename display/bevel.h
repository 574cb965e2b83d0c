// The drawing of the five border levels on a device context. twDraw3D
// (display/draw3d.cpp) decides the device context, the colours and the look,
// and hands the work to DrawBevel.
#pragma once

#include <windows.h>

namespace fk {

// Draws border level `level` around `window`, a window's rectangle in the
// coordinates of dc. With colour false, every shadow, highlight and grey
// stroke is black (the four-pixel shadow of level 2 keeps its colour). With
// newLook the light indent is the system's sunken edge. Unknown levels draw
// nothing. Every pen lives for one stroke.
void DrawBevel(HDC dc, const RECT& window, WORD level, bool colour, bool newLook);

}  // namespace fk
