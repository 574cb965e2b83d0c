// Country currency formats of the currency field: 30 rows, library-wide.
// Row 0 is filled from the [intl] section of WIN.INI at start-up.
#pragma once

#include <stdint.h>

namespace fk {

struct CurrencyFormat {
    int32_t digits;     // number of decimals (iCurrDigits)
    int32_t placement;  // 0 symbol before, 1 after, 2 before + blank, 3 after + blank
    int32_t negative;   // iNegCurr, 0 to 10
    char symbol[8];     // at most 6 characters
    char decimal[2];
    char thousands[2];
};

inline constexpr int kCurrencyRows = 30;
extern CurrencyFormat g_currencyFormats[kCurrencyRows];

// Keywords of rows 0 to 25 ("@CF_DEFAULT" to "@CF_UNITEDSTATES").
inline constexpr int kCurrencyKeywords = 26;
extern const char* const kCurrencyKeywordNames[kCurrencyKeywords];

}  // namespace fk
