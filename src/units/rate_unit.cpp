// SPDX-License-Identifier: MIT
#include "units/rate_unit.h"

#include "base/text.h"

namespace vemo {

std::optional<RateUnit> RateUnit::parse(std::u16string_view id) {
    const std::size_t stroke = id.find(u'/');
    if (stroke == id.npos || stroke == 0 || stroke + 1 == id.size()) return std::nullopt;
    RateUnit rate{id.substr(0, stroke), id.substr(stroke + 1)};
    const std::size_t blank = rate.lower.find(u' ');
    if (blank != id.npos) {
        rate.count = DecimalNumber::parse(toUtf8(rate.lower.substr(0, blank)));
        rate.lower.remove_prefix(blank + 1);
        if (rate.count.notANumber() || rate.count.isZero()) return std::nullopt;
    }
    if (rate.lower.empty() || rate.lower.find(u'/') != id.npos) return std::nullopt;
    return rate;
}

std::u16string RateUnit::id(std::u16string_view upper, std::u16string_view lower, const DecimalNumber& count) {
    std::u16string id(upper);
    id += u'/';
    if (count != DecimalNumber::fromInt64(1)) id.append(toUtf16(count.toString())).append(u" ");
    return id.append(lower);
}

}  // namespace vemo
