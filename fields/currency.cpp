// gxCurrency32: the entry field for money amounts. It is the number field
// with a country's conventions: a symbol before or after the amount, a
// decimal separator with a fixed number of decimals, a thousands separator
// and a negative format. The row of the country-format table comes from the
// method string's "@CF_" keyword; row 0 from WIN.INI's [intl] section.

#include <cctype>
#include <cstdlib>
#include <cstring>

#include "fields/text/currency_formats.h"
#include "fields/text/currency_text.h"
#include "fields/number_field.h"
#include "frame/extra_bytes.h"
#include "frame/registry.h"
#include "include/fldkit.h"

namespace fk {

// Row 0 from [intl]. The separator defaults are deliberately the continental
// pair (decimal ",", thousands ".") although the symbol default is "$".
// Every row takes the user's negative format.
void ReadCurrencyDefaults() {
    CurrencyFormat& row = g_currencyFormats[0];
    row.digits = static_cast<int32_t>(GetProfileIntA("intl", "iCurrDigits", 2));
    row.placement = static_cast<int32_t>(GetProfileIntA("intl", "iCurrency", 0));
    const auto negative = static_cast<int32_t>(GetProfileIntA("intl", "iNegCurr", 2));
    for (CurrencyFormat& r : g_currencyFormats) r.negative = negative;
    GetProfileStringA("intl", "sCurrency", "$", row.symbol, 7);
    char sep[8];
    GetProfileStringA("intl", "sDecimal", ",", sep, sizeof sep);
    row.decimal[0] = sep[0];
    row.decimal[1] = '\0';
    GetProfileStringA("intl", "sThousand", ".", sep, sizeof sep);
    row.thousands[0] = sep[0];
    row.thousands[1] = '\0';
}

namespace {

static_assert(kCurrRightJust == CURR_RIGHTJUST && kCurrSuppress == CURR_SUPPRESS);

// The number fields' words up to the modified flag, then the country index
// and, last, the method string.
struct CurrencyWords : NumberWords {
    using Country = ShortWord<24>;  // row of the country-format table
    using Method = PtrWord<char, 26, 30>;
};
static_assert(EndsAt<CurrencyWords::Method, CurrencyWords::Method>(kCurrencyExtra.bits32, kCurrencyExtra.bits64));
using W = CurrencyWords;

// Value type codes of this field.
constexpr int kLong = 2;        // hundredths
constexpr int kDouble = 3;
constexpr int kText = 4;
constexpr int kLongDouble = 12;  // a double as well
// What GXM_GETTYPE reports as a text's size without a limit.
constexpr LONG kTextSize = 80;

// Setting, getting and GXM_GETTYPE: text before double before long before
// long double.
constexpr ValueTypes kExchanged{
    {CURR_CHAR, kText}, {CURR_DOUBLE, kDouble}, {CURR_LONG, kLong}, {CURR_LONGDOUBLE, kLongDouble}};
// Validating: long double, double, long, text.
constexpr ValueTypes kValidated{
    {CURR_LONGDOUBLE, kLongDouble}, {CURR_DOUBLE, kDouble}, {CURR_LONG, kLong}, {CURR_CHAR, kText}};

const CurrencyFormat& Row(HWND h) {
    const WORD index = W::Country::get(h);
    return g_currencyFormats[index < kCurrencyRows ? index : 0];
}

uint32_t Style(HWND h) { return static_cast<uint32_t>(GetWindowLongA(h, GWL_STYLE)) & 0xFFFF; }

// ---------------------------------------------------------------------
// The class's hooks into the number field

// Separators are taken besides digits and "-". A second decimal separator
// moves the caret behind the first; with every decimal typed, nothing more
// goes in before the caret moves.
Typed Filter(HWND h, char c, const FieldText& text, bool selection);

// Focus, paint and leaving show the formatted text; right-justification is
// left to drawing. An empty field stays empty: a blank zero ("@BLNK") is
// shown as nothing.
void Shown(HWND h, const char* text, FieldText& out) {
    out.s[0] = 0;
    if (*text == 0) return;
    FormatCurrency(text, Row(h), Style(h) & ~kCurrRightJust, out.s, sizeof out.s);
}

void MethodSet(HWND h, const char* method) {
    W::Country::set(h, static_cast<WORD>(CurrencyRowIndex(method)));
}

LRESULT OnSetValue(HWND h, WPARAM wp, LPARAM lp);
LRESULT OnGetValue(HWND h, WPARAM wp, LPARAM lp);
LRESULT OnValidate(HWND h, WPARAM wp, LPARAM lp);
LRESULT OnGetType(HWND h, WPARAM wp, LPARAM lp);

NumberClass MakeClass() {
    NumberClass cls{NumberFieldClass({OnSetValue, OnGetValue, OnValidate, OnGetType}, MethodSlot{W::Method::kOffset},
                                     /*limitTextAnswersLimit=*/true),
                    Filter};
    cls.shown = Shown;
    cls.methodSet = MethodSet;
    return cls;
}
const NumberClass kCurrency = MakeClass();

Typed Filter(HWND h, char c, const FieldText& text, bool selection) {
    const CurrencyFormat& row = Row(h);
    const char dp = row.decimal[0];
    const char sep = row.thousands[0];
    const auto uc = static_cast<unsigned char>(c);
    if (std::isalpha(uc)) return Typed::Refuse;
    const bool decimal = dp != 0 && c == dp;
    if (!std::isdigit(uc) && c != '-' && !decimal && !(sep != 0 && c == sep)) return Typed::Ignore;

    const int32_t afterPoint = CurrencyAfterDecimal(text.s, row);
    if (decimal && afterPoint >= 0 && !selection) {
        W::Caret::set(h, afterPoint);
        DrawNumberText(h, text.s, kDrawFocused);
        return Typed::Done;
    }
    if (decimal && (Style(h) & kCurrSuppress) != 0) return Typed::Refuse;
    // All decimals typed (the limit, checked after this, beeps as well).
    if (!selection && !IsRightJustified(h) && afterPoint >= 0 &&
        static_cast<int64_t>(W::Caret::get(h)) == static_cast<int64_t>(afterPoint) + row.digits)
        return Typed::Refuse;
    return Typed::Take;
}

// ---------------------------------------------------------------------
// Values

void PushCurrentText(HWND h) { PushToClients(h, ReadFieldText(h).s); }

LRESULT OnSetValue(HWND h, WPARAM wp, LPARAM lp) {
    if (lp == 0) {
        PushCurrentText(h);
        return 0;
    }
    if (HasProp(h, "CLIENT")) {
        twRequestDDEData(h);  // the link owns the value
        return 0;
    }
    const CurrencyFormat& row = Row(h);
    const bool blankZero = NumberMethodHas(h, kCurrency, "@BLNK");
    char built[kFieldText] = "";
    switch (ExchangeType(h, wp, kExchanged)) {
    case kText: lstrcpynA(built, reinterpret_cast<const char*>(lp), sizeof built); break;
    case kDouble:
    case kLongDouble: {
        double value;
        std::memcpy(&value, reinterpret_cast<const void*>(lp), sizeof value);
        // Infinity and NaN have no amount: the field keeps what it shows.
        if (!CurrencyDoubleText(value, row, blankZero, built, sizeof built)) return 0;
        break;
    }
    case kLong: {
        int32_t hundredths;
        std::memcpy(&hundredths, reinterpret_cast<const void*>(lp), sizeof hundredths);
        CurrencyLongText(hundredths, blankZero, built, sizeof built);
        break;
    }
    default: {
        const FieldText current = ReadFieldText(h);
        if (current.length() == 0)
            CurrencyZeroText(row, blankZero, built, sizeof built);
        else
            lstrcpynA(built, current.s, sizeof built);
        break;
    }
    }
    char shown[kFieldText];
    CurrencyValueText(built, row, Style(h), shown, sizeof shown);
    SetNumberValue(h, shown);
    return 0;
}

LRESULT OnGetValue(HWND h, WPARAM wp, LPARAM lp) {
    if (lp == 0) return 0;
    const FieldText t = ReadFieldText(h);
    auto* out = reinterpret_cast<void*>(lp);
    switch (ExchangeType(h, wp, kExchanged)) {
    case kText: lstrcpynA(static_cast<char*>(out), t.s, kFieldText); break;
    case kDouble:
    case kLongDouble: {
        const double value = CurrencyToDouble(t.s, Row(h));
        std::memcpy(out, &value, sizeof value);
        break;
    }
    case kLong: {
        const int32_t hundredths = CurrencyToHundredths(t.s);
        std::memcpy(out, &hundredths, sizeof hundredths);
        break;
    }
    default: break;
    }
    return 0;
}

// Validation reads the cleaned text; the style bits and wParam together
// pick the type, long double before double before long before text. A long
// is the whole number (no hundredths here). With no type the value passes.
LRESULT OnValidate(HWND h, WPARAM wp, LPARAM) {
    FieldText clean{};
    CleanCurrency(ReadFieldText(h).s, Row(h), true, clean.s, sizeof clean.s);
    const int type = ChooseType(h, wp, kValidated);
    switch (type) {
    case kLongDouble:
    case kDouble: {
        double value = std::strtod(clean.s, nullptr);
        return ValidateNumber(h, kCurrency, type, &value, clean);
    }
    case kLong: {
        int32_t value = CurrencyWhole(clean.s);
        return ValidateNumber(h, kCurrency, kLong, &value, clean);
    }
    case kText: {
        FieldText copy = clean;
        return ValidateNumber(h, kCurrency, kText, copy.s, clean);
    }
    default: return 0;
    }
}

// Text before double before long before long double. A field with no type
// answers as text of 80 characters, whatever its limit; a null lParam gets
// nothing written.
LRESULT OnGetType(HWND h, WPARAM wp, LPARAM lp) {
    const int type = AnswerType(h, wp, lp, kExchanged);
    if (type != 0) return type;
    if (auto* size = reinterpret_cast<LONG*>(lp)) *size = kTextSize;
    return kText;
}

// wParam 0 asks for the limit; otherwise lParam becomes it.
LRESULT OnSetLimit(HWND h, WPARAM wp, LPARAM lp) {
    if (wp == 0) return W::Limit::get(h);
    W::Limit::set(h, static_cast<WORD>(lp));
    return 0;
}

}  // namespace
}  // namespace fk

using namespace fk;

LRESULT WINAPI gxCurrencyWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case GXM_SETLIMIT: return OnSetLimit(h, wp, lp);
    }
    return EntryFieldProc(h, msg, wp, lp, kCurrency);
}
