// Fuzz target: the column settings of the table controls (fk::ColumnList,
// fk::NumberList, fk::FormatNumberList, fk::LayoutColumns). An input is an
// output count, a dialog base unit, a client width, a buffer size, then the
// list text. Lists are read from heap blocks of exactly their size, and
// written into arrays of exactly the count they are told.

#include "support/input.h"
#include "tables/table_text.h"

using namespace fuzz;

void columns(Input& in) {
    const int32_t max = static_cast<int32_t>(static_cast<uint32_t>(in.number()) % 40);
    const int32_t baseX = in.signedNumber() % 100000, client = in.signedNumber();
    const int32_t outSize = std::max(in.number() % 300, 1);
    Heap l(in.text()), out(std::string(), static_cast<size_t>(outSize), 'F');
    std::vector<int32_t> columns(max), numbers(max);
    const int32_t n = fk::ColumnList(l.get(), columns.data(), max),
                  count = fk::NumberList(l.get(), numbers.data(), max);
    check(n >= 0 && n <= max && count >= 0 && count <= max, "lists stay within max", l.str());
    const int32_t length = fk::FormatNumberList(numbers.data(), count, out.get(), outSize);
    check(out.terminated() && static_cast<int32_t>(out.str().size()) == length, "FormatNumberList terminates");
    const fk::ColumnUnits units{numbers.data(), count, numbers.data(), count / 2};
    const int32_t shown = std::clamp(count, 1, fk::kMaxColumns);
    std::vector<int32_t> px(static_cast<size_t>(shown));
    fk::LayoutColumns(shown, units, baseX, client, px.data());
    for (int32_t width : px) check(width >= fk::UnitsToPixels(fk::kMinColumnUnits, baseX), "no column too narrow");
    fk::LayoutColumns(shown, {nullptr, 0, numbers.data(), std::min(count, 1)}, baseX, client, px.data());
    check(std::count(px.begin(), px.end(), px[0]) == shown, "one tab stop spaces every column alike");
}

FK_FUZZ_ROUTINE(columns)
