// Masks: application text <-> screen text and caret positions.

#include <gtest/gtest.h>

#include <string>

#include "fields/text/mask.h"

namespace {

const char* const kPhone = "(###) ###-####";

TEST(AppToScrMask, MergesTypedCharactersIntoTheMask) {
    const struct { const char* app; const char* mask; int32_t noFill; const char* screen; } cases[] = {
        {"12", kPhone, 0, "(12 )    -    "}, {"12", kPhone, 1, "(12"}, {"123", kPhone, 1, "(123"},
        {"", kPhone, 0, "(   )    -    "},   {"", kPhone, 1, ""},      {"ab", "", 0, "ab"},
        {"123456789012", kPhone, 0, "(123) 456-789012"},  // extra text stands behind the mask
        {"x", "@@-@", 0, "x - "},
    };
    for (const auto& c : cases) {
        char screen[64];
        twAppToScrMask(screen, c.app, c.mask, 0, c.noFill);
        EXPECT_STREQ(screen, c.screen) << c.app << " / " << c.mask << " / " << c.noFill;
    }
    // Application positions to screen indexes.
    const std::pair<int32_t, int32_t> positions[] = {{0, 1}, {3, 6}, {6, 10}, {10, 14}, {12, 13}, {-1, -1}};
    for (auto [appPos, screenIndex] : positions) {
        char screen[64];
        EXPECT_EQ(twAppToScrMask(screen, "", kPhone, appPos, 0), screenIndex) << appPos;
    }
    char screen[8] = "zz";
    EXPECT_EQ(twAppToScrMask(screen, nullptr, nullptr, 0, 0), 0);
    EXPECT_STREQ(screen, "");
    EXPECT_EQ(twAppToScrMask(nullptr, "12", kPhone, 2, 0), 3);
    EXPECT_EQ(fk::MaskCapacity(nullptr), 0);
}

TEST(ScrToAppMask, RebuildsTheApplicationTextWhileDeletingARange) {
    const struct { const char* screen; int32_t selStart, selEnd; const char* app; int32_t result; } cases[] = {
        {"(123) 456-7890", 2, 3, "134567890", 1},      // deletes the 2
        {"(123) 456-7890", 1, 10, "7890", 0},          // deletes 123) 456-
        {"(12 )    -    ", 14, 14, "12        ", 10},  // before the range blanks count
        {"(12 )    -    ", 0, 0, "12", 0},             // behind it they are empty positions
        {"(123) 456-7890", 6, 99, "123", 3},           // the range runs off the mask
    };
    for (const auto& c : cases) {
        char app[64];
        EXPECT_EQ(fk::ScrToAppMask(app, c.screen, kPhone, c.selStart, c.selEnd), c.result) << c.screen;
        EXPECT_STREQ(app, c.app) << c.screen << " " << c.selStart << ".." << c.selEnd;
    }
}

}  // namespace
