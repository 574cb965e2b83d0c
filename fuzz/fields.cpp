// Fuzz target: the text rules of the entry fields. The first byte picks one
// of four groups, each as many runs as the others:
// - currency: formatting (fk::FormatCurrency) and the set and get value
//   texts. The next byte picks a hostile run (a row of arbitrary bytes, an
//   unterminated symbol, every routine writing into a heap block of exactly
//   the output size 0-399, which it must keep to and terminate, its input
//   left alone) or a value run (a row of the table and a value, a double or
//   a 32-bit long: the text shown for it reads back and formats to itself).
// - date: style resolution, masks, parsing, formatting and normalising. A
//   style number, an option byte, an output size, three date fields, then the
//   method string, the short-date pattern and the raw text.
// - number: the number text of the numeric, real and currency fields; the
//   next byte picks a routine, compared with the C runtime (this process runs
//   in the "C" locale).
// - mask: input masks (twAppToScrMask, fk::ScrToAppMask). An option byte,
//   two numbers (the application position, or the start and end of the
//   deleted range), the mask and the text. The screen buffer holds
//   strlen(app) + strlen(mask) + 1 bytes and the application buffer
//   strlen(screen) + 1.
// Every output goes into a heap block of exactly the size the caller names.
#include <math.h>

#include <algorithm>
#include <string>

#include "fields/text/currency_text.h"
#include "fields/text/date_text.h"
#include "fields/text/mask.h"
#include "fields/text/number_text.h"
#include "support/input.h"

