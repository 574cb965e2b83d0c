// The country-format table of the currency field. Pure data: no windows.h,
// so it builds natively with the text routines as well. Row 0 is read from
// WIN.INI at start-up (ReadCurrencyDefaults, fields/currency.cpp).
#include "fields/text/currency_formats.h"

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

}  // namespace fk
