// Fuzz target: BMP and ICO reading (fk::picture::Measure, Unpack, PickIcon).
// The input is the file itself. Whatever Measure accepts must lie inside the
// data, and unpack into exactly the measured size; an unpacked DIB is itself
// a picture. PickIcon's image must lie inside the data. Pictures of more than
// 1 MiB unpacked are measured only, to keep the runs fast.
#include <stdint.h>
#include <string.h>

#include "display/text/picture_parse.h"
#include "support/input.h"

using fuzz::check;
using namespace fk::picture;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    // An exact copy, so that a read one byte past the data is reported.
    std::vector<uint8_t> copy(data, data + size);
    const uint8_t* p = copy.empty() ? nullptr : copy.data();
    IconImage image;
    if (PickIcon(p, size, size > 0 ? data[0] : 32, &image))
        check(image.offset <= size && image.size <= size - image.offset && image.width > 0 && image.width <= 256 &&
                  image.height > 0 && image.height <= 256,
              "an icon image lies inside the data");
    Layout l;
    if (!Measure(p, size, &l)) return 0;
    const bool rle = l.compression == kRle8 || l.compression == kRle4;
    check(l.total == l.headerBytes + l.imageBytes && l.bitsOffset <= size && l.colourOffset <= size &&
              (rle || l.imageBytes <= size - l.bitsOffset),
          "a measured picture lies inside the data");
    if (l.total > (1u << 20)) return 0;
    std::vector<uint8_t> out(l.total);
    const bool unpacked = Unpack(p, size, l, out.data(), out.size());
    check((unpacked || rle) && !Unpack(p, size, l, out.data(), out.size() - 1),
          "an uncompressed picture unpacks, and a short output block is refused");
    check(!unpacked || Measure(out.data(), out.size(), &l), "an unpacked DIB measures");
    return 0;
}
