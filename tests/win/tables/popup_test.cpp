// The table popup: shown below a field, picked with keys or the mouse.
#include <gtest/gtest.h>

#include <string>

#include "include/fldkit.h"
#include "tests/support/window.h"
#include "tests/win/tables/popup_driver.h"

namespace {

using fktest::PopupDriver;
using fktest::PopupInput;

std::string Take(HGLOBAL g) {
    if (g == nullptr) return "<none>";
    std::string s = static_cast<const char*>(GlobalLock(g));
    GlobalUnlock(g);
    GlobalFree(g);
    return s;
}

HWND g_doomed = nullptr;
void CALLBACK DestroyDoomed(HWND, UINT, UINT_PTR id, DWORD) {
    KillTimer(nullptr, id);
    DestroyWindow(g_doomed);
}

class TablePopup : public ::testing::Test {
protected:
    void SetUp() override {
        path = fktest::WriteTable("fk_popup.tbl", "PAR,Paris,FR\r\nROM,Rome,IT\r\nOSL,Oslo,NO\r\n");
        twFreeTable(path.c_str());
        parent = fktest::MakeParent();
    }
    void TearDown() override {
        twFreeTable(path.c_str());
        DeleteFileA(path.c_str());
    }
    HGLOBAL Show(DWORD mask, int x = 10, int y = 20, int cx = 80, int cy = 48) {
        return twShowTable(parent, path.c_str(), mask, x, y, cx, cy, ',', 256, 0, 0, 0, nullptr, 0);
    }
    std::string path;
    fktest::UniqueWindow parent;
};

TEST_F(TablePopup, KeysPickALine) {
    PopupDriver driver(path.c_str(), {{PopupInput::Key, VK_DOWN}, {PopupInput::Key, VK_RETURN}});
    EXPECT_EQ(Take(Show(0)), "ROM,Rome,IT");
    ASSERT_TRUE(driver.seen());
    EXPECT_EQ(driver.owner(), parent.get());
    EXPECT_EQ(driver.selectedAtStart(), 0);
    EXPECT_EQ(driver.items(), (std::vector<std::string>{"PAR,Paris,FR", "ROM,Rome,IT", "OSL,Oslo,NO"}));
    EXPECT_FALSE(IsWindow(driver.popup()));
}

TEST_F(TablePopup, EscapeCancels) {
    PopupDriver driver(path.c_str(), {{PopupInput::Key, VK_DOWN}, {PopupInput::Key, VK_ESCAPE}});
    EXPECT_EQ(Take(Show(0)), "<none>");
    EXPECT_TRUE(driver.seen());
}

TEST_F(TablePopup, DoubleClickPicksThatLine) {
    PopupDriver driver(path.c_str(), {{PopupInput::DoubleClick, 2}});
    EXPECT_EQ(Take(Show(0)), "OSL,Oslo,NO");
}

TEST_F(TablePopup, ShowsTheMaskColumnsAtTheDialogUnitRectangle) {
    PopupDriver driver(path.c_str(), {{PopupInput::Key, VK_RETURN}});
    EXPECT_EQ(Take(Show(0x6, 10, 20, 80, 48)), "PAR,Paris,FR");  // the whole line comes back
    ASSERT_TRUE(driver.seen());
    EXPECT_EQ(driver.items(), (std::vector<std::string>{"Paris\tFR", "Rome\tIT", "Oslo\tNO"}));
    const LONG units = GetDialogBaseUnits();
    POINT at{MulDiv(10, LOWORD(units), 4), MulDiv(20, HIWORD(units), 8)};
    ClientToScreen(parent, &at);
    EXPECT_EQ(driver.rect().left, at.x);
    EXPECT_EQ(driver.rect().top, at.y);
    EXPECT_EQ(driver.rect().right - driver.rect().left, MulDiv(80, LOWORD(units), 4));
    EXPECT_EQ(driver.rect().bottom - driver.rect().top, MulDiv(48, HIWORD(units), 8));
}

TEST_F(TablePopup, LineMaxCutsTheReturnedLine) {
    PopupDriver driver(path.c_str(), {{PopupInput::Key, VK_RETURN}});
    EXPECT_EQ(Take(twShowTable(parent, path.c_str(), 0, 0, 0, 80, 40, ',', 4, 0, 0, 0, nullptr, 0)), "PAR");
}

TEST_F(TablePopup, MissingTableShowsNothing) {
    EXPECT_EQ(twShowTable(parent, "C:\\no\\such.tbl", 0, 0, 0, 80, 40, ',', 256, 0, 0, 0, nullptr, 0), nullptr);
    EXPECT_EQ(twShowTable(parent, nullptr, 0, 0, 0, 80, 40, ',', 256, 0, 0, 0, nullptr, 0), nullptr);
}

TEST_F(TablePopup, DestroyedOwnerCancels) {
    // The popup goes with its owner; the loop must end rather than wait.
    g_doomed = parent.get();
    SetTimer(nullptr, 0, 50, DestroyDoomed);
    PopupDriver guard(path.c_str(), {});
    EXPECT_EQ(Take(Show(0)), "<none>");
}

TEST(TableListBoxProc, ForeignWindowPassesThrough) {
    fktest::UniqueWindow parent = fktest::MakeParent();
    fktest::UniqueWindow list = fktest::MakeChild(parent, "LISTBOX");
    SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>("one"));
    EXPECT_EQ(TableListBoxProc(list, LB_GETCOUNT, 0, 0), 1);
}

}  // namespace
