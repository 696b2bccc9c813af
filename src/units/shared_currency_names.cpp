// SPDX-License-Identifier: MIT
#include "units/shared_currency_names.h"

#include "platform/locale_info.h"
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

}  // namespace

std::vector<SharedCurrencyNames> sharedCurrencyNames(const Localizer& localizer, std::string_view locale) {
    const std::u16string currency = currencyOfLocale(locale);
    std::vector<SharedCurrencyNames> result;
    for (const auto& row : rows) {
        SharedCurrencyNames names{localizer.variants(row.key, u"Currency", true, true), {}, std::u16string(row.codes)};
        if (!currency.empty() && row.codes.find(currency) != row.codes.npos) names.currency = currency;
        result.push_back(std::move(names));
    }
    return result;
}

}  // namespace vemo
