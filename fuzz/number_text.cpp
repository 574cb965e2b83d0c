// Fuzz target: the number text of the numeric, real and currency fields
// (fields/number_text.h). An input is an option byte that picks a routine,
// then its numbers and texts. Texts sit in heap blocks of exactly the size
// each routine is handed, so one byte too far is a finding; written numbers
// are compared with the C runtime (this process runs in the "C" locale).
#include <float.h>
#include <math.h>

#include "fields/text/number_text.h"
#include "support/input.h"

using namespace fuzz;

void text(Input& in) {
    const std::string text = in.text(320);
    Heap t(text);
    const char* end = nullptr;
    (void)fk::NumberTextToInt32(t.get());
    (void)fk::NumberTextToDouble(t.get(), &end);
    check(end >= t.get() && end <= t.get() + text.size(), "NumberTextToDouble ends in the text", text);
}

// WriteInt32 writes what printf does, RealValueText printf's fixed notation (zero and infinities aside).
void values(Input& in, int32_t mostPlaces) {
    double value;  // eight bytes as they lie in a double: any value, NaN and infinities too
    for (size_t i = 0; i < sizeof value; ++i) reinterpret_cast<char*>(&value)[i] = in.ch();
    const int32_t number = in.signedNumber(), places = std::max(number % mostPlaces, 0);
    const size_t size = 1 + static_cast<uint32_t>(in.number()) % (mostPlaces + 200);
    Heap out(std::string(), size, 'V'), whole(std::string(), 1 + size % 16, 'W');
    fk::RealValueText(value, places, (size & 1) != 0, out.get(), size);
    const size_t n = fk::WriteInt32(whole.get(), 1 + size % 16, number);
    static char fixed[4096];
    snprintf(fixed, sizeof fixed, "%.*f", static_cast<int>(std::min(places, fk::kMaxPlaces)), value);
    check(out.terminated() && (value == 0 || !isfinite(value) || out.str() == std::string(fixed).substr(0, size - 1)),
          "RealValueText is the fixed notation", fixed);
    check(whole.str() == std::to_string(number).substr(0, size % 16) && n == whole.str().size(), "WriteInt32");
    const float narrowed = fk::NarrowToFloat(value);
    const bool beyond = (isinf(narrowed) || fabs(narrowed) == FLT_MAX) && signbit(narrowed) == signbit(value);
    check(isnan(value) ? isnan(narrowed) : fabs(value) <= FLT_MAX ? narrowed == static_cast<float>(value) : beyond,
          "NarrowToFloat: the plain conversion, beyond it the largest float or infinity");
}

void leavingText(Input& in) {
    const int32_t places = in.signedNumber() % 300;
    const size_t extra = in.byte();
    const std::string text = in.text(200);
    Heap t(text, text.size() + 1 + extra, 'L');
    fk::RealLeavingText(t.get(), text.size() + 1 + extra, places);
    check(t.terminated(), "RealLeavingText stays inside its buffer", text);
}

// The first byte picks the routine.
void number(Input& in) {
    const uint8_t routine = in.byte() % 6;
    if (routine == 0 || routine == 4) text(in);
    if (routine == 1 || routine == 2 || routine == 5) values(in, routine == 2 ? 1200 : 16);  // few places: quick
    if (routine == 3) leavingText(in);
}

FK_FUZZ_ROUTINE(number)
