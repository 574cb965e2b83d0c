#include "fields/currency_formats.h"

#include <windows.h>

#include <cstring>

#include "frame/registry.h"

namespace fk {

// The rows are tied to their keywords by number as listed, including the
// rows whose conventions belong to a neighbouring country (2, 4, 21);
// applications rely on that pairing. Rows 26 to 29 are reached by no keyword.
CurrencyFormat g_currencyFormats[kCurrencyRows] = {
    {2, 0, 2, "$", ",", "."},     // 0  default, from WIN.INI
    {2, 0, 2, "$", ".", ","},     // 1  Australia
    {2, 1, 2, "BF", ",", "."},    // 2  Austria
    {2, 1, 2, "FB", ",", "."},    // 3  Belgium (Dutch)
    {2, 0, 2, "Cr$", ",", "."},   // 4  Belgium (French)
    {2, 0, 2, "$", ".", ","},     // 5  Brazil
    {2, 1, 2, "$", ".", ","},     // 6  Canada (English)
    {2, 1, 2, "$", ".", ","},     // 7  Canada (French)
    {2, 3, 2, "kr", ",", "."},    // 8  Denmark
    {2, 3, 2, "mk", ",", "."},    // 9  Finland
    {2, 3, 2, "F", ",", "."},     // 10 France
    {2, 0, 2, "DM", ",", "."},    // 11 Germany
    {2, 3, 2, "kr", ",", "."},    // 12 Iceland
    {2, 2, 2, "L.", ",", "."},    // 13 Italy
    {2, 0, 2, "$", ".", ","},     // 14 Mexico
    {2, 2, 2, "f", ",", "."},     // 15 Netherlands
    {2, 0, 2, "$", ".", ","},     // 16 New Zealand
    {2, 0, 2, "kr", ",", "."},    // 17 Norway
    {2, 0, 2, "", ",", "."},      // 18 Portugal
    {2, 0, 2, "W", ".", ","},     // 19 South Korea
    {0, 2, 2, "Pts", ",", "."},   // 20 Spain
    {2, 3, 2, "Fr.", ".", "'"},   // 21 Sweden
    {2, 0, 2, "Fr.", ",", "."},   // 22 Switzerland
    {2, 0, 2, "NT$", ".", ","},   // 23 Taiwan
    {2, 0, 2, "\xA3", ".", ","},  // 24 United Kingdom (pound sign, ANSI 0xA3)
    {2, 0, 2, "$", ".", ","},     // 25 United States
    {2, 0, 2, "$", ".", ","},     // 26
    {2, 0, 2, "$", ".", ","},     // 27
    {2, 0, 2, "$", ".", ","},     // 28
    {2, 0, 2, "$", ".", ","},     // 29
};

const char* const kCurrencyKeywordNames[kCurrencyKeywords] = {
    "@CF_DEFAULT",       "@CF_AUSTRALIA",     "@CF_AUSTRIA",       "@CF_BELGIUM_DUTCH",
    "@CF_BELGIUM_FRENCH", "@CF_BRAZIL",       "@CF_CANADA_ENGLISH", "@CF_CANADA_FRENCH",
    "@CF_DENMARK",       "@CF_FINLAND",       "@CF_FRANCE",        "@CF_GERMANY",
    "@CF_ICELAND",       "@CF_ITALY",         "@CF_MEXICO",        "@CF_NETHERLANDS",
    "@CF_NEWZEALAND",    "@CF_NORWAY",        "@CF_PORTUGAL",      "@CF_SOUTHKOREA",
    "@CF_SPAIN",         "@CF_SWEDEN",        "@CF_SWITZERLAND",   "@CF_TAIWAN",
    "@CF_UNITEDKINGDOM", "@CF_UNITEDSTATES",
};

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
