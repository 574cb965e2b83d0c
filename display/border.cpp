#include "display/border.h"

#include "frame/library.h"
#include "include/fldkit.h"

namespace fk {

LRESULT PaintBorder(HWND h, WPARAM wp, LPARAM lp, const BorderRule& rule, WNDPROC base) {
    const auto style = static_cast<uint32_t>(GetWindowLongA(h, GWL_STYLE));
    const BorderChoice choice = ChooseBorder(style, rule, bNewLook != 0);
    if (choice.systemFirst) {
        if (base) {
            CallWindowProcA(base, h, WM_NCPAINT, wp, lp);
        } else {
            DefWindowProcA(h, WM_NCPAINT, wp, lp);
        }
    }
    if (choice.level != 0) twDraw3D(h, choice.level);
    return 0;
}

}  // namespace fk
