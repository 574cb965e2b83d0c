// The 3D border of the entry fields, drawn around the field on its parent.

#include "display/border.h"
#include "fields/field_common.h"
#include "links/refresh.h"

namespace fk {

LRESULT PaintFieldBorder(HWND field, WPARAM wp, LPARAM lp, const BorderRule& rule) {
    if (!IsWindowVisible(field)) return 0;
    if (GetWindowLongA(field, GWL_STYLE) & WS_VSCROLL) DefWindowProcA(field, WM_NCPAINT, wp, lp);
    return PaintBorder(field, wp, lp, rule);
}

void RefreshFieldBorder(HWND field) { RefreshBorder(field); }

}  // namespace fk
