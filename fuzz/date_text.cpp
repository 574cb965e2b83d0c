// Fuzz target: the date field's text rules (fk::ResolveDateStyle,
// fk::DateMask, fk::ParseDateText, fk::FormatDateText,
// fk::NormaliseDateText). An input is a style number, a routine byte, an
// output size, three date fields, then the method string, the short-date
// pattern and the raw text. Output goes into heap blocks of exactly the size
// the caller names.
#include <string.h>
#include <time.h>

#include <string>

#include "fields/text/date_text.h"
#include "support/input.h"

namespace {

using fuzz::check;
using fuzz::Heap;
using fuzz::Input;

bool OneSeparator(uint32_t style) {
    const uint32_t s = style & fk::kDateSeparatorBits;
    return s == fk::kDateDot || s == fk::kDateDash || s == fk::kDateSlash;
}

void Resolve(uint32_t style, const std::string& method, const std::string& pattern) {
    Heap m(method), p(pattern);
    const uint32_t resolved = fk::ResolveDateStyle(style, m.get(), p.get());
    check(m.str() == method && p.str() == pattern, "resolution leaves its texts alone", method);
    check(OneSeparator(resolved), "a resolved style has one separator", method);
    check((resolved & ~(fk::kDateSeparatorBits | fk::kDateToday | fk::kDateOrderBits)) ==
              (style & ~(fk::kDateSeparatorBits | fk::kDateToday | fk::kDateOrderBits)),
          "resolution keeps the other bits", method);
    check((resolved & style & fk::kDateOrderBits) == (style & fk::kDateOrderBits) && fk::DateOrder(resolved) != 0,
          "the order is only ever ORed", method);
    if (OneSeparator(style)) check((resolved & 0x70) == (style & 0x70), "a chosen separator stays", method);
    const char* mask = fk::DateMask(resolved);
    check(strlen(mask) == 8 || strlen(mask) == 10, "masks are eight or ten long", method);
}

std::string Format(const struct tm& d, uint32_t style, size_t size, bool blank) {
    Heap out(std::string(), size, 'F');
    const int32_t n = fk::FormatDateText(out.get(), size, &d, style, blank);
    check(out.terminated() && static_cast<size_t>(n) == out.str().size() && static_cast<size_t>(n) < size,
          "formatting stays inside the buffer", std::to_string(size));
    for (char c : out.str()) check((c >= '0' && c <= '9') || c == '-', "raw text is digits", out.str());
    return out.str();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Input in(data, size);
    const uint32_t style = static_cast<uint32_t>(in.number());
    const uint8_t op = in.byte();
    const size_t outSize = 1 + static_cast<size_t>(in.byte() % 48);
    struct tm d;
    memset(&d, 0x5A, sizeof d);
    d.tm_year = in.signedNumber();
    d.tm_mon = in.signedNumber();
    d.tm_mday = in.signedNumber();
    const std::string method = in.text();
    const std::string pattern = in.text();
    const std::string raw = in.rest();
    const bool blank = (op & 1) != 0;

    Resolve(style, method, pattern);

    // Any raw text parses; only the date fields change.
    Heap r(raw);
    struct tm parsed;
    memset(&parsed, 0x5A, sizeof parsed);
    fk::ParseDateText(r.get(), style, &parsed);
    check(r.str() == raw && parsed.tm_hour == 0x5A5A5A5A && parsed.tm_isdst == 0x5A5A5A5A,
          "parsing touches only the date", raw);

    Format(d, style, outSize, blank);
    Heap normal(std::string(), outSize, 'N');
    const int32_t n = fk::NormaliseDateText(normal.get(), outSize, r.get(), style, blank);
    check(normal.terminated() && static_cast<size_t>(n) == normal.str().size(), "normalising stays inside the buffer",
          raw);

    // A calendar date in the years the order can write comes back.
    const uint32_t order = fk::DateOrder(style);
    const bool four = fk::IsFourDigitOrder(order);
    const bool writable = four ? d.tm_year >= -900 && d.tm_year <= 8099 : d.tm_year >= 0 && d.tm_year <= 99;
    if (d.tm_mday >= 1 && d.tm_mday <= 31 && d.tm_mon >= 0 && d.tm_mon <= 11 && writable) {
        const std::string text = Format(d, style, 64, blank);
        struct tm back;
        memset(&back, 0, sizeof back);
        fk::ParseDateText(text.c_str(), style, &back);
        check(back.tm_mday == d.tm_mday && back.tm_mon == d.tm_mon && back.tm_year == d.tm_year,
              "a written date reads back", text);
        char again[fk::kDateRawMax + 1];
        fk::NormaliseDateText(again, sizeof again, text.c_str(), style, blank);
        char twice[fk::kDateRawMax + 1];
        fk::NormaliseDateText(twice, sizeof twice, again, style, blank);
        check(strcmp(again, twice) == 0 || d.tm_year >= 1900, "normalising twice changes nothing", text);
    }
    return 0;
}
