// twDraw3D: the 3D border every control draws around itself, on its
// parent's surface, while it handles WM_NCPAINT.

#include "display/bevel.h"
#include "display/text/border_rule.h"
#include "frame/gdi.h"
#include "frame/library.h"
#include "include/fldkit.h"

int WINAPI twDraw3D(HWND hWnd, WORD level) {
    if (!IsWindowVisible(hWnd)) return 0;
    RECT r;
    GetWindowRect(hWnd, &r);
    HWND parent = GetParent(hWnd);
    if (parent == nullptr) return 1;
    fk::WindowDC dc(parent);
    if (dc.get() == nullptr) return 0;
    const bool colour = fk::IsColourDevice(GetDeviceCaps(dc, NUMCOLORS));
    MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&r), 2);
    fk::DrawBevel(dc, r, level, colour, fk::bNewLook != 0);
    return 0;
}
