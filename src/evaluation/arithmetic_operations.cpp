// SPDX-License-Identifier: MIT
#include "evaluation/arithmetic_operations.h"

#include <algorithm>

#include "base/text.h"
#include "decimal/decimal_math.h"
#include "decimal/whole_numbers.h"
#include "units/time_units.h"
#include "units/unit_converter.h"

namespace vemo {

namespace {

// Applies `compute` to both numbers; nothing when an operand has none.
template <class Compute>
std::optional<DecimalNumber> combined(const Value& left, const Value& right, Compute compute) {
    const auto a = left.decimal();
    const auto b = right.decimal();
    if (!a || !b) return std::nullopt;
    return compute(*a, *b);
}

template <class Compute>
std::optional<Value> merged(const Value& left, const Value& right, Compute compute) {
    const auto number = combined(left, right, compute);
    if (!number) return std::nullopt;
    return left.merging(right).with(*number);
}

// The left operand in the right one's unit, where there is one and the conversion is possible.
Value inUnitOf(const Value& left, const Value& right, const UnitConverter& converter, Context& context) {
    const auto unit = right.string(Attribute::unit);
    if (!unit || !left.decimal() || !right.decimal()) return left;
    return converter.convert(left, *unit, context).value_or(left);
}

template <class Compute>
std::optional<Value> keepingLeft(const Value& left, const Value& right, Compute compute) {
    const auto number = combined(left, right, compute);
    if (!number) return std::nullopt;
    return left.with(*number);
}

// Takes the bits of both numbers, or their signs, which combine in the same way.
using BitFormula = std::uint64_t (*)(std::uint64_t a, std::uint64_t b);
using ShiftFormula = std::int64_t (*)(std::int64_t a, int count);

class BitwiseOperation : public Operation {
public:
    explicit BitwiseOperation(BitFormula formula) : formula_(formula) {}
    std::optional<Value> calculate(const Value& left, const Value& right, Context&) const override {
        return keepingLeft(left, right, [&](const DecimalNumber& a, const DecimalNumber& b) {
            const auto first = bitsOf(a), second = bitsOf(b);
            if (!first || !second) return DecimalNumber::notANumberValue();
            const std::uint64_t bits = formula_(*first, *second);
            const bool negative = formula_(signOf(a), signOf(b)) != 0;
            return negative ? DecimalNumber::fromInt64(static_cast<std::int64_t>(bits))
                            : DecimalNumber::fromUInt64(bits);
        });
    }

private:
    static std::uint64_t signOf(const DecimalNumber& number) { return wholeNumber(number).isNegative() ? 1 : 0; }

    BitFormula formula_;
};

class ShiftOperation : public Operation {
public:
    explicit ShiftOperation(ShiftFormula formula) : formula_(formula) {}
    std::optional<Value> calculate(const Value& left, const Value& right, Context&) const override {
        const auto count = right.decimal();
        if (count && count->isNegative()) return std::nullopt;
        return keepingLeft(left, right, [&](const DecimalNumber& a, const DecimalNumber& b) {
            constexpr std::int64_t widest = 63;
            return DecimalNumber::fromInt64(formula_(a.toInt64(), static_cast<int>(std::min(b.toInt64(), widest))));
        });
    }

private:
    ShiftFormula formula_;
};

constexpr struct {
    std::u16string_view operatorId;
    BitFormula formula;
} bitRows[] = {
    {u"and", [](std::uint64_t a, std::uint64_t b) { return a & b; }},
    {u"or", [](std::uint64_t a, std::uint64_t b) { return a | b; }},
    {u"xor", [](std::uint64_t a, std::uint64_t b) { return a ^ b; }},
};

constexpr struct {
    std::u16string_view operatorId;
    ShiftFormula formula;
} shiftRows[] = {
    {u"left_shift",
     [](std::int64_t a, int count) { return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) << count); }},
    {u"right_shift", [](std::int64_t a, int count) { return a >> count; }},
};

}  // namespace

std::optional<Value> DecimalAdditionOperation::calculate(const Value& left, const Value& right,
                                                         Context& context) const {
    return merged(inUnitOf(left, right, unitConverter_, context), right,
                  [](const auto& a, const auto& b) { return a.adding(b); });
}

