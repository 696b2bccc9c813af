// SPDX-License-Identifier: MIT
#include "units/shared_currency_names.h"

#include <unicode/ucurr.h>

#include "scanning/words/localizer.h"

namespace vemo {

namespace {

constexpr struct {
    std::u16string_view key, codes;
} rows[] = {
    {u"krona.words", u"SEK, NOK, DKK, ISK"},
    {u"peso.words", u"MXN, ARS, CLP, COP, PHP, UYU, DOP, CUP"},
    {u"dinar.words", u"JOD, KWD, RSD, DZD, IQD, BHD, TND, LYD, MKD"},
    {u"shilling.words", u"KES, UGX, TZS, SOS"},
    {u"leu.words", u"RON, MDL"},
};

std::u16string currencyOf(std::string_view locale) {
    constexpr int codeLength = 3;
    char16_t code[codeLength + 1] = {};
    UErrorCode status = U_ZERO_ERROR;
    ucurr_forLocale(std::string(locale).c_str(), code, codeLength + 1, &status);
    return U_SUCCESS(status) ? std::u16string(code) : std::u16string();
}

}  // namespace

std::vector<SharedCurrencyNames> sharedCurrencyNames(const Localizer& localizer, std::string_view locale) {
    const std::u16string currency = currencyOf(locale);
    std::vector<SharedCurrencyNames> result;
    for (const auto& row : rows) {
        SharedCurrencyNames names{localizer.variants(row.key, u"Currency", true, true), {}, std::u16string(row.codes)};
        if (!currency.empty() && row.codes.find(currency) != row.codes.npos) names.currency = currency;
        result.push_back(std::move(names));
    }
    return result;
}

}  // namespace vemo
