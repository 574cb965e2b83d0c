// Style tables as text and back, and the choices a style dialog makes with them.

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "design/style_text.h"

namespace {

using fk::kBorderList;
using fk::kOwnBox;

// A value field (low four bits), two own boxes, a radio group whose names
// prefix one another, and a border value field (DATE_3D3 = 3D1 | 3D2).
const fk::StyleName kNames[] = {
    {"X_ONE", 1, 0x000F, 1},   {"X_THREE", 3, 0x000F, 1}, {"X_DOT", 0x10, 0x10, kOwnBox}, {"X_DASH", 0x20, 0x20, kOwnBox},
    {"X_LONG", 0x40, 0x40, 2}, {"X_LONGER", 0x80, 0x80, 2}, {"X_3D1", 0x100, 0xF00, kBorderList},
    {"X_3D3", 0x300, 0xF00, kBorderList},
};
const fk::StyleGroupRule kRules[] = {{2, false, -1, true}};
const fk::StyleTable kTable{kNames, 8, kRules, 1};
// One name of each group always, with a fallback (as a frame writes itself).
const fk::StyleName kPick[] = {{"P_A", 1, 1, 1}, {"P_B", 2, 2, 1}, {"P_C", 4, 4, 1}};
const fk::StyleGroupRule kPickRules[] = {{1, true, 2, true}};
const fk::StyleTable kPickTable{kPick, 3, kPickRules, 1};

std::string Text(const fk::StyleTable& table, uint32_t style, size_t size = 200) {
    char out[200];
    std::memset(out, '#', sizeof out);
    fk::StyleText(table, style, out, size);
    return std::string(out, strnlen(out, sizeof out));
}

TEST(StyleText, BitsToText) {
    EXPECT_EQ(Text(kTable, 0), "");
    EXPECT_EQ(Text(kTable, 0x0313), " | X_THREE | X_DOT | X_3D3");  // values by equality, not by bits
    EXPECT_EQ(Text(kTable, 0x00F1), " | X_ONE | X_DOT | X_DASH | X_LONG | X_LONGER");
    EXPECT_EQ(Text(kPickTable, 0), " | P_C");
    EXPECT_EQ(Text(kPickTable, 6), " | P_B");
}

// All of the text or none: an editor never writes half a name.
TEST(StyleText, ShortBuffersGetNothing) {
    const std::string whole = " | X_ONE | X_DOT";
    EXPECT_EQ(fk::StyleText(kTable, 0x11, nullptr, 0), whole.size());
    EXPECT_EQ(Text(kTable, 0x11, whole.size() + 1), whole);
    EXPECT_EQ(Text(kTable, 0x11, whole.size()), "");
    EXPECT_EQ(Text(kTable, 0x11, 1), "");
    char untouched = '#';
    fk::StyleText(kTable, 0x11, &untouched, 0);
    EXPECT_EQ(untouched, '#');
}

TEST(StyleText, TextToBits) {
    EXPECT_EQ(fk::StyleBits(kTable, nullptr), 0u);
    EXPECT_EQ(fk::StyleBits(kTable, "| x_three | X_3D3"), 0x0303u);  // any case; names OR together
    EXPECT_EQ(fk::StyleBits(kTable, "X_LONGER | X_DASH"), 0x60u);     // the first name of the group found ends it
    EXPECT_EQ(fk::StyleBits(kPickTable, "P_B P_A"), 1u);
}

TEST(StyleText, DialogChoices) {
    EXPECT_EQ(fk::ApplyChoice(kTable, 0x0301, 1, true), 0x0303u);  // a radio replaces its field
    EXPECT_EQ(fk::ApplyChoice(kTable, 0x0303, 6, true), 0x0103u);  // so does a border
    EXPECT_EQ(fk::ApplyChoice(kTable, 0x0030, 2, false), 0x0020u);  // a box clears its bits only
    EXPECT_EQ(fk::ApplyChoice(kTable, 0, 99, true), 0u);
    EXPECT_EQ(fk::ChosenEntry(kTable, 0x0203, kBorderList), -1);
    EXPECT_EQ(fk::ChosenEntry(kTable, 0x0303, 1), 1);
}

}  // namespace
