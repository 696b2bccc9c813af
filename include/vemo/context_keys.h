// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace vemo {

// The keys and prefixes that the engine reserves in a context, and what lies under them. Times of rates are seconds
// since the beginning of 2001 in UTC.
namespace context_keys {

// Prefixes, after which the name of a variable or a place stands.
inline constexpr std::u16string_view variable = u"var_";               // Value
inline constexpr std::u16string_view hiddenVariable = u"hidden_var_";  // bool: true keeps it from being read in lines
inline constexpr std::u16string_view geoName = u"geo_name";            // text: the place's time zone

inline constexpr std::u16string_view precision = u"precision";                        // int64: most fraction digits
inline constexpr std::u16string_view previousResult = u"prev_result";                 // Value
inline constexpr std::u16string_view previousResults = u"prev_results";               // ValuesList
inline constexpr std::u16string_view grandTotal = u"grand_total";                     // Value
inline constexpr std::u16string_view grandTotalPartial = u"grand_total_partial";      // bool
inline constexpr std::u16string_view grandTotalFormatted = u"grand_total_formatted";  // FormattedValue
inline constexpr std::u16string_view currentTime = u"current_time";                   // Date
inline constexpr std::u16string_view currentDay = u"current_day";  // text such as "2027-03-04"; written with the time
inline constexpr std::u16string_view currentTimeZone = u"current_time_zone";             // TimeZone
inline constexpr std::u16string_view currencyRates = u"currency_rates";                  // CurrencyRatesContainer
inline constexpr std::u16string_view currencyRatesTime = u"currency_rates_update_time";  // double: when they were taken
inline constexpr std::u16string_view cryptoRates = u"crypto_rates";                      // CurrencyRatesContainer
inline constexpr std::u16string_view cryptoRatesTime = u"crypto_rates_update_time";      // double: when they were taken

}  // namespace context_keys

// The key of a variable; the name must be in lower case.
inline std::u16string variableKey(std::u16string_view name) {
    return std::u16string(context_keys::variable).append(name);
}

// The key of a place's time zone.
inline std::u16string geoNameKey(std::u16string_view place) {
    return std::u16string(context_keys::geoName).append(place);
}

}  // namespace vemo
