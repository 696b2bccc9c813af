// SPDX-License-Identifier: MIT
#include "evaluation/conversion_reach.h"

#include <algorithm>
#include <iterator>

#include "evaluation/calendar_arithmetic.h"
#include "records/remarks.h"

namespace vemo {

namespace {

constexpr std::u16string_view percent = u"percent";
constexpr std::u16string_view lengthBases[] = {u"m", u"m2", u"m3"};  // by power

bool isBareNumber(const Value& value) {
    return value.has(Attribute::decimal) && !value.has(Attribute::unit);
}

bool isQuantity(const Value& value) {
    return value.has(Attribute::decimal) && value.has(Attribute::unit) && !value.is(Attribute::unit, percent);
}

}  // namespace

void ConversionReach::apply(std::vector<Value>& operands, std::vector<Value>& operators, std::vector<TextRange>& ranges,
                            Context& context) const {
    for (std::size_t i = 0; i < operators.size(); ++i) {
        if (!operators[i].is(Attribute::operation, u"in")) continue;
        const auto value = reached(operands, operators, ranges, i, context);
        if (!value) continue;
        const auto end = static_cast<std::ptrdiff_t>(i);
        ranges[i] = {ranges.front().location, ranges[i].end() - ranges.front().location};
        operands[i] = *value;
        operands.erase(operands.begin(), operands.begin() + end);
        operators.erase(operators.begin(), operators.begin() + end);
        ranges.erase(ranges.begin(), ranges.begin() + end);
        i = 0;
    }
}

std::optional<Value> ConversionReach::reached(const std::vector<Value>& operands, const std::vector<Value>& operators,
                                              const std::vector<TextRange>& ranges, std::size_t conversion,
                                              Context& context) const {
    const Value& last = operands[conversion];
    const Value& target = operands[conversion + 1];
    if (target.isEmpty() || target.has(Attribute::decimal) || last.isEmpty()) return std::nullopt;
    const auto unit = target.string(Attribute::unit);
    // "Dec 11 - Nov 30 in workdays" counts them: their length of eight hours is not meant.
    if (unit == u"workday" && conversion > 0 && operands[conversion - 1].has(Attribute::date) &&
        last.has(Attribute::date) && operators[conversion - 1].is(Attribute::operation, u"-"))
        return calendarDifference(last, operands[conversion - 1], unit, converter_, context);
    if (unit == percent) return percentage(operands, operators, ranges, conversion, context);
    if (conversion == 0) return std::nullopt;
    if (!unit) {
        const bool zone = target.has(Attribute::timeZone) && !last.has(Attribute::date);
        if (!target.has(Attribute::nsystem) && !zone) return std::nullopt;
        const auto all = whole(operands, operators, ranges, conversion, context);
        return zone && !(all && all->has(Attribute::date)) ? std::nullopt : all;
    }
    const bool quotient = std::any_of(operators.begin(), operators.begin() + static_cast<std::ptrdiff_t>(conversion),
                                      [](const Value& op) { return op.is(Attribute::operation, u"/"); });
    const bool converts = isConvertible(last, *unit);
    if (converts && !quotient) return std::nullopt;
    if (auto rate = quotientAsRate(operands, operators, conversion, *unit, context)) return rate;
    if (auto product = productOfLengths(operands, operators, conversion, *unit, context)) return product;
    const auto all = whole(operands, operators, ranges, conversion, context);
    if (!all) return std::nullopt;
    const bool units = std::any_of(operands.begin(), operands.begin() + static_cast<std::ptrdiff_t>(conversion),
                                   [](const Value& operand) { return isQuantity(operand); });
    if (isBareNumber(*all) && !all->decimal()->notANumber() && quotient && units && last.has(Attribute::unit)) {
        remarksOf(context).reason(ReasonCode::droppedUnits, *unit);
        return Value(DecimalNumber::notANumberValue());
    }
    return !converts && isConvertible(*all, *unit) ? all : std::nullopt;
}

std::optional<Value> ConversionReach::whole(const std::vector<Value>& operands, const std::vector<Value>& operators,
                                            const std::vector<TextRange>& ranges, std::size_t conversion,
                                            Context& context) const {
    const auto end = static_cast<std::ptrdiff_t>(conversion);
    return operationCalculator_.calculate({operands.begin(), operands.begin() + end + 1},
                                          {operators.begin(), operators.begin() + end}, context,
                                          {ranges.begin(), ranges.begin() + end + 1});
}

// "0.25 in %", "300 g / 1 kg in %".
std::optional<Value> ConversionReach::percentage(const std::vector<Value>& operands,
                                                 const std::vector<Value>& operators,
                                                 const std::vector<TextRange>& ranges, std::size_t conversion,
                                                 Context& context) const {
    if (conversion == 1 && operators[0].is(Attribute::operation, u"/") && isQuantity(operands[0]) &&
        isQuantity(operands[1]))
        return operationCalculator_.apply(u"as_a_percent_of", operands[0], operands[1], context);
    // "9 of 12 in %", "9 out of 12 as %"
    if (conversion == 1 && operators[0].is(Attribute::operation, u"percent_of") &&
        operands[0].has(Attribute::decimal) && operands[1].has(Attribute::decimal) &&
        !operands[0].is(Attribute::unit, percent))
        return operationCalculator_.apply(u"as_a_percent_of", operands[0], operands[1], context);
    const auto isPercentage = [](const Value& operand) { return operand.is(Attribute::unit, percent); };
    if (std::any_of(operands.begin(), operands.begin() + static_cast<std::ptrdiff_t>(conversion) + 1, isPercentage))
        return std::nullopt;
    const auto all =
        conversion == 0 ? operands[0] : whole(operands, operators, ranges, conversion, context).value_or(Value());
    if (!isBareNumber(all)) return std::nullopt;
    return all.with(all.decimal()->multiplyingByPowerOf10(2)).with(percent, Attribute::unit);
}

// "10 km / 50 min in km/h": the quotient of two quantities is a rate, where one is asked for.
std::optional<Value> ConversionReach::quotientAsRate(const std::vector<Value>& operands,
                                                     const std::vector<Value>& operators, std::size_t conversion,
                                                     std::u16string_view target, Context& context) const {
    if (conversion != 1 || !operators[0].is(Attribute::operation, u"/") || !isQuantity(operands[0]) ||
        !isQuantity(operands[1]) || !converter_.rate(target))
        return std::nullopt;
    const std::u16string rate =
        std::u16string(*operands[0].string(Attribute::unit)).append(u"/").append(*operands[1].string(Attribute::unit));
    if (!converter_.isConvertible(rate, target)) return std::nullopt;
    const Value quotient = operands[0].without(Attribute::precision);
    return converter_.convert(
        quotient.with(operands[0].decimal()->dividing(*operands[1].decimal())).with(rate, Attribute::unit), target,
        context);
}

// "5.2 m x 3.8 m in sq ft": a product of lengths is made of the units of its factors.
std::optional<Value> ConversionReach::productOfLengths(const std::vector<Value>& operands,
                                                       const std::vector<Value>& operators, std::size_t conversion,
                                                       std::u16string_view target, Context& context) const {
    const int wanted = powerOfLength(target);
    if (wanted < 2) return std::nullopt;
    int power = 0, factors = 0;
    DecimalNumber product = DecimalNumber::fromInt64(1);
    for (std::size_t i = 0; i <= conversion; ++i) {
        const bool divides = i > 0 && operators[i - 1].is(Attribute::operation, u"/");
        if (i > 0 && !divides && !operators[i - 1].is(Attribute::operation, u"*")) return std::nullopt;
        const auto unit = operands[i].string(Attribute::unit);
        std::optional<DecimalNumber> amount = operands[i].decimal();
        if (unit) {
            const int own = powerOfLength(*unit);
            if (own == 0 || divides) return std::nullopt;
            const auto base = converter_.convert(operands[i], lengthBases[own - 1], context);
            amount = base ? base->decimal() : std::nullopt;
            power += own;
            ++factors;
        }
        if (!amount) return std::nullopt;
        product = divides ? product.dividing(*amount) : product.multiplying(*amount);
    }
    if (power != wanted || factors < 2) return std::nullopt;
    return Value(product).with(lengthBases[wanted - 1], Attribute::unit);
}

// 1 for a length, 2 for an area, 3 for a volume, 0 for what is none.
int ConversionReach::powerOfLength(std::u16string_view unit) const {
    const std::u16string* base = converter_.baseUnit(unit);
    const auto found = base ? std::find(std::begin(lengthBases), std::end(lengthBases), *base) : std::end(lengthBases);
    return found == std::end(lengthBases) ? 0 : static_cast<int>(found - std::begin(lengthBases)) + 1;
}

bool ConversionReach::isConvertible(const Value& value, std::u16string_view target) const {
    const auto unit = value.string(Attribute::unit);
    return unit && value.has(Attribute::decimal) && converter_.isConvertible(*unit, target);
}

}  // namespace vemo
