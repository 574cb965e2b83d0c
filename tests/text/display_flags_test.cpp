// Style bits of the display controls to design-time text and back, and the
// border each control picks for its style.

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "display/text/border_rule.h"
#include "display/text/display_flags.h"

namespace {

using TextFn = size_t (*)(uint32_t, char*, size_t);
using BitsFn = uint32_t (*)(const char*);

std::string Text(TextFn fn, uint32_t style) {
    char buffer[300];
    std::memset(buffer, 0x55, sizeof buffer);
    size_t n = fn(style, buffer, sizeof buffer);
    EXPECT_EQ(n, std::strlen(buffer));
    return buffer;
}

struct TextCase {
    const char* what;
    TextFn fn;
    uint32_t style;
    const char* text;
};

const TextCase kTexts[] = {
    {"frame defaults", fk::Frame3DFlagsText, 0, " | TEXT3D_FLAT | FRAME3D_BLACK | FRAME3D_RAISED | FRAME3D_RIGHT"},
    {"frame first lettering wins", fk::Frame3DFlagsText, 0x0002 | 0x0010 | 0x0020 | 0x0080 | 0x0200,
     " | TEXT3D_LIGHTRAISED | FRAME3D_DARKGREY | FRAME3D_INSET | FRAME3D_LEFT"},
    {"frame left before center", fk::Frame3DFlagsText, 0x0600 | 0x0008,
     " | TEXT3D_LIGHTINSET | FRAME3D_BLACK | FRAME3D_RAISED | FRAME3D_LEFT"},
    {"frame center", fk::Frame3DFlagsText, 0x0C00 | 0x0040 | 0x0100,
     " | TEXT3D_FLAT | FRAME3D_BLACK | FRAME3D_RAISED | FRAME3D_CENTER"},
    {"text3d every bit", fk::Text3DFlagsText, 0x1FFF,
     " | TEXT3D_FLAT | TEXT3D_LIGHTRAISED | TEXT3D_HEAVYRAISED | TEXT3D_LIGHTINSET | TEXT3D_HEAVYINSET"
     " | TEXT3D_3D1 | TEXT3D_3D2 | TEXT3D_3D3 | TEXT3D_3D4 | TEXT3D_3D5 | TEXT3D_LEFT | TEXT3D_CENTER"
     " | TEXT3D_RIGHT"},
    {"text3d none", fk::Text3DFlagsText, 0, ""},
    {"line vertical wins", fk::LineFlagsText, 0x0030, " | GXLINE_VERTICAL"},
    {"line horizontal", fk::LineFlagsText, 0x0020, " | GXLINE_HORIZONTAL"},
    {"line neither", fk::LineFlagsText, 0x0001, ""},
    {"ticker", fk::TickerFlagsText, 0x0400 | 0x4000 | 0x0001, " | TICK_3D1 | TICK_3D5"},
    {"colour", fk::ColorFlagsText, 0x1800, " | COLOR_3D2 | COLOR_3D3"},
};

TEST(DisplayFlags, BitsToText) {
    for (const TextCase& c : kTexts) EXPECT_EQ(Text(c.fn, c.style), c.text) << c.what;
}

struct BitsCase {
    const char* what;
    BitsFn fn;
    const char* text;
    uint32_t bits;
};

const BitsCase kBits[] = {
    {"frame names anywhere, any case", fk::Frame3DFlagsBits, "ws_child|frame3d_inset | Text3D_HeavyInset|FRAME3D_LEFT",
     0x0080 | 0x0010 | 0x0200},
    {"frame both colours", fk::Frame3DFlagsBits, "FRAME3D_BLACK FRAME3D_DARKGREY", 0x0060},
    {"frame null", fk::Frame3DFlagsBits, nullptr, 0},
    {"text3d", fk::Text3DFlagsBits, " | TEXT3D_3D5 | TEXT3D_CENTER", 0x1400},
    {"line both reads vertical", fk::LineFlagsBits, "GXLINE_HORIZONTAL | GXLINE_VERTICAL", 0x0010},
    {"line horizontal", fk::LineFlagsBits, " | gxline_horizontal", 0x0020},
    {"line nothing", fk::LineFlagsBits, "WS_BORDER", 0},
    {"ticker", fk::TickerFlagsBits, " | TICK_3D2 | TICK_3D4", 0x2800},
    {"ticker ignores colour names", fk::TickerFlagsBits, " | COLOR_3D2", 0},
    {"colour", fk::ColorFlagsBits, " | color_3d1 | COLOR_3D5", 0x4400},
};

TEST(DisplayFlags, TextToBits) {
    for (const BitsCase& c : kBits) EXPECT_EQ(c.fn(c.text), c.bits) << c.what;
}

// Every text form read back gives the bits it was made from (for the
// classes whose text names exactly the set bits).
TEST(DisplayFlags, RoundTrip) {
    for (uint32_t style = 0; style < 0x2000; ++style) {
        uint32_t text3d = style & 0x1FFF;
        ASSERT_EQ(fk::Text3DFlagsBits(Text(fk::Text3DFlagsText, text3d).c_str()), text3d);
    }
    for (uint32_t style = 0; style < 0x8000; style += 0x0400) {
        ASSERT_EQ(fk::TickerFlagsBits(Text(fk::TickerFlagsText, style).c_str()), style);
        ASSERT_EQ(fk::ColorFlagsBits(Text(fk::ColorFlagsText, style).c_str()), style);
    }
}

TEST(DisplayFlags, ShortBuffersAreCutAndTerminated) {
    char small[8];
    std::memset(small, 0x55, sizeof small);
    EXPECT_EQ(fk::Frame3DFlagsText(0, small, sizeof small), 7u);
    EXPECT_STREQ(small, " | TEXT");
    char one[1] = {'x'};
    EXPECT_EQ(fk::TickerFlagsText(0x0400, one, 1), 0u);
    EXPECT_EQ(one[0], '\0');
    EXPECT_EQ(fk::ColorFlagsText(0x0400, nullptr, 100), 0u);
}

struct BorderCase {
    const char* what;
    const fk::BorderRule* rule;
    uint32_t style;
    bool newLook;
    uint16_t level;
    bool systemFirst;
};

const BorderCase kBorders[] = {
    {"field 3D1 after the system", &fk::kFieldBorder, 0x0400, false, 1, true},
    {"field first bit wins", &fk::kFieldBorder, 0x0800 | 0x4000, true, 2, false},
    {"field 3D3 after the system", &fk::kFieldBorder, 0x1000, true, 4, true},
    {"field 3D4", &fk::kFieldBorder, 0x2000, false, 8, false},
    {"field 3D5", &fk::kFieldBorder, 0x4000, false, 16, false},
    {"field none, new look", &fk::kFieldBorder, 0x0003, true, 16, false},
    {"field none, old look", &fk::kFieldBorder, 0, false, 0, true},
    {"date bits", &fk::kDateBorder, 0x0200, false, 2, false},
    {"text3d 3D1 after the system", &fk::kText3DBorder, 0x0020, true, 1, true},
    {"text3d 3D3 alone", &fk::kText3DBorder, 0x0080, true, 4, false},
    {"text3d 3D5", &fk::kText3DBorder, 0x1000 | 0x0400, true, 16, false},
    {"text3d none is the system's even with the new look", &fk::kText3DBorder, 0x0E1F, true, 0, true},
    {"ticker 3D3 alone", &fk::kTickerBorder, 0x1000, true, 4, false},
    {"ticker none, new look", &fk::kTickerBorder, 0, true, 16, false},
    {"colour 3D4 is the outdent", &fk::kColorBorder, 0x2000, true, 4, false},
    {"colour 3D5 is the outdent", &fk::kColorBorder, 0x4000, true, 4, false},
    {"colour none, old look", &fk::kColorBorder, 0, false, 0, true},
};

TEST(BorderRule, FirstSetBitPicksTheLevel) {
    for (const BorderCase& c : kBorders) {
        fk::BorderChoice choice = fk::ChooseBorder(c.style, *c.rule, c.newLook);
        EXPECT_EQ(choice.level, c.level) << c.what;
        EXPECT_EQ(choice.systemFirst, c.systemFirst) << c.what;
    }
}

TEST(BorderRule, ColourDeviceReadsTheCountAsSigned16Bits) {
    const struct {
        int32_t count;
        bool colour;
    } cases[] = {{-1, false}, {0, false}, {2, false}, {3, true}, {256, true}, {0xFFFF, false}, {0x10000, false},
                 {0x10010, true}, {0x8000, false}, {0x7FFF, true}};
    for (const auto& c : cases) EXPECT_EQ(fk::IsColourDevice(c.count), c.colour) << c.count;
}

}  // namespace
