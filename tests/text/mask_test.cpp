// Masks: application text <-> screen text and caret positions.

#include <gtest/gtest.h>

#include <string>

#include "fields/mask.h"

namespace {

const char* const kPhone = "(###) ###-####";

struct ToScreen {
    const char* app;
    const char* mask;
    int32_t noFill;
    const char* screen;
};

TEST(AppToScrMask, MergesTypedCharactersIntoTheMask) {
    const ToScreen cases[] = {
        {"12", kPhone, 0, "(12 )    -    "},
        {"12", kPhone, 1, "(12"},
        {"123", kPhone, 1, "(123"},
        {"", kPhone, 0, "(   )    -    "},
        {"", kPhone, 1, ""},
        {"1234567890", kPhone, 0, "(123) 456-7890"},
        {"123456789012", kPhone, 0, "(123) 456-789012"},  // extra text stands behind the mask
        {"ab", "", 0, "ab"},
        {"x", "@@-@", 0, "x - "},
    };
    for (const ToScreen& c : cases) {
        char screen[64];
        twAppToScrMask(screen, c.app, c.mask, 0, c.noFill);
        EXPECT_STREQ(screen, c.screen) << c.app << " / " << c.mask << " / " << c.noFill;
    }
}

TEST(AppToScrMask, MapsApplicationPositionsToScreenIndexes) {
    const std::pair<int32_t, int32_t> cases[] = {
        {0, 1}, {1, 2}, {3, 6}, {6, 10}, {10, 14}, {12, 13}, {-1, -1},
    };
    for (auto [appPos, screenIndex] : cases) {
        char screen[64];
        EXPECT_EQ(twAppToScrMask(screen, "", kPhone, appPos, 0), screenIndex) << appPos;
    }
}

TEST(AppToScrMask, ToleratesNullTextAndMask) {
    char screen[8] = "zz";
    EXPECT_EQ(twAppToScrMask(screen, nullptr, nullptr, 0, 0), 0);
    EXPECT_STREQ(screen, "");
    EXPECT_EQ(twAppToScrMask(nullptr, "12", kPhone, 2, 0), 3);
}

struct ToApp {
    const char* screen;
    int32_t selStart, selEnd;
    const char* app;
    int32_t result;
};

TEST(ScrToAppMask, RebuildsTheApplicationTextWhileDeletingARange) {
    const ToApp cases[] = {
        {"(123) 456-7890", 0, 0, "1234567890", 0},
        {"(123) 456-7890", 2, 3, "134567890", 1},    // deletes the 2
        {"(123) 456-7890", 1, 10, "7890", 0},        // deletes 123) 456-
        {"(12 )    -    ", 14, 14, "12        ", 10},  // before the range blanks count
        {"(12 )    -    ", 0, 0, "12", 0},           // behind it they are empty positions
        {"(123) 456-7890", 6, 99, "123", 3},         // the range runs off the mask
    };
    for (const ToApp& c : cases) {
        char app[64];
        EXPECT_EQ(fk::ScrToAppMask(app, c.screen, kPhone, c.selStart, c.selEnd), c.result) << c.screen;
        EXPECT_STREQ(app, c.app) << c.screen << " " << c.selStart << ".." << c.selEnd;
    }
}

TEST(Mask, CapacityCountsPlaceholders) {
    EXPECT_EQ(fk::MaskCapacity(kPhone), 10);
    EXPECT_EQ(fk::MaskCapacity("**/**/****"), 8);
    EXPECT_EQ(fk::MaskCapacity("-./"), 0);
    EXPECT_EQ(fk::MaskCapacity(nullptr), 0);
}

}  // namespace
