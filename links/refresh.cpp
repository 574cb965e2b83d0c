#include "links/refresh.h"

namespace fk {

void RefreshBorder(HWND control) {
    HWND parent = GetParent(control);
    if (parent == nullptr) return;
    RECT r;
    GetClientRect(control, &r);
    MapWindowPoints(control, parent, reinterpret_cast<POINT*>(&r), 2);
    InflateRect(&r, 6, 6);
    InvalidateRect(parent, &r, TRUE);
}

}  // namespace fk