namespace {

using namespace fuzz;
using fk::CurrencyFormat;

constexpr size_t kAmountMax = 159;  // the amount's own characters

// Runs a routine that writes at most size bytes into a block of exactly that
// size (one byte, which must stay untouched, for size 0); returns its text.
template <typename Call>
std::string written(size_t size, const char* what, const std::string& detail, Call&& call) {
    Heap out(std::string(), std::max<size_t>(size, 1), 'Q');
    out.get()[0] = size == 0 ? 'Q' : 0;
    call(out.get(), size);
    check(size == 0 ? out.get()[0] == 'Q' : out.terminated(), what, detail);
    return size == 0 ? std::string() : out.str();
}

void hostile(Input& in) {
    CurrencyFormat row;
    row.digits = in.signedNumber();
    row.placement = in.signedNumber();
    row.negative = in.signedNumber();
    for (char& c : row.symbol) c = in.ch();  // not necessarily terminated
    for (char* c : {&row.decimal[0], &row.decimal[1], &row.thousands[0], &row.thousands[1]}) *c = in.ch();
    const uint32_t style = in.byte();
    const bool blank = (style & 1) != 0;
    const size_t size = static_cast<size_t>(in.number()) % 400;
    const std::string text = in.text();
    Heap input(text);
    double value = 0;
    memcpy(&value, text.data(), std::min(text.size(), sizeof value));

    const std::string shown = written(size, "FormatCurrency stays in its buffer", text,
                                      [&](char* o, size_t n) { fk::FormatCurrency(input.get(), row, style, o, n); });
    check(shown.size() <= kAmountMax + 7 + 3, "a formatted text is the amount, the symbol and three signs", text);
    written(size, "CurrencyValueText stays in its buffer", text,
            [&](char* o, size_t n) { fk::CurrencyValueText(input.get(), row, style, o, n); });
    written(size, "CleanCurrency stays in its buffer", text,
            [&](char* o, size_t n) { fk::CleanCurrency(input.get(), row, blank, o, n); });
    written(size, "CurrencyZeroText stays in its buffer", text,
            [&](char* o, size_t n) { fk::CurrencyZeroText(row, blank, o, n); });
    written(size, "CurrencyDoubleText stays in its buffer", text,
            [&](char* o, size_t n) { fk::CurrencyDoubleText(value, row, blank, o, n); });
    written(size, "CurrencyLongText stays in its buffer", text,
            [&](char* o, size_t n) { fk::CurrencyLongText(row.digits, blank, o, n); });

    (void)fk::CurrencyToDouble(input.get(), row);
    (void)fk::CurrencyToHundredths(input.get());
    (void)fk::CurrencyWhole(input.get());
    const int32_t after = fk::CurrencyAfterDecimal(input.get(), row);
    check(after >= -1 && after <= static_cast<int32_t>(text.size()), "the decimal index lies in the text", text);
    const int32_t index = fk::CurrencyRowIndex(input.get());
    check(index >= 0 && index < fk::kCurrencyKeywords, "a keyword picks a row of the table", text);
    check(input.str() == text, "the input text stays as it was", text);
}

// The row's symbol is made of characters that a shown amount never holds
// otherwise, so removing them loses nothing of the amount.
bool symbolApart(const CurrencyFormat& row) {
    return strpbrk(row.symbol, "0123456789-()") == nullptr && strchr(row.symbol, row.decimal[0]) == nullptr;
}

void values(Input& in) {
    CurrencyFormat row = fk::g_currencyFormats[in.byte() % fk::kCurrencyRows];
    row.negative = in.byte() % 12;
    const uint32_t style = in.byte() & (fk::kCurrRightJust | fk::kCurrSuppress);
    const bool asLong = (in.byte() & 1) != 0;
    // Negative formats whose sign stands in front, where the conversions read it.
    const bool readable = (style & fk::kCurrSuppress) == 0 && row.negative != 3 && row.negative != 6 &&
                          row.negative != 7 && row.negative != 10;
    char built[160], shown[200], again[200];
    bool stable = symbolApart(row);
    int32_t whole = 0;
    double value = 0;
    if (asLong) {
        whole = in.signedNumber();
        fk::CurrencyLongText(whole, false, built, sizeof built);
        // The long type's fixed "." and "," clash with other rows' separators;
        // what is shown then is whatever the steps make of it. Shorter texts
        // than three characters get a "." in front, as they always did.
        stable = stable && row.decimal[0] == '.' && row.thousands[0] == ',' && (whole <= -100 || whole >= 100);
    } else {
        value = in.real();
        if (!fk::CurrencyDoubleText(value, row, false, built, sizeof built))
            return check(!isfinite(value) && built[0] == 0, "only infinities and NaN have no text");
        stable = stable && fabs(value) < 1e11;  // twelve integer digits: lstrcomma's room
    }
    fk::CurrencyValueText(built, row, style, shown, sizeof shown);
    const std::string detail = std::string(built) + " -> " + shown;
    if (asLong && stable && readable && strcmp(row.symbol, "$") == 0)
        check(fk::CurrencyToHundredths(shown) == whole, "a long reads back from its shown text", detail);
    const double step = pow(10.0, -std::max(row.digits, 0));
    if (!asLong && stable && readable)
        check(fabs(fk::CurrencyToDouble(shown, row) - value) <= step / 2 + fabs(value) * 1e-12,
              "a double reads back from its shown text", detail);
    // A shown text formats to itself: painting it again changes nothing.
    if (!stable) return;
    fk::FormatCurrency(shown, row, style, again, sizeof again);
    check(strcmp(again, shown) == 0, "a shown text formats to itself", detail + " -> " + again);
}

void currency(Input& in) { pick(in, {hostile, values}); }

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

void number(Input& in) { pick(in, {toInt, writeInt, valueText, leavingText, toDouble, narrow}); }

int32_t capacityOf(const std::string& mask) {
    return static_cast<int32_t>(std::count_if(mask.begin(), mask.end(), [](char c) { return strchr("#@?*", c); }));
}

// Merges app into mask; checks the screen text and the returned index.
std::string toScreen(const std::string& app, const std::string& mask, int32_t appPos, int32_t noFill) {
    Heap screen(std::string(), app.size() + mask.size() + 1, 'S'), a(app), m(mask);
    const int32_t index = twAppToScrMask(screen.get(), a.get(), m.get(), appPos, noFill);
    const std::string shown = screen.str(), detail = app + "|" + mask;
    check(screen.terminated(), "twAppToScrMask terminates the screen text", detail);
    check(a.str() == app && m.str() == mask, "twAppToScrMask leaves its inputs alone", detail);
    const int32_t capacity = capacityOf(mask);
    check(fk::MaskCapacity(m.get()) == capacity, "MaskCapacity counts the placeholders", mask);

    // The typed characters, in order, at the placeholders and behind the mask.
    std::string typed;
    size_t i = 0;
    for (; i < shown.size() && i < mask.size(); ++i) {
        const bool place = fk::IsMaskPlaceholder(mask[i]);
        if (place && typed.size() < app.size())
            typed.push_back(shown[i]);
        else
            check(shown[i] == (place ? ' ' : mask[i]), "twAppToScrMask shows literals and blanks", detail);
    }
    typed += shown.substr(i);
    check(typed == app, "twAppToScrMask keeps every character", detail);
    // Filled: the whole mask; not filled: nothing after the last typed character.
    check(noFill == 0 ? shown.size() >= mask.size() : (app.empty() ? shown.empty() : shown.back() == app.back()),
          "twAppToScrMask fills the mask, or ends at the last typed character", detail);

    // The index of application position appPos.
    if (appPos < 0) {
        check(index == -1, "a negative position maps to -1", detail);
    } else if (appPos < capacity) {
        check(index >= 0 && static_cast<size_t>(index) < mask.size() && fk::IsMaskPlaceholder(mask[index]) &&
                  capacityOf(mask.substr(0, index)) == appPos,
              "a position inside the mask maps to its placeholder", detail);
    } else {
        check(index >= -1 && index <= static_cast<int32_t>(mask.size()),
              "a position past the placeholders stays at the mask's end", detail);
    }
    return shown;
}

// Rebuilds the application text; checks the result index and the length.
std::string toApp(const std::string& screen, const std::string& mask, int32_t selStart, int32_t selEnd,
                  int32_t* result) {
    Heap app(std::string(), screen.size() + 1, 'A'), s(screen), m(mask);
    *result = fk::ScrToAppMask(app.get(), s.get(), m.get(), selStart, selEnd);
    const std::string text = app.str(), detail = screen + "|" + mask;
    check(app.terminated(), "ScrToAppMask terminates the application text", detail);
    check(s.str() == screen && m.str() == mask, "ScrToAppMask leaves its inputs alone", detail);
    check(*result >= 0 && static_cast<size_t>(*result) <= text.size(), "ScrToAppMask's index lies in the text", detail);
    check(text.size() <= static_cast<size_t>(capacityOf(mask)), "ScrToAppMask keeps only placeholders", detail);
    return text;
}

void mask(Input& in) {
    const uint8_t options = in.byte();
    const int32_t first = in.signedNumber(), second = in.signedNumber();
    const std::string mask = in.text(), text = in.text();

    // The text as application text, merged both ways.
    const std::string filled = toScreen(text, mask, first, 0), bare = toScreen(text, mask, first, 1);
    check(filled.compare(0, bare.size(), bare) == 0, "noFill only leaves out the tail", text + "|" + mask);
    // The text as screen text, with a deleted range.
    int32_t result = 0;
    toApp(text, mask, first, second, &result);
    // Round trip: typed text without blanks that fits comes back.
    if (text.find(' ') != std::string::npos || text.size() > static_cast<size_t>(capacityOf(mask))) return;
    check(toApp((options & 1) != 0 ? bare : filled, mask, 0, 0, &result) == text && result == 0,
          "ScrToAppMask undoes twAppToScrMask", text + "|" + mask);
}

}  // namespace

FK_FUZZ_ROUTINES(currency, date, number, mask)
