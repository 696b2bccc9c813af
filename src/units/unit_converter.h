// SPDX-License-Identifier: MIT
#pragma once

#include "base/cache.h"
#include "units/rate_unit.h"
#include "units/unit.h"

namespace vemo {

// Converts quantities between units of one dimension, through its base unit.
class UnitConverter {
public:
    void registerUnit(const Unit& unit);

    // A number without a unit takes the target unit. Another dimension gives a value that is only
    // not-a-number; nothing when a unit is unknown or its converter declines.
    std::optional<Value> convert(const Value& value, std::u16string_view toUnitId, Context& context) const;

    // The rate that a unit is: one of two known units, "USD/hour", which is made when it is met and registered nowhere,
    // or what another name stands for. The parts are views of the id given, or of the catalogue.
    std::optional<RateUnit> rate(std::u16string_view unitId) const;
    // True when amounts of one can be converted into the other, rates too: base units are the same, or, of two rates,
    // one's are the other's upside down (miles a gallon, litres a hundred kilometres).
    bool isConvertible(std::u16string_view from, std::u16string_view to) const;

    // How many of one unit are one of the other, both told in months: a year's rent is that of 12 months, although
    // years and months convert by 365 and 30 days. Nothing for other units.
    static std::optional<DecimalNumber> calendarRatio(std::u16string_view from, std::u16string_view to);

    // The base unit of a unit's dimension; null when the unit is unknown.
    const std::u16string* baseUnit(std::u16string_view unitId) const;
    bool isCurrency(std::u16string_view unitId) const;
    const TextMap<std::u16string>& baseUnits() const { return baseUnits_; }

private:
    // A unit of a rate's dimension: an amount of it is amount × numerator / denominator in the base units.
    struct LinearRate {
        std::u16string_view upperBase, lowerBase;
        DecimalNumber numerator, denominator;
    };

    const ValueConverter* converter(std::u16string_view from, std::u16string_view to) const;
    std::optional<LinearRate> linearRate(std::u16string_view unitId, Context& context) const;
    std::optional<DecimalNumber> ratioToBase(std::u16string_view unitId, Context& context) const;
    std::optional<Value> convertRate(const Value& value, std::u16string_view from, std::u16string_view to,
                                     Context& context) const;
    std::pair<std::u16string_view, std::u16string_view> rateBases(std::u16string_view unitId) const;

    TextMap<std::shared_ptr<const ValueConverter>> converters_;  // by "from:to"
    TextMap<std::u16string> baseUnits_;
    TextMap<std::u16string> rates_;  // of units that are other names of one
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
