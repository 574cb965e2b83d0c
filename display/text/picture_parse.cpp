#include "display/text/picture_parse.h"

#include <string.h>

namespace fk::picture {
namespace {

constexpr size_t kFileHeader = 14;
constexpr size_t kCoreHeader = 12;

// Little-endian reads; callers have checked that the bytes are there.
uint16_t U16(const uint8_t* p) { return static_cast<uint16_t>(p[0] | (p[1] << 8)); }
uint32_t U32(const uint8_t* p) {
    return static_cast<uint32_t>(p[0]) | (static_cast<uint32_t>(p[1]) << 8) | (static_cast<uint32_t>(p[2]) << 16) |
           (static_cast<uint32_t>(p[3]) << 24);
}
int32_t I32(const uint8_t* p) { return static_cast<int32_t>(U32(p)); }
void Put16(uint8_t* p, uint32_t v) { p[0] = static_cast<uint8_t>(v), p[1] = static_cast<uint8_t>(v >> 8); }
void Put32(uint8_t* p, uint32_t v) {
    for (int i = 0; i < 4; ++i) p[i] = static_cast<uint8_t>(v >> (8 * i));
}

// [offset, offset + length) lies inside [0, size).
bool Inside(size_t offset, uint64_t length, size_t size) { return offset <= size && length <= size - offset; }

bool PaletteBits(uint16_t bits) { return bits == 1 || bits == 4 || bits == 8; }

// Row size and image size of an uncompressed picture; false beyond the limits.
bool RowsFit(int32_t width, int32_t height, uint16_t bits, uint32_t* stride, size_t* image) {
    if (width <= 0 || width > kMaxSide || height == 0 || height < -kMaxSide || height > kMaxSide) return false;
    const uint64_t rowBytes = ((static_cast<uint64_t>(width) * bits + 31) / 32) * 4;
    const uint64_t rows = static_cast<uint64_t>(height < 0 ? -static_cast<int64_t>(height) : height);
    if (rowBytes * rows > kMaxImageBytes) return false;
    *stride = static_cast<uint32_t>(rowBytes);
    *image = static_cast<size_t>(rowBytes * rows);
    return true;
}

bool MeasureCore(const uint8_t* h, Layout* l) {
    l->width = U16(h + 4);
    l->height = U16(h + 6);
    l->bitCount = U16(h + 10);
    l->compression = kRgb;
    l->tripleColours = true;
    if (U16(h + 8) != 1) return false;
    return PaletteBits(l->bitCount) || l->bitCount == 24;
}

// Info, V4 and V5 headers (40, 52, 56, 108, 124 bytes); the masks of bit
// fields stand in the header from 52 bytes on, else right behind it.
bool MeasureInfo(const uint8_t* data, size_t size, size_t at, uint32_t headerSize, Layout* l, size_t* tableAt) {
    const uint8_t* h = data + at;
    l->width = I32(h + 4);
    l->height = I32(h + 8);
    l->bitCount = U16(h + 14);
    l->compression = U32(h + 16);
    const uint32_t used = U32(h + 32);
    if (U16(h + 12) != 1) return false;
    switch (l->compression) {
    case kRgb:
        if (!PaletteBits(l->bitCount) && l->bitCount != 16 && l->bitCount != 24 && l->bitCount != 32) return false;
        break;
    case kRle8:
    case kRle4:
        // RLE pictures are bottom-up only.
        if (l->bitCount != (l->compression == kRle8 ? 8 : 4) || l->height <= 0) return false;
        break;
    case kBitfields:
        if (l->bitCount != 16 && l->bitCount != 32) return false;
        break;
    default:
        return false;
    }
    *tableAt = at + headerSize;
    if (l->compression == kBitfields) {
        size_t maskAt = at + kInfoHeader;
        if (headerSize == kInfoHeader) {
            if (!Inside(*tableAt, 12, size)) return false;
            *tableAt += 12;
        }
        for (int i = 0; i < 3; ++i) l->masks[i] = U32(data + maskAt + 4 * i);
    }
    // A colour table larger than the pixels can index is refused; for deeper
    // pictures it is an optional hint that is skipped.
    const uint32_t most = PaletteBits(l->bitCount) ? (1u << l->bitCount) : 256u;
    if (used > most) return false;
    l->sourceColours = used != 0 ? used : (PaletteBits(l->bitCount) ? most : 0);
    return true;
}

void PutPixel(uint8_t* row, uint16_t bits, int32_t x, uint8_t value) {
    if (bits == 8) {
        row[x] = value;
    } else if (x & 1) {
        row[x / 2] = static_cast<uint8_t>((row[x / 2] & 0xF0) | (value & 0x0F));
    } else {
        row[x / 2] = static_cast<uint8_t>((row[x / 2] & 0x0F) | (value << 4));
    }
}

// Expands RLE8 or RLE4 rows (bottom-up) into out. Runs that leave their
// line or the image refuse the whole picture.
bool ExpandRle(const uint8_t* data, size_t size, const Layout& l, uint8_t* rows) {
    const bool four = l.compression == kRle4;
    const int32_t width = l.width, height = l.height;
    size_t p = l.bitsOffset;
    int32_t x = 0, y = 0;
    while (Inside(p, 2, size)) {
        const uint8_t count = data[p], value = data[p + 1];
        p += 2;
        if (count != 0) {
            if (y >= height || count > width - x) return false;
            for (int i = 0; i < count; ++i) {
                const uint8_t pixel = four ? ((i & 1) ? (value & 0x0F) : (value >> 4)) : value;
                PutPixel(rows + static_cast<size_t>(y) * l.stride, l.bitCount, x++, pixel);
            }
            continue;
        }
        switch (value) {
        case 0:  // end of line
            x = 0;
            if (++y > height) return false;
            break;
        case 1:  // end of picture
            return true;
        case 2:  // jump right and up
            if (!Inside(p, 2, size)) return false;
            x += data[p], y += data[p + 1];
            p += 2;
            if (x > width || y > height) return false;
            break;
        default: {  // a literal run of `value` pixels, padded to a word
            const size_t bytes = four ? (value + 1u) / 2 : value;
            const size_t padded = (bytes + 1) & ~static_cast<size_t>(1);
            if (y >= height || value > width - x || !Inside(p, padded, size)) return false;
            for (int i = 0; i < value; ++i) {
                const uint8_t b = data[p + (four ? i / 2 : i)];
                const uint8_t pixel = four ? ((i & 1) ? (b & 0x0F) : (b >> 4)) : b;
                PutPixel(rows + static_cast<size_t>(y) * l.stride, l.bitCount, x++, pixel);
            }
            p += padded;
        }
        }
    }
    return true;  // the stream ended without its end mark: what came is kept
}

}  // namespace

bool Measure(const uint8_t* data, size_t size, Layout* layout) {
    if (data == nullptr || layout == nullptr) return false;
    Layout l;
    size_t at = 0;
    size_t fileBitsOffset = 0;
    if (size >= kFileHeader && data[0] == 'B' && data[1] == 'M') {
        at = kFileHeader;
        fileBitsOffset = U32(data + 10);
    }
    if (!Inside(at, 4, size)) return false;
    const uint32_t headerSize = U32(data + at);
    size_t tableAt = 0;
    if (headerSize == kCoreHeader) {
        if (!Inside(at, kCoreHeader, size) || !MeasureCore(data + at, &l)) return false;
        l.sourceColours = PaletteBits(l.bitCount) ? (1u << l.bitCount) : 0;
        tableAt = at + kCoreHeader;
    } else if (headerSize == 40 || headerSize == 52 || headerSize == 56 || headerSize == 108 || headerSize == 124) {
        if (!Inside(at, headerSize, size) || !MeasureInfo(data, size, at, headerSize, &l, &tableAt)) return false;
    } else {
        return false;
    }
    if (!RowsFit(l.width, l.height, l.bitCount, &l.stride, &l.imageBytes)) return false;

    const size_t entry = l.tripleColours ? 3 : 4;
    l.colourOffset = tableAt;
    if (fileBitsOffset != 0) {
        // The file header says where the bits are; a colour table may not
        // run into them (old core files are cut to what fits).
        if (fileBitsOffset < tableAt || fileBitsOffset > size) return false;
        const size_t room = (fileBitsOffset - tableAt) / entry;
        if (l.tripleColours && room < l.sourceColours) l.sourceColours = static_cast<uint32_t>(room);
        if (l.sourceColours > room) return false;
        l.bitsOffset = fileBitsOffset;
    } else {
        if (!Inside(tableAt, static_cast<uint64_t>(l.sourceColours) * entry, size)) return false;
        l.bitsOffset = tableAt + l.sourceColours * entry;
    }
    if (l.compression == kRle8 || l.compression == kRle4) {
        if (!Inside(l.bitsOffset, 2, size)) return false;
    } else if (!Inside(l.bitsOffset, l.imageBytes, size)) {
        return false;
    }
    l.colours = PaletteBits(l.bitCount) ? (1u << l.bitCount) : 0;
    l.headerBytes = kInfoHeader + (l.compression == kBitfields ? 12 : 0) + l.colours * 4;
    l.total = l.headerBytes + l.imageBytes;
    *layout = l;
    return true;
}

bool Unpack(const uint8_t* data, size_t size, const Layout& l, uint8_t* out, size_t outSize) {
    if (data == nullptr || out == nullptr || outSize < l.total || l.total != l.headerBytes + l.imageBytes) return false;
    memset(out, 0, l.total);
    Put32(out, kInfoHeader);
    Put32(out + 4, static_cast<uint32_t>(l.width));
    Put32(out + 8, static_cast<uint32_t>(l.height));
    Put16(out + 12, 1);
    Put16(out + 14, l.bitCount);
    Put32(out + 16, l.compression == kBitfields ? kBitfields : kRgb);
    Put32(out + 20, static_cast<uint32_t>(l.imageBytes));
    Put32(out + 32, l.colours);
    uint8_t* table = out + kInfoHeader;
    if (l.compression == kBitfields) {
        for (int i = 0; i < 3; ++i) Put32(table + 4 * i, l.masks[i]);
        table += 12;
    }
    const size_t entry = l.tripleColours ? 3 : 4;
    const uint32_t copied = l.sourceColours < l.colours ? l.sourceColours : l.colours;
    if (!Inside(l.colourOffset, static_cast<uint64_t>(copied) * entry, size)) return false;
    for (uint32_t i = 0; i < copied; ++i) memcpy(table + 4 * i, data + l.colourOffset + i * entry, 3);

    uint8_t* rows = out + l.headerBytes;
    if (l.compression == kRle8 || l.compression == kRle4) return ExpandRle(data, size, l, rows);
    if (!Inside(l.bitsOffset, l.imageBytes, size)) return false;
    memcpy(rows, data + l.bitsOffset, l.imageBytes);
    return true;
}

namespace {

constexpr size_t kIconDir = 6;
constexpr size_t kIconEntry = 16;

// The DIB of one icon image: header, colours, colour rows, mask rows, all
// inside its bytes.
bool IconImageFits(const uint8_t* p, size_t size, IconImage* image) {
    if (size < kInfoHeader || U32(p) != kInfoHeader) return false;  // PNG images are not drawn
    const int32_t width = I32(p + 4), doubled = I32(p + 8);
    const uint16_t bits = U16(p + 14);
    const uint32_t used = U32(p + 32);
    if (U32(p + 16) != kRgb || width <= 0 || width > 256 || doubled <= 0 || doubled > 512 || (doubled & 1)) return false;
    if (!PaletteBits(bits) && bits != 24 && bits != 32) return false;
    const uint32_t most = PaletteBits(bits) ? (1u << bits) : 0;
    if (used > most) return false;
    const uint64_t colours = used != 0 ? used : most;
    const int32_t height = doubled / 2;
    const uint64_t colourRows = ((static_cast<uint64_t>(width) * bits + 31) / 32) * 4 * height;
    const uint64_t maskRows = ((static_cast<uint64_t>(width) + 31) / 32) * 4 * height;
    if (kInfoHeader + colours * 4 + colourRows + maskRows > size) return false;
    image->width = width;
    image->height = height;
    image->bitCount = bits;
    return true;
}

// Is a better than b for a place of `want` pixels?
bool Better(const IconImage& a, const IconImage& b, int32_t want) {
    const bool aFits = a.width <= want && a.height <= want, bFits = b.width <= want && b.height <= want;
    if (aFits != bFits) return aFits;
    if (a.width != b.width) return aFits ? a.width > b.width : a.width < b.width;
    return a.bitCount > b.bitCount;
}

}  // namespace

bool PickIcon(const uint8_t* data, size_t size, int32_t want, IconImage* image) {
    if (data == nullptr || image == nullptr || size < kIconDir) return false;
    if (U16(data) != 0 || U16(data + 2) != 1) return false;
    const uint16_t count = U16(data + 4);
    if (count == 0 || !Inside(kIconDir, static_cast<uint64_t>(count) * kIconEntry, size)) return false;
    bool found = false;
    IconImage best;
    for (uint16_t i = 0; i < count; ++i) {
        const uint8_t* e = data + kIconDir + i * kIconEntry;
        IconImage candidate;
        candidate.size = U32(e + 8);
        candidate.offset = U32(e + 12);
        if (!Inside(candidate.offset, candidate.size, size)) continue;
        if (!IconImageFits(data + candidate.offset, candidate.size, &candidate)) continue;
        if (!found || Better(candidate, best, want)) best = candidate, found = true;
    }
    if (found) *image = best;
    return found;
}

}  // namespace fk::picture
