// Reading BMP and ICO bytes: what the picture controls and the DIB services
// load, checked before anything is believed.
//
// Pure routines: no windows.h, fixed-width types, so they build natively for
// tests and fuzzing. Every size and offset is checked against the data
// before it is read; a picture that does not fit its bytes is refused.
#pragma once

#include <stddef.h>
#include <stdint.h>

namespace fk::picture {

// The largest picture the library takes: sides of at most 16384 pixels and
// at most 64 MiB of pixel rows once unpacked.
inline constexpr int32_t kMaxSide = 16384;
inline constexpr uint64_t kMaxImageBytes = 64ull << 20;

// Compression codes of the BMP format.
inline constexpr uint32_t kRgb = 0;
inline constexpr uint32_t kRle8 = 1;
inline constexpr uint32_t kRle4 = 2;
inline constexpr uint32_t kBitfields = 3;

// Size of the BITMAPINFOHEADER that every unpacked DIB starts with.
inline constexpr size_t kInfoHeader = 40;

// A BMP file (with or without its 14-byte file header; core, info, V4 and V5
// headers) or a packed DIB, as Measure found it, and the packed DIB that
// Unpack makes of it: an info header, the three masks for bit fields, a
// colour table of 2^bits entries for 1-8 bits, and the rows uncompressed
// (RLE is expanded; bottom-up or top-down as in the source).
struct Layout {
    int32_t width = 0;
    int32_t height = 0;          // negative: rows top-down
    uint16_t bitCount = 0;       // 1, 4, 8, 16, 24 or 32
    uint32_t compression = 0;    // of the source
    uint32_t masks[3] = {};      // red, green, blue (bit fields only)
    bool tripleColours = false;  // core header: 3-byte colour entries
    uint32_t sourceColours = 0;  // colour entries read from the source
    size_t colourOffset = 0;     // where they start
    size_t bitsOffset = 0;       // where the pixel bits start
    uint32_t colours = 0;        // entries of the unpacked colour table
    uint32_t stride = 0;         // bytes of one unpacked row
    size_t headerBytes = 0;      // unpacked header, masks and colour table
    size_t imageBytes = 0;       // unpacked rows
    size_t total = 0;            // headerBytes + imageBytes
};

// Reads the headers of data[0, size). False for anything that is not a
// picture this library draws or that claims more than its bytes hold.
bool Measure(const uint8_t* data, size_t size, Layout* layout);

// Writes the packed DIB of a measured picture into out (at least
// layout.total bytes). False when out is too small or RLE runs leave the
// image (a run past its line's end, a line or a jump past the last row);
// the pixels a short RLE stream leaves out stay colour 0.
bool Unpack(const uint8_t* data, size_t size, const Layout& layout, uint8_t* out, size_t outSize);

// One image of an ICO file: where its bytes lie and its size in pixels.
struct IconImage {
    int32_t width = 0;
    int32_t height = 0;
    uint16_t bitCount = 0;
    size_t offset = 0;
    size_t size = 0;
};

// The image of an ICO file that fits a place of `want` pixels best: the
// largest that is not larger, else the smallest; of equal sizes the one with
// most colours. Only images whose DIB (header, colours, colour and mask
// rows) lies inside their directory entry and the data count. False when
// the data is not an icon file or no image is usable.
bool PickIcon(const uint8_t* data, size_t size, int32_t want, IconImage* image);

}  // namespace fk::picture
