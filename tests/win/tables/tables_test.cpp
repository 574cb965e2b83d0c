// The table store (loading, searching by key column, copying) and the popup.
#include <gtest/gtest.h>

#include "include/fldkit.h"
#include "tests/support/window.h"
#include "tests/win/tables/popup_driver.h"

namespace {

using fktest::TakeLine;

class Tables : public ::testing::Test {
protected:
    Tables() { twFreeTable(path.c_str()); }
    ~Tables() override { twFreeTable(path.c_str()), DeleteFileA(path.c_str()); }
    static std::string Find(const std::string& name, int column, const char* key, char delimiter = ',') {
        return TakeLine(twSearchTable(name.c_str(), column, key, delimiter, nullptr, 0));
    }
    HGLOBAL Show(const char* name, int lineMax = 256) {
        return twShowTable(parent, name, 0, 10, 20, 80, 48, ',', lineMax, 0, 0, 0, nullptr, 0);
    }
    std::string path = fktest::WriteTable(
        "fk_cities.tbl", "PAR , Paris ,FR\r\nROM,Rome,IT\r\n\r\n  OSL  ,Oslo,NO\r\nrom,lower,xx\r\nBER|Berlin|DE\r\n");
    fktest::UniqueWindow parent = fktest::MakeParent();
};

TEST_F(Tables, SearchesByKeyColumn) {
    struct { int column; const char* key; char delimiter; const char* line; } cases[] = {
        {1, "ROM", ',', "ROM,Rome,IT"},     {0, "ROM", ',', "ROM,Rome,IT"},  // column 0 is column 1
        {1, "rom", ',', "rom,lower,xx"},    {1, "Rom", ',', "<none>"},       // case counts
        {1, "PAR", ',', "PAR , Paris ,FR"}, {1, "OSL", 0, "  OSL  ,Oslo,NO"},  // clipped both ends; "," by default
        {2, "Paris", ',', "PAR , Paris ,FR"}, {3, "NO", ',', "  OSL  ,Oslo,NO"}, {2, "Berlin", '|', "BER|Berlin|DE"},
        {4, "FR", ',', "<none>"}, {1, "", ',', "<none>"},
    };
    for (const auto& c : cases) EXPECT_EQ(Find(path, c.column, c.key, c.delimiter), c.line) << c.column << c.key;
}

TEST_F(Tables, LoadedOnceAndKeptByNameMissingOnesFindNothing) {
    const std::string bare = path.substr(0, path.size() - 4);
    EXPECT_EQ(Find(bare, 1, "ROM"), "ROM,Rome,IT");  // ".tbl" is added
    twFreeTable(bare.c_str());
    EXPECT_EQ(twLoadTable(path.c_str(), nullptr), 1);
    DeleteFileA(path.c_str());  // the kept copy still answers
    EXPECT_EQ(Find(path, 1, "ROM"), "ROM,Rome,IT");
    EXPECT_EQ(twFreeTable(path.c_str()), 1);
    EXPECT_EQ(twFreeTable(path.c_str()), 0);
    EXPECT_EQ(Find(path, 1, "ROM"), "<none>");
    const char* none = "C:\\no\\such\\table.tbl";
    EXPECT_EQ(twLoadTable(none, nullptr), 0);
    EXPECT_EQ(twLoadTable("", nullptr), 0);
    EXPECT_EQ(Find(none, 1, "ROM"), "<none>");
    EXPECT_EQ(twSearchTable(nullptr, 1, "ROM", ',', nullptr, 0), nullptr);
    EXPECT_EQ(twSearchTable(path.c_str(), 1, nullptr, ',', nullptr, 0), nullptr);
    EXPECT_EQ(twSearchTable("@RES(NOSUCH)", 1, "ROM", ',', GetModuleHandleA(nullptr), 0), nullptr);
    EXPECT_EQ(Show(nullptr), nullptr);
}

// A table file of 4 MiB is read; one byte more and it is not.
TEST_F(Tables, FilesAboveFourMebibytesAreNotRead) {
    for (size_t extra : {0u, 1u}) {
        std::string text = "BIG,1\r\n";
        text.resize((4u << 20) + extra, ' ');
        const std::string big = fktest::WriteTable("fk_big.tbl", text);
        EXPECT_EQ(Find(big, 1, "BIG"), extra ? "<none>" : "BIG,1") << extra;
        twFreeTable(big.c_str()), DeleteFileA(big.c_str());
    }
}

TEST_F(Tables, CopyFileRefreshesTheCopy) {
    const std::string dest = fktest::WriteTable("fk_copy.tbl", "OLD,1\r\n");
    EXPECT_EQ(Find(dest, 1, "OLD"), "OLD,1");
    EXPECT_EQ(twCopyFile(path.c_str(), dest.c_str()), 1);
    EXPECT_EQ(Find(dest, 1, "OLD"), "<none>");
    EXPECT_EQ(Find(dest, 1, "ROM"), "ROM,Rome,IT");
    EXPECT_EQ(twCopyFile("C:\\no\\such\\file", dest.c_str()), 0);
    EXPECT_EQ(twCopyFile(nullptr, dest.c_str()), 0);
    twFreeTable(dest.c_str()), DeleteFileA(dest.c_str());
}

TEST_F(Tables, PopupPicksWithKeysOrMouse) {
    struct { std::vector<int> script; const char* line; } cases[] = {
        {{VK_DOWN, VK_RETURN}, "ROM,Rome,IT"}, {{VK_DOWN, VK_ESCAPE}, "<none>"}, {{-3}, "  OSL  ,Oslo,NO"}};
    for (const auto& c : cases) {
        fktest::PopupDriver driver(path, c.script);
        EXPECT_EQ(TakeLine(Show(path.c_str())), c.line);
        ASSERT_NE(driver.popup, nullptr);
        EXPECT_FALSE(IsWindow(driver.popup));
        EXPECT_EQ(driver.owner, parent.get());
        EXPECT_EQ(driver.selected, 0);
        EXPECT_EQ(driver.items, (std::vector<std::string>{"PAR , Paris ,FR", "ROM,Rome,IT", "  OSL  ,Oslo,NO",
                                                          "rom,lower,xx", "BER|Berlin|DE"}));
    }
    fktest::PopupDriver driver(path, {VK_RETURN});
    EXPECT_EQ(TakeLine(Show(path.c_str(), 4)), "PAR");  // cut to the line maximum
}

TEST_F(Tables, PopupEndsWithItsOwnerAndForeignListsPassThrough) {
    PostMessageA(parent, WM_CLOSE, 0, 0);  // the popup's own loop destroys the owner
    fktest::PopupDriver guard(path, {});
    EXPECT_EQ(TakeLine(Show(path.c_str())), "<none>");
    fktest::UniqueWindow owner = fktest::MakeParent();
    fktest::UniqueWindow list = fktest::MakeChild(owner, "LISTBOX");
    SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>("one"));
    EXPECT_EQ(TableListBoxProc(list, LB_GETCOUNT, 0, 0), 1);
}

}  // namespace
