// gxNumeric32: the whole-number entry field. Its value is the window text;
// it takes digits and "-" from the keyboard and exchanges its value as a
// 32-bit integer, a 32-bit long or text.

#include <cctype>
#include <cstring>

#include "fields/number_field.h"
#include "fields/number_text.h"
#include "include/fldkit.h"

namespace fk {

namespace {

// Value type codes of this field.
constexpr int kInteger = 1;
constexpr int kLong = 2;
constexpr int kText = 4;

enum class ValueType { None, Integer, Long, Text };

Typed FilterDigits(HWND, char c, const FieldText&, bool) {
    const auto uc = static_cast<unsigned char>(c);
    if (std::isalpha(uc)) return Typed::Refuse;
    if (!std::isdigit(uc) && c != '-') return Typed::Ignore;  // the sign may go anywhere, any number of times
    return Typed::Take;
}

const NumberClass kNumeric{MethodSlot{24}, FilterDigits};

// Setting and getting: wParam alone when given, else the style; integer
// before text before long.
ValueType ExchangeType(HWND h, WPARAM wp) {
    if (wp != 0) {
        if (wp == kInteger) return ValueType::Integer;
        if (wp == kText) return ValueType::Text;
        if (wp == kLong) return ValueType::Long;
        return ValueType::None;
    }
    const LONG style = GetWindowLongA(h, GWL_STYLE);
    if (style & NUM_INTEGER) return ValueType::Integer;
    if (style & NUM_CHAR) return ValueType::Text;
    if (style & NUM_LONG) return ValueType::Long;
    return ValueType::None;
}

LRESULT OnSetValue(HWND h, WPARAM wp, LPARAM lp) {
    if (HasProp(h, "CLIENT")) {
        twRequestDDEData(h);  // the link owns the value
        return 0;
    }
    char text[kFieldText] = "";
    if (lp != 0) {
        switch (ExchangeType(h, wp)) {
        case ValueType::Integer:
        case ValueType::Long: {
            int32_t value;
            std::memcpy(&value, reinterpret_cast<const void*>(lp), sizeof value);
            if (value != 0 || !NumberMethodHas(h, kNumeric, "@BLNK")) WriteInt32(text, sizeof text, value);
            break;
        }
        case ValueType::Text: lstrcpynA(text, reinterpret_cast<const char*>(lp), sizeof text); break;
        case ValueType::None: break;  // the field is emptied
        }
    }
    SetNumberValue(h, text);
    return 0;
}

LRESULT OnGetValue(HWND h, WPARAM wp, LPARAM lp) {
    if (lp == 0) return 0;
    const FieldText t = ReadFieldText(h);
    switch (ExchangeType(h, wp)) {
    case ValueType::Integer:
    case ValueType::Long: {
        const int32_t value = NumberTextToInt32(t.s);
        std::memcpy(reinterpret_cast<void*>(lp), &value, sizeof value);
        break;
    }
    case ValueType::Text: lstrcpynA(reinterpret_cast<char*>(lp), t.s, kFieldText); break;
    case ValueType::None: break;
    }
    return 0;
}

// Validation: the style bits and wParam together, integer before long
// before text; with no type the value passes.
LRESULT OnValidate(HWND h, WPARAM wp) {
    const LONG style = GetWindowLongA(h, GWL_STYLE);
    const FieldText t = ReadFieldText(h);
    int32_t value = NumberTextToInt32(t.s);
    if ((style & NUM_INTEGER) || wp == kInteger) return ValidateNumber(h, kNumeric, kInteger, &value, t);
    if ((style & NUM_LONG) || wp == kLong) return ValidateNumber(h, kNumeric, kLong, &value, t);
    if ((style & NUM_CHAR) || wp == kText) {
        FieldText copy = t;
        return ValidateNumber(h, kNumeric, kText, copy.s, t);
    }
    return 0;
}

// Text answers before integer before long (set and get order differently).
LRESULT OnGetType(HWND h, WPARAM wp, LPARAM lp) {
    const LONG style = GetWindowLongA(h, GWL_STYLE);
    if ((style & NUM_CHAR) || wp == kText) {
        WriteTextSize(h, lp);
        return kText;
    }
    if ((style & NUM_INTEGER) || wp == kInteger) return kInteger;
    return kLong;
}

}  // namespace
}  // namespace fk

using namespace fk;

LRESULT WINAPI gxNumericWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case GXM_SETVALUE: return OnSetValue(h, wp, lp);
    case GXM_GETVALUE: return OnGetValue(h, wp, lp);
    case GXM_VALIDATE: return OnValidate(h, wp);
    case GXM_GETTYPE: return OnGetType(h, wp, lp);
    }
    return NumberFieldProc(h, msg, wp, lp, kNumeric);
}
