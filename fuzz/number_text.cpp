// Fuzz target: the number text of the numeric, real and currency fields
// (fields/number_text.h). An input is an option byte that picks a routine,
// then its numbers and texts. Texts sit in heap blocks of exactly the size
// each routine is handed, so one byte too far is a finding; results are
// compared with the C runtime (this process runs in the "C" locale).
#include <math.h>

#include <algorithm>
#include <string>

#include "fields/text/number_text.h"
#include "support/input.h"

namespace {

using namespace fuzz;

void toInt(Input& in) {
    const std::string text = in.text();
    Heap t(text);
    // Short numbers agree with strtol; longer ones wrap.
    size_t i = text.find_first_not_of(" \t\n\v\f\r");
    i = i == std::string::npos ? text.size() : i + (text[i] == '-' || text[i] == '+');
    const size_t digits = std::find_if_not(text.begin() + i, text.end(), isDigit) - (text.begin() + i);
    const int32_t got = fk::NumberTextToInt32(t.get());
    check(digits > 9 || got == static_cast<int32_t>(strtol(text.c_str(), nullptr, 10)), "agrees with strtol", text);
}

void writeInt(Input& in) {
    const int32_t value = in.signedNumber();
    const size_t size = 1 + in.byte() % 16;
    Heap out(std::string(), size, 'W');
    const size_t n = fk::WriteInt32(out.get(), size, value);
    check(out.terminated() && n == out.str().size(), "WriteInt32 terminates inside its buffer");
    const std::string want = std::to_string(value);
    check(out.str() == want.substr(0, size - 1), "WriteInt32 writes what printf does", want);
    check(size <= fk::kInt32Text || fk::NumberTextToInt32(out.get()) == value, "WriteInt32 reads back", want);
}

// The set-value text is printf's fixed notation, zero aside.
void valueText(Input& in) {
    const double value = in.real();
    const int32_t places = in.signedNumber() % 1200;
    const int32_t p = std::max(places, 0);
    const bool blank = (in.byte() & 1) != 0;
    const size_t size = 1 + static_cast<uint32_t>(in.number()) % 1400;
    Heap out(std::string(), size, 'V');
    fk::RealValueText(value, places, blank, out.get(), size);
    check(out.terminated(), "RealValueText terminates inside its buffer");
    static char fixed[4096];
    snprintf(fixed, sizeof fixed, "%.*f", static_cast<int>(std::min(p, fk::kMaxPlaces)), value);
    std::string want = fixed;
    if (value == 0.0) want = blank ? "" : (p > 0 ? "0." + std::string(p, '0') : "0");
    if (!isfinite(value)) want = isnan(value) ? "NAN" : (value < 0 ? "-INF" : "INF");
    check(out.str() == want.substr(0, size - 1), "RealValueText is the fixed notation", want.substr(0, 80));
}

void leavingText(Input& in) {
    const int32_t places = in.signedNumber() % 300;
    const size_t extra = in.byte();
    const std::string text = in.text(400);
    const size_t size = text.size() + 1 + extra;
    Heap t(text, size, 'L');
    fk::RealLeavingText(t.get(), size, places);
    check(t.terminated(), "RealLeavingText stays inside its buffer", text);
    const std::string got = t.str();

    // A plain decimal number that has room: rounded half up to places.
    const bool plain = text.find_first_not_of("0123456789.") == std::string::npos && text != "." &&
                       std::count(text.begin(), text.end(), '.') <= 1;
    if (text.empty() || !plain || places < 0 || text.size() + places + 3 > size) return;
    const std::string full = text[0] == '.' ? "0" + text : text;
    const size_t point = std::min(full.find('.'), full.size());
    std::string fraction = full.substr(std::min(point + 1, full.size()));
    if (places == 0) return check(got == full.substr(0, point), "places 0 cuts at the point", text);
    const bool up = fraction.size() > static_cast<size_t>(places) && fraction[places] > '4';
    fraction.resize(places, '0');
    // The digits without their point, incremented by one in the last place.
    std::string digits = full.substr(0, point) + fraction;
    size_t i = digits.size();
    while (up && i > 0 && digits[i - 1] == '9') digits[--i] = '0';
    if (up && i == 0) digits.insert(0, 1, '1');
    if (up && i > 0) ++digits[i - 1];
    const std::string want = digits.substr(0, digits.size() - places) + "." + digits.substr(digits.size() - places);
    check(got == want, "RealLeavingText rounds half up", text + " -> " + got);
    check(without(got, '.').size() >= point, "RealLeavingText keeps the whole digits", text);
}

void toDouble(Input& in) {
    const std::string text = in.text(600);
    Heap t(text);
    const char* end = nullptr;
    const double got = fk::NumberTextToDouble(t.get(), &end);
    check(end >= t.get() && end <= t.get() + text.size(), "the end lies in the text", text);
    char* libEnd = nullptr;
    const double lib = strtod(text.c_str(), &libEnd);
    const size_t ours = static_cast<size_t>(end - t.get()), theirs = static_cast<size_t>(libEnd - text.c_str());
    if (ours == 0) return check(got == 0.0, "no number gives 0", text);
    // strtod also reads hexadecimal, infinities and NaN; ours stops earlier.
    check(theirs >= ours, "strtod reads at least as far", text);
    check(theirs != ours || memcmp(&got, &lib, sizeof got) == 0, "agrees with strtod", text);
}

void narrow(Input& in) {
    const double value = in.real();
    const float got = fk::NarrowToFloat(value);
    const float largest = 3.4028234663852886e38f;
    const bool inRange = fabs(value) <= largest;
    check(!isnan(value) || isnan(got), "NaN stays NaN");
    check(!inRange || got == static_cast<float>(value), "in range: the plain conversion");
    check(inRange || isnan(value) || ((isinf(got) || fabs(got) == largest) && signbit(got) == signbit(value)),
          "beyond: the largest float or infinity, the sign kept");
}

}  // namespace

FK_FUZZ_ROUTINES(toInt, writeInt, valueText, leavingText, toDouble, narrow)
