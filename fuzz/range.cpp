// Fuzz target: range and choice tests (fk::RangeTest, fk::ChoiceTest) for
// every type code. An input is a type byte, a routine byte, the value (a
// text for type 4, else the bytes of a whole number, a double or a date
// record) and the range or choice text. The value lies in a heap block of
// exactly its type's size; the comparison handed in checks every bound and
// item it is given: terminated, never more than the 80 characters a bound
// holds, choice items without blanks around them.
#include "support/input.h"
#include "validate/text/range_parse.h"

using namespace fuzz;

int32_t compare(const char* value, const char* piece) {
    check(strlen(piece) <= static_cast<size_t>(fk::kBoundMax), "a bound holds at most 80", piece);
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
    const bool date = type == 5 || (type >= 13 && type <= 18), real = type == 3 || type == 12;
    const std::string text = type == 4 ? in.text(120) : std::string();
    const size_t size = type == 4 ? text.size() + 1 : date ? sizeof(tm) : real ? sizeof(double) : sizeof(int32_t);
    std::unique_ptr<char[]> value(new char[size]);
    for (size_t i = 0; i < size; ++i) value[i] = type == 4 ? text.c_str()[i] : in.ch();
    Heap bounds(in.text());
    const std::string before = bounds.str();
    const int32_t r = range ? fk::RangeTest(type, value.get(), bounds.get(), compare)
                            : fk::ChoiceTest(type, value.get(), bounds.get(), item);
    check((r == 0 || r == 1) && bounds.str() == before, "a test is 0 or 1 and leaves its text alone", before);
}

FK_FUZZ_ROUTINE(ranges)
