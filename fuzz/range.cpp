// Fuzz target: range and choice tests (fk::RangeTest, fk::ChoiceTest) for
// every type code. An input is a type byte, a routine byte, the value (a
// number, or a text, or the fields of a date) and the range or choice text.
// The value lies in a heap block of exactly its type's size; the comparison
// handed in checks every bound and item it is given: terminated, never more
// than the 80 characters a bound holds, choice items without blanks around.

#include "support/input.h"
#include "validate/text/range_parse.h"

using namespace fuzz;

const char* g_value = nullptr;  // the text value handed to the routine

int32_t compare(const char* value, const char* piece) {
    check(value == g_value && piece != nullptr && strlen(piece) <= static_cast<size_t>(fk::kBoundMax),
          "the value as it is and a bound of at most 80", piece != nullptr ? piece : "");
    return strcmp(value, piece);
}

int32_t item(const char* value, const char* item) {
    const size_t n = strlen(item);
    check(strchr(item, ')') == nullptr && (n == 0 || (item[0] != ' ' && item[n - 1] != ' ')),
          "a choice item comes without blanks around it and without \")\"", item);
    return compare(value, item);
}

void ranges(Input& in) {
    const uint8_t t = in.byte();
    const int32_t type = t < 0xF0 ? 1 + t % 18 : static_cast<int32_t>(t) - 0xF8;  // 1-18, now and then -8..7
    const bool range = in.byte() % 2 == 0;
    // Whole numbers, reals, a text or a date, each in a block of its size.
    std::unique_ptr<Heap> text;
    std::unique_ptr<int32_t> whole;
    std::unique_ptr<double> real;
    std::unique_ptr<struct tm> date;
    const void* value = nullptr;
    if (type == 4) {
        text = std::make_unique<Heap>(in.text(120));
        value = text->get();
    } else if (type == 5 || (type >= 13 && type <= 18)) {
        date = std::make_unique<struct tm>(in.date());
        value = date.get();
    } else {
        const int32_t n = in.signedNumber();
        whole = std::make_unique<int32_t>(n);
        real = std::make_unique<double>(static_cast<double>(n) / ((in.byte() & 1) != 0 ? 4 : 1));
        value = type == 3 || type == 12 ? static_cast<const void*>(real.get()) : whole.get();
    }
    g_value = type == 4 ? text->get() : nullptr;
    const std::string bounds = in.text();
    Heap b(bounds);
    const int32_t r = range ? fk::RangeTest(type, value, b.get(), compare) : fk::ChoiceTest(type, value, b.get(), item);
    check((r == 0 || r == 1) && b.str() == bounds, "a test is 0 or 1 and leaves its text alone", bounds);
}

FK_FUZZ_ROUTINES(ranges)
