// The quadrant picture the display tests draw and compare.
#pragma once

#include <windows.h>

#include "tests/support/files.h"
#include "tests/support/picture_bytes.h"

namespace fktest {

// Four quadrants of an 8 x 6 picture: red, green on top; blue, white below.
inline constexpr int kQuadW = 8, kQuadH = 6;
inline uint32_t Quadrant(int x, int y) { return (y < kQuadH / 2 ? 1 : 3) + (x < kQuadW / 2 ? 0 : 1); }
inline const std::vector<uint32_t> kQuadColours = {0, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFFFF};
inline COLORREF QuadrantColour(int x, int y) {
    const uint32_t c = kQuadColours[Quadrant(x, y)];
    return RGB(c >> 16, (c >> 8) & 0xFF, c & 0xFF);
}

}  // namespace fktest
