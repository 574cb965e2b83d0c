// Fuzz target: the number text of the numeric, real and currency fields
// (fields/number_text.h). An input is an option byte that picks a routine,
// then its numbers and texts. Texts sit in heap blocks of exactly the size
// each routine is handed, so one byte too far is a finding; results are
// compared with the C runtime (this process runs in the "C" locale).
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "fields/text/number_text.h"
#include "support/input.h"

namespace {

using fuzz::check;
using fuzz::Heap;
using fuzz::Input;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

double doubleFrom(Input& in) {
    uint64_t bits = 0;
    for (int i = 0; i < 8; ++i) bits |= static_cast<uint64_t>(in.byte()) << (8 * i);
    double d;
    std::memcpy(&d, &bits, sizeof d);
    return d;
}

void toInt(Input& in) {
    const std::string text = in.rest();
    Heap t(text);
    const int32_t got = fk::NumberTextToInt32(t.get());
    // Short numbers agree with strtol; longer ones wrap.
    size_t i = 0;
    while (i < text.size() && (text[i] == ' ' || (text[i] >= '\t' && text[i] <= '\r'))) ++i;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) ++i;
    size_t digits = 0;
    while (i + digits < text.size() && isDigit(text[i + digits])) ++digits;
    if (digits <= 9)
        check(got == static_cast<int32_t>(std::strtol(text.c_str(), nullptr, 10)), "agrees with strtol", text);
}

void writeInt(Input& in) {
    const int32_t value = static_cast<int32_t>(in.signedNumber());
    const size_t size = 1 + in.byte() % 16;
    Heap out(std::string(), size, 'W');
    const size_t n = fk::WriteInt32(out.get(), size, value);
    check(out.terminated() && n == out.str().size(), "WriteInt32 terminates inside its buffer");
    char want[16];
    std::snprintf(want, sizeof want, "%d", value);
    check(out.str() == std::string(want).substr(0, size - 1), "WriteInt32 writes what printf does", want);
    if (size > fk::kInt32Text) check(fk::NumberTextToInt32(out.get()) == value, "WriteInt32 reads back", want);
}

// The set-value text is printf's fixed notation, zero aside.
void valueText(Input& in) {
    const double value = doubleFrom(in);
    const int32_t places = in.signedNumber() % 1200;
    const bool blank = (in.byte() & 1) != 0;
    const size_t size = 1 + static_cast<uint32_t>(in.number()) % 1400;
    Heap out(std::string(), size, 'V');
    fk::RealValueText(value, places, blank, out.get(), size);
    check(out.terminated(), "RealValueText terminates inside its buffer");
    const std::string got = out.str();
    const int32_t p = places < 0 ? 0 : places;
    std::string want;
    if (value == 0.0) {
        want = blank ? "" : (p > 0 ? "0." + std::string(p, '0') : "0");
    } else if (!std::isfinite(value)) {
        want = std::isnan(value) ? "NAN" : (value < 0 ? "-INF" : "INF");
    } else {
        static char fixed[4096];
        std::snprintf(fixed, sizeof fixed, "%.*f", static_cast<int>(p > fk::kMaxPlaces ? fk::kMaxPlaces : p), value);
        want = fixed;
    }
    check(got == want.substr(0, size - 1), "RealValueText is the fixed notation", want.substr(0, 80));
}

// Digits of a text without its point, incremented by one in the last place.
std::string increment(std::string digits) {
    size_t i = digits.size();
    while (i > 0 && digits[i - 1] == '9') digits[--i] = '0';
    if (i == 0) return "1" + digits;
    ++digits[i - 1];
    return digits;
}

std::string withoutPoint(const std::string& s) {
    std::string out;
    for (char c : s)
        if (c != '.') out.push_back(c);
    return out;
}

void leavingText(Input& in) {
    const int32_t places = in.signedNumber() % 300;
    const size_t extra = in.byte();
    const std::string text = in.rest(400);
    const size_t size = text.size() + 1 + extra;
    Heap t(text, size, 'L');
    fk::RealLeavingText(t.get(), size, places);
    check(t.terminated(), "RealLeavingText stays inside its buffer", text);
    const std::string got = t.str();

    // A plain decimal number that has room: rounded half up to places.
    const size_t dots = std::count(text.begin(), text.end(), '.');
    const bool plain = !text.empty() && dots <= 1 && text != "." &&
                       std::all_of(text.begin(), text.end(), [](char c) { return isDigit(c) || c == '.'; });
    if (!plain || places < 0 || text.size() + places + 3 > size) return;
    const std::string full = text[0] == '.' ? "0" + text : text;
    const size_t point = full.find('.');
    if (places == 0) {
        check(got == full.substr(0, point), "places 0 cuts at the point", text);
        return;
    }
    std::string whole = point == std::string::npos ? full : full.substr(0, point);
    std::string fraction = point == std::string::npos ? "" : full.substr(point + 1);
    const bool up = fraction.size() > static_cast<size_t>(places) && fraction[places] > '4';
    fraction.resize(places, '0');
    std::string digits = whole + fraction;
    if (up) digits = increment(digits);
    const std::string want = digits.substr(0, digits.size() - places) + "." + digits.substr(digits.size() - places);
    check(got == want, "RealLeavingText rounds half up", text + " -> " + got);
    check(withoutPoint(got).size() >=
              withoutPoint(full.substr(0, point == std::string::npos ? full.size() : point)).size(),
          "RealLeavingText keeps the whole digits", text);
}

void toDouble(Input& in) {
    const std::string text = in.rest(600);
    Heap t(text);
    const char* end = nullptr;
    const double got = fk::NumberTextToDouble(t.get(), &end);
    check(end >= t.get() && end <= t.get() + text.size(), "the end lies in the text", text);
    char* libEnd = nullptr;
    const double lib = std::strtod(text.c_str(), &libEnd);
    const size_t ours = static_cast<size_t>(end - t.get());
    const size_t theirs = static_cast<size_t>(libEnd - text.c_str());
    if (ours == 0) {
        check(got == 0.0, "no number gives 0", text);
        return;
    }
    // strtod also reads hexadecimal, infinities and NaN; ours stops earlier.
    check(theirs >= ours, "strtod reads at least as far", text);
    if (theirs == ours) check(std::memcmp(&got, &lib, sizeof got) == 0, "agrees with strtod", text);
}

void narrow(Input& in) {
    const double value = doubleFrom(in);
    const float got = fk::NarrowToFloat(value);
    if (std::isnan(value)) {
        check(std::isnan(got), "NaN stays NaN");
    } else if (std::fabs(value) <= 3.4028234663852886e38) {
        check(got == static_cast<float>(value), "in range: the plain conversion");
    } else {
        check(std::isinf(got) || std::fabs(got) == 3.4028234663852886e38f, "beyond: the largest float or infinity");
        check(std::signbit(got) == std::signbit(value), "the sign stays");
    }
}

}  // namespace

FK_FUZZ_ROUTINES(toInt, writeInt, valueText, leavingText, toDouble, narrow)
