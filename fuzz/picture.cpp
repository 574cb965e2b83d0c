// Fuzz target: BMP and ICO reading (fk::picture::Measure, Unpack, PickIcon).
// The input is the file itself. Whatever Measure accepts must lie inside the
// data, and unpack into exactly the measured size; an unpacked DIB is itself
// a picture that measures the same and unpacks to the same bytes. PickIcon's
// image must lie inside the data. Pictures of more than 4 MiB unpacked are
// measured only, to keep the runs fast.
#include <stdint.h>
#include <string.h>

#include <vector>

#include "display/text/picture_parse.h"
#include "support/input.h"

namespace {

using fuzz::check;
using namespace fk::picture;

constexpr size_t kUnpackMost = 4u << 20;

void CheckBmp(const uint8_t* data, size_t size) {
    Layout l;
    if (!Measure(data, size, &l)) return;
    check(l.total == l.headerBytes + l.imageBytes, "total is header and rows");
    check(l.bitsOffset <= size && l.colourOffset <= size, "offsets inside the data");
    const bool rle = l.compression == kRle8 || l.compression == kRle4;
    check(rle || l.imageBytes <= size - l.bitsOffset, "rows inside the data");
    if (l.total > kUnpackMost) return;
    std::vector<uint8_t> out(l.total);
    const bool unpacked = Unpack(data, size, l, out.data(), out.size());
    check(unpacked || rle, "a measured uncompressed picture unpacks");
    check(!Unpack(data, size, l, out.data(), out.size() - 1), "a short output block is refused");
    if (!unpacked) return;
    Layout again;
    check(Measure(out.data(), out.size(), &again), "an unpacked DIB measures");
    check(again.width == l.width && again.height == l.height && again.bitCount == l.bitCount && again.total == l.total,
          "an unpacked DIB keeps its size");
    std::vector<uint8_t> twice(again.total);
    check(Unpack(out.data(), out.size(), again, twice.data(), twice.size()) && twice == out,
          "an unpacked DIB unpacks to itself");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    // An exact copy, so that a read one byte past the data is reported.
    std::vector<uint8_t> copy(data, data + size);
    const uint8_t* p = copy.empty() ? nullptr : copy.data();
    CheckBmp(p, size);
    IconImage image;
    const int32_t want = size > 0 ? data[0] : 32;
    if (PickIcon(p, size, want, &image)) {
        check(image.offset <= size && image.size <= size - image.offset, "icon image inside the data");
        check(image.width > 0 && image.width <= 256 && image.height > 0 && image.height <= 256, "icon size");
    }
    return 0;
}
