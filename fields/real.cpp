// gxReal32: the entry field for numbers with a fractional part. It is the
// numeric field with a decimal point: at most one "." and one "-" can be
// typed, values are exchanged as text, double or float, and leaving the
// field brings the text to the "@DECP" decimal places.

#include <cctype>
#include <cstring>

#include "fields/number_field.h"
#include "fields/text/number_text.h"
#include "frame/buffers.h"
#include "include/fldkit.h"

namespace fk {

namespace {

// Value type codes of this field.
constexpr int kDouble = 3;
constexpr int kText = 4;
constexpr int kFloat = 9;
constexpr int kLongDouble = 12;  // a double on the way in, a float on the way out

// Setting and getting: text, then double, float, long double.
constexpr ValueTypes kExchanged{
    {REAL_CHAR, kText}, {REAL_DOUBLE, kDouble}, {REAL_FLOAT, kFloat}, {REAL_LONGDOUBLE, kLongDouble}};
// Validating: any floating type before text.
constexpr ValueTypes kValidated{
    {REAL_DOUBLE, kDouble}, {REAL_FLOAT, kFloat}, {REAL_LONGDOUBLE, kLongDouble}, {REAL_CHAR, kText}};
// GXM_GETTYPE: text, float, double, long double.
constexpr ValueTypes kAnswered{
    {REAL_CHAR, kText}, {REAL_FLOAT, kFloat}, {REAL_DOUBLE, kDouble}, {REAL_LONGDOUBLE, kLongDouble}};

Typed FilterReal(HWND, char c, const FieldText& text, bool selection) {
    const auto uc = static_cast<unsigned char>(c);
    if (std::isalpha(uc)) return Typed::Refuse;
    if (!std::isdigit(uc) && c != '-' && c != '.') return Typed::Ignore;
    // One point and one minus sign, wherever they stand; a selection being
    // replaced lifts both checks.
    if (!selection && (c == '.' || c == '-') && std::strchr(text.s, c)) return Typed::Refuse;
    return Typed::Take;
}

void LeaveWithDecimalPlaces(HWND h);
LRESULT OnSetValue(HWND h, WPARAM wp, LPARAM lp);
LRESULT OnGetValue(HWND h, WPARAM wp, LPARAM lp);
LRESULT OnValidate(HWND h, WPARAM wp, LPARAM lp);
LRESULT OnGetType(HWND h, WPARAM wp, LPARAM lp);

const NumberClass kReal{NumberFieldClass({OnSetValue, OnGetValue, OnValidate, OnGetType},
                                         MethodSlot{NumericWords::Method::kOffset}, /*limitTextAnswersLimit=*/true),
                        FilterReal, nullptr, LeaveWithDecimalPlaces, nullptr, /*keepsSelectionOnLeaving=*/true};

// The text gets its "@DECP" places when the focus leaves (no EN_CHANGE).
void LeaveWithDecimalPlaces(HWND h) {
    FieldText t = ReadFieldText(h);
    RealLeavingText(t.s, sizeof t.s, NumberMethodInt(h, kReal, "@DECP", -1));
    WriteFieldText(h, t.s);
}

LRESULT OnSetValue(HWND h, WPARAM wp, LPARAM lp) {
    if (HasProp(h, "CLIENT")) {
        twRequestDDEData(h);  // the link owns the value
        return 0;
    }
    const int32_t places = NumberMethodInt(h, kReal, "@DECP", 0);
    const bool blank = NumberMethodHas(h, kReal, "@BLNK");
    g_fieldText[0] = 0;
    if (lp == 0) {
        if (blank) {
            WriteFieldText(h, "");
            InvalidateRect(h, nullptr, TRUE);
        }
        PushToClients(h, g_fieldText);
        return 0;
    }
    double value = 0.0;
    switch (ExchangeType(h, wp, kExchanged)) {
    default: return 0;
    case kText:
        // Only handed on to linked clients: the window text stays as it is.
        lstrcpynA(g_fieldText, reinterpret_cast<const char*>(lp), kFieldText);
        PushToClients(h, g_fieldText);
        return 0;
    case kDouble:
    case kLongDouble: std::memcpy(&value, reinterpret_cast<const void*>(lp), sizeof value); break;
    case kFloat: {
        float f;
        std::memcpy(&f, reinterpret_cast<const void*>(lp), sizeof f);
        value = f;
        break;
    }
    }
    char text[kFieldText];
    RealValueText(value, places, blank, text, sizeof text);
    SetNumberValue(h, text);
    return 0;
}

LRESULT OnGetValue(HWND h, WPARAM wp, LPARAM lp) {
    if (lp == 0) return 0;
    const FieldText t = ReadFieldText(h);
    auto* out = reinterpret_cast<void*>(lp);
    switch (ExchangeType(h, wp, kExchanged)) {
    default: break;
    case kText: lstrcpynA(static_cast<char*>(out), t.s, kFieldText); break;
    case kDouble: {
        const double d = NumberTextToDouble(t.s);
        std::memcpy(out, &d, sizeof d);
        break;
    }
    case kFloat:
    case kLongDouble: {  // 32 bits only, on purpose
        const float f = NarrowToFloat(NumberTextToDouble(t.s));
        std::memcpy(out, &f, sizeof f);
        break;
    }
    }
    return 0;
}

// Validation: any floating type (style bit or wParam) validates the text as
// a double, else text as text; with no type the value passes.
LRESULT OnValidate(HWND h, WPARAM wp, LPARAM) {
    const FieldText t = ReadFieldText(h);
    switch (ChooseType(h, wp, kValidated)) {
    case 0: return 0;
    case kText: {
        FieldText copy = t;
        return ValidateNumber(h, kReal, kText, copy.s, t);
    }
    default: {
        double value = NumberTextToDouble(t.s);
        return ValidateNumber(h, kReal, kDouble, &value, t);
    }
    }
}

// Text, then float, double, long double; with no type a double.
LRESULT OnGetType(HWND h, WPARAM wp, LPARAM lp) {
    const int type = AnswerType(h, wp, lp, kAnswered);
    return type != 0 ? type : kDouble;
}

}  // namespace
}  // namespace fk

using namespace fk;

LRESULT WINAPI gxRealWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    return EntryFieldProc(h, msg, wp, lp, kReal);
}
