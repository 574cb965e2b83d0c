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
    check(strlen(fk::DateMask(fk::ResolveDateStyle(style, m.get(), p.get()))) >= 8, "a resolved style has a mask");
    struct tm parsed = d;
    fk::ParseDateText(r.get(), style, &parsed);
    const int32_t n = fk::FormatDateText(out.get(), size, &d, style, blank);
    const int32_t normalised = fk::NormaliseDateText(normal.get(), size, r.get(), style, blank);
    check(out.terminated() && static_cast<size_t>(n) == out.str().size() && normal.terminated() &&
              static_cast<size_t>(normalised) == normal.str().size() && parsed.tm_hour == d.tm_hour,
          "formatting and normalising stay inside the buffer, parsing touches only the date", raw);
}

FK_FUZZ_ROUTINE(date)
