// Fuzz target: table text (fk::SplitTableText, fk::LineField,
// fk::DisplayColumns, fk::ColumnMask). An input is a delimiter byte, a column
// number, an output size, a display mask, a column list and the file
// contents (which may hold NUL bytes). LineField writes into a heap block of
// exactly the size it is told.

#include "tables/table_text.h"
#include "support/input.h"

using namespace fuzz;

void lines(Input& in) {
    const char delimiter = in.ch();
    const int32_t column = in.signedNumber(), outSize = std::max(in.signedNumber() % 300, 1);
    const uint32_t mask = static_cast<uint32_t>(in.number());
    Heap list(in.text());
    // ColumnMask and ColumnList read the same numbers 1-32.
    std::vector<int32_t> columns(list.str().size() + 1);
    uint32_t bits = 0;
    for (int32_t i = fk::ColumnList(list.get(), columns.data(), static_cast<int32_t>(columns.size())); i > 0; --i)
        bits |= 1u << (columns[static_cast<size_t>(i) - 1] - 1);
    check(fk::ColumnMask(list.get()) == bits, "ColumnMask agrees with ColumnList", list.str());
    // The file contents, NUL bytes included: the rest of the input, in a block of its size.
    std::string contents;
    while (!in.empty()) contents.push_back(in.ch());
    std::unique_ptr<char[]> file(new char[std::max<size_t>(contents.size(), 1)]);
    memcpy(file.get(), contents.data(), contents.size());
    const std::vector<std::string> got = fk::SplitTableText(file.get(), contents.size());
    for (size_t i = 0; i < got.size(); ++i) {
        Heap line(got[i]), out(std::string(), static_cast<size_t>(outSize), 'F');
        check(got[i].find_first_of(std::string("\r\n\x1A\0", 4)) == std::string::npos &&
                  got[i].size() <= static_cast<size_t>(fk::kTableLineMax),
              "SplitTableText cuts at line ends and ^Z", contents);
        // A field is a piece between delimiters, cut to the buffer; all 32 columns shown are the line with tabs.
        const bool found = fk::LineField(line.get(), delimiter, column, out.get(), outSize);
        check(out.terminated() && (!found || got[i].find(out.str()) != std::string::npos), "LineField", got[i]);
        std::string tabbed = got[i];
        std::replace(tabbed.begin(), tabbed.end(), delimiter == 0 ? ',' : delimiter, '\t');
        check(std::count(tabbed.begin(), tabbed.end(), '\t') >= 32 || delimiter == '\t' ||
                  fk::DisplayColumns(line.get(), delimiter, 0xFFFFFFFF) == tabbed,
              "DisplayColumns joins the chosen columns", got[i]);
        (void)fk::DisplayColumns(line.get(), delimiter, mask);
    }
}

FK_FUZZ_ROUTINES(lines)
