// Fuzz target: table text (fk::SplitTableText, fk::LineField,
// fk::DisplayColumns, fk::ColumnMask). An input is a delimiter byte, a column
// number, an output size, a display mask, a column list and the file
// contents (which may hold NUL bytes). LineField writes into a heap block of
// exactly the size it is told.
#include "support/input.h"
#include "tables/table_text.h"

using namespace fuzz;

void lines(Input& in) {
    const char delimiter = in.ch();
    const int32_t column = in.signedNumber(), outSize = std::max(in.signedNumber() % 300, 1);
    const uint32_t mask = static_cast<uint32_t>(in.number());
    Heap list(in.text());
    std::string contents;
    while (!in.empty()) contents.push_back(in.ch());
    std::unique_ptr<char[]> file(new char[std::max<size_t>(contents.size(), 1)]);
    memcpy(file.get(), contents.data(), contents.size());
    const uint32_t bits = fk::ColumnMask(list.get());
    const std::vector<std::string> lines = fk::SplitTableText(file.get(), contents.size());
    for (size_t i = 0; i < lines.size(); ++i) {
        check(lines[i].find_first_of(std::string("\r\n\x1A\0", 4)) == std::string::npos && lines[i].size() <= 255,
              "SplitTableText cuts at line ends and ^Z", contents);
        if (i >= 4) continue;  // the fields of the first lines are enough
        Heap line(lines[i]), out(std::string(), static_cast<size_t>(outSize), 'F');
        fk::LineField(line.get(), delimiter, column, out.get(), outSize);
        const std::string shown = fk::DisplayColumns(line.get(), delimiter, mask | bits);
        check(out.terminated() && shown.size() <= lines[i].size() + 31, "LineField and DisplayColumns stay in bounds",
              lines[i]);
    }
}

FK_FUZZ_ROUTINE(lines)
