// The window-extra bytes each class registers (for the list and combo
// superclasses: on top of the system class's own). Every layout of window
// words ends exactly here: each declares its words next to its accessors
// and asserts that its last word ends at its class's count, in both builds.
//
// FLDKIT32.dll registers the first figure; FLDKIT64.dll the second, which
// adds 8 bytes for each pointer word, kept behind the 32-bit bytes
// (frame/window_words.h). The two picture classes share their first words,
// so the icon's 64-bit words start behind the bitmap's 16 bytes.
#pragma once

namespace fk {

struct ExtraBytes {
    int bits32;
    int bits64;
    constexpr int here() const { return sizeof(void*) == 8 ? bits64 : bits32; }
};

inline constexpr ExtraBytes kStringExtra{34, 50};     // method string, mask
inline constexpr ExtraBytes kNumericExtra{28, 36};    // method string
inline constexpr ExtraBytes kRealExtra{28, 36};       // method string
inline constexpr ExtraBytes kBitmapExtra{16, 40};     // picture, name, method string
inline constexpr ExtraBytes kIconExtra{14, 40};       // picture, name, method string
inline constexpr ExtraBytes kDateExtra{28, 36};       // method string
inline constexpr ExtraBytes kColorExtra{40, 48};      // method string
inline constexpr ExtraBytes kTableExtra{4, 8};        // method string
inline constexpr ExtraBytes kCBTableExtra{4, 8};      // method string
inline constexpr ExtraBytes kTickerExtra{22, 30};     // method string
inline constexpr ExtraBytes kCurrencyExtra{30, 38};   // method string
inline constexpr ExtraBytes kButtonExtra{18, 34};     // images, method string
inline constexpr ExtraBytes kLineExtra{8, 16};        // method string
inline constexpr ExtraBytes kText3DExtra{20, 28};     // method string
inline constexpr ExtraBytes kFrame3DExtra{20, 28};    // method string

inline constexpr int kStringBytes = kStringExtra.here();
inline constexpr int kNumericBytes = kNumericExtra.here();
inline constexpr int kRealBytes = kRealExtra.here();
inline constexpr int kBitmapBytes = kBitmapExtra.here();
inline constexpr int kIconBytes = kIconExtra.here();
inline constexpr int kDateBytes = kDateExtra.here();
inline constexpr int kColorBytes = kColorExtra.here();
inline constexpr int kTableBytes = kTableExtra.here();
inline constexpr int kCBTableBytes = kCBTableExtra.here();
inline constexpr int kTickerBytes = kTickerExtra.here();
inline constexpr int kCurrencyBytes = kCurrencyExtra.here();
inline constexpr int kButtonBytes = kButtonExtra.here();
inline constexpr int kLineBytes = kLineExtra.here();
inline constexpr int kText3DBytes = kText3DExtra.here();
inline constexpr int kFrame3DBytes = kFrame3DExtra.here();

}  // namespace fk
