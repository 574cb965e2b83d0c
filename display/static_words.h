// Window words of gxFrame3D32 and gxText3D32 (20 extra bytes each).
#pragma once

#include "frame/method_window.h"
#include "frame/window_words.h"

namespace fk::static_words {

using Font = LongWord<0>;        // WM_SETFONT handle; 0 is the system font
using CharWidth = LongWord<4>;   // average character width of the font
using CharHeight = LongWord<8>;  // character height of the font
inline constexpr MethodSlot kMethod{12};
using Setting = ShortWord<16>;  // set by 0x00C5, read by GXM_GETLIMIT
// bytes 18-19 spare

}  // namespace fk::static_words
