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
#include <string.h>

#include <algorithm>
#include <string>

#include "fields/text/currency_text.h"
#include "support/input.h"

namespace {

using fk::CurrencyFormat;
using fuzz::check;
using fuzz::Heap;
using fuzz::Input;

constexpr size_t kAmountMax = 159;  // the amount's own characters

// An output block of exactly size bytes (one byte, untouched, for size 0).
struct OutBlock {
    size_t size;
    Heap heap;
    explicit OutBlock(size_t n) : size(n), heap(std::string(), std::max<size_t>(n, 1), 'Q') {
        if (n == 0) heap.get()[0] = 'Q';
    }
    char* get() { return heap.get(); }
    std::string str() { return size == 0 ? std::string() : heap.str(); }
    void checkKept(const char* what, const std::string& detail) {
        if (size == 0)
            check(heap.get()[0] == 'Q', what, detail);
        else
            check(heap.terminated(), what, detail);
    }
};

void hostile(Input& in) {
    CurrencyFormat row;
    row.digits = in.signedNumber();
    row.placement = in.signedNumber();
    row.negative = in.signedNumber();
    for (char& c : row.symbol) c = in.ch();  // not necessarily terminated
    row.decimal[0] = in.ch();
    row.decimal[1] = in.ch();
    row.thousands[0] = in.ch();
    row.thousands[1] = in.ch();
    const uint32_t style = in.byte();
    const size_t size = static_cast<size_t>(in.number()) % 400;
    const std::string text = in.rest();
    Heap input(text);

    auto run = [&](const char* what, auto&& call) {
        OutBlock out(size);
        call(out.get(), out.size);
        out.checkKept(what, text);
        check(input.str() == text, "the input text stays as it was", text);
        return out.str();
    };
    const std::string shown = run("FormatCurrency stays in its buffer",
                                  [&](char* o, size_t n) { fk::FormatCurrency(input.get(), row, style, o, n); });
    check(shown.size() <= kAmountMax + 7 + 3, "a formatted text is the amount, the symbol and three signs", text);
    run(
        "CurrencyValueText stays in its buffer",
        [&](char* o, size_t n) { fk::CurrencyValueText(input.get(), row, style, o, n); });
    run(
        "CleanCurrency stays in its buffer",
        [&](char* o, size_t n) { fk::CleanCurrency(input.get(), row, (style & 1) != 0, o, n); });
    run("CurrencyZeroText stays in its buffer",
        [&](char* o, size_t n) { fk::CurrencyZeroText(row, (style & 1) != 0, o, n); });
    double value = 0;
    memcpy(&value, text.data(), std::min(text.size(), sizeof value));
    run(
        "CurrencyDoubleText stays in its buffer",
        [&](char* o, size_t n) { fk::CurrencyDoubleText(value, row, (style & 1) != 0, o, n); });
    run("CurrencyLongText stays in its buffer",
        [&](char* o, size_t n) { fk::CurrencyLongText(row.digits, (style & 1) != 0, o, n); });

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
bool SymbolApart(const CurrencyFormat& row) {
    for (const char* s = row.symbol; *s != 0; ++s)
        if ((*s >= '0' && *s <= '9') || *s == row.decimal[0] || *s == '-' || *s == '(' || *s == ')') return false;
    return true;
}

// Negative formats whose sign stands in front, where the conversions read it.
bool SignInFront(int32_t negative) { return negative != 3 && negative != 6 && negative != 7 && negative != 10; }

void values(Input& in) {
    CurrencyFormat row = fk::g_currencyFormats[in.byte() % fk::kCurrencyRows];
    row.negative = in.byte() % 12;
    const uint32_t style = in.byte() & (fk::kCurrRightJust | fk::kCurrSuppress);
    const bool asLong = (in.byte() & 1) != 0;

    char built[160], shown[200], again[200];
    std::string detail;
    // The long type's fixed "." and "," clash with other rows' separators;
    // what is shown then is whatever the steps make of it.
    bool stable = SymbolApart(row);
    if (asLong) {
        stable = stable && row.decimal[0] == '.' && row.thousands[0] == ',';
        const int32_t value = in.signedNumber();
        fk::CurrencyLongText(value, false, built, sizeof built);
        fk::CurrencyValueText(built, row, style, shown, sizeof shown);
        detail = std::to_string(value) + " -> " + shown;
        // Reads back with a "$" alone as symbol, from three characters on
        // (the shorter ones get a "." in front, as they always did).
        stable = stable && (value <= -100 || value >= 100);
        if (stable && strcmp(row.symbol, "$") == 0 && (style & fk::kCurrSuppress) == 0 && SignInFront(row.negative))
            check(fk::CurrencyToHundredths(shown) == value, "a long reads back from its shown text", detail);
    } else {
        double value = 0;
        for (int i = 0; i < 8; ++i) reinterpret_cast<unsigned char*>(&value)[i] = in.byte();
        if (!fk::CurrencyDoubleText(value, row, false, built, sizeof built)) {
            check(!isfinite(value) && built[0] == 0, "only infinities and NaN have no text");
            return;
        }
        fk::CurrencyValueText(built, row, style, shown, sizeof shown);
        detail = std::string(built) + " -> " + shown;
        stable = stable && fabs(value) < 1e11;  // twelve integer digits: lstrcomma's room
        if (stable && (style & fk::kCurrSuppress) == 0 && SignInFront(row.negative)) {
            const double back = fk::CurrencyToDouble(shown, row);
            const double step = pow(10.0, -std::max(row.digits, 0));
            check(fabs(back - value) <= step / 2 + fabs(value) * 1e-12, "a double reads back from its shown text",
                  detail);
        }
    }
    // A shown text formats to itself: painting it again changes nothing.
    if (stable) {
        fk::FormatCurrency(shown, row, style, again, sizeof again);
        check(strcmp(again, shown) == 0, "a shown text formats to itself", detail + " -> " + again);
    }
}

}  // namespace

FK_FUZZ_ROUTINES(hostile, values)