std::optional<Value> DecimalSubtractionOperation::calculate(const Value& left, const Value& right,
                                                            Context& context) const {
    const Value from = left.isEmpty() ? Value(DecimalNumber()) : left;
    return merged(inUnitOf(from, right, unitConverter_, context), right,
                  [](const auto& a, const auto& b) { return a.subtracting(b); });
}

std::optional<Value> DecimalMultiplicationOperation::calculate(const Value& left, const Value& right, Context&) const {
    auto result = merged(left, right, [](const auto& a, const auto& b) { return a.multiplying(b); });
    const auto unit = left.string(Attribute::unit);
    const auto other = right.string(Attribute::unit);
    if (result && unit && other && unitConverter_.isCurrency(*unit) && !unitConverter_.isCurrency(*other))
        return result->with(*unit, Attribute::unit);
    return result;
}

std::optional<Value> DecimalDivisionOperation::calculate(const Value& left, const Value& right, Context&) const {
    auto result = merged(left, right, [](const auto& a, const auto& b) { return a.dividing(b); });
    if (result && right.has(Attribute::unit)) return result->without(Attribute::unit);
    return result;
}

std::optional<Value> ModuloOperation::calculate(const Value& left, const Value& right, Context&) const {
    return keepingLeft(left, right, mxMod);
}

std::optional<Value> ExponentOperation::calculate(const Value& left, const Value& right, Context&) const {
    return keepingLeft(left, right, mxPower);
}

void registerBitOperations(OperationCollection& operations) {
    for (const auto& row : bitRows) operations.add(row.operatorId, std::make_shared<BitwiseOperation>(row.formula));
    for (const auto& row : shiftRows) operations.add(row.operatorId, std::make_shared<ShiftOperation>(row.formula));
}

// How the remainder of a unit is to be told: each smaller unit, and how many of it make the one before, as in "inch
// 12". Empty for durations, which are broken down anyway, and where a part is not contained in the one before a whole
// number of times.
std::u16string ConversionOperation::partsOf(std::u16string_view unit, std::u16string_view parts,
                                            Context& context) const {
    std::u16string told;
    std::u16string before(unit);
    while (!parts.empty()) {
        const std::u16string part(parts.substr(0, parts.find(u' ')));
        parts.remove_prefix(std::min(parts.size(), part.size() + 1));
        const auto one = Value(DecimalNumber::fromInt64(1)).with(before, Attribute::unit);
        const auto converted = unitConverter_.convert(one, part, context);
        constexpr int fractionDigits = 9;  // what is beyond comes of rounding
        const auto amount = converted ? converted->decimal() : std::nullopt;
        const auto count = amount ? std::optional(amount->round(fractionDigits)) : std::nullopt;
        const auto isTime = [&](const TimeUnit& time) { return time.id == part; };
        const bool whole = count && count->toInt64() > 1 && DecimalNumber::fromInt64(count->toInt64()) == *count;
        if (!whole || std::any_of(timeUnits.begin(), timeUnits.end(), isTime)) return {};
        if (!told.empty()) told += u' ';
        told += part + u' ' + toUtf16(count->toString());
        before = part;
    }
    return told;
}

std::optional<Value> ConversionOperation::calculate(const Value& left, const Value& right, Context& context) const {
    // Where an operand is missing, the calculator falls back on the other.
    if (left.isEmpty() || right.isEmpty()) return std::nullopt;
    if (const auto unit = right.string(Attribute::unit)) {
        auto converted = unitConverter_.convert(left.without(Attribute::precision), *unit, context);
        const auto parts = right.string(Attribute::precision);
        if (converted && parts) {
            const std::u16string told = partsOf(*unit, *parts, context);
            return told.empty() ? converted : converted->with(told, Attribute::precision);
        }
        // A quantity that can't be converted must not just change its unit.
        if (converted || left.has(Attribute::unit)) return converted;
    }
    // "35% as decimal"
    if (left.is(Attribute::unit, u"percent") && left.has(Attribute::decimal) && right.has(Attribute::nsystem))
        return left.without(Attribute::unit).with(left.decimal()->multiplyingByPowerOf10(-2)).merging(right);
    return left.merging(right);
}

}  // namespace vemo
