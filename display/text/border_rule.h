// Which 3D border a control draws around itself, from its style bits.
//
// Pure rules: no windows.h here, so they build natively as well. Every
// control answers WM_NCPAINT through PaintBorder (display/border.h), which
// applies one of the rules below; the entry fields use kFieldBorder (or
// kDateBorder) too.
#pragma once

#include <stdint.h>

namespace fk {

// Border levels of twDraw3D.
inline constexpr uint16_t kLevelHeavyIndent = 1;
inline constexpr uint16_t kLevelShadow = 2;
inline constexpr uint16_t kLevelOutdent = 4;
inline constexpr uint16_t kLevelIndentFrame = 8;
inline constexpr uint16_t kLevelLightIndent = 16;

struct BorderRule {
    uint32_t bits[5];      // the class's _3D1 .. _3D5 style bits, tested in this order
    uint16_t levels[5];    // the level each of them draws
    uint8_t systemFirst;   // bit i set: with _3D(i+1) the system paints the non-client area first
    bool newLookWhenNone;  // no bit set: level 16 with the new look (else the system paints);
                           // false: the system always paints
};

struct BorderChoice {
    uint16_t level;    // 0: no border of ours
    bool systemFirst;  // let the system paint the non-client area before drawing
};

// The first bit of the rule that is set in style wins. Without one, the new
// look draws the light indent where the rule allows it; otherwise the
// non-client area is left to the system.
constexpr BorderChoice ChooseBorder(uint32_t style, const BorderRule& rule, bool newLook) {
    for (int i = 0; i < 5; ++i) {
        if (style & rule.bits[i]) return {rule.levels[i], ((rule.systemFirst >> i) & 1) != 0};
    }
    if (rule.newLookWhenNone && newLook) return {kLevelLightIndent, false};
    return {0, true};
}

// A device counts as a colour device when its colour count, read as a signed
// 16-bit number, is above 2; true-colour screens report -1 and so draw their
// borders in black. The borders have always been drawn this way.
constexpr bool IsColourDevice(int32_t numColors) { return static_cast<int16_t>(numColors) > 2; }

// String, numeric, real and currency fields.
inline constexpr BorderRule kFieldBorder{{0x0400, 0x0800, 0x1000, 0x2000, 0x4000}, {1, 2, 4, 8, 16}, 0x05, true};
// The date field keeps its border bits lower in the style word.
inline constexpr BorderRule kDateBorder{{0x0100, 0x0200, 0x0300, 0x0400, 0x0800}, {1, 2, 4, 8, 16}, 0x05, true};
// gxText3D32: the system paints only before the heavy indent, and always
// when no bit is set.
inline constexpr BorderRule kText3DBorder{{0x0020, 0x0040, 0x0080, 0x0100, 0x1000}, {1, 2, 4, 8, 16}, 0x01, false};
inline constexpr BorderRule kTickerBorder{{0x0400, 0x0800, 0x1000, 0x2000, 0x4000}, {1, 2, 4, 8, 16}, 0x01, true};
// gxColor32 draws the outdent for its three last bits.
inline constexpr BorderRule kColorBorder{{0x0400, 0x0800, 0x1000, 0x2000, 0x4000}, {1, 2, 4, 4, 4}, 0x01, true};

// gxBitmap32 and gxIcon32 keep their border bits where the fields do.
inline constexpr BorderRule kPictureBorder = kFieldBorder;

// Any of the five border bits of the ticker and colour controls.
inline constexpr uint32_t kAny3DBits = 0x7C00;

}  // namespace fk
