// SPDX-License-Identifier: MIT
#pragma once

#include <array>

#include "output/value_formatter.h"
#include "units/time_units.h"

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

// Durations: "1 h 30 min". The short text is that of the whole amount, "1.5 h".
class TimeFormatter : public ValueFormatter {
public:
    // Formats the components; must outlive this.
    explicit TimeFormatter(const ValueFormatter& decimalFormatter) : decimalFormatter_(decimalFormatter) {}
    std::optional<FormattedValue> format(const Value& value, Context& context) const override;

private:
    const ValueFormatter& decimalFormatter_;
};

}  // namespace vemo
