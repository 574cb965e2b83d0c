// Fuzz target: the date field's text rules (fk::ResolveDateStyle,
// fk::DateMask, fk::ParseDateText, fk::FormatDateText,
// fk::NormaliseDateText). An input is a style number, an option byte, an
// output size, three date fields, then the method string, the short-date
// pattern and the raw text. Output goes into heap blocks of exactly the size
// the caller names.
#include <string>

#include "fields/text/date_text.h"
#include "support/input.h"

namespace {

using namespace fuzz;

bool oneSeparator(uint32_t style) {
    const uint32_t s = style & fk::kDateSeparatorBits;
    return s == fk::kDateDot || s == fk::kDateDash || s == fk::kDateSlash;
}

// Writes d as raw text into a block of size bytes.
std::string dateText(const struct tm& d, uint32_t style, size_t size, bool blank) {
    Heap out(std::string(), size, 'F');
    const int32_t n = fk::FormatDateText(out.get(), size, &d, style, blank);
    const std::string text = out.str();
    check(out.terminated() && static_cast<size_t>(n) == text.size() && static_cast<size_t>(n) < size,
          "formatting stays inside the buffer", std::to_string(size));
    check(text.find_first_not_of("0123456789-") == std::string::npos, "raw text is digits", text);
    return text;
}

void date(Input& in) {
    const uint32_t style = static_cast<uint32_t>(in.number());
    const bool blank = (in.byte() & 1) != 0;
    const size_t outSize = 1 + static_cast<size_t>(in.byte() % 48);
    const struct tm d = in.date();
    const std::string method = in.text(), pattern = in.text(), raw = in.text();

    Heap m(method), p(pattern);
    const uint32_t resolved = fk::ResolveDateStyle(style, m.get(), p.get());
    const uint32_t moving = fk::kDateSeparatorBits | fk::kDateToday | fk::kDateOrderBits;
    check(m.str() == method && p.str() == pattern, "resolution leaves its texts alone", method);
    check(oneSeparator(resolved), "a resolved style has one separator", method);
    check((resolved & ~moving) == (style & ~moving), "resolution keeps the other bits", method);
    check((resolved & style & fk::kDateOrderBits) == (style & fk::kDateOrderBits) && fk::DateOrder(resolved) != 0,
          "the order is only ever ORed", method);
    check(!oneSeparator(style) || (resolved & 0x70) == (style & 0x70), "a chosen separator stays", method);
    const size_t maskLength = strlen(fk::DateMask(resolved));
    check(maskLength == 8 || maskLength == 10, "masks are eight or ten long", method);

    // Any raw text parses; only the date fields change.
    Heap r(raw);
    struct tm parsed;
    memset(&parsed, 0x5A, sizeof parsed);
    fk::ParseDateText(r.get(), style, &parsed);
    check(r.str() == raw && parsed.tm_hour == 0x5A5A5A5A && parsed.tm_isdst == 0x5A5A5A5A,
          "parsing touches only the date", raw);
    dateText(d, style, outSize, blank);
    Heap normal(std::string(), outSize, 'N');
    const int32_t n = fk::NormaliseDateText(normal.get(), outSize, r.get(), style, blank);
    check(normal.terminated() && static_cast<size_t>(n) == normal.str().size(), "normalising stays inside", raw);

    // A calendar date in the years the order can write comes back.
    const bool four = fk::IsFourDigitOrder(fk::DateOrder(style));
    const bool writable = four ? d.tm_year >= -900 && d.tm_year <= 8099 : d.tm_year >= 0 && d.tm_year <= 99;
    if (d.tm_mday < 1 || d.tm_mday > 31 || d.tm_mon < 0 || d.tm_mon > 11 || !writable) return;
    const std::string text = dateText(d, style, 64, blank);
    struct tm back = {};
    fk::ParseDateText(text.c_str(), style, &back);
    check(back.tm_mday == d.tm_mday && back.tm_mon == d.tm_mon && back.tm_year == d.tm_year,
          "a written date reads back", text);
    char again[fk::kDateRawMax + 1], twice[fk::kDateRawMax + 1];
    fk::NormaliseDateText(again, sizeof again, text.c_str(), style, blank);
    fk::NormaliseDateText(twice, sizeof twice, again, style, blank);
    check(strcmp(again, twice) == 0 || d.tm_year >= 1900, "normalising twice changes nothing", text);
}

}  // namespace

FK_FUZZ_ROUTINES(date)
