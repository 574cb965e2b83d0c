// Lookup-table lines: splitting text into lines and lines into columns.
#include <gtest/gtest.h>

#include <string.h>

#include <string>
#include <vector>

#include "tables/table_text.h"

namespace {

TEST(TableText, SplitsLinesAndCutsLongOnes) {
    const std::string longLine(300, 'x');
    const std::string text = "Paris,FR\r\nRome,IT\n\n   \rOslo,NO\r" + longLine + "\nafter\x1A" + "gone";
    const auto lines = fk::SplitTableText(text.data(), text.size());
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(lines[0], "Paris,FR");
    EXPECT_EQ(lines[1], "Rome,IT");
    EXPECT_EQ(lines[2], "Oslo,NO");
    EXPECT_EQ(lines[3], std::string(fk::kTableLineMax, 'x'));
    EXPECT_EQ(lines[4], "after");
    EXPECT_TRUE(fk::SplitTableText(nullptr, 10).empty());
}

TEST(TableText, BlankLinesAreJudgedBeforeTheCut) {
    // A line whose text starts past the cut stays an entry (cut to blanks);
    // only lines that are blank in the text are left out.
    const std::string farText = std::string(300, ' ') + "b";
    struct Case {
        std::string text;
        std::vector<std::string> lines;
    } cases[] = {
        {farText + "\nnext", {std::string(fk::kTableLineMax, ' '), "next"}},
        {std::string(300, '\t') + "\r\nnext", {"next"}},
        {" \t \n\x1A" + farText, {}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(fk::SplitTableText(c.text.data(), c.text.size()), c.lines) << c.text.size();
    }
}

TEST(TableText, FieldsByColumn) {
    struct Case {
        const char* line;
        char delimiter;
        int32_t column;
        bool found;
        const char* field;
    } cases[] = {
        {"PAR, Paris ,FR", ',', 1, true, "PAR"},
        {"PAR, Paris ,FR", ',', 0, true, "PAR"},  // column 0 is column 1
        {"PAR, Paris ,FR", ',', 2, true, " Paris "},
        {"PAR, Paris ,FR", 0, 3, true, "FR"},     // no delimiter: ","
        {"PAR, Paris ,FR", ',', 4, false, ""},
        {"a|b", '|', 2, true, "b"},
        {"a,,c", ',', 2, true, ""},
    };
    for (const Case& c : cases) {
        char out[32];
        EXPECT_EQ(fk::LineField(c.line, c.delimiter, c.column, out, sizeof out), c.found) << c.line;
        EXPECT_STREQ(out, c.field) << c.line << " column " << c.column;
    }
    char small[4];
    EXPECT_TRUE(fk::LineField("abcdefgh", ',', 1, small, sizeof small));
    EXPECT_STREQ(small, "abc");
}

TEST(TableText, DisplayColumnsAndMask) {
    EXPECT_EQ(fk::ColumnMask("1,3"), 5u);
    EXPECT_EQ(fk::ColumnMask(" 2 , 32,0,33,x"), 0x80000002u);
    EXPECT_EQ(fk::ColumnMask(""), 0u);
    EXPECT_EQ(fk::DisplayColumns("PAR,Paris,FR", ',', 0), "PAR,Paris,FR");
    EXPECT_EQ(fk::DisplayColumns("PAR,Paris,FR", ',', 6), "Paris\tFR");
    EXPECT_EQ(fk::DisplayColumns("PAR,Paris,FR", ',', 1u << 7), "");
}

}  // namespace
