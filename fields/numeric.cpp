// gxNumeric32: the whole-number entry field. Its value is the window text;
// it takes digits and "-" from the keyboard and exchanges its value as a
// 32-bit integer, a 32-bit long or text.

#include <cctype>
#include <cstring>

#include "fields/number_field.h"
#include "fields/text/number_text.h"
#include "include/fldkit.h"

namespace fk {

namespace {

// Value type codes of this field.
constexpr int kInteger = 1;
constexpr int kLong = 2;
constexpr int kText = 4;

// Setting and getting: integer before text before long.
constexpr ValueTypes kExchanged{{NUM_INTEGER, kInteger}, {NUM_CHAR, kText}, {NUM_LONG, kLong}};

Typed FilterDigits(HWND, char c, const FieldText&, bool) {
    const auto uc = static_cast<unsigned char>(c);
    if (std::isalpha(uc)) return Typed::Refuse;
    if (!std::isdigit(uc) && c != '-') return Typed::Ignore;  // the sign may go anywhere, any number of times
    return Typed::Take;
}

LRESULT OnSetValue(HWND h, WPARAM wp, LPARAM lp);
LRESULT OnGetValue(HWND h, WPARAM wp, LPARAM lp);
LRESULT OnValidate(HWND h, WPARAM wp, LPARAM lp);
LRESULT OnGetType(HWND h, WPARAM wp, LPARAM lp);

const NumberClass kNumeric{
    NumberFieldClass({OnSetValue, OnGetValue, OnValidate, OnGetType}, MethodSlot{NumericWords::Method::kOffset}),
    FilterDigits};

LRESULT OnSetValue(HWND h, WPARAM wp, LPARAM lp) {
    if (HasProp(h, "CLIENT")) {
        twRequestDDEData(h);  // the link owns the value
        return 0;
    }
    char text[kFieldText] = "";
    if (lp != 0) {
        switch (ExchangeType(h, wp, kExchanged)) {
        case kInteger:
        case kLong: {
            int32_t value;
            std::memcpy(&value, reinterpret_cast<const void*>(lp), sizeof value);
            if (value != 0 || !NumberMethodHas(h, kNumeric, "@BLNK")) WriteInt32(text, sizeof text, value);
            break;
        }
        case kText: lstrcpynA(text, reinterpret_cast<const char*>(lp), sizeof text); break;
        default: break;  // the field is emptied
        }
    }
    SetNumberValue(h, text);
    return 0;
}

LRESULT OnGetValue(HWND h, WPARAM wp, LPARAM lp) {
    if (lp == 0) return 0;
    const FieldText t = ReadFieldText(h);
    switch (ExchangeType(h, wp, kExchanged)) {
    case kInteger:
    case kLong: {
        const int32_t value = NumberTextToInt32(t.s);
        std::memcpy(reinterpret_cast<void*>(lp), &value, sizeof value);
        break;
    }
    case kText: lstrcpynA(reinterpret_cast<char*>(lp), t.s, kFieldText); break;
    default: break;
    }
    return 0;
}

// Validation: the style bits and wParam together, integer before long
// before text; with no type the value passes.
LRESULT OnValidate(HWND h, WPARAM wp, LPARAM) {
    const FieldText t = ReadFieldText(h);
    int32_t value = NumberTextToInt32(t.s);
    const int type = ChooseType(h, wp, {{NUM_INTEGER, kInteger}, {NUM_LONG, kLong}, {NUM_CHAR, kText}});
    if (type == kText) {
        FieldText copy = t;
        return ValidateNumber(h, kNumeric, kText, copy.s, t);
    }
    return type != 0 ? ValidateNumber(h, kNumeric, type, &value, t) : 0;
}

// Text answers before integer before long (set and get order differently).
LRESULT OnGetType(HWND h, WPARAM wp, LPARAM lp) {
    const int type = AnswerType(h, wp, lp, {{NUM_CHAR, kText}, {NUM_INTEGER, kInteger}});
    return type != 0 ? type : kLong;
}

}  // namespace
}  // namespace fk

using namespace fk;

LRESULT WINAPI gxNumericWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    return EntryFieldProc(h, msg, wp, lp, kNumeric);
}
