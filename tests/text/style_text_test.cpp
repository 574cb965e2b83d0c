// Style tables as text and back, and the choices a style dialog makes with them.

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

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

// Values by equality, not by bits; all of the text or none: an editor never writes half a name.
TEST(StyleText, BitsToTextAndBackAndDialogChoices) {
    EXPECT_EQ((std::vector<std::string>{Text(kTable, 0), Text(kTable, 0x0313), Text(kTable, 0x00F1),
                                        Text(kPickTable, 0), Text(kPickTable, 6), Text(kTable, 0x11, 17),
                                        Text(kTable, 0x11, 16)}),
              (std::vector<std::string>{"", " | X_THREE | X_DOT | X_3D3", " | X_ONE | X_DOT | X_DASH | X_LONG | X_LONGER",
                                        " | P_C", " | P_B", " | X_ONE | X_DOT", ""}));
    char untouched = '#';
    EXPECT_EQ(fk::StyleText(kTable, 0x11, &untouched, 0), 16u);
    EXPECT_EQ(untouched, '#');
    // Names in any case OR together, the first name of a group found ends it; a radio or a border replaces its
    // field, a box clears its bits only.
    EXPECT_EQ((std::vector<uint32_t>{fk::StyleBits(kTable, nullptr), fk::StyleBits(kTable, "| x_three | X_3D3"),
                                     fk::StyleBits(kTable, "X_LONGER | X_DASH"), fk::StyleBits(kPickTable, "P_B P_A"),
                                     fk::ApplyChoice(kTable, 0x0301, 1, true), fk::ApplyChoice(kTable, 0x0303, 6, true),
                                     fk::ApplyChoice(kTable, 0x0030, 2, false), fk::ApplyChoice(kTable, 0, 99, true)}),
              (std::vector<uint32_t>{0, 0x0303, 0x60, 1, 0x0303, 0x0103, 0x0020, 0}));
    EXPECT_EQ(std::pair(fk::ChosenEntry(kTable, 0x0203, kBorderList), fk::ChosenEntry(kTable, 0x0303, 1)),
              std::pair(-1, 1));
}

}  // namespace
