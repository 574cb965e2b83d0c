// The border each style picks, and which screens count as colour ones.

#include <gtest/gtest.h>

#include "display/text/border_rule.h"

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
        EXPECT_EQ(choice.level, c.level) << &c - cases;
        EXPECT_EQ(choice.systemFirst, c.first) << &c - cases;
    }
    const struct { int32_t count; bool colour; } devices[] = {{-1, 0}, {0, 0}, {2, 0}, {3, 1}, {256, 1},
        {0xFFFF, 0}, {0x10000, 0}, {0x10010, 1}, {0x8000, 0}, {0x7FFF, 1}};
    for (const auto& d : devices) EXPECT_EQ(fk::IsColourDevice(d.count), d.colour) << d.count;
}

}  // namespace
