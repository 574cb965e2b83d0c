// BMP and ICO files made in the tests: the pictures are written here, byte
// by byte, so that every test knows exactly what its file holds.
#pragma once

#include <stdint.h>

#include <functional>
#include <vector>

namespace fktest {

using Bytes = std::vector<uint8_t>;

inline void Put(Bytes& b, uint32_t v, int n) {
    for (int i = 0; i < n; ++i) b.push_back(static_cast<uint8_t>(v >> (8 * i)));
}

// A BMP file of the given header fields, colour table (0xRRGGBB) and raw
// pixel bytes, with its 14-byte file header unless `bare`.
inline Bytes Bmp(int32_t width, int32_t height, uint16_t bits, uint32_t compression, const std::vector<uint32_t>& colours,
                 const Bytes& pixels, bool bare = false, int64_t colourCount = -1) {
    Bytes b;
    const uint32_t offset = 14 + 40 + 4 * static_cast<uint32_t>(colours.size());
    if (!bare) {
        b.push_back('B'), b.push_back('M');
        Put(b, offset + static_cast<uint32_t>(pixels.size()), 4), Put(b, 0, 4), Put(b, offset, 4);
    }
    Put(b, 40, 4), Put(b, static_cast<uint32_t>(width), 4), Put(b, static_cast<uint32_t>(height), 4);
    Put(b, 1, 2), Put(b, bits, 2), Put(b, compression, 4), Put(b, static_cast<uint32_t>(pixels.size()), 4);
    Put(b, 2835, 4), Put(b, 2835, 4), Put(b, colourCount >= 0 ? static_cast<uint32_t>(colourCount) : static_cast<uint32_t>(colours.size()), 4), Put(b, 0, 4);
    for (uint32_t c : colours) Put(b, c, 4);  // 0x00RRGGBB is blue, green, red, 0 in memory
    b.insert(b.end(), pixels.begin(), pixels.end());
    return b;
}

// Rows of an uncompressed picture, each padded to 32 bits, from pixel(x, y)
// (y = 0 is the top row): palette indexes for 1-8 bits, 0xRRGGBB above.
inline Bytes Rows(int32_t width, int32_t height, uint16_t bits, bool topDown, const std::function<uint32_t(int, int)>& pixel) {
    const int stride = ((width * bits + 31) / 32) * 4;
    Bytes out(static_cast<size_t>(stride) * height, 0);
    for (int row = 0; row < height; ++row) {
        const int y = topDown ? row : height - 1 - row;
        uint8_t* p = out.data() + static_cast<size_t>(row) * stride;
        for (int x = 0; x < width; ++x) {
            const uint32_t v = pixel(x, y);
            if (bits >= 16) {
                for (int i = 0; i < bits / 8; ++i) p[x * (bits / 8) + i] = static_cast<uint8_t>(v >> (8 * i));
            } else {
                const int bit = x * bits, shift = 8 - bits - bit % 8;
                p[bit / 8] |= static_cast<uint8_t>(v << shift);
            }
        }
    }
    return out;
}

// RLE8 of pixel(x, y): runs of equal indexes, an end of line after each
// row (from the bottom up), and the end mark.
inline Bytes Rle8(int32_t width, int32_t height, const std::function<uint32_t(int, int)>& pixel) {
    Bytes out;
    for (int y = height - 1; y >= 0; --y) {
        for (int x = 0; x < width;) {
            int n = 1;
            while (x + n < width && n < 255 && pixel(x + n, y) == pixel(x, y)) ++n;
            out.push_back(static_cast<uint8_t>(n)), out.push_back(static_cast<uint8_t>(pixel(x, y)));
            x += n;
        }
        out.push_back(0), out.push_back(0);
    }
    out.push_back(0), out.push_back(1);
    return out;
}

// An ICO file of square 32-bit images, one solid colour (0xRRGGBB) each,
// fully opaque, with an empty mask.
struct SolidIcon {
    int size;
    uint32_t colour;
};
inline Bytes Ico(const std::vector<SolidIcon>& images) {
    Bytes dir, data;
    Put(dir, 0, 2), Put(dir, 1, 2), Put(dir, static_cast<uint32_t>(images.size()), 2);
    uint32_t offset = 6 + 16 * static_cast<uint32_t>(images.size());
    for (const SolidIcon& s : images) {
        Bytes image;
        Put(image, 40, 4), Put(image, s.size, 4), Put(image, 2 * s.size, 4), Put(image, 1, 2), Put(image, 32, 2);
        for (int i = 0; i < 6; ++i) Put(image, 0, 4);
        for (int i = 0; i < s.size * s.size; ++i) Put(image, 0xFF000000u | s.colour, 4);
        image.resize(image.size() + static_cast<size_t>((s.size + 31) / 32 * 4) * s.size, 0);
        dir.push_back(static_cast<uint8_t>(s.size)), dir.push_back(static_cast<uint8_t>(s.size));
        Put(dir, 0, 2), Put(dir, 1, 2), Put(dir, 32, 2);
        Put(dir, static_cast<uint32_t>(image.size()), 4), Put(dir, offset, 4);
        offset += static_cast<uint32_t>(image.size());
        data.insert(data.end(), image.begin(), image.end());
    }
    dir.insert(dir.end(), data.begin(), data.end());
    return dir;
}

}  // namespace fktest
