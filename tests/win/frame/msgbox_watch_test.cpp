// The helper that answers message boxes: without it a failing test would wait for a user forever.

#include <gtest/gtest.h>

#include "tests/support/msgbox_watch.h"

namespace {

TEST(MessageBoxWatcher, AnswersAndRecordsBoxes) {
    fktest::MessageBoxWatcher watcher(IDNO);
    EXPECT_EQ(MessageBoxA(nullptr, "Start it?", "Quintaval", MB_YESNO | MB_ICONQUESTION), IDNO);
    EXPECT_EQ(MessageBoxA(nullptr, "Value out of range.", "Numeric Value", MB_OK | MB_ICONHAND), IDOK);
    ASSERT_EQ(watcher.boxes().size(), 2u);
    EXPECT_EQ(watcher.boxes()[0].text + "|" + watcher.boxes()[0].caption + "|" + watcher.boxes()[1].caption,
              "Start it?|Quintaval|Numeric Value");
}

}  // namespace
