// Display style bits to design-time text and back, and the border each style picks.

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "display/text/border_rule.h"
#include "display/text/display_flags.h"

namespace {

using TextFn = size_t (*)(uint32_t, char*, size_t);

std::string Text(TextFn fn, uint32_t style) {
    char buffer[300];
    std::memset(buffer, 0x55, sizeof buffer);
    const size_t n = fn(style, buffer, sizeof buffer);
    EXPECT_EQ(n, std::strlen(buffer));
    return buffer;
}

// The frame names one lettering, one colour, one look and one position each.
TEST(DisplayFlags, BitsToText) {
    const struct { TextFn fn; uint32_t style; const char* text; } cases[] = {
        {fk::Frame3DFlagsText, 0, " | TEXT3D_FLAT | FRAME3D_BLACK | FRAME3D_RAISED | FRAME3D_RIGHT"},
        {fk::Frame3DFlagsText, 0x0002 | 0x0010 | 0x0020 | 0x0080 | 0x0200,
         " | TEXT3D_LIGHTRAISED | FRAME3D_DARKGREY | FRAME3D_INSET | FRAME3D_LEFT"},
        {fk::Frame3DFlagsText, 0x0600 | 0x0008, " | TEXT3D_LIGHTINSET | FRAME3D_BLACK | FRAME3D_RAISED | FRAME3D_LEFT"},
        {fk::Frame3DFlagsText, 0x0C00 | 0x0040 | 0x0100,
         " | TEXT3D_FLAT | FRAME3D_BLACK | FRAME3D_RAISED | FRAME3D_CENTER"},
        {fk::Text3DFlagsText, 0x1FFF,
         " | TEXT3D_FLAT | TEXT3D_LIGHTRAISED | TEXT3D_HEAVYRAISED | TEXT3D_LIGHTINSET | TEXT3D_HEAVYINSET | TEXT3D_3D1"
         " | TEXT3D_3D2 | TEXT3D_3D3 | TEXT3D_3D4 | TEXT3D_3D5 | TEXT3D_LEFT | TEXT3D_CENTER | TEXT3D_RIGHT"},
        {fk::Text3DFlagsText, 0, ""}, {fk::LineFlagsText, 0x0001, ""}, {fk::LineFlagsText, 0x30, " | GXLINE_VERTICAL"},
        {fk::LineFlagsText, 0x0020, " | GXLINE_HORIZONTAL"}, {fk::TickerFlagsText, 0x4401, " | TICK_3D1 | TICK_3D5"},
        {fk::ColorFlagsText, 0x1800, " | COLOR_3D2 | COLOR_3D3"},
    };
    for (const auto& c : cases) EXPECT_EQ(Text(c.fn, c.style), c.text) << std::hex << c.style;
    char small[8], one[1] = {'x'};  // short buffers are cut and terminated
    std::memset(small, 'x', sizeof small);
    EXPECT_EQ(fk::Frame3DFlagsText(0, small, sizeof small), 7u);
    EXPECT_STREQ(small, " | TEXT");
    EXPECT_EQ(fk::TickerFlagsText(0x0400, one, 1), 0u);
    EXPECT_EQ(one[0], '\0');
    EXPECT_EQ(fk::ColorFlagsText(0x0400, nullptr, 100), 0u);
}

// Names match anywhere, in any case; the line stops at its first match, vertical first.
TEST(DisplayFlags, TextToBits) {
    const struct { uint32_t (*fn)(const char*); const char* text; uint32_t bits; } cases[] = {
        {fk::Frame3DFlagsBits, "ws_child|frame3d_inset | Text3D_HeavyInset|FRAME3D_LEFT", 0x0080 | 0x0010 | 0x0200},
        {fk::Frame3DFlagsBits, "FRAME3D_BLACK FRAME3D_DARKGREY", 0x0060}, {fk::Frame3DFlagsBits, nullptr, 0},
        {fk::Text3DFlagsBits, " | TEXT3D_3D5 | TEXT3D_CENTER", 0x1400}, {fk::LineFlagsBits, "WS_BORDER", 0},
        {fk::LineFlagsBits, "GXLINE_HORIZONTAL | GXLINE_VERTICAL", 0x0010},
        {fk::LineFlagsBits, " | gxline_horizontal", 0x0020},
        {fk::TickerFlagsBits, " | TICK_3D2 | TICK_3D4 | COLOR_3D1", 0x2800},
        {fk::ColorFlagsBits, " | color_3d1 | COLOR_3D5", 0x4400},
    };
    for (const auto& c : cases) EXPECT_EQ(c.fn(c.text), c.bits) << (c.text ? c.text : "null");
    for (uint32_t style = 0; style < 0x2000; ++style) {  // every text read back gives its bits
        ASSERT_EQ(fk::Text3DFlagsBits(Text(fk::Text3DFlagsText, style).c_str()), style);
        const uint32_t border = (style << 2) & 0x7C00;
        ASSERT_EQ(fk::TickerFlagsBits(Text(fk::TickerFlagsText, border).c_str()), border);
        ASSERT_EQ(fk::ColorFlagsBits(Text(fk::ColorFlagsText, border).c_str()), border);
    }
}

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
