// Fuzz target: currency formatting (fk::FormatCurrency and the set and get
// value texts of the currency field, fields/currency_text.h).
//
// The first byte picks one of two runs:
// - hostile: a row made of arbitrary bytes (any digits, placement and
//   negative format, an unterminated symbol, zero separators), a style byte,
//   an output size (0-399) and a text. Every routine writes into a heap
//   block of exactly that size: it must stay inside it, terminate it and
//   leave its input alone.
// - values: a row of the table, a negative format, a style and a value (a
//   double from eight bytes, or a 32-bit long). The text shown for it must
//   read back as the value, and format to itself.
#include <math.h>

#include <algorithm>
#include <string>

#include "fields/text/currency_text.h"
#include "support/input.h"

namespace {

using namespace fuzz;
using fk::CurrencyFormat;

constexpr size_t kAmountMax = 159;  // the amount's own characters

// Runs a routine that writes at most size bytes into a block of exactly that
// size (one byte, which must stay untouched, for size 0); returns its text.
template <typename Call>
std::string written(size_t size, const char* what, const std::string& detail, Call&& call) {
    Heap out(std::string(), std::max<size_t>(size, 1), 'Q');
    out.get()[0] = size == 0 ? 'Q' : 0;
    call(out.get(), size);
    check(size == 0 ? out.get()[0] == 'Q' : out.terminated(), what, detail);
    return size == 0 ? std::string() : out.str();
}

void hostile(Input& in) {
    CurrencyFormat row;
    row.digits = in.signedNumber();
    row.placement = in.signedNumber();
    row.negative = in.signedNumber();
    for (char& c : row.symbol) c = in.ch();  // not necessarily terminated
    for (char* c : {&row.decimal[0], &row.decimal[1], &row.thousands[0], &row.thousands[1]}) *c = in.ch();
    const uint32_t style = in.byte();
    const bool blank = (style & 1) != 0;
    const size_t size = static_cast<size_t>(in.number()) % 400;
    const std::string text = in.text();
    Heap input(text);
    double value = 0;
    memcpy(&value, text.data(), std::min(text.size(), sizeof value));

    const std::string shown = written(size, "FormatCurrency stays in its buffer", text,
                                      [&](char* o, size_t n) { fk::FormatCurrency(input.get(), row, style, o, n); });
    check(shown.size() <= kAmountMax + 7 + 3, "a formatted text is the amount, the symbol and three signs", text);
    written(size, "CurrencyValueText stays in its buffer", text,
            [&](char* o, size_t n) { fk::CurrencyValueText(input.get(), row, style, o, n); });
    written(size, "CleanCurrency stays in its buffer", text,
            [&](char* o, size_t n) { fk::CleanCurrency(input.get(), row, blank, o, n); });
    written(size, "CurrencyZeroText stays in its buffer", text,
            [&](char* o, size_t n) { fk::CurrencyZeroText(row, blank, o, n); });
    written(size, "CurrencyDoubleText stays in its buffer", text,
            [&](char* o, size_t n) { fk::CurrencyDoubleText(value, row, blank, o, n); });
    written(size, "CurrencyLongText stays in its buffer", text,
            [&](char* o, size_t n) { fk::CurrencyLongText(row.digits, blank, o, n); });

    (void)fk::CurrencyToDouble(input.get(), row);
    (void)fk::CurrencyToHundredths(input.get());
    (void)fk::CurrencyWhole(input.get());
    const int32_t after = fk::CurrencyAfterDecimal(input.get(), row);
    check(after >= -1 && after <= static_cast<int32_t>(text.size()), "the decimal index lies in the text", text);
    const int32_t index = fk::CurrencyRowIndex(input.get());
    check(index >= 0 && index < fk::kCurrencyKeywords, "a keyword picks a row of the table", text);
    check(input.str() == text, "the input text stays as it was", text);
}

// The row's symbol is made of characters that a shown amount never holds
// otherwise, so removing them loses nothing of the amount.
bool symbolApart(const CurrencyFormat& row) {
    return strpbrk(row.symbol, "0123456789-()") == nullptr && strchr(row.symbol, row.decimal[0]) == nullptr;
}

void values(Input& in) {
    CurrencyFormat row = fk::g_currencyFormats[in.byte() % fk::kCurrencyRows];
    row.negative = in.byte() % 12;
    const uint32_t style = in.byte() & (fk::kCurrRightJust | fk::kCurrSuppress);
    const bool asLong = (in.byte() & 1) != 0;
    // Negative formats whose sign stands in front, where the conversions read it.
    const bool readable = (style & fk::kCurrSuppress) == 0 && row.negative != 3 && row.negative != 6 &&
                          row.negative != 7 && row.negative != 10;
    char built[160], shown[200], again[200];
    bool stable = symbolApart(row);
    int32_t whole = 0;
    double value = 0;
    if (asLong) {
        whole = in.signedNumber();
        fk::CurrencyLongText(whole, false, built, sizeof built);
        // The long type's fixed "." and "," clash with other rows' separators;
        // what is shown then is whatever the steps make of it. Shorter texts
        // than three characters get a "." in front, as they always did.
        stable = stable && row.decimal[0] == '.' && row.thousands[0] == ',' && (whole <= -100 || whole >= 100);
    } else {
        value = in.real();
        if (!fk::CurrencyDoubleText(value, row, false, built, sizeof built))
            return check(!isfinite(value) && built[0] == 0, "only infinities and NaN have no text");
        stable = stable && fabs(value) < 1e11;  // twelve integer digits: lstrcomma's room
    }
    fk::CurrencyValueText(built, row, style, shown, sizeof shown);
    const std::string detail = std::string(built) + " -> " + shown;
    if (asLong && stable && readable && strcmp(row.symbol, "$") == 0)
        check(fk::CurrencyToHundredths(shown) == whole, "a long reads back from its shown text", detail);
    const double step = pow(10.0, -std::max(row.digits, 0));
    if (!asLong && stable && readable)
        check(fabs(fk::CurrencyToDouble(shown, row) - value) <= step / 2 + fabs(value) * 1e-12,
              "a double reads back from its shown text", detail);
    // A shown text formats to itself: painting it again changes nothing.
    if (!stable) return;
    fk::FormatCurrency(shown, row, style, again, sizeof again);
    check(strcmp(again, shown) == 0, "a shown text formats to itself", detail + " -> " + again);
}

}  // namespace

FK_FUZZ_ROUTINES(hostile, values)
