// Window words of gxFrame3D32 and gxText3D32.
#pragma once

#include "frame/extra_bytes.h"
#include "frame/method_window.h"
#include "frame/window_words.h"

namespace fk::static_words {

using Font = HandleWord<HFONT, 0>;  // WM_SETFONT handle; 0 is the system font
using CharWidth = LongWord<4>;   // average character width of the font
using CharHeight = LongWord<8>;  // character height of the font
using Method = PtrWord<char, 12, 20>;
inline constexpr MethodSlot kMethod{Method::kOffset};
using Setting = ShortWord<16>;  // set by 0x00C5, read by GXM_GETLIMIT
using Spare = SpareBytes<18, 2>;
static_assert(EndsAt<Spare, Method>(kText3DExtra.bits32, kText3DExtra.bits64) &&
              EndsAt<Spare, Method>(kFrame3DExtra.bits32, kFrame3DExtra.bits64));

}  // namespace fk::static_words
