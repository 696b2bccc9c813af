// SPDX-License-Identifier: MIT
#pragma once

#include "base/cache.h"
#include "units/unit.h"

namespace vemo {

// Converts quantities between units of one dimension, through its base unit.
class UnitConverter {
public:
    void registerUnit(const Unit& unit);

    // A number without a unit takes the target unit. Another dimension gives a value that is only
    // not-a-number; nothing when a unit is unknown or its converter declines.
    std::optional<Value> convert(const Value& value, std::u16string_view toUnitId, Context& context) const;

    // The base unit of a unit's dimension; null when the unit is unknown.
    const std::u16string* baseUnit(std::u16string_view unitId) const;
    bool isCurrency(std::u16string_view unitId) const;
    const TextMap<std::u16string>& baseUnits() const { return baseUnits_; }

private:
    const ValueConverter* converter(std::u16string_view from, std::u16string_view to) const;

    TextMap<std::shared_ptr<const ValueConverter>> converters_;  // by "from:to"
    TextMap<std::u16string> baseUnits_;
};

// Multiplies amounts of one unit by a ratio, or divides them by it: a rounded inverse would lose digits, all of
// them where the ratio is large.
class RatioValueConverter : public ValueConverter {
public:
    enum class Direction { multiply, divide };

    RatioValueConverter(Direction direction, const DecimalNumber& ratio, std::u16string fromUnitId,
                        std::u16string toUnitId)
        : direction_(direction), ratio_(ratio), fromUnitId_(std::move(fromUnitId)), toUnitId_(std::move(toUnitId)) {}
    std::optional<Value> convert(const Value& value, Context& context) const override;

private:
    Direction direction_;
    DecimalNumber ratio_;
    std::u16string fromUnitId_;
    std::u16string toUnitId_;
};

}  // namespace vemo
