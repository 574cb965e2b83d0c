// The table store: loading, searching by key column, copying table files.
#include <gtest/gtest.h>

#include <string>

#include "include/fldkit.h"
#include "tests/win/tables/popup_driver.h"

namespace {

std::string Line(HGLOBAL g) {
    if (g == nullptr) return "<none>";
    std::string s = static_cast<const char*>(GlobalLock(g));
    GlobalUnlock(g);
    GlobalFree(g);
    return s;
}

class TableStore : public ::testing::Test {
protected:
    void SetUp() override {
        path = fktest::WriteTable("fk_cities.tbl",
                                  "PAR , Paris ,FR\r\n"
                                  "ROM,Rome,IT\r\n"
                                  "\r\n"
                                  "  OSL  ,Oslo,NO\r\n"
                                  "rom,lower,xx\r\n"
                                  "BER|Berlin|DE\r\n");
        twFreeTable(path.c_str());
    }
    void TearDown() override {
        twFreeTable(path.c_str());
        DeleteFileA(path.c_str());
    }
    std::string path;
};

TEST_F(TableStore, SearchesByKeyColumn) {
    struct Case {
        int column;
        const char* key;
        char delimiter;
        const char* line;
    } cases[] = {
        {1, "ROM", ',', "ROM,Rome,IT"},
        {0, "ROM", ',', "ROM,Rome,IT"},          // column 0 is column 1
        {1, "rom", ',', "rom,lower,xx"},         // case counts
        {1, "PAR", ',', "PAR , Paris ,FR"},      // key column clipped both ends
        {1, "OSL", 0, "  OSL  ,Oslo,NO"},        // no delimiter: ","
        {2, "Paris", ',', "PAR , Paris ,FR"},
        {3, "NO", ',', "  OSL  ,Oslo,NO"},
        {2, "Berlin", '|', "BER|Berlin|DE"},
        {1, "Rom", ',', "<none>"},
        {4, "FR", ',', "<none>"},
        {1, "", ',', "<none>"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Line(twSearchTable(path.c_str(), c.column, c.key, c.delimiter, nullptr, 0)), c.line)
            << c.column << " " << c.key;
    }
}

TEST_F(TableStore, LoadedOnceAndKeptByName) {
    EXPECT_EQ(twLoadTable(path.c_str(), nullptr), 1);
    DeleteFileA(path.c_str());  // the kept copy still answers
    EXPECT_EQ(Line(twSearchTable(path.c_str(), 1, "ROM", ',', nullptr, 0)), "ROM,Rome,IT");
    EXPECT_EQ(twFreeTable(path.c_str()), 1);
    EXPECT_EQ(twFreeTable(path.c_str()), 0);
    EXPECT_EQ(Line(twSearchTable(path.c_str(), 1, "ROM", ',', nullptr, 0)), "<none>");
}

TEST_F(TableStore, MissingOrBadNamesFindNothing) {
    EXPECT_EQ(twLoadTable("C:\\no\\such\\table.tbl", nullptr), 0);
    EXPECT_EQ(twSearchTable("C:\\no\\such\\table.tbl", 1, "ROM", ',', nullptr, 0), nullptr);
    EXPECT_EQ(twSearchTable(nullptr, 1, "ROM", ',', nullptr, 0), nullptr);
    EXPECT_EQ(twSearchTable(path.c_str(), 1, nullptr, ',', nullptr, 0), nullptr);
    EXPECT_EQ(twSearchTable("@RES(NOSUCH)", 1, "ROM", ',', GetModuleHandleA(nullptr), 0), nullptr);
    EXPECT_EQ(twLoadTable("", nullptr), 0);
}

TEST_F(TableStore, NameWithoutExtensionFindsTblFile) {
    std::string bare = path.substr(0, path.size() - 4);
    EXPECT_EQ(Line(twSearchTable(bare.c_str(), 1, "ROM", ',', nullptr, 0)), "ROM,Rome,IT");
    twFreeTable(bare.c_str());
}

TEST_F(TableStore, LongLinesAreCut) {
    std::string longKey(300, 'k');
    std::string p = fktest::WriteTable("fk_long.tbl", longKey + ",x\r\nshort,y\r\n");
    twFreeTable(p.c_str());
    EXPECT_EQ(Line(twSearchTable(p.c_str(), 1, "short", ',', nullptr, 0)), "short,y");
    EXPECT_EQ(Line(twSearchTable(p.c_str(), 1, std::string(255, 'k').c_str(), ',', nullptr, 0)),
              std::string(255, 'k'));
    twFreeTable(p.c_str());
    DeleteFileA(p.c_str());
}

TEST_F(TableStore, CopyFileRefreshesTheCopy) {
    std::string dest = fktest::WriteTable("fk_copy.tbl", "OLD,1\r\n");
    EXPECT_EQ(Line(twSearchTable(dest.c_str(), 1, "OLD", ',', nullptr, 0)), "OLD,1");
    EXPECT_EQ(twCopyFile(path.c_str(), dest.c_str()), 1);
    EXPECT_EQ(Line(twSearchTable(dest.c_str(), 1, "OLD", ',', nullptr, 0)), "<none>");
    EXPECT_EQ(Line(twSearchTable(dest.c_str(), 1, "ROM", ',', nullptr, 0)), "ROM,Rome,IT");
    EXPECT_EQ(twCopyFile("C:\\no\\such\\file", dest.c_str()), 0);
    EXPECT_EQ(twCopyFile(nullptr, dest.c_str()), 0);
    twFreeTable(dest.c_str());
    DeleteFileA(dest.c_str());
}

}  // namespace
