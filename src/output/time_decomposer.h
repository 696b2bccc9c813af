// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "units/time_units.h"
#include "vemo/decimal_number.h"

namespace vemo {

// Breaks an amount of one time unit down into it and the smaller ones.
class TimeDecomposer {
public:
    using Counts = std::array<DecimalNumber, timeUnits.size()>;  // in the order of `timeUnits`

    // Position in `timeUnits`; their number for what is no time unit.
    static std::size_t unitNumber(std::u16string_view unitId);
    // Whole counts, rounded to whole seconds unless the unit is the second, which keeps its fraction; all of the
    // amount's sign. Nothing for amounts too large to be told to the second.
    static std::optional<Counts> decompose(const DecimalNumber& amount, std::size_t unit);
};

}  // namespace vemo
