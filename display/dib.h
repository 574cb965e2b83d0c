// Pictures from files and resources, read through the checked parser of
// display/text/picture_parse.h: the DIB services and the picture controls.
#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

namespace fk {

// The bytes of a file (at most kMaxPictureFile); empty when it cannot be read.
inline constexpr size_t kMaxPictureFile = 128u << 20;
std::vector<uint8_t> ReadPictureFile(const char* path);

// A device bitmap for the screen of BMP bytes (file or packed DIB), with
// palette realized first when given; null when the bytes are no picture.
HBITMAP BitmapFromBytes(const uint8_t* data, size_t size, HPALETTE palette);

// A bitmap resource of a module (a packed DIB), read through the same
// checks; null when there is none.
HBITMAP BitmapFromResource(HINSTANCE module, const char* name);

// The icon of ICO bytes whose image fits a square of `want` pixels best.
HICON IconFromBytes(const uint8_t* data, size_t size, int want);

// A resource name as written in a window text or method string: "#12"
// names the number 12, anything else is the name itself. Valid while text is.
LPCSTR ResourceName(const char* text);

}  // namespace fk
