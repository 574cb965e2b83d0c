// Fuzz target: currency formatting (fk::FormatCurrency and the set and get
// value texts of the currency field, fields/currency_text.h).
//
// An input is a byte that picks the routine, a row made of arbitrary bytes
// (any digits, placement and negative format, an unterminated symbol, zero
// separators), a style byte, an output size (0-399) and a text. Every routine
// writes into a heap block of exactly that size: it must stay inside it,
// terminate it and leave its input alone.
#include "fields/text/currency_text.h"
#include "support/input.h"

using namespace fuzz;
using fk::CurrencyFormat;

void hostile(Input& in) {
    const uint8_t routine = in.byte() % 7;
    CurrencyFormat row;  // any digits, placement and format, a symbol not necessarily terminated
    for (size_t i = 0; i < sizeof row; ++i) reinterpret_cast<char*>(&row)[i] = in.ch();
    const uint32_t style = in.byte();
    const bool blank = (style & 1) != 0;
    const size_t size = static_cast<size_t>(in.number()) % 400;
    const std::string text = in.text();
    Heap input(text);
    double value = 0;
    memcpy(&value, text.data(), std::min(text.size(), sizeof value));
    // One byte, which must stay untouched, for size 0.
    Heap out(std::string(), std::max<size_t>(size, 1), 'Q');
    out.get()[0] = size == 0 ? 'Q' : 0;
    if (routine == 0) fk::FormatCurrency(input.get(), row, style, out.get(), size);
    if (routine == 1) fk::CurrencyValueText(input.get(), row, style, out.get(), size);
    if (routine == 2) fk::CleanCurrency(input.get(), row, blank, out.get(), size);
    if (routine == 3) fk::CurrencyZeroText(row, blank, out.get(), size);
    if (routine == 4) fk::CurrencyDoubleText(value, row, blank, out.get(), size);
    if (routine == 5) fk::CurrencyLongText(row.digits, blank, out.get(), size);
    check(size == 0 ? out.get()[0] == 'Q' : out.terminated(), "the text stays in its buffer", text);
    if (routine < 6) return;
    (void)fk::CurrencyToDouble(input.get(), row);
    (void)fk::CurrencyToHundredths(input.get());
    (void)fk::CurrencyWhole(input.get());
    const int32_t after = fk::CurrencyAfterDecimal(input.get(), row), index = fk::CurrencyRowIndex(input.get());
    check(after >= -1 && index >= 0 && index < fk::kCurrencyKeywords && input.str() == text,
          "a keyword picks a row of the table, the text stays as it was", text);
}

FK_FUZZ_ROUTINE(hostile)
