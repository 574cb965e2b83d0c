// Fuzz target: table text (fk::SplitTableText, fk::LineField,
// fk::DisplayColumns, fk::ColumnMask). An input is a delimiter byte, a column
// number, an output size, a display mask, a column list and the file
// contents (which may hold NUL bytes). LineField writes into a heap block of
// exactly the size it is told.
#include <stdlib.h>
#include <string.h>

#include <memory>

#include <string>
#include <vector>

#include "support/input.h"
#include "tables/table_text.h"

namespace {

using fuzz::check;
using fuzz::Heap;
using fuzz::Input;

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
    const char d = delimiter == 0 ? ',' : delimiter;
    const std::vector<std::string> fields = split(line, d);
    Heap l(line);

    // One field, cut to the buffer.
    if (outSize > 0) {
        Heap out(std::string(), static_cast<size_t>(outSize), 'F');
        const bool ok = fk::LineField(l.get(), delimiter, column, out.get(), outSize);
        const size_t index = column < 1 ? 0 : static_cast<size_t>(column) - 1;
        check(ok == (index < fields.size()), "LineField finds the field", line);
        check(out.terminated(), "LineField terminates the field", line);
        const std::string want = ok ? fields[index].substr(0, static_cast<size_t>(outSize) - 1) : std::string();
        check(out.str() == want, "LineField copies the field", line);
    } else {
        char none = 'n';
        check(!fk::LineField(l.get(), delimiter, column, &none, outSize) && none == 'n',
              "LineField without room writes nothing", line);
    }

    // The shown columns, joined by tabs.
    const std::string shown = fk::DisplayColumns(l.get(), delimiter, mask);
    if (mask == 0) {
        check(shown == line, "mask 0 shows the whole line", line);
        return;
    }
    std::string want;
    bool first = true;
    for (size_t i = 0; i < 32 && i < fields.size(); ++i) {
        if ((mask >> i & 1u) != 0) {
            want += (first ? "" : "\t") + fields[i].substr(0, fk::kTableLineMax);
            first = false;
        }
    }
    check(shown == want, "DisplayColumns joins the chosen columns", line);
    check(l.str() == line, "the line is left alone", line);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Input in(data, size);
    const char delimiter = in.ch();
    const int32_t column = in.signedNumber();
    const int32_t outSize = in.signedNumber() % 300;
    const uint32_t mask = static_cast<uint32_t>(in.number());
    const std::string list = in.text();

    // The column list: only numbers 1-32 count.
    Heap l(list);
    const uint32_t bits = fk::ColumnMask(l.get());
    uint32_t want = 0;
    for (const std::string& item : split(list, ',')) {
        const size_t start = item.find_first_not_of(' ');
        if (start == std::string::npos || item[start] < '0' || item[start] > '9') continue;
        const size_t end = item.find_first_not_of("0123456789", start);
        const std::string digits = item.substr(start, end == std::string::npos ? std::string::npos : end - start);
        const size_t nonzero = digits.find_first_not_of('0');
        if (nonzero != std::string::npos && digits.size() - nonzero <= 2) {
            const int n = atoi(digits.c_str() + nonzero);
            if (n >= 1 && n <= 32) want |= 1u << (n - 1);
        }
    }
    check(bits == want, "ColumnMask reads the numbers 1-32", list);

    // The file contents, NUL bytes included: the rest of the input.
    std::string contents;
    while (!in.empty()) contents.push_back(in.ch());
    std::unique_ptr<char[]> file(new char[contents.size() > 0 ? contents.size() : 1]);
    memcpy(file.get(), contents.data(), contents.size());
    const std::vector<std::string> lines = fk::SplitTableText(file.get(), contents.size());

    // The same the plain way.
    std::vector<std::string> expected;
    std::string line;
    auto finish = [&] {
        // Blank or not as the text has it, before the cut.
        if (line.find_first_not_of(" \t") != std::string::npos) expected.push_back(line.substr(0, fk::kTableLineMax));
        line.clear();
    };
    for (char c : contents) {
        if (c == 0 || c == 0x1A) break;
        if (c == '\r' || c == '\n')
            finish();
        else
            line.push_back(c);
    }
    finish();
    check(lines == expected, "SplitTableText splits at line ends and cuts long lines", contents);

    for (size_t i = 0; i < lines.size() && i < 4; ++i)
        checkLine(lines[i], delimiter, column, outSize, mask | (i == 0 ? 0 : bits));
    return 0;
}
