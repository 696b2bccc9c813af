// SPDX-License-Identifier: MIT
#include "output/time_decomposer.h"

#include <algorithm>

namespace vemo {

namespace {

constexpr std::size_t second = 0;
constexpr RoundingBehavior wholeDown{RoundingMode::down, 0};

}  // namespace

std::size_t TimeDecomposer::unitNumber(std::u16string_view unitId) {
    const auto found =
        std::find_if(timeUnits.begin(), timeUnits.end(), [&](const auto& unit) { return unit.id == unitId; });
    return static_cast<std::size_t>(found - timeUnits.begin());
}

std::optional<TimeDecomposer::Counts> TimeDecomposer::decompose(const DecimalNumber& amount, std::size_t unit) {
    DecimalNumber rest = amount.abs().multiplying(DecimalNumber::fromInt64(timeUnits[unit].seconds));
    if (unit != second) rest = rest.round(0);
    // Beyond the digits of a number there are no seconds to tell.
    static const DecimalNumber limit = DecimalNumber::fromInt64(1).multiplyingByPowerOf10(DecimalNumber::maxDigits);
    if (DecimalNumber::compare(rest, limit).value_or(1) >= 0) return std::nullopt;
    Counts counts{};
    for (std::size_t i = unit + 1; i-- > 0 && !rest.isZero();) {
        const DecimalNumber seconds = DecimalNumber::fromInt64(timeUnits[i].seconds);
        counts[i] = rest.dividing(seconds, wholeDown);
        rest = rest.subtracting(counts[i].multiplying(seconds));
    }
    counts[second] = counts[second].adding(rest);
    if (amount.isNegative())
        for (DecimalNumber& count : counts) count = count.negative();
    return counts;
}

}  // namespace vemo
