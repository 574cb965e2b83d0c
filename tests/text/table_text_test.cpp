// Lookup-table text: lines and fields of a table file, display and width lists, and the columns' layout.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tables/table_text.h"

namespace {

// Lines end at CR or LF, the text at NUL or ^Z; blank lines go, judged before the cut at 255 characters.
TEST(TableText, LinesAndFields) {
    const std::string longBlank = std::string(300, ' ') + "x", text = "a,b\r\n \t\n" + longBlank + "\nc\x1A" "d";
    EXPECT_EQ(fk::SplitTableText(text.c_str(), text.size()),
              (std::vector<std::string>{"a,b", std::string(255, ' '), "c"}));
    EXPECT_EQ(fk::SplitTableText("e\0f", 3), std::vector<std::string>{"e"});
    // A field is cut to the buffer; the shown columns are joined by tabs, the first empty one too.
    const struct { const char* line; int32_t column, outSize; bool found; const char* field; } fields[] = {
        {"ab,cd", 2, 3, true, "cd"}, {"ab,cd", 2, 2, true, "c"},  {"ab,cd", 3, 8, false, ""},
        {"ab,cd", 0, 8, true, "ab"}, {"ab,cd", 1, 0, false, "zz"},  // no room: nothing written
    };
    for (const auto& f : fields) {
        char out[8] = "zz";
        EXPECT_EQ(fk::LineField(f.line, ',', f.column, out, f.outSize), f.found) << f.column;
        EXPECT_STREQ(out, f.field) << f.column << " " << f.outSize;
    }
    std::string wide;
    for (int i = 1; i <= 32; ++i) wide += std::to_string(i) + ",";
    EXPECT_EQ(fk::DisplayColumns(",b,c", ',', 0x7), "\tb\tc");
    EXPECT_EQ(fk::DisplayColumns(wide.c_str(), ',', 0x80000001), "1\t32");
    EXPECT_EQ(fk::DisplayColumns("a,b", 0, 0), "a,b");
    EXPECT_EQ(fk::ColumnMask(" 1,32,33,0,x,02"), 0x80000003u);
}

// Display lists keep their order and drop what is not a column 1-32; width lists keep their places.
TEST(TableText, ColumnAndWidthLists) {
    struct { const char* list; std::vector<int32_t> columns, numbers; } cases[] = {
        {"2,1,3", {2, 1, 3}, {2, 1, 3}},
        {" 3 ,0,33,-1,x,32", {3, 32}, {3, 0, 33, 0, 0, 32}},
        {"40,,99999999,7", {7}, {40, 0, 1000, 7}},
        {"", {}, {}},
    };
    for (const auto& c : cases) {
        int32_t out[8];
        std::vector<int32_t> got(out, out + fk::ColumnList(c.list, out, 8));
        EXPECT_EQ(got, c.columns) << c.list;
        got.assign(out, out + fk::NumberList(c.list, out, 8));
        EXPECT_EQ(got, c.numbers) << c.list;
    }
    const int32_t widths[] = {40, 7, 1000};
    char text[16];
    EXPECT_EQ(fk::FormatNumberList(widths, 3, text, sizeof text), 9);
    EXPECT_STREQ(text, "40,7,1000");
    EXPECT_EQ(fk::FormatNumberList(widths, 3, text, 6), 4);  // only whole numbers
    EXPECT_STREQ(text, "40,7");
    EXPECT_EQ(std::pair(fk::FieldCount("a,b,,c", ','), fk::FieldCount(std::string(100, '|').c_str(), '|')),
              std::pair(4, 32));
}

}  // namespace
