// Fuzz target: table text (fk::SplitTableText, fk::LineField,
// fk::DisplayColumns, fk::ColumnMask). An input is a delimiter byte, a column
// number, an output size, a display mask, a column list and the file
// contents (which may hold NUL bytes). LineField writes into a heap block of
// exactly the size it is told.
#include <algorithm>
#include <string>
#include <vector>

#include "support/input.h"
#include "tables/table_text.h"

namespace {

using namespace fuzz;

// The fields of a line the plain way.
std::vector<std::string> split(const std::string& line, char delimiter) {
    std::vector<std::string> fields(1);
    for (char c : line)
        if (c == delimiter)
            fields.emplace_back();
        else
            fields.back().push_back(c);
    return fields;
}

void checkLine(const std::string& line, char delimiter, int32_t column, int32_t outSize, uint32_t mask) {
    const std::vector<std::string> fields = split(line, delimiter == 0 ? ',' : delimiter);
    Heap l(line);
    // One field, cut to the buffer; nothing written without room.
    Heap out(std::string(), static_cast<size_t>(std::max(outSize, 1)), 'F');
    out.get()[0] = outSize > 0 ? 0 : 'n';
    const bool ok = fk::LineField(l.get(), delimiter, column, out.get(), outSize);
    const size_t index = column < 1 ? 0 : static_cast<size_t>(column) - 1;
    check(ok == (outSize > 0 && index < fields.size()), "LineField finds the field", line);
    const std::string want = ok ? fields[index].substr(0, static_cast<size_t>(outSize) - 1) : std::string();
    check(outSize > 0 ? out.terminated() && out.str() == want : out.get()[0] == 'n', "LineField copies the field",
          line);

    // The shown columns, joined by tabs.
    std::string joined;
    for (size_t i = 0; i < 32 && i < fields.size(); ++i)
        if ((mask >> i & 1u) != 0) joined += "\t" + fields[i].substr(0, fk::kTableLineMax);
    check(fk::DisplayColumns(l.get(), delimiter, mask) == (mask == 0 ? line : joined.substr(joined.empty() ? 0 : 1)),
          "DisplayColumns joins the chosen columns", line);
    check(l.str() == line, "the line is left alone", line);
}

void lines(Input& in) {
    const char delimiter = in.ch();
    const int32_t column = in.signedNumber(), outSize = in.signedNumber() % 300;
    const uint32_t mask = static_cast<uint32_t>(in.number());
    const std::string list = in.text();

    // The column list: only numbers 1-32 count.
    Heap l(list);
    uint32_t want = 0;
    for (const std::string& item : split(list, ',')) {
        const size_t start = item.find_first_not_of(' ');
        if (start == std::string::npos || !isDigit(item[start])) continue;
        const std::string digits = item.substr(start, item.find_first_not_of("0123456789", start) - start);
        const size_t nonzero = digits.find_first_not_of('0');
        const int n = nonzero != std::string::npos && digits.size() - nonzero <= 2 ? atoi(digits.c_str()) : 0;
        if (n >= 1 && n <= 32) want |= 1u << (n - 1);
    }
    const uint32_t bits = fk::ColumnMask(l.get());
    check(bits == want, "ColumnMask reads the numbers 1-32", list);

    // The file contents, NUL bytes included: the rest of the input. The
    // same the plain way: lines end at CR or LF, the text at NUL or ^Z;
    // blank or not as the text has it, before the cut.
    std::string contents;
    while (!in.empty()) contents.push_back(in.ch());
    std::unique_ptr<char[]> file(new char[std::max<size_t>(contents.size(), 1)]);
    memcpy(file.get(), contents.data(), contents.size());
    const std::vector<std::string> got = fk::SplitTableText(file.get(), contents.size());
    std::string text = contents.substr(0, contents.find_first_of(std::string("\0\x1A", 2)));
    std::replace(text.begin(), text.end(), '\r', '\n');
    std::vector<std::string> expected;
    for (const std::string& line : split(text, '\n'))
        if (line.find_first_not_of(" \t") != std::string::npos) expected.push_back(line.substr(0, fk::kTableLineMax));
    check(got == expected, "SplitTableText splits at line ends and cuts long lines", contents);

    for (size_t i = 0; i < got.size() && i < 4; ++i)
        checkLine(got[i], delimiter, column, outSize, mask | (i == 0 ? 0 : bits));
}

}  // namespace

FK_FUZZ_ROUTINES(lines)
