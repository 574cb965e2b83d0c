// Style bits of the display controls as the design-time text a dialog
// editor shows ("| TEXT3D_FLAT | FRAME3D_BLACK ...") and back.
//
// Pure routines: no windows.h here, so they build natively as well.
// The text forms write into out (size bytes with the terminator; longer text
// is cut, and out is always terminated when size > 0) and return the number
// of characters written. A null text reads as no bits.
#pragma once

#include <stddef.h>
#include <stdint.h>

namespace fk {

// gxFrame3D32: one lettering style (the first of 1, 2, 4, 8, 16 that is set,
// TEXT3D_FLAT when none), then the colour, the inset or raised look and the
// caption position, always one name each.
size_t Frame3DFlagsText(uint32_t style, char* out, size_t size);
// Every bit whose name occurs anywhere in text (case-insensitive).
uint32_t Frame3DFlagsBits(const char* text);

// gxText3D32: the name of every set bit.
size_t Text3DFlagsText(uint32_t style, char* out, size_t size);
uint32_t Text3DFlagsBits(const char* text);

// gxLine32: vertical wins over horizontal both ways; a text naming both
// reads as vertical only.
size_t LineFlagsText(uint32_t style, char* out, size_t size);
uint32_t LineFlagsBits(const char* text);

// gxTicker32 and gxColor32: the name of every set border bit.
size_t TickerFlagsText(uint32_t style, char* out, size_t size);
uint32_t TickerFlagsBits(const char* text);
size_t ColorFlagsText(uint32_t style, char* out, size_t size);
uint32_t ColorFlagsBits(const char* text);

}  // namespace fk
