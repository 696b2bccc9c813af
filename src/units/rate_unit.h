// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "vemo/decimal_number.h"

namespace vemo {

// A rate's unit taken apart: "USD/hour", or "litre/100 km", the latter told per several of its lower unit. The parts
// are views of the id.
struct RateUnit {
    std::u16string_view upper;
    std::u16string_view lower;
    DecimalNumber count = DecimalNumber::fromInt64(1);

    // Nothing for an id of another form. Whether there are such units is not looked at.
    static std::optional<RateUnit> parse(std::u16string_view id);
    static std::u16string id(std::u16string_view upper, std::u16string_view lower, const DecimalNumber& count);
};

}  // namespace vemo
