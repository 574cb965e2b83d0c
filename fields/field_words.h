// The window words every entry field keeps at the same positions, read by
// the editing core (drawing, caret, mouse selection).
#pragma once

#include <windows.h>

#include "frame/window_words.h"

namespace fk {

struct FieldWords {
    using Font = HandleWord<HFONT, 0>;  // font from WM_SETFONT; 0 = system font
    using AveWidth = LongWord<4>;    // average character width
    using CharHeight = LongWord<8>;  // character height
    using Selection = LongWord<12>;  // low word: anchor, high word: moving end
    using Caret = LongWord<16>;      // caret index into the displayed text

    static HFONT font(HWND h) { return Font::get(h); }
    static int anchor(HWND h) { return LOWORD(Selection::get(h)); }
    static int movingEnd(HWND h) { return HIWORD(Selection::get(h)); }
    static void setSelection(HWND h, int anchor, int moving) {
        Selection::set(h, MAKELONG(static_cast<WORD>(anchor), static_cast<WORD>(moving)));
    }
};

}  // namespace fk
