// Fuzz target: the date field's text rules (fk::ResolveDateStyle,
// fk::DateMask, fk::ParseDateText, fk::FormatDateText,
// fk::NormaliseDateText). An input is a style number, an option byte, an
// output size, three date fields, then the method string, the short-date
// pattern and the raw text. Output goes into heap blocks of exactly the size
// the caller names.

#include "fields/text/date_text.h"
#include "support/input.h"

using namespace fuzz;

void date(Input& in) {
    const uint32_t style = static_cast<uint32_t>(in.number());
    const bool blank = (in.byte() & 1) != 0;
    const size_t size = 1 + static_cast<size_t>(in.byte() % 48);
    const struct tm d = in.date();
    const std::string method = in.text(), pattern = in.text(), raw = in.text();
    Heap m(method), p(pattern), r(raw), out(std::string(), size, 'F'), normal(std::string(), size, 'N');
    const uint32_t resolved = fk::ResolveDateStyle(style, m.get(), p.get());
    const uint32_t moving = fk::kDateSeparatorBits | fk::kDateToday | fk::kDateOrderBits;
    check((resolved & ~moving) == (style & ~moving) && fk::DateOrder(resolved) != 0 &&
              (strlen(fk::DateMask(resolved)) | 2) == 10,
          "resolution keeps the other bits and gives a mask", method);
    // Any raw text parses; only the date fields change.
    struct tm parsed;
    memset(&parsed, 0x5A, sizeof parsed);
    fk::ParseDateText(r.get(), style, &parsed);
    check(r.str() == raw && parsed.tm_hour == 0x5A5A5A5A && parsed.tm_isdst == 0x5A5A5A5A, "parsing", raw);
    const int32_t n = fk::FormatDateText(out.get(), size, &d, style, blank);
    const int32_t normalised = fk::NormaliseDateText(normal.get(), size, r.get(), style, blank);
    check(out.terminated() && static_cast<size_t>(n) == out.str().size() && normal.terminated() &&
              static_cast<size_t>(normalised) == normal.str().size(),
          "formatting and normalising stay inside the buffer", raw);
    // A calendar date in the years the order can write comes back.
    const bool four = fk::IsFourDigitOrder(fk::DateOrder(style));
    const bool writable = four ? d.tm_year >= -900 && d.tm_year <= 8099 : d.tm_year >= 0 && d.tm_year <= 99;
    if (d.tm_mday < 1 || d.tm_mday > 31 || d.tm_mon < 0 || d.tm_mon > 11 || !writable) return;
    char text[64];
    fk::FormatDateText(text, sizeof text, &d, style, blank);
    struct tm back = {};
    fk::ParseDateText(text, style, &back);
    check(back.tm_mday == d.tm_mday && back.tm_mon == d.tm_mon && back.tm_year == d.tm_year, "a date reads back", text);
}

FK_FUZZ_ROUTINES(date)
