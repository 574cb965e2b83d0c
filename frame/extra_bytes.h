// The window-extra bytes each class registers (for the list and combo
// superclasses: on top of the system class's own). Every layout of window
// words ends exactly here: each declares its words next to its accessors
// and asserts that its last word ends at its class's count.
#pragma once

namespace fk {

inline constexpr int kStringBytes = 34;
inline constexpr int kNumericBytes = 28;
inline constexpr int kRealBytes = 28;
inline constexpr int kBitmapBytes = 16;
inline constexpr int kIconBytes = 14;
inline constexpr int kDateBytes = 28;
inline constexpr int kColorBytes = 40;
inline constexpr int kTableBytes = 4;
inline constexpr int kCBTableBytes = 4;
inline constexpr int kTickerBytes = 22;
inline constexpr int kCurrencyBytes = 30;
inline constexpr int kButtonBytes = 18;
inline constexpr int kLineBytes = 8;
inline constexpr int kText3DBytes = 20;
inline constexpr int kFrame3DBytes = 20;

}  // namespace fk
