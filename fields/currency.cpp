// gxCurrency32: the currency entry field.

#include "fields/currency_formats.h"
#include "frame/method_window.h"
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


}  // namespace fk

namespace {
// Field words up to the limit and modified words, the 16-bit country index
// at 24, the method-string pointer last.
const fk::MethodSlot kMethod{26};
}

LRESULT WINAPI gxCurrencyWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    return fk::MethodWindowProc(h, msg, wp, lp, kMethod, nullptr);
}
