// Fuzz target: the date field's text rules (fk::ResolveDateStyle,
// fk::DateMask, fk::ParseDateText, fk::FormatDateText,
// fk::NormaliseDateText). An input is a style number, an option byte, an
// output size, three date fields, then the method string, the short-date
// pattern and the raw text. Output goes into heap blocks of exactly the size
// the caller names; a calendar date in the years the order can write reads
// back.
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
    check(strlen(fk::DateMask(fk::ResolveDateStyle(style, m.get(), p.get()))) >= 8, "a resolved style has a mask");
    struct tm parsed = d, back = {};
    fk::ParseDateText(r.get(), style, &parsed);
    const int32_t n = fk::FormatDateText(out.get(), size, &d, style, blank);
    const int32_t normalised = fk::NormaliseDateText(normal.get(), size, r.get(), style, blank);
    check(out.terminated() && static_cast<size_t>(n) == out.str().size() && normal.terminated() &&
              static_cast<size_t>(normalised) == normal.str().size() && parsed.tm_hour == d.tm_hour,
          "formatting and normalising stay inside the buffer, parsing touches only the date", raw);
    const bool four = fk::IsFourDigitOrder(fk::DateOrder(style));
    const bool writable = four ? d.tm_year >= -900 && d.tm_year <= 8099 : d.tm_year >= 0 && d.tm_year <= 99;
    if (d.tm_mday < 1 || d.tm_mday > 31 || d.tm_mon < 0 || d.tm_mon > 11 || !writable) return;
    char text[64];
    fk::FormatDateText(text, sizeof text, &d, style, blank);
    fk::ParseDateText(text, style, &back);
    check(back.tm_mday == d.tm_mday && back.tm_mon == d.tm_mon && back.tm_year == d.tm_year, "a date reads back", text);
}

FK_FUZZ_ROUTINES(date)
