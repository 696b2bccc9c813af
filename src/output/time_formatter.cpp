// SPDX-License-Identifier: MIT
#include "output/time_formatter.h"

#include <algorithm>

#include "base/text.h"
#include "output/time_decomposer.h"

namespace vemo {

std::optional<FormattedValue> TimeFormatter::format(const Value& value, Context& context) const {
    const auto amount = value.decimal();
    const auto unitId = value.string(Attribute::unit);
    if (!amount || !unitId) return std::nullopt;
    const std::size_t unit = TimeDecomposer::unitNumber(*unitId);
    if (unit == timeUnits.size()) return std::nullopt;
    const auto counts = TimeDecomposer::decompose(*amount, unit);
    if (!counts) return std::nullopt;
    // Amounts too small to be told in whole parts are written like any other number.
    static const DecimalNumber one = DecimalNumber::fromInt64(1);
    const bool none = std::all_of(counts->begin(), counts->end(), [](const auto& count) { return count.isZero(); });
    const bool seconds = unit == 0 && DecimalNumber::compare(amount->abs(), one).value_or(0) < 0;
    if (none || seconds) return decimalFormatter_.format(value, context);
    std::vector<std::u16string> components;
    for (std::size_t i = unit + 1; i-- > 0;) {
        const DecimalNumber& count = (*counts)[i];
        if (count.isZero() && !components.empty()) continue;
        const auto component = decimalFormatter_.format(Value(count).with(timeUnits[i].id, Attribute::unit), context);
        if (component && component->regular) components.push_back(*component->regular);
    }
    FormattedValue result;
    result.regular = joined(components, u" ");
    if (auto whole = decimalFormatter_.format(value, context)) result.shortText = std::move(whole->shortText);
    return result;
}

}  // namespace vemo
