// SPDX-License-Identifier: MIT
#include "units/unit_converter.h"

namespace vemo {

namespace {

constexpr std::u16string_view currencyBase = u"USD";

std::u16string pairKey(std::u16string_view from, std::u16string_view to) {
    std::u16string key;
    key.reserve(from.size() + to.size() + 1);
    return key.append(from).append(u":").append(to);
}

}  // namespace

void UnitConverter::registerUnit(const Unit& unit) {
    if (!unit.baseUnitId) return;
    const std::u16string& base = *unit.baseUnitId;
    if (unit.baseRatio) {
        using Direction = RatioValueConverter::Direction;
        const auto ratio = [&](Direction direction, const std::u16string& from, const std::u16string& to) {
            converters_.insert_or_assign(pairKey(from, to),
                                         std::make_shared<RatioValueConverter>(direction, *unit.baseRatio, from, to));
        };
        ratio(Direction::multiply, unit.id, base);
        ratio(Direction::divide, base, unit.id);
    }
    if (unit.toBaseValueConverter) converters_.insert_or_assign(pairKey(unit.id, base), unit.toBaseValueConverter);
    if (unit.fromBaseValueConverter) converters_.insert_or_assign(pairKey(base, unit.id), unit.fromBaseValueConverter);
    baseUnits_.insert_or_assign(unit.id, base);
    if (!unit.rate.empty()) rates_.insert_or_assign(unit.id, unit.rate);
}

const ValueConverter* UnitConverter::converter(std::u16string_view from, std::u16string_view to) const {
    const auto found = converters_.find(pairKey(from, to));
    return found == converters_.end() ? nullptr : found->second.get();
}

const std::u16string* UnitConverter::baseUnit(std::u16string_view unitId) const {
    const auto found = baseUnits_.find(unitId);
    return found == baseUnits_.end() ? nullptr : &found->second;
}

bool UnitConverter::isCurrency(std::u16string_view unitId) const {
    const std::u16string* base = baseUnit(unitId);
    return base && *base == currencyBase;
}

std::optional<Value> UnitConverter::convert(const Value& value, std::u16string_view toUnitId, Context& context) const {
    const auto from = value.string(Attribute::unit);
    if (!from) return value.with(toUnitId, Attribute::unit);
    if (*from == toUnitId) return value;
    if (const ValueConverter* direct = converter(*from, toUnitId)) return direct->convert(value, context);
    const std::u16string* base = baseUnit(*from);
    const std::u16string* toBase = baseUnit(toUnitId);
    if (!base || !toBase)
        if (auto converted = convertRate(value, *from, toUnitId, context)) return converted;
    if (!base && !rate(*from)) return std::nullopt;
    if (!base) return Value(DecimalNumber::notANumberValue());
    if (!toBase || *toBase != *base) return Value(DecimalNumber::notANumberValue());
    const ValueConverter* first = converter(*from, *base);
    const ValueConverter* second = converter(*base, toUnitId);
    if (!first || !second) return std::nullopt;
    const auto inBase = first->convert(value, context);
    return inBase ? second->convert(*inBase, context) : std::nullopt;
}

std::optional<Value> RatioValueConverter::convert(const Value& value, Context&) const {
    const auto amount = value.decimal();
    if (!amount || !value.is(Attribute::unit, fromUnitId_)) return std::nullopt;
    const DecimalNumber result =
        direction_ == Direction::multiply ? amount->multiplying(ratio_) : amount->dividing(ratio_);
    return value.with(result).with(toUnitId_, Attribute::unit);
}

}  // namespace vemo
