// SPDX-License-Identifier: MIT
// How the unit converter deals with rates, each by its two parts.

#include "units/time_units.h"
#include "units/unit_converter.h"

namespace vemo {

namespace {

const DecimalNumber one = DecimalNumber::fromInt64(1);

}  // namespace

std::optional<DecimalNumber> UnitConverter::calendarRatio(std::u16string_view from, std::u16string_view to) {
    const int a = calendarMonths(from), b = calendarMonths(to);
    if (a == 0 || b == 0) return std::nullopt;
    return DecimalNumber::fromInt64(a).dividing(DecimalNumber::fromInt64(b));
}

std::optional<RateUnit> UnitConverter::rate(std::u16string_view unitId) const {
    const auto named = rates_.find(unitId);
    if (named != rates_.end()) return RateUnit::parse(named->second);
    if (unitId.find(u'/') == unitId.npos || baseUnit(unitId)) return std::nullopt;
    auto rate = RateUnit::parse(unitId);
    if (!rate || !baseUnit(rate->upper) || !baseUnit(rate->lower)) return std::nullopt;
    return rate;
}

std::pair<std::u16string_view, std::u16string_view> UnitConverter::rateBases(std::u16string_view unitId) const {
    if (const std::u16string* base = baseUnit(unitId)) {
        const auto parts = RateUnit::parse(*base);
        return parts ? std::pair(parts->upper, parts->lower) : std::pair<std::u16string_view, std::u16string_view>();
    }
    const auto parts = rate(unitId);
    if (!parts) return {};
    return {*baseUnit(parts->upper), *baseUnit(parts->lower)};
}

bool UnitConverter::isConvertible(std::u16string_view from, std::u16string_view to) const {
    if (from == to) return true;
    const std::u16string* fromBase = baseUnit(from);
    const std::u16string* toBase = baseUnit(to);
    if (fromBase && toBase) return *fromBase == *toBase;
    const auto [fromUpper, fromLower] = rateBases(from);
    const auto [toUpper, toLower] = rateBases(to);
    if (fromUpper.empty() || toUpper.empty()) return false;
    return (fromUpper == toUpper && fromLower == toLower) || (fromUpper == toLower && fromLower == toUpper);
}

// A difference of one unit in base units: differences of temperature do not count from the zero of a scale.
std::optional<DecimalNumber> UnitConverter::ratioToBase(std::u16string_view unitId, Context& context) const {
    const std::u16string* base = baseUnit(unitId);
    if (!base) return std::nullopt;
    const auto inBase = [&](const DecimalNumber& amount) {
        const auto converted = convert(Value(amount).with(unitId, Attribute::unit), *base, context);
        return converted ? converted->decimal() : std::nullopt;
    };
    const auto ofOne = inBase(one), ofNone = inBase(DecimalNumber());
    if (!ofOne || !ofNone) return std::nullopt;
    return ofOne->subtracting(*ofNone);
}

std::optional<UnitConverter::LinearRate> UnitConverter::linearRate(std::u16string_view unitId, Context& context) const {
    const auto [upper, lower] = rateBases(unitId);
    if (upper.empty()) return std::nullopt;
    if (baseUnit(unitId)) {
        const auto ratio = ratioToBase(unitId, context);
        return ratio ? std::optional(LinearRate{upper, lower, *ratio, one}) : std::nullopt;
    }
    const auto parts = rate(unitId);
    const auto numerator = ratioToBase(parts->upper, context);
    const auto denominator = ratioToBase(parts->lower, context);
    if (!numerator || !denominator) return std::nullopt;
    return LinearRate{upper, lower, *numerator, denominator->multiplying(parts->count)};
}

std::optional<Value> UnitConverter::convertRate(const Value& value, std::u16string_view from, std::u16string_view to,
                                                Context& context) const {
    const auto amount = value.decimal();
    auto source = linearRate(from, context);
    auto target = linearRate(to, context);
    if (!amount || !source || !target) return std::nullopt;
    const auto result = [&](const DecimalNumber& dividend, const DecimalNumber& divisor) {
        return value.with(dividend.dividing(divisor)).with(to, Attribute::unit);
    };
    const bool same = source->upperBase == target->upperBase && source->lowerBase == target->lowerBase;
    const bool reciprocal = source->upperBase == target->lowerBase && source->lowerBase == target->upperBase;
    if (same) {
        // A part that stays takes no rounded step, nor any exchange rate.
        const auto a = rate(from), b = rate(to);
        if (a && b && !baseUnit(from) && !baseUnit(to)) {
            if (a->upper == b->upper) source->numerator = target->numerator = one;
            if (const auto ratio = calendarRatio(a->lower, b->lower)) {
                source->denominator = ratio->multiplying(a->count);
                target->denominator = b->count;
            }
        }
        return result(amount->multiplying(source->numerator).multiplying(target->denominator),
                      source->denominator.multiplying(target->numerator));
    }
    if (reciprocal)
        return result(source->denominator.multiplying(target->denominator),
                      amount->multiplying(source->numerator).multiplying(target->numerator));
    return Value(DecimalNumber::notANumberValue());
}

}  // namespace vemo
