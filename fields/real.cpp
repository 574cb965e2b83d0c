// gxReal32: the entry field for numbers with a fractional part. It is the
// numeric field with a decimal point: at most one "." and one "-" can be
// typed, values are exchanged as text, double or float, and leaving the
// field brings the text to the "@DECP" decimal places.

#include <cctype>
#include <cstring>

#include "fields/number_field.h"
#include "fields/number_text.h"
#include "frame/buffers.h"
#include "include/fldkit.h"

namespace fk {

namespace {

// Value type codes of this field.
constexpr int kDouble = 3;
constexpr int kText = 4;
constexpr int kFloat = 9;
constexpr int kLongDouble = 12;  // a double on the way in, a float on the way out

enum class ValueType { None, Text, Double, Float, LongDouble };

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

const NumberClass kReal{MethodSlot{24}, FilterReal, nullptr, LeaveWithDecimalPlaces, nullptr,
                        /*keepsSelectionOnLeaving=*/true, /*limitTextAnswersLimit=*/true};

// The text gets its "@DECP" places when the focus leaves (no EN_CHANGE).
void LeaveWithDecimalPlaces(HWND h) {
    FieldText t = ReadFieldText(h);
    RealLeavingText(t.s, sizeof t.s, NumberMethodInt(h, kReal, "@DECP", -1));
    WriteFieldText(h, t.s);
}

// Setting and getting: wParam alone when given, else the style; text, then
// double, float, long double.
ValueType ExchangeType(HWND h, WPARAM wp) {
    if (wp != 0) {
        switch (wp) {
        case kText: return ValueType::Text;
        case kDouble: return ValueType::Double;
        case kFloat: return ValueType::Float;
        case kLongDouble: return ValueType::LongDouble;
        default: return ValueType::None;
        }
    }
    const LONG style = GetWindowLongA(h, GWL_STYLE);
    if (style & REAL_CHAR) return ValueType::Text;
    if (style & REAL_DOUBLE) return ValueType::Double;
    if (style & REAL_FLOAT) return ValueType::Float;
    if (style & REAL_LONGDOUBLE) return ValueType::LongDouble;
    return ValueType::None;
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
    switch (ExchangeType(h, wp)) {
    case ValueType::None: return 0;
    case ValueType::Text:
        // Only handed on to linked clients: the window text stays as it is.
        lstrcpynA(g_fieldText, reinterpret_cast<const char*>(lp), kFieldText);
        PushToClients(h, g_fieldText);
        return 0;
    case ValueType::Double:
    case ValueType::LongDouble: std::memcpy(&value, reinterpret_cast<const void*>(lp), sizeof value); break;
    case ValueType::Float: {
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
    switch (ExchangeType(h, wp)) {
    case ValueType::None: break;
    case ValueType::Text: lstrcpynA(static_cast<char*>(out), t.s, kFieldText); break;
    case ValueType::Double: {
        const double d = NumberTextToDouble(t.s);
        std::memcpy(out, &d, sizeof d);
        break;
    }
    case ValueType::Float:
    case ValueType::LongDouble: {  // 32 bits only, on purpose
        const float f = NarrowToFloat(NumberTextToDouble(t.s));
        std::memcpy(out, &f, sizeof f);
        break;
    }
    }
    return 0;
}

// Validation: any floating type (style bit or wParam) validates the text as
// a double, else text as text; with no type the value passes.
LRESULT OnValidate(HWND h, WPARAM wp) {
    const LONG style = GetWindowLongA(h, GWL_STYLE);
    const FieldText t = ReadFieldText(h);
    if ((style & (REAL_DOUBLE | REAL_FLOAT | REAL_LONGDOUBLE)) || wp == kDouble || wp == kFloat ||
        wp == kLongDouble) {
        double value = NumberTextToDouble(t.s);
        return ValidateNumber(h, kReal, kDouble, &value, t);
    }
    if ((style & REAL_CHAR) || wp == kText) {
        FieldText copy = t;
        return ValidateNumber(h, kReal, kText, copy.s, t);
    }
    return 0;
}

LRESULT OnGetType(HWND h, WPARAM wp, LPARAM lp) {
    const LONG style = GetWindowLongA(h, GWL_STYLE);
    if ((style & REAL_CHAR) || wp == kText) {
        WriteTextSize(h, lp);
        return kText;
    }
    if ((style & REAL_FLOAT) || wp == kFloat) return kFloat;
    if ((style & REAL_DOUBLE) || wp == kDouble) return kDouble;
    if ((style & REAL_LONGDOUBLE) || wp == kLongDouble) return kLongDouble;
    return kDouble;
}

}  // namespace
}  // namespace fk

using namespace fk;

LRESULT WINAPI gxRealWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case GXM_SETVALUE: return OnSetValue(h, wp, lp);
    case GXM_GETVALUE: return OnGetValue(h, wp, lp);
    case GXM_VALIDATE: return OnValidate(h, wp);
    case GXM_GETTYPE: return OnGetType(h, wp, lp);
    }
    return NumberFieldProc(h, msg, wp, lp, kReal);
}
