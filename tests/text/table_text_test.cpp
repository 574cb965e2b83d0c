// Lookup-table lines: splitting text into lines and lines into columns.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tables/table_text.h"

namespace {

TEST(TableText, SplitsLinesAndCutsLongOnes) {
    const std::string text = "Paris,FR\r\nRome,IT\n\n   \rOslo,NO\r" + std::string(300, 'x') + "\nafter\x1A" + "gone";
    const auto lines = fk::SplitTableText(text.data(), text.size());
    EXPECT_EQ(lines, (std::vector<std::string>{"Paris,FR", "Rome,IT", "Oslo,NO", std::string(255, 'x'), "after"}));
    EXPECT_TRUE(fk::SplitTableText(nullptr, 10).empty());
    // Blank lines are judged before the cut: text past the cut keeps its line.
    const std::string far = std::string(300, ' ') + "b\nnext";
    EXPECT_EQ(fk::SplitTableText(far.data(), far.size()),
              (std::vector<std::string>{std::string(fk::kTableLineMax, ' '), "next"}));
}

TEST(TableText, FieldsByColumnAndDisplayMask) {
    struct { const char* line; char delimiter; int32_t column; bool found; const char* field; } cases[] = {
        {"PAR, Paris ,FR", ',', 1, true, "PAR"}, {"PAR, Paris ,FR", ',', 0, true, "PAR"},  // column 0 is column 1
        {"PAR, Paris ,FR", ',', 2, true, " Paris "}, {"PAR, Paris ,FR", 0, 3, true, "FR"},  // no delimiter: ","
        {"PAR, Paris ,FR", ',', 4, false, ""}, {"a|b", '|', 2, true, "b"}, {"a,,c", ',', 2, true, ""},
    };
    for (const auto& c : cases) {
        char out[32];
        EXPECT_EQ(fk::LineField(c.line, c.delimiter, c.column, out, sizeof out), c.found) << c.line;
        EXPECT_STREQ(out, c.field) << c.line << " column " << c.column;
    }
    char small[4];
    EXPECT_TRUE(fk::LineField("abcdefgh", ',', 1, small, sizeof small));
    EXPECT_STREQ(small, "abc");
    EXPECT_EQ(fk::ColumnMask("1,3"), 5u);
    EXPECT_EQ(fk::ColumnMask(""), 0u);
    EXPECT_EQ(fk::ColumnMask(" 2 , 32,0,33,x"), 0x80000002u);  // numbers outside 1-32 are left out
    EXPECT_EQ(fk::DisplayColumns("PAR,Paris,FR", ',', 0), "PAR,Paris,FR");
    EXPECT_EQ(fk::DisplayColumns("PAR,Paris,FR", ',', 6), "Paris\tFR");
    EXPECT_EQ(fk::DisplayColumns("PAR,Paris,FR", ',', 1u << 7), "");
}

}  // namespace
