// Fuzz target: the column settings of the table controls (fk::ColumnList,
// fk::NumberList, fk::FormatNumberList, fk::LayoutColumns). An input is an
// output count, a dialog base unit, a client width, a buffer size, then the
// list text. Lists are read from heap blocks of exactly their size, and
// written into arrays of exactly the count they are told.
#include <algorithm>
#include <string>
#include <vector>

#include "support/input.h"
#include "tables/table_text.h"

namespace {

using namespace fuzz;

void columns(Input& in) {
    const int32_t max = static_cast<int32_t>(static_cast<uint32_t>(in.number()) % 40);
    const int32_t baseX = in.signedNumber() % 100000, client = in.signedNumber();
    const int32_t outSize = in.number() % 300;
    const std::string list = in.text();
    Heap l(list);

    std::vector<int32_t> columns(static_cast<size_t>(max) + 1, -7), numbers(static_cast<size_t>(max) + 1, -7);
    const int32_t n = fk::ColumnList(l.get(), columns.data(), max);
    check(n >= 0 && n <= max && columns[static_cast<size_t>(max)] == -7, "ColumnList stays within max", list);
    for (int32_t i = 0; i < n; ++i) check(columns[i] >= 1 && columns[i] <= fk::kMaxColumns, "columns are 1-32", list);
    const int32_t count = fk::NumberList(l.get(), numbers.data(), max);
    check(count >= 0 && count <= max && numbers[static_cast<size_t>(max)] == -7, "NumberList stays within max", list);
    for (int32_t i = 0; i < count; ++i)
        check(numbers[i] >= 0 && numbers[i] <= fk::kMaxColumnUnits, "widths are 0-1000", list);

    // Written and read back: the same numbers, or the front of them when the buffer is short.
    if (outSize > 0) {
        Heap out(std::string(), static_cast<size_t>(outSize), 'F');
        const int32_t length = fk::FormatNumberList(numbers.data(), count, out.get(), outSize);
        check(out.terminated() && static_cast<int32_t>(strlen(out.get())) == length, "FormatNumberList terminates");
        std::vector<int32_t> back(static_cast<size_t>(count) + 1);
        const int32_t again = *out.get() == 0 ? 0 : fk::NumberList(out.get(), back.data(), count + 1);
        check(again <= count && std::equal(back.begin(), back.begin() + again, numbers.begin()),
              "the numbers read back", out.str());
        check(length >= outSize - 12 || again == count, "a roomy buffer holds them all", out.str());
    }

    const fk::ColumnUnits units{numbers.data(), count, numbers.data(), count / 2};
    const int32_t shown = std::max(count, 1), written = std::min(shown, fk::kMaxColumns);
    std::vector<int32_t> px(static_cast<size_t>(shown) + 1, -7);
    fk::LayoutColumns(shown, units, baseX, client, px.data());
    check(px[static_cast<size_t>(written)] == -7 || shown > fk::kMaxColumns, "LayoutColumns writes count widths", list);
    for (int32_t i = 0; i < written; ++i)
        check(px[i] >= fk::UnitsToPixels(fk::kMinColumnUnits, baseX), "no column is too narrow", list);
}

}  // namespace

FK_FUZZ_ROUTINES(columns)
