// Display rules: the border each style picks, and BMP and ICO reading (what is unpacked, and every lie refused).

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "display/text/border_rule.h"
#include "display/text/picture_parse.h"
#include "tests/support/picture_bytes.h"

namespace {

// The first set bit picks the level; the colour count is a signed 16-bit number.
TEST(BorderRule, FirstSetBitPicksTheLevel) {
    using fk::kFieldBorder, fk::kText3DBorder, fk::kTickerBorder, fk::kColorBorder;
    const struct { const fk::BorderRule& rule; uint32_t style; bool newLook; uint16_t level; bool first; } cases[] = {
        {kFieldBorder, 0x0400, 0, 1, 1},  {kFieldBorder, 0x0800 | 0x4000, 1, 2, 0}, {kFieldBorder, 0x1000, 1, 4, 1},
        {kFieldBorder, 0x2000, 0, 8, 0},  {kFieldBorder, 0x4000, 0, 16, 0},         {kFieldBorder, 0x0003, 1, 16, 0},
        {kFieldBorder, 0, 0, 0, 1},       {fk::kDateBorder, 0x0200, 0, 2, 0},      {kText3DBorder, 0x0020, 1, 1, 1},
        {kText3DBorder, 0x0080, 1, 4, 0}, {kText3DBorder, 0x1400, 1, 16, 0},       {kText3DBorder, 0x0E1F, 1, 0, 1},
        {kTickerBorder, 0x1000, 1, 4, 0}, {kTickerBorder, 0, 1, 16, 0},            {kColorBorder, 0x2000, 1, 4, 0},
        {kColorBorder, 0x4000, 1, 4, 0},  {kColorBorder, 0, 0, 0, 1},
    };
    for (const auto& c : cases) {
        const fk::BorderChoice choice = fk::ChooseBorder(c.style, c.rule, c.newLook);
        EXPECT_EQ(choice.level * 2 + choice.systemFirst, c.level * 2 + c.first) << &c - cases;
    }
    const struct { int32_t count; bool colour; } devices[] = {{-1, 0}, {0, 0}, {2, 0}, {3, 1}, {256, 1},
        {0xFFFF, 0}, {0x10000, 0}, {0x10010, 1}, {0x8000, 0}, {0x7FFF, 1}};
    for (const auto& d : devices) EXPECT_EQ(fk::IsColourDevice(d.count), d.colour) << d.count;
}

using namespace fk::picture;
using fktest::Bytes;

Bytes Unpacked(const Bytes& file, Layout* layout) {
    if (!Measure(file.data(), file.size(), layout)) return {};
    Bytes out(layout->total);
    return Unpack(file.data(), file.size(), *layout, out.data(), out.size()) ? out : Bytes{};
}

// A little-endian word; 0xFFFFFFFF past the end (what a failed unpack gives).
uint32_t Word(const Bytes& b, size_t at) {
    return at + 4 > b.size() ? ~0u : b[at] | b[at + 1] << 8 | b[at + 2] << 16 | uint32_t(b[at + 3]) << 24;
}

// The bytes from at on; none past the end.
Bytes From(const Bytes& b, size_t at) { return at < b.size() ? Bytes(b.begin() + at, b.end()) : Bytes{}; }

TEST(PictureParse, UnpacksRleCoreHeadersBitFieldsAndPlainRows) {
    auto index = [](int x, int y) { return uint32_t(x < 3 ? 1 : 2 + y); };
    Layout l;
    Bytes rle8 = Unpacked(fktest::Bmp(7, 4, 8, kRle8, {0, 0xFF0000, 0xFF00, 0xFF, 0xFFFFFF}, fktest::Rle8(7, 4, index)), &l);
    EXPECT_EQ(From(rle8, l.headerBytes), fktest::Rows(7, 4, 8, false, index));
    EXPECT_EQ(Word(rle8, 16), kRgb);

    // RLE4: a run of alternating 1 and 2, a literal 3 4 5, end of line, a jump, end.
    const Bytes rle4 = {4, 0x12, 0, 3, 0x34, 0x50, 0, 0, 0, 2, 1, 0, 2, 0x66, 0, 1};
    Bytes four = Unpacked(fktest::Bmp(8, 2, 4, kRle4, std::vector<uint32_t>(16, 0x111111), rle4), &l);
    EXPECT_EQ(From(four, l.headerBytes), (Bytes{0x12, 0x12, 0x34, 0x50, 0x06, 0x60, 0, 0}));

    // Uncompressed rows come over as they are, behind a table of 2^bits entries.
    const Bytes rows = fktest::Rows(9, 2, 1, false, [](int x, int) { return x & 1u; });
    Bytes one = Unpacked(fktest::Bmp(9, 2, 1, kRgb, {0, 0xFFFFFF}, rows, true), &l);
    EXPECT_EQ(From(one, 40 + 2 * 4), rows);

    // A core header: 16-bit sizes and 3-byte colours become an info header and quads.
    Bytes core = {'B', 'M', 0, 0, 0, 0, 0, 0, 0, 0, 32, 0, 0, 0, 12, 0, 0, 0, 2, 0, 1, 0, 1, 0, 1, 0,
                  0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x80, 0, 0, 0};
    Bytes fromCore = Unpacked(core, &l);
    EXPECT_EQ(Word(fromCore, 4), 2u);
    EXPECT_EQ(Word(fromCore, 40 + 4), 0x00665544u);
    Bytes core24 = {'B', 'M', 30, 0, 0, 0, 0, 0, 0, 0, 26, 0, 0, 0, 12, 0, 0, 0, 1, 0, 1, 0, 1, 0, 24, 0, 1, 2, 3, 0};
    const Bytes fromCore24 = Unpacked(core24, &l);  // true colour: no table
    EXPECT_EQ(fromCore24.size(), 44u);
    EXPECT_EQ(Word(fromCore24, 40), 0x00030201u);

    // 16-bit bit fields: the masks follow the unpacked header.
    Bytes fields = fktest::Bmp(1, 1, 16, kBitfields, {0xF800, 0x07E0, 0x001F}, {0xFF, 0xFF, 0, 0}, false, 0);
    Bytes fromFields = Unpacked(fields, &l);
    EXPECT_EQ(Word(fromFields, 16), kBitfields);
    EXPECT_EQ(Word(fromFields, 40), 0xF800u);
    // A V4 header holds the masks itself: the rows follow it directly.
    Bytes v4(fields.begin(), fields.begin() + 14 + 40 + 12);
    v4.resize(14 + 108, 0);
    v4.insert(v4.end(), fields.begin() + 14 + 40 + 12, fields.end());
    v4[10] = 14 + 108, v4[14] = 108;  // the rows' offset, the header's size
    EXPECT_EQ(Word(Unpacked(v4, &l), 40), 0xF800u);
}

TEST(PictureParse, RefusesWhatDoesNotFitItsBytes) {
    auto index = [](int, int) { return 1u; };
    const Bytes good = fktest::Bmp(4, 4, 8, kRgb, {0, 0xFFFFFF}, fktest::Rows(4, 4, 8, false, index));
    auto with = [](Bytes b, size_t at, uint32_t v, int n = 4) {
        for (int i = 0; i < n && at + i < b.size(); ++i) b[at + i] = uint8_t(v >> (8 * i));
        return b;
    };
    auto rle = [](const Bytes& stream) { return fktest::Bmp(4, 2, 8, kRle8, {0, 0xFFFFFF}, stream); };
    const struct { const char* name; Bytes file; } cases[] = {
        {"empty", {}}, {"truncated header", Bytes(good.begin(), good.begin() + 30)},
        {"truncated rows", Bytes(good.begin(), good.end() - 1)}, {"zero width", with(good, 18, 0)},
        {"zero height", with(good, 22, 0)},                      {"height INT_MIN", with(good, 22, 0x80000000u)},
        {"offset past the end", with(good, 10, 0x7FFFFFF0u)},    {"offset inside the header", with(good, 10, 20)},
        {"palette of 2^31", with(good, 46, 0x80000000u)},        {"unknown header size", with(good, 14, 64)},
        {"two planes", with(good, 26, 2, 2)},                    {"JPEG inside", with(good, 30, 4)},
        {"RLE8 top-down", with(rle({4, 1, 0, 1}), 22, uint32_t(-2))},
        {"a text named .bmp", Bytes{'h', 'e', 'l', 'l', 'o', ' ', 'w', 'o', 'r', 'l', 'd', '\n', 0, 0, 0, 0}},
    };
    for (const auto& c : cases) {
        Layout l;
        EXPECT_FALSE(Measure(c.file.data(), c.file.size(), &l)) << c.name;
    }
    // The limits themselves: 16384 pixels a side, 64 MiB of rows (an RLE picture needs no bytes for them).
    auto sized = [&](int32_t w, int32_t h) { return fktest::Bmp(w, h, 8, kRgb, {0}, fktest::Rows(w, h < 0 ? -h : h, 8, h < 0, index)); };
    const struct { const char* name; Bytes file; bool accepted; } limits[] = {
        {"16384 wide", with(rle({0, 1}), 18, 16384), true},  {"16385 wide", with(rle({0, 1}), 18, 16385), false},
        {"16384 high", with(rle({0, 1}), 22, 16384), true},  {"16385 high", with(rle({0, 1}), 22, 16385), false},
        {"16384 top-down", sized(1, -16384), true},           {"16385 top-down", sized(1, -16385), false},
        {"64 MiB", with(with(rle({0, 1}), 18, 16384), 22, 4096), true},
        {"64 MiB and a row", with(with(rle({0, 1}), 18, 16384), 22, 4097), false},
    };
    for (const auto& c : limits) {
        Layout l;
        EXPECT_EQ(Measure(c.file.data(), c.file.size(), &l), c.accepted) << c.name;
    }
    // Runs that leave their line or the picture measure well but do not unpack.
    const struct { const char* name; Bytes stream; } runs[] = {
        {"run past the line", {5, 1, 0, 1}},         {"literal past the line", {0, 5, 1, 1, 1, 1, 1, 0, 0, 1}},
        {"literal past the data", {0, 4, 1, 1}},     {"lines past the top", {0, 0, 0, 0, 0, 0, 1, 1}},
        {"jump past the top", {0, 2, 0, 3, 1, 1}},   {"jump past the line", {0, 2, 5, 0}},
    };
    for (const auto& r : runs) {
        Layout l;
        Bytes file = rle(r.stream);
        ASSERT_TRUE(Measure(file.data(), file.size(), &l)) << r.name;
        Bytes out(l.total);
        EXPECT_FALSE(Unpack(file.data(), file.size(), l, out.data(), out.size())) << r.name;
    }
}

}  // namespace
