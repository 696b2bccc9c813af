// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "vemo/context.h"
#include "vemo/decimal_number.h"

namespace vemo {

// Converts an amount from one fixed unit to another.
class ValueConverter {
public:
    virtual ~ValueConverter() = default;
    // Nothing when the value is not one of the source unit.
    virtual std::optional<Value> convert(const Value& value, Context& context) const = 0;
};

// A quantity that a number can carry. A unit converts to its base unit by a ratio or by a pair of
// converters; base units have neither.
struct Unit {
    std::u16string id;
    std::vector<std::u16string> phrases;
    std::optional<DecimalNumber> baseRatio;  // base units in one of this unit
    std::optional<std::u16string> baseUnitId;
    std::optional<std::u16string> format;  // how an amount is shown, "%@" standing for the number
    bool isSiUnit = false;                 // is expanded with the SI prefixes
    std::optional<std::u16string> internationalSymbol;
    std::optional<std::u16string> localizedSymbol;
    std::u16string rate;  // the rate of which this is another name, "km/hour"; usually empty
    std::shared_ptr<const ValueConverter> toBaseValueConverter;
    std::shared_ptr<const ValueConverter> fromBaseValueConverter;

    std::u16string description() const;
};

}  // namespace vemo
