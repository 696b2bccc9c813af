// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>

#include "base/layered_map.h"
#include "base/text.h"
#include "vemo/context.h"

namespace vemo {

// Entries by key.
class ContextMap : public LayeredMap<IsEquatable> {
public:
    ContextMap() = default;
    explicit ContextMap(LayeredMap map) : LayeredMap(std::move(map)) {}
};

// Prefixes and keys the engine reserves.
namespace context_keys {
inline constexpr std::u16string_view variable = u"var_";
inline constexpr std::u16string_view hiddenVariable = u"hidden_var_";
inline constexpr std::u16string_view names = u"hidden_names_";  // written by contexts alone
inline constexpr std::u16string_view precision = u"precision";
inline constexpr std::u16string_view previousResult = u"prev_result";
inline constexpr std::u16string_view previousResults = u"prev_results";
inline constexpr std::u16string_view grandTotal = u"grand_total";
inline constexpr std::u16string_view grandTotalFormatted = u"grand_total_formatted";
inline constexpr std::u16string_view currentTime = u"current_time";
inline constexpr std::u16string_view currentDay = u"current_day";  // as "2027-03-04"; written with the time
inline constexpr std::u16string_view currentTimeZone = u"current_time_zone";
inline constexpr std::u16string_view geoName = u"geo_name";
inline constexpr std::u16string_view currencyRates = u"currency_rates";
inline constexpr std::u16string_view currencyRatesTime = u"currency_rates_update_time";
inline constexpr std::u16string_view cryptoRates = u"crypto_rates";
inline constexpr std::u16string_view cryptoRatesTime = u"crypto_rates_update_time";
}  // namespace context_keys

// The letters, and the digits behind them, with which a variable's name or a text begins: what a line must mention to
// use the name. Nothing for those that begin with a sign, which are rare: they are told by one key together.
inline std::u16string_view nameHead(std::u16string_view text) {
    const auto isLetter = [](char16_t c) {
        return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_' || c == u'$' ||
               (c >= 0x80 && !isWhitespace(c));
    };
    const auto letters = std::find_if_not(text.begin(), text.end(), isLetter);
    if (letters == text.begin()) return {};
    return {text.begin(), std::find_if_not(letters, text.end(), [](char16_t c) { return c >= u'0' && c <= u'9'; })};
}

// The key under which a context says which names of more than their head begin with it (as a number that changes
// with them), so that a line mentioning the head is calculated again when such a name comes or goes.
inline std::u16string namesKey(std::u16string_view head) {
    return std::u16string(context_keys::names).append(head);
}

inline std::u16string geoNameKey(std::u16string_view place) {
    return std::u16string(context_keys::geoName).append(place);
}

inline std::u16string variableKey(std::u16string_view name) {
    return std::u16string(context_keys::variable).append(name);
}

}  // namespace vemo
